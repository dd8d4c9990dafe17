#pragma once

#include <vector>

namespace Grimworks::Testing {

/// Tables that are made from formulas, and their entries worked out in extended precision from the formulas
/// alone, with a generator of its own for the noise families.
[[nodiscard]] std::vector<int> ReferenceCurveTables();
[[nodiscard]] std::vector<long double> ReferenceCurve(int table);

} // namespace Grimworks::Testing
