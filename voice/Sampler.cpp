#include "voice/Sampler.h"

namespace Grimworks {

void Sampler::Load(std::span<const double> samples, double rate) {
    if (!(rate > 0.0)) return;
    data.assign(samples.begin(), samples.end());
    sourceRate = rate;
    duration = static_cast<double>(samples.size()) / rate;
}

} // namespace Grimworks
