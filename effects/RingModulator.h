#pragma once

#include "core/AudioProcessingUnit.h"
#include "core/SmoothedValue.h"
#include "core/StereoBuffer.h"
#include "voice/PolyBLEP.h"

namespace Grimworks {

/// Multiplies the signal by an oscillator of up to 4000 Hz. Its fade runs at twice the usual pace, 250
/// frames.
class RingModulator : public AudioProcessingUnit {
public:
    RingModulator();

    /// Hz; keeps the modulator's frequency. A rate that is not above 0 is ignored.
    void SetSampleRate(double rate) override;

    /// Knob 0..1. A value that is not finite is ignored.
    void SetAmount(double value);
    /// Knob 0..1 for 0 to 4000 Hz. A value that is not finite is ignored.
    void SetFrequency(double value);
    /// Value 0..1: "Sine", "Pulse", "Saw", "Sine2" (an octave up), "Sine3" (three sines in octaves).
    void SetWaveform(double value);

    /// In place. Does nothing once faded out, nor at amount or frequency 0, when fade, smoother and
    /// oscillators stand still too. Audio thread.
    void Process(StereoView io, int frames);

private:
    enum Waveform : int { kSine = 0, kPulse = 1, kSaw = 2, kSine2 = 3, kSine3 = 4 };

    void SetIncrements();
    double NextModulator();

    double frequency = 0.1; ///< knob
    double amount = 0.0;
    int waveform = kSine;
    SmoothedValue smoothed{0.9777, 0.0223, 0.0};
    PolyBLEP first;
    PolyBLEP second; ///< an octave above the first
    PolyBLEP third;  ///< two octaves above the first
};

} // namespace Grimworks
