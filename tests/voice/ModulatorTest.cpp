#include "voice/Modulator.h"

#include "core/Maths.h"
#include "voice/FmModulator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

namespace Grimworks {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

double ShapedSine(int mode, double phase) {
    const double sine = std::sin(2.0 * kPi * phase);
    switch (mode) {
    case 1:
        return std::max(sine, 0.0);
    case 2:
        return std::min(sine, 0.0);
    case 3:
        return std::fabs(sine);
    case 4:
        return -sine;
    default:
        return sine;
    }
}

TEST(Modulator, StartsAtOneHertz) {
    const Modulator lfo;
    EXPECT_EQ(lfo.Rate(), 0.05);
    EXPECT_EQ(lfo.Frequency(), 1.0);
    EXPECT_EQ(lfo.PhaseIncrement(), 1.0 / 44100.0);
    EXPECT_EQ(lfo.Mode(), 0);
    EXPECT_EQ(lfo.Output(), 0.0);
}

TEST(Modulator, EachModeShapesTheSine) {
    for (int mode = 0; mode <= 4; ++mode) {
        Modulator lfo;
        lfo.SetRate(1.0);
        lfo.SetMode(mode / 4.0);
        EXPECT_EQ(lfo.Mode(), mode);
        for (int n = 0; n < 44100; ++n) {
            ASSERT_NEAR(lfo.Tick(), ShapedSine(mode, std::fmod(n * 20.0 / 44100.0, 1.0)), 1e-10)
                << mode << " " << n;
        }
    }
}

TEST(Modulator, TheFullRateIsTwentyHertz) {
    Modulator lfo;
    lfo.SetRate(1.0);
    int risingCrossings = 0;
    double last = -1.0;
    for (int n = 0; n < 44100; ++n) {
        const double value = lfo.Tick();
        if (last < 0.0 && value >= 0.0) ++risingCrossings;
        last = value;
    }
    EXPECT_EQ(risingCrossings, 20);
}

TEST(Modulator, RateZeroGivesZeroFromTheFirstTickAndStandsStill) {
    Modulator lfo;
    lfo.SetRate(0.0);
    lfo.Restart();
    for (int n = 0; n < 10; ++n)
        EXPECT_EQ(lfo.Tick(), 0.0);
    lfo.SetRate(1.0);
    EXPECT_EQ(lfo.Tick(), 0.0); // still at phase 0
    EXPECT_GT(lfo.Tick(), 0.0);
}

TEST(Modulator, WhenSwitchedOffItKeepsItsLastOutput) {
    Modulator lfo;
    lfo.SetRate(1.0);
    for (int n = 0; n < 300; ++n)
        lfo.Tick();
    const double last = lfo.Output();
    EXPECT_NE(last, 0.0);
    lfo.SetRate(0.0);
    EXPECT_EQ(lfo.Tick(), 0.0);
    EXPECT_EQ(lfo.Output(), last);
    lfo.SetRate(1.0);
    lfo.SetBypass(true);
    EXPECT_EQ(lfo.Tick(), 0.0);
    EXPECT_EQ(lfo.Output(), last);
    lfo.SetBypass(false);
    EXPECT_NEAR(lfo.Tick(), std::sin(2.0 * kPi * 300.0 * 20.0 / 44100.0), 1e-12);
}

TEST(Modulator, TheInvertedSineGoesDownFirst) {
    Modulator lfo;
    lfo.SetMode(1.0);
    EXPECT_EQ(lfo.Tick(), 0.0);
    EXPECT_LT(lfo.Tick(), 0.0);
    lfo.SetMode(0.0);
    EXPECT_GT(lfo.Tick(), 0.0);
}

TEST(Modulator, AModeChangeKeepsThePhase) {
    Modulator lfo;
    lfo.SetRate(1.0);
    for (int n = 0; n < 1500; ++n)
        lfo.Tick();
    lfo.SetMode(1.0);
    EXPECT_NEAR(lfo.Tick(), -std::sin(2.0 * kPi * 1500.0 * 20.0 / 44100.0), 1e-12);
}

TEST(Modulator, RestartGoesToPhaseZeroAndClearsTheOutput) {
    Modulator lfo;
    lfo.SetRate(1.0);
    for (int n = 0; n < 500; ++n)
        lfo.Tick();
    lfo.Restart();
    EXPECT_EQ(lfo.Output(), 0.0);
    EXPECT_EQ(lfo.Tick(), 0.0);
    EXPECT_GT(lfo.Tick(), 0.0);
}

TEST(Modulator, ANewRateInHertzKeepsTheFrequency) {
    Modulator lfo;
    lfo.SetRate(0.35);
    lfo.SetSampleRate(96000.0);
    EXPECT_EQ(lfo.Frequency(), 0.35 * 20.0);
    EXPECT_EQ(lfo.PhaseIncrement(), 0.35 * 20.0 / 96000.0);
    lfo.SetSampleRate(0.0);
    EXPECT_EQ(lfo.PhaseIncrement(), 0.35 * 20.0 / 96000.0);
}

TEST(Modulator, NaNIsIgnored) {
    Modulator lfo;
    lfo.SetRate(0.5);
    lfo.SetRate(kNaN);
    lfo.SetFrequency(kNaN);
    EXPECT_EQ(lfo.Frequency(), 10.0);
    lfo.SetMode(kNaN);
    EXPECT_EQ(lfo.Mode(), 0);
}

TEST(Modulator, AModeOutsideTheTableIsLimited) {
    Modulator lfo;
    lfo.SetMode(17.0);
    EXPECT_EQ(lfo.Mode(), 4);
    lfo.SetMode(-17.0);
    EXPECT_EQ(lfo.Mode(), 0);
}

TEST(Modulator, RenderIsTickToTheBit) {
    for (int mode = 0; mode <= 4; ++mode) {
        Modulator byTick;
        byTick.SetRate(0.77);
        byTick.SetMode(mode / 4.0);
        Modulator byRun = byTick;
        for (const int frames : {0, 1, 2, 63, 64, 65, 1000, 4096}) {
            std::vector<double> values(static_cast<std::size_t>(frames) + 1, 99.0);
            byRun.Render(values.data(), frames);
            for (int i = 0; i < frames; ++i)
                ASSERT_EQ(values[static_cast<std::size_t>(i)], byTick.Tick()) << mode << " " << i;
            EXPECT_EQ(values.back(), 99.0);
            EXPECT_EQ(byRun.Output(), byTick.Output());
        }
    }
}

TEST(Modulator, RenderGivesZerosWhileSwitchedOff) {
    Modulator lfo;
    lfo.SetRate(1.0);
    std::vector<double> values(100);
    lfo.Render(values.data(), 100);
    const double last = lfo.Output();
    lfo.SetRate(0.0);
    lfo.Render(values.data(), 100);
    for (const double value : values)
        EXPECT_EQ(value, 0.0);
    EXPECT_EQ(lfo.Output(), last);
}

TEST(LfoWaves, NamesFollowTheTable) {
    EXPECT_STREQ(LfoWaveOf(0).name, "Sine");
    EXPECT_STREQ(LfoWaveOf(0).shortName, "Sine");
    EXPECT_STREQ(LfoWaveOf(1).name, "Sine (Positive Part)");
    EXPECT_STREQ(LfoWaveOf(1).shortName, "Sine(Pos.)");
    EXPECT_STREQ(LfoWaveOf(2).name, "Sine (Negative Part)");
    EXPECT_STREQ(LfoWaveOf(2).shortName, "Sine(Neg.)");
    EXPECT_STREQ(LfoWaveOf(3).name, "Sine (Absolute Value)");
    EXPECT_STREQ(LfoWaveOf(3).shortName, "Sine(Abs.)");
    EXPECT_STREQ(LfoWaveOf(4).name, "Sine (Inverted)");
    EXPECT_STREQ(LfoWaveOf(4).shortName, "Sine(Inv.)");
    EXPECT_STREQ(LfoWaveOf(5).name, "Unknown");
    EXPECT_STREQ(LfoWaveOf(-1).shortName, "Unknown");
}

TEST(FmModulator, IsSilentAndStandsStillWithoutAnAmount) {
    FmModulator fm;
    EXPECT_EQ(fm.Frequency(), 1000.0);
    fm.SetFrequency(440.0);
    for (int n = 0; n < 100; ++n)
        EXPECT_EQ(fm.Tick(), 0.0);
    fm.SetAmplitude(0.5);
    EXPECT_EQ(fm.Tick(), 0.0);
    EXPECT_NEAR(fm.Tick(), 0.5 * std::sin(2.0 * kPi * 440.0 / 44100.0), 1e-12);
}

TEST(FmModulator, AnAmountChangedDuringANoteActsAtOnce) {
    FmModulator fm;
    fm.SetAmplitude(1.0);
    fm.SetFrequency(1000.0);
    for (int n = 0; n < 10; ++n)
        fm.Tick();
    fm.SetAmplitude(0.25);
    EXPECT_NEAR(fm.Tick(), 0.25 * std::sin(2.0 * kPi * 10.0 * 1000.0 / 44100.0), 1e-12);
}

TEST(FmModulator, TheFrequencySetsRateAndIncrement) {
    FmModulator fm;
    fm.SetFrequency(440.0);
    EXPECT_EQ(fm.Rate(), 440.0 / 10000.0);
    EXPECT_EQ(fm.PhaseIncrement(), 440.0 / 44100.0);
    fm.SetSampleRate(48000.0);
    EXPECT_EQ(fm.Frequency(), 440.0 / 10000.0 * 10000.0);
    EXPECT_EQ(fm.PhaseIncrement(), fm.Frequency() / 48000.0);
}

} // namespace
} // namespace Grimworks
