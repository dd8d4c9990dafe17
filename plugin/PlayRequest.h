#pragma once

#include <atomic>
#include <cstdint>

namespace Grimworks {

/// The editor's test note on its way to the audio thread: note and mode travel in one word, so the callback
/// never sees half a request. The last request before a block stands.
class PlayRequest {
public:
    struct Request {
        int note; ///< 0: none
        int mode; ///< 1: stop the note, 2: stop it and start it again, others: nothing
    };

    /// Editor thread. A note outside 1..127 asks for nothing.
    void Post(int note, int mode) {
        if (note < 1 || note > 127) return;
        word.store(static_cast<std::uint32_t>(note) | static_cast<std::uint32_t>(mode & 0xff) << 8U,
                   std::memory_order_release);
    }

    /// Audio thread: takes the request and leaves none.
    Request Take() {
        const std::uint32_t taken = word.exchange(0, std::memory_order_acquire);
        return {static_cast<int>(taken & 0xffU), static_cast<int>(taken >> 8U)};
    }

private:
    std::atomic<std::uint32_t> word{0};
};

} // namespace Grimworks
