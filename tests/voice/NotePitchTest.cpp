// Pitch of a voice, measured from its sound.

#include "core/Limits.h"
#include "tests/voice/VoiceRig.h"
#include "voice/NoteMode.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <span>

namespace Grimworks::Testing {
namespace {

/// Frequency in Hz of a tone with one rising zero per cycle, from the first to the last of these zeros.
double MeasuredFrequency(std::span<const double> tone, double sampleRate) {
    double first = -1.0;
    double last = -1.0;
    int cycles = -1;
    for (std::size_t i = 1; i < tone.size(); ++i) {
        if (!(tone[i - 1] < 0.0 && tone[i] >= 0.0)) continue;
        last = static_cast<double>(i) - tone[i] / (tone[i] - tone[i - 1]);
        if (first < 0.0) first = last;
        ++cycles;
    }
    return cycles * sampleRate / (last - first);
}

/// Amplitude of one frequency, seen through a Hann window: other lines do not count from two bins away on.
double Amplitude(std::span<const double> signal, double hz, double sampleRate) {
    const auto size = static_cast<double>(signal.size());
    std::complex<double> sum;
    for (std::size_t i = 0; i < signal.size(); ++i) {
        const auto at = static_cast<double>(i);
        const double window = 1.0 - std::cos(2.0 * kPi * at / size);
        sum += window * signal[i] * std::polar(1.0, -2.0 * kPi * hz * at / sampleRate);
    }
    return 2.0 * std::abs(sum) / size;
}

std::span<const double> From(const std::vector<double>& signal, int start) {
    return std::span<const double>(signal).subspan(static_cast<std::size_t>(start));
}

void ExpectWithin(double value, double expected, double share) {
    EXPECT_NEAR(value, expected, expected * share);
}

constexpr double kHundredthPercent = 1e-4;

class NotePitchAtRate : public testing::TestWithParam<double> {};
INSTANTIATE_TEST_SUITE_P(Rates, NotePitchAtRate, testing::Values(44100.0, 48000.0, 96000.0));

TEST_P(NotePitchAtRate, EveryNoteModePlaysItsFrequency) {
    const double rate = GetParam();
    for (int mode = 0; mode < kNoteModes; ++mode) {
        PlainRig rig(rate);
        rig.tempo.tempo = 0.01; // a held arpeggio stays on its root
        rig.Set(Param::NoteTransposeMode, mode / 9.0);
        rig.NoteOn(0, 57);
        const auto settle = static_cast<int>(rate / 10.0);
        rig.Play(settle + static_cast<int>(rate / 2.0));
        SCOPED_TRACE(mode);
        const double expected[] = {440.0, 220.0, 880.0, 43.65, 46.25, 49.0, 51.91, 65.4, 440.0, 440.0};
        ExpectWithin(MeasuredFrequency(From(rig.out.left, settle), rate), expected[mode], kHundredthPercent);
    }
}

TEST_P(NotePitchAtRate, EveryOctaveIsInTune) {
    const double rate = GetParam();
    for (const int note : {21, 33, 45, 69, 81, 93, 105}) {
        PlainRig rig(rate);
        rig.NoteOn(0, note);
        const auto settle = static_cast<int>(rate / 10.0);
        rig.Play(settle + static_cast<int>(rate / 4.0));
        const double expected = 440.0 * std::exp2((note - 69) / 12.0);
        ExpectWithin(MeasuredFrequency(From(rig.out.left, settle), rate), expected, kHundredthPercent);
    }
}

double FrequencyWith(int id, double value) {
    PlainRig rig;
    rig.Set(id, value);
    rig.NoteOn(0, 69);
    rig.Play(4410 + 22050);
    return MeasuredFrequency(From(rig.out.left, 4410), 44100.0);
}

TEST(NotePitch, PitchAndTuneKnobsMoveTheOscillator) {
    ExpectWithin(FrequencyWith(Osc(0, OscParam::Pitch), 0.0), 220.0, kHundredthPercent);
    ExpectWithin(FrequencyWith(Osc(0, OscParam::Pitch), 1.0), 880.0, kHundredthPercent);
    ExpectWithin(FrequencyWith(Osc(0, OscParam::Tune), 1.0), 440.0 * 1.05946309435929531, kHundredthPercent);
    ExpectWithin(FrequencyWith(Osc(0, OscParam::Tune), 0.0), 440.0 / 1.05946309435929531, kHundredthPercent);
}

TEST(NotePitch, PitchAndTuneActAtOnceOnSoundingNotes) {
    PlainRig rig;
    rig.NoteOn(0, 69);
    rig.Play(6400);
    rig.Set(0, OscParam::Pitch, 1.0);
    rig.Play(22050);
    ExpectWithin(MeasuredFrequency(From(rig.out.left, 7000), 44100.0), 880.0, kHundredthPercent);
}

TEST(NotePitch, GlobalTransposeMovesOscillatorsTwiceAndTheSubOnce) {
    PlainRig rig;
    rig.Set(Param::BassLayerAmount, 1.0);
    rig.Set(Param::GlobalTranspose, 1.0);
    rig.NoteOn(0, 57);
    rig.Play(4410 + 22050);
    ExpectWithin(MeasuredFrequency(From(rig.out.left, 4410), 44100.0), 880.0, kHundredthPercent);
    ExpectWithin(MeasuredFrequency(From(rig.out.sub, 4410), 44100.0), 440.0, kHundredthPercent);
    EXPECT_NEAR(rig.bank.LastFrequency(), 440.0, 1e-9);
}

TEST(NotePitch, ATransposeChangeMovesAHeldNoteAndItsModulatorAtOnce) {
    PlainRig rig;
    rig.Set(Param::FmAmount, 0.5);
    rig.NoteOn(0, 57);
    rig.Play(6400);
    rig.Set(Param::GlobalTranspose, 0.0);
    rig.Play(44100);
    // The oscillator is at 55 Hz, the modulator at 110 Hz: the spectrum has lines at odd multiples of 55
    // only.
    const auto tail = From(rig.out.left, 6400);
    EXPECT_GT(Amplitude(tail, 55.0, 44100.0), 0.5);
    EXPECT_GT(Amplitude(tail, 165.0, 44100.0), 0.01);
    EXPECT_LT(Amplitude(tail, 110.0, 44100.0), 2e-3);
    EXPECT_LT(Amplitude(tail, 220.0, 44100.0), 2e-3);
}

TEST(NotePitch, TheSecondUnisonGeneratorRunsBelowTheFirst) {
    for (const double detune : {0.25, 1.0}) {
        PlainRig one;
        PlainRig two;
        two.Set(Param::UnisonVoices, 1.0);
        two.Set(Param::UnisonDetune, detune);
        for (PlainRig* rig : {&one, &two}) {
            rig->NoteOn(0, 69);
            rig->Play(4410 + 44100);
        }
        // All behind the generators is linear here, so the second one is what the mean of both lacks.
        std::vector<double> second(two.out.left.size());
        for (std::size_t i = 0; i < second.size(); ++i)
            second[i] = 2.0 * two.out.left[i] - one.out.left[i];
        const double expected = 440.0 / (1.0 + 0.05946309435929531 * detune);
        ExpectWithin(MeasuredFrequency(From(second, 4410), 44100.0), expected, kHundredthPercent);
    }
}

TEST(NotePitch, UnisonWithoutDetuneIsOneGenerator) {
    PlainRig one;
    PlainRig two;
    two.Set(Param::UnisonVoices, 1.0);
    for (PlainRig* rig : {&one, &two}) {
        rig->Set(Param::UnisonDetune, 0.0);
        rig->SetWave(0, 1);
        rig->NoteOn(0, 50);
        rig->Play(2000);
    }
    EXPECT_EQ(one.out.left, two.out.left);
}

/// The phase of a swept tone is the sum of its increments; the sum is worked out here from the sweep's
/// formula.
TEST(NotePitch, TheSweepIsTheSumOfItsFactor) {
    const double rate = 44100.0;
    PlainRig rig(rate);
    rig.Set(Param::BassLayerAmount, 1.0);
    rig.Set(Param::PitchOnOff, 1.0);
    rig.Set(Param::PitchAmount, 0.4);
    rig.Set(Param::PitchDuration, 0.12);
    rig.Set(Param::PitchPower, 0.35);
    rig.Set(Param::PitchDown, 0.3);
    rig.NoteOn(0, 40);
    rig.Play(20000);

    const long double increment = 440.0L * std::exp2((40.0L - 69.0L) / 12.0L) / rate;
    const long double a = 0.001L;
    const long double d = 0.24L;
    long double phase = increment; // the start itself counts as one step
    for (int n = 0; n < 20000; ++n) {
        const auto expected = static_cast<double>(std::sin(phase * 2.0L * 3.14159265358979323846L));
        if (n > 1) {
            ASSERT_NEAR(rig.out.sub[static_cast<std::size_t>(n)], expected, 1e-8) << n;
        }
        const long double t = n / static_cast<long double>(rate);
        long double f = 1.0L;
        if (t < a) {
            f += 8.0L * t / a;
        } else if (t < a + d) {
            f += 8.0L * std::pow(1.0L - (t - a) / d, 7.0L);
        }
        f -= 0.3L * std::min(t / (a + d), 1.0L);
        phase += f * increment;
    }
}

/// The same against the integral of the sweep in closed form, which the sum follows to within a sample's
/// step.
TEST(NotePitch, TheSweepFollowsTheIntegralOfItsFactor) {
    const double rate = 96000.0;
    PlainRig rig(rate);
    rig.Set(Param::BassLayerAmount, 1.0);
    rig.Set(Param::PitchOnOff, 1.0);
    rig.Set(Param::PitchAmount, 0.5);
    rig.Set(Param::PitchDuration, 0.1);
    rig.Set(Param::PitchPower, 0.1);
    rig.NoteOn(0, 33);
    rig.Play(30000);
    const double base = 440.0 * std::exp2((33 - 69) / 12.0);
    const double d = 0.2;
    for (int n = 100; n < 30000; n += 7) {
        const double t = n / rate;
        const double u = std::min((t - 0.001) / d, 1.0);
        const double integral = t + 10.0 * 0.001 / 2.0 + 10.0 * d / 3.0 * (1.0 - std::pow(1.0 - u, 3.0));
        const double expected = std::sin(2.0 * kPi * base * integral);
        ASSERT_NEAR(rig.out.sub[static_cast<std::size_t>(n)], expected, 2.0 * kPi * base * 12.0 / rate) << n;
    }
}

TEST(NotePitch, AFullSlideStopsTheWave) {
    PlainRig rig;
    rig.SetWave(0, 1);
    rig.Set(Param::PitchOnOff, 1.0);
    rig.Set(Param::PitchDown, 1.0);
    rig.NoteOn(0, 60);
    rig.Play(20000);
    EXPECT_NEAR(rig.out.left[19999], rig.out.left[19000], 1e-12);
}

TEST(NotePitch, ASawTurnsIntoASineAtAQuarterOfTheSampleRate) {
    // "Octave Up" at 44100 Hz: a rate of four times the frequency makes the increment exactly a quarter.
    for (const bool below : {false, true}) {
        PlainRig rig;
        rig.SetWave(0, 1);
        const double frequency = NoteFrequency(2, 100);
        rig.bank.SetSampleRate(frequency * (below ? 4.2 : 4.0));
        rig.Set(Param::NoteTransposeMode, 2.0 / 9.0);
        rig.Set(0, OscParam::Phase, 0.6); // no sample falls on an exact 0, which the filter would skip
        rig.NoteOn(0, 100);
        rig.Play(4000);
        // A sine at a quarter of the rate repeats after two samples with the opposite sign.
        double sum = 0.0;
        for (std::size_t i = 2000; i < 4000; ++i)
            sum += std::fabs(rig.out.left[i] + rig.out.left[i - 2]);
        if (below) {
            EXPECT_GT(sum / 2000.0, 0.1);
        } else {
            EXPECT_LT(sum / 2000.0, 1e-9);
        }
    }
}

/// A frequency-modulated tone has lines at carrier +- k * modulator with Bessel amplitudes; the modulator
/// runs at the pitch of the note, the carrier where the pitch knob puts it.
TEST(NotePitch, FmHasItsSidebandsAtTheRightPlaces) {
    PlainRig rig;
    rig.Set(Param::NoteTransposeMode, 0.0);
    rig.Set(0, OscParam::Tune, 0.9);
    rig.Set(Param::FmAmount, 0.8);
    // A rate that makes the note's period 100 samples, for lines without leakage.
    const double note = NoteFrequency(0, 45);
    const double rate = note * 100.0;
    rig.bank.SetSampleRate(rate);
    rig.NoteOn(0, 45);
    rig.Play(2000 + 100000);
    const auto tail = From(rig.out.left, 2000);
    const double carrierRatio = 1.0 + 0.05946309435929531 * 0.8;
    const double index = carrierRatio * 0.8 * 0.7135571323115437;
    for (int k = 0; k <= 3; ++k) {
        const double bessel = std::cyl_bessel_j(k, index);
        EXPECT_NEAR(Amplitude(tail, note * (carrierRatio + k), rate), bessel, 0.01) << k;
        // Lines below zero come back mirrored, so each stands alone.
        EXPECT_NEAR(Amplitude(tail, std::fabs(note * (carrierRatio - k)), rate), bessel, 0.01) << -k;
    }
    EXPECT_LT(Amplitude(tail, note, rate), 0.002);
    EXPECT_LT(Amplitude(tail, note * (carrierRatio + 0.5), rate), 0.002);
}

TEST(NotePitch, FmAmountActsAtOnceOnAHeldNote) {
    PlainRig plain;
    PlainRig changed;
    for (PlainRig* rig : {&plain, &changed}) {
        rig->NoteOn(0, 50);
        rig->Play(640);
    }
    changed.Set(Param::FmAmount, 1.0);
    for (PlainRig* rig : {&plain, &changed})
        rig->Play(640);
    for (std::size_t i = 0; i < 640; ++i)
        ASSERT_EQ(plain.out.left[i], changed.out.left[i]);
    EXPECT_GT(std::fabs(plain.out.left[700] - changed.out.left[700]), 1e-3);
}

TEST(NotePitch, TheLfoRateIsTwentyHertzAtTheTop) {
    for (const double knob : {0.15, 0.35, 1.0}) {
        PlainRig rig;
        rig.Set(0, OscParam::LfoRate, knob);
        rig.Set(0, OscParam::LfoToVolume, 1.0);
        rig.NoteOn(0, 69);
        rig.Play(4410 + 44100);
        const auto tail = From(rig.out.left, 4410); // one second: lines are whole hertz apart
        const double lfo = 20.0 * knob;
        for (const double side : {-1.0, 1.0}) {
            EXPECT_NEAR(Amplitude(tail, 440.0 + side * lfo, 44100.0), 0.5, 0.01) << knob;
            EXPECT_LT(Amplitude(tail, 440.0 + side * (lfo + 2.0), 44100.0), 0.01) << knob;
        }
    }
}

TEST(NotePitch, AnInvertedLfoTakesThePitchDownFirst) {
    const auto earlyPhase = [](double mode) {
        PlainRig rig(44100.0, 16);
        rig.Set(0, OscParam::LfoRate, 0.5);
        rig.Set(0, OscParam::LfoToTune, 1.0);
        rig.Set(0, OscParam::LfoMode, mode);
        rig.NoteOn(0, 69);
        rig.Play(1600);
        return MeasuredFrequency(From(rig.out.left, 400), 44100.0);
    };
    EXPECT_GT(earlyPhase(0.0), 445.0);
    EXPECT_LT(earlyPhase(1.0), 435.0);
}

TEST(NotePitch, ATempoChangeDoesNotReachAHeldArpeggio) {
    PlainRig steady;
    PlainRig changed;
    for (PlainRig* rig : {&steady, &changed}) {
        rig->Set(Param::NoteTransposeMode, 8.0 / 9.0);
        rig->NoteOn(0, 60);
        rig->Play(640);
    }
    changed.tempo.tempo = 240.0;
    for (PlainRig* rig : {&steady, &changed})
        rig->Play(6400);
    EXPECT_EQ(steady.out.left, changed.out.left);
}

TEST(NotePitch, TheArpeggioPlaysATriad) {
    PlainRig rig;
    rig.tempo.tempo = 7.5; // steps of half a second
    rig.Set(Param::NoteTransposeMode, 1.0);
    rig.NoteOn(0, 57);
    rig.Play(3 * 22050);
    const double semitones[] = {0.0, 3.0, 7.0};
    for (int i = 0; i < 3; ++i) {
        const auto step =
            std::span<const double>(rig.out.left).subspan(static_cast<std::size_t>(i) * 22050 + 3000, 18000);
        ExpectWithin(MeasuredFrequency(step, 44100.0), 440.0 * std::exp2(semitones[i] / 12.0),
                     kHundredthPercent);
    }
}

TEST(NotePitch, PitchBendMovesOscillatorsAndSub) {
    PlainRig rig;
    rig.Set(Param::BassLayerAmount, 1.0);
    rig.Set(Param::PitchBendRange, 1.0);
    rig.NoteOn(0, 57);
    rig.PitchBend(0, -1.0);
    rig.Play(8820 + 22050);
    ExpectWithin(MeasuredFrequency(From(rig.out.left, 8820), 44100.0), 110.0, kHundredthPercent);
    ExpectWithin(MeasuredFrequency(From(rig.out.sub, 8820), 44100.0), 110.0, kHundredthPercent);
}

} // namespace
} // namespace Grimworks::Testing
