#include "effects/Equalizer.h"

#include <cmath>

namespace Grimworks {

namespace {

constexpr double kLowFrequency = 400.0;
constexpr double kMidFrequency = 2000.0;
constexpr double kMidBandwidth = 1500.0;
constexpr double kHighFrequency = 4000.0;
constexpr double kOrder = 2.0;

/// Brings a band to its place, flat.
void Place(Dsp::Filter& filter, double frequency) {
    filter.setParam(Dsp::ParamId::kOrder, kOrder);
    filter.setParam(Dsp::ParamId::kFrequency, frequency);
    filter.setParam(Dsp::ParamId::kBandwidthHz, kMidBandwidth);
    filter.changeParam(Dsp::ParamId::kGain, 0.0);
}

void SetGain(Dsp::Filter& filter, double value) {
    if (!std::isfinite(value)) return;
    filter.changeParam(Dsp::ParamId::kGain, filter.toNativeValue(Dsp::ParamId::kGain, value));
}

} // namespace

Equalizer::Equalizer() {
    Place(lowShelf, kLowFrequency);
    Place(midBand, kMidFrequency);
    Place(highShelf, kHighFrequency);
}

void Equalizer::SetSampleRate(double rate) {
    AudioProcessingUnit::SetSampleRate(rate);
    lowShelf.changeParam(Dsp::ParamId::kSampleRate, rate);
    midBand.changeParam(Dsp::ParamId::kSampleRate, rate);
    highShelf.changeParam(Dsp::ParamId::kSampleRate, rate);
}

void Equalizer::Reset() {
    lowShelf.reset();
    midBand.reset();
    highShelf.reset();
}

void Equalizer::SetBass(double value) {
    SetGain(lowShelf, value);
}

void Equalizer::SetMid(double value) {
    SetGain(midBand, value);
}

void Equalizer::SetHigh(double value) {
    SetGain(highShelf, value);
}

void Equalizer::RunFilters(int frames, double* const* channels) {
    lowShelf.process(frames, channels);
    midBand.process(frames, channels);
    highShelf.process(frames, channels);
}

} // namespace Grimworks
