#pragma once

#include "dsp/Cascade.h"

#include <bit>
#include <cstdint>

namespace Dsp {

/// A plain section in direct form I for units that need one fixed filter. Instead of an anti-denormal term,
/// an output whose exponent field is zero becomes 0, so that its tail ends in silence.
struct Biquad {
    Stage stage;
    double x1 = 0.0;
    double x2 = 0.0;
    double y1 = 0.0;
    double y2 = 0.0;

    /// Filters one sample.
    double process(double x) {
        double y = stage.b0 * x + stage.b1 * x1 + stage.b2 * x2 - stage.a1 * y1 - stage.a2 * y2;
        if (HasZeroExponent(y)) y = 0.0;
        x2 = x1;
        x1 = x;
        y2 = y1;
        y1 = y;
        return y;
    }

    /// Silences the state and keeps the coefficients.
    void reset() { x1 = x2 = y1 = y2 = 0.0; }

private:
    /// True for zeros and denormals: all eleven bits of the exponent are clear.
    static bool HasZeroExponent(double value) {
        return (std::bit_cast<std::uint64_t>(value) & 0x7ff0000000000000ULL) == 0;
    }
};

} // namespace Dsp
