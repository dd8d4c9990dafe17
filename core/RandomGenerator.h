#pragma once

#include <cstdint>

namespace Grimworks {

/// The classic linear congruential generator s = s * 214013 + 2531011 on 32 bits, with bits 16 to 30 as the
/// result. Noise waves, noise curves and live noise depend on its exact sequence, so it is our own rather
/// than the C library's: the same on every platform. Not thread-safe; each instrument owns its own.
class RandomGenerator {
public:
    static constexpr std::uint32_t kMax = 32767; ///< largest result of Next

    explicit RandomGenerator(std::uint32_t seed = 1) : state(seed) {}

    /// Starts the sequence that belongs to this seed.
    void Seed(std::uint32_t seed) { state = seed; }

    /// The next number, 0..32767.
    std::int32_t Next() {
        state = state * 214013U + 2531011U;
        return static_cast<std::int32_t>((state >> 16U) & 0x7fffU);
    }

private:
    std::uint32_t state;
};

} // namespace Grimworks
