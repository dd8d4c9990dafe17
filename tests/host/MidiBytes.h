#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <vector>

namespace Grimworks::Testing {

using Bytes = std::vector<std::uint8_t>;

inline Bytes operator+(Bytes left, const Bytes& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

/// Big-endian number of `count` bytes.
inline Bytes Big(std::uint32_t number, int count) {
    Bytes bytes;
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<std::uint8_t>(number >> static_cast<unsigned>(shift)));
    }
    return bytes;
}

inline Bytes Letters(std::string_view text) {
    return {text.begin(), text.end()};
}

inline Bytes Chunk(std::string_view kind, const Bytes& body) {
    return Letters(kind) + Big(static_cast<std::uint32_t>(body.size()), 4) + body;
}

/// A MIDI file of the given type and division with these track bodies.
inline Bytes MidiBytes(std::uint32_t type, std::uint32_t division, const std::vector<Bytes>& tracks) {
    Bytes file =
        Chunk("MThd", Big(type, 2) + Big(static_cast<std::uint32_t>(tracks.size()), 2) + Big(division, 2));
    for (const Bytes& track : tracks)
        file = file + Chunk("MTrk", track);
    return file;
}

inline const Bytes kEndOfTrack{0x00, 0xFF, 0x2F, 0x00};

/// A tempo of so many microseconds a quarter note, one tick byte before it.
inline Bytes TempoEvent(std::uint8_t delta, std::uint32_t microseconds) {
    return Bytes{delta, 0xFF, 0x51, 0x03} + Big(microseconds, 3);
}

} // namespace Grimworks::Testing
