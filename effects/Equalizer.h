#pragma once

#include "dsp/Designs.h"
#include "effects/LateSwitchUnit.h"

namespace Grimworks {

/// Three bands of second-order shelves: bass below 400 Hz, mid around 2000 Hz (1500 Hz wide), high above
/// 4000 Hz. Knobs of 0..1 stand for -24..+24 dB; 0.5 is flat. Bass and high glide to a new gain over 512
/// samples; the mid band takes its gain at the end of that time.
class Equalizer final : public LateSwitchUnit {
public:
    Equalizer();

    /// Sweeps the filters to the new rate.
    void SetSampleRate(double rate) override;

    /// Silences the filter states.
    void Reset();

    /// Knobs 0..1; a value that is not finite is ignored.
    void SetBass(double value);
    void SetMid(double value);
    void SetHigh(double value);

private:
    void RunFilters(int frames, double* const* channels) override;

    Dsp::ButterworthLowShelf lowShelf;
    Dsp::ButterworthBandShelf midBand;
    Dsp::ButterworthHighShelf highShelf;
};

} // namespace Grimworks
