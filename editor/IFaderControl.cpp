#include "editor/IFaderControl.h"

#include "editor/IGraphics.h"

#include <cmath>

namespace Grimworks {

IFaderControl::IFaderControl(IPlugBase* plugBase, int x, int y, int travel, int parameter,
                             const IBitmap& handleBitmap)
    : IControl(plugBase, IRECT(x, y, x + travel, y + handleBitmap.FrameHeight()), parameter), length(travel),
      handleSize(handleBitmap.FrameWidth()), handle(handleBitmap) {}

void IFaderControl::SetHorizontal(bool on) {
    horizontal = on;
    rect.R = rect.L + (on ? length : handle.FrameWidth());
    rect.B = rect.T + (on ? handle.FrameHeight() : length);
    targetRect = rect;
    SetDirty(false);
}

void IFaderControl::OnMouseDown(int x, int y, const IMouseMod& mod) {
    if (mod.R) {
        PromptUserInput();
    } else {
        SnapToMouse(x, y);
    }
}

void IFaderControl::OnMouseDrag(int x, int y, int /*dX*/, int /*dY*/, const IMouseMod& /*mod*/) {
    SnapToMouse(x, y);
}

void IFaderControl::SnapToMouse(int x, int y) {
    const double way = length - handleSize;
    if (way <= 0.0) return;
    const double middle = handleSize / 2.0;
    value = horizontal ? (x - middle - rect.L) / way : 1.0 - (y - middle - rect.T) / way;
    SetDirty(true);
}

IRECT IFaderControl::HandleRect() const {
    const double along = (length - handleSize) * (horizontal ? value : 1.0 - value);
    const int offset = static_cast<int>(std::floor(along));
    const int left = horizontal ? rect.L + offset : rect.L;
    const int top = horizontal ? rect.T : rect.T + offset;
    return {left, top, left + handle.FrameWidth(), top + handle.FrameHeight()};
}

bool IFaderControl::Draw(IGraphics& canvas) {
    return canvas.DrawBitmapFrame(handle, HandleRect(), 1, blend);
}

bool IFaderControl::IsHit(int x, int y) const {
    return onlyHandle ? HandleRect().Contains(x, y) : IControl::IsHit(x, y);
}

} // namespace Grimworks
