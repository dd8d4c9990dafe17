#include "effects/FilterUnit.h"

#include "tests/effects/TestSignals.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <vector>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

const DistortionDataProvider& Curves() {
    static RandomGenerator random;
    static const DistortionDataProvider curves(random);
    return curves;
}

void Play(FilterUnit& unit, int frames) {
    Signal rest(frames);
    for (int i = 0; i < frames; i += 1000)
        unit.Process(rest.From(i), std::min(1000, frames - i));
}

/// A filter brought through what a fresh unit does to one it starts with or chooses.
template <class Filter>
Filter Chosen(double order, double resonanceId, double resonance, double cutoff) {
    Filter filter;
    filter.setParams(filter.getDefaultParams());
    filter.setParam(Dsp::ParamId::kOrder, order);
    filter.changeParam(static_cast<int>(resonanceId), resonance);
    filter.changeParam(Dsp::ParamId::kFrequency, cutoff);
    return filter;
}

Signal Filtered(Dsp::Filter& filter, Signal signal) {
    const std::array channels{signal.left.data(), signal.right.data()};
    filter.process(signal.Frames(), channels.data());
    return signal;
}

double Param(const Dsp::Filter& filter, int id) {
    return filter.getParams()[filter.findParam(id)];
}

} // namespace

TEST(FilterUnit, ANewUnitStartsOnFilterOneAndGlidesToFilterTwo) {
    FilterUnit unit;
    auto one = Chosen<Dsp::RbjLowPass>(2, Dsp::ParamId::kQ, 1.0 / 16.0, 22040.0);
    auto two = Chosen<Dsp::ChebyshevHighPass>(2, Dsp::ParamId::kRippleDb, 0.001, 22040.0);
    Signal signal = NoiseSignal(900, 0.7);
    const Signal y1 = Filtered(one, signal);
    const Signal y2 = Filtered(two, signal);
    unit.Process(signal.View(), 900);
    double share = 0.0;
    for (std::size_t i = 0; i < 900; ++i) {
        share = 0.9777 * share + 0.0223 * 1.0;
        ASSERT_NEAR(signal.left[i], (1.0 - share) * y1.left[i] + share * y2.left[i], 1e-10) << i;
        ASSERT_NEAR(signal.right[i], (1.0 - share) * y1.right[i] + share * y2.right[i], 1e-10) << i;
    }
}

TEST(FilterUnit, BalanceZeroIsFilterOneAlone) {
    FilterUnit unit;
    unit.SetBalance(0.0);
    auto one = Chosen<Dsp::RbjLowPass>(2, Dsp::ParamId::kQ, 1.0 / 16.0, 22040.0);
    Signal signal = NoiseSignal(1000, 0.7);
    const Signal expected = Filtered(one, signal);
    unit.Process(signal.View(), 1000);
    EXPECT_EQ(signal.left[0], expected.left[0]); // a unit at balance 0 has no way to glide
    for (std::size_t i = 0; i < 1000; ++i)
        ASSERT_NEAR(signal.left[i], expected.left[i], 1e-10);
}

TEST(FilterUnit, BalanceOneIsFilterTwoAloneAfterTheGlide) {
    FilterUnit unit;
    unit.SetFilter2Type(0.4);
    unit.SetCutoff(0.6);
    Play(unit, 4000);
    auto two = Chosen<Dsp::ChebyshevLowPass>(2, Dsp::ParamId::kRippleDb, 0.001, 22040.0);
    two.changeParam(Dsp::ParamId::kFrequency, 10.0 * std::pow(2204.0, 0.6));
    Signal rest(4000);
    Filtered(two, rest);
    Signal signal = NoiseSignal(1000, 0.7);
    const Signal expected = Filtered(two, signal);
    unit.Process(signal.View(), 1000);
    for (std::size_t i = 0; i < 1000; ++i)
        ASSERT_NEAR(signal.left[i], expected.left[i], 1e-9);
}

TEST(FilterUnit, ChoosingOneFilterDoesNotInterruptTheSweepOfTheOther) {
    const auto second = [](const FilterUnit& unit) {
        return dynamic_cast<const Dsp::ChebyshevLowPass&>(unit.Filter2()).getRemainingSamples();
    };
    FilterUnit unit;
    unit.SetFilter2Type(0.4);
    Play(unit, 600);
    unit.SetCutoff(0.3);
    Play(unit, 100);
    ASSERT_EQ(second(unit), 412);
    unit.SetFilter1Type(1.0);
    EXPECT_EQ(second(unit), 412);
    Play(unit, 12);
    EXPECT_EQ(second(unit), 400);
    const auto& first = dynamic_cast<const Dsp::RbjBandStop&>(unit.Filter1());
    EXPECT_EQ(first.getRemainingSamples(), 500);
}

TEST(FilterUnit, CutoffOneIs22040HzAtAnyRateAndStable) {
    for (const double rate : {22050.0, 44100.0, 48000.0, 192000.0}) {
        for (int type2 = 0; type2 < 6; ++type2) {
            FilterUnit unit;
            unit.Initialise(Curves());
            unit.SetSampleRate(rate);
            unit.SetFilter1Type(type2 / 3.0);
            unit.SetFilter2Type(type2 / 5.0);
            unit.SetResonance(0.7);
            unit.SetCutoff(1.0);
            unit.SetBalance(0.5);
            EXPECT_NEAR(Param(unit.Filter1(), Dsp::ParamId::kFrequency), 22040.0, 1e-8);
            EXPECT_NEAR(Param(unit.Filter2(), Dsp::ParamId::kFrequency), 22040.0, 1e-8);
            EXPECT_NEAR(unit.CutoffFrequency(1.0), 22040.0, 1e-8);
            for (int block = 0; block < 40; ++block) {
                Signal signal = NoiseSignal(1000, 1.0, static_cast<std::uint64_t>(block) + 1);
                unit.Process(signal.View(), 1000);
                for (const double y : signal.left)
                    ASSERT_LT(std::fabs(y), 100.0) << rate << " " << type2 << " " << block;
            }
        }
    }
}

TEST(FilterUnit, ResonanceMovesTheParameterThatAFilterHas) {
    FilterUnit unit;
    unit.SetResonance(0.5);
    EXPECT_EQ(Param(unit.Filter1(), Dsp::ParamId::kQ), 1.0);
    EXPECT_NEAR(Param(unit.Filter2(), Dsp::ParamId::kRippleDb), 0.001 + 11.999 * 0.5, 1e-12);
    unit.SetFilter1Type(2.0 / 3.0);
    EXPECT_EQ(Param(unit.Filter1(), Dsp::ParamId::kBandwidth), 1.0);
    unit.SetFilter2Type(0.8);
    EXPECT_NEAR(Param(unit.Filter2(), Dsp::ParamId::kBandwidthHz), 10.0 * std::sqrt(2204.0), 1e-9);
    unit.SetResonance(1.0);
    EXPECT_EQ(Param(unit.Filter1(), Dsp::ParamId::kBandwidth), 16.0);
    unit.SetResonance(0.0);
    EXPECT_EQ(Param(unit.Filter1(), Dsp::ParamId::kBandwidth), 1.0 / 16.0);
}

TEST(FilterUnit, TypesChooseTheirFilters) {
    const char* first[] = {"RBJ Low Pass", "RBJ High Pass", "RBJ Band Pass 1", "RBJ Band Stop"};
    const char* second[] = {"Chebyshev I High Pass", "Chebyshev I High Pass", "Chebyshev I Low Pass",
                            "Chebyshev I Low Pass",  "Butterworth Band Pass", "Butterworth Band Stop"};
    const double orders[] = {2, 4, 2, 4, 2, 2};
    FilterUnit unit;
    for (int i = 0; i < 4; ++i) {
        unit.SetFilter1Type(i / 3.0);
        EXPECT_EQ(unit.Filter1Type(), i);
        EXPECT_STREQ(unit.Filter1().getName(), first[i]);
    }
    for (int i = 0; i < 6; ++i) {
        unit.SetFilter2Type(i / 5.0);
        EXPECT_EQ(unit.Filter2Type(), i);
        EXPECT_STREQ(unit.Filter2().getName(), second[i]);
        EXPECT_EQ(Param(unit.Filter2(), Dsp::ParamId::kOrder), orders[i]);
    }
    unit.SetFilter2Type(1.4);
    EXPECT_EQ(unit.Filter2Type(), 7);
    EXPECT_STREQ(unit.Filter2().getName(), "Chebyshev I High Pass");
    EXPECT_EQ(Param(unit.Filter2(), Dsp::ParamId::kOrder), 2.0);
    unit.SetFilter1Type(-2.0);
    EXPECT_EQ(unit.Filter1Type(), 0);
    unit.SetFilter1Type(9.0);
    EXPECT_EQ(unit.Filter1Type(), 3);
}

TEST(FilterUnit, MediumAndFastSoundTheSameAndSlowDiffers) {
    std::vector<Signal> renders;
    for (const double value : {0.0, 0.5, 1.0}) {
        FilterUnit unit;
        unit.SetTransition(value);
        unit.SetBalance(0.3);
        unit.SetCutoff(0.2);
        Signal signal = NoiseSignal(1000, 0.5);
        unit.Process(signal.View(), 1000);
        renders.push_back(signal);
        EXPECT_EQ(unit.TransitionMode(), static_cast<int>(value * 2.0));
    }
    EXPECT_NE(renders[0], renders[1]);
    EXPECT_EQ(renders[1], renders[2]);
}

TEST(FilterUnit, SlowSweepsTake2048Samples) {
    FilterUnit unit;
    unit.SetTransition(0.0);
    unit.SetCutoff(0.5);
    const auto& filter = dynamic_cast<const Dsp::RbjLowPass&>(unit.Filter1());
    EXPECT_EQ(filter.getRemainingSamples(), 2048);
    Play(unit, 2047);
    EXPECT_EQ(filter.getRemainingSamples(), 1);
    Play(unit, 1);
    EXPECT_EQ(filter.getCurrentParams()[1], filter.getParams()[1]);
}

TEST(FilterUnit, SteepFiltersSweepTheirOrderUpWhenFirstChosen) {
    FilterUnit unit;
    unit.SetFilter2Type(0.6);
    const auto& filter = dynamic_cast<const Dsp::ChebyshevLowPass&>(unit.Filter2());
    EXPECT_EQ(filter.getCurrentParams()[1], 2.0);
    EXPECT_EQ(filter.getParams()[1], 4.0);
    Play(unit, 256);
    EXPECT_NEAR(filter.getCurrentParams()[1], 3.0, 1e-9);
    Play(unit, 256);
    EXPECT_EQ(filter.getCurrentParams()[1], 4.0);
}

TEST(FilterUnit, ANewRateIsHeardFromTheNextSettingOn) {
    FilterUnit unit;
    Play(unit, 600);
    const auto& filter = dynamic_cast<const Dsp::RbjLowPass&>(unit.Filter1());
    const auto response = filter.response(0.1);
    unit.SetSampleRate(96000.0);
    Play(unit, 600);
    EXPECT_EQ(filter.response(0.1), response);
    unit.SetCutoff(1.0);
    EXPECT_NE(filter.response(0.1), response);
    Play(unit, 256);
    EXPECT_NEAR(filter.getCurrentParams()[0], (44100.0 + 96000.0) / 2.0, 1e-6);
}

TEST(FilterUnit, AFilterThatComesBackResumesFromWhatItHeld) {
    FilterUnit unit;
    unit.SetBalance(0.0);
    unit.SetResonance(1.0);
    unit.SetCutoff(0.5);
    Play(unit, 600);
    Signal impulse(200);
    impulse.left[0] = 1.0;
    unit.Process(impulse.View(), 200);
    unit.SetFilter1Type(1.0 / 3.0);
    Play(unit, 5000);
    unit.SetFilter1Type(0.0);
    Signal rest(10);
    unit.Process(rest.View(), 10);
    // The ring of a Q of 16 that was stopped in full swing goes on.
    EXPECT_GT(std::fabs(rest.left[0]) + std::fabs(rest.left[5]), 1e-4);
    unit.Reset();
    Signal silent(10);
    unit.Process(silent.View(), 10);
    for (const double y : silent.left)
        EXPECT_LT(std::fabs(y), 1e-6);
}

TEST(FilterUnit, DriveSaturatesWhatBothFiltersGet) {
    FilterUnit unit;
    unit.Initialise(Curves());
    unit.SetDrive(0.6);
    FilterUnit clean;
    Saturator drive;
    drive.Initialise(Curves(), 1);
    drive.SetBlend(0.25, 4.0);
    drive.SetAmount(0.6);
    Signal driven = NoiseSignal(1000, 0.5);
    Signal signal = driven;
    unit.Process(signal.View(), 1000);
    drive.Process(driven.View(), 1000);
    clean.Process(driven.View(), 1000);
    EXPECT_EQ(signal, driven);
}

TEST(FilterUnit, SwitchingOffFadesToTheDrivenSignalThenJumpsToTheBareOne) {
    FilterUnit unit;
    unit.Initialise(Curves());
    unit.SetDrive(1.0);
    Play(unit, 3000);
    Saturator drive;
    drive.Initialise(Curves(), 1);
    drive.SetBlend(0.25, 4.0);
    drive.SetAmount(1.0);
    Signal rest(3000);
    drive.Process(rest.View(), 3000);

    unit.SetOnOff(0.0);
    EXPECT_EQ(unit.Fade(), 0.998);
    Signal signal(600, 0.05);
    Signal driven = signal;
    drive.Process(driven.View(), 600);
    unit.Process(signal.View(), 498);
    EXPECT_GT(unit.Fade(), 0.0);
    unit.Process(signal.From(498), 1);
    EXPECT_EQ(unit.Fade(), 0.0);
    EXPECT_NEAR(signal.left[498], driven.left[498], 5e-3);
    EXPECT_GT(std::fabs(driven.left[498] - 0.05), 0.05);
    unit.Process(signal.From(499), 101);
    for (std::size_t i = 499; i < 600; ++i)
        ASSERT_EQ(signal.left[i], 0.05);
}

TEST(FilterUnit, SwitchingOnTakes499Frames) {
    FilterUnit unit;
    unit.SetOnOff(0.0);
    Play(unit, 500);
    ASSERT_TRUE(unit.IsFadedOut());
    unit.SetOnOff(0.3);
    Play(unit, 498);
    EXPECT_LT(unit.Fade(), 1.0);
    Play(unit, 1);
    EXPECT_EQ(unit.Fade(), 1.0);
}

TEST(FilterUnit, ABlockLongerThanTheBuffersPassesUntouched) {
    FilterUnit unit;
    Signal signal = NoiseSignal(1025, 0.5);
    const Signal before = signal;
    unit.Process(signal.View(), 1025);
    EXPECT_EQ(signal, before);
    unit.SetBlockSize(1025);
    unit.Process(signal.View(), 1025);
    EXPECT_NE(signal, before);
}

TEST(FilterUnit, SilenceStaysAtTheAntiDenormalTerm) {
    for (int type = 0; type < 6; ++type) {
        FilterUnit unit;
        unit.SetFilter1Type(type / 3.0);
        unit.SetFilter2Type(type / 5.0);
        unit.SetCutoff(0.5);
        Play(unit, 5000);
        Signal signal(1000);
        unit.Process(signal.View(), 1000);
        for (const double y : signal.left)
            ASSERT_LT(std::fabs(y), 2e-8);
    }
}

TEST(FilterUnit, BadValuesAndBadSoundLeaveNoTrace) {
    FilterUnit unit;
    unit.SetBalance(0.5);
    unit.SetCutoff(0.5);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    unit.SetCutoff(nan);
    unit.SetResonance(nan);
    unit.SetBalance(nan);
    unit.SetFilter1Type(nan);
    unit.SetFilter2Type(nan);
    unit.SetTransition(nan);
    unit.SetDrive(nan);
    Signal hostile = HostileSignal();
    unit.Process(hostile.View(), hostile.Frames());
    Play(unit, 2000);
    Signal signal = NoiseSignal(500, 0.5);
    unit.Process(signal.View(), 500);
    for (const double y : signal.left)
        ASSERT_LT(std::fabs(y), 2.0);
}

TEST(FilterUnit, AutomationOfCutoffAndResonanceMakesNoClick) {
    FilterUnit unit;
    unit.SetBalance(0.5);
    unit.SetFilter2Type(0.4);
    unit.SetCutoff(0.9);
    unit.SetResonance(0.45);
    Play(unit, 4000);
    std::vector<double> out;
    double phase = 0.0;
    for (int block = 0; block < 200; ++block) {
        unit.SetCutoff(0.9 - 0.1 * block / 200.0);
        unit.SetResonance(0.45 + 0.05 * block / 200.0);
        Signal signal(64);
        for (std::size_t i = 0; i < 64; ++i, phase += 2.0 * kPi * 100.0 / 44100.0)
            signal.left[i] = signal.right[i] = std::sin(phase);
        unit.Process(signal.View(), 64);
        out.insert(out.end(), signal.left.begin(), signal.left.end());
    }
    // A 100 Hz sine of level 1 has second differences of up to 2e-4.
    for (std::size_t i = 200; i + 1 < out.size(); ++i)
        ASSERT_LT(std::fabs(out[i + 1] - 2.0 * out[i] + out[i - 1]), 1e-3) << i;
}
