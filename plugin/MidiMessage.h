#pragma once

#include <cstdint>

namespace Grimworks {

/// One short MIDI message with the place in the block at which it takes effect.
struct MidiMessage {
    std::int32_t offset = 0; ///< frames from the block's start; hosts may give anything
    std::uint8_t status = 0;
    std::uint8_t data1 = 0;
    std::uint8_t data2 = 0;

    /// The upper half of the status byte.
    [[nodiscard]] int Kind() const { return status >> 4; }
};
static_assert(sizeof(MidiMessage) == 8);

/// The kinds that the instrument understands.
namespace MidiKind {
enum : int {
    NoteOff = 8,
    NoteOn = 9,
    PolyPressure = 10,
    ControlChange = 11,
    PitchWheel = 14,
};
} // namespace MidiKind

/// A system-exclusive message. The bytes belong to the sender and live as long as the call.
struct SysExMessage {
    std::int32_t offset = 0;
    std::int32_t size = 0;
    const std::uint8_t* data = nullptr;
};

} // namespace Grimworks
