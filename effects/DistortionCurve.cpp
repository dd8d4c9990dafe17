#include "effects/DistortionCurve.h"

#include "core/Normalise.h"

#include <algorithm>

namespace Grimworks {

namespace {

constexpr double kNoiseDepth = 0.0777;
constexpr std::size_t kFadePoints = 8;
constexpr std::size_t kStepPoints = kCurvePoints / 16;

} // namespace

void DistortionCurve::ResetToRamp() {
    for (int k = 0; k < kCurvePoints; ++k)
        points[static_cast<std::size_t>(k)] = 2.0 * k / (kCurvePoints - 1) - 1.0;
}

void DistortionCurve::Load(std::span<const double, kCurvePoints> table) {
    std::copy(table.begin(), table.end(), points.begin());
}

void DistortionCurve::Normalise() {
    Grimworks::Normalise(points, 1.0);
}

void DistortionCurve::Smooth() {
    double state = points.front();
    const auto average = [&state](double& point) {
        state = Clamp((state + point) * 0.5, -1.0, 1.0);
        point = state;
    };
    std::for_each(points.begin(), points.end(), average);
    state = points.back();
    std::for_each(points.rbegin(), points.rend(), average);
}

void DistortionCurve::SmoothZeroCrossing() {
    constexpr std::size_t kCentre = kCurvePoints / 2;
    for (std::size_t k = 0; k < kFadePoints; ++k) {
        const double factor = 0.125 * static_cast<double>(k);
        points[kCentre - 1 - k] *= factor;
        points[kCentre + k] *= factor;
    }
}

void DistortionCurve::AddNoise(std::span<const int, kCurvePoints> draws) {
    for (std::size_t k = 0; k < points.size(); ++k) {
        const double noise = (draws[k] % 32767 - 16383.5) / 16383.5;
        points[k] = Clamp(points[k] + noise * kNoiseDepth * Sign(points[k]), -1.0, 1.0);
    }
}

void DistortionCurve::MakeSteps() {
    double held = points.front();
    for (std::size_t k = 0; k < points.size(); ++k) {
        if (k % kStepPoints == 0) held = points[k];
        points[k] = held;
    }
}

} // namespace Grimworks
