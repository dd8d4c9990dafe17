#include "effects/HqFilterUnit.h"

namespace Grimworks {

namespace {

constexpr double kOrder = 4.0;
constexpr double kLowPassFrequency = 20000.0;
constexpr int kFirstMode = 1;
constexpr int kLastMode = 2;

} // namespace

HqFilterUnit::HqFilterUnit() {
    lowPass.changeParam(Dsp::ParamId::kOrder, kOrder);
    highPass.changeParam(Dsp::ParamId::kOrder, kOrder);
    SetMode(kFirstMode);
}

void HqFilterUnit::SetSampleRate(double rate) {
    AudioProcessingUnit::SetSampleRate(rate);
    lowPass.changeParam(Dsp::ParamId::kSampleRate, rate);
    highPass.changeParam(Dsp::ParamId::kSampleRate, rate);
}

void HqFilterUnit::SetMode(int mode) {
    if (mode < kFirstMode || mode > kLastMode) return;
    lowPass.changeParam(Dsp::ParamId::kFrequency, kLowPassFrequency);
}

} // namespace Grimworks
