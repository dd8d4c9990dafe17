#pragma once

#include "core/RandomGenerator.h"
#include "voice/WaveCycle.h"
#include "voice/WaveNames.h"

#include <span>

namespace Grimworks {

/// Seed of the noise waves. Live noise goes on from where they leave the generator.
inline constexpr std::uint32_t kWaveSeed = 1800;

/// True for the waves that WriteGeneratedWaves draws: the sine and 10 to 24.
[[nodiscard]] constexpr bool IsGeneratedWave(int index) {
    return index == Waveform::Sine || (index >= Waveform::Noize && index <= Waveform::GeoChirp);
}

/// Seeds the generator and draws the sixteen computed waves into their places among all 41 cycles; the other
/// cycles stay untouched. Levels are as the formulas give them. The noise waves take their random numbers
/// sample by sample in one fixed order, which is part of their sound. Construction only.
void WriteGeneratedWaves(RandomGenerator& random, std::span<WaveCycle, kWaveforms> waves);

/// Scales the generated waves to their common peak, all but the four that are kept as computed (sine,
/// "Wave-Scape", "Wave-Vibe" and "Brick-Breaker").
void NormaliseGeneratedWaves(std::span<WaveCycle, kWaveforms> waves);

} // namespace Grimworks
