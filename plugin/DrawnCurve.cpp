#include "plugin/DrawnCurve.h"

#include "core/Maths.h"

#include <algorithm>
#include <cmath>

namespace Grimworks {

namespace {

constexpr double kPull = 0.7; // how far neighbours follow a stroke
constexpr double kStay = 0.3;

} // namespace

DrawnCurve::DrawnCurve(int width) : values(static_cast<std::size_t>(std::max(width, 1))) {
    for (int x = 0; x < width; ++x)
        At(x) = -(2.0 * x / width - 1.0);
}

void DrawnCurve::Press(int x, double v) {
    if (Has(x)) At(x) = v;
    changed = true;
}

void DrawnCurve::Pull(int x, double v) {
    if (Has(x)) At(x) = v * kPull + At(x) * kStay;
}

void DrawnCurve::Drag(int x, double v, int dX) {
    if (!Has(x)) return;
    At(x) = v;
    Pull(x - 1, v);
    Pull(x + 1, v);
    const int last = static_cast<int>(values.size()) - 1;
    if (dX > 1) {
        for (int ahead = x + 1; ahead <= last && ahead - x <= dX; ++ahead)
            At(ahead) = v;
    } else if (dX < -1) {
        for (int ahead = x - 1; ahead > 0 && ahead - x >= dX; --ahead)
            At(ahead) = v;
    }
    changed = true;
}

/// The curve's point by four-point interpolation between the pixels.
double DrawnCurve::PointAt(int index) const {
    const int last = static_cast<int>(values.size()) - 1;
    const double n = last + 1;
    const double x = Clamp(static_cast<double>(index) / kCurvePoints, 0.0, 1.0);
    const int pixel = std::min(static_cast<int>(std::floor(x * n)), last);
    const double fraction = std::fmod(x, 1.0 / n) / (1.0 / n);
    const auto at = [this, last](int p) { return values[static_cast<std::size_t>(std::clamp(p, 0, last))]; };
    return CurveFourPoint(at(pixel - 1), at(pixel), at(pixel + 1), at(pixel + 2), fraction);
}

void DrawnCurve::WriteTo(CurvePoints& points) {
    for (int i = 0; i < kCurvePoints; ++i)
        points[static_cast<std::size_t>(i)] = -Clamp(PointAt(i), -1.0, 1.0);
    changed = false;
}

void DrawnCurve::ReadFrom(const CurvePoints& points) {
    const double n = static_cast<double>(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double position = std::fabs(Clamp(static_cast<double>(i) / n, 0.0, 1.0)) * kCurvePoints;
        values[i] = -points[static_cast<std::size_t>(std::floor(position))];
    }
    changed = false;
}

} // namespace Grimworks
