#pragma once

#include "core/Limits.h"
#include "core/Maths.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <span>

namespace Grimworks {

/// The points of one transfer curve. Entry k answers the input 2k/511 - 1.
using CurvePoints = std::array<double, kCurvePoints>;

/// How a curve is read between its points. Any other number reads as cubic.
namespace CurveInterpolation {
enum Mode : int { None = 0, Linear = 1, Cosine = 2, Cubic = 3 };
} // namespace CurveInterpolation

/// Four-point interpolation between p1 (fraction 0) and p2 (fraction 1); the two ends are hit exactly.
[[nodiscard]] inline double CurveFourPoint(double p0, double p1, double p2, double p3, double fraction) {
    if (fraction == 1.0) return p2;
    if (fraction == 0.0) return p1;
    const double u = p3 - p2 - p0 + p1;
    const double square = fraction * fraction;
    return (p0 - p1 - u) * square + u * fraction * square + (p2 - p0) * fraction + p1;
}

/// Reads `points` at the input v, which is limited to -1..+1. A NaN comes back as it is.
[[nodiscard]] inline double LookUpCurve(const CurvePoints& points, double v, int interpolation) {
    constexpr int kLast = kCurvePoints - 1;
    if (std::isnan(v)) return v;
    const double position = (Clamp(v, -1.0, 1.0) + 1.0) * 0.5 * kLast;
    const int index = static_cast<int>(position);
    const double fraction = position - index;
    const auto at = [&points](int k) {
        return points[static_cast<std::size_t>(k < 0 ? 0 : k > kLast ? kLast : k)];
    };
    switch (interpolation) {
    case CurveInterpolation::None:
        return at(index);
    case CurveInterpolation::Linear:
        return fraction * at(index + 1) + (1.0 - fraction) * at(index);
    case CurveInterpolation::Cosine: {
        const double weight = (1.0 - std::cos(fraction * kPi)) * 0.5;
        return weight * at(index + 1) + (1.0 - weight) * at(index);
    }
    default:
        return CurveFourPoint(at(index - 1), at(index), at(index + 1), at(index + 2), fraction);
    }
}

/// One transfer curve of 512 points that can be edited, with its interpolation. It starts as the straight
/// line. Edits and lookups may come from different threads only under the plug-in lock.
class DistortionCurve {
public:
    DistortionCurve() { ResetToRamp(); }

    /// Puts the straight line from -1 to +1 into the points.
    void ResetToRamp();

    /// Takes all points from a table.
    void Load(std::span<const double, kCurvePoints> table);

    /// The curve's answer to v, by the stored interpolation; NaN in, NaN out. Audio thread.
    [[nodiscard]] double LookUp(double v) const { return LookUpCurve(points, v, interpolation); }

    /// Scales to a peak of 1; an all-zero curve stays.
    void Normalise();

    /// Running average, once up and once down the curve, limited to -1..+1.
    void Smooth();

    /// Fades the curve to 0 over the eight points on each side of its centre.
    void SmoothZeroCrossing();

    /// Roughens the curve by up to 0.0777 a point, limited to -1..+1. `draws` are numbers of the generator,
    /// one a point, taken by the caller so that several curves can be given the same noise.
    void AddNoise(std::span<const int, kCurvePoints> draws);

    /// Holds the value at each sixteenth of the range over that sixteenth.
    void MakeSteps();

    CurvePoints points;
    int interpolation = CurveInterpolation::Cubic;
};

} // namespace Grimworks
