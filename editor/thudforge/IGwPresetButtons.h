#pragma once

#include "editor/IFileSelectorControl.h"
#include "editor/thudforge/IGwButtons.h"

namespace Grimworks {

/// Makes a preset the current one; the host hears of it and every control shows its values. An index outside
/// the list changes nothing. Editor thread, without the plug-in lock.
void RecallPreset(ThudForge& instrument, int index);

/// Goes to the next or the previous preset, with the right mouse button ten further. Beyond the list nothing
/// happens.
class IGwPresetSwitch final : public IGwActionButton {
public:
    enum Direction : int { Previous = 0, Next = 1 };

    IGwPresetSwitch(ThudForge* instrument, int x, int y, const IBitmap& strip, int stepDirection);

protected:
    void OnPress(const IMouseMod& mod) override;

private:
    int direction;
};

/// Brings the current preset back as it was stored: what was changed since is lost.
class IGwRestorePresetButton final : public IGwActionButton {
public:
    using IGwActionButton::IGwActionButton;

protected:
    void OnPress(const IMouseMod& mod) override;
};

/// The load or the save button of program files.
class IGwFileSelector final : public IFileSelectorControl {
public:
    /// `fileAction`: one of IGraphics::FileAction.
    IGwFileSelector(ThudForge* instrument, int x, int y, const IBitmap& strip, int fileAction,
                    std::string_view folder = {});

    /// Always there, pressed while a file is being selected.
    bool Draw(IGraphics& canvas) override;

protected:
    void OnSelected() override;

private:
    ThudForge* plug; ///< not owned
};

} // namespace Grimworks
