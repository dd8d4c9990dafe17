#pragma once

namespace Grimworks {

/// What an oscillator's parameters are; the three oscillators share one layout. Tune is the fine knob of one
/// semitone each way, Pitch the coarse one of an octave each way, FilterBalance the cross-fade between the
/// left and the right filter.
enum class OscParam : int {
    OnOff = 0,
    Waveform = 1,
    Phase = 2,
    Tune = 3,
    Volume = 4,
    Saturation = 5,
    Pan = 6,
    Pitch = 7,
    FilterBalance = 8,
    FilterCutoff = 9,
    FilterResonance = 10,
    FilterTypeLeft = 11,
    FilterTypeRight = 12,
    LfoRate = 13,
    LfoLinkAll = 14,
    LfoTempoSync = 15,
    LfoMode = 16,
    LfoToVolume = 17,
    LfoToTune = 18,
    LfoToFilter = 19,
    LfoToPan = 20,
};

inline constexpr int kOscParams = 21;

/// Parameter id of an oscillator's parameter; oscillator is 0, 1 or 2.
[[nodiscard]] constexpr int Osc(int oscillator, OscParam parameter) {
    return oscillator * kOscParams + static_cast<int>(parameter);
}

/// Ids of the parameters that exist once. Hosts, projects and program files know parameters by these numbers:
/// they never change. Ids 140 to 158 are reserved.
namespace Param {
enum Id : int {
    EnvAttack = 63,
    EnvDecay = 64,
    EnvSustain = 65,
    EnvRelease = 66,
    EnvDuration = 67,
    EnvVelocity = 68,
    EnvAmount = 69,
    FilterAttack = 70,
    FilterDecay = 71,
    FilterSustain = 72,
    FilterRelease = 73,
    FilterDuration = 74,
    FilterEnvVelocity = 75,
    FilterEnvAmount = 76,
    FilterEnvToDistortion = 77,
    FilterEnvToDynShaper = 78,
    AdsrShape = 79,
    BassLayerAmount = 80,
    BassLayerSolo = 81,
    BassLayerToFilter = 82,
    BassLayerToFm = 83,
    BassLayerClick = 84,
    GlobalTranspose = 85,
    NoteTransposeMode = 86,
    PitchBendRange = 87,
    PitchOnOff = 88,
    PitchAmount = 89,
    PitchDuration = 90,
    PitchPower = 91,
    PitchDown = 92,
    UnisonVoices = 93,
    UnisonDetune = 94,
    FmAmount = 95,
    BassAmount = 96,
    MidAmount = 97,
    HighAmount = 98,
    DumpExpand = 99,
    DistortionOnOff = 100,
    Distortion = 101,
    DistortionType = 102,
    DistortionLoudness = 103,
    DistortionInterpMode = 104,
    DynShaper = 105,
    DynShaperInvert = 106,
    DynShaperType = 107,
    DynShaperMode = 108,
    DynShaperPosNegBoth = 109,
    Quantization = 110,
    SampleRate = 111,
    Gate = 112,
    FilterOnOff = 113,
    FilterInputDrive = 114,
    FilterType = 115,
    FilterCutoff = 116,
    FilterResonance = 117,
    FilterMode1 = 118,
    FilterMode2 = 119,
    FilterTransition = 120,
    ModulationOnOff = 121,
    RingModulationAmount = 122,
    RingModulationFrequency = 123,
    RingModulationWaveForm = 124,
    PhaserDepth = 125,
    PhaserFeedback = 126,
    PhaserRate = 127,
    TempoDelayAmount = 128,
    TempoDelayFeedback = 129,
    TempoDelayDump = 130,
    TempoDelaySpread = 131,
    BypassFX = 132,
    LimiterMode = 133,
    Pan = 134,
    Saturation = 135,
    DryWet = 136,
    Volume = 137,
    LimiterLevel = 138,
    PhaserTempoSync = 139,
    FirstReserved = 140,
};
} // namespace Param

} // namespace Grimworks
