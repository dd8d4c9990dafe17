#pragma once

#include "core/Limits.h"

#include <array>
#include <atomic>
#include <limits>

namespace Grimworks {

/// Parameter values on their way to the controls: written by any thread without waiting, taken by the editor
/// thread. Of several values the last one stands, and the very first is kept as well, since it is what a
/// control's double click goes back to.
class PendingParameters {
public:
    /// Keeps a value; a bad id and NaN do nothing. Any thread.
    void Put(int id, double normalized);

    /// Whether anything has been put since this was last asked; cheap. Editor thread.
    [[nodiscard]] bool TakeAny();

    /// Takes the pending value of an id. `first` is true for the first one ever, and then `firstValue` is
    /// what was put first. False if nothing is pending. Editor thread.
    bool Take(int id, double& last, bool& first, double& firstValue);

private:
    struct Slot {
        std::atomic<double> firstValue{std::numeric_limits<double>::quiet_NaN()}; ///< NaN: none so far
        std::atomic<double> lastValue{0.0};
        std::atomic<bool> pending{false};
        bool taken = false; ///< the editor thread's own
    };

    static bool IsId(int id) { return id >= 0 && id < kParameters; }

    std::array<Slot, kParameters> slots;
    std::atomic<bool> any{false};
};

} // namespace Grimworks
