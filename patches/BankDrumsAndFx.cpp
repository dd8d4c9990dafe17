#include "patches/BankSections.h"
#include "patches/Ingredients.h"

namespace Grimworks {

namespace {

using namespace ProgramKey;

/// A hit that dies away by itself; bright and volume go together.
Settings Hit(double seconds, double shape = 0.15) {
    return Envelopes(shape, {0.0005, seconds, 0.0, seconds}, {0.0, 5.0 * shape, 1.0, 0.05});
}

/// Noise above a high-pass, the stuff of cymbals.
Settings Sizzle(int oscillator, Waveform::Index noise, double volume, double cutoff, double resonance = 0.0) {
    return Oscillator(
        oscillator,
        {.wave = Wave(noise), .volume = volume, .balance = 1.0, .cutoff = cutoff, .resonance = resonance});
}

/// Inharmonic metal: high partials that share no common root.
Settings Metal(double volume) {
    return {
        Oscillator(
            2, {.wave = UserWave(11), .volume = volume, .semitones = 11.3, .balance = 1.0, .cutoff = 0.35}),
        RingModulation(RingWave::Sine3, 3170.0, 0.6)};
}

} // namespace

Recipes DrumAndFxRecipes() {
    return {
        {"#DRUM AND FX SECTION#",
         Reset,
         {DrumBody(), Oscillator(1, {.wave = Wave(Waveform::Sine), .volume = 1.0, .semitones = 12.0}),
          Oscillator(2, {.wave = Wave(Waveform::PinkNoize), .volume = 0.5, .cutoff = 0.7}), Hit(0.35, 0.25),
          PitchSweep(0.1, 0.15, 0.5), Click(0.78)}},
        {"Drum Body by Marl-404",
         Reset,
         {DrumBody(), Oscillator(1, {.wave = Wave(Waveform::Triangle), .volume = 1.0, .semitones = 9.0}),
          Oscillator(2, {.wave = Wave(Waveform::Sine), .volume = 0.2, .semitones = 12.0, .cents = 60.0}),
          Envelopes(0.3, {0.0005, 0.5, 0.0, 0.3}, {0.0, 0.2, 0.2, 0.1}), PitchSweep(0.06, 0.3, 0.4),
          Click(0.3)}},
        {"Ride Cymbal by Pim_Later",
         Reset,
         {TwoOctavesUp(),
          Sizzle(1, Waveform::WhiteNoize, 0.45, 0.42),
          Metal(0.8),
          Oscillator(3,
                     {.wave = UserWave(5), .volume = 0.5, .semitones = 7.7, .balance = 1.0, .cutoff = 0.3}),
          Envelopes(0.2, {0.0005, 1.6, 0.0, 0.9}, {0.0, 0.9, 1.0, 0.9}),
          {FmAmount, 0.35},
          Click(0.95),
          Equalize(0.0, 0.0, 5.0)}},
        {"Closed Hihat by Ludo",
         Reset,
         {OctaveUp(), Sizzle(1, Waveform::WhiteNoize, 1.0, 0.5, 0.2), Hit(0.07, 0.12),
          Filter2("Chebyshev HighPass 24dB", 6500.0, 0.1), Equalize(0.0, 0.0, 6.0)}},
        {"Open Hihat by Marl-404",
         Reset,
         {OctaveUp(), Sizzle(1, Waveform::WhiteNoize, 0.8, 0.38, 0.1), Metal(0.3), Hit(0.5, 0.2),
          Filter2("Chebyshev HighPass 12dB", 5000.0, 0.1), Equalize(0.0, 0.0, 6.0)}},
        {"Snare-Drum",
         Reset,
         {DrumBody(),
          Oscillator(1, {.wave = Wave(Waveform::Triangle), .volume = 0.7, .semitones = 12.0}),
          Oscillator(2, {.wave = Wave(Waveform::WhiteNoize), .volume = 0.5}),
          Sizzle(3, Waveform::PinkNoize, 0.4, 0.05),
          Hit(0.22, 0.3),
          PitchSweep(0.12, 0.08, 0.4),
          Click(0.67),
          Distort(Curve("Limiter"), 0.5),
          {Volume, 0.55}}},
        {"A Coder Ate My Pigeon",
         Reset,
         {OctaveUp(),
          Oscillator(1, {.wave = Wave(Waveform::GeoChirp),
                         .volume = 0.9,
                         .lfoHz = 13.0,
                         .lfoShape = LfoShape::Absolute,
                         .lfoToVolume = 0.8,
                         .lfoToTune = 1.0}),
          Oscillator(
              2, {.wave = UserWave(15), .volume = 0.4, .semitones = -12.0, .lfoHz = 3.1, .lfoToTune = 1.0}),
          Envelopes(0.3, {0.01, 0.6, 0.5, 0.15}, {0.0, 0.4, 0.9, 0.2}),
          PitchSweep(0.1, 1.1, 0.1),
          {FmAmount, 0.8},
          Crush(6.0),
          KeepSamples(0.3),
          {Volume, 1.0}}},
        {"Silver Submarine",
         Reset,
         {OctaveUp(),
          Oscillator(1, {.wave = Wave(Waveform::Sine), .volume = 1.0, .semitones = 4.0}),
          Oscillator(2, {.wave = UserWave(16), .volume = 0.2, .semitones = 11.0}),
          Envelopes(0.25, {0.002, 0.9, 0.0, 0.6}, {0.0, 0.8, 0.3, 0.6}),
          Echo(0.5, 0.55, 0.35, 0.55),
          PhaserSweep(0.5, 0.6, 0.4),
          {Volume, 0.55}}},
        {"Laser FX",
         Reset,
         {OctaveUp(),
          Oscillator(1, {.wave = Wave(Waveform::Sawtooth), .volume = 0.8}),
          Oscillator(2, {.wave = UserWave(6), .volume = 0.5, .cents = 20.0}),
          Envelopes(0.4, {0.0005, 0.5, 0.0, 0.15}, {0.0, 0.8, 0.6, 0.2}),
          PitchSweep(0.5, 0.5, 0.15),
          {PitchDown, 0.8},
          Echo(0.2, 0.4, 0.8)}},
        {"Ocean-Waves by Sorrel",
         Reset,
         {ConcertPitch(),
          Oscillator(1, {.wave = Wave(Waveform::PinkNoize),
                         .volume = 1.0,
                         .balance = 1.0,
                         .cutoff = 0.35,
                         .right = OscFilter::BwLowPass,
                         .lfoHz = 0.24,
                         .lfoShape = LfoShape::Inverted,
                         .lfoToVolume = 0.7,
                         .lfoToFilter = 0.8,
                         .lfoToPan = 0.5}),
          Oscillator(2, {.wave = Wave(Waveform::WhiteNoize),
                         .volume = 0.3,
                         .balance = 1.0,
                         .cutoff = 0.2,
                         .right = OscFilter::BwLowPass,
                         .lfoHz = 0.16,
                         .lfoToVolume = 0.9,
                         .lfoToFilter = 0.9}),
          Envelopes(0.5, {0.7, 1.0, 0.9, 1.8}, {0.6, 1.0, 0.8, 1.8}),
          {Volume, 0.9}}},
    };
}

} // namespace Grimworks
