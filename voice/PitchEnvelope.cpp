#include "voice/PitchEnvelope.h"

namespace Grimworks {

void PitchEnvelope::DrawCurve(std::array<double, kPitchCurvePoints>& out) const {
    constexpr double kLongest = kAttackTime + 2.0; // s
    for (int i = 0; i < kPitchCurvePoints; ++i) {
        const double seconds = static_cast<double>(i) / kPitchCurvePoints * kLongest;
        double v = Factor(seconds) - 1.0;
        if (v < 0.0) v *= kAmountScale;
        out[static_cast<std::size_t>(i)] = v / kAmountScale;
    }
}

} // namespace Grimworks
