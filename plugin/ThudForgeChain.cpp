#include "plugin/ThudForge.h"

#include <algorithm>

namespace Grimworks {

namespace {

constexpr double kFullyBypassed = 0.9999999777;

} // namespace

void ThudForge::ProcessEffects(StereoView dry, int frames) {
    fxOut.CopyFrom(dry, frames);
    RunPendingCurve();
    if (!(bypassMix < kFullyBypassed)) return; // nothing of the wet signal is left to hear

    const StereoView fx = fxOut.View();
    const double* toDistortion = values[Param::FilterEnvToDistortion] > 0.0 ? volEnvSum.data() : nullptr;
    const double* toShaper = values[Param::FilterEnvToDynShaper] > 0.0 ? filterEnvSum.data() : nullptr;

    filterUnit.Process(fx, frames);
    ringModulator.Process(fx, frames);
    phaser.Process(fx, frames);
    audioStage.Process(fx, frames, toDistortion, toShaper);
    equalizer.Process(fx, frames);
    dumpExpand.Process(fx, frames);
    saturator.Process(fx, frames);
    tempoDelay.Process(fx, frames);
    MixDryWetAndPan(fx, dry, frames);
}

/// Curve memory belongs to this thread while sound runs: the editor only leaves a code.
void ThudForge::RunPendingCurve() {
    const int code = pendingCurve.exchange(CurveOperation::NonePending, std::memory_order_acq_rel);
    if (code == CurveOperation::NonePending) return;
    RunCurveOperationNow(code);
}

/// The wet path is panned here and the whole output again behind it: the wet signal gets the squared law, and
/// the pan's smoother moves twice a frame while the chain runs.
void ThudForge::MixDryWetAndPan(StereoView fx, StereoView dry, int frames) {
    const double mix = values[Param::DryWet];
    const double pan = values[Param::Pan];
    for (int i = 0; i < frames; ++i) {
        const double w = dryWetSm.Step(mix);
        const double p = panSm.Step(pan);
        fx.left[i] = w * fx.left[i] + (1.0 - w) * dry.left[i];
        fx.right[i] = w * fx.right[i] + (1.0 - w) * dry.right[i];
        if (p < 0.5) {
            fx.right[i] *= 2.0 * p;
        } else {
            fx.left[i] *= 1.0 - 2.0 * (p - 0.5);
        }
    }
}

/// The sub layer's own road, only with the switch at its very end. The filtered right channel is worked out
/// for the filters' sake and never heard.
void ThudForge::FilterSubLayer(int frames) {
    if (values[Param::BassLayerToFilter] != 1.0) return;
    std::copy_n(subOut.Left(), frames, subOut.Right());
    bassFilterUnit.Process(subOut.View(), frames);
    bassDumpExpand.Process(subOut.View(), frames);
}

} // namespace Grimworks
