#include "voice/Note.h"

#include "core/Limits.h"
#include "core/Maths.h"
#include "tests/voice/VoiceRig.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Grimworks::Testing {
namespace {

constexpr double kFade[] = {0.0,   0.125, 0.241666666666667, 0.35,  0.45,  0.541666666666667,
                            0.625, 0.7,   0.766666666666667, 0.825, 0.875, 0.916666666666667,
                            0.95,  0.975, 0.991666666666667, 1.0};

/// One voice outside of a bank, with a plain sine, for what the bank keeps to itself.
class SingleNote {
public:
    PlainRig rig; // lends its program
    double bend = 1.0;
    Note note;
    std::vector<double> left, right, sub, volume, filter;

    SingleNote() {
        note.SetContext(Context());
        for (int i = 0; i < kOscillators; ++i)
            note.SetWaveform(i, 0.0);
        for (EnvelopeGenerator* envelope : {&note.VolumeEnvelope(), &note.FilterEnvelope()})
            envelope->SetSustain(1.0);
    }

    [[nodiscard]] VoiceContext Context() {
        VoiceContext context = rig.Context();
        context.pitchBendFactor = &bend;
        return context;
    }

    void Start(int key, int velocity = 127, int offset = 0) {
        note.SetNote(key);
        note.Start(velocity, offset);
    }

    void Tick(int count) {
        for (int i = 0; i < count; ++i)
            note.Tick();
    }

    void Render(int frames) {
        for (std::vector<double>* channel : {&left, &right, &sub, &volume, &filter})
            channel->assign(static_cast<std::size_t>(std::max(frames, 1)), 0.0);
        note.Render({{left.data(), right.data()}, sub.data(), volume.data(), filter.data()}, frames);
    }

    void Block(int frames) {
        Tick(frames);
        Render(frames);
    }
};

double Peak(std::span<const double> signal) {
    double peak = 0.0;
    for (const double x : signal)
        peak = std::max(peak, std::fabs(x));
    return peak;
}

std::span<const double> Part(const std::vector<double>& signal, int from, int count) {
    return std::span<const double>(signal).subspan(static_cast<std::size_t>(from),
                                                   static_cast<std::size_t>(count));
}

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

TEST(Note, AWaveThatStartsInMidCycleFadesInOverSixteenSamplesOfItsBlock) {
    const std::vector<double> ratio = FadeOf(0);
    for (std::size_t i = 1; i < 16; ++i)
        EXPECT_NEAR(ratio[i], kFade[i], 1e-12) << i;
    for (std::size_t i = 16; i < 64; ++i)
        EXPECT_NEAR(ratio[i], 1.0, 1e-12) << i;
}

TEST(Note, TheFadeRunsFromTheBlockStartNotFromTheOffset) {
    const std::vector<double> early = FadeOf(5);
    EXPECT_NEAR(early[8], kFade[8], 1e-12);
    const std::vector<double> late = FadeOf(20);
    for (std::size_t i = 20; i < 64; ++i)
        EXPECT_NEAR(late[i], 1.0, 1e-12) << i;
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
    for (int i = 640; i < 1280; ++i)
        ASSERT_EQ(rig.out.sub[static_cast<std::size_t>(i)], rig.out.sub[static_cast<std::size_t>(i - 64)])
            << i;
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
    for (int i = 128; i < 384; ++i)
        ASSERT_EQ(rig.out.left[static_cast<std::size_t>(i)], rig.out.left[static_cast<std::size_t>(i - 64)])
            << i;
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
    // The buffer still holds what the filter made of itself, scaled by the volume.
    const std::vector<double> before = voice.note.Oscillator(0).buffer;
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

TEST(Note, AFilterEnvelopeWithoutVelocityKeepsTheCutoffAtZero) {
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

TEST(Note, VelocityActsSquared) {
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
    SingleNote voice;
    voice.Start(60, 127, 5000);
    voice.Block(200);
    EXPECT_TRUE(std::isfinite(Peak(voice.left)));
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

TEST(Note, SmoothersCarryOverFromNoteToNote) {
    PlainRig rig;
    rig.Set(Param::BassLayerAmount, 1.0);
    rig.NoteOn(0, 60);
    rig.NoteOff(2000, 60);
    rig.NoteOn(2560, 60);
    rig.Play(5120);
    // A voice that never played fades its oscillators in; the next note on it finds the volume in place.
    EXPECT_LT(std::fabs(rig.out.left[20]), 0.6 * std::fabs(rig.out.left[2560 + 20]));
}

TEST(Note, TheFirstVolumeStepsFollowTheSmoother) {
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
    for (int n = 1; n < 640; ++n) {
        const double expected =
            settled.out.left[static_cast<std::size_t>(6464 + n)] * (1.0 - std::pow(0.9777, n + 1));
        // Balance of the filters also settles in the first note; it is all on the left filter from the start.
        ASSERT_NEAR(rig.out.left[static_cast<std::size_t>(n)], expected, 1e-9) << n;
    }
}

TEST(Note, PanIsLinearWithUnityAtTheCentre) {
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

TEST(Note, AnLfoMayPanBeyondTheSideAndTurnTheGainNegative) {
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

TEST(Note, SubToFmWithoutFmSoundsTheSame) {
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

TEST(Note, SubToFmTakesFmAndArpeggioAlong) {
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

TEST(Note, TheFirstSubSampleIsOneStepIn) {
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

TEST(Note, TheBlockSizeMakesNoDifference) {
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
TEST(Note, LfoToTuneStepsOnceABlock) {
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
TEST(Note, AReleaseBeginsAtTheStartOfItsBlock) {
    for (const int block : {64, 256}) {
        PlainRig rig(44100.0, block);
        rig.Set(Param::EnvRelease, 0.3);
        rig.NoteOn(0, 60);
        rig.NoteOff(600, 60);
        rig.Play(2048);
        const auto start = static_cast<std::size_t>(600 / block * block);
        EXPECT_EQ(rig.out.volumeEnvelope[start], 1.0) << block;
        EXPECT_LT(rig.out.volumeEnvelope[start + 1], 1.0) << block;
    }
}

} // namespace
} // namespace Grimworks::Testing
