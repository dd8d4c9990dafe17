#pragma once

#include "core/AudioProcessingUnit.h"
#include "dsp/Designs.h"

namespace Grimworks {

/// Holder of a pair of fourth-order Bessel filters. It follows the sample rate but stands in no signal path.
class HqFilterUnit final : public AudioProcessingUnit {
public:
    HqFilterUnit();

    void SetSampleRate(double rate) override;

    /// Modes 1 and 2 put the low pass at 20000 Hz; others leave it.
    void SetMode(int mode);

    [[nodiscard]] const Dsp::Filter& LowPass() const { return lowPass; }
    [[nodiscard]] const Dsp::Filter& HighPass() const { return highPass; }

private:
    Dsp::BesselLowPass lowPass;
    Dsp::BesselHighPass highPass;
};

} // namespace Grimworks
