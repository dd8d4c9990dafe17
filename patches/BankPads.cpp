#include "patches/BankSections.h"
#include "patches/Ingredients.h"

namespace Grimworks {

namespace {

using namespace ProgramKey;

/// Slow in and slow out.
Settings Swell(double attack, double release, double bright) {
    return Envelopes(0.5, {attack, 1.0, 0.85, release}, {attack, 1.2, bright, release});
}

/// The same wave twice, left and right of the note. `raise` makes up for a unison that pulls down.
Settings Pair(double wave, double volume, double cents, double raise = 0.0) {
    return {Oscillator(1, {.wave = wave, .volume = volume, .cents = raise - cents, .pan = 0.25}),
            Oscillator(2, {.wave = wave, .volume = volume, .cents = raise + cents, .pan = 0.75})};
}

} // namespace

Recipes PadRecipes() {
    return {
        {"#PAD SECTION#",
         Reset,
         {ConcertPitch(), Pair(UserWave(9), 0.4, 7.0),
          Oscillator(3, {.wave = Wave(Waveform::Triangle), .volume = 0.4, .semitones = -12.0}),
          Swell(0.3, 0.6, 0.4)}},
        {"Synth Choir by Marl-404",
         Reset,
         {ConcertPitch(), Pair(UserWave(3), 0.85, 9.0, 4.0),
          Oscillator(
              3, {.wave = UserWave(4), .volume = 0.4, .lfoHz = 4.7, .lfoToVolume = 0.1, .lfoToTune = 0.12}),
          Swell(0.25, 0.6, 0.6), Unison(0.15)}},
        {"Relic Pad",
         Reset,
         {ConcertPitch(),
          Pair(Wave(Waveform::WaveScape), 1.0, 5.0),
          Oscillator(3, {.wave = Wave(Waveform::Shikoku), .volume = 0.4, .semitones = 12.0}),
          Swell(0.4, 0.9, 0.35),
          Filter1("RBJ BandPass 1", 900.0, 0.35),
          Equalize(4.0, 0.0, 0.0),
          Echo(0.2, 0.4, 0.4, 0.45),
          {Osc3LfoTempoSync, ChoiceValue(2, 9)},
          {OscFiltModAmount3, 0.5}}},
        {"Raw Structured Pad",
         Reset,
         {ConcertPitch(), Pair(Wave(Waveform::Synapsis), 0.45, 8.0),
          Oscillator(3, {.wave = Wave(Waveform::BrickBreaker),
                         .volume = 0.4,
                         .semitones = -12.0,
                         .lfoBeat = Beat::Four,
                         .lfoToFilter = 0.7}),
          Swell(0.2, 0.5, 0.5), Distort(Curve("GWSigmoid2-Drive"), 0.2)}},
        {"Space-Cut Pad",
         Reset,
         {ConcertPitch(),
          Pair(Wave(Waveform::Sawtooth), 0.45, 11.0),
          Oscillator(3, {.wave = UserWave(16), .volume = 0.35, .semitones = 12.0}),
          Swell(0.15, 0.5, 0.6),
          {Osc1LfoTempoSync, ChoiceValue(7, 9)},
          {Osc1LfoMode, ChoiceValue(2, 4)},
          {OscLfoVolumeAmount1, 0.9},
          {Osc2LfoTempoSync, ChoiceValue(8, 9)},
          {Osc2LfoMode, ChoiceValue(3, 4)},
          {OscLfoPanAmount2, 0.6},
          {OscLfoVolumeAmount2, 0.4},
          Echo(0.25, 0.45, 0.7, 0.7)}},
        {"Prophecy Pad",
         Reset,
         {ConcertPitch(),
          Pair(Wave(Waveform::WaveGarden), 0.6, 4.0),
          Oscillator(3, {.wave = UserWave(5), .volume = 0.25, .semitones = 7.0}),
          Swell(0.5, 1.0, 0.45),
          PhaserSweep(0.7, 0.6, 0.15),
          {FmAmount, 0.1},
          {FilterTransition, 0.0},
          {Volume, 0.4},
          {Osc3LfoTempoSync, ChoiceValue(1, 9)},
          {OscLfoPanAmount3, 0.7}}},
        {"Delirium Pad",
         Reset,
         {ConcertPitch(),
          Pair(Wave(Waveform::Pyrokinesis), 0.5, 16.0),
          Oscillator(3, {.wave = Wave(Waveform::SReceptor),
                         .volume = 0.3,
                         .semitones = -12.0,
                         .lfoBeat = Beat::Quarter,
                         .lfoToFilter = 0.8,
                         .lfoToPan = 0.8}),
          Swell(0.35, 0.9, 0.5),
          {OscModFrequency1, LfoHz(0.9)},
          {Osc1LfoLinkAll, 1.0},
          {OscFreqModAmount1, 0.2},
          {OscFreqModAmount2, 0.25},
          RingModulation(RingWave::Saw, 2.0, 0.2),
          PhaserSweep(0.5, 0.5, 0.0),
          {PhaserTempoSync, ChoiceValue(3, 9)}}},
    };
}

} // namespace Grimworks
