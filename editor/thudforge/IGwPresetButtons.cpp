#include "editor/thudforge/IGwPresetButtons.h"

#include "editor/IGraphics.h"
#include "plugin/ThudForge.h"

#include <string>

namespace Grimworks {

void RecallPreset(ThudForge& instrument, int index) {
    if (instrument.RestorePreset(index)) instrument.InformHostOfProgramChange();
}

IGwPresetSwitch::IGwPresetSwitch(ThudForge* instrument, int x, int y, const IBitmap& strip, int stepDirection)
    : IGwActionButton(instrument, x, y, strip), direction(stepDirection) {}

void IGwPresetSwitch::OnPress(const IMouseMod& mod) {
    const int step = mod.R ? 10 : 1;
    RecallPreset(*plug, plug->CurrentPreset() + (direction == Next ? step : -step));
}

void IGwRestorePresetButton::OnPress(const IMouseMod& /*mod*/) {
    RecallPreset(*plug, plug->CurrentPreset());
}

IGwFileSelector::IGwFileSelector(ThudForge* instrument, int x, int y, const IBitmap& strip, int fileAction,
                                 std::string_view folder)
    : IFileSelectorControl(instrument, x, y, -1, strip, fileAction, folder), plug(instrument) {}

bool IGwFileSelector::Draw(IGraphics& canvas) {
    return canvas.DrawBitmapFrame(bitmap, rect, state == Selecting ? 2 : 1, blend);
}

/// A file that cannot be written or read leaves everything as it was, without a message.
void IGwFileSelector::OnSelected() {
    if (file.empty()) return;
    const std::string path = dir + file;
    if (action == IGraphics::FileSave) {
        static_cast<void>(plug->SaveProgram(path));
    } else if (plug->LoadProgram(path)) {
        plug->RedrawParamControls();
    }
}

} // namespace Grimworks
