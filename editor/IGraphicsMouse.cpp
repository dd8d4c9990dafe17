#include "editor/IGraphics.h"
#include "plugin/HostIdentity.h"
#include "plugin/IPlugBase.h"

namespace Grimworks {

int IGraphics::FindControlAt(int x, int y, bool grayedToo) const {
    for (int i = ControlCount() - 1; i >= 0; --i) {
        const IControl& control = *GetControl(i);
        if (control.IsHidden()) continue;
        if (control.IsGrayed() && !(grayedToo && control.MouseOverWhenDisabled())) continue;
        if (control.IsHit(x, y)) return i;
    }
    return -1;
}

void IGraphics::BeginGesture(int paramIdx) {
    EndGesture();
    if (paramIdx < 0) return;
    gestureParam = paramIdx;
    plug.BeginInformHostOfParamChange(paramIdx);
}

void IGraphics::EndGesture() {
    if (gestureParam < 0) return;
    const int ended = gestureParam;
    gestureParam = -1;
    plug.EndInformHostOfParamChange(ended);
}

void IGraphics::OnMouseDown(int x, int y, const IMouseMod& mod) {
    mouseCapture = -1;
    mouseOver = -1;
    const int index = FindControlAt(x, y, false);
    if (index < 0) return;
    IControl& control = *GetControl(index);
    mouseCapture = index;
    mouseX = x;
    mouseY = y;
    if (mod.R && control.ParamIdx() >= 0 && plug.GetHost() == kHostWithParamMenu) {
        mouseCapture = -1;
        plug.PopupHostContextMenuForParam(control.ParamIdx());
    } else {
        BeginGesture(control.ParamIdx());
    }
    control.OnMouseDown(x, y, mod);
    // A menu or dialog that the control opened has taken the mouse, and its release with it.
    if (mouseCapture < 0) EndGesture();
}

void IGraphics::OnMouseUp(int x, int y, const IMouseMod& mod) {
    const int captured = mouseCapture;
    mouseCapture = -1;
    const int index = captured >= 0 ? captured : FindControlAt(x, y, false);
    if (IControl* control = GetControl(index)) {
        control->OnMouseUp(x, y, mod);
        if (control->ParamIdx() >= 0) {
            if (gestureParam == control->ParamIdx()) gestureParam = -1;
            plug.EndInformHostOfParamChange(control->ParamIdx());
        }
    }
    EndGesture();
}

void IGraphics::OnMouseDrag(int x, int y, int dX, int dY, const IMouseMod& mod) {
    IControl* control = GetControl(mouseCapture);
    if (control == nullptr) return;
    mouseX = x;
    mouseY = y;
    control->OnMouseDrag(x, y, dX, dY, mod);
    if (mouseCapture < 0) EndGesture(); // as after a press: there will be no release
}

bool IGraphics::OnMouseDblClick(int x, int y, const IMouseMod& mod) {
    mouseCapture = -1;
    mouseOver = -1;
    const int index = FindControlAt(x, y, false);
    if (index < 0) return false;
    IControl& control = *GetControl(index);
    if (!control.DblAsSingleClick()) {
        control.OnMouseDblClick(x, y, mod);
        return false;
    }
    mouseCapture = index;
    mouseX = x;
    mouseY = y;
    BeginGesture(control.ParamIdx());
    control.OnMouseDown(x, y, mod);
    if (mouseCapture < 0) EndGesture();
    return mouseCapture >= 0;
}

void IGraphics::OnMouseOver(int x, int y, const IMouseMod& mod) {
    if (!handleMouseOver) return;
    const int index = FindControlAt(x, y, true);
    const int last = mouseOver;
    if (IControl* control = GetControl(index)) control->OnMouseOver(x, y, mod);
    if (last != index) {
        if (IControl* control = GetControl(last)) control->OnMouseOut();
    }
    mouseX = x;
    mouseY = y;
    mouseOver = index;
}

void IGraphics::OnMouseOut() {
    for (const auto& control : controls)
        control->OnMouseOut();
    mouseOver = -1;
}

void IGraphics::OnMouseWheel(int x, int y, const IMouseMod& mod, int d) {
    const int index = mouseCapture >= 0 ? mouseCapture : FindControlAt(x, y, false);
    if (IControl* control = GetControl(index)) control->OnMouseWheel(x, y, mod, d);
}

bool IGraphics::OnKeyDown(int x, int y, int key) {
    IControl* control = GetControl(FindControlAt(x, y, false));
    return control != nullptr && control->OnKeyDown(x, y, key);
}

} // namespace Grimworks
