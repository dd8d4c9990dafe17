#include "effects/EnvFollower.h"

#include "tests/effects/TestSignals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace Grimworks;
using namespace Grimworks::Testing;

TEST(EnvFollower, StartsWithThreeTenthsOfASecondBothWays) {
    EnvFollower follower;
    Signal signal(13230, 1.0); // 0.3 s
    follower.Process(signal.View(), signal.Frames());
    EXPECT_NEAR(follower.Left(), 1.0 - std::exp(-1.0), 1e-12);
    Signal silence(13230);
    follower.Process(silence.View(), silence.Frames());
    EXPECT_NEAR(follower.Right(), (1.0 - std::exp(-1.0)) * std::exp(-1.0), 1e-12);
}

TEST(EnvFollower, HasItsOwnTimesUpAndDown) {
    EnvFollower follower;
    follower.SetSampleRate(48000.0);
    follower.SetTimes(0.01, 0.5);
    Signal up(480, -0.5);
    follower.Process(up.View(), 480);
    EXPECT_NEAR(follower.Left(), 0.5 * (1.0 - std::exp(-1.0)), 1e-12);
    const double top = follower.Left();
    Signal down(24000);
    follower.Process(down.View(), 24000);
    EXPECT_NEAR(follower.Left(), top * std::exp(-1.0), 1e-12);
}

TEST(EnvFollower, LevelsAreLimitedToOne) {
    EnvFollower follower;
    follower.SetTimes(0.001, 0.5);
    Signal loud(44100, 3.0);
    loud.right.assign(loud.right.size(), std::numeric_limits<double>::infinity());
    follower.Process(loud.View(), loud.Frames());
    EXPECT_NEAR(follower.Left(), 1.0, 1e-9);
    EXPECT_NEAR(follower.Right(), 1.0, 1e-9);
}

TEST(EnvFollower, LeavesTheSignalAlone) {
    EnvFollower follower;
    Signal signal = NoiseSignal(200, 1.0);
    const Signal before = signal;
    follower.Process(signal.View(), 200);
    EXPECT_EQ(signal, before);
}

TEST(EnvFollower, SkipsSamplesThatAreNotNumbers) {
    EnvFollower follower;
    Signal signal(1000, 0.8);
    follower.Process(signal.View(), 1000);
    const double level = follower.Left();
    Signal bad(1, std::numeric_limits<double>::quiet_NaN());
    bad.right[0] = 0.8;
    const double right = follower.Right();
    follower.Process(bad.View(), 1);
    EXPECT_EQ(follower.Left(), level);
    EXPECT_GT(follower.Right(), right);
}

TEST(EnvFollower, FallsByATwentiethOfTheReleaseWhenQuiet) {
    EnvFollower follower;
    follower.SetTimes(0.01, 0.5);
    Signal signal(44100, 1.0);
    follower.Process(signal.View(), 44100);
    const double level = follower.Left();
    follower.ProcessQuiet();
    // 44100 * 0.5 / 20 = 1102.5 frames, cut to 1102.
    EXPECT_NEAR(follower.Left(), level * std::exp(-1102.0 / 22050.0), 1e-12);
}
