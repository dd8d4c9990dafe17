#pragma once

#include "core/Limits.h"

#include <array>
#include <atomic>
#include <cstdint>

namespace Grimworks {

/// Parameter values on their way to the controls: written by any thread without waiting, taken by the editor
/// thread. Of several values the last one stands, and the very first is kept as well, since it is what a
/// control's double click goes back to.
class PendingParameters {
public:
    /// Keeps a value on 0..1; a bad id does nothing. Any thread.
    void Put(int id, double normalized);

    /// Whether anything has been put since the last Take of it; cheap. Editor thread.
    [[nodiscard]] bool Any() const;

    /// Takes the pending value of an id. `first` is true for the first one ever, and then `firstValue` is
    /// what was put first. False if nothing is pending. Editor thread.
    bool Take(int id, double& last, bool& first, double& firstValue);

private:
    struct Slot {
        std::atomic<double> firstValue{0.0};
        std::atomic<double> lastValue{0.0};
        std::atomic<bool> everPut{false};
        std::atomic<bool> pending{false};
    };

    std::array<Slot, kParameters> slots;
    std::atomic<bool> any{false};
    bool taken[kParameters] = {};
};

} // namespace Grimworks
