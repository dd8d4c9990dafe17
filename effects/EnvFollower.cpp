#include "effects/EnvFollower.h"

#include "core/Maths.h"

#include <cmath>

namespace Grimworks {

void EnvFollower::SetSampleRate(double rate) {
    AudioProcessingUnit::SetSampleRate(rate);
    UpdateCoefficients();
}

void EnvFollower::SetTimes(double attack, double release) {
    attackSeconds = attack;
    releaseSeconds = release;
    UpdateCoefficients();
}

void EnvFollower::UpdateCoefficients() {
    attackCoefficient = std::exp(-1.0 / (sampleRate * attackSeconds));
    releaseCoefficient = std::exp(-1.0 / (sampleRate * releaseSeconds));
}

void EnvFollower::Follow(double& envelope, double sample) const {
    if (std::isnan(sample)) return;
    const double v = Clamp(std::fabs(sample), 0.0, 1.0);
    const double c = v > envelope ? attackCoefficient : releaseCoefficient;
    envelope = (1.0 - c) * v + c * envelope;
}

void EnvFollower::Process(StereoView input, int frames) {
    for (int i = 0; i < frames; ++i) {
        Follow(envelopeLeft, input.left[i]);
        Follow(envelopeRight, input.right[i]);
    }
}

void EnvFollower::ProcessQuiet() {
    const int frames = static_cast<int>(sampleRate * releaseSeconds / 20.0);
    for (int i = 0; i < frames; ++i) {
        Follow(envelopeLeft, 0.0);
        Follow(envelopeRight, 0.0);
    }
}

} // namespace Grimworks
