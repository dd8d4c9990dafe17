#pragma once

#include <span>

namespace Grimworks {

inline constexpr int kStoredClicks = 9;
inline constexpr double kStoredClickRate = 44100.0; ///< Hz, whatever the host's rate

/// The wave cycle that is shipped with the instrument for a waveform number: 2, 3 and 5 to 7 for the plain
/// shapes, 25 to 40 for the user slots. 4096 values, or none for any other number. Read-only; any thread.
[[nodiscard]] std::span<const double> StoredWave(int waveform);

/// Attack sample 0..8 of the click layer, from low thumps to bright ticks, peak 1.0; none for any other
/// number. Read-only; any thread.
[[nodiscard]] std::span<const double> StoredClick(int index);

} // namespace Grimworks
