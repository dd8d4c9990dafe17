#include "editor/thudforge/IGwLevelDisplays.h"

#include "core/NumberText.h"
#include "editor/IGraphics.h"
#include "plugin/ThudForge.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace Grimworks {

namespace {

const IColor kTooLoud{255, 255, 0, 0};
const IColor kFine{255, 128, 255, 0};

std::string LevelText(double level) {
    if (!(level > 0.0)) return "MAXIMUM AUDIO LEVEL: -oo dB";
    const auto decibels = static_cast<float>(20.0 * std::log10(level));
    return "MAXIMUM AUDIO LEVEL: " + FixedText(static_cast<double>(decibels), 7, 3) + " dB";
}

double HighestLevel(const ThudForge& plug) {
    return std::max(plug.PeakLeft(), plug.PeakRight());
}

} // namespace

IGwMaxLevelText::IGwMaxLevelText(ThudForge* instrument, const IRECT& rectangle, const IText& style,
                                 std::string_view first)
    : ITextControl(instrument, rectangle, style, first), plug(instrument) {}

void IGwMaxLevelText::OnGUIIdle() {
    if (HighestLevel(*plug) != level) TakeLevel();
}

void IGwMaxLevelText::TakeLevel() {
    level = HighestLevel(*plug);
    text.color = level > 1.0 ? kTooLoud : kFine;
    SetTextFromPlug(LevelText(level));
}

bool IGwMaxLevelText::Draw(IGraphics& canvas) {
    TakeLevel();
    return ITextControl::Draw(canvas);
}

void IGwResetButton::OnPress(const IMouseMod& /*mod*/) {
    plug->ResetMaxLevel();
}

IGwHostInfoText::IGwHostInfoText(ThudForge* instrument, const IRECT& rectangle, const IText& style)
    : ITextControl(instrument, rectangle, style), plug(instrument) {}

void IGwHostInfoText::OnGUIIdle() {
    if (!hide) TakeInfo();
}

void IGwHostInfoText::TakeInfo() {
    double sampleRate = 0.0;
    int blockSize = 0;
    {
        const PlugLockGuard guard(plug->Lock());
        sampleRate = plug->GetSampleRate();
        blockSize = plug->GetBlockSize();
    }
    SetTextFromPlug("HOST SAMPLE RATE: " + FixedText(sampleRate, 7, 2) +
                    " Hz    TEMPO: " + FixedText(plug->ShownTempo(), 7, 3) +
                    " BPM    BLOCKSIZE: " + std::to_string(blockSize) + " samples");
}

bool IGwHostInfoText::Draw(IGraphics& canvas) {
    TakeInfo();
    return ITextControl::Draw(canvas);
}

IGwHostNameText::IGwHostNameText(ThudForge* instrument, const IRECT& rectangle, const IText& style,
                                 std::string_view first)
    : ITextControl(instrument, rectangle, style, first), plug(instrument) {}

void IGwHostNameText::OnGUIIdle() {
    if (plug->TakeHostIdentified()) SetTextFromPlug(plug->HostInfo());
}

IGwVuEyeDrawer::IGwVuEyeDrawer(ThudForge* instrument, const IRECT& rectangle, bool left)
    : IControl(instrument, rectangle), plug(instrument), leftEye(left) {}

int IGwVuEyeDrawer::Brightness() const {
    const double level = leftEye ? plug->FollowerLeft() : plug->FollowerRight();
    return static_cast<int>(std::floor(std::fabs(level) * 255.0));
}

void IGwVuEyeDrawer::OnGUIIdle() {
    // One of the two does it for both: the follower measures both channels.
    if (leftEye && !plug->IsAudioActive() && plug->CurrentPage() == ThudForge::AboutPage) {
        plug->FollowSilence();
    }
    if (!hide && Brightness() != shownBrightness) SetDirty(false);
}

/// The eyes look grim: each is highest at its outer end.
bool IGwVuEyeDrawer::Draw(IGraphics& canvas) {
    shownBrightness = Brightness();
    const int outer = leftEye ? rect.L : rect.R - 1;
    const int inner = leftEye ? rect.R - 1 : rect.L;
    return canvas.FillTriangle({255, shownBrightness, 0, 0}, outer, rect.T, inner, rect.B - 1, outer,
                               rect.B - 1, blend);
}

} // namespace Grimworks
