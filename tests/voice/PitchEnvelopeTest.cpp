#include "voice/PitchEnvelope.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Grimworks {
namespace {

PitchEnvelope Sweep(double amount, double duration, double power, double down) {
    PitchEnvelope envelope;
    envelope.SetAmount(amount);
    envelope.SetDuration(duration);
    envelope.SetPower(power);
    envelope.SetDown(down);
    return envelope;
}

TEST(PitchEnvelope, StartsNeutral) {
    const PitchEnvelope envelope;
    for (const double t : {0.0, 0.0005, 0.05, 0.2, 10.0})
        EXPECT_EQ(envelope.Factor(t), 1.0) << t;
}

TEST(PitchEnvelope, OffIgnoresTheSweepAndTheSlide) {
    PitchEnvelope envelope = Sweep(1.0, 0.5, 0.5, 0.7);
    envelope.SetOnOff(0.0);
    for (const double t : {0.0, 0.0005, 0.3, 5.0})
        EXPECT_EQ(envelope.Factor(t), 1.0) << t;
    envelope.SetOnOff(0.25);
    EXPECT_EQ(envelope.Factor(5.0), 1.0 - 0.7);
}

TEST(PitchEnvelope, RisesInAMillisecondToTwentyOneTimesThePitch) {
    const PitchEnvelope envelope = Sweep(1.0, 1.0, 1.0, 0.0);
    EXPECT_EQ(envelope.Factor(0.0), 1.0);
    EXPECT_DOUBLE_EQ(envelope.Factor(0.0005), 11.0);
    EXPECT_DOUBLE_EQ(envelope.Factor(0.001), 21.0);
}

TEST(PitchEnvelope, FallsAlongThePowerCurve) {
    const PitchEnvelope envelope = Sweep(0.4, 0.25, 0.3, 0.0); // 0.5 s, exponent 6
    for (int i = 0; i < 100; ++i) {
        const double u = i / 100.0;
        const double expected = 1.0 + 8.0 * std::pow(1.0 - u, 6.0);
        EXPECT_NEAR(envelope.Factor(0.001 + u * 0.5), expected, 1e-12) << u;
    }
    EXPECT_EQ(envelope.Factor(0.5011), 1.0);
}

TEST(PitchEnvelope, LowPowerStaysHighForLong) {
    const PitchEnvelope envelope = Sweep(1.0, 1.0, 0.0, 0.0); // exponent 0.04, the smallest
    EXPECT_NEAR(envelope.Factor(0.001 + 1.0), 1.0 + 20.0 * std::pow(0.5, 0.04), 1e-12);
}

TEST(PitchEnvelope, TheSlideRunsOverTheWholeSweepAndStays) {
    const PitchEnvelope envelope = Sweep(0.0, 0.1, 0.5, 0.6);
    const double end = 0.001 + 0.2;
    EXPECT_DOUBLE_EQ(envelope.Factor(end / 4.0), 1.0 - 0.6 / 4.0);
    EXPECT_DOUBLE_EQ(envelope.Factor(end), 0.4);
    EXPECT_DOUBLE_EQ(envelope.Factor(100.0), 0.4);
}

TEST(PitchEnvelope, AFullSlideStopsTheOscillators) {
    EXPECT_EQ(Sweep(0.5, 0.1, 0.5, 1.0).Factor(1.0), 0.0);
}

TEST(PitchEnvelope, DurationZeroEndsAfterTheRise) {
    const PitchEnvelope envelope = Sweep(0.5, 0.0, 0.5, 0.0);
    EXPECT_DOUBLE_EQ(envelope.Factor(0.0005), 6.0);
    EXPECT_EQ(envelope.Factor(0.001), 1.0);
    EXPECT_EQ(envelope.Factor(0.5), 1.0);
}

TEST(PitchEnvelope, ADurationBelowZeroLeavesTheRiseAndNoFall) {
    for (const double duration : {-0.0002, -1.0}) {
        const PitchEnvelope envelope = Sweep(0.5, duration, 0.5, 0.25);
        EXPECT_DOUBLE_EQ(envelope.Factor(0.0008), 1.0 + 10.0 * 0.8 - 0.25) << duration; // the slide is over
        EXPECT_EQ(envelope.Factor(0.001), 0.75) << duration;
        EXPECT_EQ(envelope.Factor(1.0), 0.75) << duration;
    }
    // While the slide lasts, both act.
    EXPECT_DOUBLE_EQ(Sweep(0.5, -0.0002, 0.5, 0.25).Factor(0.0003), 1.0 + 10.0 * 0.3 - 0.25 * 0.5);
}

TEST(PitchEnvelope, TheDisplayCurveShowsRisesAsAShareAndFallsInFull) {
    std::array<double, kPitchCurvePoints> curve{};
    Sweep(1.0, 0.5, 0.1, 0.0).DrawCurve(curve);
    EXPECT_EQ(curve[0], 0.0);
    for (int i = 1; i < 198; ++i) {
        const double u = (i / 198.0 * 2.001 - 0.001) / 1.0;
        const double expected = u < 1.0 ? std::pow(1.0 - u, 2.0) : 0.0;
        ASSERT_NEAR(curve[static_cast<std::size_t>(i)], expected, 1e-12) << i;
    }
    Sweep(0.0, 0.0, 0.1, 0.75).DrawCurve(curve);
    EXPECT_DOUBLE_EQ(curve[100], -0.75);
}

} // namespace
} // namespace Grimworks
