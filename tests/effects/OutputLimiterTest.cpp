#include "effects/OutputLimiter.h"

#include "tests/effects/TestSignals.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

double OneFrame(OutputLimiter& limiter, double sample) {
    Signal signal(1, sample);
    limiter.Process(signal.View(), 1);
    return signal.right[0];
}

/// A limiter whose threshold rests at a level.
OutputLimiter RestedAt(double level) {
    OutputLimiter limiter;
    limiter.SetLevel(level);
    Signal silence(10000);
    limiter.Process(silence.View(), 10000);
    return limiter;
}

} // namespace

TEST(OutputLimiter, FullScaleAtTheStartLevel) {
    OutputLimiter limiter;
    EXPECT_NEAR(OneFrame(limiter, 1.0), 0.705295, 1e-12);
    EXPECT_NEAR(OneFrame(limiter, -1.0), -0.705295, 1e-12);
    EXPECT_NEAR(OneFrame(limiter, 100.0), 0.705 + 99.295 / 1000.0, 1e-12);
}

TEST(OutputLimiter, BelowTheKneeItIsBitExact) {
    OutputLimiter limiter;
    Signal signal = NoiseSignal(500, 0.694);
    const Signal before = signal;
    limiter.Process(signal.View(), 500);
    EXPECT_EQ(signal, before);
}

TEST(OutputLimiter, TheKneeIsAParabolaThatMeetsBothLines) {
    OutputLimiter limiter;
    for (const double v : {0.6951, 0.70, 0.705, 0.71, 0.7149}) {
        const double d = v - 0.695;
        EXPECT_NEAR(OneFrame(limiter, v), v - 0.999 * d * d / 0.04, 1e-12);
        EXPECT_NEAR(OneFrame(limiter, -v), -(v - 0.999 * d * d / 0.04), 1e-12);
    }
    EXPECT_NEAR(OneFrame(limiter, 0.715 - 1e-9), OneFrame(limiter, 0.715 + 1e-9), 1e-8);
}

TEST(OutputLimiter, BelowTwoHundredthsTheKneeIsTheLevel) {
    OutputLimiter limiter = RestedAt(0.01);
    EXPECT_EQ(OneFrame(limiter, 0.00499), 0.00499);
    EXPECT_NEAR(OneFrame(limiter, 0.01), 0.01 - 0.999 * 0.005 * 0.005 / 0.02, 1e-9);
    EXPECT_NEAR(OneFrame(limiter, 0.015), 0.01 + 0.005 / 1000.0, 1e-9);
}

TEST(OutputLimiter, ModeZeroLeavesTheSignalToTheClip) {
    OutputLimiter limiter;
    limiter.SetMode(0.0);
    EXPECT_EQ(OneFrame(limiter, 3.0), 3.0);
    limiter.SetMode(0.49);
    EXPECT_EQ(OneFrame(limiter, 3.0), 3.0);
    limiter.SetMode(0.5);
    EXPECT_LT(OneFrame(limiter, 3.0), 0.71);
    limiter.SetMode(9.0);
    EXPECT_LT(OneFrame(limiter, 3.0), 0.71);
    limiter.SetMode(-9.0);
    EXPECT_EQ(OneFrame(limiter, 3.0), 3.0);
}

TEST(OutputLimiter, TheThresholdGlides) {
    OutputLimiter limiter;
    limiter.SetLevel(0.2);
    double threshold = 0.705;
    for (int i = 0; i < 500; ++i) {
        threshold = 0.0056 * 0.2 + 0.9944 * threshold;
        EXPECT_NEAR(OneFrame(limiter, 1.0), (1.0 - threshold) / 1000.0 + threshold, 1e-12);
    }
}

TEST(OutputLimiter, WhileOffTheThresholdStandsStill) {
    OutputLimiter limiter;
    limiter.SetMode(0.0);
    limiter.SetLevel(0.2);
    Signal signal(1000, 0.5);
    limiter.Process(signal.View(), 1000);
    limiter.SetMode(1.0);
    EXPECT_GT(OneFrame(limiter, 1.0), 0.7);
}

TEST(OutputLimiter, NaNPassesAndIsNotKept) {
    OutputLimiter limiter;
    EXPECT_TRUE(std::isnan(OneFrame(limiter, std::nan(""))));
    EXPECT_NEAR(OneFrame(limiter, 1.0), 0.705295, 1e-12);
    for (const double level : {0.0, -1.0, std::nan(""), HUGE_VAL}) {
        limiter.SetLevel(level);
        Signal hostile = HostileSignal();
        limiter.Process(hostile.View(), hostile.Frames());
    }
    limiter.SetLevel(0.705);
    Signal settle(10000);
    limiter.Process(settle.View(), 10000);
    EXPECT_EQ(Peak(settle, 9000), 0.0);
    EXPECT_NEAR(OneFrame(limiter, 1.0), 0.705295, 1e-9);
}

TEST(OutputLimiter, AtLevelZeroAThousandthRemains) {
    OutputLimiter limiter = RestedAt(0.0);
    EXPECT_NEAR(OneFrame(limiter, 1.0), 0.001, 1e-9);
    EXPECT_EQ(OneFrame(limiter, 0.0), 0.0);
}
