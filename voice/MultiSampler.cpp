#include "voice/MultiSampler.h"

#include "core/Maths.h"

#include <array>

namespace Grimworks {

void MultiSampler::Add(std::span<const double> samples, double rate) {
    samplers.emplace_back().Load(samples, rate);
}

double MultiSampler::Value(double seconds, double position) const {
    if (samplers.empty()) return 0.0;
    const std::size_t last = samplers.size() - 1;
    const double x = static_cast<double>(last) * (position > 0.0 ? Clamp(position, 0.0, 1.0) : 0.0);
    const auto k = static_cast<std::size_t>(x);
    const double f = x - static_cast<double>(k);
    const double upper = samplers[k < last ? k + 1 : last].Value(seconds);
    const double lower = samplers[k].Value(seconds);
    return lower * (1.0 - f) + upper * f;
}

MultiSampler MakeClickSamples(std::span<const std::span<const double>> clicks) {
    static constexpr double kSourceRate = 44100.0;
    static constexpr std::array<double, 1> kSilence{0.0};
    MultiSampler list;
    list.Add(kSilence, kSourceRate);
    for (const auto& click : clicks)
        list.Add(click, kSourceRate);
    return list;
}

} // namespace Grimworks
