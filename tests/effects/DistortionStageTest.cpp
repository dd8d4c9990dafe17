#include "effects/DistortionStage.h"

#include "tests/effects/TestSignals.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

const DistortionDataProvider& Provider() {
    static const DistortionDataProvider provider = [] {
        RandomGenerator random;
        return DistortionDataProvider(random);
    }();
    return provider;
}

/// A stage with every unit at work.
void SetAll(DistortionStage& stage) {
    stage.SetAmount(0.7);
    stage.SetType(19.0 / 41.0);
    stage.SetMode(1.0);
    stage.SetQuantization(0.3);
    stage.SetSampleRateReduction(0.8);
    stage.SetGate(0.4);
    stage.SetShaperAmount(0.9);
    stage.SetShaperMode(1.0 / 3.0);
}

} // namespace

TEST(DistortionStage, AtRestItPassesTheBlockUntouched) {
    DistortionStage stage(Provider());
    Signal signal = NoiseSignal(1024, 1.0);
    const Signal before = signal;
    stage.Process(signal.View(), 1024, nullptr, nullptr);
    EXPECT_EQ(signal, before);
}

TEST(DistortionStage, TheUnitsStandInTheirFixedOrder) {
    DistortionStage stage(Provider());
    SetAll(stage);
    Signal signal = NoiseSignal(1000, 1.0);
    Signal expected = signal;
    const Signal modulation = NoiseSignal(1000, 1.0, 3);
    stage.Process(signal.View(), 1000, modulation.left.data(), modulation.right.data());

    SmpRateConverter converter;
    converter.SetReduction(0.8);
    BitCrusher crusher;
    crusher.SetQuantization(0.3);
    GateCrack gate;
    gate.SetGate(0.4);
    Distortion distortion(Provider());
    distortion.SetAmount(0.7);
    distortion.SetType(19.0 / 41.0);
    distortion.SetMode(1.0);
    DynShaper shaper;
    shaper.SetAmount(0.9);
    shaper.SetMode(1.0 / 3.0);
    converter.Process(expected.View(), 1000);
    crusher.Process(expected.View(), 1000);
    gate.Process(expected.View(), 1000);
    distortion.Process(expected.View(), 1000, modulation.left.data());
    shaper.Process(expected.View(), 1000, modulation.right.data());
    EXPECT_EQ(signal, expected);
}

TEST(DistortionStage, SwitchedOffTheGateGoesOnAndTheShaperFadesOut) {
    DistortionStage stage(Provider());
    SetAll(stage);
    Signal settle = NoiseSignal(1024, 1.0);
    stage.Process(settle.View(), 1024, nullptr, nullptr);
    stage.SetOnOff(0.0);
    Signal fading = NoiseSignal(499, 1.0);
    stage.Process(fading.View(), 499, nullptr, nullptr);
    Signal signal = NoiseSignal(1024, 1.0);
    Signal expected = signal;
    stage.Process(signal.View(), 1024, nullptr, nullptr);
    int cut = 0;
    for (std::size_t i = 0; i < 1024; ++i) {
        const double v = std::fabs(expected.left[i]);
        if (v < stage.GateLevel()) {
            ++cut;
            EXPECT_EQ(signal.left[i], 0.0);
        } else if (v > stage.GateLevel() + 0.011) {
            EXPECT_EQ(signal.left[i], expected.left[i]);
        }
    }
    EXPECT_GT(cut, 0);
}

TEST(DistortionStage, AnyValueButZeroSwitchesOn) {
    DistortionStage stage(Provider());
    stage.SetQuantization(0.0);
    stage.SetOnOff(0.0);
    Signal signal(4, 0.7);
    stage.Process(signal.View(), 4, nullptr, nullptr);
    EXPECT_EQ(signal.left[0], 0.7);
    stage.SetOnOff(0.01);
    stage.Process(signal.View(), 4, nullptr, nullptr);
    EXPECT_EQ(signal.left[0], 0.5);
}

TEST(DistortionStage, TellsItsCaptionFigures) {
    DistortionStage stage(Provider());
    EXPECT_EQ(stage.CrushBits(), 64.0);
    EXPECT_EQ(stage.ReducedRate(), 44100);
    EXPECT_EQ(stage.GateLevel(), 0.0);
    stage.SetBlockSize(64);
    stage.SetSampleRate(48000.0);
    stage.SetSampleRateReduction(0.5);
    EXPECT_EQ(stage.ReducedRate(), 6000);
    stage.SetSampleRateReduction(0.0);
    EXPECT_EQ(stage.ReducedRate(), 1500);
    stage.SetQuantization(0.5);
    EXPECT_EQ(stage.CrushBits(), 16.75);
    stage.SetGate(0.1);
    EXPECT_NEAR(stage.GateLevel(), 1e-4, 1e-15);
    EXPECT_EQ(stage.GateRaw(), 0.1);
    stage.SetSampleRate(std::nan(""));
    stage.SetSampleRate(-1.0);
    EXPECT_EQ(stage.ReducedRate(), 1500);
}

TEST(DistortionStage, TakesBlocksAsLargeAsAnnounced) {
    DistortionStage stage(Provider());
    SetAll(stage);
    stage.SetBlockSize(5000);
    Signal signal = NoiseSignal(5000, 1.0);
    stage.Process(signal.View(), 5000, nullptr, nullptr);
    EXPECT_LT(Peak(signal), 10.0);
    stage.SetBlockSize(16);
    stage.SetBlockSize(0);
    stage.Process(signal.View(), 0, nullptr, nullptr);
    stage.Process(signal.View(), 1, nullptr, nullptr);
}

TEST(DistortionStage, SilenceStaysSilentThroughAllUnits) {
    DistortionStage stage(Provider());
    SetAll(stage);
    for (int block = 0; block < 8; ++block) {
        Signal signal(1024);
        stage.Process(signal.View(), 1024, nullptr, nullptr);
        EXPECT_EQ(Peak(signal), 0.0);
    }
}

TEST(DistortionStage, IsCleanAgainAfterHostileInput) {
    DistortionStage stage(Provider());
    SetAll(stage);
    for (int block = 0; block < 4; ++block) {
        Signal hostile = HostileSignal();
        stage.Process(hostile.View(), hostile.Frames(), hostile.left.data(), hostile.right.data());
    }
    Signal signal = NoiseSignal(1024, 1.0);
    stage.Process(signal.View(), 1024, nullptr, nullptr);
    EXPECT_LT(Peak(signal), 10.0);
}
