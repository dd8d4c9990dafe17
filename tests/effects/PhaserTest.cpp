#include "effects/Phaser.h"

#include "tests/effects/TestSignals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

/// The same phaser from its difference equations: each stage with its own history of input and output,
/// y[n] = x[n-1] + c[n-1] y[n-1] - c[n] x[n].
struct ReferencePhaser {
    double x[6] = {};
    double y[6] = {};
    double lastCoefficient = 0.0;
    double last = 0.0;

    double Tick(double input, double feedback, double c) {
        double u = input + feedback * last;
        for (int k = 0; k < 6; ++k) {
            const double out = x[k] + lastCoefficient * y[k] - c * u;
            x[k] = u;
            y[k] = out;
            u = out;
        }
        lastCoefficient = c;
        last = u;
        return u;
    }
};

double Coefficient(double lfo) {
    const double low = 440.0 / 22050.0;
    const double high = 1600.0 / 22050.0;
    const double d = low + (high - low) * 0.5 * (1.0 + std::sin(lfo));
    return (1.0 - d) / (1.0 + d);
}

} // namespace

TEST(Phaser, DepthZeroIsBitExactAndMovesNothing) {
    Phaser phaser;
    phaser.SetBypass(true);
    Signal signal = NoiseSignal(256, 1.0);
    const Signal before = signal;
    phaser.Process(signal.View(), 256);
    EXPECT_EQ(signal, before);
    EXPECT_EQ(phaser.Fade(), 0.998);
}

TEST(Phaser, FollowsItsDifferenceEquations) {
    for (const double feedback : {0.0, 0.5, 0.9}) {
        Phaser phaser;
        phaser.SetSampleRate(48000.0);
        phaser.SetRate(0.3);
        phaser.SetDepth(0.8);
        phaser.SetFeedback(feedback);
        Signal signal = NoiseSignal(6000, 1.0);
        const Signal before = signal;
        phaser.Process(signal.From(0), 1000);
        phaser.Process(signal.From(1000), 5000);
        ReferencePhaser left;
        ReferencePhaser right;
        double depth = 0.0;
        for (std::size_t i = 0; i < 6000; ++i) {
            const double c = Coefficient(static_cast<double>(i) * 2.0 * kPi * 6.0 / 48000.0);
            depth = 0.0223 * 0.8 + 0.9777 * depth;
            EXPECT_NEAR(signal.left[i], before.left[i] + depth * left.Tick(before.left[i], feedback, c),
                        1e-9);
            EXPECT_NEAR(signal.right[i], before.right[i] + depth * right.Tick(before.right[i], feedback, c),
                        1e-9);
        }
    }
}

TEST(Phaser, StartsWithATwoHertzSweepAndHalfFeedback) {
    Phaser phaser;
    phaser.SetDepth(1.0);
    Signal signal = NoiseSignal(3000, 1.0);
    const Signal before = signal;
    phaser.Process(signal.View(), 3000);
    ReferencePhaser left;
    double depth = 0.0;
    for (std::size_t i = 0; i < 3000; ++i) {
        const double c = Coefficient(static_cast<double>(i) * 2.0 * kPi * 2.0 / 44100.0);
        depth = 0.0223 + 0.9777 * depth;
        EXPECT_NEAR(signal.left[i], before.left[i] + depth * left.Tick(before.left[i], 0.5, c), 1e-9);
    }
}

TEST(Phaser, AConstantIsRaisedBySixDecibelsWithoutFeedback) {
    Phaser phaser;
    phaser.SetFeedback(0.0);
    phaser.SetRate(0.0);
    phaser.SetDepth(1.0);
    Signal signal(8000, 0.25);
    phaser.Process(signal.View(), 8000);
    EXPECT_NEAR(signal.left.back(), 0.5, 1e-9);
}

TEST(Phaser, FullFeedbackRunsHot) {
    Phaser phaser;
    phaser.SetFeedback(1.0);
    phaser.SetDepth(1.0);
    Signal signal(20000, 0.1);
    phaser.Process(signal.View(), 20000);
    EXPECT_GT(Peak(signal, 19000), 1.0);
    EXPECT_LT(Peak(signal), 1e6);
}

TEST(Phaser, TheToggleFadesOver499FramesWithinTheBlock) {
    Phaser phaser;
    phaser.SetDepth(1.0);
    Signal settle = NoiseSignal(2000, 1.0);
    phaser.Process(settle.View(), 2000);
    phaser.SetBypass(true);
    Signal signal = NoiseSignal(600, 1.0);
    const Signal before = signal;
    phaser.Process(signal.View(), 600);
    EXPECT_EQ(phaser.Fade(), 0.0);
    for (std::size_t i = 0; i < 600; ++i) {
        if (i < 499) {
            EXPECT_NE(signal.left[i], before.left[i]);
        } else {
            EXPECT_EQ(signal.left[i], before.left[i]);
        }
    }
    phaser.SetBypass(false);
    phaser.Process(signal.From(0), 498);
    EXPECT_LT(phaser.Fade(), 1.0);
    phaser.Process(signal.From(0), 1);
    EXPECT_EQ(phaser.Fade(), 1.0);
}

TEST(Phaser, TheSweepGoesOnAfterAnyRate) {
    for (const double knob : {-0.7, -3.4e38, 3.4e38, 1e308, -1e308}) {
        Phaser phaser;
        phaser.SetDepth(1.0);
        phaser.SetFeedback(0.0);
        phaser.SetRate(knob);
        Signal before(500, 0.1);
        phaser.Process(before.View(), 500);
        phaser.SetRate(0.5); // 10 Hz
        constexpr int kFrames = 22050;
        Signal signal(kFrames);
        for (int i = 0; i < kFrames; ++i)
            signal.left[static_cast<std::size_t>(i)] = std::sin(2.0 * kPi * 2205.0 * i / 44100.0);
        phaser.Process(signal.View(), kFrames);
        // A phase that stands still would leave a steady tone; the sweep moves its level, ten times a second.
        std::vector<double> levels;
        for (std::size_t i = 2205; i + 20 <= signal.left.size(); i += 20) {
            double power = 0.0;
            for (std::size_t k = 0; k < 20; ++k)
                power += signal.left[i + k] * signal.left[i + k] / 10.0;
            levels.push_back(std::sqrt(power));
        }
        const auto [least, most] = std::minmax_element(levels.begin(), levels.end());
        EXPECT_LT(*least, 0.5) << knob;
        EXPECT_GT(*most, 1.5) << knob;
    }
}

TEST(Phaser, SyncOffLeavesTheRateAlone) {
    EXPECT_FALSE(Phaser::SyncedRate(120.0, 0.0).has_value());
    EXPECT_FALSE(Phaser::SyncedRate(120.0, 0.05).has_value());
}

TEST(Phaser, SyncCountsCyclesPerBeat) {
    const double cycles[] = {0.0625, 0.125, 0.25, 0.5, 1.0, 2.0, 4.0, 8.0, 16.0};
    for (int n = 1; n <= 9; ++n) {
        const auto rate = Phaser::SyncedRate(120.0, n / 9.0);
        ASSERT_TRUE(rate.has_value());
        EXPECT_NEAR(*rate * 20.0, cycles[n - 1] * 2.0, 1e-12); // two beats a second
    }
    for (const double outside : {-1.0, 2.0}) {
        EXPECT_NEAR(Phaser::SyncedRate(120.0, outside).value_or(-1.0) * 20.0, 2.0, 1e-12);
    }
    EXPECT_EQ(Phaser::SyncedRate(0.0, 1.0).value_or(-1.0), 0.0);
}

TEST(Phaser, SilenceStaysSilent) {
    Phaser phaser;
    phaser.SetDepth(1.0);
    phaser.SetFeedback(1.0);
    Signal silence(4000);
    phaser.Process(silence.View(), 4000);
    EXPECT_EQ(Peak(silence), 0.0);
}

TEST(Phaser, IsCleanAgainAfterHostileInput) {
    for (const double knob : {0.5, 1e100, -1e100, std::nan(""), HUGE_VAL}) {
        Phaser phaser;
        phaser.SetSampleRate(0.0);
        phaser.SetRate(knob);
        phaser.SetSampleRate(44100.0);
        phaser.SetDepth(1.0);
        phaser.SetFeedback(1.0);
        phaser.SetRate(knob);
        Signal hostile = HostileSignal();
        phaser.Process(hostile.View(), hostile.Frames());
        phaser.SetRate(0.1);
        phaser.SetFeedback(0.0);
        Signal signal(30000);
        phaser.Process(signal.View(), 30000);
        EXPECT_LT(Peak(signal, 29000), 1e-9);
    }
}
