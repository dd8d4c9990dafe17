#pragma once

#include "editor/IControl.h"

namespace Grimworks {

/// A handle on a straight way. The handle jumps under the mouse and follows it.
class IFaderControl : public IControl {
public:
    /// A horizontal fader at x, y, `travel` pixels long and as high as its handle.
    IFaderControl(IPlugBase* plugBase, int x, int y, int travel, int parameter, const IBitmap& handleBitmap);

    /// Lays the fader down or stands it up, with its upper left corner where it is. Upright, 0 is below.
    void SetHorizontal(bool on);

    /// Only the handle takes the mouse, not the way beside it.
    void SetOnlyHandle(bool on) { onlyHandle = on; }

    void OnMouseDown(int x, int y, const IMouseMod& mod) override;
    void OnMouseDrag(int x, int y, int dX, int dY, const IMouseMod& mod) override;
    bool Draw(IGraphics& canvas) override;
    [[nodiscard]] bool IsHit(int x, int y) const override;

    /// Puts the middle of the handle to this point.
    virtual void SnapToMouse(int x, int y);

    /// Where the handle stands now.
    [[nodiscard]] IRECT HandleRect() const;

protected:
    int length;
    int handleSize; ///< the handle's width, also along an upright way
    IBitmap handle;
    bool horizontal = true;
    bool onlyHandle = false;
};

} // namespace Grimworks
