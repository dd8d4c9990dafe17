#pragma once

#include "effects/BitCrusher.h"
#include "effects/Distortion.h"
#include "effects/DynShaper.h"
#include "effects/GateCrack.h"
#include "effects/SmpRateConverter.h"

namespace Grimworks {

/// The distortion section: sample-rate reduction, bit crush, gate crack, waveshaper and dynamic shaper in
/// this order, each over the whole block before the next. Setters take parameter values 0..1 under the
/// plug-in lock.
class DistortionStage {
public:
    explicit DistortionStage(const DistortionDataProvider& provider) : distortion(provider) {}

    /// Hz; matters to captions and the units' own records only. A rate that is not above 0 is ignored.
    void SetSampleRate(double rate);
    /// Largest number of frames that Process will be given. Buffers only grow.
    void SetBlockSize(int frames);

    /// 0 switches the section off: converter, crusher and waveshaper at once, the dynamic shaper in a fade.
    /// The gate goes on.
    void SetOnOff(double value);
    void SetAmount(double value) { distortion.SetAmount(value); }
    void SetType(double value) { distortion.SetType(value); }
    void SetMode(double value) { distortion.SetMode(value); }
    void SetInterpolation(double value) { distortion.SetInterpolation(value); }
    void SetQuantization(double value) { crusher.SetQuantization(value); }
    void SetSampleRateReduction(double value) { converter.SetReduction(value); }
    void SetGate(double value) { gate.SetGate(value); }
    void SetShaperAmount(double value) { shaper.SetAmount(value); }
    void SetShaperInvert(double value) { shaper.SetInvert(value); }
    void SetShaperWaveform(double value) { shaper.SetWaveform(value); }
    void SetShaperMode(double value) { shaper.SetMode(value); }
    void SetShaperPolarity(double value) { shaper.SetPolarity(value); }

    /// In place, frames at most the block size. The modulations are factors a frame for the waveshaper's and
    /// the dynamic shaper's amount; null for none. Audio thread.
    void Process(StereoView io, int frames, const double* distortionModulation,
                 const double* shaperModulation);

    [[nodiscard]] Distortion& GetDistortion() { return distortion; }
    [[nodiscard]] const Distortion& GetDistortion() const { return distortion; }
    [[nodiscard]] const DynShaper& GetShaper() const { return shaper; }

    /// For captions: word length in bits, reduced rate in whole Hz, the gate's linear level and its knob.
    [[nodiscard]] double CrushBits() const { return crusher.Bits(); }
    [[nodiscard]] int ReducedRate() const;
    [[nodiscard]] double GateLevel() const { return gate.Level(); }
    [[nodiscard]] double GateRaw() const { return gate.Raw(); }

private:
    double sampleRate = kDefaultSampleRate;
    int blockSize = kDefaultBlockSize;
    SmpRateConverter converter;
    BitCrusher crusher;
    GateCrack gate;
    Distortion distortion;
    DynShaper shaper;
};

} // namespace Grimworks
