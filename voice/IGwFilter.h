#pragma once

namespace Grimworks {

/// A filter that runs sample by sample with a normalised cutoff, 0..1, and resonance, 0..1.
class IGwFilter {
public:
    /// The next output.
    virtual double Process(double input, double cutoff, double resonance) = 0;
    virtual void SetSampleRate(double rate) = 0;
    virtual void SetMode(int newMode) = 0;
    /// Empties the filter.
    virtual void Reset() = 0;
    virtual ~IGwFilter() = default;

protected:
    IGwFilter() = default;
    IGwFilter(const IGwFilter&) = default;
    IGwFilter& operator=(const IGwFilter&) = default;
};

} // namespace Grimworks
