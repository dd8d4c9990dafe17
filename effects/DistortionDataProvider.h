#pragma once

#include "core/RandomGenerator.h"
#include "effects/CurveNames.h"
#include "effects/DistortionCurve.h"

#include <vector>

namespace Grimworks {

/// The transfer curves that `Distortion` and `Saturator` start from, by table number. Made once with the
/// instrument and read-only afterwards, so every thread may read it; units copy what they let the user edit.
/// Numbers whose curve no unit can reach hold silence.
class DistortionDataProvider {
public:
    static constexpr int kTables = 82;
    static constexpr int kSoftSaturation = 79;   ///< curve of the output saturator
    static constexpr int kFilterSaturation = 81; ///< curve of the filter unit's drive

    /// Draws all tables. Seeds the generator with 1600 first, so the noise curves are the same in every run;
    /// the generator is left behind the last draw.
    explicit DistortionDataProvider(RandomGenerator& random);

    /// The table of a table number; table 0, the straight line, for a number outside 0..81.
    [[nodiscard]] const CurvePoints& GetTable(int table) const;

    /// The table of a selection number; table 0 for a number outside 1..41.
    [[nodiscard]] const CurvePoints& GetCurveData(int number) const;

private:
    std::vector<CurvePoints> tables;
};

} // namespace Grimworks
