#pragma once

#include "core/Maths.h"

namespace Grimworks {

/// The frequency of a bilinear design, tan(pi * fc), and its reciprocal.
struct ButterworthFrequency {
    double tangent = 0.0;
    double cotangent = 0.0;
};

/// tan(x) for |x| <= pi/4: Lambert's continued fraction x / (1 - z / (3 - z / (5 - ...))), z = x * x, cut
/// after nine terms, which is good to 1e-17. It is written as x plus the rest: near 0 it then rounds like the
/// exact value, and there the filters magnify a unit in the last place a millionfold. The sums are grouped in
/// pairs that run side by side.
[[nodiscard]] inline double EighthTurnTangent(double x) {
    const double z = x * x;
    const double zz = z * z;
    const double above = (11486475.0 - 810810.0 * z) + zz * (12870.0 - 44.0 * z);
    const double below = (34459425.0 - 16216200.0 * z) + zz * ((945945.0 - 13860.0 * z) + zz * 45.0);
    return x + x * (z * above / below);
}

/// Frequency of a normalised cutoff 0..1, of which 1 stands for 0.4785 of the sample rate; it never falls
/// below 0.0001 of the rate. Cutoffs above 1 go on up to 1.5. A NaN gives the lowest frequency. Without
/// branches, so that a compiler can work out several at once.
[[nodiscard]] inline ButterworthFrequency ButterworthFrequencyOf(double cutoff) {
    constexpr double kMaxCutoff = 0.957;
    constexpr double kMinCutoff = 0.0001;
    constexpr double kHighestAngle = 2.25;
    constexpr double kQuarterPi = 0.78539816339744830962;
    constexpr double kHalfPi = 1.57079632679489661923;
    constexpr double kHalfPiTail = 6.123233995736766e-17; // pi/2 less its double

    const double scaled = cutoff * 0.5 * kMaxCutoff;
    const double fc = scaled > kMinCutoff ? scaled : kMinCutoff;
    const double wanted = kPi * fc;
    const double angle = wanted < kHighestAngle ? wanted : kHighestAngle;
    const double complement = (kHalfPi - angle) + kHalfPiTail;
    const double direct = EighthTurnTangent(angle > kQuarterPi ? complement : angle);
    const double inverse = 1.0 / direct;
    return {angle > kQuarterPi ? inverse : direct, angle > kQuarterPi ? direct : inverse};
}

} // namespace Grimworks
