#pragma once

#include "editor/IControl.h"
#include "editor/thudforge/Layout.h"

#include <memory>

namespace Grimworks {

class IGwCurve2;
class ThudForge;
class ThudForgeEditor;

/// What the makers of controls build for, and what they tell each other.
struct PanelContext {
    ThudForgeEditor& editor;
    ThudForge& instrument;
    IGraphics& graphics;
    IGwCurve2* drawArea = nullptr; ///< of the distortion's curve, once it is made
};

using MadeControl = std::unique_ptr<IControl>;

/// The bitmap of an id as it is placed: where the module holds no such image, an empty one of the place's
/// size, so that the control is still there to be hit.
[[nodiscard]] IBitmap PlacedBitmap(PanelContext& context, const PlacedControl& placed);

// The makers, a family each; null for a kind of another family.

/// Knobs, switches, faders, menus: what moves one parameter.
[[nodiscard]] MadeControl MakeParameterControl(PanelContext& context, const PlacedControl& placed);

/// Pictures, texts, curves and meters.
[[nodiscard]] MadeControl MakeDisplay(PanelContext& context, const PlacedControl& placed);

/// Buttons that have the instrument or the editor do something.
[[nodiscard]] MadeControl MakeButton(PanelContext& context, const PlacedControl& placed);

/// The caption of a control, which is known to the editor from then on.
[[nodiscard]] MadeControl MakeCaption(PanelContext& context, const PlacedControl& placed);

} // namespace Grimworks
