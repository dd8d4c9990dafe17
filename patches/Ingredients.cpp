#include "patches/Ingredients.h"

#include <algorithm>
#include <cmath>

namespace Grimworks {

namespace {

using namespace ProgramKey;

constexpr double kDecimals = 1e6;
constexpr double kLowestCutoff = 10.0; // Hz
constexpr double kCutoffRange = 2204.0;
constexpr double kLongestStage = 5.0;    // seconds at an envelope duration of 1
constexpr double kLongestSweep = 2.0;    // seconds
constexpr double kRingRange = 4000.0;    // Hz
constexpr double kEqualizerRange = 48.0; // dB
constexpr int kNoteModes = 9;

void AddUnless(Settings& settings, int id, double value, double resetValue) {
    if (value != resetValue) settings.Add(id, Rounded(value));
}

template <typename Choices>
double ChoiceOf(Choices choice, int last) {
    return ChoiceValue(static_cast<int>(choice), last);
}

Settings NoteMode(int mode) {
    return {{NoteTransposeMode, ChoiceValue(mode, kNoteModes)}};
}

/// The stages of one envelope from the id of its attack on, as shares of `longest` seconds.
Settings Stages(int attackId, const Adsr& adsr, double longest) {
    const auto share = [longest](double seconds) { return Rounded(std::min(seconds / longest, 1.0)); };
    return {{attackId, share(adsr.attack)},
            {attackId + 1, share(adsr.decay)},
            {attackId + 2, adsr.sustain},
            {attackId + 3, share(adsr.release)}};
}

} // namespace

double Rounded(double value) {
    return std::round(value * kDecimals) / kDecimals;
}

double Cents(double cents) {
    const double turn = (std::exp2(std::fabs(cents) / 1200.0) - 1.0) / kSemitoneStep;
    return Rounded(0.5 + std::copysign(0.5 * turn, cents));
}

double FilterHz(double hz) {
    return Rounded(std::log(hz / kLowestCutoff) / std::log(kCutoffRange));
}

Settings Oscillator(int number, const OscillatorPart& part) {
    const int oscillator = number - 1;
    const auto id = [oscillator](OscParam parameter) { return Osc(oscillator, parameter); };
    Settings s;
    s.Add(id(OscParam::OnOff), 1.0);
    AddUnless(s, id(OscParam::Waveform), part.wave, 0.0);
    AddUnless(s, id(OscParam::Phase), part.phase, 0.5);
    AddUnless(s, id(OscParam::Tune), Cents(part.cents), 0.5);
    AddUnless(s, id(OscParam::Volume), part.volume, 1.0);
    AddUnless(s, id(OscParam::Saturation), part.saturation, 0.0);
    AddUnless(s, id(OscParam::Pan), part.pan, 0.5);
    AddUnless(s, id(OscParam::Pitch), Semitones(part.semitones), 0.5);
    AddUnless(s, id(OscParam::FilterBalance), part.balance, 0.0);
    AddUnless(s, id(OscParam::FilterCutoff), part.cutoff, 1.0);
    AddUnless(s, id(OscParam::FilterResonance), part.resonance, 0.0);
    AddUnless(s, id(OscParam::FilterTypeLeft), ChoiceOf(part.left, 4), 0.0);
    AddUnless(s, id(OscParam::FilterTypeRight), ChoiceOf(part.right, 4), 0.75);
    AddUnless(s, id(OscParam::LfoRate), LfoHz(part.lfoHz), 0.0);
    AddUnless(s, id(OscParam::LfoTempoSync), ChoiceOf(part.lfoBeat, 9), 0.0);
    AddUnless(s, id(OscParam::LfoMode), ChoiceOf(part.lfoShape, 4), 0.0);
    AddUnless(s, id(OscParam::LfoToVolume), part.lfoToVolume, 0.0);
    AddUnless(s, id(OscParam::LfoToTune), part.lfoToTune, 0.0);
    AddUnless(s, id(OscParam::LfoToFilter), part.lfoToFilter, 0.0);
    AddUnless(s, id(OscParam::LfoToPan), part.lfoToPan, 0.0);
    return s;
}

Settings Envelopes(double shape, const Adsr& volume, const Adsr& filter) {
    const double longest = std::min(std::max({volume.attack, volume.decay, volume.release}), kLongestStage);
    return {Stages(EnvAttack, volume, longest),
            {EnvDuration, Rounded(longest / kLongestStage)},
            Stages(FilterAttack, filter, kLongestStage * shape),
            {FilterDuration, shape},
            {AdsrShape, shape}};
}

Settings PitchSweep(double amount, double seconds, double power) {
    return {{PitchAmount, amount}, {PitchDuration, Rounded(seconds / kLongestSweep)}, {PitchPower, power}};
}

Settings KickOnF() {
    return NoteMode(3);
}
Settings KickOnFSharp() {
    return NoteMode(4);
}
Settings KickOnG() {
    return NoteMode(5);
}
Settings KickOnGSharp() {
    return NoteMode(6);
}
Settings DrumBody() {
    return NoteMode(7);
}
Settings ConcertPitch() {
    return NoteMode(1);
}
Settings OctaveUp() {
    return NoteMode(0);
}
Settings TwoOctavesUp() {
    return NoteMode(2);
}
Settings MajorArpeggio() {
    return NoteMode(8);
}
Settings MinorArpeggio() {
    return NoteMode(9);
}

Settings Distort(int curve, double amount, Drive drive) {
    return {{DistortionType, ChoiceValue(curve, kCurves - 1)},
            {Distortion, amount},
            {DistortionLoudness, ChoiceOf(drive, 2)}};
}

Settings Shaper(const ShaperPart& part) {
    return {{DynShaper, part.amount},
            {DynShaperType, ChoiceOf(part.bump, 2)},
            {DynShaperMode, ChoiceOf(part.mode, 3)},
            {DynShaperPosNegBoth, ChoiceOf(part.half, 2)},
            {DynShaperInvert, part.invert ? 1.0 : 0.0},
            {FilterEnvToDynShaper, part.fromFilterEnvelope}};
}

Settings Crush(double bits) {
    return {{Quantization, Rounded(std::sqrt((bits - 1.0) / 63.0))}};
}

Settings KeepSamples(double share) {
    return {{SampleRate, Rounded(std::cbrt(share))}};
}

Settings Filter1(std::string_view name, double hz, double q) {
    return {{FilterType, 0.0},
            {FilterMode1, ChoiceValue(Filter1Number(name), 3)},
            {FilterCutoff, FilterHz(hz)},
            {FilterResonance, Rounded((std::log2(q) + 4.0) / 8.0)}};
}

Settings Filter2(std::string_view name, double hz, double edge) {
    return {{FilterType, 1.0},
            {FilterMode2, ChoiceValue(Filter2Number(name), 5)},
            {FilterCutoff, FilterHz(hz)},
            {FilterResonance, edge}};
}

Settings RingModulation(RingWave wave, double hz, double amount) {
    return {{ModulationOnOff, 1.0},
            {RingModulationWaveForm, ChoiceOf(wave, 4)},
            {RingModulationFrequency, Rounded(hz / kRingRange)},
            {RingModulationAmount, amount}};
}

Settings PhaserSweep(double depth, double feedback, double hz) {
    return {
        {ModulationOnOff, 1.0}, {PhaserDepth, depth}, {PhaserFeedback, feedback}, {PhaserRate, LfoHz(hz)}};
}

Settings Echo(double amount, double feedback, double dump, double spread) {
    return {{TempoDelayAmount, amount},
            {TempoDelayFeedback, feedback},
            {TempoDelayDump, dump},
            {TempoDelaySpread, spread}};
}

Settings Equalize(double bassDb, double midDb, double highDb) {
    const auto knob = [](double db) { return Rounded(0.5 + db / kEqualizerRange); };
    return {{BassAmount, knob(bassDb)}, {MidAmount, knob(midDb)}, {HighAmount, knob(highDb)}};
}

Settings Unison(double detune) {
    return {{UnisonVoices, 1.0}, {UnisonDetune, detune}};
}

Settings SubLayer(double amount, double click) {
    return {{BassLayerAmount, amount}, {BassLayerClick, click}};
}

Settings Click(double click) {
    return {{BassLayerClick, click}};
}

} // namespace Grimworks
