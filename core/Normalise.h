#pragma once

#include <cmath>
#include <span>

namespace Grimworks {

/// Largest absolute value of a table; 0 for an empty one.
[[nodiscard]] inline double PeakOf(std::span<const double> table) {
    double peak = 0.0;
    for (const double v : table) {
        if (std::fabs(v) > peak) peak = std::fabs(v);
    }
    return peak;
}

/// Scales a table so that its largest absolute value is `peak`; an all-zero table stays as it is.
inline void Normalise(std::span<double> table, double peak) {
    const double largest = PeakOf(table);
    if (largest == 0.0) return;
    for (double& v : table)
        v = v / largest * peak;
}

} // namespace Grimworks
