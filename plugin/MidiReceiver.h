#pragma once

#include "plugin/MidiMessage.h"
#include "plugin/Signal.h"

#include <array>
#include <cstdint>
#include <vector>

namespace Grimworks {

/// Queue of MIDI messages in the order of their offsets, and the map of held keys. Messages come in with the
/// host's event call and go out sample by sample as four signals; all of it under the plug-in lock. The MIDI
/// channel is ignored: all sixteen act as one.
class MidiReceiver {
public:
    /// Signals, called from Advance.
    Signal<int, int, int> noteOn;           ///< note 0..127, velocity 1..255, offset
    Signal<int, int> noteOff;               ///< note 0..127, velocity
    Signal<int, double> pitchBend;          ///< offset, value -1.0 to just under 1.0
    Signal<int, int, double> controlChange; ///< offset, controller, value 0..1

    /// Inserts a message behind all that are due no later. Dropped when the queue is full and cannot grow.
    void Add(const MidiMessage& message);

    /// Sends what is due at the present sample and moves on by one. Once per sample of a block.
    void Advance() {
        if (head != tail) DispatchDue();
        ++sample;
    }

    /// Ends a block: forgets what was sent, moves waiting messages nearer by `frames` and returns to sample
    /// 0.
    void Flush(int frames);

    /// Makes room for a block of this many frames; waiting messages and held keys stay. Before the first call
    /// every message is dropped. Host's thread.
    void Resize(int blockSize);

    [[nodiscard]] int KeysHeld() const { return keysHeld; }
    [[nodiscard]] bool IsKeyDown(int note) const {
        return note >= 0 && note < kKeys && keyDown[static_cast<std::size_t>(note)];
    }

    /// Messages that were not sent yet.
    [[nodiscard]] int Waiting() const { return tail - head; }

    /// Messages that fit without an allocation.
    [[nodiscard]] int Capacity() const { return capacity; }

private:
    static constexpr int kKeys = 128;

    void DispatchDue();
    void Dispatch(const MidiMessage& message);
    void PressKey(int note, int velocity, int offset);
    void ReleaseKey(int note, int velocity);
    void Compact();
    [[nodiscard]] bool MakeRoom();

    std::vector<MidiMessage> messages;
    std::int32_t capacity = 0;
    std::int32_t growStep = 0;
    std::int32_t head = 0;
    std::int32_t tail = 0;
    std::int32_t keysHeld = 0;
    std::array<bool, kKeys> keyDown{};
    std::int32_t sample = 0;
};

} // namespace Grimworks
