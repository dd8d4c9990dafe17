#include "effects/DumpExpand.h"

#include "core/Limits.h"
#include "core/Maths.h"

#include <cmath>

namespace Grimworks {

namespace {

constexpr double kLowest = 20.0;
constexpr double kHighest = 21000.0;
constexpr double kOrder = 2.0;

} // namespace

DumpExpand::DumpExpand() {
    lowPass.setParam(Dsp::ParamId::kOrder, kOrder);
    lowPass.changeParam(Dsp::ParamId::kFrequency, kHighest);
    highPass.setParam(Dsp::ParamId::kOrder, kOrder);
    highPass.changeParam(Dsp::ParamId::kFrequency, kLowest);
}

void DumpExpand::SetSampleRate(double rate) {
    AudioProcessingUnit::SetSampleRate(rate);
    lowPass.changeParam(Dsp::ParamId::kSampleRate, rate);
    highPass.changeParam(Dsp::ParamId::kSampleRate, rate);
}

void DumpExpand::Reset() {
    lowPass.reset();
    highPass.reset();
}

void DumpExpand::SetValue(double newValue) {
    if (!std::isfinite(newValue)) return;
    value = Clamp(newValue, 0.0, 1.0);
    const double high = Clamp(2.0 * (value - 0.5), 0.0, 1.0);
    const double low = Clamp(2.0 * value, 0.0, 1.0);
    double highCutoff = highPass.toNativeValue(Dsp::ParamId::kFrequency, high);
    double lowCutoff = lowPass.toNativeValue(Dsp::ParamId::kFrequency, low);
    if (sampleRate <= kDefaultSampleRate) {
        highCutoff = Clamp(highCutoff, kLowest, kHighest);
        lowCutoff = Clamp(lowCutoff, kLowest, kHighest);
    }
    highPass.changeParam(Dsp::ParamId::kFrequency, highCutoff);
    lowPass.changeParam(Dsp::ParamId::kFrequency, lowCutoff);
}

void DumpExpand::RunFilters(int frames, double* const* channels) {
    lowPass.process(frames, channels);
    highPass.process(frames, channels);
}

} // namespace Grimworks
