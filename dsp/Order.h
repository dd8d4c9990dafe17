#pragma once

namespace Dsp {

/// An order as the designs take it: truncated and kept within 1..maxOrder, so that whatever a sweep passes
/// through is a valid filter. Not a number gives 1.
[[nodiscard]] constexpr int OrderOf(double value, int maxOrder) {
    if (!(value >= 1.0)) return 1;
    return value >= maxOrder ? maxOrder : static_cast<int>(value);
}

} // namespace Dsp
