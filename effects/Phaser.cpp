#include "effects/Phaser.h"

#include "core/Choice.h"
#include "core/Maths.h"
#include "core/TempoSync.h"

#include <cmath>

namespace Grimworks {

namespace {

constexpr double kMinDelay = 440.0 / (kDefaultSampleRate / 2.0);
constexpr double kMaxDelay = 1600.0 / (kDefaultSampleRate / 2.0);
constexpr double kMaxRate = 20.0; // Hz

} // namespace

void Phaser::SetDepth(double value) {
    if (std::isfinite(value)) depth = value;
}

void Phaser::SetFeedback(double value) {
    if (std::isfinite(value)) feedback = value;
}

void Phaser::SetRate(double value) {
    if (!std::isfinite(value) || !(sampleRate > 0.0)) return;
    lfoIncrement = value / sampleRate * 2.0 * kPi * kMaxRate;
}

std::optional<double> Phaser::SyncedRate(double tempo, double sync) {
    const int index = Choice(sync, static_cast<int>(kTempoDivisions.size()) - 1);
    if (index == 0) return std::nullopt;
    const bool known = index > 0 && index < static_cast<int>(kTempoDivisions.size());
    const double factor = known ? kTempoDivisions[static_cast<std::size_t>(index)].factor : 1.0;
    return TempoSyncedRate(tempo, factor);
}

double Phaser::NextCoefficient() {
    const double delay = kMinDelay + (kMaxDelay - kMinDelay) * (std::sin(lfoPhase) + 1.0) / 2.0;
    lfoPhase += lfoIncrement;
    if (lfoPhase >= 2.0 * kPi) lfoPhase -= 2.0 * kPi;
    if (!(lfoPhase >= 0.0 && lfoPhase < 2.0 * kPi)) RecoverPhase();
    return (1.0 - delay) / (1.0 + delay);
}

/// Rates beyond the knob's range carry the phase so far off that an ordinary step would no longer move it.
void Phaser::RecoverPhase() {
    lfoPhase = std::isfinite(lfoPhase) ? std::fmod(lfoPhase, 2.0 * kPi) : 0.0;
    if (lfoPhase < 0.0) lfoPhase += 2.0 * kPi;
}

double Phaser::Chain::Tick(double input, double feedbackGain, double coefficient) {
    double u = input + feedbackGain * last;
    for (double& z : state) {
        const double y = z - coefficient * u;
        z = coefficient * y + u;
        u = y;
    }
    last = u;
    return u;
}

/// A signal that has left the range of numbers would stay in the feedback for good.
void Phaser::Chain::ForgetOverflow() {
    bool finite = std::isfinite(last);
    for (const double z : state)
        finite = finite && std::isfinite(z);
    if (!finite) *this = Chain{};
}

void Phaser::Process(StereoView io, int frames) {
    if (depth == 0.0) return;
    for (int i = 0; i < frames && !IsFadedOut(); ++i) {
        const double c = NextCoefficient();
        const double phasedLeft = left.Tick(io.left[i], feedback, c);
        const double phasedRight = right.Tick(io.right[i], feedback, c);
        const double g = smoothedDepth.Step(depth) * fade;
        io.left[i] = io.left[i] + g * phasedLeft;
        io.right[i] = io.right[i] + g * phasedRight;
        StepFade();
    }
    left.ForgetOverflow();
    right.ForgetOverflow();
}

} // namespace Grimworks
