#include "effects/DumpExpand.h"

#include "tests/effects/TestSignals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

/// An even-order filter with 0.01 dB of ripple passes the far end of its band at the foot of the ripple.
const double kFoot = std::pow(10.0, -0.01 / 20.0);

double Cutoff(const Dsp::Filter& filter) {
    return filter.getParams()[2];
}

double LevelAfter(DumpExpand& unit, double frequency) {
    double peak = 0.0;
    for (int start = 0; start < 20000; start += 1000) {
        Signal signal(1000);
        for (int i = 0; i < 1000; ++i) {
            signal.left[static_cast<std::size_t>(i)] = signal.right[static_cast<std::size_t>(i)] =
                std::sin(2.0 * kPi * frequency * (start + i) / 44100.0);
        }
        unit.Process(signal.View(), 1000);
        for (int i = 0; i < 1000 && start >= 10000; ++i)
            peak = std::fmax(peak, std::fabs(signal.left[static_cast<std::size_t>(i)]));
    }
    return peak;
}

} // namespace

TEST(DumpExpand, RestsWithBothFiltersOpen) {
    DumpExpand unit;
    EXPECT_EQ(unit.Value(), 0.5);
    EXPECT_EQ(Cutoff(unit.LowPass()), 21000.0);
    EXPECT_EQ(Cutoff(unit.HighPass()), 20.0);
    EXPECT_EQ(unit.LowPass().getParams()[1], 2.0);
    EXPECT_EQ(unit.LowPass().getParams()[3], 0.01);
    EXPECT_NEAR(LevelAfter(unit, 1000.0), kFoot * kFoot, 1e-4);
}

TEST(DumpExpand, TheCentreIsOpenWithinTheRangeOfTheRate) {
    DumpExpand unit;
    unit.SetValue(0.5);
    EXPECT_EQ(Cutoff(unit.LowPass()), 21000.0);
    EXPECT_EQ(Cutoff(unit.HighPass()), 20.0);
    unit.SetSampleRate(48000.0);
    EXPECT_EQ(Cutoff(unit.LowPass()), 21000.0); // stays until the value comes again
    unit.SetValue(0.5);
    EXPECT_NEAR(Cutoff(unit.LowPass()), 22040.0, 1e-8);
    EXPECT_NEAR(Cutoff(unit.HighPass()), 10.0, 1e-11);
    EXPECT_EQ(unit.LowPass().getParams()[0], 48000.0);
}

TEST(DumpExpand, ValueZeroLeavesNearlyNothing) {
    DumpExpand unit;
    unit.SetValue(0.0);
    EXPECT_EQ(Cutoff(unit.LowPass()), 20.0);
    EXPECT_EQ(Cutoff(unit.HighPass()), 20.0);
    EXPECT_LT(LevelAfter(unit, 500.0), 2e-2);
}

TEST(DumpExpand, EachSideMovesOneFilter) {
    DumpExpand unit;
    unit.SetValue(0.3);
    EXPECT_NEAR(Cutoff(unit.LowPass()), 10.0 * std::pow(2204.0, 0.6), 1e-8);
    EXPECT_EQ(Cutoff(unit.HighPass()), 20.0);
    unit.SetValue(0.9);
    EXPECT_EQ(Cutoff(unit.LowPass()), 21000.0);
    EXPECT_NEAR(Cutoff(unit.HighPass()), 10.0 * std::pow(2204.0, 0.8), 1e-8);
    EXPECT_GT(LevelAfter(unit, 15000.0), 0.9);
    // A second-order Chebyshev: 1 / sqrt(1 + e^2 T^2) with T = 2 w^2 - 1, e^2 = 10^(ripple / 10) - 1.
    const double w = std::tan(kPi * Cutoff(unit.HighPass()) / 44100.0) / std::tan(kPi * 100.0 / 44100.0);
    const double chebyshev = (2.0 * w * w - 1.0) * std::sqrt(std::pow(10.0, 0.001) - 1.0);
    EXPECT_NEAR(LevelAfter(unit, 100.0), kFoot / std::sqrt(1.0 + chebyshev * chebyshev), 1e-5);
    unit.SetValue(7.0);
    EXPECT_EQ(unit.Value(), 1.0);
    EXPECT_EQ(Cutoff(unit.HighPass()), 21000.0);
}

TEST(DumpExpand, SweepsOver512Samples) {
    DumpExpand unit;
    const auto& low = dynamic_cast<const Dsp::ChebyshevLowPassI&>(unit.LowPass());
    unit.SetValue(0.25);
    EXPECT_EQ(low.getRemainingSamples(), 512);
    Signal signal(600);
    unit.Process(signal.View(), 256);
    EXPECT_NEAR(low.getCurrentParams()[2], (21000.0 + Cutoff(low)) / 2.0, 1e-6);
    unit.Process(signal.View(), 256);
    EXPECT_EQ(low.getRemainingSamples(), 0);
}

TEST(DumpExpand, RunsLowPassThenHighPass) {
    DumpExpand unit;
    unit.SetValue(0.4);
    Dsp::ChebyshevLowPassI low;
    Dsp::ChebyshevHighPassI high;
    low.changeParam(Dsp::ParamId::kFrequency, 21000.0);
    high.changeParam(Dsp::ParamId::kFrequency, 20.0);
    low.changeParam(Dsp::ParamId::kFrequency, low.toNativeValue(Dsp::ParamId::kFrequency, 0.8));
    high.changeParam(Dsp::ParamId::kFrequency, 20.0);
    Signal signal = NoiseSignal(900, 1.0);
    Signal expected = signal;
    unit.Process(signal.View(), 900);
    const std::array channels{expected.left.data(), expected.right.data()};
    low.process(900, channels.data());
    high.process(900, channels.data());
    EXPECT_EQ(signal, expected);
}

TEST(DumpExpand, AToggleSwitchesAtTheEndOfTheFade) {
    DumpExpand unit;
    unit.SetValue(0.0);
    LevelAfter(unit, 1000.0);
    unit.SetBypass(true);
    Signal signal = NoiseSignal(1000, 0.5);
    const Signal before = signal;
    unit.Process(signal.View(), 499);
    EXPECT_EQ(signal, before);
    EXPECT_TRUE(unit.IsFadedOut());
    unit.SetBypass(false);
    unit.Process(signal.View(), 499);
    EXPECT_EQ(signal, before);
    unit.Process(signal.From(499), 501);
    EXPECT_LT(std::fabs(signal.left[800]), 0.05);
}

TEST(DumpExpand, BadValuesAndBadSoundLeaveNoTrace) {
    DumpExpand unit;
    unit.SetValue(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(unit.Value(), 0.5);
    Signal hostile = HostileSignal();
    unit.Process(hostile.View(), hostile.Frames());
    EXPECT_NEAR(LevelAfter(unit, 1000.0), kFoot * kFoot, 1e-4);
    unit.Reset();
    EXPECT_NEAR(LevelAfter(unit, 1000.0), kFoot * kFoot, 1e-4);
}
