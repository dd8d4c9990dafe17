#include "effects/DynShaper.h"

#include "core/Maths.h"
#include "tests/effects/TestSignals.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

constexpr double kModes[] = {0.0, 1.0 / 3.0, 2.0 / 3.0, 1.0};

/// The bump as a function of the place in the window, and the answer put together another way than the unit
/// does: the window's lower edge runs from 0.75 at e = 0 to 0 at e = 1.
double Answer(double v, double e, int waveform, int mode, bool invert) {
    const double low = 0.75 * (1.0 - e);
    const double place = (std::fabs(v) - low) / 0.25;
    const double t = place > 0.0 && place < 1.0 ? place : 0.0;
    double bump = waveform == 0 ? std::sin(kPi * t) : 0.0;
    if (waveform == 1) bump = t < 0.5 ? 2.0 * t : 2.0 - 2.0 * t;
    if (waveform == 2) bump = t > 0.0 && t < 0.5 ? 1.0 : 0.0;
    bump *= 0.777 * e * (invert ? -1.0 : 1.0);
    if (mode % 2 == 1) bump = std::fmin(1.0, 4.0 * e * bump);
    return std::copysign(1.0, v) * (std::fabs(v) + bump);
}

} // namespace

TEST(DynShaper, AmountZeroIsBitExactInEveryMode) {
    for (const double mode : kModes) {
        DynShaper shaper;
        shaper.SetMode(mode);
        Signal signal = NoiseSignal(256, 1.0);
        const Signal before = signal;
        shaper.Process(signal.View(), 256, nullptr);
        EXPECT_EQ(signal, before);
    }
}

TEST(DynShaper, FollowsItsFormulaInEveryShapeAndMode) {
    for (int waveform = 0; waveform < 3; ++waveform) {
        for (int mode = 0; mode < 4; ++mode) {
            for (const bool invert : {false, true}) {
                DynShaper shaper;
                shaper.SetAmount(0.8);
                shaper.SetWaveform(waveform / 2.0);
                shaper.SetMode(mode / 3.0);
                shaper.SetInvert(invert ? 0.5 : 0.0);
                Signal signal = NoiseSignal(2000, 1.0);
                const Signal before = signal;
                const Signal modulation = NoiseSignal(2000, 1.0, 7);
                shaper.Process(signal.View(), 2000, modulation.right.data());
                double s = 0.0;
                for (std::size_t i = 0; i < 2000; ++i) {
                    s = 0.99 * s + 0.01 * 0.64;
                    const double e = s * modulation.right[i];
                    double v = before.left[i];
                    if (mode >= 2) v = std::fmax(-1.0, std::fmin(1.0, 5.0 * e * v));
                    ASSERT_NEAR(signal.left[i], Answer(v, e, waveform, mode, invert), 1e-9)
                        << waveform << mode << invert << " " << i;
                }
            }
        }
    }
}

TEST(DynShaper, BoostModesMuteUntilTheAmountRises) {
    for (const double mode : {2.0 / 3.0, 1.0}) {
        DynShaper shaper;
        shaper.SetMode(mode);
        shaper.SetAmount(0.5);
        Signal signal(1, 0.1);
        shaper.Process(signal.View(), 1, nullptr);
        EXPECT_NEAR(signal.left[0], 0.1 * 5.0 * 0.01 * 0.25, 1e-12);
    }
}

TEST(DynShaper, PositivePolarityLeavesNegativeSamplesToTheBoostAlone) {
    DynShaper plain;
    plain.SetAmount(1.0);
    plain.SetPolarity(0.5);
    EXPECT_EQ(plain.Shape(-0.3, 0.7), -0.3);
    EXPECT_NE(plain.Shape(0.3, 0.7), 0.3);
    DynShaper boost;
    boost.SetAmount(1.0);
    boost.SetPolarity(0.5);
    boost.SetMode(2.0 / 3.0);
    Signal signal(3000, -0.1);
    boost.Process(signal.View(), 3000, nullptr);
    EXPECT_NEAR(signal.left.back(), -0.5, 1e-9);
}

TEST(DynShaper, NegativePolarityLeavesZeroAndPositiveSamples) {
    DynShaper shaper;
    shaper.SetPolarity(1.0);
    EXPECT_EQ(shaper.Shape(0.3, 0.7), 0.3);
    EXPECT_NE(shaper.Shape(-0.3, 0.7), -0.3);
    // A zero comes back as it went in, sign included, by polarity 2; by polarity 1 it takes the long way.
    EXPECT_TRUE(std::signbit(shaper.Shape(-0.0, 1.0)));
    shaper.SetPolarity(0.5);
    EXPECT_FALSE(std::signbit(shaper.Shape(-0.0, 1.0)));
}

TEST(DynShaper, NoEffectReturnsTheSampleEvenInsideTheWindow) {
    const DynShaper shaper;
    EXPECT_EQ(shaper.Shape(0.95, 0.0), 0.95);
    EXPECT_NE(shaper.Shape(0.95, 1e-3), 0.95);
}

TEST(DynShaper, SaturatedBumpIsLimitedUpwardsOnly) {
    DynShaper shaper;
    shaper.SetMode(1.0 / 3.0);
    EXPECT_NEAR(shaper.Shape(0.125, 1.0), 1.125, 1e-12);
    shaper.SetInvert(1.0);
    EXPECT_NEAR(shaper.Shape(0.125, 1.0), 0.125 - 4.0 * 0.777, 1e-12);
}

TEST(DynShaper, TheToggleFadesOver499Frames) {
    DynShaper shaper;
    shaper.SetAmount(1.0);
    Signal settle = NoiseSignal(3000, 1.0);
    shaper.Process(settle.View(), 3000, nullptr);
    shaper.SetBypass(true);
    EXPECT_EQ(shaper.Fade(), 0.998);
    Signal frame(1, 0.5);
    for (int i = 0; i < 498; ++i)
        shaper.Process(frame.View(), 1, nullptr);
    EXPECT_GT(shaper.Fade(), 0.0);
    shaper.Process(frame.View(), 1, nullptr);
    EXPECT_EQ(shaper.Fade(), 0.0);
    Signal signal = NoiseSignal(64, 1.0);
    const Signal before = signal;
    shaper.Process(signal.View(), 64, nullptr);
    EXPECT_EQ(signal, before);
    shaper.SetBypass(false);
    EXPECT_EQ(shaper.Fade(), 0.002);
    for (int i = 0; i < 499; ++i)
        shaper.Process(frame.View(), 1, nullptr);
    EXPECT_EQ(shaper.Fade(), 1.0);
}

TEST(DynShaper, AtAmountZeroTheFadeStandsStill) {
    DynShaper shaper;
    shaper.SetBypass(true);
    Signal signal(1000);
    shaper.Process(signal.View(), 1000, nullptr);
    EXPECT_EQ(shaper.Fade(), 0.998);
    shaper.SetAmount(0.5);
    shaper.Process(signal.View(), 1000, nullptr);
    EXPECT_EQ(shaper.Fade(), 0.0);
}

TEST(DynShaper, PreviewAnswersARampAndASine) {
    DynShaper shaper;
    shaper.SetAmount(0.7);
    shaper.SetMode(1.0);
    std::array<double, kShaperCurvePoints> curve{};
    std::array<double, kShaperSignalPoints> signal{};
    shaper.RenderPreview(curve, signal);
    for (int k = 0; k < 128; ++k)
        EXPECT_NEAR(curve[static_cast<std::size_t>(k)], Answer(k / 64.0 - 1.0, 0.49, 0, 3, false), 1e-12);
    for (int k = 0; k < 120; ++k) {
        EXPECT_NEAR(signal[static_cast<std::size_t>(k)],
                    Answer(std::sin(2 * kPi * k / 120), 0.49, 0, 3, false), 1e-12);
    }
}

TEST(DynShaper, SilenceStaysSilentAndNothingDoesHarm) {
    for (const double mode : kModes) {
        for (const double other : {0.0, 0.5, 1.0, -9.0, 1e200, std::nan("")}) {
            DynShaper shaper;
            shaper.SetAmount(1.0);
            shaper.SetMode(mode);
            shaper.SetWaveform(other);
            shaper.SetPolarity(other);
            shaper.SetInvert(other);
            Signal silence(2000);
            shaper.Process(silence.View(), 2000, nullptr);
            EXPECT_EQ(Peak(silence), 0.0);
            Signal hostile = HostileSignal();
            shaper.Process(hostile.View(), hostile.Frames(), hostile.left.data());
            shaper.Process(silence.View(), 2000, nullptr);
            EXPECT_EQ(Peak(silence), 0.0) << "nothing is kept";
        }
    }
}
