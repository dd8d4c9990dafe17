#pragma once

#include "core/ParameterIds.h"

namespace Grimworks {

/// The parameters of the oscillators by the keys that text programs know them by; those of the other
/// parameters are the names in `Param`.
namespace ProgramKey {
using namespace Param;

enum OscillatorKey : int {
    Osc1OnOff = 0,
    OscWaveform1 = 1,
    OscPhase1 = 2,
    OscFreq1 = 3,
    OscVolume1 = 4,
    OscSat1 = 5,
    OscPan1 = 6,
    OscPitch1 = 7,
    OscFilterType1 = 8,
    OscFilterCutoff1 = 9,
    OscFilterResonance1 = 10,
    OscFilterType1Left = 11,
    OscFilterType1Right = 12,
    OscModFrequency1 = 13,
    Osc1LfoLinkAll = 14,
    Osc1LfoTempoSync = 15,
    Osc1LfoMode = 16,
    OscLfoVolumeAmount1 = 17,
    OscFreqModAmount1 = 18,
    OscFiltModAmount1 = 19,
    OscLfoPanAmount1 = 20,
    Osc2OnOff = 21,
    OscWaveform2 = 22,
    OscPhase2 = 23,
    OscFreq2 = 24,
    OscVolume2 = 25,
    OscSat2 = 26,
    OscPan2 = 27,
    OscPitch2 = 28,
    OscFilterType2 = 29,
    OscFilterCutoff2 = 30,
    OscFilterResonance2 = 31,
    OscFilterType2Left = 32,
    OscFilterType2Right = 33,
    OscModFrequency2 = 34,
    Osc2LfoLinkAll = 35,
    Osc2LfoTempoSync = 36,
    Osc2LfoMode = 37,
    OscLfoVolumeAmount2 = 38,
    OscFreqModAmount2 = 39,
    OscFiltModAmount2 = 40,
    OscLfoPanAmount2 = 41,
    Osc3OnOff = 42,
    OscWaveform3 = 43,
    OscPhase3 = 44,
    OscFreq3 = 45,
    OscVolume3 = 46,
    OscSat3 = 47,
    OscPan3 = 48,
    OscPitch3 = 49,
    OscFilterType3 = 50,
    OscFilterCutoff3 = 51,
    OscFilterResonance3 = 52,
    OscFilterType3Left = 53,
    OscFilterType3Right = 54,
    OscModFrequency3 = 55,
    Osc3LfoLinkAll = 56,
    Osc3LfoTempoSync = 57,
    Osc3LfoMode = 58,
    OscLfoVolumeAmount3 = 59,
    OscFreqModAmount3 = 60,
    OscFiltModAmount3 = 61,
    OscLfoPanAmount3 = 62,
};
} // namespace ProgramKey

} // namespace Grimworks
