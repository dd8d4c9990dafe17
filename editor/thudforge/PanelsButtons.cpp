#include "editor/thudforge/IGwCurve2.h"
#include "editor/thudforge/IGwLevelDisplays.h"
#include "editor/thudforge/IGwPresetButtons.h"
#include "editor/thudforge/IGwPresetMenu.h"
#include "editor/thudforge/IGwScopeButtons.h"
#include "editor/thudforge/IGwTabButton.h"
#include "editor/thudforge/PanelContext.h"
#include "editor/thudforge/ThudForgeEditor.h"
#include "plugin/ThudForge.h"

#include <functional>

namespace Grimworks {

namespace {

struct WebAddress {
    const char* first;
    const char* second; ///< where the first cannot be opened
};

constexpr WebAddress kMaker{"https://grimworks.example.org/", "https://example.org/grimworks"};
constexpr WebAddress kLikes{"https://grimworks.example.org/likes", "https://example.org/grimworks/likes"};

/// Where the first choice of a program file starts; empty for the user's own folder.
#ifdef _WIN32
constexpr const char* kProgramFolder = "C:\\work\\Grimworks\\_presets";
#else
constexpr const char* kProgramFolder = "";
#endif

/// A button of the class that needs no more than its place and its bitmap.
template <typename Button, typename... More>
MadeControl MakePlain(PanelContext& context, const PlacedControl& placed, More... more) {
    return std::make_unique<Button>(&context.instrument, placed.rect.L, placed.rect.T,
                                    PlacedBitmap(context, placed), more...);
}

MadeControl MakeUrlButton(PanelContext& context, const PlacedControl& placed) {
    const WebAddress& address = placed.direction == 0 ? kMaker : kLikes;
    return MakePlain<IGwUrlButton>(context, placed, address.first, address.second);
}

MadeControl MakePresetMenu(PanelContext& context, const PlacedControl& placed) {
    return std::make_unique<IGwPresetMenu>(&context.instrument, placed.rect, TextOf(placed.style),
                                           DisplayColor());
}

/// Programs, files and the test note.
MadeControl MakeProgramButton(PanelContext& context, const PlacedControl& placed) {
    switch (placed.kind) {
    case ControlKind::PresetMenu:
        return MakePresetMenu(context, placed);
    case ControlKind::PresetSwitch:
        return MakePlain<IGwPresetSwitch>(context, placed, placed.direction);
    case ControlKind::RestorePreset:
        return MakePlain<IGwRestorePresetButton>(context, placed);
    case ControlKind::FileSelector:
        return MakePlain<IGwFileSelector>(context, placed, placed.direction, kProgramFolder);
    case ControlKind::PlayButton:
        return MakePlain<IGwPlayButton>(context, placed);
    default:
        return nullptr;
    }
}

/// The scope's buttons. Those that choose what it shows need the scope itself, which is placed before them.
MadeControl MakeScopeButton(PanelContext& context, const PlacedControl& placed) {
    switch (placed.kind) {
    case ControlKind::FreezeButton:
        return MakePlain<IGwFreezeButton>(context, placed);
    case ControlKind::ZoomSwitch:
        return MakePlain<IGwZoomSwitch>(context, placed, placed.direction != 0);
    case ControlKind::WaveSelect:
        return MakePlain<IGwScopeWaveSelectionButton>(context, placed, std::ref(*context.editor.WaveDrawer()),
                                                      placed.direction);
    case ControlKind::FillModeButton:
        return MakePlain<IGwScopeHollowFilledSelectionButton>(context, placed,
                                                              std::ref(*context.editor.WaveDrawer()));
    default:
        return nullptr;
    }
}

MadeControl MakeTab(PanelContext& context, const PlacedControl& placed) {
    MadeControl tab = MakePlain<IGwTabButton>(context, placed, placed.direction);
    context.editor.SetTab(placed.direction, tab.get());
    return tab;
}

} // namespace

MadeControl MakeButton(PanelContext& context, const PlacedControl& placed) {
    switch (placed.kind) {
    case ControlKind::SyncButton:
        return MakePlain<IGwSyncButton>(context, placed, IGwSyncButton::kPhaser);
    case ControlKind::ArrowButton:
        return MakePlain<IGwArrowActionButton>(context, placed, placed.direction);
    case ControlKind::RestoreCurve:
        return MakePlain<IGwRestoreCurveButton>(context, placed);
    case ControlKind::ResetButton:
        return MakePlain<IGwResetButton>(context, placed);
    case ControlKind::UrlButton:
        return MakeUrlButton(context, placed);
    case ControlKind::Tab:
        return MakeTab(context, placed);
    default:
        break;
    }
    if (MadeControl button = MakeProgramButton(context, placed)) return button;
    return MakeScopeButton(context, placed);
}

} // namespace Grimworks
