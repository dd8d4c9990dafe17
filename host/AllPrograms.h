#pragma once

#include "host/PluginHost.h"
#include "host/Song.h"
#include "host/WavWriter.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Grimworks {

/// What every program of an instrument is to play, and where to.
struct AllProgramsJob {
    PluginHost::EntryPoint entry = nullptr;
    std::string moduleName; ///< for messages
    HostSetup setup;
    const Song* song = nullptr;
    std::optional<double> tail; ///< as for RenderSong
    SampleFormat format{};
    std::vector<std::string> settings; ///< "NAME=VALUE", after the program
    std::filesystem::path folder;      ///< exists
    unsigned threads = 1;              ///< programs that are rendered at a time
};

/// Is told how many programs stand, of how many; returns false to stop. Called from several threads, and
/// more often than programs come to an end.
using AllProgramsProgress = std::function<bool(int done, int total)>;

struct AllProgramsResult {
    int written = 0;
    int total = 0;
    bool interrupted = false;
};

/// Renders the song with every program into a WAV file of its own, each with a fresh instance, so that the
/// files are the same whatever the number of threads. Throws HostError at the first fault; files that were
/// complete by then stay.
AllProgramsResult RenderAllPrograms(const AllProgramsJob& job, const AllProgramsProgress& progress);

/// "007 Laser Kick.wav": number and name of a program, without what some system forbids in a file name.
[[nodiscard]] std::string ProgramFileName(int number, std::string_view name);

} // namespace Grimworks
