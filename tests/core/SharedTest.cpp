#include "core/AudioProcessingUnit.h"
#include "core/DenormalGuard.h"
#include "core/Maths.h"
#include "core/Normalise.h"
#include "core/RandomGenerator.h"
#include "core/SmoothedValue.h"
#include "core/StereoBuffer.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

using namespace Grimworks;

TEST(RandomGenerator, FollowsTheCongruence) {
    RandomGenerator random(1800);
    std::uint64_t s = 1800;
    for (int i = 0; i < 10000; ++i) {
        s = (s * 214013U + 2531011U) % 4294967296U;
        ASSERT_EQ(static_cast<std::uint64_t>(random.Next()), s / 65536U % 32768U);
    }
}

TEST(RandomGenerator, SeedingStartsTheSequenceAgain) {
    RandomGenerator random(7);
    const int first = random.Next();
    random.Next();
    random.Seed(7);
    EXPECT_EQ(random.Next(), first);
}

TEST(SmoothedValue, FollowsTheClosedFormOfItsRecursion) {
    SmoothedValue smoother{0.9777, 0.0223, 0.0};
    for (int n = 1; n <= 500; ++n) {
        EXPECT_NEAR(smoother.Step(0.7), 0.7 * (1.0 - std::pow(0.9777, n)), 1e-12);
    }
}

TEST(Maths, ClampLetsNaNPass) {
    EXPECT_TRUE(std::isnan(Clamp(std::numeric_limits<double>::quiet_NaN(), 0.0, 1.0)));
    EXPECT_EQ(Clamp(-0.5, 0.0, 1.0), 0.0);
    EXPECT_EQ(Clamp(1.5, 0.0, 1.0), 1.0);
}

TEST(Maths, BipolarIsExactlyZeroAtTheCentre) {
    EXPECT_EQ(Bipolar(0.5), 0.0);
    EXPECT_EQ(Bipolar(1.0), 1.0);
    EXPECT_EQ(Bipolar(0.0), -1.0);
    EXPECT_DOUBLE_EQ(Bipolar(0.25), -0.5);
}

TEST(Normalise, ScalesToThePeakAndLeavesSilenceAlone) {
    std::array<double, 4> table{0.1, -0.4, 0.2, 0.0};
    Normalise(table, 0.98777);
    EXPECT_DOUBLE_EQ(table[1], -0.98777);
    EXPECT_DOUBLE_EQ(table[2], 0.98777 / 2);
    std::array<double, 3> silence{0.0, 0.0, 0.0};
    Normalise(silence, 1.0);
    EXPECT_EQ(silence[1], 0.0);
}

TEST(StereoBuffer, GrowsButNeverShrinks) {
    StereoBuffer buffer(4);
    buffer.Left()[3] = 1.0;
    buffer.Grow(2);
    EXPECT_EQ(buffer.Size(), 4);
    EXPECT_EQ(buffer.Left()[3], 1.0);
    buffer.Grow(8);
    EXPECT_EQ(buffer.Size(), 8);
    EXPECT_EQ(buffer.Left()[3], 0.0);
}

TEST(DenormalGuard, FlushesTinyResultsToZeroAndPutsTheModeBack) {
    volatile double tiny = 1e-308;
    {
        const DenormalGuard guard;
        const volatile double product = tiny * 0.01;
        EXPECT_EQ(product, 0.0);
    }
    const volatile double product = tiny * 0.01;
    EXPECT_GT(product, 0.0);
}

namespace {

class FadingUnit final : public AudioProcessingUnit {
public:
    /// Frames until the fade stands still, counted after the toggle.
    int FramesToStand() {
        int frames = 0;
        for (double last = -1.0; last != fade; ++frames) {
            last = fade;
            StepFade();
        }
        return frames - 1;
    }
};

} // namespace

TEST(AudioProcessingUnit, AToggleFadesOver499FurtherFrames) {
    FadingUnit unit;
    EXPECT_EQ(unit.Fade(), 1.0);
    unit.SetBypass(true);
    EXPECT_DOUBLE_EQ(unit.Fade(), 0.998);
    EXPECT_FALSE(unit.IsFadedOut());
    EXPECT_EQ(unit.FramesToStand(), 499);
    EXPECT_TRUE(unit.IsFadedOut());
    unit.SetBypass(false);
    EXPECT_DOUBLE_EQ(unit.Fade(), 0.002);
    EXPECT_EQ(unit.FramesToStand(), 499);
    EXPECT_EQ(unit.Fade(), 1.0);
}

TEST(AudioProcessingUnit, TheSameFlagAgainStartsNoFade) {
    FadingUnit unit;
    unit.SetBypass(false);
    EXPECT_EQ(unit.Fade(), 1.0);
}

TEST(AudioProcessingUnit, StartsAt44100Hertz) {
    FadingUnit unit;
    EXPECT_EQ(unit.SampleRate(), 44100.0);
    unit.SetSampleRate(96000.0);
    EXPECT_EQ(unit.SampleRate(), 96000.0);
}
