#pragma once

#include "host/PluginHost.h"

#include <cstdint>
#include <optional>
#include <thread>
#include <vector>

namespace Grimworks {

/// A key that is struck every second and held for half of it.
struct RepeatedKey {
    int note = 60; ///< MIDI note
    int velocity = 100;
};

/// Messages of such a key in the `frames` frames from `position` of the song on, in order of offset.
[[nodiscard]] std::vector<BlockEvent> KeyEvents(const RepeatedKey& key, std::int64_t position, int frames,
                                                int sampleRate);

/// Keeps a plug-in playing into nowhere, block by block on a thread of its own, at the pace of a sound
/// device. While it lives nobody else may call Process or Activate of the host; it switches the plug-in on
/// and off.
class LiveAudio {
public:
    LiveAudio(PluginHost& host, std::optional<RepeatedKey> key);

    /// Ends with the block that is played at the moment.
    ~LiveAudio();
    LiveAudio(const LiveAudio&) = delete;
    LiveAudio& operator=(const LiveAudio&) = delete;

private:
    void Run(const std::stop_token& stop);

    PluginHost& player;
    std::optional<RepeatedKey> repeated;
    std::jthread thread;
};

} // namespace Grimworks
