#pragma once

#include "core/AudioProcessingUnit.h"
#include "core/SmoothedValue.h"
#include "core/StereoBuffer.h"
#include "dsp/Designs.h"
#include "effects/DistortionDataProvider.h"
#include "effects/Saturator.h"

#include <array>
#include <cstdint>

namespace Grimworks {

/// The dual filter: an input drive, then two filters side by side with a balance between them. Filter 1 is a
/// second-order section of four kinds, filter 2 a Chebyshev or Butterworth of six. Every filter sweeps to a
/// new cutoff or resonance, so both can be automated without clicks. A filter that is not chosen keeps its
/// state and goes on from there when it is chosen again.
///
/// Setters take parameter values 0..1; a value that is not finite is ignored.
class FilterUnit final : public AudioProcessingUnit {
public:
    FilterUnit();
    FilterUnit(const FilterUnit&) = delete; // the chosen filters point into the object
    FilterUnit& operator=(const FilterUnit&) = delete;

    /// Takes the curve of the input drive. Host thread.
    void Initialise(const DistortionDataProvider& curves);

    /// Stores the rate for all filters without designing them: each is heard at the new rate from its next
    /// cutoff, resonance or choice on, and sweeps there.
    void SetSampleRate(double rate) override;

    /// Grows the buffers; longer blocks pass unfiltered. Allocates; host thread.
    void SetBlockSize(int frames);

    /// Silences the states of all filters.
    void Reset();

    /// 0 switches the unit off, anything else on.
    void SetOnOff(double value);
    void SetDrive(double value);
    /// 0: filter 1, 1: filter 2.
    void SetBalance(double value);
    void SetCutoff(double value);
    /// Q of filter 1; ripple or bandwidth of filter 2.
    void SetResonance(double value);
    void SetFilter1Type(double value);
    void SetFilter2Type(double value);
    /// How long sweeps take: 2048 samples for the first of the three choices, 512 for the others.
    void SetTransition(double value);

    [[nodiscard]] std::int32_t Filter1Type() const { return filter1Type; }
    [[nodiscard]] std::int32_t Filter2Type() const { return filter2Type; }
    [[nodiscard]] std::int32_t TransitionMode() const { return transitionMode; }

    /// The frequency in Hz that a value of the cutoff parameter means.
    [[nodiscard]] double CutoffFrequency(double value) const;

    /// The filters in use, for displays and tests.
    [[nodiscard]] const Dsp::Filter& Filter1() const { return *filter1; }
    [[nodiscard]] const Dsp::Filter& Filter2() const { return *filter2; }

    /// In place; audio thread.
    void Process(StereoView io, int frames);

private:
    static constexpr int kFilters = 10;

    [[nodiscard]] std::array<Dsp::Filter*, kFilters> AllFilters();
    [[nodiscard]] Dsp::Filter& FirstOf(int number);
    [[nodiscard]] Dsp::Filter& SecondOf(int number);
    void ApplyCutoff(Dsp::Filter& filter) const;
    void ApplyResonance(Dsp::Filter& filter) const;
    void Prepare(Dsp::Filter& filter) const;
    void Mix(StereoView io, int frames);

    double cutoffControl = 1.0;
    double resonanceControl = 0.0;
    double balance = 1.0;
    std::int32_t filter1Type = 0;
    std::int32_t filter2Type = 0;
    SmoothedValue smoothedBalance; ///< starts on filter 1 and glides from there
    StereoBuffer buffer1;
    StereoBuffer buffer2;

    Dsp::RbjHighPass rbjHighPass;
    Dsp::RbjLowPass rbjLowPass;
    Dsp::RbjBandPass1 rbjBandPass;
    Dsp::RbjBandStop rbjBandStop;
    Dsp::ChebyshevHighPass chebyshevHighPass1;
    Dsp::ChebyshevLowPass chebyshevLowPass1;
    Dsp::ChebyshevHighPass chebyshevHighPass2;
    Dsp::ChebyshevLowPass chebyshevLowPass2;
    Dsp::ButterworthBandPass butterworthBandPass;
    Dsp::ButterworthBandStop butterworthBandStop;
    Dsp::Filter* filter1 = &rbjLowPass;
    Dsp::Filter* filter2 = &chebyshevHighPass1;

    std::int32_t transitionMode = 2;
    std::int32_t transitionSamples = 512;
    Saturator drive;
};

} // namespace Grimworks
