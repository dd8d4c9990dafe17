#include "plugin/MidiReceiver.h"

#include <algorithm>
#include <limits>
#include <new>

namespace Grimworks {

namespace {

constexpr std::int64_t kQueuePage = 4096; ///< bytes; the queue's memory comes in whole pages

/// How many messages fit into the pages that this many bytes need.
std::int32_t MessagesInPages(std::int64_t bytes) {
    constexpr auto kMessageSize = static_cast<std::int64_t>(sizeof(MidiMessage));
    const std::int64_t pages = (bytes + kQueuePage - 1) / kQueuePage;
    const std::int64_t count = pages * kQueuePage / kMessageSize;
    constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max() / 2;
    return static_cast<std::int32_t>(std::min(count, kLargest));
}

} // namespace

bool MidiReceiver::MakeRoom() {
    if (tail < capacity) return true;
    if (head > 0) {
        Compact();
        return true;
    }
    if (growStep == 0) return false;
    const std::int64_t grown = static_cast<std::int64_t>(capacity) + growStep - capacity % growStep;
    if (grown > std::numeric_limits<std::int32_t>::max()) return false;
    try {
        messages.resize(static_cast<std::size_t>(grown));
    } catch (const std::bad_alloc&) {
        return false;
    }
    capacity = static_cast<std::int32_t>(grown);
    return true;
}

void MidiReceiver::Add(const MidiMessage& message) {
    if (!MakeRoom()) return;
    const auto first = messages.begin() + head;
    const auto last = messages.begin() + tail;
    auto place = last;
    while (place != first && (place - 1)->offset > message.offset)
        --place;
    std::move_backward(place, last, last + 1);
    *place = message;
    ++tail;
}

void MidiReceiver::DispatchDue() {
    while (head != tail) {
        const MidiMessage message = messages[static_cast<std::size_t>(head)];
        if (message.offset > sample) return;
        ++head; // before the signals: a slot may add a message
        Dispatch(message);
    }
}

void MidiReceiver::Dispatch(const MidiMessage& message) {
    const int kind = message.Kind();
    if (kind == MidiKind::NoteOn && message.data2 != 0) {
        PressKey(message.data1, message.data2, message.offset);
    } else if (kind == MidiKind::NoteOn || kind == MidiKind::NoteOff) {
        ReleaseKey(message.data1, message.data2);
    } else if (kind == MidiKind::PitchWheel) {
        const double value = ((message.data2 - 64) * 128 + message.data1) * 0.0001220703125;
        pitchBend(message.offset, value);
    } else if (kind == MidiKind::ControlChange) {
        controlChange(message.offset, message.data1, message.data2 / 127.0);
    }
}

void MidiReceiver::PressKey(int note, int velocity, int offset) {
    if (note >= kKeys || IsKeyDown(note)) return;
    keyDown[static_cast<std::size_t>(note)] = true;
    ++keysHeld;
    noteOn(note, velocity, offset);
}

void MidiReceiver::ReleaseKey(int note, int velocity) {
    if (!IsKeyDown(note)) return;
    keyDown[static_cast<std::size_t>(note)] = false;
    --keysHeld;
    noteOff(note, velocity);
}

void MidiReceiver::Compact() {
    std::move(messages.begin() + head, messages.begin() + tail, messages.begin());
    tail -= head;
    head = 0;
}

void MidiReceiver::Flush(int frames) {
    if (head > 0) Compact();
    for (std::int32_t i = 0; i < tail; ++i) {
        std::int32_t& offset = messages[static_cast<std::size_t>(i)].offset;
        const std::int64_t moved = static_cast<std::int64_t>(offset) - frames;
        offset = static_cast<std::int32_t>(
            std::max<std::int64_t>(moved, std::numeric_limits<std::int32_t>::min()));
    }
    sample = 0;
}

void MidiReceiver::Resize(int blockSize) {
    constexpr auto kMessageSize = static_cast<std::int64_t>(sizeof(MidiMessage));
    Compact();
    std::int32_t wanted = MessagesInPages(std::max(blockSize, 0) * kMessageSize);
    if (tail > wanted) wanted = MessagesInPages(tail * kMessageSize);
    messages.resize(static_cast<std::size_t>(wanted));
    capacity = wanted;
    growStep = wanted;
}

} // namespace Grimworks
