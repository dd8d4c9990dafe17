#pragma once

#include "host/PluginHost.h"
#include "host/Song.h"
#include "host/WavWriter.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace Grimworks {

/// What came out of a render.
struct RenderResult {
    std::int64_t frames = 0;
    double peak = 0.0; ///< largest absolute sample, 1 is full scale
    bool interrupted = false;
};

/// Gets the seconds that stand and the seconds that there will be at least; returns false to end the render
/// early.
using RenderProgress = std::function<bool(double seconds, double expected)>;

/// Plays a song through a plug-in into a file, block by block, each message at its own sample. Keys that the
/// song leaves down are released at its end.
///
/// `tail` is how long the render goes on after the song, in seconds. Without one it ends by itself: 0.1 s
/// after the last sample above -100 dBFS, once 4.5 s were quieter than that (longer than the longest echo),
/// or after 60 s. Throws HostError when the file cannot be written, cannot hold so much, or when the plug-in
/// gives a sample that is no number. The file is left open: the caller commits it.
RenderResult RenderSong(PluginHost& host, const Song& song, std::optional<double> tail, WavWriter& wav,
                        SampleFormat format, const RenderProgress& progress);

/// Notes one after the other at 120 to the minute, each held for `seconds`.
[[nodiscard]] Song MakeNotes(const std::vector<int>& notes, int velocity, double seconds);

} // namespace Grimworks
