#pragma once

#include "voice/PolyBLEP.h"

#include <array>
#include <cstdint>

namespace Grimworks {

enum class NoiseKind : std::uint8_t { None, White, Pink };

/// What an oscillator plays for one waveform index. Without live wave and noise it reads the stored ladder.
struct WaveformSelection {
    bool useBlep = false; ///< the live wave rather than the ladder
    std::uint32_t waveform = PolyBLEP::kSine;
    double pulseWidth = 0.5;
    double offset = 0.0;
    NoiseKind noiseKind = NoiseKind::None;
};

/// The indices that differ from plain table reading; the narrow pulses are moved to reach +1 and -1.
inline constexpr std::array<WaveformSelection, 10> kWaveformSelections{{
    {true, PolyBLEP::kSine, 0.5, 0.0, NoiseKind::None},
    {true, PolyBLEP::kSaw, 0.5, 0.0, NoiseKind::None},
    {true, PolyBLEP::kRectangle, 0.5, 0.0, NoiseKind::None},
    {true, PolyBLEP::kRectangle, 0.25, -0.5, NoiseKind::None},
    {true, PolyBLEP::kRectangle, 0.125, -0.75, NoiseKind::None},
    {true, PolyBLEP::kTriangle, 0.5, 0.0, NoiseKind::None},
    {},
    {},
    {false, PolyBLEP::kSine, 0.5, 0.0, NoiseKind::White},
    {false, PolyBLEP::kSine, 0.5, 0.0, NoiseKind::Pink},
}};

/// The selection for a waveform index; any index beyond the live waves and noises, also one outside the list
/// of waveforms, reads its ladder (an index without one is silent).
[[nodiscard]] constexpr WaveformSelection SelectWaveform(int index) {
    if (index < 0 || index >= static_cast<int>(kWaveformSelections.size())) return {};
    return kWaveformSelections[static_cast<std::size_t>(index)];
}

} // namespace Grimworks
