#pragma once

#include "core/Choice.h"
#include "core/Limits.h"

#include <string_view>

namespace Grimworks {

/// Waveform numbers that the engine treats in their own way. The numbers are stored in projects and program
/// files (as value = number / 40) and never change.
namespace Waveform {
enum Index : int {
    Sine = 0,
    Sawtooth = 1,
    Pulse = 2,
    QuadPulse = 3,
    OctPulse = 4,
    Triangle = 5,
    Trapez = 6,
    XTrapez = 7,
    WhiteNoize = 8,
    PinkNoize = 9,
    Noize = 10,
    LowQNoise1 = 11,
    LowQNoise2 = 12,
    LowQNoise3 = 13,
    WaveScape = 14,
    WaveGarden = 15,
    WaveVibe = 16,
    SReceptor = 17,
    DReceptor = 18,
    Pyrokinesis = 19,
    Shikoku = 20,
    Kic8462852 = 21,
    Synapsis = 22,
    BrickBreaker = 23,
    GeoChirp = 24,
    User1 = 25,
    User16 = 40,
};
} // namespace Waveform

/// Waveform number of a "Waveform" parameter value. Values outside 0..1 give numbers outside 0..40, which
/// read as silence; a NaN gives 0.
[[nodiscard]] inline int WaveformIndex(double value) {
    return Choice(value, kWaveforms - 1);
}

/// Display name of a waveform; "Sine" for a number outside 0..40.
[[nodiscard]] std::string_view GetWaveName(int index);

/// Waveform number of a name in a text program, by exact match; 0 for an unknown one. Older spellings are
/// accepted. Two names do not come back as the wave they belong to, and saved programs rely on it:
/// "PinkNoize" reads as 0 and "Wave-Vibe" as 15.
[[nodiscard]] int GetWaveIndex(std::string_view name);

} // namespace Grimworks
