#pragma once

#include "core/Choice.h"

#include <array>

namespace Grimworks {

/// One division of the tempo-synchronised rates: its display name and the cycles it runs per beat.
struct TempoDivision {
    const char* name;
    double factor;
};

/// The divisions that the LFOs and the phaser can lock to; index 0 means no lock.
inline constexpr std::array<TempoDivision, 10> kTempoDivisions{{{"off", 0.0},
                                                                {"1/16x", 0.0625},
                                                                {"1/8x", 0.125},
                                                                {"1/4x", 0.25},
                                                                {"1/2x", 0.5},
                                                                {"1.0x", 1.0},
                                                                {"2.0x", 2.0},
                                                                {"4.0x", 4.0},
                                                                {"8.0x", 8.0},
                                                                {"16.0x", 16.0}}};

/// Division index of a "Tempo Sync" parameter value, limited to the table.
[[nodiscard]] inline int TempoDivisionIndex(double value) {
    const int index = Choice(value, static_cast<int>(kTempoDivisions.size()) - 1);
    return index < 0 ? 0 : index > 9 ? 9 : index;
}

/// The LFO rate parameter, 0..1 for 0..20 Hz, that locks to this tempo.
[[nodiscard]] inline double TempoSyncedRate(double tempo, double factor) {
    return tempo * factor / 60.0 / 20.0;
}

} // namespace Grimworks
