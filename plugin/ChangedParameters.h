#pragma once

#include "core/Limits.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace Grimworks {

/// One bit per parameter whose display is out of date. Any thread marks; the editor's tick takes the bits and
/// makes the texts, so that no text is formatted on the audio thread or under the plug-in lock.
class ChangedParameters {
public:
    /// Marks one id; an id outside 0..158 is ignored.
    void Mark(int id) {
        if (id < 0 || id >= kParameters) return;
        const auto index = static_cast<std::size_t>(id);
        words[index / 64].fetch_or(std::uint64_t{1} << (index % 64), std::memory_order_release);
    }

    /// Calls visit(id) for every marked id in ascending order and clears the marks.
    template <typename Visit>
    void Take(Visit visit) {
        for (std::size_t word = 0; word < words.size(); ++word) {
            std::uint64_t bits = words[word].exchange(0, std::memory_order_acquire);
            for (int bit = 0; bits != 0; ++bit, bits >>= 1U) {
                if ((bits & 1U) != 0) visit(static_cast<int>(word) * 64 + bit);
            }
        }
    }

private:
    std::array<std::atomic<std::uint64_t>, (kParameters + 63) / 64> words{};
};

} // namespace Grimworks
