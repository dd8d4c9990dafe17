#include "patches/BankSections.h"
#include "patches/Ingredients.h"

namespace Grimworks {

namespace {

using namespace ProgramKey;

constexpr double kVibratoHz = 5.4;

/// A string that is plucked and rings out by itself.
Settings Plucked(double seconds, double brightSeconds, double dark) {
    return Envelopes(0.12, {0.001, seconds, 0.0, 0.25}, {0.0, brightSeconds, dark, 0.25});
}

/// A string under a bow: slow to speak, then held.
Settings Bowed(double attack, double bright) {
    return Envelopes(0.4, {attack, 0.4, 0.85, 0.22}, {attack, 0.5, bright, 0.25});
}

/// Breath: quick to speak and held.
Settings Blown(double attack, double bright) {
    return Envelopes(0.35, {attack, 0.2, 0.9, 0.12}, {attack * 1.5, 0.3, bright, 0.15});
}

Settings Breath(int oscillator, double volume) {
    return Oscillator(oscillator, {.wave = Wave(Waveform::PinkNoize), .volume = volume, .cutoff = 0.5});
}

} // namespace

Recipes StringAndWindRecipes() {
    return {
        {"#STRING INSTRUMENTS#",
         Reset,
         {ConcertPitch(),
          Oscillator(1, {.wave = Wave(Waveform::Sawtooth), .volume = 0.55, .cents = -6.0, .pan = 0.3}),
          Oscillator(2, {.wave = Wave(Waveform::Sawtooth), .volume = 0.55, .cents = 6.0, .pan = 0.7}),
          Oscillator(3, {.wave = Wave(Waveform::Sawtooth), .volume = 0.25, .semitones = 12.0}),
          Bowed(0.25, 0.4)}},
        {"Guitar by Sorrel",
         Reset,
         {ConcertPitch(),
          Oscillator(1, {.wave = UserWave(13), .volume = 0.7}),
          Oscillator(2, {.wave = Wave(Waveform::Sawtooth), .volume = 0.4, .cents = 4.0}),
          Plucked(2.4, 0.5, 0.25),
          Distort(Curve("Soft-Tube-Distort"), 0.6),
          Click(0.6),
          Equalize(-2.0, 3.0, -3.0),
          {Volume, 0.5}}},
        {"Orrin Vale's Violin",
         Reset,
         {ConcertPitch(),
          Oscillator(1, {.wave = Wave(Waveform::Sawtooth),
                         .volume = 1.0,
                         .lfoHz = kVibratoHz,
                         .lfoToVolume = 0.15,
                         .lfoToTune = 0.16}),
          Oscillator(2, {.wave = UserWave(3), .volume = 0.35, .lfoHz = kVibratoHz, .lfoToTune = 0.16}),
          Bowed(0.12, 0.45), Equalize(-6.0, 4.0, 3.0)}},
        {"Virtual Cello",
         Reset,
         {ConcertPitch(),
          Oscillator(1, {.wave = Wave(Waveform::Sawtooth),
                         .volume = 0.8,
                         .semitones = -12.0,
                         .lfoHz = 4.8,
                         .lfoToTune = 0.1}),
          Oscillator(2, {.wave = Wave(Waveform::Triangle),
                         .volume = 0.5,
                         .semitones = -12.0,
                         .cents = 5.0,
                         .lfoHz = 4.8,
                         .lfoToTune = 0.1}),
          Bowed(0.18, 0.26),
          Equalize(2.0, 0.0, -4.0),
          {Volume, 0.5}}},
        {"Virtual Banjo",
         Reset,
         {ConcertPitch(),
          Oscillator(1, {.wave = UserWave(2), .volume = 0.9, .phase = 0.8}),
          Oscillator(2, {.wave = UserWave(5),
                         .volume = 0.35,
                         .semitones = 12.0,
                         .cutoff = 0.2,
                         .left = OscFilter::PkHighPass}),
          Plucked(0.7, 0.35, 0.2),
          Click(0.85),
          Equalize(-8.0, 5.0, 2.0),
          {Volume, 0.9}}},
        {"#WIND INSTRUMENTS#",
         Reset,
         {ConcertPitch(), Oscillator(1, {.wave = Wave(Waveform::Trapez), .volume = 0.6, .pan = 0.35}),
          Oscillator(2, {.wave = Wave(Waveform::Sawtooth), .volume = 0.35, .cents = 7.0, .pan = 0.65}),
          Breath(3, 0.12), Blown(0.07, 0.4)}},
        {"Chinese Flute by Quenby",
         Reset,
         {OctaveUp(),
          Oscillator(1, {.wave = Wave(Waveform::Triangle),
                         .volume = 0.8,
                         .lfoHz = 5.0,
                         .lfoToVolume = 0.2,
                         .lfoToTune = 0.1}),
          Breath(2, 0.5),
          Oscillator(3, {.wave = UserWave(12), .volume = 0.2, .semitones = 12.0}),
          Blown(0.06, 0.5),
          {PitchDown, 0.0},
          PitchSweep(0.004, 0.12, 0.1)}},
        {"Virtual Horn",
         Reset,
         {ConcertPitch(),
          Oscillator(1, {.wave = Wave(Waveform::XTrapez), .volume = 0.6}),
          Oscillator(2, {.wave = Wave(Waveform::Sawtooth), .volume = 0.5, .cents = -5.0}),
          Envelopes(0.35, {0.05, 0.25, 0.85, 0.15}, {0.11, 0.4, 0.3, 0.15}),
          PitchSweep(0.002, 0.08, 0.2),
          Distort(Curve("Compressor"), 0.4),
          {Volume, 0.5}}},
        {"Virtual Harmonica",
         Reset,
         {ConcertPitch(),
          Oscillator(1, {.wave = UserWave(2), .volume = 0.8, .lfoHz = 6.1, .lfoToVolume = 0.35}),
          Oscillator(2, {.wave = Wave(Waveform::Pulse), .volume = 0.25, .cents = 8.0}), Breath(3, 0.1),
          Blown(0.05, 0.7), Equalize(-6.0, 3.0, 0.0)}},
        {"Harmonica by Sorrel",
         "Virtual Harmonica",
         {Oscillator(1, {.wave = UserWave(8),
                         .volume = 0.8,
                         .lfoHz = 4.4,
                         .lfoShape = LfoShape::Positive,
                         .lfoToVolume = 0.2,
                         .lfoToTune = 0.08}),
          {OscPitch2, Semitones(12.0)},
          PitchSweep(0.006, 0.16, 0.15),
          Echo(0.12, 0.3, 0.6)}},
        {"Dark Organ by Tobin Ashgrove",
         Reset,
         {ConcertPitch(), Oscillator(1, {.wave = UserWave(1), .volume = 0.6}),
          Oscillator(2, {.wave = UserWave(8), .volume = 0.35, .semitones = -12.0, .cents = 3.0}),
          Oscillator(3, {.wave = Wave(Waveform::Sine), .volume = 0.35, .semitones = 7.0}),
          Envelopes(0.3, {0.012, 0.1, 1.0, 0.12}, {0.0, 0.1, 0.35, 0.2}), PhaserSweep(0.35, 0.3, 0.25)}},
    };
}

} // namespace Grimworks
