#include "effects/Saturator.h"

#include "core/Maths.h"

#include <cmath>

namespace Grimworks {

Saturator::Saturator() {
    curve.interpolation = CurveInterpolation::Linear;
}

void Saturator::Initialise(const DistortionDataProvider& curves, std::int32_t newType) {
    type = newType;
    curve.Load(curves.GetTable(type == 1 ? DistortionDataProvider::kFilterSaturation
                                         : DistortionDataProvider::kSoftSaturation));
    SetBlend(0.5, 2.0);
}

void Saturator::SetBlend(double newThreshold, double newMixFactor) {
    threshold = newThreshold;
    mixFactor = newMixFactor;
}

void Saturator::SetAmount(double value) {
    if (std::isfinite(value)) amount = value;
}

double Saturator::Shape(double input, double gain, double wet) const {
    const double y = Clamp(gain * LookUpCurve(curve.points, input, CurveInterpolation::Linear), -1.0, 1.0);
    return smoothedAmount.state < threshold ? wet * y + (1.0 - wet) * input : y;
}

void Saturator::Process(StereoView io, int frames) {
    if (amount == 0.0) return;
    for (int i = 0; i < frames; ++i) {
        smoothedAmount.Step(amount);
        smoothedGain.Step(kGain);
        const double gain = smoothedGain.state * smoothedAmount.state;
        const double wet = smoothedAmount.state * mixFactor;
        io.left[i] = Shape(io.left[i], gain, wet);
        io.right[i] = Shape(io.right[i], gain, wet);
    }
}

} // namespace Grimworks
