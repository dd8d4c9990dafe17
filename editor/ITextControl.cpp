#include "editor/ITextControl.h"

#include "editor/IGraphics.h"
#include "plugin/IPlugBase.h"

namespace Grimworks {

ITextControl::ITextControl(IPlugBase* plugBase, const IRECT& rectangle, const IText& style,
                           std::string_view shown)
    : IControl(plugBase, rectangle), string(shown) {
    text = style;
}

void ITextControl::SetTextFromPlug(std::string_view shown) {
    if (string == shown) return;
    string = shown;
    SetDirty(false);
    redraw = true;
}

bool ITextControl::Draw(IGraphics& canvas) {
    return string.empty() || canvas.DrawIText(ShownText(), string, rect);
}

ICaptionControl::ICaptionControl(IPlugBase* plugBase, const IRECT& rectangle, int parameter,
                                 const IText& style, bool withLabel)
    : ITextControl(plugBase, rectangle, style), showParamLabel(withLabel) {
    paramIdx = parameter;
}

void ICaptionControl::OnMouseDown(int /*x*/, int /*y*/, const IMouseMod& mod) {
    if (mod.L || mod.R) PromptUserInput();
}

void ICaptionControl::OnMouseDblClick(int x, int y, const IMouseMod& mod) {
    OnMouseDown(x, y, mod);
}

bool ICaptionControl::Draw(IGraphics& canvas) {
    string = Caption();
    return ITextControl::Draw(canvas);
}

std::string ICaptionControl::Caption() const {
    const IParam* param = plug != nullptr ? plug->GetParam(paramIdx) : nullptr;
    if (param == nullptr) return {};
    return showParamLabel ? TextWithLabel(*param, value) : param->DisplayText(value, true, true);
}

} // namespace Grimworks
