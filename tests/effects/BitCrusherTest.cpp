#include "effects/BitCrusher.h"

#include "tests/effects/TestSignals.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace Grimworks;
using namespace Grimworks::Testing;

TEST(BitCrusher, FullWordLengthIsSkippedEntirely) {
    BitCrusher crusher;
    crusher.SetQuantization(1.0);
    EXPECT_EQ(crusher.Bits(), 64.0);
    Signal signal = NoiseSignal(256, 1.0);
    signal.left[0] = -0.0;
    const Signal before = signal;
    crusher.Process(signal.View(), 256);
    EXPECT_EQ(signal, before);
    EXPECT_TRUE(std::signbit(signal.left[0]));
}

TEST(BitCrusher, JustBelowFullItRunsButCannotBeHeard) {
    BitCrusher crusher;
    crusher.SetQuantization(0.99);
    EXPECT_NEAR(crusher.Bits(), 62.7463, 1e-10);
    Signal signal = NoiseSignal(256, 1.0);
    signal.left[0] = -0.0;
    const Signal before = signal;
    crusher.Process(signal.View(), 256);
    for (std::size_t i = 0; i < 256; ++i)
        EXPECT_NEAR(signal.left[i], before.left[i], 1e-15);
    EXPECT_FALSE(std::signbit(signal.left[0])) << "the way through an integer loses the sign of zero";
}

TEST(BitCrusher, OneBitKnowsHalvesOnly) {
    BitCrusher crusher;
    crusher.SetQuantization(0.0);
    EXPECT_EQ(crusher.Bits(), 1.0);
    Signal signal(8);
    const double in[] = {0.49, -0.49, 0.5, -0.5, 0.99, -0.99, 1.0, -1.7};
    const double out[] = {0.0, 0.0, 0.5, -0.5, 0.5, -0.5, 1.0, -1.5};
    for (std::size_t i = 0; i < 8; ++i)
        signal.left[i] = in[i];
    crusher.Process(signal.View(), 8);
    for (std::size_t i = 0; i < 8; ++i)
        EXPECT_EQ(signal.left[i], out[i]);
}

TEST(BitCrusher, CutsTowardsZeroAtEveryWordLength) {
    for (const double knob : {0.1, 0.25, 0.4, 0.5}) {
        BitCrusher crusher;
        crusher.SetQuantization(knob);
        const double levels = std::exp2(knob * knob * 63.0 + 1.0);
        Signal signal = NoiseSignal(512, 1.2);
        const Signal before = signal;
        crusher.Process(signal.View(), 512);
        for (std::size_t i = 0; i < 512; ++i)
            EXPECT_EQ(signal.right[i], std::trunc(levels * before.right[i]) / levels + 0.0);
    }
}

TEST(BitCrusher, SamplesTooLargeToCutStay) {
    BitCrusher crusher;
    crusher.SetQuantization(0.99);
    Signal signal(4);
    signal.left = {1.25, -3.0, 1e300, -1e19};
    const Signal before = signal;
    crusher.Process(signal.View(), 4);
    EXPECT_EQ(signal, before);
}

TEST(BitCrusher, NoInputOrKnobDoesHarm) {
    BitCrusher crusher;
    for (const double knob : {0.0, 0.5, 0.995, -3.0, 1e200, std::nan(""), HUGE_VAL}) {
        crusher.SetQuantization(knob);
        Signal signal = HostileSignal();
        crusher.Process(signal.View(), signal.Frames());
        EXPECT_TRUE(std::isnan(signal.left[0]));
        EXPECT_EQ(signal.left[1], HUGE_VAL);
        Signal silence(16);
        crusher.Process(silence.View(), 16);
        EXPECT_EQ(Peak(silence), 0.0);
    }
}

TEST(BitCrusher, TogglingCutsAtOnce) {
    BitCrusher crusher;
    crusher.SetQuantization(0.0);
    crusher.SetBypass(true);
    Signal signal(1, 0.7);
    crusher.Process(signal.View(), 1);
    EXPECT_EQ(signal.left[0], 0.7);
    crusher.SetBypass(false);
    crusher.Process(signal.View(), 1);
    EXPECT_EQ(signal.left[0], 0.5);
}
