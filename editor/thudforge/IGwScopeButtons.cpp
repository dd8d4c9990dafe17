#include "editor/thudforge/IGwScopeButtons.h"

#include "editor/thudforge/IGwWaveDrawer.h"
#include "plugin/ThudForge.h"

#include <array>
#include <cstddef>
#include <cstdlib>
#include <string>

namespace Grimworks {

namespace {

/// The signals by the numbers of their buttons, from 1 on.
constexpr std::array<int, IGwWaveDrawer::kWaves> kWaveOfNumber{
    IGwWaveDrawer::Lfo1,      IGwWaveDrawer::Lfo2,      IGwWaveDrawer::Lfo3,
    IGwWaveDrawer::VolumeEnv, IGwWaveDrawer::FilterEnv, IGwWaveDrawer::Output};

int WaveOf(int number) {
    if (number < 1 || number > IGwWaveDrawer::kWaves) return -1;
    return kWaveOfNumber[static_cast<std::size_t>(number - 1)];
}

} // namespace

IGwZoomSwitch::IGwZoomSwitch(ThudForge* instrument, int x, int y, const IBitmap& strip, bool in)
    : IGwActionButton(instrument, x, y, strip), zoomIn(in) {}

void IGwZoomSwitch::OnPress(const IMouseMod& mod) {
    constexpr int kCoarse = 4;
    plug->SetScopeZoom(zoomIn, mod.R ? kCoarse : 1);
}

IGwFreezeButton::IGwFreezeButton(ThudForge* instrument, int x, int y, const IBitmap& strip)
    : ISwitchControl(instrument, x, y, -1, strip), plug(instrument) {}

void IGwFreezeButton::OnMouseDown(int /*x*/, int /*y*/, const IMouseMod& /*mod*/) {
    const bool frozen = !plug->Scope().IsFrozen();
    plug->SetScopeFrozen(frozen);
    value = frozen ? 1.0 : 0.0;
    SetDirty(true);
}

IGwScopeWaveSelectionButton::IGwScopeWaveSelectionButton(ThudForge* instrument, int x, int y,
                                                         const IBitmap& strip, IGwWaveDrawer& scope,
                                                         int selection)
    : ISwitchControl(instrument, x, y, -1, strip), drawer(scope), number(selection) {
    value = drawer.Shows(WaveOf(number)) ? 1.0 : 0.0;
}

void IGwScopeWaveSelectionButton::OnMouseDown(int /*x*/, int /*y*/, const IMouseMod& /*mod*/) {
    const int wave = WaveOf(number);
    drawer.Show(wave, !drawer.Shows(wave));
    value = drawer.Shows(wave) ? 1.0 : 0.0;
    SetDirty(true);
}

IGwScopeHollowFilledSelectionButton::IGwScopeHollowFilledSelectionButton(ThudForge* instrument, int x, int y,
                                                                         const IBitmap& strip,
                                                                         IGwWaveDrawer& scope)
    : ISwitchControl(instrument, x, y, -1, strip), drawer(scope) {
    FollowDrawer();
}

void IGwScopeHollowFilledSelectionButton::FollowDrawer() {
    value = drawer.GetFillMode() * 0.5;
}

void IGwScopeHollowFilledSelectionButton::OnMouseDown(int /*x*/, int /*y*/, const IMouseMod& /*mod*/) {
    drawer.NextFillMode();
    FollowDrawer();
    SetDirty(true);
}

IZoomTextControl::IZoomTextControl(ThudForge* instrument, const IRECT& rectangle, const IText& style,
                                   std::string_view first)
    : ITextControl(instrument, rectangle, style, first), plug(instrument) {}

void IZoomTextControl::OnMouseWheel(int /*x*/, int /*y*/, const IMouseMod& /*mod*/, int d) {
    plug->SetScopeZoom(d >= 1, std::abs(d));
}

void IZoomTextControl::OnGUIIdle() {
    SetTextFromPlug(std::to_string(plug->Scope().ZoomPercent()) + " %");
}

} // namespace Grimworks
