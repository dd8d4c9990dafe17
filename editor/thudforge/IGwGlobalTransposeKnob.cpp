#include "editor/thudforge/IGwGlobalTransposeKnob.h"

namespace Grimworks {

void IGwGlobalTransposeKnob::OnMouseDblClick(int /*x*/, int /*y*/, const IMouseMod& /*mod*/) {
    double next = 0.0;
    for (const double quarter : {0.25, 0.5, 0.75, 1.0}) {
        if (value < quarter) {
            next = quarter;
            break;
        }
    }
    value = next;
    SetDirty(true);
}

} // namespace Grimworks
