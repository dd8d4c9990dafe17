#include "editor/thudforge/IGwChoiceMenus.h"

#include "core/ParameterIds.h"
#include "editor/IGraphics.h"
#include "editor/IPopupMenu.h"
#include "editor/thudforge/NumberedText.h"

#include <utility>

namespace Grimworks {

IGwChoiceMenu::IGwChoiceMenu(IPlugBase* plugBase, const IRECT& rectangle, int parameter, const IText& style,
                             ChoiceList list)
    : IControl(plugBase, rectangle, parameter), choices(std::move(list)) {
    text = style;
}

std::string IGwChoiceMenu::String() const {
    return choices.entries[static_cast<std::size_t>(choices.IndexOf(value))].shortName;
}

bool IGwChoiceMenu::Draw(IGraphics& canvas) {
    return canvas.DrawIText(ShownText(), String(), rect);
}

void IGwChoiceMenu::OnMouseDown(int x, int y, const IMouseMod& mod) {
    if (!mod.L) {
        IControl::OnMouseDown(x, y, mod);
        return;
    }
    if (graphics == nullptr) return;
    IPopupMenu menu;
    FillMenu(menu);
    graphics->CreateIPopupMenu(menu, rect);
    const int chosen = ChosenIndex(menu);
    if (chosen >= 0) SetValueFromUserInput(choices.ValueOf(chosen));
}

void IGwChoiceMenu::FillMenu(IPopupMenu& menu) const {
    std::vector<IPopupMenu*> groupMenus;
    groupMenus.reserve(choices.groups.size());
    for (const std::string& group : choices.groups)
        groupMenus.push_back(choices.groups.size() == 1 ? &menu : &menu.AddSubmenu(group));
    const int current = choices.IndexOf(value);
    for (int i = 0; i < choices.Count(); ++i) {
        const ChoiceList::Entry& entry = choices.entries[static_cast<std::size_t>(i)];
        groupMenus[static_cast<std::size_t>(entry.group)]->AddItem(entry.longName,
                                                                   i == current ? IPopupMenu::Checked : 0);
    }
}

int IGwChoiceMenu::ChosenIndex(const IPopupMenu& menu) const {
    std::vector<int> nextRows(choices.groups.size(), 0);
    for (int i = 0; i < choices.Count(); ++i) {
        const int group = choices.entries[static_cast<std::size_t>(i)].group;
        const int row = nextRows[static_cast<std::size_t>(group)]++;
        const IPopupMenu* shown = &menu;
        if (choices.groups.size() > 1) shown = menu.Item(group)->submenu.get();
        if (shown->ChosenItem() == row) return i;
    }
    return -1;
}

IGwDistoPresetMenu::IGwDistoPresetMenu(IPlugBase* plugBase, const IRECT& rectangle, const IText& style)
    : IGwChoiceMenu(plugBase, rectangle, Param::DistortionType, style, CurveChoices()) {}

std::string IGwDistoPresetMenu::String() const {
    return NumberedText(choices.IndexOf(value), IGwChoiceMenu::String());
}

IGwFilterUnitMenu::IGwFilterUnitMenu(IPlugBase* plugBase, const IRECT& rectangle, int parameter,
                                     const IText& style)
    : IGwChoiceMenu(plugBase, rectangle, parameter, style, FilterChoicesOf(parameter)) {}

IGwWaveformPresetMenu::IGwWaveformPresetMenu(IPlugBase* plugBase, const IRECT& rectangle, int parameter,
                                             const IText& style)
    : IGwChoiceMenu(plugBase, rectangle, parameter, style, WaveformChoices()) {}

IGwLfoSignalTypePresetMenu::IGwLfoSignalTypePresetMenu(IPlugBase* plugBase, const IRECT& rectangle,
                                                       int parameter, const IText& style)
    : IGwChoiceMenu(plugBase, rectangle, parameter, style, LfoWaveChoices()) {}

IGwNoteModePresetMenu::IGwNoteModePresetMenu(IPlugBase* plugBase, const IRECT& rectangle, const IText& style)
    : IGwChoiceMenu(plugBase, rectangle, Param::NoteTransposeMode, style, NoteModeChoices()) {}

} // namespace Grimworks
