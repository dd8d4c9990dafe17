#pragma once

#include "editor/IBitmapControl.h"
#include "editor/ITextControl.h"
#include "editor/thudforge/IGwButtons.h"

namespace Grimworks {

class IGwWaveDrawer;
class ThudForge;

/// Zooms the scope in or out, by four steps at once with the right mouse button.
class IGwZoomSwitch final : public IGwActionButton {
public:
    IGwZoomSwitch(ThudForge* instrument, int x, int y, const IBitmap& strip, bool in);

protected:
    void OnPress(const IMouseMod& mod) override;

private:
    bool zoomIn;
};

/// Holds the scope's picture, and lets it go on.
class IGwFreezeButton final : public ISwitchControl {
public:
    IGwFreezeButton(ThudForge* instrument, int x, int y, const IBitmap& strip);

    void OnMouseDown(int x, int y, const IMouseMod& mod) override;

private:
    ThudForge* plug; ///< not owned
};

/// Shows one of the scope's signals, or hides it.
class IGwScopeWaveSelectionButton final : public ISwitchControl {
public:
    /// `selection`: 1, 2 and 3 for the LFOs, 4 the volume envelope, 5 the filter envelope, 6 the output.
    IGwScopeWaveSelectionButton(ThudForge* instrument, int x, int y, const IBitmap& strip,
                                IGwWaveDrawer& scope, int selection);

    void OnMouseDown(int x, int y, const IMouseMod& mod) override;

private:
    IGwWaveDrawer& drawer;
    int number;
};

/// Goes through the ways in which the scope fills its waves.
class IGwScopeHollowFilledSelectionButton final : public ISwitchControl {
public:
    IGwScopeHollowFilledSelectionButton(ThudForge* instrument, int x, int y, const IBitmap& strip,
                                        IGwWaveDrawer& scope);

    void OnMouseDown(int x, int y, const IMouseMod& mod) override;

private:
    void FollowDrawer();

    IGwWaveDrawer& drawer;
};

/// The scope's zoom in percent; the wheel turns it.
class IZoomTextControl final : public ITextControl {
public:
    IZoomTextControl(ThudForge* instrument, const IRECT& rectangle, const IText& style,
                     std::string_view first = "100 %");

    void OnMouseWheel(int x, int y, const IMouseMod& mod, int d) override;
    void OnGUIIdle() override;

private:
    ThudForge* plug; ///< not owned
};

} // namespace Grimworks
