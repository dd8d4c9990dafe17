#pragma once

#include "core/Maths.h"

#include <cmath>

namespace Grimworks {

/// Sine, tangent and arc tangent for the inner loops. They have no branches, so that a compiler can run them
/// on several samples at once, they stay within one or two units in the last place of the exact value, and
/// they give the same bits on every platform, which the C library does not. The arguments are reduced with a
/// two-part pi after Cody and Waite ("Software Manual for the Elementary Functions", 1980); sine and cosine
/// are Taylor sums, the arc tangent a Chebyshev fit over |x| <= tan(pi/8).

namespace Trigonometry {

inline constexpr double kTwoPi = 6.28318530717958647692;
inline constexpr double kPiTail = 1.2246467991473532e-16; ///< pi less its double
inline constexpr double kHalfPi = 1.57079632679489661923;
inline constexpr double kHalfPiTail = 6.123233995736766e-17;
inline constexpr double kQuarterPi = 0.78539816339744830962;
inline constexpr double kQuarterPiTail = 3.061616997868383e-17;

/// Nearest whole number of |x| < 2^51: adding 1.5 * 2^52 leaves no room for a fraction.
[[nodiscard]] inline double Nearest(double x) {
    constexpr double kShift = 6755399441055744.0;
    return (x + kShift) - kShift;
}

// The sums are grouped in pairs that a processor works out side by side.

/// sin(r) / r - 1 over r * r, good to 1e-18 for |r| <= pi/2.
[[nodiscard]] inline double SineTail(double z) {
    const double zz = z * z;
    double p = z * (1.0 / 51090942171709440000.0) - 1.0 / 121645100408832000.0;
    p = p * zz + (z * (1.0 / 355687428096000.0) - 1.0 / 1307674368000.0);
    p = p * zz + (z * (1.0 / 6227020800.0) - 1.0 / 39916800.0);
    p = p * zz + (z * (1.0 / 362880.0) - 1.0 / 5040.0);
    return p * zz + (z * (1.0 / 120.0) - 1.0 / 6.0);
}

/// cos(r), good to 1e-17 for |r| <= pi/4; z is r * r.
[[nodiscard]] inline double CosineOfSquare(double z) {
    const double zz = z * z;
    double p = z * (1.0 / 20922789888000.0) - 1.0 / 87178291200.0;
    p = p * zz + (z * (1.0 / 479001600.0) - 1.0 / 3628800.0);
    p = p * zz + (z * (1.0 / 40320.0) - 1.0 / 720.0);
    p = p * zz + (z * (1.0 / 24.0) - 0.5);
    return p * z + 1.0;
}

/// atan(t) / t - 1 over t * t, good to 1e-17 for |t| <= tan(pi/8); z is t * t.
[[nodiscard]] inline double ArcTangentTail(double z) {
    const double zz = z * z;
    double p = z * 0.016285755473349803 - 0.03457056073451243;
    p = p * zz + (z * 0.04551593172142479 - 0.05230454260021369);
    p = p * zz + (z * 0.058789289963916344 - 0.06666424885612743);
    p = p * zz + (z * 0.07692296375025154 - 0.09090908753500636);
    p = p * zz + (z * 0.11111111105155441 - 0.14285714285659828);
    return p * zz + (z * 0.19999999999999804 - 0.3333333333333333);
}

} // namespace Trigonometry

/// sin(phase * 2 pi) for a phase in cycles, |phase| below a million. NaN and infinity give NaN.
[[nodiscard]] inline double SineOfPhase(double phase) {
    using namespace Trigonometry;
    const double x = phase * kTwoPi;
    const double turns = Nearest(x * (1.0 / kPi));
    const double r = (x - turns * kPi) - turns * kPiTail;
    const double odd = turns - 2.0 * Nearest(turns * 0.5);
    const double z = r * r;
    const double sine = r + r * (z * SineTail(z));
    return sine * (1.0 - 2.0 * (odd * odd));
}

/// tan(pi * x) for x in 0..0.5, the end left out. A NaN stays NaN.
[[nodiscard]] inline double TangentOfPi(double x) {
    using namespace Trigonometry;
    const double angle = kPi * x;
    const bool upper = angle > kQuarterPi;
    const double complement = (kHalfPi - angle) + kHalfPiTail;
    const double r = upper ? complement : angle;
    const double z = r * r;
    const double sine = r + r * (z * SineTail(z));
    const double cosine = CosineOfSquare(z);
    const double above = upper ? cosine : sine;
    const double below = upper ? sine : cosine;
    return above / below;
}

/// atan(x) for any x; infinity gives a quarter turn, a NaN stays NaN.
[[nodiscard]] inline double ArcTangent(double x) {
    using namespace Trigonometry;
    constexpr double kLow = 0.41421356237309503; // tan(pi / 8)
    constexpr double kHigh = 2.414213562373095;  // tan(3 pi / 8)
    const double a = std::fabs(x);
    const bool middle = a > kLow;
    const bool high = a > kHigh;
    const double minusOne = a - 1.0;
    const double plusOne = a + 1.0;
    const double lowAbove = middle ? minusOne : a;
    const double lowBelow = middle ? plusOne : 1.0;
    const double above = high ? -1.0 : lowAbove;
    const double below = high ? a : lowBelow;
    const double lowBase = middle ? kQuarterPi : 0.0;
    const double lowTail = middle ? kQuarterPiTail : 0.0;
    const double base = high ? kHalfPi : lowBase;
    const double tail = high ? kHalfPiTail : lowTail;
    const double t = above / below;
    const double z = t * t;
    const double angle = base + ((t * (z * ArcTangentTail(z)) + tail) + t);
    return std::copysign(angle, x);
}

} // namespace Grimworks
