#pragma once

#include <cstdint>

namespace Grimworks {

/// What the host told of its clock. A field that it did not give, or gave a senseless value for, keeps its
/// initial value.
struct HostTime {
    std::int64_t samplePos = 0;
    double ppqPos = 0.0;      ///< quarter notes
    double tempo = 0.0;       ///< beats per minute
    double barStartPos = 0.0; ///< quarter notes
    double cycleStartPos = 0.0;
    double cycleEndPos = 0.0;
    int timeSigNumerator = 0;
    int timeSigDenominator = 0;
    bool playing = false;
    bool cycling = false;
};

} // namespace Grimworks
