#include "editor/thudforge/IGwTabButton.h"

#include "plugin/ThudForge.h"

namespace Grimworks {

IGwTabButton::IGwTabButton(ThudForge* instrument, int x, int y, const IBitmap& strip, int pageNumber)
    : ISwitchControl(instrument, x, y, -1, strip), plug(instrument), page(pageNumber) {
    value = plug->CurrentPage() == page ? 1.0 : 0.0;
}

void IGwTabButton::OnMouseDown(int /*x*/, int /*y*/, const IMouseMod& /*mod*/) {
    value = 1.0;
    plug->SelectPage(page);
    SetDirty(true);
}

bool IGwTabButton::IsDirty() {
    const double shown = plug->CurrentPage() == page ? 1.0 : 0.0;
    if (shown != value) {
        value = shown;
        SetDirty(false);
    }
    return dirty;
}

} // namespace Grimworks
