#include "voice/Note.h"

#include "core/Limits.h"
#include "core/Maths.h"
#include "tests/voice/SingleNote.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Grimworks::Testing {
namespace {

TEST(Note, IsFreeUntilItStarts) {
    SingleNote voice;
    EXPECT_FALSE(voice.note.IsActive());
    EXPECT_EQ(voice.note.NoteNumber(), -1);
    EXPECT_EQ(voice.note.UnisonVoices(), 1);
    EXPECT_EQ(voice.note.BlockSize(), kDefaultBlockSize);
    voice.Start(60);
    EXPECT_TRUE(voice.note.IsActive());
    EXPECT_EQ(voice.note.NoteNumber(), 60);
}

TEST(Note, StaysSilentWithoutAnythingToRead) {
    SingleNote voice;
    for (int missing = 0; missing < 7; ++missing) {
        VoiceContext context = voice.Context();
        if (missing == 0) context.values = nullptr;
        if (missing == 1) context.pitchBendFactor = nullptr;
        if (missing == 2) context.waves = nullptr;
        if (missing == 3) context.pitchEnvelope = nullptr;
        if (missing == 4) context.clicks = nullptr;
        if (missing == 5) context.random = nullptr;
        if (missing == 6) context.tempo = nullptr;
        Note note;
        note.SetContext(context);
        note.SetWaveform(0, 0.0);
        note.SetNote(60);
        note.Start(127, 0);
        note.Tick();
        EXPECT_FALSE(note.HasNoise());
        double left = 0.0, right = 0.0, sub = 0.0;
        note.Render({{&left, &right}, &sub}, 1);
        EXPECT_EQ(left, 0.0);
        EXPECT_EQ(note.VolumeEnvelope().Output(), 0.0);
    }
}

TEST(Note, ABypassedVoiceMakesNoSourceSamples) {
    SingleNote voice;
    voice.note.SetBypass(true);
    voice.Start(60);
    voice.Block(256);
    EXPECT_EQ(Peak(voice.left), 0.0);
}

TEST(Note, SetNoteOnAnActiveVoiceKeepsThePitch) {
    SingleNote voice;
    voice.Start(60);
    const double frequency = voice.note.Frequency();
    voice.note.SetNote(72);
    EXPECT_EQ(voice.note.NoteNumber(), 60);
    EXPECT_EQ(voice.note.Frequency(), frequency);
}

TEST(Note, FirstSampleOfANoteIsSilent) {
    PlainRig rig;
    rig.Set(0, OscParam::Phase, 0.75); // the wave itself starts at its top
    rig.Set(Param::BassLayerAmount, 1.0);
    rig.Set(Param::BassLayerClick, 1.0);
    rig.NoteOn(0, 60);
    rig.Play(64);
    EXPECT_EQ(rig.out.left[0], 0.0);
    EXPECT_EQ(rig.out.right[0], 0.0);
    EXPECT_EQ(rig.out.sub[0], 0.0);
    EXPECT_NE(rig.out.sub[1], 0.0);
}

TEST(Note, SoundBeginsAtItsOffset) {
    PlainRig rig(44100.0, 256);
    rig.Set(0, OscParam::Phase, 0.75);
    rig.Set(Param::BassLayerAmount, 1.0);
    rig.NoteOn(100, 60);
    rig.Play(256);
    EXPECT_EQ(Peak(Part(rig.out.left, 0, 100)), 0.0);
    EXPECT_EQ(Peak(Part(rig.out.sub, 0, 100)), 0.0);
    EXPECT_NE(rig.out.left[100], 0.0);
    EXPECT_NE(rig.out.sub[100], 0.0);
}

TEST(Note, EnvelopesRunFromTheBlockStartWhateverTheOffset) {
    PlainRig rig(44100.0, 256);
    rig.NoteOn(100, 60);
    rig.Play(256);
    // Attack 0: level 0 at index 0, full from index 1, long before the sound.
    EXPECT_EQ(rig.out.volumeEnvelope[0], 0.0);
    EXPECT_EQ(rig.out.volumeEnvelope[1], 1.0);
}

TEST(Note, ANegativeOffsetCountsAsZero) {
    SingleNote early;
    SingleNote onTime;
    early.Start(60, 127, -50);
    onTime.Start(60, 127, 0);
    for (SingleNote* voice : {&early, &onTime})
        voice->Block(128);
    EXPECT_EQ(early.left, onTime.left);
}

TEST(Note, TheOffsetEndsWithItsBlock) {
    SingleNote voice;
    voice.rig.Set(0, OscParam::Volume, 0.0); // the sub layer alone
    voice.rig.Set(Param::BassLayerAmount, 1.0);
    voice.Start(57, 127, 30);
    voice.Block(64);
    voice.Block(64);
    const double increment = 220.0 / 44100.0;
    for (int i = 0; i < 64; ++i) {
        const double expected = std::sin(2.0 * kPi * increment * (1 + 64 + i));
        ASSERT_NEAR(voice.sub[static_cast<std::size_t>(i)], expected, 1e-9) << i;
    }
}

TEST(Note, StartPhaseIsZeroAtTheCentreAndHalfAtBothEnds) {
    for (const auto& [knob, phase] :
         {std::pair{0.5, 0.0}, {0.0, 0.5}, {1.0, 0.5}, {0.75, 0.25}, {0.25, 0.75}}) {
        SingleNote voice;
        voice.rig.values[Osc(0, OscParam::Phase)] = knob;
        voice.note.SetNote(60);
        for (std::size_t u = 0; u < kUnisonGenerators; ++u) {
            EXPECT_DOUBLE_EQ(voice.note.Oscillator(0).blep[u].phase, phase) << knob;
            EXPECT_DOUBLE_EQ(voice.note.Oscillator(0).wave[u].phase, phase) << knob;
        }
    }
}

TEST(Note, StartPhaseNeverReachesAWholeCycle) {
    SingleNote voice;
    voice.rig.values[Osc(0, OscParam::Phase)] = std::nextafter(0.5, 0.0);
    voice.note.SetNote(60);
    EXPECT_EQ(voice.note.Oscillator(0).wave[0].phase, 0.0);
}

TEST(Note, ABlockOfNoFramesChangesNothing) {
    SingleNote voice;
    SingleNote other;
    for (SingleNote* each : {&voice, &other}) {
        each->rig.Set(0, OscParam::Phase, 0.2);
        each->Start(60, 100, 0);
        each->Block(20);
    }
    voice.Render(0);
    for (SingleNote* each : {&voice, &other})
        each->Block(64);
    EXPECT_EQ(voice.left, other.left);
    EXPECT_EQ(voice.volume, other.volume);
}

TEST(Note, ASubThatIsTurnedOffRepeatsItsLastBlock) {
    PlainRig rig(44100.0, 64);
    rig.Set(Param::BassLayerAmount, 0.7);
    rig.NoteOn(0, 60);
    rig.Play(640);
    rig.Set(Param::BassLayerAmount, 0.0);
    rig.Play(640);
    for (std::size_t i = 640; i < 1280; ++i) {
        ASSERT_EQ(rig.out.sub[i], rig.out.sub[i - 64]) << i;
    }
    EXPECT_GT(Peak(Part(rig.out.sub, 640, 640)), 0.3);
}

TEST(Note, AClickThatIsTurnedOffRepeatsItsLastBlock) {
    PlainRig rig(44100.0, 64);
    rig.Set(0, OscParam::OnOff, 0.0);
    rig.Set(Param::BassLayerClick, 1.0 / 9.0);
    rig.NoteOn(0, 60);
    rig.Play(128);
    rig.Set(Param::BassLayerClick, 0.0);
    rig.Play(256);
    for (std::size_t i = 128; i < 384; ++i) {
        ASSERT_EQ(rig.out.left[i], rig.out.left[i - 64]) << i;
    }
    EXPECT_GT(Peak(Part(rig.out.left, 128, 64)), 1e-3);
}

TEST(Note, TheClickReadsItsSampleAtTheNoteClockAtAnyRate) {
    for (const double rate : {44100.0, 96000.0}) {
        PlainRig rig(rate);
        rig.Set(0, OscParam::OnOff, 0.0);
        rig.Set(Param::BassLayerClick, 0.3);
        rig.NoteOn(0, 60);
        rig.Play(3000);
        const double x = 9.0 * 0.3; // between the second and the third click
        for (int i = 1; i < 3000; ++i) {
            const double position = i / rate * 44100.0;
            const auto k = static_cast<std::size_t>(position);
            const double f = position - static_cast<double>(k);
            const auto read = [k, f](std::span<const double> click) {
                if (k >= click.size()) return 0.0;
                return (1.0 - f) * click[k] + f * click[std::min(k + 1, click.size() - 1)];
            };
            const double expected =
                read(StoredClick(1)) * (1.0 - (x - 2.0)) + read(StoredClick(2)) * (x - 2.0);
            // The place in the click is worked out from seconds, which costs a few bits.
            ASSERT_NEAR(rig.out.left[static_cast<std::size_t>(i)], expected, 1e-7) << i;
            ASSERT_EQ(rig.out.left[static_cast<std::size_t>(i)], rig.out.right[static_cast<std::size_t>(i)]);
        }
    }
}

TEST(Note, AnOscillatorAtVolumeZeroKeepsFilteringStaleSamples) {
    SingleNote voice;
    voice.Start(60);
    voice.Block(512);
    voice.rig.Set(0, OscParam::Volume, 0.0);
    for (int i = 0; i < 20; ++i)
        voice.Block(512); // the volume glides to nothing
    EXPECT_LT(Peak(voice.left), 1e-12);
    // No new samples come, and each block filters and scales what the last one left of the old ones.
    const std::vector<double> before = voice.note.Oscillator(0).buffer;
    EXPECT_LT(Peak(before), 1e-12);
    voice.Tick(512);
    EXPECT_EQ(voice.note.Oscillator(0).buffer, before);
}

TEST(Note, AnOscillatorThatIsOffLeavesItsLfoStanding) {
    PlainRig rig;
    rig.Set(0, OscParam::LfoRate, 0.5);
    rig.Set(0, OscParam::LfoToTune, 1.0);
    rig.NoteOn(0, 69);
    rig.Play(640);
    const double standing = rig.bank.Voice(0).Oscillator(0).lfo.Output();
    rig.Set(0, OscParam::OnOff, 0.0);
    rig.Play(640);
    EXPECT_EQ(rig.bank.Voice(0).Oscillator(0).lfo.Output(), standing);
    EXPECT_EQ(rig.out.lfo[1000][0], 0.0);
    EXPECT_EQ(Peak(Part(rig.out.left, 640, 640)), 0.0);
    // The pitch still feels where it stands.
    const double increment = 440.0 / 44100.0 * (1.0 + kSemitoneStep * standing);
    EXPECT_NEAR(rig.bank.Voice(0).Oscillator(0).blep[0].phaseInc, increment, 1e-15);
}

TEST(Note, AnLfoThatIsStoppedInANoteLeavesThePitchWhereItStands) {
    PlainRig rig;
    rig.Set(0, OscParam::LfoRate, 0.5);
    rig.Set(0, OscParam::LfoToTune, 1.0);
    rig.NoteOn(0, 69);
    rig.Play(640);
    rig.Set(0, OscParam::LfoRate, 0.0);
    rig.Play(640);
    EXPECT_EQ(rig.out.lfo[1000][0], 0.0); // nothing for the second pass
    const double last = std::sin(2.0 * kPi * 10.0 / 44100.0 * 639.0);
    const double increment = 440.0 / 44100.0 * (1.0 + kSemitoneStep * last);
    EXPECT_NEAR(rig.bank.Voice(0).Oscillator(0).blep[0].phaseInc, increment, 1e-14);
}

TEST(Note, AnLfoAtRateZeroGivesNothing) {
    PlainRig rig;
    rig.Set(0, OscParam::LfoRate, 0.0);
    for (const OscParam amount :
         {OscParam::LfoToVolume, OscParam::LfoToTune, OscParam::LfoToFilter, OscParam::LfoToPan})
        rig.Set(0, amount, 1.0);
    PlainRig plain;
    for (VoiceRig* each : {static_cast<VoiceRig*>(&rig), static_cast<VoiceRig*>(&plain)}) {
        each->NoteOn(0, 60);
        each->Play(1000);
    }
    EXPECT_EQ(rig.out.left, plain.out.left);
    for (const ModulationRecord& record : rig.out.lfo)
        ASSERT_EQ(record[0], 0.0);
}

TEST(Note, WithOneUnisonVoiceTheSecondGeneratorIsTunedButNotRead) {
    SingleNote voice;
    voice.note.SetUnisonDetune(0.5);
    voice.Start(69);
    voice.Block(64);
    const VoiceOscillator& oscillator = voice.note.Oscillator(0);
    const double ratio = 1.0 + kSemitoneStep * 0.5;
    EXPECT_NEAR(oscillator.blep[1].phaseInc, oscillator.blep[0].phaseInc / ratio, 1e-17);
    EXPECT_EQ(oscillator.blep[1].phase, 0.0);
    EXPECT_GT(oscillator.blep[0].phase, 0.0);
}

TEST(Note, ASmallerBlockSizeChangesNothing) {
    SingleNote voice;
    voice.note.SetBlockSize(1500);
    voice.Start(60);
    voice.Tick(100);
    voice.note.SetBlockSize(64);
    EXPECT_EQ(voice.note.BlockSize(), 1500);
    EXPECT_NE(voice.note.Oscillator(0).buffer[50], 0.0);
    // Ticks beyond the small size go on in the large buffer instead of wrapping round.
    voice.Tick(100);
    EXPECT_NE(voice.note.Oscillator(0).buffer[150], 0.0);
}

TEST(Note, ALargerBlockSizeClearsTheBuffers) {
    SingleNote voice;
    voice.Start(60);
    voice.Tick(100);
    voice.note.SetBlockSize(kDefaultBlockSize + 1);
    EXPECT_EQ(Peak(voice.note.Oscillator(0).buffer), 0.0);
}

TEST(Note, WritingWrapsAtTheLargestBlockSizeEverGiven) {
    SingleNote voice;
    voice.Start(60);
    voice.Tick(1);
    const double first = voice.note.Oscillator(0).buffer[0];
    voice.Tick(kDefaultBlockSize - 1);
    voice.Tick(40); // one place for each sample again, from the start
    EXPECT_NE(voice.note.Oscillator(0).buffer[0], first);
    std::vector<double> before = voice.note.Oscillator(0).buffer;
    SingleNote stretched;
    stretched.Start(60);
    const std::vector<double> bend(kDefaultBlockSize + 40, 1.0);
    stretched.note.Run(bend);
    EXPECT_EQ(stretched.note.Oscillator(0).buffer, before);
}

TEST(Note, AnOffsetBeyondTheBufferWritesInside) {
    for (const int offset : {kDefaultBlockSize, 5000, std::numeric_limits<int>::max()}) {
        SingleNote voice;
        voice.rig.Set(0, OscParam::Phase, 0.75);
        voice.Start(60, 127, offset);
        voice.Tick(200);
        const std::vector<double>& buffer = voice.note.Oscillator(0).buffer;
        EXPECT_NE(buffer[0], 0.0) << offset;
        EXPECT_EQ(Peak(Part(buffer, 1, kDefaultBlockSize - 1)), 0.0) << offset;
    }
}

TEST(Note, MoreFramesThanTheBlockSizeAreNotRendered) {
    SingleNote voice;
    voice.Start(60);
    voice.Tick(kDefaultBlockSize);
    voice.Render(kDefaultBlockSize + 100);
    EXPECT_EQ(Peak(Part(voice.left, kDefaultBlockSize, 100)), 0.0);
}

TEST(Note, SustainHoldsUntilTheReleaseAndThenEnds) {
    PlainRig rig;
    rig.NoteOn(0, 60);
    rig.Play(20000);
    EXPECT_EQ(rig.bank.ActiveVoices(), 1);
    rig.NoteOff(20000, 60);
    rig.Play(128);
    EXPECT_EQ(rig.bank.ActiveVoices(), 0);
}

TEST(Note, AVoiceEndsWithTheLaterOfItsEnvelopes) {
    PlainRig rig;
    rig.Set(Param::FilterRelease, 1.0);
    rig.NoteOn(0, 60);
    rig.Play(640);
    rig.NoteOff(640, 60);
    rig.Play(640);
    EXPECT_EQ(rig.bank.ActiveVoices(), 1);
    EXPECT_EQ(Peak(Part(rig.out.left, 700, 500)), 0.0);
    rig.Play(100000);
    EXPECT_EQ(rig.bank.ActiveVoices(), 0);
}

TEST(Note, ANewSampleRateKeepsTheFrequenciesOfSoundingGenerators) {
    SingleNote voice;
    voice.Start(69);
    voice.Block(64);
    voice.note.SetSampleRate(88200.0);
    EXPECT_DOUBLE_EQ(voice.note.Oscillator(0).blep[0].phaseInc, 440.0 / 88200.0);
    EXPECT_DOUBLE_EQ(voice.note.Oscillator(0).wave[0].phaseInc, 440.0 / 88200.0);
    voice.note.SetSampleRate(0.0);
    voice.note.SetSampleRate(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(voice.note.SampleRate(), 88200.0);
}

TEST(Note, WhiteAndPinkNoiseFollowTheGenerator) {
    SingleNote voice;
    voice.rig.random.Seed(99);
    voice.rig.Set(1, OscParam::OnOff, 1.0);
    voice.note.SetWaveform(0, 8.0 / 40.0);
    voice.note.SetWaveform(1, 9.0 / 40.0);
    voice.Start(60);
    EXPECT_TRUE(voice.note.HasNoise());
    voice.Tick(500);
    RandomGenerator random(99);
    double s0 = 0.0, s1 = 0.0, s2 = 0.0;
    for (std::size_t i = 0; i < 500; ++i) {
        ASSERT_EQ(voice.note.Oscillator(0).buffer[i], 2.0 * random.Next() / 32767 - 1.0) << i;
        const double r0 = random.Next(), r1 = random.Next(), r2 = random.Next();
        s0 = (s0 - r0) * 0.319 + r0;
        s1 = (s1 - r1) * 0.7756 + r1;
        s2 = (s2 - r2) * 0.9613 + r2;
        const double pink =
            (s0 * 0.02109238 + s1 * 0.07113478 + s2 * 0.68873558) * 6.103701895199438e-5 - 0.78096274;
        ASSERT_EQ(voice.note.Oscillator(1).buffer[i], pink) << i;
    }
}

TEST(Note, AnUnknownWaveformIsSilent) {
    SingleNote voice;
    voice.note.SetWaveform(0, 5.0);
    voice.note.SetWaveform(3, 0.5);
    voice.note.SetWaveform(-1, 0.5);
    voice.Start(60);
    voice.Block(256);
    EXPECT_EQ(Peak(voice.left), 0.0);
}

TEST(Note, EveryWaveIsFiniteOverTheWholeKeyboard) {
    for (int wave = 0; wave < kWaveforms; ++wave) {
        for (const int key : {0, 24, 60, 96, 127}) {
            PlainRig rig;
            rig.Set(Param::NoteTransposeMode, 0.0);
            rig.SetWave(0, wave);
            rig.NoteOn(0, key);
            rig.Play(1024);
            ASSERT_TRUE(std::isfinite(Peak(rig.out.left))) << wave << ", " << key;
            if (wave != 8 && wave != 9) {
                ASSERT_LT(Peak(rig.out.left), 4.0) << wave << ", " << key;
            }
        }
    }
}

} // namespace
} // namespace Grimworks::Testing
