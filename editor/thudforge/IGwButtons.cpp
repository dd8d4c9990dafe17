#include "editor/thudforge/IGwButtons.h"

#include "core/Choice.h"
#include "core/ParameterIds.h"
#include "core/TempoSync.h"
#include "editor/IGraphics.h"
#include "plugin/ThudForge.h"

#include <algorithm>

namespace Grimworks {

namespace {

constexpr int kCopiedValues = 5;
constexpr double kLargestFactor = 32.0;

/// Moves a parameter as one gesture, so that a host records it; every control of it follows.
void MoveParameter(ThudForge& instrument, int id, double normalized) {
    instrument.BeginInformHostOfParamChange(id);
    instrument.SetParameterFromPlug(id, normalized);
    instrument.EndInformHostOfParamChange(id);
}

} // namespace

IGwActionButton::IGwActionButton(ThudForge* instrument, int x, int y, const IBitmap& strip)
    : IContactControl(instrument, x, y, -1, strip), plug(instrument) {}

void IGwActionButton::OnMouseDown(int /*x*/, int /*y*/, const IMouseMod& mod) {
    value = 1.0;
    OnPress(mod);
    SetDirty(true);
}

void IGwPlayButton::OnPress(const IMouseMod& mod) {
    const int playMode = mod.R ? 1 : 2;
    plug->playRequest.Post(kPlayNote, playMode);
}

IGwArrowActionButton::IGwArrowActionButton(ThudForge* instrument, int x, int y, const IBitmap& strip,
                                           int copyDirection)
    : IGwActionButton(instrument, x, y, strip), direction(copyDirection) {}

void IGwArrowActionButton::OnPress(const IMouseMod& /*mod*/) {
    const bool toFilter = direction == VolumeToFilter;
    const int from = toFilter ? Param::EnvAttack : Param::FilterAttack;
    const int to = toFilter ? Param::FilterAttack : Param::EnvAttack;
    for (int i = 0; i < kCopiedValues; ++i)
        MoveParameter(*plug, to + i, plug->GetParameterNormalized(from + i));
}

IGwSyncButton::IGwSyncButton(ThudForge* instrument, int x, int y, const IBitmap& strip, int rateOf)
    : IGwActionButton(instrument, x, y, strip), lfo(rateOf) {}

void IGwSyncButton::OnPress(const IMouseMod& /*mod*/) {
    const int rate = lfo == kPhaser ? Param::PhaserRate : Osc(lfo, OscParam::LfoRate);
    MoveParameter(*plug, rate, TempoSyncedRate(plug->GetTempo(), factor));
    factor *= 2.0;
    if (factor > kLargestFactor) factor = 1.0;
}

IGwUrlButton::IGwUrlButton(ThudForge* instrument, int x, int y, const IBitmap& strip,
                           std::string_view address, std::string_view secondAddress)
    : IGwActionButton(instrument, x, y, strip), url(address), secondUrl(secondAddress) {}

void IGwUrlButton::OnPress(const IMouseMod& /*mod*/) {
    if (graphics == nullptr || graphics->OpenURL(url)) return;
    graphics->OpenURL(secondUrl);
}

IGwModeSwitch::IGwModeSwitch(ThudForge* instrument, int x, int y, const IBitmap& strip, int parameter,
                             int choices, int stepDirection, bool wrapAround)
    : IGwActionButton(instrument, x, y, strip), target(parameter), steps(choices), direction(stepDirection),
      wrap(wrapAround) {}

int IGwModeSwitch::NextIndex(int index, bool byTen) const {
    const int last = steps - 1;
    const int step = direction == Next ? 1 : -1;
    if (byTen) return std::clamp(index + 10 * step, 0, last);
    const int next = index + step;
    if (next >= 0 && next <= last) return next;
    if (!wrap) return index;
    return next < 0 ? last : 0;
}

void IGwModeSwitch::OnPress(const IMouseMod& mod) {
    if (steps < 2) return;
    const int index = ClampedChoice(plug->GetParameterNormalized(target), steps - 1);
    const int next = NextIndex(index, mod.R);
    if (next != index) MoveParameter(*plug, target, static_cast<double>(next) / (steps - 1));
}

} // namespace Grimworks
