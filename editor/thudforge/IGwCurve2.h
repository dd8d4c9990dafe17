#pragma once

#include "editor/IPopupMenu.h"
#include "editor/thudforge/IGwButtons.h"
#include "editor/thudforge/IGwCurve.h"

#include <span>

namespace Grimworks {

class ThudForge;

/// The distortion's curve and what it makes of a sine, drawn over each other. One of the two controls that a
/// panel has can be drawn on with the left mouse button; the right one opens the menu of curve operations.
class IGwCurve2 final : public IControl {
public:
    /// What lies in front, bright.
    enum DisplayMode : int { CurveInFront = 0, SignalInFront = 1 };

    /// `points`: how many points the width stands for. `canDraw`: the drawing of the instrument's curve gets
    /// the width of this control.
    IGwCurve2(ThudForge* instrument, const IRECT& rectangle, int points, int mode, bool canDraw);

    void OnMouseDown(int x, int y, const IMouseMod& mod) override;
    void OnMouseDrag(int x, int y, int dX, int dY, const IMouseMod& mod) override;
    bool Draw(IGraphics& canvas) override;

    /// Another display that is to be redrawn with this one; may be null.
    void SetLinkedCurve(IGwCurve2* other) { linkedCurve = other; }
    void ShowFrame(bool on) { showFrame = on; }
    void SetDisplayMode(int mode) { displayMode = mode; }
    [[nodiscard]] int GetDisplayMode() const { return displayMode; }

private:
    [[nodiscard]] double ValueAt(int y) const;
    void OpenMenu();
    void RedrawBoth();
    void DrawPoints(IGraphics& canvas, std::span<const double> points, bool bright) const;

    ThudForge* plug; ///< not owned
    bool showFrame = false;
    bool drawable;
    int displayMode;
    CurveLine line;
    IPopupMenu menu;
    IGwCurve2* linkedCurve = nullptr; ///< not owned
};

/// Brings the stock curve of the selection back.
class IGwRestoreCurveButton final : public IGwActionButton {
public:
    using IGwActionButton::IGwActionButton;

protected:
    void OnPress(const IMouseMod& mod) override;
};

} // namespace Grimworks
