#include "editor/thudforge/IGwPresetMenu.h"

#include "editor/IGraphics.h"
#include "editor/TextEntry.h"
#include "editor/Utf8.h"
#include "editor/thudforge/IGwPresetButtons.h"
#include "editor/thudforge/NumberedText.h"
#include "plugin/ThudForge.h"

#include <utility>

namespace Grimworks {

namespace {

constexpr char kSectionSign = '#';

bool BeginsSection(std::string_view name) {
    return name.find(kSectionSign) != std::string_view::npos;
}

std::vector<std::string> PresetNames(const ThudForge& instrument) {
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(instrument.PresetCount()));
    for (int i = 0; i < instrument.PresetCount(); ++i)
        names.push_back(instrument.PresetName(i));
    return names;
}

} // namespace

void PresetMenuRows::Build(const std::vector<std::string>& names) {
    menu = IPopupMenu();
    firstPresets.clear();
    builtFrom = names;
    IPopupMenu* section = &menu;
    for (int i = 0; i < static_cast<int>(names.size()); ++i) {
        const std::string& name = names[static_cast<std::size_t>(i)];
        if (BeginsSection(name)) {
            section = &menu.AddSubmenu(name);
            firstPresets.push_back(i + 1);
        } else {
            section->AddItem(NumberedText(i, name));
        }
    }
}

int PresetMenuRows::PlainRows() const {
    return menu.ItemCount() - static_cast<int>(firstPresets.size());
}

void PresetMenuRows::Check(int preset) {
    menu.UncheckAll();
    if (preset < PlainRows()) {
        menu.CheckItem(preset, true);
        return;
    }
    for (std::size_t i = 0; i < firstPresets.size(); ++i) {
        IPopupMenu* submenu = menu.Submenu(PlainRows() + static_cast<int>(i));
        const int row = preset - firstPresets[i];
        if (submenu != nullptr && row >= 0 && row < submenu->ItemCount()) submenu->CheckItem(row, true);
    }
}

int PresetMenuRows::ChosenPreset() const {
    if (menu.ChosenItem() >= 0) return menu.ChosenItem();
    for (std::size_t i = 0; i < firstPresets.size(); ++i) {
        const IPopupMenu::Row* row = menu.Item(PlainRows() + static_cast<int>(i));
        if (row == nullptr || row->submenu == nullptr) continue;
        if (row->submenu->ChosenItem() >= 0) return firstPresets[i] + row->submenu->ChosenItem();
    }
    return -1;
}

IGwPresetMenu::IGwPresetMenu(ThudForge* instrument, const IRECT& rectangle, const IText& style,
                             const IColor& panel)
    : IControl(instrument, rectangle), plug(instrument), panelColor(panel) {
    text = style;
    textEntryLength = kTextEntryMaxLength;
}

std::string IGwPresetMenu::PresetText() const {
    const PlugLockGuard guard(plug->Lock());
    const int index = plug->CurrentPreset();
    return std::string(FirstCharacters(NumberedText(index, plug->PresetName(index)), kShownLength));
}

/// The host changes presets too. The look at every tick must not wait for the audio: what it misses, the next
/// tick sees. The new text is kept at once, or a hidden display would ask for a redraw at every tick.
bool IGwPresetMenu::IsDirty() {
    if (!plug->Lock().TryEnter()) return dirty;
    std::string shown = PresetText();
    plug->Lock().Leave();
    if (shown != string) {
        string = std::move(shown);
        SetDirty(false);
    }
    return dirty;
}

bool IGwPresetMenu::Draw(IGraphics& canvas) {
    string = PresetText();
    canvas.FillIRect(panelColor, rect, blend);
    return canvas.DrawIText(ShownText(), string, rect);
}

void IGwPresetMenu::OnMouseDown(int /*x*/, int /*y*/, const IMouseMod& mod) {
    if (graphics == nullptr) return;
    if (mod.L) {
        OpenMenu();
    } else if (mod.R) {
        renamed = plug->CurrentPreset();
        graphics->CreateTextEntry(*this, text, rect, plug->PresetName(renamed), nullptr);
    }
}

/// The menu is kept from one opening to the next, and made anew only after a preset has got another name.
void IGwPresetMenu::OpenMenu() {
    const std::vector<std::string> names = PresetNames(*plug);
    if (rows.Names() != names) rows.Build(names);
    rows.Check(plug->CurrentPreset());
    rows.Menu().ClearChoice();
    graphics->CreateIPopupMenu(rows.Menu(), rect);
    const int chosen = rows.ChosenPreset();
    if (chosen >= 0) RecallPreset(*plug, chosen);
    SetDirty(false);
}

/// The host may have gone on to another preset while the name was typed; that one keeps its own.
void IGwPresetMenu::TextFromTextEntry(std::string_view entered) {
    const int meant = std::exchange(renamed, -1);
    if (meant >= 0 && meant != plug->CurrentPreset()) return;
    plug->ModifyCurrentPreset(entered);
    plug->InformHostOfProgramChange();
    SetDirty(false);
}

} // namespace Grimworks
