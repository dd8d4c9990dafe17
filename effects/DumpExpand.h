#pragma once

#include "dsp/Designs.h"
#include "effects/LateSwitchUnit.h"

namespace Grimworks {

/// One knob for two filters: left of the centre a low pass closes, right of it a high pass opens. At the
/// centre both stand at the ends of the audible range. Chebyshev filters of order 2, 0.01 dB of ripple.
class DumpExpand final : public LateSwitchUnit {
public:
    DumpExpand();

    /// Sweeps the filters to the new rate; their cutoffs stay until the value is set again.
    void SetSampleRate(double rate) override;

    /// Silences the filter states.
    void Reset();

    /// Knob 0..1, limited to that; a value that is not finite is ignored. Up to 44100 Hz the cutoffs keep to
    /// 20..21000 Hz.
    void SetValue(double newValue);

    [[nodiscard]] double Value() const { return value; }
    [[nodiscard]] const Dsp::Filter& LowPass() const { return lowPass; }
    [[nodiscard]] const Dsp::Filter& HighPass() const { return highPass; }

private:
    void RunFilters(int frames, double* const* channels) override;

    Dsp::ChebyshevLowPassI lowPass;
    Dsp::ChebyshevHighPassI highPass;
    double value = 0.5;
};

} // namespace Grimworks
