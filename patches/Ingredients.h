#pragma once

#include "effects/CurveNames.h"
#include "effects/FilterNames.h"
#include "patches/ProgramKeys.h"
#include "patches/Recipe.h"
#include "voice/WaveNames.h"

#include <cstdint>
#include <string_view>

/// Words in which the factory programs are written: settings of whole units in musical numbers (Hz, seconds,
/// semitones, decibels, bits) in place of knob positions. Every value comes out with six decimals, so that a
/// program survives its text form to the digit.
namespace Grimworks {

/// A knob position with six decimals.
[[nodiscard]] double Rounded(double value);

/// A choice's value: the place of `index` among `last` + 1 choices.
[[nodiscard]] inline double ChoiceValue(int index, int last) {
    return Rounded(static_cast<double>(index) / last);
}

/// "Waveform" value of a wave, and of the drawn wave "User1" to "User16".
[[nodiscard]] inline double Wave(Waveform::Index wave) {
    return ChoiceValue(wave, kWaveforms - 1);
}
[[nodiscard]] inline double UserWave(int number) {
    return ChoiceValue(Waveform::User1 + number - 1, kWaveforms - 1);
}

/// Selection number of a curve; an unknown name does not compile.
consteval int Curve(std::string_view name) {
    const int number = GetCurveNumber(name);
    if (GetCurveName(number) != name) throw "there is no such curve";
    return number;
}

/// "Pitch" value of an oscillator, -12 to 12 semitones.
[[nodiscard]] inline double Semitones(double semitones) {
    return Rounded(0.5 + semitones / 24.0);
}

/// "Tune" value of an oscillator, about -100 to 100 cents.
[[nodiscard]] double Cents(double cents);

/// "Cutoff" value of the filter unit.
[[nodiscard]] double FilterHz(double hz);

/// LFO or phaser rate value, up to 20 Hz.
[[nodiscard]] inline double LfoHz(double hz) {
    return Rounded(hz / 20.0);
}

/// Filters of an oscillator, as type values. The band-pass position of the knob plays the high-pass.
enum class OscFilter : std::uint8_t {
    PkLowPass = 0,
    PkHighPass = 1,
    PkBandPass = 2,
    BwHighPass = 3,
    BwLowPass = 4
};
enum class LfoShape : std::uint8_t { Sine = 0, Positive = 1, Negative = 2, Absolute = 3, Inverted = 4 };

/// Cycles of an LFO to a beat, by its number among the divisions.
enum class Beat : std::uint8_t {
    Free = 0,
    Sixteenth = 1,
    Eighth = 2,
    Quarter = 3,
    Half = 4,
    One = 5,
    Two = 6,
    Four = 7,
    Eight = 8,
    Sixteen = 9
};

/// One oscillator that sounds. What is left out stands at its reset value.
struct OscillatorPart {
    double wave = 0.0; ///< see Wave
    double volume = 1.0;
    double semitones = 0.0;
    double cents = 0.0;
    double pan = 0.5;
    double phase = 0.5;
    double saturation = 0.0;
    double balance = 0.0; ///< 0 left filter, 1 right filter
    double cutoff = 1.0;  ///< times the filter envelope
    double resonance = 0.0;
    OscFilter left = OscFilter::PkLowPass;
    OscFilter right = OscFilter::BwHighPass;
    double lfoHz = 0.0;
    Beat lfoBeat = Beat::Free;
    LfoShape lfoShape = LfoShape::Sine;
    double lfoToVolume = 0.0;
    double lfoToTune = 0.0;
    double lfoToFilter = 0.0;
    double lfoToPan = 0.0;
};

/// Switches oscillator 1, 2 or 3 on and sets it up.
[[nodiscard]] Settings Oscillator(int number, const OscillatorPart& part);

/// An envelope in seconds, sustain 0..1.
struct Adsr {
    double attack;
    double decay;
    double sustain;
    double release;
};

/// Both envelopes. The shape, 0 bent to 1 straight, also sets the longest stage of the filter envelope:
/// five seconds times the shape.
[[nodiscard]] Settings Envelopes(double shape, const Adsr& volume, const Adsr& filter);

/// Sweep of a kick: starts at 1 + 20 * amount times its pitch and falls within so many seconds, up to 2; a
/// high power falls fast and lingers.
[[nodiscard]] Settings PitchSweep(double amount, double seconds, double power);

/// Note modes that the programs use.
[[nodiscard]] Settings KickOnF();
[[nodiscard]] Settings KickOnFSharp();
[[nodiscard]] Settings KickOnG();
[[nodiscard]] Settings KickOnGSharp();
[[nodiscard]] Settings DrumBody();
[[nodiscard]] Settings ConcertPitch(); ///< key 69 is 440 Hz
[[nodiscard]] Settings OctaveUp();     ///< key 69 is 880 Hz
[[nodiscard]] Settings TwoOctavesUp();
[[nodiscard]] Settings MajorArpeggio();
[[nodiscard]] Settings MinorArpeggio();

/// How a curve is driven: as it is, with gain, or with gain and folded.
enum class Drive : std::uint8_t { Plain = 0, Gain = 1, Fold = 2 };
[[nodiscard]] Settings Distort(int curve, double amount, Drive drive = Drive::Gain);

struct ShaperPart {
    double amount;
    enum class Bump : std::uint8_t { Sine = 0, Triangle = 1, Pulse = 2 } bump = Bump::Sine;
    enum class Mode : std::uint8_t {
        Plain = 0,
        Saturate = 1,
        Boost = 2,
        BoostSaturate = 3
    } mode = Mode::Plain;
    enum class Half : std::uint8_t { Both = 0, Positive = 1, Negative = 2 } half = Half::Both;
    bool invert = false;
    double fromFilterEnvelope = 0.0;
};
[[nodiscard]] Settings Shaper(const ShaperPart& part);

/// Word length of the bit crusher, 1 to 64.
[[nodiscard]] Settings Crush(double bits);

/// Share of the samples that the rate reduction keeps.
[[nodiscard]] Settings KeepSamples(double share);

/// Filter 1 alone, by its long name. Q from 1/16 to 16.
[[nodiscard]] Settings Filter1(std::string_view name, double hz, double q);

/// Filter 2 alone, by its long name; edge is its ripple or width knob.
[[nodiscard]] Settings Filter2(std::string_view name, double hz, double edge);

enum class RingWave : std::uint8_t { Sine = 0, Pulse = 1, Saw = 2, Sine2 = 3, Sine3 = 4 };
[[nodiscard]] Settings RingModulation(RingWave wave, double hz, double amount);
[[nodiscard]] Settings PhaserSweep(double depth, double feedback, double hz);
[[nodiscard]] Settings Echo(double amount, double feedback, double dump, double spread = 0.5);
[[nodiscard]] Settings Equalize(double bassDb, double midDb, double highDb);
[[nodiscard]] Settings Unison(double detune);
[[nodiscard]] Settings SubLayer(double amount, double click);

/// Attack sample without the sub layer.
[[nodiscard]] Settings Click(double click);

} // namespace Grimworks
