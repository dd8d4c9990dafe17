// The second pass of a voice and what it adds up to.

#include "core/Limits.h"
#include "core/Maths.h"
#include "tests/voice/SingleNote.h"
#include "tests/voice/VoiceRig.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace Grimworks::Testing {
namespace {

constexpr double kFade[] = {0.0,   0.125, 0.241666666666667, 0.35,  0.45,  0.541666666666667,
                            0.625, 0.7,   0.766666666666667, 0.825, 0.875, 0.916666666666667,
                            0.95,  0.975, 0.991666666666667, 1.0};

/// Output of a note with a start fade over that of the same note without one.
std::vector<double> FadeOf(int offset) {
    PlainRig plain(44100.0, 64);
    PlainRig faded(44100.0, 64);
    faded.Set(0, OscParam::Phase, 0.0);
    faded.NoteOn(offset, 70);
    faded.Play(64);
    // Both waves start at phase 0.5, but by the time of the second pass this knob stands at the centre.
    plain.Set(0, OscParam::Phase, 0.0);
    for (int i = 0; i < 64; ++i) {
        if (i == offset) plain.bank.NoteOn(70, 127, i);
        plain.bank.Tick();
    }
    plain.values[Osc(0, OscParam::Phase)] = 0.5;
    std::vector<double> left(64), right(64), sub(64);
    plain.bank.Render({{left.data(), right.data()}, sub.data()}, 64);
    std::vector<double> ratio(64, 1.0);
    for (std::size_t i = 0; i < 64; ++i) {
        if (left[i] != 0.0) ratio[i] = faded.out.left[i] / left[i];
    }
    return ratio;
}

TEST(NoteRender, AWaveThatStartsInMidCycleFadesInOverSixteenSamplesOfItsBlock) {
    const std::vector<double> ratio = FadeOf(0);
    for (std::size_t i = 1; i < 16; ++i)
        EXPECT_NEAR(ratio[i], kFade[i], 1e-12) << i;
    for (std::size_t i = 16; i < 64; ++i)
        EXPECT_NEAR(ratio[i], 1.0, 1e-12) << i;
}

TEST(NoteRender, TheFadeRunsFromTheBlockStartNotFromTheOffset) {
    const std::vector<double> early = FadeOf(5);
    EXPECT_NEAR(early[8], kFade[8], 1e-12);
    const std::vector<double> late = FadeOf(20);
    for (std::size_t i = 20; i < 64; ++i)
        EXPECT_NEAR(late[i], 1.0, 1e-12) << i;
}

TEST(NoteRender, AFilterEnvelopeWithoutVelocityKeepsTheCutoffAtZero) {
    PlainRig closed;
    closed.Set(Param::FilterEnvVelocity, 0.0);
    PlainRig zero;
    zero.Set(0, OscParam::FilterCutoff, 0.0);
    for (PlainRig* rig : {&closed, &zero}) {
        rig->NoteOn(0, 80);
        rig->Play(2000);
    }
    EXPECT_EQ(closed.out.left, zero.out.left);
    EXPECT_EQ(Peak(closed.out.filterEnvelope), 0.0);
}

TEST(NoteRender, VelocityActsSquared) {
    PlainRig full;
    PlainRig half;
    full.NoteOn(0, 60, 127);
    half.NoteOn(0, 60, 64);
    // The filters differ with the velocity, so the sub layer tells.
    for (PlainRig* rig : {&full, &half}) {
        rig->Set(Param::BassLayerAmount, 1.0);
        rig->Play(2000);
    }
    EXPECT_EQ(full.bank.Voice(0).Velocity(), 1.0);
    const double share = 64.0 / 127.0;
    for (std::size_t i = 1; i < 2000; ++i)
        ASSERT_NEAR(half.out.sub[i], full.out.sub[i] * share * share, 1e-12) << i;
    EXPECT_NEAR(half.out.volumeEnvelope[100], share, 1e-15);
    EXPECT_NEAR(half.out.filterEnvelope[100], share, 1e-15);
}

TEST(NoteRender, SmoothersCarryOverFromNoteToNote) {
    PlainRig rig;
    rig.Set(Param::BassLayerAmount, 1.0);
    rig.NoteOn(0, 60);
    rig.NoteOff(2000, 60);
    rig.NoteOn(2560, 60);
    rig.Play(5120);
    // A voice that never played fades its oscillators in; the next note on it finds the volume in place.
    EXPECT_LT(std::fabs(rig.out.left[20]), 0.6 * std::fabs(rig.out.left[2560 + 20]));
}

TEST(NoteRender, TheFirstVolumeStepsFollowTheSmoother) {
    PlainRig rig;
    rig.SetWave(0, 1);
    rig.Set(0, OscParam::Phase, 0.5);
    PlainRig settled;
    settled.SetWave(0, 1);
    settled.NoteOn(0, 30);
    settled.NoteOff(6400, 30);
    settled.Play(6400 + 64);
    settled.NoteOn(6464, 30);
    settled.Play(640);
    rig.NoteOn(0, 30);
    rig.Play(640);
    const auto second = Part(settled.out.left, 6464, 640);
    for (int n = 1; n < 640; ++n) {
        const double expected = second[static_cast<std::size_t>(n)] * (1.0 - std::pow(0.9777, n + 1));
        // Balance of the filters also settles in the first note; it is all on the left filter from the start.
        ASSERT_NEAR(rig.out.left[static_cast<std::size_t>(n)], expected, 1e-9) << n;
    }
}

TEST(NoteRender, PanIsLinearWithUnityAtTheCentre) {
    PlainRig centre;
    centre.NoteOn(0, 60);
    centre.Play(4000);
    for (const auto& [pan, left, right] :
         {std::tuple{0.0, 1.0, 0.0}, {0.25, 1.0, 0.5}, {0.5, 1.0, 1.0}, {0.75, 0.5, 1.0}, {1.0, 0.0, 1.0}}) {
        PlainRig rig;
        rig.Set(0, OscParam::Pan, pan);
        rig.NoteOn(0, 60);
        rig.Play(4000);
        for (std::size_t i = 3000; i < 4000; ++i) {
            ASSERT_NEAR(rig.out.left[i], centre.out.left[i] * left, 1e-9);
            ASSERT_NEAR(rig.out.right[i], centre.out.right[i] * right, 1e-9);
        }
    }
}

TEST(NoteRender, AnLfoMayPanBeyondTheSideAndTurnTheGainNegative) {
    PlainRig rig;
    rig.Set(0, OscParam::Pan, 1.0);
    rig.Set(0, OscParam::LfoRate, 0.05);
    rig.Set(0, OscParam::LfoToPan, 1.0);
    PlainRig centre;
    for (PlainRig* each : {&rig, &centre}) {
        each->NoteOn(0, 60);
        each->Play(12000);
    }
    // A quarter of a second in, the LFO of 1 Hz is at its top: the target is 1.5, the left gain -1.
    const std::size_t top = 11025;
    EXPECT_NEAR(rig.out.left[top] / centre.out.left[top], -1.0, 0.02);
    EXPECT_NEAR(rig.out.right[top] / centre.out.right[top], 1.0, 1e-9);
}

TEST(NoteRender, SubToFmWithoutFmSoundsTheSame) {
    PlainRig off;
    PlainRig on;
    on.Set(Param::BassLayerToFm, 1.0);
    for (PlainRig* rig : {&off, &on}) {
        rig->Set(Param::BassLayerAmount, 1.0);
        rig->NoteOn(0, 50);
        rig->Play(4000);
    }
    for (std::size_t i = 0; i < 4000; ++i)
        ASSERT_NEAR(on.out.sub[i], off.out.sub[i], 1e-10);
}

TEST(NoteRender, SubToFmTakesFmAndArpeggioAlong) {
    PlainRig off;
    PlainRig on;
    on.Set(Param::BassLayerToFm, 0.01); // anything but 0
    for (PlainRig* rig : {&off, &on}) {
        rig->Set(Param::BassLayerAmount, 1.0);
        rig->Set(Param::FmAmount, 0.5);
        rig->NoteOn(0, 50);
        rig->Play(1000);
    }
    const double increment = 440.0 * std::exp2((50 - 69) / 12.0) / 44100.0;
    double difference = 0.0;
    for (std::size_t i = 1; i < 1000; ++i) {
        const auto n = static_cast<double>(i);
        ASSERT_NEAR(off.out.sub[i], std::sin(2.0 * kPi * increment * (n + 1.0)), 1e-9) << i;
        difference = std::max(difference, std::fabs(on.out.sub[i] - off.out.sub[i]));
    }
    EXPECT_GT(difference, 0.3);
}

TEST(NoteRender, TheFirstSubSampleIsOneStepIn) {
    SingleNote voice;
    voice.rig.Set(Param::BassLayerAmount, 1.0);
    voice.rig.Set(Param::PitchOnOff, 1.0);
    voice.rig.Set(Param::PitchAmount, 1.0); // the step at the start knows no sweep
    voice.Start(69);
    voice.Block(2);
    const double increment = 440.0 / 44100.0;
    // The second sample: one step more, at the sweep's own start, which is 1.
    EXPECT_NEAR(voice.sub[1], std::sin(2.0 * kPi * 2.0 * increment), 1e-12);
}

/// A program with everything on that does not hang on the block.
void Everything(VoiceRig& rig) {
    rig.Set(Param::FmAmount, 0.4);
    rig.Set(Param::BassLayerAmount, 0.8);
    rig.Set(Param::BassLayerClick, 0.45);
    rig.Set(Param::UnisonVoices, 1.0);
    rig.Set(Param::UnisonDetune, 0.4);
    rig.Set(Param::PitchOnOff, 1.0);
    rig.Set(Param::PitchAmount, 0.2);
    rig.Set(Param::PitchDuration, 0.05);
    rig.Set(Param::PitchPower, 0.3);
    const int waves[] = {1, 8, 20};
    for (int i = 0; i < kOscillators; ++i) {
        rig.Set(i, OscParam::OnOff, 1.0);
        rig.SetWave(i, waves[i]);
        rig.Set(i, OscParam::Phase, 0.3);
        rig.Set(i, OscParam::Saturation, 0.3);
        rig.Set(i, OscParam::FilterBalance, 0.4);
        rig.Set(i, OscParam::FilterCutoff, 0.6);
        rig.Set(i, OscParam::FilterResonance, 0.5);
        rig.Set(i, OscParam::LfoRate, 0.3 + 0.2 * i);
        for (const OscParam amount : {OscParam::LfoToVolume, OscParam::LfoToFilter, OscParam::LfoToPan})
            rig.Set(i, amount, 0.6);
    }
}

Recording PlayInBlocks(int block, double lfoToTune) {
    PlainRig rig(44100.0, block);
    Everything(rig);
    rig.Set(0, OscParam::LfoToTune, lfoToTune);
    rig.bank.PitchBend(0, 0.5);
    rig.bank.NoteOn(40, 100, 0);
    rig.bank.NoteOn(47, 70, 0);
    rig.Play(4000);
    return rig.out;
}

TEST(NoteRender, TheBlockSizeMakesNoDifference) {
    const Recording reference = PlayInBlocks(64, 0.0);
    for (const int block : {1, 17, 512, 1024}) {
        const Recording other = PlayInBlocks(block, 0.0);
        SCOPED_TRACE(block);
        EXPECT_EQ(other.left, reference.left);
        EXPECT_EQ(other.right, reference.right);
        EXPECT_EQ(other.sub, reference.sub);
        EXPECT_EQ(other.volumeEnvelope, reference.volumeEnvelope);
        EXPECT_EQ(other.filterEnvelope, reference.filterEnvelope);
        EXPECT_EQ(other.lfo, reference.lfo);
    }
}

// The pitch reads the LFO value that the last block left, so this modulation goes in steps of a block.
TEST(NoteRender, LfoToTuneStepsOnceABlock) {
    EXPECT_NE(PlayInBlocks(64, 1.0).left, PlayInBlocks(512, 1.0).left);
    PlainRig rig(44100.0, 500);
    rig.Set(0, OscParam::LfoRate, 0.5);
    rig.Set(0, OscParam::LfoToTune, 1.0);
    rig.NoteOn(0, 69);
    rig.Play(500);
    EXPECT_DOUBLE_EQ(rig.bank.Voice(0).Oscillator(0).blep[0].phaseInc, 440.0 / 44100.0); // not yet moved
    rig.Play(500);
    const double lfo = std::sin(2.0 * kPi * 10.0 / 44100.0 * 499.0); // the last value of the first block
    const double expected = 440.0 / 44100.0 * (1.0 + kSemitoneStep * lfo);
    EXPECT_NEAR(rig.bank.Voice(0).Oscillator(0).blep[0].phaseInc, expected, 1e-14);
}

// Envelopes run in the second pass over the whole block, so a release begins at the start of its block.
TEST(NoteRender, AReleaseBeginsAtTheStartOfItsBlock) {
    for (const int block : {64, 256}) {
        PlainRig rig(44100.0, block);
        rig.Set(Param::EnvRelease, 0.3);
        rig.NoteOn(0, 60);
        rig.NoteOff(600, 60);
        rig.Play(2048);
        const auto start = static_cast<std::size_t>(600 - 600 % block);
        EXPECT_EQ(rig.out.volumeEnvelope[start], 1.0) << block;
        EXPECT_LT(rig.out.volumeEnvelope[start + 1], 1.0) << block;
    }
}

} // namespace
} // namespace Grimworks::Testing
