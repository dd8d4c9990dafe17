#pragma once

#include "editor/IBitmapControl.h"

namespace Grimworks {

class ThudForge;

/// Selects a page of the editor; down while its page is the current one.
class IGwTabButton final : public ISwitchControl {
public:
    /// `pageNumber`: 0 synth, 1 scope, 2 about.
    IGwTabButton(ThudForge* instrument, int x, int y, const IBitmap& strip, int pageNumber);

    void OnMouseDown(int x, int y, const IMouseMod& mod) override;

    /// Looks which page is the current one.
    bool IsDirty() override;

    [[nodiscard]] int Page() const { return page; }

private:
    ThudForge* plug; ///< not owned
    int page;
};

} // namespace Grimworks
