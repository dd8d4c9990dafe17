#pragma once

#include "core/Limits.h"

#include <array>
#include <span>

namespace Grimworks {

/// One cycle of a wave at full resolution, before it is band-limited.
using WaveCycle = std::array<double, kWaveSize>;

/// The same, owned by somebody else.
using WaveSpan = std::span<double, kWaveSize>;
using ConstWaveSpan = std::span<const double, kWaveSize>;

/// The unit triangle that several waves are made of: 0 at 0, +1 at a quarter, -1 at three quarters. The phase
/// is taken from 0 up to 1.
[[nodiscard]] constexpr double UnitTriangle(double phase) {
    if (phase < 0.25) return 4.0 * phase;
    if (phase < 0.75) return 2.0 - 4.0 * phase;
    return 4.0 * (phase - 1.0);
}

} // namespace Grimworks
