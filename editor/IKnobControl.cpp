#include "editor/IKnobControl.h"

#include "editor/IGraphics.h"

namespace Grimworks {

namespace {

constexpr double kFineGearing = 10.0;
constexpr double kWheelStep = 0.01;
constexpr double kFineWheelStep = 0.001;

bool IsFine(const IMouseMod& mod) {
    return mod.S || mod.C;
}

} // namespace

IKnobControl::IKnobControl(IPlugBase* plugBase, const IRECT& rectangle, int parameter, int dragDirection,
                           double gearingFactor)
    : IControl(plugBase, rectangle, parameter), direction(dragDirection), gearing(gearingFactor) {}

void IKnobControl::OnMouseDrag(int /*x*/, int /*y*/, int dX, int dY, const IMouseMod& mod) {
    const double travel = IsFine(mod) ? gearing * kFineGearing : gearing;
    const int size = direction == Vertical ? rect.T - rect.B : rect.R - rect.L;
    if (size == 0 || travel == 0.0) return;
    value += static_cast<double>(direction == Vertical ? dY : dX) / size / travel;
    SetDirty(true);
}

void IKnobControl::OnMouseWheel(int /*x*/, int /*y*/, const IMouseMod& mod, int d) {
    value += d * (IsFine(mod) ? kFineWheelStep : kWheelStep);
    SetDirty(true);
}

IKnobMultiControl::IKnobMultiControl(IPlugBase* plugBase, int x, int y, int parameter, const IBitmap& strip,
                                     int dragDirection, double gearingFactor)
    : IKnobControl(plugBase, IRECT(x, y, x + strip.FrameWidth(), y + strip.FrameHeight()), parameter,
                   dragDirection, gearingFactor),
      bitmap(strip) {}

bool IKnobMultiControl::Draw(IGraphics& canvas) {
    return canvas.DrawBitmapFrame(bitmap, rect, FrameOfValue(bitmap, value), blend);
}

} // namespace Grimworks
