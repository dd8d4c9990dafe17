#pragma once

#include "core/AudioProcessingUnit.h"

#include <span>
#include <vector>

namespace Grimworks {

/// One stored sample, read by time in seconds with linear interpolation: its length and pitch do not depend
/// on the host's sample rate. Filled at construction, read-only on the audio thread.
class Sampler final : public AudioProcessingUnit {
public:
    /// Copies the samples, which were taken at `rate` Hz. A rate that is not above 0 changes nothing.
    void Load(std::span<const double> samples, double rate);

    /// The sample at this time; 0 before its start, from its end on and for NaN.
    [[nodiscard]] double Value(double seconds) const {
        if (!(seconds >= 0.0 && seconds < duration)) return 0.0;
        const double position = seconds * sourceRate;
        const std::size_t last = data.size() - 1;
        const auto whole = static_cast<std::size_t>(position);
        // The product may round up to the length just before the end.
        const std::size_t k = whole < last ? whole : last;
        const double f = position - static_cast<double>(k);
        return (1.0 - f) * data[k] + f * data[k < last ? k + 1 : last];
    }

    /// Seconds from the first sample to the end.
    [[nodiscard]] double Duration() const { return duration; }

private:
    std::vector<double> data;
    double duration = 0.0;
    double sourceRate = kDefaultSampleRate; ///< Hz
};

} // namespace Grimworks
