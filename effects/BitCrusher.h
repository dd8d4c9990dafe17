#pragma once

#include "core/StereoBuffer.h"

#include <cmath>
#include <cstdint>

namespace Grimworks {

/// Reduces the word length by cutting towards zero, which leaves a dead zone around silence. Switching it
/// acts at once, without a cross-fade.
class BitCrusher {
public:
    /// Whether the distortion section is switched off.
    void SetBypass(bool on) { bypass = on; }

    /// Knob 0..1: 1 bit at 0, untouched at exactly 1. A value that is not finite is ignored.
    void SetQuantization(double value) {
        if (!std::isfinite(value)) return;
        amount = value * value;
        bits = amount == 1.0 ? kFullBits : amount * 63.0 + 1.0;
        levels = std::pow(2.0, bits);
    }

    /// Word length in bits, 1 to 64; not whole in general.
    [[nodiscard]] double Bits() const { return bits; }

    /// In place; audio thread. A sample that is not a number, or too large to be cut, stays.
    void Process(StereoView io, int frames) const {
        if (bypass || amount == 1.0) return;
        for (int i = 0; i < frames; ++i) {
            io.left[i] = Crush(io.left[i]);
            io.right[i] = Crush(io.right[i]);
        }
    }

private:
    static constexpr double kFullBits = 64.0;
    static constexpr double kIntegerLimit = 9223372036854775808.0; ///< 2^63

    [[nodiscard]] double Crush(double sample) const {
        const double scaled = levels * sample;
        if (!(std::fabs(scaled) < kIntegerLimit)) return sample;
        return static_cast<double>(static_cast<std::int64_t>(scaled)) / levels;
    }

    bool bypass = false;
    double amount = 1.0;
    double bits = kFullBits;
    double levels = 18446744073709551616.0; ///< 2^bits
};

} // namespace Grimworks
