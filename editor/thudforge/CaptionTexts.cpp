#include "editor/thudforge/CaptionTexts.h"

#include "core/Choice.h"
#include "core/NumberText.h"
#include "core/ParameterIds.h"
#include "core/TempoSync.h"
#include "effects/CurveNames.h"
#include "effects/FilterNames.h"
#include "plugin/ThudForge.h"
#include "voice/NoteMode.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <string_view>

namespace Grimworks {

namespace {

constexpr double kFastestRate = 20.0; // Hz of a rate knob at 1
constexpr double kEqualizerRange = 24.0;

template <std::size_t N>
std::string NameOf(const std::array<std::string_view, N>& names, double value) {
    return std::string(names[static_cast<std::size_t>(ClampedChoice(value, static_cast<int>(N) - 1))]);
}

std::string SecondsText(double seconds) {
    return FixedText(seconds, 3, 3) + " s";
}

/// The division that a rate is locked to, or the rate itself.
std::string RateText(double sync, double rate) {
    if (sync > 0.0) return kTempoDivisions[static_cast<std::size_t>(TempoDivisionIndex(sync))].name;
    return FixedText(rate * kFastestRate, 4, 1) + "Hz";
}

std::string WaveNumberText(double value) {
    const int number = ClampedChoice(value, kWaveforms - 1) + 1;
    return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string InterpolationText(double value) {
    switch (Choice(value, 3)) {
    case CurveInterpolation::None:
        return "[no interpolation]";
    case CurveInterpolation::Linear:
        return "[linear interpolation]";
    case CurveInterpolation::Cosine:
        return "[cosine interpolation]";
    case CurveInterpolation::Cubic:
        return "[cubic interpolation]";
    default:
        return "[unknown interpolation]";
    }
}

std::string OscillatorText(int oscillator, OscParam parameter, const ValueBlock& values) {
    const double value = values[Osc(oscillator, parameter)];
    switch (parameter) {
    case OscParam::Waveform:
        return WaveNumberText(value);
    case OscParam::FilterBalance:
        return FilterBalanceText(value);
    case OscParam::LfoTempoSync:
        return RateText(value, values[Osc(oscillator, OscParam::LfoRate)]);
    default:
        return {};
    }
}

/// `offset` from the envelope's first parameter.
std::string EnvelopeText(int offset, double value, double duration) {
    switch (offset) {
    case Param::EnvSustain - Param::EnvAttack:
        return DecibelText(value, "-oo dB");
    case Param::EnvDuration - Param::EnvAttack:
        return SecondsText(duration);
    case Param::EnvVelocity - Param::EnvAttack:
    case Param::EnvAmount - Param::EnvAttack:
        return FixedText(value, 3, 3);
    default:
        return SecondsText(value * duration);
    }
}

std::string DistortionText(int id, const CaptionSource& source) {
    constexpr std::array<std::string_view, 3> kWaveforms3{"Sine", "Triangle", "Pulse"};
    constexpr std::array<std::string_view, 4> kModes{"Shaper", "Sat.Shaper", "Boost Shaper",
                                                     "Boost+Sat.Shaper"};
    const double value = source.values[id];
    switch (id) {
    case Param::DistortionType:
        return std::string(GetCurveName(ClampedChoice(value, kCurves - 1)));
    case Param::DistortionInterpMode:
        return InterpolationText(value);
    case Param::DynShaperType:
        return NameOf(kWaveforms3, value);
    case Param::DynShaperMode:
        return NameOf(kModes, value);
    case Param::Quantization:
        return FixedText(source.crushBits, 2, 1) + "bit";
    case Param::SampleRate:
        return std::to_string(source.reducedRate) + "Hz";
    case Param::Gate:
        return DecibelText(source.gateLevel, "-oodB");
    default:
        return {};
    }
}

std::string EffectText(int id, const CaptionSource& source) {
    constexpr std::array<std::string_view, 5> kRingWaves{"Sine", "Pulse", "Saw", "Sine2", "Sine3"};
    const double value = source.values[id];
    switch (id) {
    case Param::BassAmount:
    case Param::MidAmount:
    case Param::HighAmount:
        return FixedText((value - 0.5) * 2.0 * kEqualizerRange, 3, 1) + "dB";
    case Param::DumpExpand:
        return DumpExpandText(value);
    case Param::FilterType:
        return FilterBalanceText(value);
    case Param::FilterCutoff:
        return FilterCutoffText(source.cutoff);
    case Param::FilterTransition:
        return NameOf(kFilterTransitionNames, value);
    case Param::RingModulationWaveForm:
        return NameOf(kRingWaves, value);
    case Param::PhaserTempoSync:
        return RateText(value, source.values[Param::PhaserRate]);
    default:
        return DistortionText(id, source);
    }
}

} // namespace

std::string DecibelText(double gain, std::string_view silence) {
    return gain > 0.0 ? FixedText(20.0 * std::log10(gain), 3, 1) + "dB" : std::string(silence);
}

CaptionSource::CaptionSource(const ThudForge& instrument) {
    const PlugLockGuard guard(instrument.Lock());
    values = instrument.Values();
    volumeDuration = instrument.VolumeDisplay().Duration();
    filterDuration = instrument.FilterDisplay().Duration();
    crushBits = instrument.EditorStage().CrushBits();
    reducedRate = instrument.EditorStage().ReducedRate();
    gateLevel = instrument.EditorStage().GateLevel();
    cutoff = instrument.MainFilter().CutoffFrequency(values[Param::FilterCutoff]);
    bendRange = instrument.Voices().BendRange();
    unisonVoices = instrument.Voices().Voice(0).UnisonVoices();
}

std::string CaptionText(int id, const CaptionSource& source) {
    if (id < 0 || id >= kLiveParameters) return {};
    if (id < Param::EnvAttack)
        return OscillatorText(id / kOscParams, static_cast<OscParam>(id % kOscParams), source.values);
    if (id <= Param::EnvAmount)
        return EnvelopeText(id - Param::EnvAttack, source.values[id], source.volumeDuration);
    if (id <= Param::FilterEnvAmount)
        return EnvelopeText(id - Param::FilterAttack, source.values[id], source.filterDuration);
    if (id == Param::PitchBendRange) return PitchBendRangeText(source.bendRange);
    if (id == Param::UnisonVoices) return std::to_string(source.unisonVoices);
    return EffectText(id, source);
}

/// Every text has something to say at any value.
bool HasCaptionText(int id) {
    return !CaptionText(id, CaptionSource()).empty();
}

} // namespace Grimworks
