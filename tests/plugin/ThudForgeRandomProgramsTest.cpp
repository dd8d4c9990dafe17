#include "tests/plugin/Measure.h"
#include "tests/support/SlowBuild.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

using namespace Grimworks;

namespace {

constexpr double kCeiling = 3.1622777;

constexpr int kSets = kSlowBuild ? 500 : 10000;

/// Numbers that are the same in every run and on every platform.
class Dice {
public:
    explicit Dice(unsigned seed) : random(seed) {}

    /// 0..1, both ends included and met more often than chance would have it.
    double Value() {
        const int draw = Below(1200);
        return std::clamp((draw - 100) / 1000.0, 0.0, 1.0);
    }

    bool OneIn(int n) { return Below(n) == 0; }
    int Below(int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); }

private:
    std::mt19937 random;
};

void SetAllAtRandom(Instrument& instrument, Dice& dice) {
    for (int id = 0; id < kLiveParameters; ++id)
        instrument.Set(id, dice.Value());
}

/// What a random program needs to be loud at once.
void MakeLoud(Instrument& instrument) {
    for (const int id : {Param::EnvAttack, Param::FilterAttack, Param::BypassFX})
        instrument.Set(id, 0.0);
    for (const int id :
         {Osc(0, OscParam::OnOff), Osc(0, OscParam::Volume), static_cast<int>(Param::EnvAmount),
          static_cast<int>(Param::EnvVelocity), static_cast<int>(Param::FilterEnvAmount),
          static_cast<int>(Param::FilterEnvVelocity), static_cast<int>(Param::Volume)})
        instrument.Set(id, 1.0);
}

/// All that rings, feeds back or drives, at its end; the rest as it is.
void MakeExtreme(Instrument& instrument, Dice& dice) {
    for (int i = 0; i < kOscillators; ++i) {
        instrument.Set(Osc(i, OscParam::OnOff), 1.0);
        instrument.Set(Osc(i, OscParam::FilterResonance), 1.0);
        instrument.Set(Osc(i, OscParam::LfoToFilter), 1.0);
        instrument.Set(Osc(i, OscParam::LfoRate), 1.0);
    }
    for (const int id :
         {Param::FilterOnOff, Param::ModulationOnOff, Param::DistortionOnOff, Param::FilterResonance,
          Param::PhaserDepth, Param::PhaserFeedback, Param::TempoDelayAmount, Param::TempoDelayFeedback,
          Param::TempoDelayDump, Param::BassLayerAmount, Param::BassLayerToFilter})
        instrument.Set(id, 1.0);
    for (const int id : {Param::BassAmount, Param::MidAmount, Param::HighAmount})
        instrument.Set(id, dice.OneIn(2) ? 1.0 : 0.0);
}

void ReleaseAll(Instrument& instrument, int note) {
    for (const int id : {Param::EnvRelease, Param::FilterRelease})
        instrument.Set(id, 0.0);
    instrument.NoteOff(note);
    instrument.NoteOff(note + 7);
}

/// The blank program with a saw, which every unit of the chain then joins one after the other: filters of all
/// kinds, modulation, distortion, delay, the sub layer's own filters. What any of them kept would be heard.
Instrument::Audio PlayThroughAllUnits(Instrument& instrument) {
    instrument.SetTempo(480.0);
    OpenProgram(instrument);
    instrument.Set(Osc(0, OscParam::Waveform), 1.0 / 40.0);
    instrument.Set(Param::BassLayerAmount, 0.2);
    instrument.NoteOn(45);
    Instrument::Audio audio = instrument.Render(kSettleFrames);
    const auto hear = [&](int id, double value) {
        instrument.Set(id, value);
        for (int i = 0; i < 1024; i += 64)
            instrument.Process(audio, 64);
    };
    hear(Param::FilterType, 0.5);
    hear(Param::FilterCutoff, 0.6);
    for (int type = 0; type < 6; ++type) {
        instrument.Set(Param::FilterMode1, std::min(type, 3) / 3.0);
        hear(Param::FilterMode2, type / 5.0);
    }
    hear(Param::BassLayerToFilter, 1.0);
    instrument.Set(Param::ModulationOnOff, 1.0);
    hear(Param::PhaserDepth, 0.5);
    hear(Param::RingModulationFrequency, 0.1);
    hear(Param::RingModulationAmount, 0.5);
    hear(Param::Distortion, 0.5);
    hear(Param::DynShaper, 0.5);
    hear(Param::Saturation, 0.5);
    hear(Param::FilterInputDrive, 0.5);
    instrument.Set(Param::TempoDelayFeedback, 0.5);
    hear(Param::TempoDelayAmount, 0.5);
    for (int i = 0; i < 12288; i += 64) // two rounds of the delay
        instrument.Process(audio, 64);
    Silence(instrument, 45);
    return audio;
}

/// How long the first part of that lasts, in which nothing has a phase of its own.
constexpr std::size_t kUnmodulated = kSettleFrames + 9 * 1024;

/// Lets every filter come to rest. One that is not chosen keeps its state and goes on from there when its
/// turn comes, and from the largest number there is a low one takes seconds to fall silent.
void RingOut(Instrument& instrument) {
    OpenProgram(instrument);
    instrument.Set(Param::BassLayerToFilter, 1.0);
    instrument.Set(Param::ModulationOnOff, 1.0);
    instrument.Set(Param::PhaserDepth, 0.5);
    instrument.Set(Param::FilterCutoff, 0.5);
    instrument.Set(Param::FilterResonance, 0.5);
    for (int type = 0; type < 6; ++type) {
        instrument.Set(Param::FilterMode1, std::min(type, 3) / 3.0);
        instrument.Set(Param::FilterMode2, type / 5.0);
        instrument.Render(2 * 44100);
    }
    OpenProgram(instrument);
    instrument.Render(44100);
}

} // namespace

TEST(ThudForgeRandomPrograms, NeverLeaveTheCeiling) {
    Dice dice(1);
    Instrument instrument;
    instrument.SetTempo(150.0);
    double loudest = 0.0;
    int heard = 0;
    for (int i = 0; i < kSets; ++i) {
        SetAllAtRandom(instrument, dice);
        MakeLoud(instrument);
        const int note = 24 + dice.Below(60);
        instrument.NoteOn(note);
        instrument.NoteOn(note + 7, 127, 9);
        const Instrument::Audio audio = instrument.Render(192);
        double peak = 0.0;
        for (const std::vector<double>* channel : {&audio.left, &audio.right}) {
            for (const double x : *channel) {
                // A voice may leave the range of numbers; nothing else may leave the range of the output.
                if (!std::isnan(x)) peak = std::max(peak, std::fabs(x));
            }
        }
        ASSERT_LE(peak, kCeiling) << i;
        heard += peak > 0.1 ? 1 : 0;
        loudest = std::max(loudest, peak);
        ReleaseAll(instrument, note);
        instrument.Render(64);
    }
    EXPECT_EQ(loudest, kCeiling);
    EXPECT_GT(heard, kSets / 2);
    EXPECT_LE(instrument.Plug().PeakLeft(), kCeiling);
    EXPECT_LE(instrument.Plug().PeakRight(), kCeiling);
}

namespace {

/// What a fresh instrument makes of the tour through its units.
const Instrument::Audio& CleanTour() {
    static const Instrument::Audio audio = [] {
        Instrument fresh;
        RingOut(fresh);
        return PlayThroughAllUnits(fresh);
    }();
    return audio;
}

/// The tour has to come out clean again: at once as far as numbers go, and in full when all that rings has
/// had its time.
void ExpectCleanTour(Instrument& instrument) {
    EXPECT_TRUE(IsFinite(PlayThroughAllUnits(instrument)));
    RingOut(instrument);
    Instrument::Audio audio = PlayThroughAllUnits(instrument);
    EXPECT_TRUE(IsFinite(audio));
    EXPECT_NEAR(audio.Peak(), CleanTour().Peak(), 0.05);
    audio.left.resize(kUnmodulated);
    audio.right.resize(kUnmodulated);
    // The smoothers of a voice go on from its last note, so they get time to settle.
    EXPECT_LT(LargestDifference(audio, CleanTour(), kSettleFrames), 1e-3);
}

} // namespace

TEST(ThudForgeRandomPrograms, LeaveNothingBehindInAnyUnit) {
    ASSERT_TRUE(IsFinite(CleanTour()));
    ASSERT_GT(CleanTour().Peak(), 0.3);
    Dice dice(2);
    Instrument instrument;
    for (int round = 0; round < (kSlowBuild ? 1 : 6); ++round) {
        SCOPED_TRACE(round);
        for (int i = 0; i < 20; ++i) {
            SetAllAtRandom(instrument, dice);
            MakeLoud(instrument);
            MakeExtreme(instrument, dice);
            instrument.SetTempo(100.0 + 100.0 * dice.Below(10));
            const int note = 24 + dice.Below(60);
            instrument.NoteOn(note);
            instrument.NoteOn(note + 7);
            instrument.Render(4096);
            ReleaseAll(instrument, note);
            instrument.Render(256);
        }
        ExpectCleanTour(instrument);
    }
}

TEST(ThudForgeRandomPrograms, NothingStaysOfAVoiceThatLeavesTheRangeOfNumbers) {
    Dice dice(3);
    Instrument instrument;
    OpenProgram(instrument);
    // A high pass without damping, swept to and fro, grows by half a decade with each of its twenty sweeps a
    // second, so that the chain meets every order of magnitude.
    instrument.Set(Osc(0, OscParam::FilterTypeLeft), 0.75);
    instrument.Set(Osc(0, OscParam::FilterCutoff), 0.1);
    instrument.Set(Osc(0, OscParam::FilterResonance), 1.0);
    instrument.Set(Osc(0, OscParam::LfoToFilter), 1.0);
    instrument.Set(Osc(0, OscParam::LfoRate), 1.0);
    instrument.NoteOn(45);
    bool overflowed = false;
    for (int i = 0; i < 300; ++i) {
        for (int id = Param::BassAmount; id < kLiveParameters; ++id)
            instrument.Set(id, dice.Value());
        for (const int id :
             {Param::FilterOnOff, Param::ModulationOnOff, Param::PhaserDepth, Param::PhaserFeedback,
              Param::TempoDelayAmount, Param::TempoDelayFeedback, Param::Volume})
            instrument.Set(id, 1.0);
        instrument.Set(Param::BypassFX, 0.0);
        instrument.Set(Param::BassLayerAmount, 1.0);
        instrument.Set(Param::BassLayerToFilter, 1.0);
        instrument.SetTempo(100.0 + 100.0 * dice.Below(10));
        overflowed = !IsFinite(instrument.Render(4416));
    }
    EXPECT_TRUE(overflowed);
    ReleaseAll(instrument, 45);
    instrument.Render(64);
    ExpectCleanTour(instrument);
}
