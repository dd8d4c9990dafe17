#include "effects/CurveShapes.h"

#include "core/Normalise.h"

#include <algorithm>

namespace Grimworks {

namespace {

/// x up to the threshold's knee, a parabola through it, flat above: the last value below the upper edge
/// holds.
struct SoftKnee {
    double threshold;
    double width;
    double ratio;
    double held = 0.0;

    double operator()(int /*i*/, double x) {
        if (x < threshold - width / 2.0) {
            held = x;
        } else if (x < threshold + width / 2.0) {
            const double over = x - threshold + width / 2.0;
            held = x + (1.0 / ratio - 1.0) * (over * over) / (2.0 * width);
        }
        return held;
    }
};

double SoftKneeCompressor(double x) {
    if (x < 0.6) return x;
    if (x < 0.7999999999999999) return x - 0.75 * ((x - 0.6) * (x - 0.6)) / 0.4;
    return (x - 0.7) * 0.25 + 0.7;
}

double Logarithmic(int i, double x) {
    const double range = std::fabs(std::log(0.00390625));
    return i == 0 ? 0.0 : (std::log(x) + range) / range;
}

double Tube(int i, double x) {
    if (i < 128) return 2.0 * x * 0.97;
    return (1.0 - (i - 128) / 128.0) * 0.2425 + 0.7275;
}

double Transistor(double x) {
    if (x >= 0.8) return x - 0.8 * (x - 0.8);
    const double s = std::sin(kPi * x / 0.8);
    return x - 0.2 * (s * s * s);
}

double FilterSaturation(double x) {
    return std::sin(2.0 * kPi * x) * (1.0 - x) + x - x * std::cos(3.0 * kPi * x) -
           x * x * std::cos(6.0 * kPi * x);
}

} // namespace

void ClampCurve(CurvePoints& curve) {
    for (double& point : curve)
        point = Clamp(point, -1.0, 1.0);
}

void SmoothCurve(CurvePoints& curve) {
    double state = (curve.front() - 1.0) * 0.25;
    const auto average = [&state](double& point) {
        state = Clamp((state + point) * 0.5, -1.0, 1.0);
        point = state;
    };
    std::for_each(curve.begin(), curve.end(), average);
    state = (curve.back() + 1.0) * 0.25;
    std::for_each(curve.rbegin(), curve.rend(), average);
}

void DrawPlainCurves(std::vector<CurvePoints>& tables) {
    for (int k = 0; k < kCurvePoints; ++k)
        tables[0][static_cast<std::size_t>(k)] = k * (2.0 / (kCurvePoints - 1)) - 1.0;

    DrawOdd(tables[1], [](int, double x) { return x < 0.6 ? x : (x - 0.6) * 0.25 + 0.6; });
    DrawOdd(tables[2], [](int, double x) { return SoftKneeCompressor(x); });
    DrawOdd(tables[3], [](int, double x) { return x < 0.5 ? x : 0.5; });
    DrawOdd(tables[4], SoftKnee{0.5, 0.2, 4.0});
    DrawOdd(tables[5], [](int, double x) { return std::sin(x * kPi / 2.0); });
    DrawOdd(tables[6], [](int, double x) { return std::atan(std::min(1.0, 1.777 * x)) / std::atan(1.0); });
    DrawOdd(tables[7], [](int, double x) { return 70.68609865470853 * x / (69.68609865470853 * x + 1.0); });
    DrawOdd(tables[8], [](int i, double) { return i < 2 ? 0.0 : 1.0; });
    DrawOdd(tables[9], Logarithmic);
    DrawOdd(tables[17], Tube);
    DrawOdd(tables[18], [](int, double x) { return std::sin(kPi * x) * (1.0 - x) + x; });
    DrawOdd(tables[34], [](int, double x) { return Transistor(x); });
    DrawOdd(tables[38], [](int i, double) { return 1.0 - i / 255.0; });
    DrawOdd(tables[79], [](int, double x) { return std::min(1.0, 1.16 * std::sin(x * kPi / 2.0)); });
    DrawOdd(tables[81], [](int, double x) { return FilterSaturation(x); });
    Normalise(tables[81], 1.0);
}

} // namespace Grimworks
