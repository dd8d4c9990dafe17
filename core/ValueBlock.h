#pragma once

#include "core/Limits.h"

#include <array>
#include <cstddef>

namespace Grimworks {

/// The current program as the engine reads it: one value per live parameter id, and the global transpose
/// ratio that is derived from id 85. A plain value: copying it copies a program, the ratio included. The
/// host's thread writes it under the plug-in lock, the audio thread reads it under the same lock.
struct ValueBlock {
    std::array<double, kLiveParameters> values{};
    double transposeRatio = 1.0;

    double& operator[](int id) { return values[static_cast<std::size_t>(id)]; }
    const double& operator[](int id) const { return values[static_cast<std::size_t>(id)]; }

    /// The value of a live id, 0.0 for any other.
    [[nodiscard]] double GetValue(int id) const {
        return id >= 0 && id < kLiveParameters ? values[static_cast<std::size_t>(id)] : 0.0;
    }

    friend bool operator==(const ValueBlock&, const ValueBlock&) = default;
};

} // namespace Grimworks
