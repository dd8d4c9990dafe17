#pragma once

#include "core/Maths.h"

#include <cmath>

namespace Grimworks {

/// Decodes a switch: floor(value * last + 0.5), the index among last + 1 choices. The value is not limited to
/// 0..1, so that each table decides what an index outside it means; it is only kept small enough for an int.
/// A NaN gives 0.
[[nodiscard]] inline int Choice(double value, int last) {
    const double limited = Clamp(value, -1000.0, 1000.0);
    if (std::isnan(limited)) return 0;
    return static_cast<int>(std::floor(limited * last + 0.5));
}

/// The same with the value limited to 0..1 first, so that the index is always one of the table.
[[nodiscard]] inline int ClampedChoice(double value, int last) {
    return Choice(Clamp(value, 0.0, 1.0), last);
}

} // namespace Grimworks
