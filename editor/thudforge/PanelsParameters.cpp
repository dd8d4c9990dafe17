#include "editor/IFaderControl.h"
#include "editor/thudforge/IGwButtons.h"
#include "editor/thudforge/IGwChoiceMenus.h"
#include "editor/thudforge/IGwGlobalTransposeKnob.h"
#include "editor/thudforge/PanelContext.h"
#include "plugin/ThudForge.h"

namespace Grimworks {

namespace {

template <typename Knob>
MadeControl MakeKnob(PanelContext& context, const PlacedControl& placed) {
    return std::make_unique<Knob>(&context.instrument, placed.rect.L, placed.rect.T, placed.param,
                                  PlacedBitmap(context, placed), IKnobControl::Vertical, kKnobGearing);
}

template <typename Menu>
MadeControl MakeMenuOf(PanelContext& context, const PlacedControl& placed) {
    return std::make_unique<Menu>(&context.instrument, placed.rect, placed.param, TextOf(placed.style));
}

/// A menu that knows its parameter.
template <typename Menu>
MadeControl MakeMenu(PanelContext& context, const PlacedControl& placed) {
    return std::make_unique<Menu>(&context.instrument, placed.rect, TextOf(placed.style));
}

/// A value can be typed as well: the right button asks for it.
MadeControl WithPrompt(MadeControl control) {
    control->EnablePrompt(true);
    return control;
}

} // namespace

MadeControl MakeParameterControl(PanelContext& context, const PlacedControl& placed) {
    const IRECT& at = placed.rect;
    ThudForge* const instrument = &context.instrument;
    switch (placed.kind) {
    case ControlKind::Knob:
        return WithPrompt(MakeKnob<IKnobMultiControl>(context, placed));
    case ControlKind::TransposeKnob:
        return WithPrompt(MakeKnob<IGwGlobalTransposeKnob>(context, placed));
    case ControlKind::Switch:
        return std::make_unique<ISwitchControl>(instrument, at.L, at.T, placed.param,
                                                PlacedBitmap(context, placed));
    case ControlKind::Fader:
        return WithPrompt(std::make_unique<IFaderControl>(instrument, at.L, at.T, at.W(), placed.param,
                                                          PlacedBitmap(context, placed)));
    case ControlKind::ModeSwitch:
        return std::make_unique<IGwModeSwitch>(instrument, at.L, at.T, PlacedBitmap(context, placed),
                                               placed.param, placed.steps, placed.direction, placed.wrap);
    case ControlKind::WaveformMenu:
        return MakeMenuOf<IGwWaveformPresetMenu>(context, placed);
    case ControlKind::LfoModeMenu:
        return MakeMenuOf<IGwLfoSignalTypePresetMenu>(context, placed);
    case ControlKind::FilterMenu:
        return MakeMenuOf<IGwFilterUnitMenu>(context, placed);
    case ControlKind::NoteModeMenu:
        return MakeMenu<IGwNoteModePresetMenu>(context, placed);
    case ControlKind::CurveMenu:
        return MakeMenu<IGwDistoPresetMenu>(context, placed);
    default:
        return nullptr;
    }
}

} // namespace Grimworks
