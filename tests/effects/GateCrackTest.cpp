#include "effects/GateCrack.h"

#include "tests/effects/TestSignals.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

/// Lets the smoother of a gate come to rest.
void Settle(GateCrack& gate) {
    Signal silence(8000);
    gate.Process(silence.View(), 8000);
}

double OneFrame(GateCrack& gate, double sample) {
    Signal signal(1, sample);
    gate.Process(signal.View(), 1);
    EXPECT_EQ(signal.left[0], signal.right[0]);
    return signal.left[0];
}

} // namespace

TEST(GateCrack, AtZeroTheSignalIsUntouched) {
    GateCrack gate;
    gate.SetGate(0.0);
    Signal signal = HostileSignal();
    Signal finite = NoiseSignal(64, 1e-3);
    const Signal before = finite;
    gate.Process(signal.View(), signal.Frames());
    gate.Process(finite.View(), 64);
    EXPECT_EQ(finite, before);
}

TEST(GateCrack, FullLevelCutsEverythingBelowOne) {
    GateCrack gate;
    gate.SetGate(1.0);
    EXPECT_EQ(gate.Level(), 1.0);
    Settle(gate);
    for (const double v : {0.1, -0.5, 0.999999, -0.999999, 0.0})
        EXPECT_EQ(OneFrame(gate, v), 0.0);
    EXPECT_NEAR(OneFrame(gate, 1.0), 1.0, 1e-9);
    EXPECT_EQ(OneFrame(gate, 1.2), 1.2);
    EXPECT_EQ(OneFrame(gate, -1.2), -1.2);
}

TEST(GateCrack, JustAboveTheLevelTheSignalIsPushedUp) {
    GateCrack gate;
    gate.SetGate(0.5);
    EXPECT_EQ(gate.Level(), 0.0625);
    EXPECT_EQ(gate.Raw(), 0.5);
    Settle(gate);
    EXPECT_EQ(OneFrame(gate, 0.0624), 0.0);
    // Half way through the knee of 0.01 the crack adds half of its upper edge.
    EXPECT_NEAR(OneFrame(gate, 0.0675), 0.5 * 0.0725 + 0.0675, 1e-9);
    EXPECT_NEAR(OneFrame(gate, -0.0675), -(0.5 * 0.0725 + 0.0675), 1e-9);
    EXPECT_EQ(OneFrame(gate, 0.0726), 0.0726);
}

TEST(GateCrack, BelowAHundredthTheKneeIsTheLevelItself) {
    GateCrack gate;
    gate.SetGate(0.3); // level 0.0081
    Settle(gate);
    EXPECT_NEAR(OneFrame(gate, 0.0081 * 1.5), 0.5 * 0.0162 + 0.0081 * 1.5, 1e-9);
    EXPECT_EQ(OneFrame(gate, 0.0163), 0.0163);
}

TEST(GateCrack, WhileTheSmootherRisesThereIsNoCrack) {
    GateCrack gate;
    gate.SetGate(0.8);
    const double level = gate.Level();
    EXPECT_EQ(OneFrame(gate, level * 1.001), level * 1.001);
    EXPECT_EQ(OneFrame(gate, level * 0.999), 0.0);
}

TEST(GateCrack, FollowsItsRecursionFrameByFrame) {
    GateCrack gate;
    gate.SetGate(0.6);
    const double level = 0.1296;
    Signal signal = NoiseSignal(3000, 0.2);
    const Signal before = signal;
    gate.Process(signal.View(), 3000);
    double s = 0.0;
    for (std::size_t i = 0; i < 3000; ++i) {
        s = 0.0056 * level + 0.9944 * s;
        const double w = std::fmin(s, 0.01);
        const double v = std::fabs(before.left[i]);
        double expected = before.left[i];
        if (v < level) {
            expected = 0.0;
        } else if (v < s + w) {
            expected = std::copysign((v - level) / w * (s + w) + v, before.left[i]);
        }
        EXPECT_NEAR(signal.left[i], expected, 1e-9);
    }
}

TEST(GateCrack, NoInputOrKnobDoesHarm) {
    GateCrack gate;
    for (const double knob : {1.0, 1e-80, -0.5, std::nan(""), HUGE_VAL}) {
        gate.SetGate(knob);
        Signal signal = HostileSignal();
        gate.Process(signal.View(), signal.Frames());
        EXPECT_TRUE(std::isnan(signal.left[0]));
        Signal silence(16);
        gate.Process(silence.View(), 16);
        EXPECT_EQ(Peak(silence), 0.0);
    }
    EXPECT_EQ(gate.Level(), 0.0625) << "values that are not finite are ignored";
}
