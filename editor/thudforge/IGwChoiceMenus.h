#pragma once

#include "editor/IControl.h"
#include "editor/thudforge/ChoiceList.h"

#include <string>

namespace Grimworks {

class IPopupMenu;

/// The display of a parameter that is one of a list; the left mouse button opens the list as a menu. Choices
/// of one kind share a submenu; where there is but one kind, the menu is flat.
class IGwChoiceMenu : public IControl {
public:
    void OnMouseDown(int x, int y, const IMouseMod& mod) override;
    bool Draw(IGraphics& canvas) override;

    /// What is shown for the present value.
    [[nodiscard]] virtual std::string String() const;

protected:
    IGwChoiceMenu(IPlugBase* plugBase, const IRECT& rectangle, int parameter, const IText& style,
                  ChoiceList list);

    ChoiceList choices;

private:
    void FillMenu(IPopupMenu& menu) const;
    [[nodiscard]] int ChosenIndex(const IPopupMenu& menu) const;
};

/// The curve of the distortion, a flat list; the display shows its number too.
class IGwDistoPresetMenu final : public IGwChoiceMenu {
public:
    IGwDistoPresetMenu(IPlugBase* plugBase, const IRECT& rectangle, const IText& style);

    [[nodiscard]] std::string String() const override;
};

/// A filter's type: of an oscillator's left or right filter, or of one of the two of the filter unit.
class IGwFilterUnitMenu final : public IGwChoiceMenu {
public:
    /// The parameter tells which filters there are to choose from.
    IGwFilterUnitMenu(IPlugBase* plugBase, const IRECT& rectangle, int parameter, const IText& style);
};

/// The waveform of an oscillator.
class IGwWaveformPresetMenu final : public IGwChoiceMenu {
public:
    IGwWaveformPresetMenu(IPlugBase* plugBase, const IRECT& rectangle, int parameter, const IText& style);
};

/// The waveform of an LFO.
class IGwLfoSignalTypePresetMenu final : public IGwChoiceMenu {
public:
    IGwLfoSignalTypePresetMenu(IPlugBase* plugBase, const IRECT& rectangle, int parameter,
                               const IText& style);
};

/// How keys become frequencies.
class IGwNoteModePresetMenu final : public IGwChoiceMenu {
public:
    IGwNoteModePresetMenu(IPlugBase* plugBase, const IRECT& rectangle, const IText& style);
};

} // namespace Grimworks
