#pragma once

#include "core/AudioProcessingUnit.h"
#include "voice/Sampler.h"

#include <span>
#include <vector>

namespace Grimworks {

/// A row of samples that a knob cross-fades through. Filled at construction of the instrument and read-only
/// afterwards, so that one list serves all voices.
class MultiSampler final : public AudioProcessingUnit {
public:
    /// Appends a sample taken at `rate` Hz.
    void Add(std::span<const double> samples, double rate);

    /// The mix at this note time of the two samples next to `position`, 0 (the first) to 1 (the last). A
    /// position outside is limited, NaN counts as 0; an empty list gives 0.
    [[nodiscard]] double Value(double seconds, double position) const;

    [[nodiscard]] std::size_t Count() const { return samplers.size(); }

private:
    std::vector<Sampler> samplers;
};

/// The click list: a silent entry, then the given clicks in their order, all at 44100 Hz, so that the knob at
/// 0 is silence and at 1 the last click.
[[nodiscard]] MultiSampler MakeClickSamples(std::span<const std::span<const double>> clicks);

} // namespace Grimworks
