#include "patches/BankSections.h"
#include "patches/Ingredients.h"

namespace Grimworks {

namespace {

using namespace ProgramKey;

/// A body that dies away within so many seconds, bright for the first of them; `dark` is what is left of the
/// brightness then.
Settings Body(double shape, double seconds, double brightSeconds, double dark) {
    return Envelopes(shape, {0.001, seconds, 0.0, 0.04}, {0.0, brightSeconds, dark, 0.04});
}

/// The body of a drum machine: a plain wave that starts at its zero crossing.
Settings Skin(Waveform::Index wave, double volume) {
    return Oscillator(1, {.wave = Wave(wave), .volume = volume});
}

/// A puff of noise on top that closes with the filter envelope.
Settings Puff(Waveform::Index noise, double volume) {
    return Oscillator(2, {.wave = Wave(noise), .volume = volume, .cutoff = 0.9});
}

} // namespace

Recipes BasicKickRecipes() {
    return {
        // The first one is what a record holds from birth; see MakeFactoryBank.
        {"Basic Bass Drum 1", Reset, {}},
        {"Basic Bass Drum 2 (soft)",
         Reset,
         {KickOnF(), Skin(Waveform::Sine, 1.0), Body(0.5, 0.45, 0.3, 0.15), PitchSweep(0.12, 0.12, 0.5)}},
        {"Basic Bass Drum 3 (click)",
         Reset,
         {KickOnFSharp(), Skin(Waveform::Sine, 0.95), Body(0.5, 0.5, 0.2, 0.12), PitchSweep(0.3, 0.2, 0.6),
          Click(0.56)}},
        {"Basic Kick Drum 1",
         Reset,
         {KickOnG(), Skin(Waveform::Triangle, 1.0), Body(0.4, 0.35, 0.12, 0.1), PitchSweep(0.35, 0.25, 0.8)}},
        {"Basic Kick Drum 2",
         Reset,
         {KickOnGSharp(), Skin(Waveform::Trapez, 0.8), Body(0.35, 0.3, 0.06, 0.08),
          PitchSweep(0.5, 0.18, 0.55), Click(0.34)}},
        {"Electronic Kick",
         Reset,
         {{OscWaveform1, 0.125},
          {OscVolume1, 0.75},
          {Osc1LfoTempoSync, 0.555556},
          {Osc2LfoTempoSync, 0.555556},
          {Osc3LfoTempoSync, 0.555556},
          {EnvAttack, 0.0},
          {EnvDecay, 1.0},
          {EnvSustain, 0.0},
          {EnvRelease, 0.025},
          {FilterAttack, 0.0},
          {FilterDecay, 0.25},
          {FilterSustain, 0.05},
          {FilterRelease, 0.025},
          {AdsrShape, 0.8},
          {BassLayerAmount, 0.25},
          {BassLayerClick, 0.2},
          {NoteTransposeMode, 0.555556},
          {PitchAmount, 0.4},
          {PitchDuration, 0.24},
          {PitchPower, 1.0},
          {DistortionType, 0.487805}}},
        {"Tight Kick by Marl-404",
         Reset,
         {KickOnG(), Skin(Waveform::Triangle, 1.0), Body(0.6, 0.17, 0.05, 0.2), PitchSweep(0.55, 0.1, 0.7),
          Click(0.78), Distort(Curve("Soft-Knee Compressor"), 0.5), Equalize(2.0, -3.0, 2.0)}},
        {"Laser Kick",
         Reset,
         {KickOnF(),
          Skin(Waveform::Sawtooth, 0.9),
          Body(0.5, 0.55, 0.4, 0.25),
          PitchSweep(1.0, 0.45, 0.28),
          Filter2("Chebyshev LowPass 12dB", 5200.0, 0.3),
          {Saturation, 0.12}}},
        {"Pulse Beat",
         Reset,
         {KickOnFSharp(),
          Oscillator(1, {.wave = Wave(Waveform::Pulse),
                         .volume = 0.75,
                         .lfoBeat = Beat::Eight,
                         .lfoShape = LfoShape::Inverted,
                         .lfoToVolume = 0.6}),
          Body(0.7, 0.5, 0.35, 0.1), PitchSweep(0.3, 0.16, 0.9)}},
        {"Oldschool Bass Drum 1",
         Reset,
         {KickOnG(), Skin(Waveform::Sine, 1.0), Puff(Waveform::PinkNoize, 0.35), Body(0.3, 0.5, 0.05, 0.07),
          PitchSweep(0.22, 0.3, 0.7), Distort(Curve("Warm Saturation"), 0.4)}},
        {"Oldschool Bass Drum 2",
         "Oldschool Bass Drum 1",
         {KickOnFSharp(), Skin(Waveform::Triangle, 1.0), PitchSweep(0.4, 0.22, 0.45), Click(0.67),
          Distort(Curve("Compressor"), 0.8)}},
        {"Oldschool Bass Drum 3",
         Reset,
         {KickOnF(),
          Skin(Waveform::Sine, 1.0),
          Body(0.7, 0.9, 0.5, 0.2),
          PitchSweep(0.1, 0.35, 0.9),
          {OscSat1, 0.14},
          SubLayer(0.2, 0.22)}},
        {"Oldschool Bass Drum 4",
         "Oldschool Bass Drum 3",
         {Skin(Waveform::XTrapez, 0.85),
          Puff(Waveform::WhiteNoize, 0.3),
          Body(0.45, 0.6, 0.12, 0.09),
          PitchSweep(0.28, 0.5, 0.6),
          {Saturation, 0.1}}},
        {"Oldschool Bass Drum 5",
         Reset,
         {DrumBody(),
          Skin(Waveform::Triangle, 1.0),
          Body(0.9, 0.4, 0.2, 0.14),
          PitchSweep(0.2, 0.28, 0.35),
          {PitchDown, 0.3},
          Distort(Curve("Limiter"), 0.5),
          Click(0.45)}},
    };
}

} // namespace Grimworks
