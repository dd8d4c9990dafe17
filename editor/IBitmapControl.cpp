#include "editor/IBitmapControl.h"

#include "editor/IGraphics.h"

namespace Grimworks {

namespace {

/// States that are reached by adding up steps such as 1/3 may lie a little above 1 at the last one.
constexpr double kLastState = 1.001;

} // namespace

IBitmapControl::IBitmapControl(IPlugBase* plugBase, int x, int y, int parameter, const IBitmap& strip,
                               int blendMethod)
    : IControl(plugBase, IRECT(x, y, x + strip.FrameWidth(), y + strip.FrameHeight()), parameter,
               IChannelBlend(blendMethod)),
      bitmap(strip) {}

bool IBitmapControl::Draw(IGraphics& canvas) {
    return canvas.DrawBitmapFrame(bitmap, rect, FrameOfValue(bitmap, value), blend);
}

void ISwitchControl::OnMouseDown(int /*x*/, int /*y*/, const IMouseMod& /*mod*/) {
    value += bitmap.N > 1 ? 1.0 / (bitmap.N - 1) : 1.0;
    if (value > kLastState) value = 0.0;
    SetDirty(true);
}

void ISwitchControl::OnMouseDblClick(int x, int y, const IMouseMod& mod) {
    OnMouseDown(x, y, mod);
}

/// The second press of a double click has to hold the mouse, or its release elsewhere would leave the button
/// down.
IContactControl::IContactControl(IPlugBase* plugBase, int x, int y, int parameter, const IBitmap& strip,
                                 int blendMethod)
    : ISwitchControl(plugBase, x, y, parameter, strip, blendMethod) {
    dblAsSingleClick = true;
}

void IContactControl::OnMouseUp(int /*x*/, int /*y*/, const IMouseMod& /*mod*/) {
    value = 0.0;
    SetDirty(true);
}

} // namespace Grimworks
