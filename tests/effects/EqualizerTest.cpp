#include "effects/Equalizer.h"

#include "tests/effects/TestSignals.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

/// What the anti-denormal terms of 1e-8 in three filters may come to.
constexpr double kTermBound = 1e-7;

void Rest(Equalizer& unit, int blocks) {
    for (int i = 0; i < blocks; ++i) {
        Signal silence(1000);
        unit.Process(silence.View(), 1000);
    }
}

/// Level of a sine that went through, by correlation over whole cycles after settling.
double GainAt(Equalizer& unit, double frequency, double rate) {
    double re = 0.0;
    double im = 0.0;
    const int total = static_cast<int>(rate);
    for (int start = 0; start < 2 * total; start += 100) {
        Signal signal(100);
        for (int i = 0; i < 100; ++i)
            signal.left[static_cast<std::size_t>(i)] = std::cos(2.0 * kPi * frequency * (start + i) / rate);
        unit.Process(signal.View(), 100);
        for (int i = 0; i < 100 && start >= total; ++i) {
            const double angle = 2.0 * kPi * frequency * (start + i) / rate;
            re += signal.left[static_cast<std::size_t>(i)] * std::cos(angle);
            im += signal.left[static_cast<std::size_t>(i)] * std::sin(angle);
        }
    }
    return 2.0 * std::hypot(re, im) / total;
}

} // namespace

TEST(Equalizer, KnobsAtTheCentreLeaveTheSignalAsItIs) {
    Equalizer unit;
    Signal signal = NoiseSignal(1000, 1.0);
    const Signal before = signal;
    unit.Process(signal.View(), 1000);
    unit.SetBass(0.5);
    unit.SetMid(0.5);
    unit.SetHigh(0.5);
    for (std::size_t i = 0; i < 1000; ++i)
        ASSERT_NEAR(signal.left[i], before.left[i], kTermBound);
    Signal more = NoiseSignal(1000, 1.0, 7);
    const Signal input = more;
    unit.Process(more.View(), 1000);
    for (std::size_t i = 0; i < 1000; ++i)
        ASSERT_NEAR(more.right[i], input.right[i], kTermBound);
}

TEST(Equalizer, BandsReachTheirGains) {
    const double gains[] = {0.25, 0.75, 1.0};
    for (const double value : gains) {
        const double expected = std::pow(10.0, (48.0 * value - 24.0) / 20.0);
        Equalizer bass;
        bass.SetBass(value);
        Rest(bass, 1);
        EXPECT_NEAR(GainAt(bass, 5.0, 44100.0), expected, 2e-3 * expected);
        EXPECT_NEAR(GainAt(bass, 400.0, 44100.0), std::sqrt(expected), 1e-6 * expected);
        Equalizer mid;
        mid.SetMid(value);
        Rest(mid, 1);
        EXPECT_NEAR(GainAt(mid, 2000.0, 44100.0), expected, 1e-6 * expected);
        EXPECT_NEAR(GainAt(mid, 20.0, 44100.0), 1.0, 1e-3);
        Equalizer high;
        high.SetHigh(value);
        Rest(high, 1);
        EXPECT_NEAR(GainAt(high, 22000.0, 44100.0), expected, 1e-3 * expected);
        EXPECT_NEAR(GainAt(high, 4000.0, 44100.0), std::sqrt(expected), 1e-6 * expected);
    }
}

TEST(Equalizer, BassGlidesOver512Samples) {
    Equalizer unit;
    Rest(unit, 1);
    Signal steady(600, 0.25);
    unit.Process(steady.View(), 600);
    unit.SetBass(0.75);
    Signal signal(1000, 0.25);
    unit.Process(signal.View(), 1000);
    for (std::size_t i = 1; i < 999; ++i)
        ASSERT_LT(std::fabs(signal.left[i + 1] - 2.0 * signal.left[i] + signal.left[i - 1]), 1e-4);
}

TEST(Equalizer, MidBandTakesItsGainAtTheEndOfTheSweep) {
    Equalizer unit;
    Rest(unit, 1);
    unit.SetMid(1.0);
    Signal signal = NoiseSignal(600, 0.5);
    const Signal before = signal;
    unit.Process(signal.View(), 600);
    for (std::size_t i = 0; i < 512; ++i)
        ASSERT_NEAR(signal.left[i], before.left[i], kTermBound);
    EXPECT_GT(std::fabs(signal.left[512] - before.left[512]), 1e-3);
}

TEST(Equalizer, AToggleSwitchesAtTheEndOfTheFade) {
    Equalizer unit;
    unit.SetBass(1.0);
    Rest(unit, 2);
    unit.SetBypass(true);
    Signal off(100, 0.25);
    unit.Process(off.View(), 100);
    for (const double y : off.left)
        ASSERT_EQ(y, 0.25);
    Signal rest(500);
    unit.Process(rest.View(), 398);
    EXPECT_FALSE(unit.IsFadedOut());
    unit.Process(rest.View(), 1);
    EXPECT_TRUE(unit.IsFadedOut());

    unit.SetBypass(false);
    Signal on(1000, 0.25);
    unit.Process(on.View(), 499);
    EXPECT_EQ(unit.Fade(), 1.0);
    for (std::size_t i = 0; i < 499; ++i)
        ASSERT_EQ(on.left[i], 0.25);
    unit.Process(on.From(499), 501);
    EXPECT_GT(std::fabs(on.left[499] - 0.25), 0.1); // the filters went on beneath
}

TEST(Equalizer, ABlockLongerThanTheBufferPassesUntouched) {
    Equalizer unit;
    unit.SetBass(1.0);
    Signal signal = NoiseSignal(1500, 0.5);
    const Signal before = signal;
    unit.Process(signal.View(), 1500);
    EXPECT_EQ(signal, before);
    unit.SetBlockSize(1500);
    unit.Process(signal.View(), 1500);
    EXPECT_NE(signal, before);
}

TEST(Equalizer, FollowsTheSampleRate) {
    Equalizer unit;
    unit.SetSampleRate(96000.0);
    unit.SetHigh(0.75);
    Rest(unit, 1);
    const double expected = std::pow(10.0, 12.0 / 20.0);
    EXPECT_NEAR(GainAt(unit, 4000.0, 96000.0), std::sqrt(expected), 1e-6 * expected);
}

TEST(Equalizer, BadValuesAndBadSoundLeaveNoTrace) {
    Equalizer unit;
    unit.SetBass(std::numeric_limits<double>::quiet_NaN());
    unit.SetMid(std::numeric_limits<double>::infinity());
    Signal hostile = HostileSignal();
    unit.Process(hostile.View(), hostile.Frames());
    Signal signal = NoiseSignal(1000, 0.5);
    const Signal before = signal;
    unit.Process(signal.View(), 1000);
    unit.Process(signal.View(), 1000);
    unit.Reset();
    Signal last = before;
    unit.Process(last.View(), 1000);
    for (std::size_t i = 0; i < 1000; ++i)
        ASSERT_NEAR(last.left[i], before.left[i], kTermBound);
}
