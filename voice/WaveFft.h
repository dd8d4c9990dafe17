#pragma once

#include "voice/WaveCycle.h"

#include <cstdint>
#include <vector>

namespace Grimworks {

/// In-place complex FFT of one wave cycle: radix 2, decimation in time, forward sign (exp(-2 pi i k n / N)),
/// unscaled. The algorithm is the one of Cooley and Tukey (1965) with the twiddle factors of a stage by
/// recurrence; they are worked out once per object. Construction only: it allocates its tables.
class WaveFft {
public:
    WaveFft();

    /// Transforms re + i * im. Applying it twice gives the input times 4096 with the time axis reversed.
    void Transform(WaveSpan re, WaveSpan im) const;

private:
    struct Swap {
        std::uint16_t from;
        std::uint16_t to;
    };

    std::vector<Swap> swaps;         ///< bit reversal
    std::vector<double> twiddleReal; ///< stage by stage: 1, 2, 4 ... 2048 factors
    std::vector<double> twiddleImag;
};

} // namespace Grimworks
