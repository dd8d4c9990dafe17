#include "effects/SmpRateConverter.h"

#include "core/Maths.h"

#include <algorithm>
#include <cmath>

namespace Grimworks {

namespace {

constexpr int kFewest = 2;

} // namespace

void SmpRateConverter::SetReduction(double value) {
    if (!std::isfinite(value)) return;
    factor = value * value * value;
}

int SmpRateConverter::KeptFrames(int frames) const {
    return std::max(kFewest, static_cast<int>(Clamp(frames * factor, 0.0, frames)));
}

void SmpRateConverter::Process(StereoView io, int frames) {
    if (bypass || factor == 1.0 || frames <= 0) return;
    const int count = KeptFrames(frames);
    for (int k = 0; k < count; ++k) {
        const double place = std::floor(static_cast<double>(k) / count * frames);
        const int source = std::min(static_cast<int>(place), frames - 1);
        kept.Left()[k] = io.left[source];
        kept.Right()[k] = io.right[source];
    }
    for (int j = 0; j < frames; ++j) {
        const double p = static_cast<double>(j) / frames * count;
        const int q = std::min(static_cast<int>(p), count - 1);
        if (!interpolate) {
            io.left[j] = kept.Left()[q];
            io.right[j] = kept.Right()[q];
            continue;
        }
        const double f = p - q;
        const int next = std::min(q + 1, count - 1);
        io.left[j] = f * kept.Left()[next] + (1.0 - f) * kept.Left()[q];
        io.right[j] = f * kept.Right()[next] + (1.0 - f) * kept.Right()[q];
    }
}

} // namespace Grimworks
