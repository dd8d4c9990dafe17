#include "tests/plugin/Measure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

using namespace Grimworks;

namespace {

constexpr double kOneInTenThousand = 1e-4;
constexpr double kSemitoneAbove = 0.05946309435929531;
constexpr double kFmSwing = 0.7135571323115437;

double Standard(int note) {
    return 880.0 * std::pow(2.0, (note - 69) / 12.0);
}

/// What a host's value is once it has gone through 32 bits.
double AsFloat(double value) {
    return static_cast<double>(static_cast<float>(value));
}

/// Plays a note of a dry program and gives its frequency, by the last part of `frames`.
double MeasuredFrequency(Instrument& instrument, double rate, int note, int frames) {
    instrument.NoteOn(note);
    const Instrument::Audio audio = instrument.Render(frames);
    Silence(instrument, note);
    return FrequencyOf(audio.left, rate, 2048, audio.left.size());
}

void ExpectFrequency(double measured, double expected) {
    EXPECT_NEAR(measured, expected, expected * kOneInTenThousand);
}

/// The sub-oscillator alone at about unity: a sine whose phase can be worked out from the pitch alone.
void SubProgram(Instrument& instrument) {
    OpenProgram(instrument);
    instrument.Set(Osc(0, OscParam::OnOff), 0.0);
    instrument.Set(Param::LimiterMode, 0.0);
    instrument.Set(Param::Volume, 1.0);
    instrument.Set(Param::BassLayerSolo, 1.0);
    instrument.Set(Param::BassLayerAmount, 1.0 / 1.259);
    instrument.Render(kSettleFrames);
}

/// Compares a render of the sub-oscillator with the sine of a phase that grows by factor(n) times the note's
/// increment behind sample n.
template <class Factor>
void ExpectSubPhase(const Instrument::Audio& audio, double frequency, double rate, Factor factor) {
    double phase = frequency / rate; // the note's start is a step of its own, without the sweep
    for (std::size_t n = 0; n < audio.left.size(); ++n) {
        // The envelope has not opened at the first sample.
        const double expected = n == 0 ? 0.0 : std::sin(2.0 * std::numbers::pi * phase);
        ASSERT_NEAR(audio.left[n], expected, 1e-6) << n;
        phase += frequency / rate * factor(n);
        phase -= std::floor(phase);
    }
}

} // namespace

TEST(ThudForgePitch, EveryNoteModePlaysItsFrequencyAtEveryRate) {
    for (const double rate : {44100.0, 48000.0, 96000.0}) {
        Instrument instrument(rate, 256);
        DryProgram(instrument);
        const int frames = static_cast<int>(rate * 0.4);
        for (const int note : {33, 57, 69, 81}) {
            const double standard = Standard(note);
            const std::array<double, 8> expected{standard, standard / 2.0, standard * 2.0, 43.65,
                                                 46.25,    49.0,           51.91,          65.4};
            for (std::size_t mode = 0; mode < expected.size(); ++mode) {
                SCOPED_TRACE(testing::Message() << rate << " Hz, mode " << mode << ", note " << note);
                instrument.Set(Param::NoteTransposeMode, static_cast<double>(mode) / 9.0);
                ExpectFrequency(MeasuredFrequency(instrument, rate, note, frames), expected[mode]);
            }
        }
    }
}

TEST(ThudForgePitch, TheArpeggiosStepThroughTheirTriadsAtEveryRate) {
    for (const double rate : {44100.0, 48000.0, 96000.0}) {
        for (const int mode : {8, 9}) {
            Instrument instrument(rate, 256);
            instrument.SetTempo(100.0);
            DryProgram(instrument);
            instrument.Set(Param::NoteTransposeMode, mode / 9.0);
            instrument.NoteOn(93);
            Instrument::Audio audio = instrument.Render(1024);
            instrument.SetTempo(40.0); // too late for this note
            const auto step = static_cast<std::size_t>(60.0 / 100.0 * 0.0625 * rate);
            while (audio.left.size() < 7 * step)
                instrument.Process(audio, 256);
            const std::array<int, 3> semitones{0, mode == 8 ? 4 : 3, 7};
            for (std::size_t k = 0; k < 6; ++k) {
                SCOPED_TRACE(testing::Message() << rate << " Hz, mode " << mode << ", step " << k);
                const double ratio = std::pow(2.0, semitones[k % 3] / 12.0);
                ExpectFrequency(FrequencyOf(audio.left, rate, k * step + 100, (k + 1) * step - 10),
                                3520.0 * ratio);
            }
        }
    }
}

TEST(ThudForgePitch, TheLowestKeyOfTheStandardTuning) {
    Instrument instrument;
    DryProgram(instrument);
    ExpectFrequency(MeasuredFrequency(instrument, 44100.0, 0, 44100), 16.351597831287414);
}

TEST(ThudForgePitch, AKickPitchIsTheSameOnAnyKeyAndItsNoteOffStillFindsIt) {
    Instrument instrument;
    DryProgram(instrument);
    instrument.Set(Param::NoteTransposeMode, 5.0 / 9.0);
    for (const int note : {1, 64, 127}) {
        instrument.NoteOn(note);
        const Instrument::Audio audio = instrument.Render(8192);
        ExpectFrequency(FrequencyOf(audio.left, 44100.0, 0, audio.left.size()), 49.0);
        instrument.NoteOff(note == 127 ? 126 : note + 1);
        instrument.Render(256);
        EXPECT_EQ(instrument.Plug().Voices().ActiveVoices(), 1);
        Silence(instrument, note);
        EXPECT_EQ(instrument.Plug().Voices().ActiveVoices(), 0);
    }
}

TEST(ThudForgePitch, CoarseAndFineKnobsMoveEachOscillator) {
    struct Knob {
        OscParam parameter;
        double value;
        double ratio;
    };
    const std::array<Knob, 8> knobs{{{OscParam::Pitch, 0.0, 0.5},
                                     {OscParam::Pitch, 0.25, std::sqrt(0.5)},
                                     {OscParam::Pitch, 0.75, std::sqrt(2.0)},
                                     {OscParam::Pitch, 1.0, 2.0},
                                     {OscParam::Tune, 0.0, 1.0 / 1.05946309435929531},
                                     {OscParam::Tune, 0.25, 1.0 / (1.0 + kSemitoneAbove / 2.0)},
                                     {OscParam::Tune, 0.75, 1.0 + kSemitoneAbove / 2.0},
                                     {OscParam::Tune, 1.0, 1.0 + kSemitoneAbove}}};
    for (int i = 0; i < kOscillators; ++i) {
        Instrument instrument;
        DryProgram(instrument);
        instrument.Set(Osc(0, OscParam::OnOff), i == 0 ? 1.0 : 0.0);
        instrument.Set(Osc(i, OscParam::OnOff), 1.0);
        for (const Knob& knob : knobs) {
            instrument.Set(Osc(i, knob.parameter), knob.value);
            ExpectFrequency(MeasuredFrequency(instrument, 44100.0, 57, 8192), 440.0 * knob.ratio);
            instrument.Set(Osc(i, knob.parameter), 0.5);
        }
    }
}

TEST(ThudForgePitch, TheGlobalTransposeMovesOscillatorsTwiceAndTheSubOnce) {
    for (const auto& [value, ratio] :
         std::array<std::pair<double, double>, 3>{{{0.0, 0.5}, {0.75, std::sqrt(2.0)}, {1.0, 2.0}}}) {
        Instrument instrument;
        DryProgram(instrument);
        instrument.Set(Param::GlobalTranspose, value);
        ExpectFrequency(MeasuredFrequency(instrument, 44100.0, 57, 16384), 440.0 * ratio * ratio);
        EXPECT_NEAR(instrument.Plug().Voices().LastFrequency(), 440.0 * ratio, 1e-9);

        Instrument sub;
        SubProgram(sub);
        sub.Set(Param::GlobalTranspose, value);
        ExpectFrequency(MeasuredFrequency(sub, 44100.0, 57, 16384), 440.0 * ratio);
    }
}

TEST(ThudForgePitch, AHeldNoteFollowsTheTransposeAtOnceTogetherWithItsModulator) {
    Instrument instrument;
    DryProgram(instrument);
    instrument.Set(Param::FmAmount, 0.5);
    instrument.NoteOn(57);
    instrument.Render(4096);
    instrument.Set(Param::GlobalTranspose, 0.75);
    const Instrument::Audio audio = instrument.Render(16384);
    const auto amplitude = [&audio](double frequency) {
        return AmplitudeAt(audio.left, 44100.0, frequency, 0, audio.left.size());
    };
    // The carrier stands at twice 440 Hz, the modulator at the square root of two times 440 Hz.
    const double modulator = 440.0 * std::sqrt(2.0);
    EXPECT_GT(amplitude(880.0), 0.3);
    EXPECT_GT(amplitude(880.0 + modulator), 0.1);
    EXPECT_GT(amplitude(880.0 - modulator), 0.1);
    EXPECT_LT(amplitude(880.0 + 440.0), 0.01);
    EXPECT_LT(amplitude(440.0), 0.01);
}

TEST(ThudForgePitch, TheWheelBendsByTheRangeOscillatorsAndSubAlike) {
    for (int index = 0; index <= 6; ++index) {
        for (const bool isSub : {false, true}) {
            Instrument instrument;
            if (isSub) {
                SubProgram(instrument);
            } else {
                DryProgram(instrument);
            }
            instrument.Set(Param::PitchBendRange, index / 6.0);
            EXPECT_EQ(instrument.Plug().Voices().BendRange(), 2.0 * index);
            instrument.Midi(0xE0, 0, 0); // all the way down
            instrument.Render(4096);
            ExpectFrequency(MeasuredFrequency(instrument, 44100.0, 69, 12288),
                            880.0 * std::pow(2.0, -2.0 * index / 12.0));
            instrument.Midi(0xE0, 0, 96); // half the way up
            instrument.Render(4096);
            ExpectFrequency(MeasuredFrequency(instrument, 44100.0, 69, 8192),
                            880.0 * std::pow(2.0, index / 12.0));
        }
    }
}

TEST(ThudForgePitch, ABendMovesASoundingNoteInAGlide) {
    Instrument instrument;
    SubProgram(instrument);
    instrument.Set(Param::PitchBendRange, 1.0);
    instrument.NoteOn(45);
    Instrument::Audio audio = instrument.Render(64);
    instrument.Midi(0xE0, 0, 0);
    for (int i = 0; i < 63; ++i)
        instrument.Process(audio, 64);
    double bend = 1.0;
    ExpectSubPhase(audio, 220.0, 44100.0, [&bend](std::size_t n) {
        const double factor = bend;
        if (n >= 64) bend = 0.9777 * bend + 0.0223 * 0.5; // the twelve semitones' own rounding is far below
        return factor;
    });
}

TEST(ThudForgePitch, ThePitchEnvelopeIsItsSweepIntegrated) {
    for (const double rate : {44100.0, 96000.0}) {
        Instrument instrument(rate);
        SubProgram(instrument);
        instrument.Set(Param::PitchAmount, 0.4);
        instrument.Set(Param::PitchDuration, 0.05);
        instrument.Set(Param::PitchPower, 0.2);
        instrument.Set(Param::PitchDown, 0.3);
        instrument.NoteOn(45);
        const Instrument::Audio audio = instrument.Render(static_cast<int>(0.15 * rate));
        const double fall = 2.0 * AsFloat(0.05);
        const double end = 0.001 + fall;
        ExpectSubPhase(audio, 220.0, rate, [&](std::size_t n) {
            const double t = static_cast<double>(n) / rate;
            const double peak = 20.0 * AsFloat(0.4);
            double factor = 1.0;
            if (t < 0.001) {
                factor += peak * t / 0.001;
            } else if (t < end) {
                factor += peak * std::pow(1.0 - (t - 0.001) / fall, 20.0 * AsFloat(0.2));
            }
            return factor - AsFloat(0.3) * std::min(t / end, 1.0);
        });
    }
}

TEST(ThudForgePitch, ThePitchEnvelopesSwitchTakesTheSlideAlong) {
    Instrument instrument;
    SubProgram(instrument);
    for (const int id : {Param::PitchAmount, Param::PitchDuration, Param::PitchPower, Param::PitchDown})
        instrument.Set(id, 0.5);
    instrument.Set(Param::PitchOnOff, 0.0);
    instrument.NoteOn(45);
    ExpectSubPhase(instrument.Render(8192), 220.0, 44100.0, [](std::size_t) { return 1.0; });
}

TEST(ThudForgePitch, ThePowerKnobHasAFloor) {
    Instrument instrument;
    SubProgram(instrument);
    instrument.Set(Param::PitchAmount, 0.1);
    instrument.Set(Param::PitchDuration, 0.05);
    instrument.Set(Param::PitchPower, 0.0);
    instrument.NoteOn(45);
    const double fall = 2.0 * AsFloat(0.05);
    ExpectSubPhase(instrument.Render(4096), 220.0, 44100.0, [&](std::size_t n) {
        const double t = static_cast<double>(n) / 44100.0;
        const double peak = 20.0 * AsFloat(0.1);
        return t < 0.001 ? 1.0 + peak * t / 0.001
                         : 1.0 + peak * std::pow(1.0 - (t - 0.001) / fall, 20.0 * 0.002);
    });
}

// Unison.

TEST(ThudForgePitch, TheSecondUnisonGeneratorRunsBelowTheFirst) {
    for (const double detune : {0.25, 1.0}) {
        for (const double wave : {0.0, 20.0 / 40.0}) { // a live one and one of a table
            Instrument instrument;
            DryProgram(instrument);
            instrument.Set(Osc(0, OscParam::Waveform), wave);
            instrument.NoteOn(69);
            const Instrument::Audio single = instrument.Render(8192 + 32768);
            Silence(instrument, 69);
            instrument.Set(Param::UnisonVoices, 1.0);
            instrument.Set(Param::UnisonDetune, detune);
            instrument.NoteOn(69);
            const Instrument::Audio both = instrument.Render(8192 + 32768);
            const auto amplitude = [](const Instrument::Audio& audio, double frequency) {
                return AmplitudeAt(audio.left, 44100.0, frequency, 8192, audio.left.size());
            };
            const double whole = amplitude(single, 880.0);
            EXPECT_GT(whole, 0.01);
            // Each of the two at half the level.
            EXPECT_NEAR(amplitude(both, 880.0) / whole, 0.5, 2e-3) << detune << wave;
            const double below = 880.0 / (1.0 + kSemitoneAbove * detune);
            EXPECT_NEAR(amplitude(both, below) / whole, 0.5, 2e-3) << detune << wave;
            EXPECT_LT(amplitude(both, 2.0 * 880.0 - below) / whole, 0.01) << detune << wave;
        }
    }
}

TEST(ThudForgePitch, TwoGeneratorsWithoutDetuneSoundAsOne) {
    Instrument::Audio renders[2];
    for (int on = 0; on < 2; ++on) {
        Instrument instrument;
        DryProgram(instrument);
        instrument.Set(Osc(0, OscParam::Waveform), 1.0 / 40.0);
        instrument.Set(Param::UnisonDetune, 0.0);
        instrument.Set(Param::UnisonVoices, on);
        instrument.NoteOn(50);
        renders[on] = instrument.Render(8192);
    }
    EXPECT_EQ(LargestDifference(renders[0], renders[1]), 0.0);
    EXPECT_GT(renders[0].Peak(), 0.5);
}

// Frequency modulation.

TEST(ThudForgePitch, FrequencyModulationActsAtOnceAtTheNotesOwnPitch) {
    Instrument instrument;
    SubProgram(instrument);
    instrument.Set(Param::BassLayerToFm, 1.0);
    instrument.NoteOn(45);
    Instrument::Audio audio = instrument.Render(1024);
    instrument.Set(Param::FmAmount, 0.7);
    for (int i = 0; i < 48; ++i)
        instrument.Process(audio, 64);
    instrument.Set(Param::FmAmount, 0.0);
    for (int i = 0; i < 16; ++i)
        instrument.Process(audio, 64);
    // The modulator's phase rests until it is first needed.
    ExpectSubPhase(audio, 220.0, 44100.0, [](std::size_t n) {
        if (n < 1024 || n >= 4096) return 1.0;
        const double phase = static_cast<double>(n - 1024) * 220.0 / 44100.0;
        return 1.0 + kFmSwing * AsFloat(0.7) * std::sin(2.0 * std::numbers::pi * phase);
    });
}

TEST(ThudForgePitch, WithoutItsSwitchTheSubHearsNeitherModulationNorArpeggio) {
    Instrument instrument;
    SubProgram(instrument);
    instrument.Set(Param::FmAmount, 1.0);
    instrument.Set(Param::NoteTransposeMode, 8.0 / 9.0);
    instrument.NoteOn(45);
    ExpectSubPhase(instrument.Render(8192), 220.0, 44100.0, [](std::size_t) { return 1.0; });
}

TEST(ThudForgePitch, ModulatedOscillatorsGetSidebandsAtMultiplesOfTheNote) {
    Instrument instrument;
    DryProgram(instrument);
    instrument.Set(Osc(0, OscParam::Pitch), 0.75); // the modulator stays at the note's pitch
    instrument.Set(Param::FmAmount, 0.5);
    instrument.NoteOn(57);
    const Instrument::Audio audio = instrument.Render(8192 + 16384);
    const double carrier = 440.0 * std::sqrt(2.0);
    // Modulation index: swing in hertz over the modulator's frequency.
    const double index = 0.5 * kFmSwing * carrier / 440.0;
    for (int k = 0; k <= 2; ++k) {
        const double level = AmplitudeAt(audio.left, 44100.0, carrier + k * 440.0, 8192, audio.left.size());
        EXPECT_NEAR(level, std::fabs(std::cyl_bessel_j(k, index)), 5e-3) << k;
    }
}

// The sub-oscillator.

TEST(ThudForgePitch, ASubAboveHalfTheRateFolds) {
    Instrument instrument;
    SubProgram(instrument);
    const double frequency = Standard(127);
    ASSERT_GT(frequency, 22050.0);
    instrument.NoteOn(127);
    const Instrument::Audio audio = instrument.Render(16384);
    EXPECT_NEAR(AmplitudeAt(audio.left, 44100.0, 44100.0 - frequency, 0, audio.left.size()), 1.0, 1e-3);
}

TEST(ThudForgePitch, ASubThatIsTurnedDownInANoteFadesToSilence) {
    Instrument instrument;
    SubProgram(instrument);
    instrument.NoteOn(45);
    EXPECT_NEAR(instrument.Render(4096).Peak(), 1.0, 1e-3);
    instrument.Set(Param::BassLayerAmount, 0.0);
    const Instrument::Audio falling = instrument.Render(2048);
    EXPECT_GT(falling.Peak(), 0.0);
    // The voice repeats its last block, but the smoother of the amount has taken it away.
    EXPECT_LT(instrument.Render(2048).Peak(), 1e-15);
    instrument.Set(Param::BassLayerAmount, 1.0 / 1.259);
    EXPECT_NEAR(instrument.Render(4096).Peak(), 1.0, 1e-3);
}
