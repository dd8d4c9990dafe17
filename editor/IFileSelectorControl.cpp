#include "editor/IFileSelectorControl.h"

#include "editor/IGraphics.h"

namespace Grimworks {

IFileSelectorControl::IFileSelectorControl(IPlugBase* plugBase, int x, int y, int parameter,
                                           const IBitmap& strip, int fileAction, std::string_view folder,
                                           std::string_view extensionList)
    : IControl(plugBase, IRECT(x, y, x + strip.FrameWidth(), y + strip.FrameHeight()), parameter),
      bitmap(strip), dir(folder), extensions(extensionList), action(fileAction) {}

/// The dialog runs inside the call, and the editor's clock with it: the button is drawn as pressed meanwhile.
void IFileSelectorControl::OnMouseDown(int /*x*/, int /*y*/, const IMouseMod& /*mod*/) {
    if (graphics == nullptr || state == Selecting) return;
    state = Selecting;
    SetDirty(false);
    graphics->PromptForFile(file, dir, action, extensions);
    value += 1.0;
    if (value > 1.0) value = 0.0;
    state = Done;
    SetDirty(true);
    OnSelected();
}

bool IFileSelectorControl::Draw(IGraphics& canvas) {
    return state != Selecting || canvas.DrawBitmapFrame(bitmap, rect, 1, blend);
}

bool IFileSelectorControl::IsDirty() {
    if (dirty) return true;
    if (state != Done) return false;
    state = None;
    return true;
}

} // namespace Grimworks
