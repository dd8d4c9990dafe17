#pragma once

#include "editor/thudforge/Layout.h"
#include "editor/thudforge/ThudForgeEditor.h"
#include "plugin/ThudForge.h"
#include "tests/editor/HeadlessGraphics.h"

#include <optional>

namespace Grimworks {

/// A point of the window.
struct WindowPoint {
    int x;
    int y;
};

/// The whole instrument with its whole editor and no window.
struct EditorRig {
    EditorRig();
    ~EditorRig();
    EditorRig(const EditorRig&) = delete;
    EditorRig& operator=(const EditorRig&) = delete;

    /// Sets a parameter as a host does it, and lets the editor hear of it.
    void Automate(int id, double value);

    /// Where a control takes the mouse now: as near to its middle as other controls leave it.
    [[nodiscard]] std::optional<WindowPoint> Reach(int index) const;

    /// The control that a mouse at this point meets, -1 for none.
    [[nodiscard]] int HitAt(int x, int y) const;

    /// A click with the left button.
    void Click(int index);

    /// Shows a page through its tab.
    void ShowPage(int page);

    /// Index of the first control of a class from an index on, -1 for none.
    template <typename Control>
    [[nodiscard]] int Find(int from = 0) const {
        for (int i = from; i < graphics.ControlCount(); ++i)
            if (dynamic_cast<Control*>(graphics.GetControl(i)) != nullptr) return i;
        return -1;
    }

    ThudForge plug{nullptr};
    HeadlessGraphics graphics{plug, kEditorWidth, kEditorHeight};
    ThudForgeEditor editor{plug, graphics};
};

inline const IMouseMod kLeftButton{true};
inline const IMouseMod kRightButton{false, true};

} // namespace Grimworks
