#include "editor/IControl.h"

#include "core/Maths.h"
#include "editor/IGraphics.h"
#include "editor/ITextControl.h"
#include "plugin/IPlugBase.h"

#include <cmath>

namespace Grimworks {

namespace {

constexpr float kGrayedWeight = 0.25F;
constexpr int kPromptWidth = 40;
constexpr int kPromptHeight = 16;

/// The field of a text entry, in the middle of the control.
IRECT PromptField(const IRECT& around) {
    const int left = around.MW() - kPromptWidth / 2;
    const int top = around.MH() - kPromptHeight / 2;
    return {left, top, left + kPromptWidth, top + kPromptHeight};
}

} // namespace

IControl::IControl(IPlugBase* plugBase, const IRECT& rectangle, int parameter, IChannelBlend blending)
    : plug(plugBase), rect(rectangle), targetRect(rectangle), paramIdx(parameter), blend(blending) {}

void IControl::OnMouseDown(int /*x*/, int /*y*/, const IMouseMod& mod) {
    if (mod.R) PromptUserInput();
}

void IControl::OnMouseUp(int /*x*/, int /*y*/, const IMouseMod& /*mod*/) {}

void IControl::OnMouseDrag(int /*x*/, int /*y*/, int /*dX*/, int /*dY*/, const IMouseMod& /*mod*/) {}

void IControl::OnMouseDblClick(int /*x*/, int /*y*/, const IMouseMod& /*mod*/) {
    if (defaultValue < 0.0) return;
    value = defaultValue;
    SetDirty(true);
}

void IControl::OnMouseWheel(int /*x*/, int /*y*/, const IMouseMod& /*mod*/, int /*d*/) {}

bool IControl::OnKeyDown(int /*x*/, int /*y*/, int /*key*/) {
    return false;
}

void IControl::OnMouseOver(int /*x*/, int /*y*/, const IMouseMod& /*mod*/) {}

void IControl::OnMouseOut() {}

void IControl::SetValueFromPlug(double newValue) {
    if (std::isnan(newValue)) return;
    if (defaultValue < 0.0) defaultValue = newValue;
    if (newValue == value) return;
    value = newValue;
    SetDirty(false);
    redraw = true;
}

void IControl::SetValueFromUserInput(double newValue) {
    if (std::isnan(newValue) || newValue == value) return;
    value = newValue;
    SetDirty(true);
    redraw = true;
}

void IControl::TextFromTextEntry(std::string_view /*entered*/) {}

void IControl::Hide(bool on) {
    hide = on;
    redraw = true;
    SetDirty(false);
}

void IControl::GrayOut(bool on) {
    grayed = on;
    blend.weight = on ? kGrayedWeight : 1.0F;
    SetDirty(false);
}

bool IControl::IsHit(int x, int y) const {
    return targetRect.Contains(x, y);
}

void IControl::SetDirty(bool pushToPlug) {
    value = std::isnan(value) ? clampLo : Grimworks::Clamp(value, clampLo, clampHi);
    dirty = true;
    if (plug == nullptr || paramIdx < 0) return;
    if (pushToPlug) {
        plug->SetParameterFromGUI(paramIdx, value);
        TellSiblings();
    }
    RefreshDisplays();
}

/// Other controls of the same parameter, such as the number below a knob, follow at the next tick. The value
/// is read again under the lock, so that what stands at the end is the truth, whoever else moves the
/// parameter.
void IControl::TellSiblings() {
    if (graphics == nullptr) return;
    const PlugLockGuard guard(plug->Lock());
    if (plug->GetParam(paramIdx) == nullptr) return;
    graphics->SetParameterFromPlug(paramIdx, plug->GetParameterNormalized(paramIdx), true);
}

void IControl::RefreshDisplays() {
    if (valueDisplayControl == nullptr && nameDisplayControl == nullptr) return;
    const IParam* param = plug->GetParam(paramIdx);
    if (param == nullptr) return;
    if (valueDisplayControl != nullptr) valueDisplayControl->SetTextFromPlug(TextWithLabel(*param, value));
    if (nameDisplayControl != nullptr) nameDisplayControl->SetTextFromPlug(param->Name());
}

std::string IControl::TextWithLabel(const IParam& param, double normalized) {
    std::string shown = param.DisplayText(normalized, true, true);
    shown += ' ';
    shown += param.LabelOf(param.FromNormalized(normalized));
    return shown;
}

void IControl::SetClean() {
    dirty = redraw;
    redraw = false;
}

bool IControl::IsDirty() {
    return dirty;
}

void IControl::OnGUIIdle() {}

void IControl::SetAuxParamValueFromPlug(int index, double newValue) {
    if (index < 0 || index >= static_cast<int>(auxParams.size()) || std::isnan(newValue)) return;
    AuxParam& aux = auxParams[static_cast<std::size_t>(index)];
    if (aux.value == newValue) return;
    aux.value = newValue;
    SetDirty(false);
    redraw = true;
}

void IControl::PromptUserInput() {
    if (paramIdx < 0 || disablePrompt || plug == nullptr || graphics == nullptr) return;
    const IParam* param = plug->GetParam(paramIdx);
    if (param == nullptr) return;
    graphics->PromptUserInput(*this, *param, param->HasDisplayTexts() ? rect : PromptField(rect));
    redraw = true;
}

void IControl::Clamp(double lo, double hi) {
    clampLo = lo;
    clampHi = hi;
}

IText IControl::ShownText() const {
    IText shown = text;
    if (blend.weight < 1.0F)
        shown.color.A = static_cast<int>(static_cast<float>(text.color.A) * blend.weight);
    return shown;
}

int FrameOfValue(const IBitmap& bitmap, double value) {
    if (bitmap.N <= 1 || std::isnan(value)) return 1;
    const double frame = std::floor((bitmap.N - 1) * Clamp(value, 0.0, 1.0) + 0.5) + 1.0;
    return static_cast<int>(frame);
}

} // namespace Grimworks
