#include "core/NumberText.h"
#include "editor/IGraphics.h"
#include "editor/IPopupMenu.h"
#include "editor/Utf8.h"
#include "plugin/IParam.h"
#include "plugin/IPlugBase.h"

#include <cmath>

namespace Grimworks {

namespace {

constexpr double kMostRows = 1000.0;

bool IsChoice(const IParam& param) {
    return param.GetType() == IParam::Type::Enum || param.GetType() == IParam::Type::Bool;
}

/// Rows of the menu of a parameter's values, 0 unless each value has a name.
int NamedValues(const IParam& param) {
    const double span = param.Max() - param.Min();
    if (!IsChoice(param) || !(span >= 0.0 && span < kMostRows)) return 0;
    const int count = static_cast<int>(span) + 1;
    for (int row = 0; row < count; ++row) {
        if (!param.HasDisplayTextFor(param.Min() + row)) return 0;
    }
    return count;
}

} // namespace

void IGraphics::PromptUserInput(IControl& control, const IParam& param, const IRECT& rect) {
    double current = 0.0;
    {
        const PlugLockGuard guard(plug.Lock());
        current = param.Value();
    }
    if (PromptWithMenu(control, param, current, rect)) return;
    CreateTextEntry(control, control.Text(), rect, param.DisplayText(current, false, false), &param);
}

bool IGraphics::PromptWithMenu(IControl& control, const IParam& param, double current, const IRECT& rect) {
    const int count = NamedValues(param);
    if (count == 0) return false;
    IPopupMenu menu;
    const int checked = static_cast<int>(std::floor(current - param.Min() + 0.5));
    for (int row = 0; row < count; ++row) {
        menu.AddItem(param.DisplayText(param.Min() + row, false, true),
                     row == checked ? IPopupMenu::Checked : 0);
    }
    const IPopupMenu* chosen = CreateIPopupMenu(menu, rect);
    if (chosen != nullptr && chosen->ChosenItem() >= 0) {
        control.SetValueFromUserInput(param.ToNormalized(param.Min() + chosen->ChosenItem()));
    }
    return true;
}

void IGraphics::CommitTextEntry(IControl& control, const IParam* param, std::string_view entered) {
    entered = FirstCharacters(entered, kTextEntryMaxLength);
    if (param == nullptr) {
        control.TextFromTextEntry(entered);
        return;
    }
    double plain = 0.0;
    if (IsChoice(*param)) {
        plain = param->ValueOfText(entered);
    } else {
        plain = ParseNumber(entered);
        if (param->NegatesDisplay()) plain = -plain;
    }
    if (std::isnan(plain)) return;
    control.SetValueFromUserInput(param->ToNormalized(plain));
}

} // namespace Grimworks
