#include "voice/WaveNames.h"

#include <array>
#include <cstddef>

namespace Grimworks {
namespace {

constexpr int kNotFound = -1;

/// `readsAs` is the number that the name gives when a text program is read; `oldName` is an earlier spelling
/// of the same wave, empty where there is none.
struct WaveNameRow {
    std::string_view name;
    int readsAs;
    std::string_view oldName;
};

constexpr std::array<WaveNameRow, kWaveforms> kWaveNames{{
    {"Sine", 0, ""},
    {"Sawtooth", 1, ""},
    {"Pulse", 2, ""},
    {"QuadPulse", 3, ""},
    {"OctPulse", 4, ""},
    {"Triangle", 5, ""},
    {"Trapez", 6, ""},
    {"X-Trapez", 7, ""},
    {"WhiteNoize", 8, ""},
    {"PinkNoize", kNotFound, ""},
    {"Noize", 10, ""},
    {"Low-Q Noise 1", 11, "LQ Noize 1"},
    {"Low-Q Noise 2", 12, "LQ Noize 2"},
    {"Low-Q Noise 3", 13, "LQ Noize 3"},
    {"Wave-Scape", 14, "Wavescape"},
    {"Wave-Garden", 15, ""},
    {"Wave-Vibe", 15, ""},
    {"S-Receptor", 17, ""},
    {"D-Receptor", 18, ""},
    {"Pyrokinesis", 19, ""},
    {"Shikoku", 20, ""},
    {"KIC 8462852", 21, ""},
    {"Synapsis", 22, ""},
    {"Brick-Breaker", 23, ""},
    {"Geo-Chirp", 24, ""},
    {"User1", 25, ""},
    {"User2", 26, ""},
    {"User3", 27, ""},
    {"User4", 28, ""},
    {"User5", 29, ""},
    {"User6", 30, ""},
    {"User7", 31, ""},
    {"User8", 32, ""},
    {"User9", 33, ""},
    {"User10", 34, ""},
    {"User11", 35, ""},
    {"User12", 36, ""},
    {"User13", 37, ""},
    {"User14", 38, ""},
    {"User15", 39, ""},
    {"User16", 40, ""},
}};

} // namespace

std::string_view GetWaveName(int index) {
    const bool known = index >= 0 && index < kWaveforms;
    return kWaveNames[known ? static_cast<std::size_t>(index) : 0].name;
}

int GetWaveIndex(std::string_view name) {
    if (name.empty()) return 0;
    for (const WaveNameRow& row : kWaveNames) {
        if (row.readsAs != kNotFound && (name == row.name || name == row.oldName)) return row.readsAs;
    }
    return 0;
}

} // namespace Grimworks
