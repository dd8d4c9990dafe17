#include "editor/IGraphics.h"

#include "editor/IBitmapControl.h"
#include "editor/LICE_CachedFont.h"
#include "plugin/HostIdentity.h"
#include "plugin/IParam.h"
#include "plugin/IPlugBase.h"

#include <cmath>
#include <utility>

namespace Grimworks {

IGraphics::IGraphics(IPlugBase& plugBase, int windowWidth, int windowHeight, int framesPerSecond)
    : plug(plugBase), drawBitmap(windowWidth, windowHeight), tmpBitmap(windowWidth, windowHeight),
      width(windowWidth), height(windowHeight), fps(framesPerSecond),
      drawRect(0, 0, windowWidth, windowHeight) {}

IGraphics::~IGraphics() = default;

int IGraphics::AttachControl(std::unique_ptr<IControl> control) {
    const std::lock_guard guard(mutex);
    control->SetGraphics(this);
    controls.push_back(std::move(control));
    saidDirty.push_back(false);
    return ControlCount() - 1;
}

void IGraphics::AttachBackground(int id, const std::string& fileName) {
    IBitmap whole = LoadIBitmap(id, fileName);
    whole.W = width;
    whole.H = height;
    auto control = std::make_unique<IBitmapControl>(&plug, 0, 0, -1, whole);
    control->SetGraphics(this);
    const std::lock_guard guard(mutex);
    controls.insert(controls.begin(), std::move(control));
    saidDirty.push_back(false);
}

IControl* IGraphics::GetControl(int index) const {
    return index >= 0 && index < ControlCount() ? controls[static_cast<std::size_t>(index)].get() : nullptr;
}

void IGraphics::HideControl(int index, bool on) {
    if (IControl* control = GetControl(index)) control->Hide(on);
}

void IGraphics::SetAllControlsDirty() {
    for (const auto& control : controls)
        control->SetDirty(false);
}

IRECT IGraphics::Tick() {
    DeliverParameters();
    if (tickHandler) tickHandler();
    for (const auto& control : controls)
        control->OnGUIIdle();
    IRECT dirty;
    for (std::size_t i = 0; i < controls.size(); ++i) {
        if (!controls[i]->IsDirty()) continue;
        saidDirty[i] = true;
        dirty = dirty.Union(controls[i]->Rect());
    }
    return dirty;
}

bool IGraphics::NeedsDrawing(std::size_t index) {
    return saidDirty[index] || controls[index]->IsDirty();
}

void IGraphics::Clean(std::size_t index) {
    saidDirty[index] = false;
    controls[index]->SetClean();
}

void IGraphics::Draw(const IRECT& rect) {
    if (controls.empty()) return;
    drawn = rect;
    const IRECT ground = controls.front()->Rect();
    if (strict) {
        DrawStrict(rect);
    } else if (NeedsDrawing(0) || (!ground.Empty() && rect.Union(ground) == rect)) {
        DrawAll(rect.Union(ground));
    } else {
        DrawDirtyOnes();
    }
    drawRect = {0, 0, width, height};
    DrawScreen(drawn.Intersect(drawRect));
}

void IGraphics::DrawStrict(const IRECT& rect) {
    drawRect = rect;
    for (std::size_t i = 0; i < controls.size(); ++i) {
        IControl& control = *controls[i];
        if (!control.IsHidden() && control.Rect().Intersects(rect)) control.Draw(*this);
        Clean(i);
    }
}

void IGraphics::DrawAll(const IRECT& rect) {
    drawRect = rect;
    drawn = drawn.Union(rect);
    for (std::size_t i = 0; i < controls.size(); ++i) {
        IControl& control = *controls[i];
        if (i == 0 || !control.IsHidden()) control.Draw(*this);
        Clean(i);
    }
}

void IGraphics::DrawDirtyOnes() {
    for (std::size_t i = 1; i < controls.size(); ++i) {
        if (!NeedsDrawing(i)) continue;
        DrawOverlapping(i);
        Clean(i);
    }
}

void IGraphics::DrawOverlapping(std::size_t dirtyOne) {
    drawRect = controls[dirtyOne]->Rect();
    drawn = drawn.Union(drawRect);
    for (std::size_t i = 0; i < controls.size(); ++i) {
        IControl& control = *controls[i];
        if (control.IsHidden()) continue;
        if (i == dirtyOne || control.Rect().Intersects(drawRect)) control.Draw(*this);
    }
}

void IGraphics::Resize(int newWidth, int newHeight) {
    if (newWidth == width && newHeight == height) return;
    width = newWidth;
    height = newHeight;
    drawBitmap.resize(width, height);
    tmpBitmap.resize(width, height);
    drawRect = {0, 0, width, height};
    SetAllControlsDirty();
    plug.ResizeGraphics(width, height);
}

std::string IGraphics::GetHostName() {
    return std::string(HostName(plug.GetHost()));
}

std::string IGraphics::TooltipText(int index) const {
    const IControl* control = GetControl(index);
    if (control == nullptr) return {};
    if (!control->Tooltip().empty()) return control->Tooltip();
    const IParam* param = plug.GetParam(control->ParamIdx());
    return param != nullptr ? param->Name() : std::string();
}

void IGraphics::SetParameterFromPlug(int id, double value, bool normalized) {
    if (!normalized) {
        const IParam* param = plug.GetParam(id);
        if (param == nullptr) return;
        value = param->ToNormalized(value);
    }
    pending.Put(id, value);
}

void IGraphics::DeliverParameters() {
    if (!pending.TakeAny()) return;
    for (int id = 0; id < kParameters; ++id) {
        double last = 0.0;
        bool first = false;
        double firstValue = 0.0;
        if (!pending.Take(id, last, first, firstValue)) continue;
        // What was told first is what a double click goes back to, so controls have to hear of it.
        if (first) GiveToControls(id, firstValue);
        GiveToControls(id, last);
    }
}

void IGraphics::GiveToControls(int id, double value) {
    for (const auto& control : controls) {
        if (control->ParamIdx() == id) control->SetValueFromPlug(value);
        const auto& auxParams = control->AuxParams();
        for (std::size_t aux = 0; aux < auxParams.size(); ++aux) {
            if (auxParams[aux].paramIdx == id) {
                control->SetAuxParamValueFromPlug(static_cast<int>(aux), value);
            }
        }
    }
}

} // namespace Grimworks
