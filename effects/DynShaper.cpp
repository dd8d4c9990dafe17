#include "effects/DynShaper.h"

#include "core/Choice.h"
#include "core/Maths.h"

#include <algorithm>
#include <cmath>

namespace Grimworks {

namespace {

constexpr double kBoostGain = 5.0;
constexpr double kBumpHeight = 0.777;
constexpr double kSaturationGain = 4.0;

} // namespace

void DynShaper::SetAmount(double value) {
    if (std::isfinite(value)) amount = value * value;
}

void DynShaper::SetWaveform(double value) {
    waveform = ClampedChoice(value, kPulse);
}

void DynShaper::SetMode(double value) {
    mode = ClampedChoice(value, kBoostSaturated);
}

void DynShaper::SetPolarity(double value) {
    polarity = ClampedChoice(value, kNegative);
}

void DynShaper::Process(StereoView io, int frames, const double* modulation) {
    if (IsFadedOut() || amount == 0.0) return;
    const bool boost = mode == kBoost || mode == kBoostSaturated;
    for (int i = 0; i < frames; ++i) {
        double e = smoothed.Step(amount) * fade;
        if (modulation != nullptr) e = e * modulation[i];
        double left = io.left[i];
        double right = io.right[i];
        if (boost) {
            left = Clamp(left * (kBoostGain * e), -1.0, 1.0);
            right = Clamp(right * (kBoostGain * e), -1.0, 1.0);
        }
        io.left[i] = Shape(left, e);
        io.right[i] = Shape(right, e);
        StepFade();
    }
}

double DynShaper::Shape(double sample, double e) const {
    if (e == 0.0) return sample;
    if (polarity == kPositive && sample < 0.0) return sample;
    if (polarity == kNegative && sample >= 0.0) return sample;

    const double half = kWidth / 2.0;
    const double sign = Sign(sample);
    const double level = std::fabs(sample);
    const double centre = (1.0 - e) * (1.0 - kWidth) + half;
    const double low = centre - half;
    const double t = level > low && level < centre + half ? (level - low) / kWidth : 0.0;

    double bump = Bump(t) * e * kBumpHeight;
    if (invert) bump = -bump;
    if (mode == kShaper || mode == kBoost) return (bump + level) * sign;
    // Limited upwards only: a bump turned over grows freely.
    const double driven = kSaturationGain * e * bump;
    return ((driven > 1.0 ? 1.0 : driven) + level) * sign;
}

double DynShaper::Bump(double t) const {
    switch (waveform) {
    case kSine:
        return std::sin(t * kPi);
    case kTriangle:
        return t < 0.5 ? 2.0 * t : 1.0 - 2.0 * (t - 0.5);
    default:
        return t > 0.0 && t < 0.5 ? 1.0 : 0.0;
    }
}

void DynShaper::RenderPreview(std::span<double, kShaperCurvePoints> curve,
                              std::span<double, kShaperSignalPoints> signal) const {
    for (int k = 0; k < kShaperCurvePoints; ++k) {
        const double input = 2.0 * (static_cast<double>(k) / kShaperCurvePoints - 0.5);
        curve[static_cast<std::size_t>(k)] = Shape(input, amount);
    }
    for (int k = 0; k < kShaperSignalPoints; ++k) {
        const double input = std::sin(2.0 * kPi * k / kShaperSignalPoints);
        signal[static_cast<std::size_t>(k)] = Shape(input, amount);
    }
}

} // namespace Grimworks
