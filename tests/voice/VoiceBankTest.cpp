#include "voice/VoiceBank.h"

#include "core/Maths.h"
#include "tests/voice/VoiceRig.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace Grimworks::Testing {
namespace {

TEST(VoiceBank, ANoteTakesTheFirstFreeVoice) {
    PlainRig rig;
    for (const int note : {60, 64, 67})
        rig.bank.NoteOn(note, 100, 0);
    EXPECT_EQ(rig.bank.ActiveVoices(), 3);
    EXPECT_EQ(rig.bank.Voice(0).NoteNumber(), 60);
    EXPECT_EQ(rig.bank.Voice(1).NoteNumber(), 64);
    EXPECT_EQ(rig.bank.Voice(2).NoteNumber(), 67);
    rig.NoteOff(0, 64);
    rig.Play(64);
    rig.bank.NoteOn(72, 100, 0);
    EXPECT_EQ(rig.bank.Voice(1).NoteNumber(), 72);
    EXPECT_EQ(rig.bank.ActiveVoices(), 3);
}

TEST(VoiceBank, TheSixtyFifthNoteIsDropped) {
    PlainRig rig;
    for (int i = 0; i < 64; ++i)
        rig.NoteOn(0, 30 + i);
    rig.NoteOn(0, 110);
    rig.Play(640);
    EXPECT_EQ(rig.bank.ActiveVoices(), 64);
    EXPECT_EQ(rig.bank.LastNote(), 93);
    for (int i = 0; i < kVoices; ++i)
        EXPECT_EQ(rig.bank.Voice(i).NoteNumber(), 30 + i);
    rig.NoteOff(640, 110); // finds nothing
    rig.NoteOff(640, 40);
    rig.Play(64);
    EXPECT_EQ(rig.bank.ActiveVoices(), 63);
    rig.NoteOn(704, 111);
    rig.Play(64);
    EXPECT_EQ(rig.bank.Voice(10).NoteNumber(), 111);
}

TEST(VoiceBank, NoteOffReleasesAllVoicesOfItsKey) {
    PlainRig rig;
    rig.bank.NoteOn(60, 100, 0);
    rig.bank.NoteOn(60, 100, 0);
    rig.bank.NoteOn(61, 100, 0);
    rig.bank.NoteOff(60, 99);
    rig.Play(64);
    EXPECT_EQ(rig.bank.ActiveVoices(), 1);
}

TEST(VoiceBank, NoteOffFindsTheKeyInModesOfFixedPitch) {
    for (int mode = 3; mode <= 7; ++mode) {
        PlainRig rig;
        rig.Set(Param::NoteTransposeMode, mode / 9.0);
        rig.bank.NoteOn(60, 100, 0);
        rig.bank.NoteOff(36, 0);
        rig.Play(64);
        EXPECT_EQ(rig.bank.ActiveVoices(), 1) << mode;
        rig.bank.NoteOff(60, 0);
        rig.Play(64);
        EXPECT_EQ(rig.bank.ActiveVoices(), 0) << mode;
    }
}

TEST(VoiceBank, NoteOffInTheBlockOfItsNoteOnReleasesTheWholeBlock) {
    PlainRig rig(44100.0, 256);
    rig.Set(Param::EnvRelease, 0.5);
    rig.NoteOn(10, 60);
    rig.NoteOff(200, 60);
    rig.Play(256);
    // Released before the attack could take a step: nothing is heard.
    for (std::size_t i = 0; i < 256; ++i)
        ASSERT_EQ(rig.out.left[i], 0.0) << i;
    EXPECT_EQ(rig.bank.ActiveVoices(), 0);
}

TEST(VoiceBank, ANoteAtTheLastSampleOfABlockSoundsFromThere) {
    PlainRig rig(44100.0, 64);
    rig.Set(Param::BassLayerAmount, 1.0);
    rig.NoteOn(63, 60);
    rig.Play(128);
    for (std::size_t i = 0; i < 63; ++i)
        ASSERT_EQ(rig.out.sub[i], 0.0) << i;
    const double increment = 440.0 * std::exp2((60 - 69) / 12.0) / 44100.0;
    for (std::size_t i = 63; i < 128; ++i) {
        const double expected = std::sin(2.0 * kPi * increment * static_cast<double>(i - 62));
        ASSERT_NEAR(rig.out.sub[i], expected, 1e-9) << i;
    }
}

TEST(VoiceBank, VoicesAddUp) {
    PlainRig both;
    both.bank.NoteOn(50, 127, 0);
    both.bank.NoteOn(57, 90, 0);
    both.Play(1000);
    PlainRig first;
    first.bank.NoteOn(50, 127, 0);
    first.Play(1000);
    PlainRig second;
    second.bank.NoteOn(57, 90, 0);
    second.Play(1000);
    for (std::size_t i = 0; i < 1000; ++i) {
        ASSERT_NEAR(both.out.left[i], first.out.left[i] + second.out.left[i], 1e-13);
        ASSERT_NEAR(both.out.volumeEnvelope[i], first.out.volumeEnvelope[i] + second.out.volumeEnvelope[i],
                    1e-15);
    }
}

TEST(VoiceBank, TheLastVoiceLeavesItsLfoInTheRecords) {
    PlainRig rig;
    rig.Set(0, OscParam::LfoRate, 0.5);
    rig.NoteOn(0, 50);
    rig.NoteOn(640, 60);
    rig.Play(1280);
    for (std::size_t i = 1; i < 640; ++i) {
        const double phase = 10.0 / 44100.0 * static_cast<double>(i);
        ASSERT_NEAR(rig.out.lfo[i][0], std::sin(2.0 * kPi * phase), 1e-12) << i;
    }
    EXPECT_EQ(rig.out.lfo[640][0], 0.0);
    EXPECT_NEAR(rig.out.lfo[740][0], std::sin(2.0 * kPi * 10.0 / 44100.0 * 100.0), 1e-12);
}

TEST(VoiceBank, NoiseIsDrawnVoiceByVoiceWithinEachSample) {
    PlainRig rig(44100.0, 200);
    rig.SetWave(0, 8);
    rig.Set(Param::FilterEnvVelocity, 0.0);
    rig.random.Seed(7);
    rig.bank.NoteOn(60, 127, 0);
    rig.bank.NoteOn(61, 127, 0);
    for (int i = 0; i < 150; ++i)
        rig.bank.Tick();
    rig.bank.SetFmAmount(0.0); // any setter brings the voices up to date
    RandomGenerator random(7);
    for (std::size_t i = 0; i < 150; ++i) {
        ASSERT_EQ(rig.bank.Voice(0).Oscillator(0).buffer[i], 2.0 * random.Next() / 32767 - 1.0) << i;
        ASSERT_EQ(rig.bank.Voice(1).Oscillator(0).buffer[i], 2.0 * random.Next() / 32767 - 1.0) << i;
    }
}

TEST(VoiceBank, ANoteThatStartsLaterJoinsTheNoiseAtItsSample) {
    PlainRig rig(44100.0, 200);
    rig.SetWave(0, 8);
    rig.random.Seed(7);
    rig.bank.NoteOn(60, 127, 0);
    for (int i = 0; i < 100; ++i) {
        if (i == 30) rig.bank.NoteOn(61, 127, 30);
        rig.bank.Tick();
    }
    rig.bank.SetFmAmount(0.0);
    RandomGenerator random(7);
    for (std::size_t i = 0; i < 100; ++i) {
        ASSERT_EQ(rig.bank.Voice(0).Oscillator(0).buffer[i], 2.0 * random.Next() / 32767 - 1.0) << i;
        if (i < 30) continue;
        ASSERT_EQ(rig.bank.Voice(1).Oscillator(0).buffer[i], 2.0 * random.Next() / 32767 - 1.0) << i;
    }
}

/// Factor after a number of ticks towards a target, in closed form.
double Smoothed(double target, int ticks) {
    return target + (1.0 - target) * std::pow(0.9777, ticks);
}

void Tick(VoiceBank& bank, int count) {
    for (int i = 0; i < count; ++i)
        EXPECT_EQ(bank.Tick(), 0.0);
}

TEST(VoiceBank, PitchBendIsSmoothed) {
    VoiceBank bank;
    EXPECT_EQ(bank.PitchBendFactor(), 1.0);
    EXPECT_EQ(bank.BendRange(), 2.0);
    bank.PitchBend(0, 1.0);
    for (int n = 1; n <= 1000; ++n) {
        Tick(bank, 1);
        ASSERT_NEAR(bank.PitchBendFactor(), Smoothed(std::exp2(2.0 / 12.0), n), 1e-12) << n;
    }
}

TEST(VoiceBank, ABendWaitsItsOffsetOnceMore) {
    VoiceBank bank;
    Tick(bank, 100);
    bank.PitchBend(100, -1.0); // dispatched at sample 100 of a block
    Tick(bank, 100);
    EXPECT_DOUBLE_EQ(bank.PitchBendFactor(), 1.0);
    Tick(bank, 1);
    EXPECT_NEAR(bank.PitchBendFactor(), Smoothed(std::exp2(-2.0 / 12.0), 1), 1e-12);
}

TEST(VoiceBank, ANegativeBendDelayCountsAsZero) {
    VoiceBank bank;
    bank.PitchBend(-5, 1.0);
    Tick(bank, 1);
    EXPECT_GT(bank.PitchBendFactor(), 1.0);
}

TEST(VoiceBank, WithoutBendRangeTheWheelDoesNothing) {
    VoiceBank bank;
    bank.SetBendRange(0.0);
    bank.PitchBend(0, 1.0);
    Tick(bank, 500);
    EXPECT_DOUBLE_EQ(bank.PitchBendFactor(), 1.0);
}

TEST(VoiceBank, BendsOfOneSampleRunInSlotOrder) {
    VoiceBank bank;
    bank.PitchBend(0, 0.2);
    bank.PitchBend(0, -0.7);
    bank.PitchBend(0, 0.5);
    Tick(bank, 2000);
    EXPECT_NEAR(bank.PitchBendFactor(), std::exp2(1.0 / 12.0), 1e-9);
}

TEST(VoiceBank, ALaterBendInALowerSlotLosesToAnEarlierOneInAHigherSlot) {
    VoiceBank bank;
    bank.PitchBend(0, 0.1);  // slot 0, free again after the first tick
    bank.PitchBend(10, 1.0); // slot 1
    Tick(bank, 1);
    bank.PitchBend(9, -1.0); // slot 0, due at the same sample
    Tick(bank, 2000);
    EXPECT_NEAR(bank.PitchBendFactor(), std::exp2(2.0 / 12.0), 1e-9);
}

TEST(VoiceBank, ANinthWaitingBendIsLost) {
    VoiceBank bank;
    for (int i = 0; i < 8; ++i)
        bank.PitchBend(50, 0.0);
    bank.PitchBend(50, 1.0);
    Tick(bank, 2000);
    EXPECT_DOUBLE_EQ(bank.PitchBendFactor(), 1.0);
    bank.PitchBend(0, 1.0); // there is room again
    Tick(bank, 2000);
    EXPECT_NEAR(bank.PitchBendFactor(), std::exp2(2.0 / 12.0), 1e-9);
}

TEST(VoiceBank, ResetForgetsWaitingEvents) {
    VoiceBank bank;
    for (int i = 0; i < 8; ++i)
        bank.PitchBend(10, 1.0);
    bank.ResetDeferredEvents();
    for (const DeferredEvent& event : bank.DeferredEvents()) {
        EXPECT_TRUE(event.idle);
        EXPECT_EQ(event.value, 0.0);
    }
    Tick(bank, 100);
    EXPECT_DOUBLE_EQ(bank.PitchBendFactor(), 1.0);
}

TEST(VoiceBank, ControllersDoNothing) {
    PlainRig rig;
    rig.bank.NoteOn(60, 100, 0);
    rig.bank.ControlChange(0, 123, 1.0);
    rig.bank.ControlChange(0, 64, 1.0);
    rig.Play(64);
    EXPECT_EQ(rig.bank.ActiveVoices(), 1);
}

TEST(VoiceBank, TheDisplayHearsOfTheLastNoteThatFoundAVoice) {
    PlainRig rig;
    EXPECT_EQ(rig.bank.LastNote(), -1);
    rig.Set(Param::GlobalTranspose, 1.0);
    rig.bank.NoteOn(57, 100, 0);
    EXPECT_EQ(rig.bank.LastNote(), 57);
    EXPECT_NEAR(rig.bank.LastFrequency(), 440.0, 1e-9);
    rig.Set(Param::NoteTransposeMode, 3.0 / 9.0);
    rig.Set(Param::GlobalTranspose, 0.5);
    rig.bank.NoteOn(58, 100, 0);
    EXPECT_EQ(rig.bank.LastFrequency(), 43.65);
}

TEST(VoiceBank, SettersReachEveryVoice) {
    PlainRig rig;
    rig.bank.SetOscPitch(1, 1.0);
    rig.bank.SetOscTune(2, 1.0);
    rig.bank.SetFilterTypeLeft(0, 1.0);
    rig.bank.SetFilterTypeRight(1, 0.25);
    rig.bank.SetLfoRate(2, 0.4);
    rig.bank.SetLfoMode(0, 0.75);
    rig.bank.SetUnisonVoices(0.5);
    for (int i = 0; i < kVoices; ++i) {
        const Note& voice = rig.bank.Voice(i);
        EXPECT_NEAR(voice.Oscillator(1).pitch, 2.0, 1e-12);
        EXPECT_NEAR(voice.Oscillator(2).tune, kSemitone, 1e-12);
        EXPECT_EQ(voice.Oscillator(0).filter.LeftType(), 1.0);
        EXPECT_EQ(voice.Oscillator(1).filter.RightType(), 0.25);
        EXPECT_EQ(voice.Oscillator(2).lfo.Rate(), 0.4);
        EXPECT_EQ(voice.Oscillator(0).lfo.Mode(), 3);
        EXPECT_EQ(voice.UnisonVoices(), 2);
    }
    rig.bank.SetUnisonVoices(0.49);
    EXPECT_EQ(rig.bank.Voice(63).UnisonVoices(), 1);
    rig.bank.SetUnisonVoices(-4.0);
    EXPECT_EQ(rig.bank.Voice(63).UnisonVoices(), 1);
    rig.bank.SetUnisonVoices(9.0);
    EXPECT_EQ(rig.bank.Voice(63).UnisonVoices(), 2);
}

TEST(VoiceBank, UnknownOscillatorsAreIgnored) {
    VoiceBank bank;
    for (const int oscillator : {-1, 3, 1000}) {
        bank.SetWaveform(oscillator, 0.5);
        bank.SetOscPitch(oscillator, 1.0);
        bank.SetOscTune(oscillator, 1.0);
        bank.SetFilterTypeLeft(oscillator, 1.0);
        bank.SetFilterTypeRight(oscillator, 1.0);
        bank.SetLfoRate(oscillator, 0.5);
        bank.SetLfoMode(oscillator, 0.5);
    }
    for (int i = 0; i < kOscillators; ++i) {
        EXPECT_EQ(bank.Voice(0).Oscillator(i).pitch, 1.0);
        EXPECT_EQ(bank.Voice(0).Oscillator(i).tune, 1.0);
    }
}

TEST(VoiceBank, TheShapeKnobSetsTheTimeBaseOfTheFilterEnvelopes) {
    PlainRig rig;
    rig.Set(Param::FilterDuration, 0.8);
    EXPECT_EQ(rig.bank.Voice(5).FilterEnvelope().Duration(), 4.0);
    rig.Set(Param::AdsrShape, 0.1);
    EXPECT_EQ(rig.bank.Voice(5).FilterEnvelope().Duration(), 0.5);
    EXPECT_EQ(rig.bank.Voice(5).VolumeEnvelope().Duration(), 1.0);
    rig.Set(Param::FilterDuration, 0.6);
    EXPECT_EQ(rig.bank.Voice(5).FilterEnvelope().Duration(), 3.0);
}

TEST(VoiceBank, ABankWithoutAnInstrumentIsSilentAndSafe) {
    VoiceBank bank;
    bank.NoteOn(60, 100, 0);
    for (int i = 0; i < 200; ++i)
        bank.Tick();
    std::array<double, 64> left{}, right{}, sub{};
    bank.Render({{left.data(), right.data()}, sub.data()}, 64);
    for (const double x : left)
        EXPECT_EQ(x, 0.0);
}

TEST(VoiceBank, TwoBanksRenderTheSame) {
    const auto play = [] {
        PlainRig rig(48000.0, 100);
        rig.SetWave(0, 9);
        rig.NoteOn(17, 60);
        rig.NoteOn(230, 72, 30);
        rig.PitchBend(300, 0.8);
        rig.NoteOff(900, 60);
        rig.Play(2000);
        return rig.out.left;
    };
    EXPECT_EQ(play(), play());
}

TEST(VoiceBank, SurvivesAStormOfEventsAndParameters) {
    std::mt19937 dice(5);
    const auto below = [&dice](int count) { return static_cast<int>(dice() % static_cast<unsigned>(count)); };
    PlainRig rig(44100.0, 128);
    for (int step = 0; step < 400; ++step) {
        for (int i = 0; i < 4; ++i) {
            const int id = below(Param::BassAmount);
            const bool resonance = id < 63 && id % kOscParams == static_cast<int>(OscParam::FilterResonance);
            rig.Set(id, (resonance ? 0.5 : 1.0) * below(1001) / 1000.0);
        }
        rig.bank.NoteOn(below(128), below(128), below(128));
        if (below(2) == 0) rig.bank.NoteOff(below(128), 0);
        if (below(4) == 0) rig.bank.PitchBend(below(200) - 50, below(2001) / 1000.0 - 1.0);
        rig.out = {};
        rig.PlayBlock(below(129));
        for (const double x : rig.out.left)
            ASSERT_TRUE(std::isfinite(x)) << step;
    }
}

TEST(VoiceBank, ValuesBelowTheirRangeHangNoVoice) {
    PlainRig rig(44100.0, 100);
    for (int i = 0; i < kOscillators; ++i) {
        rig.Set(i, OscParam::OnOff, 1.0);
        rig.SetWave(i, 6 + i); // two tables and noise
    }
    for (int id = 0; id < Param::BassAmount; ++id) {
        for (const double value : {-1e-9, -1.0, -1000.0, -1e9, -1e300}) {
            const double before = rig.values[id];
            rig.Set(id, value);
            rig.bank.NoteOn(60, 127, 99);
            rig.bank.PitchBend(99, 1.0);
            rig.PlayBlock(100);
            rig.PlayBlock(100);
            EXPECT_EQ(rig.bank.ActiveVoices(), 1) << id << " " << value;
            rig.Set(id, before);
            rig.bank.NoteOff(60, 0);
            rig.PlayBlock(100);
            EXPECT_EQ(rig.bank.ActiveVoices(), 0) << id << " " << value;
        }
    }
}

} // namespace
} // namespace Grimworks::Testing
