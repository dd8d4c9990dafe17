#pragma once

#include "editor/IControl.h"

namespace Grimworks {

/// A bitmap whose frame follows the value. Without a parameter it is a picture.
class IBitmapControl : public IControl {
public:
    /// At x, y, of one frame's size. `blendMethod` is one of IChannelBlend.
    IBitmapControl(IPlugBase* plugBase, int x, int y, int parameter, const IBitmap& strip,
                   int blendMethod = IChannelBlend::BlendNone);

    bool Draw(IGraphics& canvas) override;

    [[nodiscard]] const IBitmap& Bitmap() const { return bitmap; }

protected:
    IBitmap bitmap;
};

/// A button of as many states as its bitmap has frames; each click goes to the next one, from the last back
/// to the first.
class ISwitchControl : public IBitmapControl {
public:
    using IBitmapControl::IBitmapControl;

    void OnMouseDown(int x, int y, const IMouseMod& mod) override;
    /// Another step, like any click.
    void OnMouseDblClick(int x, int y, const IMouseMod& mod) override;
};

/// A button that springs back when the mouse lets go. What it does is told by the classes built on it, which
/// put the value to 1 on mouse down.
class IContactControl : public ISwitchControl {
public:
    IContactControl(IPlugBase* plugBase, int x, int y, int parameter, const IBitmap& strip,
                    int blendMethod = IChannelBlend::BlendNone);

    void OnMouseUp(int x, int y, const IMouseMod& mod) override;
};

} // namespace Grimworks
