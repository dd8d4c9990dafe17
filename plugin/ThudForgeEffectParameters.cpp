#include "plugin/ThudForge.h"

#include <optional>

namespace Grimworks {

/// The two distortion stages and the two filter units each take every setting: the editor's stage must show
/// what the audio stage does, and the sub layer's filters follow those of the chain.
void ThudForge::ApplyEffectParameter(int id, double value) {
    values[id] = value;
    if (id <= Param::DumpExpand) {
        ApplyEqualizer(id, value);
    } else if (id <= Param::Gate) {
        ApplyDistortion(editorStage, id, value);
        ApplyDistortion(audioStage, id, value);
    } else if (id <= Param::FilterTransition) {
        ApplyFilterUnit(filterUnit, id, value);
        ApplyFilterUnit(bassFilterUnit, id, value);
    } else if (id <= Param::PhaserRate || id == Param::PhaserTempoSync) {
        ApplyModulation(id, value);
    } else if (id <= Param::TempoDelaySpread) {
        ApplyTempoDelay(id, value);
    } else {
        ApplyOutput(id, value);
    }
}

void ThudForge::ApplyEqualizer(int id, double value) {
    switch (id) {
    case Param::BassAmount:
        equalizer.SetBass(value);
        break;
    case Param::MidAmount:
        equalizer.SetMid(value);
        break;
    case Param::HighAmount:
        equalizer.SetHigh(value);
        break;
    default:
        dumpExpand.SetValue(value);
        bassDumpExpand.SetValue(value);
        break;
    }
}

void ThudForge::ApplyDistortion(DistortionStage& stage, int id, double value) {
    switch (id) {
    case Param::DistortionOnOff:
        stage.SetOnOff(value);
        break;
    case Param::Distortion:
        stage.SetAmount(value);
        break;
    case Param::DistortionType:
        stage.SetType(value);
        break;
    case Param::DistortionLoudness:
        stage.SetMode(value);
        break;
    case Param::DistortionInterpMode:
        stage.SetInterpolation(value);
        break;
    case Param::DynShaper:
        stage.SetShaperAmount(value);
        break;
    case Param::DynShaperInvert:
        stage.SetShaperInvert(value);
        break;
    case Param::DynShaperType:
        stage.SetShaperWaveform(value);
        break;
    case Param::DynShaperMode:
        stage.SetShaperMode(value);
        break;
    case Param::DynShaperPosNegBoth:
        stage.SetShaperPolarity(value);
        break;
    case Param::Quantization:
        stage.SetQuantization(value);
        break;
    case Param::SampleRate:
        stage.SetSampleRateReduction(value);
        break;
    default:
        stage.SetGate(value);
        break;
    }
}

void ThudForge::ApplyFilterUnit(FilterUnit& unit, int id, double value) {
    switch (id) {
    case Param::FilterOnOff:
        unit.SetOnOff(value);
        break;
    case Param::FilterInputDrive:
        unit.SetDrive(value);
        break;
    case Param::FilterType:
        unit.SetBalance(value);
        break;
    case Param::FilterCutoff:
        unit.SetCutoff(value);
        break;
    case Param::FilterResonance:
        unit.SetResonance(value);
        break;
    case Param::FilterMode1:
        unit.SetFilter1Type(value);
        break;
    case Param::FilterMode2:
        unit.SetFilter2Type(value);
        break;
    default:
        unit.SetTransition(value);
        break;
    }
}

void ThudForge::ApplyModulation(int id, double value) {
    switch (id) {
    case Param::ModulationOnOff:
        ringModulator.SetBypass(value == 0.0);
        phaser.SetBypass(value == 0.0);
        break;
    case Param::RingModulationAmount:
        ringModulator.SetAmount(value);
        break;
    case Param::RingModulationFrequency:
        ringModulator.SetFrequency(value);
        break;
    case Param::RingModulationWaveForm:
        ringModulator.SetWaveform(value);
        break;
    case Param::PhaserDepth:
        phaser.SetDepth(value);
        break;
    case Param::PhaserFeedback:
        phaser.SetFeedback(value);
        break;
    case Param::PhaserRate:
        phaser.SetRate(value);
        break;
    default:
        if (const std::optional<double> rate = Phaser::SyncedRate(GetTempo(), value)) {
            SetParameterFromPlug(Param::PhaserRate, *rate);
        }
        break;
    }
}

/// Dump and spread take the occasion to read the tempo again.
void ThudForge::ApplyTempoDelay(int id, double value) {
    switch (id) {
    case Param::TempoDelayAmount:
        tempoDelay.SetAmount(value);
        break;
    case Param::TempoDelayFeedback:
        tempoDelay.SetFeedback(value);
        break;
    case Param::TempoDelayDump:
        tempoDelay.SetDump(value);
        tempoDelay.SetTempo(GetTempo());
        break;
    default:
        tempoDelay.SetSpread(value);
        tempoDelay.SetTempo(GetTempo());
        break;
    }
}

/// The rest of the output stage reads its values at audio rate.
void ThudForge::ApplyOutput(int id, double value) {
    switch (id) {
    case Param::LimiterMode:
        limiter.SetMode(value);
        break;
    case Param::Saturation:
        saturator.SetAmount(value);
        break;
    case Param::LimiterLevel:
        limiter.SetLevel(value);
        break;
    default:
        break;
    }
}

/// Leaves the tempo to the editor, which never asks the host itself.
double ThudForge::AskTempo() {
    const double tempo = GetTempo();
    shownTempo.store(tempo, std::memory_order_relaxed);
    return tempo;
}

/// Follows the host's tempo: locked LFOs stop at tempo 0, the delay alone keeps its last length.
void ThudForge::RefreshTempo() {
    for (int oscillator = 0; oscillator < kOscillators; ++oscillator) {
        const double sync = values[Osc(oscillator, OscParam::LfoTempoSync)];
        if (sync > 0.0) ApplyLfoTempoSync(oscillator, sync);
    }
    tempoDelay.SetTempo(AskTempo());
}

/// A tempo that is not a number differs from everything, so it refreshes with every block.
void ThudForge::CheckTempo() {
    const double tempo = AskTempo();
    if (tempo == lastTempo) return;
    lastTempo = tempo;
    RefreshTempo();
}

} // namespace Grimworks
