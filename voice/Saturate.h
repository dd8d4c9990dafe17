#pragma once

#include "core/Maths.h"
#include "core/Trigonometry.h"

namespace Grimworks {

/// Saturation of an oscillator: an arc tangent driven into a hard ceiling at +-1. The smallest settings all
/// give the plain arc tangent at unity gain. `amount` is 0..1, and 0 leaves the sample as it is.
[[nodiscard]] inline double Saturate(double x, double amount) {
    constexpr double kSmallestDrive = 0.1287001287001287;
    const double drive = amount < kSmallestDrive ? kSmallestDrive : amount;
    const double bent = ArcTangent(x) / Trigonometry::kQuarterPi * drive * 7.77;
    const double limited = Clamp(bent, -1.0, 1.0);
    return amount > 0.0 ? limited : x;
}

} // namespace Grimworks
