#include "effects/FilterUnit.h"

#include "core/Choice.h"

#include <cmath>

namespace Grimworks {

namespace {

constexpr int kLastFilter1 = 3;
constexpr int kLastFilter2 = 5;
constexpr int kLastTransition = 2;
constexpr int kSlowTransition = 2048;
constexpr int kUsualTransition = 512;
constexpr double kDriveThreshold = 0.25;
constexpr double kDriveMixFactor = 4.0;

/// What the resonance knob moves: the first of these that a filter has.
constexpr std::array kResonanceIds{Dsp::ParamId::kQ, Dsp::ParamId::kBandwidth, Dsp::ParamId::kBandwidthHz,
                                   Dsp::ParamId::kRippleDb};

} // namespace

FilterUnit::FilterUnit() {
    for (Dsp::Filter* filter : AllFilters())
        filter->setParams(filter->getDefaultParams());
    // Written behind the first design: the steep filters sweep their order up when they are first chosen.
    for (Dsp::Filter* filter :
         {static_cast<Dsp::Filter*>(&chebyshevHighPass1), static_cast<Dsp::Filter*>(&chebyshevLowPass1),
          static_cast<Dsp::Filter*>(&butterworthBandPass), static_cast<Dsp::Filter*>(&butterworthBandStop)})
        filter->setParam(Dsp::ParamId::kOrder, 2.0);
    chebyshevHighPass2.setParam(Dsp::ParamId::kOrder, 4.0);
    chebyshevLowPass2.setParam(Dsp::ParamId::kOrder, 4.0);
    drive.SetBlend(kDriveThreshold, kDriveMixFactor);
    Prepare(*filter1);
    Prepare(*filter2);
}

void FilterUnit::Initialise(const DistortionDataProvider& curves) {
    drive.Initialise(curves, 1);
    drive.SetBlend(kDriveThreshold, kDriveMixFactor);
}

std::array<Dsp::Filter*, FilterUnit::kFilters> FilterUnit::AllFilters() {
    return {&rbjHighPass,         &rbjLowPass,         &rbjBandPass,        &rbjBandStop,
            &chebyshevHighPass1,  &chebyshevLowPass1,  &chebyshevHighPass2, &chebyshevLowPass2,
            &butterworthBandPass, &butterworthBandStop};
}

Dsp::Filter& FilterUnit::FirstOf(int number) {
    switch (number) {
    case 0:
        return rbjLowPass;
    case 1:
        return rbjHighPass;
    case 2:
        return rbjBandPass;
    default:
        return rbjBandStop;
    }
}

Dsp::Filter& FilterUnit::SecondOf(int number) {
    switch (number) {
    case 1:
        return chebyshevHighPass2;
    case 2:
        return chebyshevLowPass1;
    case 3:
        return chebyshevLowPass2;
    case 4:
        return butterworthBandPass;
    case 5:
        return butterworthBandStop;
    default:
        return chebyshevHighPass1;
    }
}

void FilterUnit::SetSampleRate(double rate) {
    AudioProcessingUnit::SetSampleRate(rate);
    drive.SetSampleRate(rate);
    for (Dsp::Filter* filter : AllFilters())
        filter->setParam(Dsp::ParamId::kSampleRate, rate);
}

void FilterUnit::SetBlockSize(int frames) {
    buffer1.Grow(frames);
    buffer2.Grow(frames);
}

void FilterUnit::Reset() {
    for (Dsp::Filter* filter : AllFilters())
        filter->reset();
}

void FilterUnit::SetOnOff(double value) {
    SetBypass(value == 0.0);
}

void FilterUnit::SetDrive(double value) {
    drive.SetAmount(value);
}

void FilterUnit::SetBalance(double value) {
    if (std::isfinite(value)) balance = value;
}

void FilterUnit::SetCutoff(double value) {
    if (!std::isfinite(value)) return;
    cutoffControl = value;
    ApplyCutoff(*filter1);
    ApplyCutoff(*filter2);
}

void FilterUnit::SetResonance(double value) {
    if (!std::isfinite(value)) return;
    resonanceControl = value;
    ApplyResonance(*filter1);
    ApplyResonance(*filter2);
}

void FilterUnit::SetFilter1Type(double value) {
    if (!std::isfinite(value)) return;
    filter1Type = ClampedChoice(value, kLastFilter1);
    filter1 = &FirstOf(filter1Type);
    Prepare(*filter1);
}

void FilterUnit::SetFilter2Type(double value) {
    if (!std::isfinite(value)) return;
    filter2Type = Choice(value, kLastFilter2);
    filter2 = &SecondOf(filter2Type);
    Prepare(*filter2);
}

void FilterUnit::SetTransition(double value) {
    if (!std::isfinite(value)) return;
    transitionMode = ClampedChoice(value, kLastTransition);
    transitionSamples = transitionMode == 0 ? kSlowTransition : kUsualTransition;
    filter1->setTransition(transitionSamples);
    filter2->setTransition(transitionSamples);
}

double FilterUnit::CutoffFrequency(double value) const {
    return filter1->toNativeValue(Dsp::ParamId::kFrequency, value);
}

void FilterUnit::ApplyCutoff(Dsp::Filter& filter) const {
    filter.changeParam(Dsp::ParamId::kFrequency,
                       filter.toNativeValue(Dsp::ParamId::kFrequency, cutoffControl));
}

void FilterUnit::ApplyResonance(Dsp::Filter& filter) const {
    for (const int id : kResonanceIds) {
        if (filter.findParam(id) < 0) continue;
        filter.changeParam(id, filter.toNativeValue(id, resonanceControl));
        return;
    }
}

void FilterUnit::Prepare(Dsp::Filter& filter) const {
    ApplyResonance(filter);
    ApplyCutoff(filter);
    filter.setTransition(transitionSamples);
}

void FilterUnit::Process(StereoView io, int frames) {
    if (IsFadedOut() || frames > buffer1.Size()) return;
    drive.Process(io, frames);
    buffer1.CopyFrom(io, frames);
    buffer2.CopyFrom(io, frames);
    const std::array channels1{buffer1.Left(), buffer1.Right()};
    const std::array channels2{buffer2.Left(), buffer2.Right()};
    filter1->process(frames, channels1.data());
    filter2->process(frames, channels2.data());
    Mix(io, frames);
}

void FilterUnit::Mix(StereoView io, int frames) {
    const StereoView one = buffer1.View();
    const StereoView two = buffer2.View();
    for (int i = 0; i < frames; ++i) {
        const double share = smoothedBalance.Step(balance);
        const double left = (1.0 - share) * one.left[i] + share * two.left[i];
        const double right = (1.0 - share) * one.right[i] + share * two.right[i];
        if (fade != 1.0) {
            io.left[i] = (1.0 - fade) * io.left[i] + fade * left;
            io.right[i] = (1.0 - fade) * io.right[i] + fade * right;
            StepFade();
        } else {
            io.left[i] = left;
            io.right[i] = right;
        }
    }
}

} // namespace Grimworks
