#pragma once

#include "editor/IControl.h"
#include "editor/IPopupMenu.h"

#include <string>
#include <string_view>
#include <vector>

namespace Grimworks {

class ThudForge;

/// The rows of a preset menu: the presets before the first section stand in the menu itself, those of a
/// section in a submenu under the section's name. A preset whose name holds "#" begins a section; it can be
/// played, but is no row of the menu.
class PresetMenuRows {
public:
    /// Makes the rows for these names, in the presets' order.
    void Build(const std::vector<std::string>& names);

    /// Leaves one check mark, at this preset; a section's own preset has none.
    void Check(int preset);

    /// The preset of the row that was chosen, -1 for none.
    [[nodiscard]] int ChosenPreset() const;

    [[nodiscard]] IPopupMenu& Menu() { return menu; }
    [[nodiscard]] const std::vector<std::string>& Names() const { return builtFrom; }

private:
    [[nodiscard]] int PlainRows() const;

    IPopupMenu menu;
    std::vector<int> firstPresets; ///< of each submenu
    std::vector<std::string> builtFrom;
};

/// The display of the current preset. The left mouse button opens the menu of presets, the right one a text
/// entry for another name.
class IGwPresetMenu final : public IControl {
public:
    static constexpr int kShownLength = 32; ///< characters

    /// `panel`: the colour behind the text.
    IGwPresetMenu(ThudForge* instrument, const IRECT& rectangle, const IText& style, const IColor& panel);

    void OnMouseDown(int x, int y, const IMouseMod& mod) override;
    bool Draw(IGraphics& canvas) override;

    /// Looks whether the current preset or its name has changed.
    bool IsDirty() override;

    /// Renames the current preset; it then holds the live sound. Does nothing if it is no longer the one
    /// whose name the text entry was opened with.
    void TextFromTextEntry(std::string_view entered) override;

    /// What is shown, "01: Basic Kick" for example, at most 32 characters.
    [[nodiscard]] const std::string& String() const { return string; }

private:
    [[nodiscard]] std::string PresetText() const;
    void OpenMenu();

    ThudForge* plug; ///< not owned
    IColor panelColor;
    std::string string;
    PresetMenuRows rows;
    int renamed = -1; ///< preset of the open text entry
};

} // namespace Grimworks
