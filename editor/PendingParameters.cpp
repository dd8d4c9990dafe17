#include "editor/PendingParameters.h"

#include <cmath>

namespace Grimworks {

void PendingParameters::Put(int id, double normalized) {
    if (!IsId(id) || std::isnan(normalized)) return;
    Slot& slot = slots[static_cast<std::size_t>(id)];
    double none = std::numeric_limits<double>::quiet_NaN();
    if (std::isnan(slot.firstValue.load())) slot.firstValue.compare_exchange_strong(none, normalized);
    slot.lastValue.store(normalized);
    slot.pending.store(true);
    any.store(true);
}

bool PendingParameters::TakeAny() {
    return any.load() && any.exchange(false);
}

bool PendingParameters::Take(int id, double& last, bool& first, double& firstValue) {
    if (!IsId(id)) return false;
    Slot& slot = slots[static_cast<std::size_t>(id)];
    if (!slot.pending.load() || !slot.pending.exchange(false)) return false;
    last = slot.lastValue.load();
    firstValue = slot.firstValue.load();
    first = !slot.taken;
    slot.taken = true;
    return true;
}

} // namespace Grimworks
