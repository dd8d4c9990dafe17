#include "patches/BankSections.h"
#include "patches/Ingredients.h"

namespace Grimworks {

namespace {

using namespace ProgramKey;

/// A bass that holds while the key is down; the filter falls to `dark` within so many seconds.
Settings Held(double filterSeconds, double dark) {
    return Envelopes(0.3, {0.003, 0.4, 0.8, 0.08}, {0.003, filterSeconds, dark, 0.1});
}

/// A bass that swells and falls with the drive behind it.
Settings Growling(double lfoHz, double depth, double volume) {
    return Oscillator(
        1, {.wave = UserWave(7), .volume = volume, .cutoff = 0.7, .lfoHz = lfoHz, .lfoToFilter = depth});
}

} // namespace

Recipes BassRecipes() {
    return {
        {"#BASS SECTION#",
         Reset,
         {ConcertPitch(), Oscillator(1, {.wave = Wave(Waveform::Sawtooth), .volume = 0.8}),
          Oscillator(2, {.wave = Wave(Waveform::Pulse), .volume = 0.4, .cents = 6.0}), Held(0.4, 0.3)}},
        {"Raw Bassground",
         Reset,
         {{OscModFrequency1, 0.25},
          {OscWaveform2, 0.125},
          {OscVolume2, 0.0},
          {OscModFrequency2, 0.25},
          {OscFreqModAmount2, 0.125},
          {EnvDecay, 0.25},
          {EnvSustain, 0.75},
          {EnvRelease, 0.1},
          {EnvDuration, 0.1},
          {FilterDecay, 0.25},
          {FilterSustain, 0.75},
          {FilterRelease, 0.1},
          {FilterDuration, 0.1},
          {NoteTransposeMode, 0.111111},
          {PitchBendRange, 1.0},
          {PitchDuration, 0.5},
          {FmAmount, 0.4},
          {DistortionOnOff, 0.0},
          {Distortion, 0.5},
          {DistortionType, 0.390244},
          {DistortionLoudness, 0.0},
          {FilterType, 1.0},
          {FilterCutoff, 0.0},
          {LimiterMode, 0.0},
          {LimiterLevel, 1.0}}},
        {"The shadow out of bass",
         Reset,
         {ConcertPitch(),
          Oscillator(1, {.wave = UserWave(4), .volume = 0.9, .lfoHz = 0.7, .lfoToFilter = 0.6}),
          Oscillator(2, {.wave = Wave(Waveform::Trapez), .volume = 0.5, .cents = -9.0}),
          Envelopes(0.4, {0.06, 0.8, 0.8, 0.3}, {0.1, 0.9, 0.25, 0.3}),
          SubLayer(0.3, 0.0),
          PhaserSweep(0.6, 0.5, 0.3),
          {BassLayerToFm, 1.0}}},
        {"Underground Dub Bass",
         Reset,
         {ConcertPitch(),
          Oscillator(1, {.wave = Wave(Waveform::Sine), .volume = 1.0}),
          Oscillator(2, {.wave = Wave(Waveform::Triangle), .volume = 0.35, .semitones = 12.0}),
          Held(0.25, 0.1),
          Distort(Curve("Warm Saturation"), 0.3),
          {OscSat1, 0.13}}},
        {"The Sorcery of D&B Bass",
         Reset,
         {ConcertPitch(),
          Oscillator(1, {.wave = Wave(Waveform::Sawtooth),
                         .volume = 0.6,
                         .cutoff = 0.6,
                         .lfoBeat = Beat::Two,
                         .lfoShape = LfoShape::Inverted,
                         .lfoToFilter = 0.8}),
          Oscillator(2, {.wave = Wave(Waveform::Sawtooth), .volume = 0.6, .cents = 14.0, .cutoff = 0.4}),
          Held(0.6, 0.6), Unison(0.2), Distort(Curve("Soft-Tube-Distort"), 0.5), SubLayer(0.35, 0.0)}},
        {"Deadly Spell D&B Bass",
         "The Sorcery of D&B Bass",
         {Growling(5.5, 0.9, 0.7), Distort(Curve("Transistor 1"), 0.7), Filter1("RBJ BandStop", 700.0, 0.7),
          Shaper({.amount = 0.6, .fromFilterEnvelope = 0.8})}},
        {"The Holy Thud",
         Reset,
         {ConcertPitch(), Oscillator(1, {.wave = UserWave(1), .volume = 0.9}),
          Oscillator(2, {.wave = Wave(Waveform::Sine), .volume = 0.5, .semitones = -12.0}),
          Envelopes(0.4, {0.001, 0.7, 0.5, 0.12}, {0.0, 0.25, 0.2, 0.12}), PitchSweep(0.12, 0.09, 0.6),
          Click(0.45), Distort(Curve("Soft-Knee Limiter"), 0.5)}},
        {"Fusion Bass 1",
         Reset,
         {ConcertPitch(),
          Oscillator(1, {.wave = Wave(Waveform::Triangle), .volume = 1.0}),
          {FmAmount, 0.55},
          Envelopes(0.15, {0.001, 0.9, 0.3, 0.08}, {0.0, 0.35, 0.25, 0.1}),
          Click(0.34),
          Equalize(2.0, 3.0, 0.0)}},
        {"Fusion Bass 2",
         "Fusion Bass 1",
         {Oscillator(1, {.wave = UserWave(2), .volume = 0.9}),
          {FmAmount, 0.2},
          Oscillator(2, {.wave = Wave(Waveform::Sine), .volume = 0.6}),
          Unison(0.15),
          Click(0.56),
          PhaserSweep(0.4, 0.3, 0.6)}},
        {"Acid Tube Bass by Marl-404",
         Reset,
         {ConcertPitch(),
          Oscillator(1, {.wave = Wave(Waveform::Sawtooth), .volume = 0.8, .cutoff = 0.85, .resonance = 0.9}),
          Envelopes(0.12, {0.002, 0.5, 0.7, 0.05}, {0.0, 0.3, 0.12, 0.05}),
          Distort(Curve("Tube-Distort"), 0.7)}},
    };
}

} // namespace Grimworks
