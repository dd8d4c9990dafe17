#pragma once

#include "editor/IControl.h"

namespace Grimworks {

/// A control that is turned by dragging, up and right for more. Shift or control make it ten times finer.
class IKnobControl : public IControl {
public:
    enum Direction : int { Vertical = 0, Horizontal = 1 };

    static constexpr double kDefaultGearing = 4.0;

    /// `gearingFactor`: how many times its own size the mouse travels for the whole range; must not be 0.
    IKnobControl(IPlugBase* plugBase, const IRECT& rectangle, int parameter, int dragDirection = Vertical,
                 double gearingFactor = kDefaultGearing);

    void OnMouseDrag(int x, int y, int dX, int dY, const IMouseMod& mod) override;
    void OnMouseWheel(int x, int y, const IMouseMod& mod, int d) override;

protected:
    int direction;
    double gearing;
};

/// A knob drawn as a strip of frames.
class IKnobMultiControl : public IKnobControl {
public:
    IKnobMultiControl(IPlugBase* plugBase, int x, int y, int parameter, const IBitmap& strip,
                      int dragDirection = Vertical, double gearingFactor = kDefaultGearing);

    bool Draw(IGraphics& canvas) override;

    [[nodiscard]] const IBitmap& Bitmap() const { return bitmap; }

protected:
    IBitmap bitmap;
};

} // namespace Grimworks
