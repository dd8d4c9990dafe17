#include "effects/SmpRateConverter.h"

#include "tests/effects/TestSignals.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

/// A signal whose samples tell their place.
Signal Counting(int frames) {
    Signal signal(frames);
    for (int i = 0; i < frames; ++i) {
        signal.left[static_cast<std::size_t>(i)] = i;
        signal.right[static_cast<std::size_t>(i)] = -i;
    }
    return signal;
}

} // namespace

TEST(SmpRateConverter, FullRateLeavesTheBlockAlone) {
    SmpRateConverter converter;
    Signal signal = NoiseSignal(64, 1.0);
    const Signal before = signal;
    converter.Process(signal.View(), 64);
    converter.SetReduction(1.0);
    converter.Process(signal.View(), 64);
    EXPECT_EQ(signal, before);
}

TEST(SmpRateConverter, AtZeroOnlyTheFirstAndTheMiddleSampleRemain) {
    SmpRateConverter converter;
    converter.SetReduction(0.0);
    Signal signal = Counting(64);
    converter.Process(signal.View(), 64);
    for (std::size_t i = 0; i < 64; ++i) {
        EXPECT_EQ(signal.left[i], i < 32 ? 0.0 : 32.0);
        EXPECT_EQ(signal.right[i], i < 32 ? -0.0 : -32.0);
    }
}

TEST(SmpRateConverter, KeepsTheCubeOfTheKnobOfTheBlock) {
    SmpRateConverter converter;
    converter.SetReduction(0.5);
    EXPECT_EQ(converter.KeptFrames(64), 8);
    EXPECT_EQ(converter.KeptFrames(100), 12);
    Signal signal = Counting(64);
    converter.Process(signal.View(), 64);
    for (std::size_t i = 0; i < 64; ++i) {
        const std::size_t held = i / 8 * 8;
        EXPECT_EQ(signal.left[i], static_cast<double>(held));
    }
}

TEST(SmpRateConverter, TheGridStartsAnewWithEveryBlock) {
    SmpRateConverter converter;
    converter.SetReduction(0.5);
    Signal whole = Counting(60);
    Signal halves = Counting(60);
    converter.Process(whole.View(), 60);
    converter.Process(halves.From(0), 30);
    converter.Process(halves.From(30), 30);
    EXPECT_EQ(halves.left[30], 30.0);
    EXPECT_NE(whole.left[30], 30.0);
}

TEST(SmpRateConverter, InterpolationJoinsKeptSamplesAndHoldsTheLast) {
    SmpRateConverter converter;
    converter.SetReduction(0.5);
    converter.SetInterpolate(true);
    Signal signal = Counting(64);
    converter.Process(signal.View(), 64);
    for (std::size_t i = 0; i < 64; ++i)
        EXPECT_NEAR(signal.left[i], i < 56 ? static_cast<double>(i) : 56.0, 1e-12);
}

TEST(SmpRateConverter, BlocksOfOneFrameAreSafe) {
    SmpRateConverter converter;
    converter.SetReduction(0.3);
    EXPECT_EQ(converter.KeptFrames(1), 2);
    Signal signal(1, 0.7);
    converter.Process(signal.View(), 1);
    EXPECT_EQ(signal.left[0], 0.7);
    converter.Process(signal.View(), 0);
    EXPECT_EQ(signal.left[0], 0.7);
}

TEST(SmpRateConverter, TogglingCutsAtOnce) {
    SmpRateConverter converter;
    converter.SetReduction(0.0);
    converter.SetBypass(true);
    Signal signal = Counting(8);
    const Signal before = signal;
    converter.Process(signal.View(), 8);
    EXPECT_EQ(signal, before);
    converter.SetBypass(false);
    converter.Process(signal.View(), 8);
    EXPECT_EQ(signal.left[7], 4.0);
}

TEST(SmpRateConverter, KnobsBeyondTheRangeStayInsideTheBlock) {
    SmpRateConverter converter;
    Signal signal = Counting(32);
    for (const double knob : {-5.0, 1.5, 1e300, -1e300, std::nan(""), HUGE_VAL}) {
        converter.SetReduction(knob);
        converter.Process(signal.View(), 32);
        EXPECT_LE(Peak(signal), 31.0);
        EXPECT_GE(converter.KeptFrames(32), 2);
        EXPECT_LE(converter.KeptFrames(32), 32);
    }
}

TEST(SmpRateConverter, FollowsItsTwoIndexFormulasAtEveryKnob) {
    for (int knob = 0; knob < 100; ++knob) {
        const double value = knob / 100.0;
        const int n = 147;
        const double factor = value * value * value;
        int m = static_cast<int>(std::trunc(n * factor));
        if (m < 2) m = 2;
        SmpRateConverter converter;
        converter.SetReduction(value);
        Signal signal = Counting(n);
        converter.Process(signal.View(), n);
        for (int j = 0; j < n; ++j) {
            const double q = std::floor(static_cast<double>(j) / n * m);
            EXPECT_EQ(signal.left[static_cast<std::size_t>(j)], std::floor(q / m * n));
        }
    }
}
