#include "voice/EnvelopeGenerator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace Grimworks {
namespace {

constexpr double kRate = 44100.0;
constexpr double kStartDuration = 0.2; // s
constexpr double kTolerance = 1e-12;

double TargetRatioA(double shape) {
    return shape * shape * shape * 20.0 + 1.9800523e-6;
}

double TargetRatioDR(double shape) {
    return shape * shape * shape * 4.0 + 1.9800523e-6;
}

/// Value n of the recursion x = base + coefficient * x in closed form: it tends to `target`, and its
/// coefficient is the one that brings a distance of 1 + ratio down to ratio within `samples`.
double Approach(double start, double target, double ratio, double samples, int n) {
    const double coefficient = std::exp(-std::log((ratio + 1.0) / ratio) / samples);
    const long double power = std::pow(static_cast<long double>(coefficient), n);
    return static_cast<double>(target + (start - target) * power);
}

std::vector<double> Ticks(EnvelopeGenerator& envelope, int ticks) {
    std::vector<double> levels;
    levels.reserve(static_cast<std::size_t>(ticks));
    for (int i = 0; i < ticks; ++i)
        levels.push_back(envelope.Tick());
    return levels;
}

int TicksIn(EnvelopeGenerator& envelope, EnvelopeStage stage) {
    int ticks = 0;
    while (envelope.Stage() == stage) {
        envelope.Tick();
        ++ticks;
    }
    return ticks;
}

TEST(EnvelopeGenerator, StartsOffAtZero) {
    EnvelopeGenerator envelope("Volume Envelope");
    EXPECT_TRUE(envelope.IsOff());
    EXPECT_EQ(envelope.Output(), 0.0);
    EXPECT_EQ(envelope.Tick(), 0.0);
    EXPECT_TRUE(envelope.IsOff());
    EXPECT_EQ(envelope.Name(), "Volume Envelope");
    EXPECT_EQ(envelope.Duration(), kStartDuration);
}

TEST(EnvelopeGenerator, AttackFollowsTheClosedForm) {
    for (const double shape : {0.01, 0.3, 1.0}) {
        EnvelopeGenerator envelope;
        envelope.SetShape(shape);
        envelope.SetAttack(0.5);
        envelope.Start();
        const double ratio = TargetRatioA(shape);
        const double samples = 0.5 * kStartDuration * kRate;
        for (int n = 1; envelope.Stage() == EnvelopeStage::Attack; ++n) {
            const double expected = std::min(Approach(0.0, 1.0 + ratio, ratio, samples, n), 1.0);
            ASSERT_NEAR(envelope.Tick(), expected, kTolerance) << "shape " << shape << ", tick " << n;
        }
    }
}

TEST(EnvelopeGenerator, AttackTakesItsLength) {
    EnvelopeGenerator envelope;
    envelope.SetAttack(0.25);
    envelope.Start();
    EXPECT_NEAR(TicksIn(envelope, EnvelopeStage::Attack), 0.25 * kStartDuration * kRate, 1.0);
    EXPECT_EQ(envelope.Output(), 1.0);
    EXPECT_EQ(envelope.Stage(), EnvelopeStage::Decay);
}

TEST(EnvelopeGenerator, DecayFollowsTheClosedFormToItsSustain) {
    EnvelopeGenerator envelope;
    envelope.SetDecay(0.5);
    envelope.SetSustain(0.4);
    envelope.Start();
    envelope.Tick();
    const double ratio = TargetRatioDR(0.3);
    for (int n = 1; envelope.Stage() == EnvelopeStage::Decay; ++n) {
        const double curve = Approach(1.0, 0.4 - ratio, ratio, 0.5 * kStartDuration * kRate, n);
        ASSERT_NEAR(envelope.Tick(), std::max(curve, 0.4), kTolerance) << n;
    }
    EXPECT_EQ(envelope.Output(), 0.4);
    EXPECT_EQ(envelope.Stage(), EnvelopeStage::Sustain);
}

TEST(EnvelopeGenerator, ReleaseFollowsTheClosedFormToZero) {
    EnvelopeGenerator envelope;
    envelope.SetRelease(1.0);
    envelope.Start();
    Ticks(envelope, 3);
    ASSERT_EQ(envelope.Output(), 1.0);
    envelope.Release();
    const double ratio = TargetRatioDR(0.3);
    int n = 0;
    while (!envelope.IsOff()) {
        ++n;
        const double curve = Approach(1.0, -ratio, ratio, kStartDuration * kRate, n);
        ASSERT_NEAR(envelope.Tick(), std::max(curve, 0.0), kTolerance) << n;
    }
    EXPECT_NEAR(n, kStartDuration * kRate, 1.0);
    EXPECT_EQ(envelope.Output(), 0.0);
}

TEST(EnvelopeGenerator, AttackZeroReachesTheTopOnTheFirstTick) {
    EnvelopeGenerator envelope;
    envelope.SetAttack(0.0);
    envelope.Start();
    EXPECT_EQ(envelope.Output(), 0.0);
    EXPECT_EQ(envelope.Tick(), 1.0);
    EXPECT_EQ(envelope.Stage(), EnvelopeStage::Decay);
}

TEST(EnvelopeGenerator, OneTickServesOneStage) {
    EnvelopeGenerator envelope; // all stages of length 0
    envelope.SetSustain(0.5);
    envelope.Start();
    EXPECT_EQ(envelope.Tick(), 1.0);
    EXPECT_EQ(envelope.Stage(), EnvelopeStage::Decay);
    EXPECT_EQ(envelope.Tick(), 0.5);
    EXPECT_EQ(envelope.Stage(), EnvelopeStage::Sustain);
}

TEST(EnvelopeGenerator, SustainOneEndsTheDecayOnItsFirstTick) {
    EnvelopeGenerator envelope;
    envelope.SetDecay(1.0);
    envelope.SetSustain(1.0);
    envelope.Start();
    envelope.Tick();
    EXPECT_EQ(TicksIn(envelope, EnvelopeStage::Decay), 1);
    EXPECT_EQ(envelope.Output(), 1.0);
}

TEST(EnvelopeGenerator, SustainZeroStaysActiveAndSilentUntilTheRelease) {
    EnvelopeGenerator envelope;
    envelope.SetSustain(0.0);
    envelope.Start();
    Ticks(envelope, 1000);
    EXPECT_EQ(envelope.Stage(), EnvelopeStage::Sustain);
    EXPECT_EQ(envelope.Output(), 0.0);
    envelope.Release();
    envelope.Tick();
    EXPECT_TRUE(envelope.IsOff());
}

TEST(EnvelopeGenerator, ReleaseZeroFallsToZeroOnTheNextTick) {
    EnvelopeGenerator envelope;
    envelope.SetRelease(0.0);
    envelope.Start();
    Ticks(envelope, 10);
    envelope.Release();
    EXPECT_EQ(envelope.Output(), 1.0);
    EXPECT_EQ(envelope.Tick(), 0.0);
    EXPECT_TRUE(envelope.IsOff());
}

TEST(EnvelopeGenerator, ReleaseDuringTheAttackGoesOnFromItsLevel) {
    EnvelopeGenerator envelope;
    envelope.SetAttack(1.0);
    envelope.SetRelease(1.0);
    envelope.Start();
    const double level = Ticks(envelope, 500).back();
    envelope.Release();
    const double ratio = TargetRatioDR(0.3);
    EXPECT_NEAR(envelope.Tick(), Approach(level, -ratio, ratio, kStartDuration * kRate, 1), kTolerance);
}

TEST(EnvelopeGenerator, ReleaseOfAnEnvelopeThatIsOffDoesNothing) {
    EnvelopeGenerator envelope;
    envelope.Release();
    EXPECT_TRUE(envelope.IsOff());
}

TEST(EnvelopeGenerator, ASustainChangeGlides) {
    EnvelopeGenerator envelope;
    envelope.SetSustain(0.5);
    envelope.Start();
    Ticks(envelope, 10);
    envelope.SetSustain(0.8);
    for (int n = 1; n <= 500; ++n) {
        const double expected = 0.8 + (0.5 - 0.8) * std::pow(0.99, n);
        ASSERT_NEAR(envelope.Tick(), expected, 1e-11) << n;
    }
}

TEST(EnvelopeGenerator, DurationRunsFromFiveMillisecondsToFiveSeconds) {
    EnvelopeGenerator envelope;
    envelope.SetDuration(1.0);
    EXPECT_EQ(envelope.Duration(), 5.0);
    envelope.SetDuration(0.0);
    EXPECT_EQ(envelope.Duration(), 0.005);
}

TEST(EnvelopeGenerator, DurationKeepsTheStageValues) {
    EnvelopeGenerator envelope;
    envelope.SetAttack(0.5);
    envelope.SetDuration(0.1); // 0.5 s
    envelope.Start();
    EXPECT_NEAR(TicksIn(envelope, EnvelopeStage::Attack), 0.5 * 0.5 * kRate, 1.0);
}

TEST(EnvelopeGenerator, ASampleRateChangeLeavesStageLengthsInSamples) {
    EnvelopeGenerator envelope;
    envelope.SetAttack(0.5);
    envelope.SetSampleRate(96000.0);
    envelope.Start();
    EXPECT_NEAR(TicksIn(envelope, EnvelopeStage::Attack), 0.5 * kStartDuration * kRate, 1.0);
    envelope.SetAttack(0.5);
    envelope.Start();
    EXPECT_NEAR(TicksIn(envelope, EnvelopeStage::Attack), 0.5 * kStartDuration * 96000.0, 1.0);
}

TEST(EnvelopeGenerator, DurationAfterASampleRateChangeMeasuresWithTheNewRate) {
    EnvelopeGenerator envelope;
    envelope.SetAttack(0.5); // 4410 samples
    envelope.SetSampleRate(88200.0);
    envelope.SetDuration(0.04); // still 0.2 s: the 4410 samples are now a quarter of it
    envelope.Start();
    EXPECT_NEAR(TicksIn(envelope, EnvelopeStage::Attack), 4410.0, 1.0);
    envelope.SetDuration(0.08);
    envelope.Start();
    EXPECT_NEAR(TicksIn(envelope, EnvelopeStage::Attack), 8820.0, 1.0);
}

TEST(EnvelopeGenerator, SmallShapesBendStronglyAndLargeOnesHardly) {
    const auto middle = [](double shape) {
        EnvelopeGenerator envelope;
        envelope.SetShape(shape);
        envelope.SetAttack(1.0);
        envelope.Start();
        return Ticks(envelope, static_cast<int>(kStartDuration * kRate / 2.0)).back();
    };
    EXPECT_GT(middle(0.0), 0.99);
    EXPECT_NEAR(middle(1.0), 0.5, 0.02);
}

TEST(EnvelopeGenerator, TheDisplayCurveBeginsAndEndsAtZero) {
    EnvelopeGenerator envelope;
    envelope.SetSustain(1.0);
    std::array<double, kEnvelopeCurvePoints> curve{};
    envelope.DrawCurve(curve, 30.0);
    EXPECT_EQ(curve.front(), 0.0);
    EXPECT_EQ(curve.back(), 0.0);
    for (std::size_t i = 1; i + 1 < curve.size(); ++i)
        ASSERT_EQ(curve[i], 30.0) << i;
}

TEST(EnvelopeGenerator, TheDisplayCurveStaysInItsWidthForAnyStageLength) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const double length : {-1.0, 7.0, 1e300, kInfinity, -kInfinity, std::nan("")}) {
        EnvelopeGenerator envelope;
        envelope.SetAttack(length);
        envelope.SetRelease(length);
        std::array<double, kEnvelopeCurvePoints> curve{};
        curve.fill(99.0);
        envelope.DrawCurve(curve, 1.0);
        EXPECT_EQ(std::count(curve.begin(), curve.end(), 99.0), 0) << length;
        EXPECT_EQ(curve.front(), 0.0) << length;
        EXPECT_EQ(curve.back(), 0.0) << length;
    }
}

TEST(EnvelopeGenerator, TheDisplayCurveGivesEachStageUpToAThird) {
    EnvelopeGenerator envelope;
    envelope.SetAttack(0.6);
    envelope.SetDecay(0.2);
    envelope.SetSustain(0.25);
    envelope.SetRelease(0.9);
    std::array<double, kEnvelopeCurvePoints> curve{};
    envelope.DrawCurve(curve, 1.0);

    const int attackEnd = static_cast<int>(0.6 / 3.0 * 116.0);
    const int releaseStart = 116 - static_cast<int>(0.9 / 3.0 * 116.0);
    const auto top = std::max_element(curve.begin(), curve.end());
    EXPECT_NEAR(static_cast<double>(top - curve.begin()), attackEnd, 1.0);
    EXPECT_TRUE(std::is_sorted(curve.begin(), curve.begin() + attackEnd));
    EXPECT_TRUE(std::is_sorted(curve.begin() + attackEnd, curve.end(), std::greater<>()));
    EXPECT_EQ(curve[static_cast<std::size_t>(releaseStart - 1)], 0.25);
    EXPECT_LT(curve[static_cast<std::size_t>(releaseStart)], 0.25);
    const double ratio = TargetRatioA(0.3);
    EXPECT_NEAR(curve[9], Approach(0.0, 1.0 + ratio, ratio, 0.6 / 3.0 * 116.0, 10), 1e-12);
}

} // namespace
} // namespace Grimworks
