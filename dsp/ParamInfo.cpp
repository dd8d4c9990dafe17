#include "dsp/ParamInfo.h"

#include <cmath>
#include <cstdio>

namespace Dsp {

namespace {

/// Logarithm to the base 1.5; the base cancels in the mapping.
double Log15(double x) {
    return std::log(x) / std::log(1.5);
}

double ToLinear(const ParamInfo& info, double control) {
    return (info.max - info.min) * control + info.min;
}

double FromLinear(const ParamInfo& info, double native) {
    return (native - info.min) / (info.max - info.min);
}

std::string Format(const char* format, double value) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, value);
    return text.data();
}

} // namespace

double ParamInfo::toNativeValue(double control) const {
    switch (mapping) {
    case Mapping::Log:
        return std::pow(1.5, (Log15(max) - Log15(min)) * control + Log15(min));
    case Mapping::Pow2:
        return std::exp2((max - min) * control + min);
    case Mapping::Integer:
        return std::floor(ToLinear(*this, control) + 0.5);
    case Mapping::Linear:
        break;
    }
    return ToLinear(*this, control);
}

double ParamInfo::toControlValue(double native) const {
    switch (mapping) {
    case Mapping::Log:
        return (Log15(native) - Log15(min)) / (Log15(max) - Log15(min));
    case Mapping::Pow2:
        return (std::log2(native) - min) / (max - min);
    case Mapping::Integer:
    case Mapping::Linear:
        break;
    }
    return FromLinear(*this, native);
}

std::string ParamInfo::toString(double native) const {
    switch (id) {
    case ParamId::kOrder:
        return Format("%.0f", native);
    case ParamId::kSampleRate:
    case ParamId::kFrequency:
    case ParamId::kBandwidthHz:
        return Format("%.0f Hz", native);
    case ParamId::kGain:
    case ParamId::kRippleDb:
        return Format("%.3f dB", native);
    default:
        return Format("%.3f", native);
    }
}

} // namespace Dsp
