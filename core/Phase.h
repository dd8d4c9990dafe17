#pragma once

#include "core/Maths.h"

namespace Grimworks {

/// Fraction(x) without a library call for the phases of an oscillator: one that has just been advanced lies
/// below 2, where the whole part is 0 or 1. Any other value takes the general way. Exact, any thread.
[[nodiscard]] inline double WrappedPhase(double x) {
    if (x >= 0.0 && x < 2.0) return x - (x >= 1.0 ? 1.0 : 0.0);
    return Fraction(x);
}

} // namespace Grimworks
