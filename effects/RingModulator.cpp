#include "effects/RingModulator.h"

#include "core/Choice.h"

#include <cmath>

namespace Grimworks {

namespace {

constexpr double kMaxFrequency = 4000.0; // Hz

} // namespace

RingModulator::RingModulator() {
    SetIncrements();
}

void RingModulator::SetSampleRate(double rate) {
    if (!(rate > 0.0)) return;
    AudioProcessingUnit::SetSampleRate(rate);
    first.SetSampleRate(rate);
    second.SetSampleRate(rate);
    third.SetSampleRate(rate);
    SetIncrements();
}

void RingModulator::SetAmount(double value) {
    if (std::isfinite(value)) amount = value;
}

void RingModulator::SetFrequency(double value) {
    if (!std::isfinite(value)) return;
    frequency = value;
    SetIncrements();
}

void RingModulator::SetIncrements() {
    const double hertz = frequency * kMaxFrequency;
    first.phaseInc = hertz / sampleRate;
    second.phaseInc = 2.0 * hertz / sampleRate;
    third.phaseInc = 4.0 * hertz / sampleRate;
}

void RingModulator::SetWaveform(double value) {
    waveform = ClampedChoice(value, kSine3);
    switch (waveform) {
    case kPulse:
        first.waveform = PolyBLEP::kSquare;
        break;
    case kSaw:
        first.waveform = PolyBLEP::kSaw;
        break;
    default:
        first.waveform = second.waveform = third.waveform = PolyBLEP::kSine;
        break;
    }
}

double RingModulator::NextModulator() {
    if (waveform == kSine2) {
        first.Advance();
        second.Advance();
        const double value = first.Get();
        first.Advance();
        return value;
    }
    if (waveform == kSine3) {
        const double s1 = first.Get();
        first.Advance();
        const double s2 = second.Get();
        second.Advance();
        const double s3 = third.Get();
        third.Advance();
        return (s3 + s2 - s1) * 0.3;
    }
    const double value = first.Get();
    first.Advance();
    return value;
}

void RingModulator::Process(StereoView io, int frames) {
    if (IsFadedOut() || frequency == 0.0 || amount == 0.0) return;
    for (int i = 0; i < frames; ++i) {
        const double s = NextModulator();
        const double m = smoothed.Step(amount) * fade;
        io.left[i] = m * io.left[i] * s + (1.0 - m) * io.left[i];
        io.right[i] = m * io.right[i] * s + (1.0 - m) * io.right[i];
        StepFade();
        StepFade();
    }
}

} // namespace Grimworks
