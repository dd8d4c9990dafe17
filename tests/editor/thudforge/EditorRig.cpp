#include "tests/editor/thudforge/EditorRig.h"

#include "editor/thudforge/IGwTabButton.h"

#include <cstdlib>

namespace Grimworks {

EditorRig::EditorRig() {
    plug.AttachGraphics(&graphics);
    plug.RedrawParamControls();
    graphics.Tick();
}

EditorRig::~EditorRig() {
    plug.AttachGraphics(nullptr);
}

void EditorRig::Automate(int id, double value) {
    plug.SetParameterFromHost(id, value);
    graphics.Tick();
}

int EditorRig::HitAt(int x, int y) const {
    for (int i = graphics.ControlCount() - 1; i >= 0; --i) {
        const IControl& control = *graphics.GetControl(i);
        if (!control.IsHidden() && !control.IsGrayed() && control.IsHit(x, y)) return i;
    }
    return -1;
}

std::optional<WindowPoint> EditorRig::Reach(int index) const {
    const IRECT& area = graphics.GetControl(index)->TargetRect();
    std::optional<WindowPoint> best;
    int bestDistance = 0;
    for (int y = area.T; y < area.B; ++y) {
        for (int x = area.L; x < area.R; ++x) {
            const int distance = std::abs(x - area.MW()) + std::abs(y - area.MH());
            if (best && distance >= bestDistance) continue;
            if (HitAt(x, y) != index) continue;
            best = WindowPoint{x, y};
            bestDistance = distance;
        }
    }
    return best;
}

void EditorRig::Click(int index) {
    const auto at = Reach(index);
    if (!at) return;
    graphics.OnMouseDown(at->x, at->y, kLeftButton);
    graphics.OnMouseUp(at->x, at->y, {});
    graphics.Tick();
}

void EditorRig::ShowPage(int page) {
    for (int i = 0; i < graphics.ControlCount(); ++i) {
        const auto* tab = dynamic_cast<IGwTabButton*>(graphics.GetControl(i));
        if (tab != nullptr && tab->Page() == page) Click(i);
    }
}

} // namespace Grimworks
