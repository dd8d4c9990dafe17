#pragma once

#include "core/Limits.h"

#include <array>
#include <memory>

namespace Grimworks {

/// One band-limited version of a wave, fit for phase increments below topFrequency (cycles per sample).
struct WaveTableLevel {
    double topFrequency = 0.0;
    std::unique_ptr<std::array<double, kWaveSize>> samples;
};

/// One wave as a ladder of band-limited levels, the richest first. A set without levels reads as silence.
/// Filled at construction of the instrument, read-only afterwards.
struct WaveTableSet {
    static constexpr int kMaxLevels = 32;

    int count = 0; ///< levels in use
    std::array<WaveTableLevel, kMaxLevels> levels;
};

} // namespace Grimworks
