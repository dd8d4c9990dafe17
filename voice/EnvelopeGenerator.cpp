#include "voice/EnvelopeGenerator.h"

#include <algorithm>
#include <cmath>

namespace Grimworks {

namespace {

constexpr double kStartShape = 0.3;
constexpr double kLongestDuration = 5.0; // s
constexpr double kSmallestDuration = 0.001;
constexpr double kTargetFloor = 1.9800523e-6;
constexpr double kSmallestTarget = 1e-9;

/// Factor per sample that covers the distance to a target `ratio` beyond the end within `rate` samples.
double Coefficient(double rate, double ratio) {
    return rate > 0.0 ? std::exp(-std::log((ratio + 1.0) / ratio) / rate) : 0.0;
}

double TargetRatio(double shape, double scale) {
    return std::max(shape * shape * shape * scale + kTargetFloor, kSmallestTarget);
}

/// Whole points of a display curve; NaN counts as none.
int WholePoints(double points) {
    if (!(points > 0.0)) return 0;
    return points < kEnvelopeCurvePoints ? static_cast<int>(points) : kEnvelopeCurvePoints;
}

} // namespace

EnvelopeGenerator::EnvelopeGenerator(std::string_view displayName) : name(displayName) {
    SetShape(kStartShape);
}

void EnvelopeGenerator::SetAttack(double x) {
    attackRate = x * duration * sampleRate;
    UpdateAttack();
}

void EnvelopeGenerator::SetDecay(double x) {
    decayRate = x * duration * sampleRate;
    UpdateDecay();
}

void EnvelopeGenerator::SetRelease(double x) {
    releaseRate = x * duration * sampleRate;
    UpdateRelease();
}

void EnvelopeGenerator::SetSustain(double x) {
    sustainLevel = x;
    decayBase = (sustainLevel - targetRatioDR) * (1.0 - decayCoef);
}

void EnvelopeGenerator::SetDuration(double x) {
    const double samples = duration * sampleRate;
    const double attack = attackRate / samples;
    const double decay = decayRate / samples;
    const double release = releaseRate / samples;
    duration = kLongestDuration * std::max(x, kSmallestDuration);
    SetAttack(attack);
    SetDecay(decay);
    SetRelease(release);
}

void EnvelopeGenerator::SetShape(double x) {
    targetRatioA = TargetRatio(x, 20.0);
    targetRatioDR = TargetRatio(x, 4.0);
    UpdateAttack();
    UpdateDecay();
    UpdateRelease();
}

void EnvelopeGenerator::UpdateAttack() {
    attackCoef = Coefficient(attackRate, targetRatioA);
    attackBase = (1.0 - attackCoef) * (targetRatioA + 1.0);
}

void EnvelopeGenerator::UpdateDecay() {
    decayCoef = Coefficient(decayRate, targetRatioDR);
    decayBase = (sustainLevel - targetRatioDR) * (1.0 - decayCoef);
}

void EnvelopeGenerator::UpdateRelease() {
    releaseCoef = Coefficient(releaseRate, targetRatioDR);
    releaseBase = (1.0 - releaseCoef) * -targetRatioDR;
}

void EnvelopeGenerator::DrawCurve(std::array<double, kEnvelopeCurvePoints>& out, double scale) const {
    constexpr double kWidth = kEnvelopeCurvePoints;
    constexpr double kDecayStretch = 90.132;
    const double samples = duration * sampleRate;
    const double attackPoints = attackRate / samples / 3.0 * kWidth;
    const double releasePoints = releaseRate / samples / 3.0 * kWidth;
    const int decayStart = WholePoints(attackPoints);
    const int releaseStart = kEnvelopeCurvePoints - WholePoints(releasePoints);
    const double decayPoints =
        kDecayStretch / std::max(releaseStart - decayStart, 1) * decayRate / samples * kWidth;

    const double attack = Coefficient(attackPoints, targetRatioA);
    const double decay = Coefficient(decayPoints, targetRatioDR);
    const double release = Coefficient(releasePoints, targetRatioDR);
    double level = 0.0;
    for (int i = 0; i < kEnvelopeCurvePoints; ++i) {
        if (i == decayStart) level = 1.0;
        if (i < decayStart) {
            level = std::min((1.0 - attack) * (targetRatioA + 1.0) + level * attack, 1.0);
        } else if (i < releaseStart) {
            level = std::max((sustainLevel - targetRatioDR) * (1.0 - decay) + level * decay, sustainLevel);
        } else {
            level = std::max((1.0 - release) * -targetRatioDR + level * release, 0.0);
        }
        out[static_cast<std::size_t>(i)] = level * scale;
    }
    out.front() = 0.0;
    out.back() = 0.0;
}

} // namespace Grimworks
