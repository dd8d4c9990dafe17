#include "core/ParameterTable.h"

#include <algorithm>
#include <cstdio>

namespace Grimworks {

// clang-format off
constexpr std::array<ParameterInfo, kLiveParameters> kParameterTable{{
    // id, key, name, step, max, label, group, reset value, constructor value
    {0, "Osc1OnOff", "Oscillator 1 On/Off", 1.0, 1.0, "", "Oscillator 1", 1.0, 1.0},
    {1, "OscWaveform1", "Osc1 Waveform", 0.001, 1.0, "", "Oscillator 1", 0.0, 0.0},
    {2, "OscPhase1", "Osc1 Start Phase", 0.001, 1.0, "", "Oscillator 1", 0.5, 0.5},
    {3, "OscFreq1", "Osc1 Tune", 0.001, 1.0, "", "Oscillator 1", 0.5, 0.5},
    {4, "OscVolume1", "Osc1 Volume", 0.001, 1.0, "", "Oscillator 1", 1.0, 0.3},
    {5, "OscSat1", "Osc1 Saturation", 0.001, 1.0, "", "Oscillator 1", 0.0, 0.0},
    {6, "OscPan1", "Osc1 Pan", 0.001, 1.0, "", "Oscillator 1", 0.5, 0.5},
    {7, "OscPitch1", "Osc1 Pitch", 0.001, 1.0, "", "Oscillator 1", 0.5, 0.5},
    {8, "OscFilterType1", "Osc1 Filter Balance", 0.001, 1.0, "", "Oscillator 1", 0.0, 0.0},
    {9, "OscFilterCutoff1", "Osc1 Filter Cutoff", 0.001, 1.0, "", "Oscillator 1", 1.0, 1.0},
    {10, "OscFilterResonance1", "Osc1 Filter Rezo", 0.001, 1.0, "", "Oscillator 1", 0.0, 0.0},
    {11, "OscFilterType1Left", "Osc1 Filter Type Left", 0.2, 1.0, "", "Oscillator 1", 0.0, 0.0},
    {12, "OscFilterType1Right", "Osc1 Filter Type Right", 0.2, 1.0, "", "Oscillator 1", 0.75, 0.75},
    {13, "OscModFrequency1", "Osc1 LFO1 Freq.", 0.001, 1.0, "Hz", "Oscillator 1", 0.0, 0.05},
    {14, "Osc1LfoLinkAll", "Link All LFOs To LFO1", 0.001, 1.0, "", "Oscillator 1", 0.0, 0.0},
    {15, "Osc1LfoTempoSync", "Osc1 LFO1 Tempo Sync", 0.1, 1.0, "", "Oscillator 1", 0.0, 0.0},
    {16, "Osc1LfoMode", "Osc1 LFO1 Waveform", 0.001, 1.0, "", "Oscillator 1", 0.0, 0.0},
    {17, "OscLfoVolumeAmount1", "Osc1 LFO1 to Volume", 0.001, 1.0, "", "Oscillator 1", 0.0, 0.0},
    {18, "OscFreqModAmount1", "Osc1 LFO1 to Tune", 0.001, 1.0, "", "Oscillator 1", 0.0, 0.0},
    {19, "OscFiltModAmount1", "Osc1 LFO1 to Filter", 0.001, 1.0, "", "Oscillator 1", 0.0, 0.0},
    {20, "OscLfoPanAmount1", "Osc1 LFO1 to Pan", 0.001, 1.0, "", "Oscillator 1", 0.0, 0.0},
    {21, "Osc2OnOff", "Oscillator 2 On/Off", 1.0, 1.0, "", "Oscillator 2", 0.0, 1.0},
    {22, "OscWaveform2", "Osc2 Waveform", 0.001, 1.0, "", "Oscillator 2", 0.0, 0.0},
    {23, "OscPhase2", "Osc2 Start Phase", 0.001, 1.0, "", "Oscillator 2", 0.5, 0.5},
    {24, "OscFreq2", "Osc2 Tune", 0.001, 1.0, "", "Oscillator 2", 0.5, 0.55},
    {25, "OscVolume2", "Osc2 Volume", 0.001, 1.0, "", "Oscillator 2", 1.0, 0.3},
    {26, "OscSat2", "Osc2 Saturation", 0.001, 1.0, "", "Oscillator 2", 0.0, 0.0},
    {27, "OscPan2", "Osc2 Pan", 0.001, 1.0, "", "Oscillator 2", 0.5, 0.5},
    {28, "OscPitch2", "Osc2 Pitch", 0.001, 1.0, "", "Oscillator 2", 0.5, 0.5},
    {29, "OscFilterType2", "Osc2 Filter Balance", 0.001, 1.0, "", "Oscillator 2", 0.0, 0.0},
    {30, "OscFilterCutoff2", "Osc2 Filter Cutoff", 0.001, 1.0, "", "Oscillator 2", 1.0, 1.0},
    {31, "OscFilterResonance2", "Osc2 Filter Rezo", 0.001, 1.0, "", "Oscillator 2", 0.0, 0.0},
    {32, "OscFilterType2Left", "Osc2 Filter Type Left", 0.2, 1.0, "", "Oscillator 2", 0.0, 0.0},
    {33, "OscFilterType2Right", "Osc2 Filter Type Right", 0.2, 1.0, "", "Oscillator 2", 0.75, 0.25},
    {34, "OscModFrequency2", "Osc2 LFO2 Freq.", 0.001, 1.0, "Hz", "Oscillator 2", 0.0, 0.05},
    {35, "Osc2LfoLinkAll", "Link All LFOs To LFO2", 0.001, 1.0, "", "Oscillator 2", 0.0, 0.0},
    {36, "Osc2LfoTempoSync", "Osc2 LFO2 Tempo Sync", 0.1, 1.0, "", "Oscillator 2", 0.0, 0.0},
    {37, "Osc2LfoMode", "Osc2 LFO2 Waveform", 0.001, 1.0, "", "Oscillator 2", 0.0, 0.0},
    {38, "OscLfoVolumeAmount2", "Osc2 LFO2 to Volume", 0.001, 1.0, "", "Oscillator 2", 0.0, 0.0},
    {39, "OscFreqModAmount2", "Osc2 LFO2 to Tune", 0.001, 1.0, "", "Oscillator 2", 0.0, 0.0},
    {40, "OscFiltModAmount2", "Osc2 LFO2 to Filter", 0.001, 1.0, "", "Oscillator 2", 0.0, 0.0},
    {41, "OscLfoPanAmount2", "Osc2 LFO2 to Pan", 0.001, 1.0, "", "Oscillator 2", 0.0, 0.0},
    {42, "Osc3OnOff", "Oscillator 3 On/Off", 1.0, 1.0, "", "Oscillator 3", 0.0, 1.0},
    {43, "OscWaveform3", "Osc3 Waveform", 0.001, 1.0, "", "Oscillator 3", 0.0, 0.0},
    {44, "OscPhase3", "Osc3 Start Phase", 0.001, 1.0, "", "Oscillator 3", 0.5, 0.5},
    {45, "OscFreq3", "Osc3 Tune", 0.001, 1.0, "", "Oscillator 3", 0.5, 0.45},
    {46, "OscVolume3", "Osc3 Volume", 0.001, 1.0, "", "Oscillator 3", 1.0, 0.3},
    {47, "OscSat3", "Osc3 Saturation", 0.001, 1.0, "", "Oscillator 3", 0.0, 0.0},
    {48, "OscPan3", "Osc3 Pan", 0.001, 1.0, "", "Oscillator 3", 0.5, 0.5},
    {49, "OscPitch3", "Osc3 Pitch", 0.001, 1.0, "", "Oscillator 3", 0.5, 0.5},
    {50, "OscFilterType3", "Osc3 Filter Balance", 0.001, 1.0, "", "Oscillator 3", 0.0, 0.0},
    {51, "OscFilterCutoff3", "Osc3 Filter Cutoff", 0.001, 1.0, "", "Oscillator 3", 1.0, 1.0},
    {52, "OscFilterResonance3", "Osc3 Filter Rezo", 0.001, 1.0, "", "Oscillator 3", 0.0, 0.0},
    {53, "OscFilterType3Left", "Osc3 Filter Type Left", 0.2, 1.0, "", "Oscillator 3", 0.0, 0.0},
    {54, "OscFilterType3Right", "Osc3 Filter Type Right", 0.2, 1.0, "", "Oscillator 3", 0.75, 0.75},
    {55, "OscModFrequency3", "Osc3 LFO3 Freq.", 0.001, 1.0, "Hz", "Oscillator 3", 0.0, 0.05},
    {56, "Osc3LfoLinkAll", "Link All LFOs To LFO3", 0.001, 1.0, "", "Oscillator 3", 0.0, 0.0},
    {57, "Osc3LfoTempoSync", "Osc3 LFO3 Tempo Sync", 0.1, 1.0, "", "Oscillator 3", 0.0, 0.0},
    {58, "Osc3LfoMode", "Osc3 LFO3 Waveform", 0.001, 1.0, "", "Oscillator 3", 0.0, 0.0},
    {59, "OscLfoVolumeAmount3", "Osc3 LFO3 to Volume", 0.001, 1.0, "", "Oscillator 3", 0.0, 0.0},
    {60, "OscFreqModAmount3", "Osc3 LFO3 to Tune", 0.001, 1.0, "", "Oscillator 3", 0.0, 0.0},
    {61, "OscFiltModAmount3", "Osc3 LFO3 to Filter", 0.001, 1.0, "", "Oscillator 3", 0.0, 0.0},
    {62, "OscLfoPanAmount3", "Osc3 LFO3 to Pan", 0.001, 1.0, "", "Oscillator 3", 0.0, 0.0},
    {63, "EnvAttack", "Volume Envelope Attack", 0.001, 1.0, "s", "Volume ADSR", 0.01, 0.01},
    {64, "EnvDecay", "Volume Envelope Decay", 0.001, 1.0, "s", "Volume ADSR", 0.5, 0.5},
    {65, "EnvSustain", "Volume Envelope Sustain", 0.001, 1.0, "%", "Volume ADSR", 0.2, 0.2},
    {66, "EnvRelease", "Volume Envelope Release", 0.001, 1.0, "s", "Volume ADSR", 0.05, 0.05},
    {67, "EnvDuration", "Volume Envelope Duration", 0.001, 1.0, "s", "Volume ADSR", 0.2, 0.2},
    {68, "EnvVelocity", "Volume Envelope Velocity", 0.001, 1.0, "", "Volume ADSR", 1.0, 1.0},
    {69, "EnvAmount", "Volume Envelope Amount", 0.001, 1.0, "", "Volume ADSR", 1.0, 1.0},
    {70, "FilterAttack", "Filter Envelope Attack", 0.001, 1.0, "s", "Filter ADSR", 0.01, 0.01},
    {71, "FilterDecay", "Filter Envelope Decay", 0.001, 1.0, "s", "Filter ADSR", 0.5, 0.5},
    {72, "FilterSustain", "Filter Envelope Sustain", 0.001, 1.0, "%", "Filter ADSR", 0.2, 0.2},
    {73, "FilterRelease", "Filter Envelope Release", 0.001, 1.0, "s", "Filter ADSR", 0.05, 0.05},
    {74, "FilterDuration", "Filter Envelope Duration", 0.001, 1.0, "s", "Filter ADSR", 0.2, 0.2},
    {75, "FilterEnvVelocity", "Filter Envelope Velocity", 0.001, 1.0, "", "Filter ADSR", 1.0, 1.0},
    {76, "FilterEnvAmount", "Filter Envelope Amount", 0.001, 1.0, "", "Filter ADSR", 1.0, 1.0},
    {77, "FilterEnvToDistortion", "Filter Envelope To Distortion", 0.001, 1.0, "", "Filter ADSR", 0.0, 0.0},
    {78, "FilterEnvToDynShaper", "Filter Envelope To Dyn. Shaper", 0.001, 1.0, "", "Filter ADSR", 0.0, 0.0},
    {79, "AdsrShape", "ADSR Envelope Shape", 0.001, 1.0, "", "Volume ADSR", 0.3, 0.3},
    {80, "BassLayerAmount", "Sub-Osc Amount", 0.001, 1.259, "", "Sub-Oscillator", 0.0, 0.0},
    {81, "BassLayerSolo", "Sub-Osc Solo", 1.0, 1.0, "", "Sub-Oscillator", 0.0, 0.0},
    {82, "BassLayerToFilter", "Sub-Osc to Filter", 1.0, 1.0, "", "Sub-Oscillator", 0.0, 0.0},
    {83, "BassLayerToFm", "Sub-Osc to FM", 1.0, 1.0, "", "Sub-Oscillator", 0.0, 0.0},
    {84, "BassLayerClick", "Sub-Osc Click", 0.001, 1.0, "", "Sub-Oscillator", 0.0, 0.0},
    {85, "GlobalTranspose", "Global transpose", 0.001, 1.0, "", "Note/Transpose", 0.5, 0.5},
    {86, "NoteTransposeMode", "Note transpose mode", 0.1, 1.0, "", "Note/Transpose", 0.444444, 0.444444},
    {87, "PitchBendRange", "Pitch-Bend Range", 1.0 / 7.0, 1.0, "", "Pitch Bend", 0.166667, 0.166667},
    {88, "PitchOnOff", "Pitch Envelope On/Off", 1.0, 1.0, "", "Pitch Envelope", 1.0, 1.0},
    {89, "PitchAmount", "Pitch Amount", 0.001, 1.0, "", "Pitch Envelope", 0.0, 0.4},
    {90, "PitchDuration", "Pitch Duration", 0.001, 1.0, "", "Pitch Envelope", 0.0, 0.15},
    {91, "PitchPower", "Pitch Power", 0.001, 1.0, "", "Pitch Envelope", 0.0, 0.7},
    {92, "PitchDown", "Pitch Down", 0.001, 1.0, "", "Pitch Envelope", 0.0, 0.0},
    {93, "UnisonVoices", "Unison Voices", 0.001, 1.0, "", "Unison", 0.0, 0.0},
    {94, "UnisonDetune", "Unison Detune", 0.001, 1.0, "", "Unison", 0.125, 0.0},
    {95, "FmAmount", "FM 1.00 carrier amount", 0.001, 1.0, "", "FM Modulation", 0.0, 0.0},
    {96, "BassAmount", "EQ Bass Range", 0.001, 1.0, "", "3-Band Equalizer", 0.5, 0.5},
    {97, "MidAmount", "EQ Mid Range", 0.001, 1.0, "", "3-Band Equalizer", 0.5, 0.5},
    {98, "HighAmount", "EQ High Range", 0.001, 1.0, "", "3-Band Equalizer", 0.5, 0.5},
    {99, "DumpExpand", "EQ Low-Pass/High-Pass Filter", 0.001, 1.0, "", "3-Band Equalizer", 0.5, 0.5},
    {100, "DistortionOnOff", "Distortion Unit On/Off", 1.0, 1.0, "", "Distortion/Dynamic Shaper", 1.0, 1.0},
    {101, "Distortion", "Distortion Amount", 0.001, 1.0, "", "Distortion/Dynamic Shaper", 0.0, 0.0},
    {102, "DistortionType", "Distortion Type", 0.001, 1.0, "", "Distortion/Dynamic Shaper", 0.0, 0.0},
    {103, "DistortionLoudness", "Distortion Mode", 1.0 / 3.0, 1.0, "", "Distortion/Dynamic Shaper", 0.5, 0.5},
    {104, "DistortionInterpMode", "Distortion Curve Interpolation", 0.001, 1.0, "", "Distortion/Dynamic Shaper", 1.0, 1.0},
    {105, "DynShaper", "Dynamic Shaper Amount", 0.001, 1.0, "", "Distortion/Dynamic Shaper", 0.0, 0.0},
    {106, "DynShaperInvert", "Dynamic Shaper Invert Shape", 1.0, 1.0, "", "Distortion/Dynamic Shaper", 0.0, 0.0},
    {107, "DynShaperType", "Dynamic Shaper Waveform", 1.0 / 3.0, 1.0, "", "Distortion/Dynamic Shaper", 0.0, 0.0},
    {108, "DynShaperMode", "Dynamic Shaper Mode", 0.001, 1.0, "", "Distortion/Dynamic Shaper", 0.0, 0.0},
    {109, "DynShaperPosNegBoth", "Dynamic Shaper Polarity", 1.0 / 3.0, 1.0, "", "Distortion/Dynamic Shaper", 0.0, 0.0},
    {110, "Quantization", "Bit-Crash Quantization", 0.001, 1.0, "", "Distortion/Dynamic Shaper", 1.0, 1.0},
    {111, "SampleRate", "Sample-Rate Reduction", 0.001, 1.0, "", "Distortion/Dynamic Shaper", 1.0, 1.0},
    {112, "Gate", "Gate-Crack Level", 0.001, 1.0, "", "Distortion/Dynamic Shaper", 0.0, 0.0},
    {113, "FilterOnOff", "Filter Unit On/Off", 1.0, 1.0, "", "Filter FX", 1.0, 1.0},
    {114, "FilterInputDrive", "Filter Input Drive", 0.001, 1.0, "", "Filter FX", 0.0, 0.0},
    {115, "FilterType", "Filter 1/2 Balance", 0.001, 1.0, "", "Filter FX", 0.0, 0.0},
    {116, "FilterCutoff", "Filter Cutoff Frequency", 0.001, 1.0, "Hz", "Filter FX", 1.0, 1.0},
    {117, "FilterResonance", "Filter Resonance/Band-Width", 0.001, 1.0, "", "Filter FX", 0.0, 0.0},
    {118, "FilterMode1", "Filter 1 Type", 0.25, 1.0, "", "Filter FX", 0.0, 0.0},
    {119, "FilterMode2", "Filter 2 Type", 1.0 / 6.0, 1.0, "", "Filter FX", 0.0, 0.0},
    {120, "FilterTransition", "Filter FX Transition Speed", 1.0 / 3.0, 1.0, "", "Filter FX", 1.0, 1.0},
    {121, "ModulationOnOff", "Modulation Fx Unit On/Off", 1.0, 1.0, "", "Modulation FX", 0.0, 0.0},
    {122, "RingModulationAmount", "Ring Modulation Amount", 0.001, 1.0, "", "Modulation FX", 0.0, 0.0},
    {123, "RingModulationFrequency", "Ring Modulation Frequency", 0.1, 1.0, "Hz", "Modulation FX", 0.0, 0.0},
    {124, "RingModulationWaveForm", "Ring Modulation Waveform", 0.2, 1.0, "", "Modulation FX", 0.0, 0.0},
    {125, "PhaserDepth", "Phaser Depth", 0.001, 1.0, "", "Modulation FX", 0.0, 0.0},
    {126, "PhaserFeedback", "Phaser Feedback", 0.001, 1.0, "", "Modulation FX", 0.0, 0.0},
    {127, "PhaserRate", "Phaser Rate", 0.001, 1.0, "Hz", "Modulation FX", 0.0, 0.0},
    {128, "TempoDelayAmount", "Tempo Delay Amount", 0.001, 1.0, "", "Tempo Delay", 0.0, 0.0},
    {129, "TempoDelayFeedback", "Tempo Delay Feedback", 0.001, 1.0, "", "Tempo Delay", 0.0, 0.0},
    {130, "TempoDelayDump", "Tempo Delay Dump", 0.001, 1.0, "", "Tempo Delay", 1.0, 1.0},
    {131, "TempoDelaySpread", "Tempo Delay Spread", 0.001, 1.0, "", "Tempo Delay", 0.5, 0.5},
    {132, "BypassFX", "Bypass all effects", 1.0, 1.0, "", "Output", 0.0, 0.0},
    {133, "LimiterMode", "Output Limiter Mode", 0.25, 1.0, "", "Output", 1.0, 1.0},
    {134, "Pan", "Output Stereo Panning", 0.001, 1.0, "", "Output", 0.5, 0.5},
    {135, "Saturation", "Output Saturation", 0.001, 1.0, "", "Output", 0.0, 0.0},
    {136, "DryWet", "Output Dry/Wet Mix", 0.001, 1.0, "", "Output", 1.0, 1.0},
    {137, "Volume", "Output Volume", 0.001, 1.0, "", "Output", 0.705, 0.705},
    {138, "LimiterLevel", "Output Limiter Level", 0.001, 1.0, "", "Output", 0.79, 0.79},
    {139, "PhaserTempoSync", "Phaser Tempo Sync", 0.1, 1.0, "", "Modulation FX", 0.0, 0.0},
}};
// clang-format on

static_assert(std::ranges::all_of(kParameterTable, [](const ParameterInfo& row) {
    return &row - kParameterTable.data() == row.id;
}));

namespace {

bool IsLive(int id) {
    return id >= 0 && id < kLiveParameters;
}

bool IsReserved(int id) {
    return id >= Param::FirstReserved && id < kParameters;
}

std::string Numbered(const char* format, int id) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), format, id - Param::FirstReserved);
    return text.data();
}

} // namespace

std::string ReservedKey(int id) {
    return Numbered("Reserved_%2.2d", id);
}

std::string ReservedName(int id) {
    return Numbered("Reserved Parameter %2.2d", id);
}

std::string ParameterKey(int id) {
    if (IsReserved(id)) return ReservedKey(id);
    return IsLive(id) ? std::string(kParameterTable[static_cast<std::size_t>(id)].key) : std::string();
}

std::string ParameterName(int id) {
    if (IsReserved(id)) return ReservedName(id);
    return IsLive(id) ? std::string(kParameterTable[static_cast<std::size_t>(id)].name) : std::string();
}

void ResetValues(ValueBlock& values) {
    values.transposeRatio = 1.0;
    for (const ParameterInfo& row : kParameterTable)
        values[row.id] = row.resetValue;
}

void ConstructorValues(ValueBlock& values) {
    values.transposeRatio = 1.0;
    for (const ParameterInfo& row : kParameterTable)
        values[row.id] = row.constructorValue;
}

} // namespace Grimworks
