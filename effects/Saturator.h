#pragma once

#include "core/AudioProcessingUnit.h"
#include "core/SmoothedValue.h"
#include "core/StereoBuffer.h"
#include "effects/DistortionCurve.h"
#include "effects/DistortionDataProvider.h"

#include <cstdint>

namespace Grimworks {

/// Saturation through a fixed curve and a gain that clips behind it. The lower part of the amount cross-fades
/// from the clean signal; above the threshold only the saturated one is left. At an amount of exactly 0 the
/// signal is untouched and the smoothers stand still.
class Saturator final : public AudioProcessingUnit {
public:
    /// A straight curve until Initialise.
    Saturator();

    /// Takes the curve of a type (0: output stage, 1: drive of the filter unit; others as 0) and the usual
    /// threshold and mix factor. Host thread.
    void Initialise(const DistortionDataProvider& curves, std::int32_t newType);

    /// Amount at which the dry signal is gone, and the factor that turns an amount below it into the wet
    /// share.
    void SetBlend(double newThreshold, double newMixFactor);

    /// Knob 0..1. A value that is not finite is ignored.
    void SetAmount(double value);

    [[nodiscard]] std::int32_t Type() const { return type; }

    /// In place; audio thread.
    void Process(StereoView io, int frames);

private:
    static constexpr double kGain = 5.0;

    [[nodiscard]] double Shape(double input, double gain, double wet) const;

    double amount = 0.0;
    double threshold = 0.5;
    double mixFactor = 2.0;
    SmoothedValue smoothedAmount;
    SmoothedValue smoothedGain; ///< climbs from 0 once, with the first sound
    DistortionCurve curve;
    std::int32_t type = 0;
};

} // namespace Grimworks
