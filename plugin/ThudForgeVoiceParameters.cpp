#include "core/Choice.h"
#include "core/TempoSync.h"
#include "plugin/ThudForge.h"
#include "voice/NoteMode.h"

#include <array>

namespace Grimworks {

namespace {

/// The setters of an envelope's first five parameters: attack, decay, sustain, release, duration. Null
/// behind.
EnvelopeSetter EnvelopeSetterOf(int offset) {
    constexpr std::array<EnvelopeSetter, 5> kSetters{
        &EnvelopeGenerator::SetAttack, &EnvelopeGenerator::SetDecay, &EnvelopeGenerator::SetSustain,
        &EnvelopeGenerator::SetRelease, &EnvelopeGenerator::SetDuration};
    return offset < 5 ? kSetters[static_cast<std::size_t>(offset)] : nullptr;
}

} // namespace

void ThudForge::ApplyVoiceParameter(int id, double value) {
    values[id] = value;
    if (id < Param::EnvAttack) {
        ApplyOscillatorParameter(id / kOscParams, static_cast<OscParam>(id % kOscParams), value);
        return;
    }
    if (id <= Param::AdsrShape) {
        ApplyEnvelopeParameter(id, value);
        return;
    }
    switch (id) {
    case Param::GlobalTranspose:
        values.transposeRatio = PitchRatio(value);
        voices.SetGlobalTranspose(values.transposeRatio);
        break;
    case Param::PitchBendRange:
        voices.SetBendRange(PitchBendSemitones(value));
        break;
    case Param::PitchOnOff:
        pitchEnvelope.SetOnOff(value);
        break;
    case Param::PitchAmount:
        pitchEnvelope.SetAmount(value);
        break;
    case Param::PitchDuration:
        pitchEnvelope.SetDuration(value);
        break;
    case Param::PitchPower:
        pitchEnvelope.SetPower(value);
        break;
    case Param::PitchDown:
        pitchEnvelope.SetDown(value);
        break;
    case Param::UnisonVoices:
        voices.SetUnisonVoices(value);
        break;
    case Param::UnisonDetune:
        voices.SetUnisonDetune(value);
        break;
    case Param::FmAmount:
        voices.SetFmAmount(value);
        break;
    default:
        break; // read straight from the values by voices and callback
    }
}

void ThudForge::ApplyOscillatorParameter(int oscillator, OscParam parameter, double value) {
    switch (parameter) {
    case OscParam::Waveform:
        voices.SetWaveform(oscillator, value);
        break;
    case OscParam::Tune:
        voices.SetOscTune(oscillator, value);
        break;
    case OscParam::Pitch:
        voices.SetOscPitch(oscillator, value);
        break;
    case OscParam::FilterTypeLeft:
        voices.SetFilterTypeLeft(oscillator, value);
        break;
    case OscParam::FilterTypeRight:
        voices.SetFilterTypeRight(oscillator, value);
        break;
    case OscParam::LfoRate:
        ApplyLfoRate(oscillator, value);
        break;
    case OscParam::LfoLinkAll:
        ApplyLfoLink(oscillator, value);
        break;
    case OscParam::LfoTempoSync:
        ApplyLfoTempoSync(oscillator, value);
        break;
    case OscParam::LfoMode:
        voices.SetLfoMode(oscillator, value);
        break;
    default:
        break; // read straight from the values by the voices
    }
}

/// A rate is passed on to the other LFOs only by the one oscillator whose link alone is set, so the passing
/// ends with them.
void ThudForge::ApplyLfoRate(int oscillator, double value) {
    voices.SetLfoRate(oscillator, value);
    for (int other = 0; other < kOscillators; ++other) {
        const bool linked = values[Osc(other, OscParam::LfoLinkAll)] >= 0.5;
        if (linked != (other == oscillator)) return;
    }
    for (int other = 0; other < kOscillators; ++other) {
        if (other != oscillator) SetParameterFromPlug(Osc(other, OscParam::LfoRate), value);
    }
}

void ThudForge::ApplyLfoLink(int oscillator, double value) {
    if (!(value > 0.0)) return;
    for (int other = 0; other < kOscillators; ++other) {
        const int link = Osc(other, OscParam::LfoLinkAll);
        if (other != oscillator && values[link] > 0.0) SetParameterFromPlug(link, 0.0);
    }
}

void ThudForge::ApplyLfoTempoSync(int oscillator, double value) {
    const int division = TempoDivisionIndex(value);
    if (division == 0) return;
    const double factor = kTempoDivisions[static_cast<std::size_t>(division)].factor;
    SetParameterFromPlug(Osc(oscillator, OscParam::LfoRate), TempoSyncedRate(GetTempo(), factor));
}

/// The shape knob is asymmetric: the voices' filter envelopes keep their curve and take their time base from
/// it, while both displays bend.
void ThudForge::ApplyEnvelopeParameter(int id, double value) {
    if (id == Param::AdsrShape) {
        voices.SetShape(value);
        volumeDisplay.SetShape(value);
        filterDisplay.SetShape(value);
        return;
    }
    const bool isFilter = id >= Param::FilterAttack;
    const EnvelopeSetter setter = EnvelopeSetterOf(id - (isFilter ? Param::FilterAttack : Param::EnvAttack));
    if (setter == nullptr) return; // velocity and amount are read straight from the values
    if (isFilter) {
        voices.SetFilterEnvelope(setter, value);
        (filterDisplay.*setter)(value);
    } else {
        voices.SetVolumeEnvelope(setter, value);
        (volumeDisplay.*setter)(value);
    }
}

} // namespace Grimworks
