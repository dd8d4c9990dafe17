#pragma once

namespace Grimworks {

/// Where the engine asks for the host's tempo, without knowing what a host is.
class TempoSource {
public:
    virtual ~TempoSource() = default;

    /// Beats per minute; 0 when nobody tells one. May be anything a host answers, NaN included.
    [[nodiscard]] virtual double GetTempo() = 0;
};

} // namespace Grimworks
