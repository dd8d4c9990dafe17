#include "core/TempoSync.h"
#include "tests/plugin/Measure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

using namespace Grimworks;

namespace {

constexpr double kOneInTenThousand = 1e-4;
constexpr int kKey = 60;

/// A held level, with the voice's smoothers at rest; gives the level.
double HeldLevel(Instrument& instrument) {
    HoldLevel(instrument);
    instrument.NoteOn(kKey);
    const double level = instrument.Render(kSettleFrames).left.back();
    Silence(instrument, kKey);
    return level;
}

/// Frequency of LFO 1 as it swings the held level: by whole cycles if it is fast, by how long the sine takes
/// to reach a half if it is slow.
double MeasuredLfo(Instrument& instrument, double rate, double level, double expected) {
    const bool isSlow = expected < 1.0;
    instrument.NoteOn(kKey);
    const Instrument::Audio audio =
        instrument.Render(static_cast<int>((isSlow ? 0.1 : 3.2) / expected * rate));
    Silence(instrument, kKey);
    const std::vector<double> places = UpwardCrossings(audio.left, 1.5 * level, 0, audio.left.size());
    if (isSlow) return places.empty() ? 0.0 : rate / 12.0 / places.front();
    if (places.size() < 2) return 0.0;
    return rate * static_cast<double>(places.size() - 1) / (places.back() - places.front());
}

/// The swing of LFO 1 in units of the held level.
double Swing(const Instrument::Audio& audio, std::size_t n, double level) {
    return audio.left[n] / level - 1.0;
}

} // namespace

TEST(ThudForgeLfo, RunsAtTwentyHertzAtTheTopOfItsKnob) {
    for (const double rate : {44100.0, 48000.0, 96000.0}) {
        Instrument instrument(rate);
        const double level = HeldLevel(instrument);
        instrument.Set(Osc(0, OscParam::LfoToVolume), 1.0);
        for (const double knob : {0.125, 0.5, 1.0}) {
            instrument.Set(Osc(0, OscParam::LfoRate), knob);
            EXPECT_NEAR(MeasuredLfo(instrument, rate, level, 20.0 * knob) / (20.0 * knob), 1.0,
                        kOneInTenThousand)
                << rate << " " << knob;
        }
    }
}

TEST(ThudForgeLfo, EveryDivisionOfTheTempoIsHeard) {
    const std::array<double, 9> factors{0.0625, 0.125, 0.25, 0.5, 1.0, 2.0, 4.0, 8.0, 16.0};
    Instrument instrument;
    const double level = HeldLevel(instrument);
    instrument.Set(Osc(0, OscParam::LfoToVolume), 1.0);
    for (const double tempo : {60.0, 120.0, 174.0}) {
        instrument.SetTempo(tempo);
        for (std::size_t i = 0; i < factors.size(); ++i) {
            instrument.Set(Osc(0, OscParam::LfoTempoSync), static_cast<double>(i + 1) / 9.0);
            const double expected = std::min(20.0, tempo / 60.0 * factors[i]);
            EXPECT_NEAR(MeasuredLfo(instrument, 44100.0, level, expected) / expected, 1.0, kOneInTenThousand)
                << tempo << " " << factors[i];
        }
    }
}

TEST(ThudForgeLfo, FollowsTheTempoInTheMiddleOfANote) {
    Instrument instrument;
    const double level = HeldLevel(instrument);
    instrument.Set(Osc(0, OscParam::LfoToVolume), 1.0);
    instrument.SetTempo(120.0);
    instrument.Set(Osc(0, OscParam::LfoTempoSync), 7.0 / 9.0);
    instrument.NoteOn(kKey);
    const auto measured = [&](const Instrument::Audio& audio) {
        const std::vector<double> places = UpwardCrossings(audio.left, level, 0, audio.left.size());
        return 44100.0 * static_cast<double>(places.size() - 1) / (places.back() - places.front());
    };
    EXPECT_NEAR(measured(instrument.Render(44100)), 8.0, 8.0 * kOneInTenThousand);
    instrument.SetTempo(150.0);
    instrument.Render(64);
    EXPECT_NEAR(measured(instrument.Render(44100)), 10.0, 10.0 * kOneInTenThousand);
    instrument.SetTempo(0.0);
    instrument.Render(64);
    // Without a tempo the knob falls to 0, and the level stands.
    EXPECT_EQ(instrument.Get(Osc(0, OscParam::LfoRate)), 0.0);
    instrument.Render(64);
    const Instrument::Audio still = instrument.Render(4096);
    for (const double x : still.left)
        ASSERT_NEAR(x, level, 1e-12);
}

TEST(ThudForgeLfo, HasFiveShapes) {
    Instrument instrument;
    const double level = HeldLevel(instrument);
    instrument.Set(Osc(0, OscParam::LfoToVolume), 0.5);
    instrument.Set(Osc(0, OscParam::LfoRate), 0.5);
    for (int mode = 0; mode < 5; ++mode) {
        instrument.Set(Osc(0, OscParam::LfoMode), mode / 4.0);
        instrument.NoteOn(kKey);
        const Instrument::Audio audio = instrument.Render(8192);
        Silence(instrument, kKey);
        for (std::size_t n = 32; n < audio.left.size(); ++n) {
            const double sine = std::sin(2.0 * std::numbers::pi * 10.0 * static_cast<double>(n) / 44100.0);
            const std::array<double, 5> shapes{sine, std::max(sine, 0.0), std::min(sine, 0.0),
                                               std::fabs(sine), -sine};
            // The oscillator's open filter delays the swing by a fraction of a sample.
            ASSERT_NEAR(Swing(audio, n, level), 0.5 * shapes[static_cast<std::size_t>(mode)], 1e-3)
                << mode << " " << n;
        }
    }
}

TEST(ThudForgeLfo, StandsFromTheFirstSampleAtRateZero) {
    Instrument::Audio renders[2];
    for (int amount = 0; amount < 2; ++amount) {
        Instrument instrument;
        HeldLevel(instrument);
        for (const OscParam target :
             {OscParam::LfoToVolume, OscParam::LfoToTune, OscParam::LfoToFilter, OscParam::LfoToPan})
            instrument.Set(Osc(0, target), amount);
        instrument.Set(Osc(0, OscParam::LfoRate), 0.0);
        instrument.NoteOn(kKey);
        renders[amount] = instrument.Render(4096);
    }
    EXPECT_GT(renders[0].Peak(), 0.5);
    EXPECT_EQ(LargestDifference(renders[0], renders[1]), 0.0);
}

TEST(ThudForgeLfo, TurnedOverItTakesThePitchDownFirst) {
    for (const bool inverted : {false, true}) {
        Instrument instrument;
        DryProgram(instrument);
        instrument.Set(Osc(0, OscParam::LfoToTune), 1.0);
        instrument.Set(Osc(0, OscParam::LfoRate), 0.05); // one hertz: the first turning point is at 0.25 s
        instrument.Set(Osc(0, OscParam::LfoMode), inverted ? 1.0 : 0.0);
        instrument.NoteOn(69);
        const Instrument::Audio audio = instrument.Render(44100);
        const double semitone = 1.05946309435929531;
        const double expected = inverted ? 880.0 / semitone : 880.0 * semitone;
        EXPECT_NEAR(FrequencyOf(audio.left, 44100.0, 10600, 11400), expected, 0.5);
        const double later = inverted ? 880.0 * semitone : 880.0 / semitone;
        EXPECT_NEAR(FrequencyOf(audio.left, 44100.0, 32650, 33450), later, 0.5);
    }
}

TEST(ThudForgeLfo, MeansNothingWhileItsOscillatorIsOff) {
    Instrument::Audio renders[2];
    for (int amount = 0; amount < 2; ++amount) {
        Instrument instrument;
        DryProgram(instrument);
        for (const OscParam target :
             {OscParam::LfoToVolume, OscParam::LfoToTune, OscParam::LfoToFilter, OscParam::LfoToPan})
            instrument.Set(Osc(1, target), amount);
        instrument.Set(Osc(1, OscParam::LfoRate), 0.5);
        instrument.NoteOn(45);
        renders[amount] = instrument.Render(8192);
    }
    EXPECT_GT(renders[0].Peak(), 0.5);
    EXPECT_EQ(LargestDifference(renders[0], renders[1]), 0.0);
}

TEST(ThudForgeLfo, AFullPanSwingTurnsTheOtherSideOver) {
    Instrument instrument;
    const double level = HeldLevel(instrument);
    instrument.Set(Osc(0, OscParam::LfoToPan), 1.0);
    instrument.Set(Osc(0, OscParam::LfoRate), 0.05);
    for (const double side : {0.0, 1.0}) {
        instrument.Set(Osc(0, OscParam::Pan), side);
        instrument.NoteOn(kKey);
        const Instrument::Audio audio = instrument.Render(44100);
        Silence(instrument, kKey);
        const std::vector<double>& quiet = side == 0.0 ? audio.right : audio.left;
        const std::vector<double>& loud = side == 0.0 ? audio.left : audio.right;
        // The swing goes half a turn of the knob beyond its end: a gain of -1.
        EXPECT_NEAR(*std::min_element(quiet.begin() + 4096, quiet.end()) / level, -1.0, 1e-3) << side;
        EXPECT_NEAR(*std::max_element(loud.begin() + 4096, loud.end()) / level, 1.0, 1e-9) << side;
        EXPECT_NEAR(*std::max_element(quiet.begin() + 4096, quiet.end()) / level, 1.0, 1e-3) << side;
    }
}

TEST(ThudForgeLfo, BelongsToItsNoteAndStartsWithIt) {
    Instrument instrument;
    const double level = HeldLevel(instrument);
    instrument.Set(Osc(0, OscParam::LfoToVolume), 1.0);
    instrument.Set(Osc(0, OscParam::LfoRate), 0.25);
    instrument.NoteOn(kKey);
    const Instrument::Audio first = instrument.Render(4096);
    Silence(instrument, kKey);
    instrument.Render(3333);
    instrument.NoteOn(kKey);
    EXPECT_LT(LargestDifference(first, instrument.Render(4096)), 1e-12);
    EXPECT_GT(first.Peak(), 1.5 * level);
}
