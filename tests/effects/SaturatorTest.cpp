#include "effects/Saturator.h"

#include "tests/effects/TestSignals.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

const DistortionDataProvider& Curves() {
    static RandomGenerator random;
    static const DistortionDataProvider curves(random);
    return curves;
}

/// The output stage's curve between its points, from its formula: min(1, 1.16 sin(x pi / 2)), odd.
double SoftCurve(double input) {
    const auto entry = [](int k) {
        const double x = k * 2.0 / 511.0 - 1.0;
        return std::copysign(std::fmin(1.0, 1.16 * std::sin(std::fabs(x) * kPi / 2.0)), x);
    };
    const double position = (std::fmin(1.0, std::fmax(-1.0, input)) + 1.0) * 255.5;
    const int k = static_cast<int>(position);
    const double f = position - k;
    return k >= 511 ? entry(511) : f * entry(k + 1) + (1.0 - f) * entry(k);
}

Saturator Output(double amount) {
    Saturator saturator;
    saturator.Initialise(Curves(), 0);
    saturator.SetAmount(amount);
    return saturator;
}

} // namespace

TEST(Saturator, AmountZeroLeavesTheSignalUntouched) {
    Saturator saturator = Output(0.0);
    Signal signal = NoiseSignal(500, 3.0);
    const Signal before = signal;
    saturator.Process(signal.View(), signal.Frames());
    EXPECT_EQ(signal, before);
}

TEST(Saturator, FollowsTheFormulaFrameByFrame) {
    Saturator saturator = Output(0.8);
    Signal signal = NoiseSignal(600, 1.2);
    const Signal input = signal;
    saturator.Process(signal.View(), 250);
    saturator.Process(signal.From(250), 350);
    double amount = 0.0;
    double gain = 0.0;
    for (std::size_t i = 0; i < 600; ++i) {
        amount = 0.0223 * 0.8 + 0.9777 * amount;
        gain = 0.0223 * 5.0 + 0.9777 * gain;
        const double y = Clamp(gain * amount * SoftCurve(input.left[i]), -1.0, 1.0);
        const double expected = amount < 0.5 ? amount * 2.0 * y + (1.0 - amount * 2.0) * input.left[i] : y;
        ASSERT_NEAR(signal.left[i], expected, 1e-12);
    }
}

TEST(Saturator, BelowTheThresholdTheDrySignalIsMixedIn) {
    Saturator saturator = Output(0.4);
    Signal signal(3000, 0.3);
    saturator.Process(signal.View(), signal.Frames());
    // Once smoothed: gain 5 * 0.4, wet share 0.8.
    EXPECT_NEAR(signal.left.back(), 0.8 * std::fmin(1.0, 2.0 * SoftCurve(0.3)) + 0.2 * 0.3, 1e-9);
}

TEST(Saturator, AboveTheThresholdTheDrySignalIsGone) {
    Saturator saturator = Output(0.6);
    Signal signal(3000, 0.05);
    saturator.Process(signal.View(), signal.Frames());
    EXPECT_NEAR(signal.right.back(), 3.0 * SoftCurve(0.05), 1e-9);
}

TEST(Saturator, SmoothersStandStillAtAmountZero) {
    Saturator paused = Output(0.9);
    Saturator steady = Output(0.9);
    Signal one = NoiseSignal(200, 0.5);
    Signal two = one;
    paused.Process(one.View(), 100);
    steady.Process(two.View(), 100);
    paused.SetAmount(0.0);
    Signal idle = NoiseSignal(1000, 0.5);
    paused.Process(idle.View(), 1000);
    paused.SetAmount(0.9);
    paused.Process(one.From(100), 100);
    steady.Process(two.From(100), 100);
    EXPECT_EQ(one, two);
}

TEST(Saturator, TheDriveTypeHasItsOwnCurve) {
    Saturator saturator;
    saturator.Initialise(Curves(), 1);
    EXPECT_EQ(saturator.Type(), 1);
    saturator.SetBlend(0.25, 4.0);
    saturator.SetAmount(0.3);
    Signal signal(3000, 1.0);
    saturator.Process(signal.View(), signal.Frames());
    // The normalised curve's entry for +1: x - x cos(3 pi) - cos(6 pi) = 1 at x = 1, over the curve's peak.
    double peak = 0.0;
    for (int i = 0; i < 256; ++i) {
        const double x = (256 + i) * (2.0 / 511.0) - 1.0;
        peak = std::fmax(peak, std::fabs(std::sin(2.0 * kPi * x) * (1.0 - x) + x -
                                         x * std::cos(3.0 * kPi * x) - x * x * std::cos(6.0 * kPi * x)));
    }
    EXPECT_NEAR(signal.left.back(), std::fmin(1.0, 1.5 / peak), 1e-9);
}

TEST(Saturator, SilenceStaysSilence) {
    Saturator saturator = Output(1.0);
    Signal signal(100);
    saturator.Process(signal.View(), 100);
    for (const double y : signal.left)
        EXPECT_NEAR(y, 0.0, 1e-15);
}

TEST(Saturator, KeepsNothingOfABadInput) {
    Saturator saturator = Output(0.7);
    Saturator clean = Output(0.7);
    Signal hostile = HostileSignal();
    Signal silence(hostile.Frames());
    saturator.Process(hostile.View(), hostile.Frames());
    clean.Process(silence.View(), silence.Frames());
    saturator.SetAmount(std::numeric_limits<double>::quiet_NaN());
    Signal one = NoiseSignal(100, 0.8);
    Signal two = one;
    saturator.Process(one.View(), 100);
    clean.Process(two.View(), 100);
    EXPECT_EQ(one, two);
}
