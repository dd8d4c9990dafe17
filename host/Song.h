#pragma once

#include "host/TempoMap.h"

#include <array>
#include <cstdint>
#include <vector>

namespace Grimworks {

/// One channel message of a song.
struct SongEvent {
    double seconds = 0.0;                ///< since the start of the song
    std::array<std::uint8_t, 3> bytes{}; ///< status and data; the third is 0 where a message has only two
};

/// Music that is ready to be played: all channel messages in order of time, the tempo, and the length.
struct Song {
    std::vector<SongEvent> events;
    TempoMap tempo;
    double seconds = 0.0;
};

} // namespace Grimworks
