#include "core/Choice.h"
#include "plugin/ThudForge.h"

#include <cmath>

namespace Grimworks {

namespace {

/// A preview whose amount still glides by more than this is rendered again.
constexpr double kSettled = 1e-4;

} // namespace

void ThudForge::SelectPage(int page) {
    if (page < SynthPage || page > AboutPage) return;
    const PlugLockGuard guard(Lock());
    if (page == ScopePage) scope.Blank();
    currentPage.store(page, std::memory_order_relaxed);
}

void ThudForge::SetScopeFrozen(bool frozen) {
    const PlugLockGuard guard(Lock());
    scope.SetFrozen(frozen);
}

void ThudForge::ResetMaxLevel() {
    const PlugLockGuard guard(Lock());
    peakResetPending = activeFlag.load();
    if (activeFlag) return;
    peakLeft.store(0.0, std::memory_order_relaxed);
    peakRight.store(0.0, std::memory_order_relaxed);
}

void ThudForge::FollowSilence() {
    const PlugLockGuard guard(Lock());
    follower.ProcessQuiet();
    KeepFollower();
}

void ThudForge::KeepFollower() {
    followerLeft.store(follower.Left(), std::memory_order_relaxed);
    followerRight.store(follower.Right(), std::memory_order_relaxed);
}

/// Only the page that is looked at costs the callback anything.
void ThudForge::FeedDisplays(StereoView out, int frames) {
    switch (CurrentPage()) {
    case ScopePage:
        scope.Feed({out, modSamples.data(), volEnvSum.data(), filterEnvSum.data(), frames}, GetSampleRate());
        break;
    case AboutPage:
        follower.Process(out, frames);
        KeepFollower();
        break;
    default:
        break;
    }
}

void ThudForge::RunWaveEdit() {
    if (!waveEditPending.load(std::memory_order_acquire)) return;
    waveEditPending.store(false, std::memory_order_relaxed);
    waves.RebuildSet(ClampedChoice(editedWave, kWaveforms - 1), waveDrawing);
    waveDrawing.fill(0.0);
    for (int oscillator = 0; oscillator < kOscillators; ++oscillator)
        changedParameters.Mark(Osc(oscillator, OscParam::Waveform));
}

void ThudForge::RequestCurveOperation(int code) {
    const PlugLockGuard guard(Lock());
    if (activeFlag) {
        pendingCurve.store(code, std::memory_order_release);
    } else {
        RunCurveOperationNow(code);
    }
}

/// A stroke that waits comes first: it was drawn before the operation was asked for.
void ThudForge::RunCurveOperationNow(int code) {
    ApplyStroke();
    RunCurveOperation(code, random, editorStage.GetDistortion(), audioStage.GetDistortion());
    curveChanged.store(true, std::memory_order_release);
}

void ThudForge::SetDrawnCurveWidth(int width) {
    const PlugLockGuard guard(Lock());
    drawnCurve = DrawnCurve(width);
    curveChanged.store(true, std::memory_order_release);
}

void ThudForge::PressCurve(int x, double v) {
    const PlugLockGuard guard(Lock());
    if (TakeCurveChanged()) UpdateCurveDisplay();
    drawnCurve.Press(x, v);
}

void ThudForge::DragCurve(int x, double v, int dX) {
    const PlugLockGuard guard(Lock());
    if (TakeCurveChanged()) UpdateCurveDisplay();
    drawnCurve.Drag(x, v, dX);
}

void ThudForge::ApplyStroke() {
    if (drawnCurve.HasStroke()) ApplyDrawnCurve();
}

void ThudForge::ApplyDrawnCurve() {
    const PlugLockGuard guard(Lock());
    CurvePoints points;
    drawnCurve.WriteTo(points);
    editorStage.GetDistortion().SetPoints(points);
    audioStage.GetDistortion().SetPoints(points);
    previewChanged.store(true, std::memory_order_release);
}

bool ThudForge::ApplyStrokeIfSilent() {
    if (activeFlag) return false;
    const PlugLockGuard guard(Lock());
    if (!drawnCurve.HasStroke()) return false;
    ApplyDrawnCurve();
    RenderCurvePreview();
    return true;
}

/// The stage's amount glides, and a preview moves it only so far: what still moves is rendered again with the
/// next tick.
void ThudForge::RenderCurvePreview() {
    const PlugLockGuard guard(Lock());
    Distortion& distortion = editorStage.GetDistortion();
    const double before = distortion.SmoothedAmount();
    distortion.RenderPreview(curvePreview.curve, curvePreview.signal);
    const bool moves = std::fabs(distortion.SmoothedAmount() - before) > kSettled;
    previewChanged.store(moves, std::memory_order_release);
}

void ThudForge::UpdateCurveDisplay() {
    const PlugLockGuard guard(Lock());
    curveChanged.store(false, std::memory_order_relaxed);
    ApplyStroke();
    drawnCurve.ReadFrom(editorStage.GetDistortion().Points());
    RenderCurvePreview();
}

bool ThudForge::RefreshCurveDisplay() {
    if (curveChanged.load(std::memory_order_acquire)) {
        UpdateCurveDisplay();
        return true;
    }
    if (!previewChanged.load(std::memory_order_acquire)) return false;
    RenderCurvePreview();
    return true;
}

void ThudForge::RenderWave(int oscillator, std::span<double, kWavePreviewPoints> points) {
    if (oscillator < 0 || oscillator >= kOscillators) return;
    const PlugLockGuard guard(Lock());
    const double phase = values[Osc(oscillator, OscParam::Phase)] - 0.5;
    waves.PreviewWave(values[Osc(oscillator, OscParam::Waveform)], phase, points, editorRandom);
}

void ThudForge::RenderVolumeEnvelope(std::array<double, kEnvelopeCurvePoints>& points) const {
    const PlugLockGuard guard(Lock());
    volumeDisplay.DrawCurve(points, values[Param::EnvAmount]);
}

void ThudForge::RenderFilterEnvelope(std::array<double, kEnvelopeCurvePoints>& points) const {
    const PlugLockGuard guard(Lock());
    filterDisplay.DrawCurve(points, values[Param::FilterEnvAmount]);
}

void ThudForge::RenderPitchEnvelope(std::array<double, kPitchCurvePoints>& points) const {
    const PlugLockGuard guard(Lock());
    pitchEnvelope.DrawCurve(points);
}

} // namespace Grimworks
