#pragma once

#include <cmath>

namespace Grimworks {

inline constexpr double kPi = 3.14159265358979323846;

/// Limits x to lo..hi. A NaN passes unchanged: both comparisons fail on it.
[[nodiscard]] constexpr double Clamp(double x, double lo, double hi) {
    return x < lo ? lo : x > hi ? hi : x;
}

/// The part behind the point, with the sign of x.
[[nodiscard]] inline double Fraction(double x) {
    return x - std::trunc(x);
}

/// -1 for negative x, otherwise +1 (a negative zero counts as positive).
[[nodiscard]] constexpr double Sign(double x) {
    return x < 0.0 ? -1.0 : 1.0;
}

/// Maps a centred knob 0..1 to -1..+1, 0.5 giving exactly 0.
[[nodiscard]] constexpr double Bipolar(double value) {
    return value >= 0.5 ? (value - 0.5) * 2.0 : -(1.0 - 2.0 * value);
}

} // namespace Grimworks
