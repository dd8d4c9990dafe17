#include "plugin/ThudForge.h"

#include "core/Maths.h"

#include <algorithm>
#include <cmath>

namespace Grimworks {

namespace {

constexpr double kOutputCeiling = 3.1622777; ///< +10 dB

constexpr std::uint8_t kNoteOffStatus = 128;
constexpr std::uint8_t kNoteOnStatus = 144;

} // namespace

void ThudForge::ProcessDoubleReplacing(double** inputs, double** outputs, int frames) {
    const StereoView out{outputs[0], outputs[1]};
    ClearInputs(inputs, frames);
    ClearSums(frames);
    QueueTestNote();
    RunWaveEdit();

    TickVoices(frames);
    RenderVoices(frames);
    ClampEnvelopeSums(frames);

    FilterSubLayer(frames);
    ProcessEffects(voiceOut.View(), frames);
    std::copy_n(fxOut.Left(), frames, out.left);
    std::copy_n(fxOut.Right(), frames, out.right);

    MixSubLayer(out, frames);
    Limit(out, frames);
    MixBypass(out, frames);
    ApplyVolumeAndPan(out, frames);
    ClipAndMeasure(out, frames);
    FeedDisplays(out, frames);

    midi.Flush(frames);
    ApplyStroke();
    CheckTempo();
}

/// The instrument has no audio input: what a host hands in is wiped.
void ThudForge::ClearInputs(double** inputs, int frames) {
    if (inputs == nullptr) return;
    for (int channel = 0; channel < 2; ++channel) {
        if (inputs[channel] != nullptr) std::fill_n(inputs[channel], frames, 0.0);
    }
}

/// Only the block's own frames are ever read, so only those are cleared.
void ThudForge::ClearSums(int frames) {
    for (double* channel : {voiceOut.Left(), voiceOut.Right(), subOut.Left(), subOut.Right(),
                            volEnvSum.data(), filterEnvSum.data()}) {
        std::fill_n(channel, frames, 0.0);
    }
    std::fill_n(modSamples.begin(), frames, ModulationRecord{});
}

void ThudForge::QueueTestNote() {
    const PlayRequest::Request request = playRequest.Take();
    if (request.note == 0) return;
    const auto note = static_cast<std::uint8_t>(request.note);
    if (request.mode == 1 || request.mode == 2) midi.Add({0, kNoteOffStatus, note, 0});
    if (request.mode == 2) midi.Add({0, kNoteOnStatus, note, 127});
}

void ThudForge::TickVoices(int frames) {
    for (int i = 0; i < frames; ++i) {
        midi.Advance();
        voices.Tick();
    }
}

void ThudForge::RenderVoices(int frames) {
    voices.Render({voiceOut.View(), subOut.Left(), volEnvSum.data(), filterEnvSum.data(), modSamples.data()},
                  frames);
}

void ThudForge::ClampEnvelopeSums(int frames) {
    for (std::vector<double>* sum : {&volEnvSum, &filterEnvSum}) {
        for (int i = 0; i < frames; ++i) {
            double& level = (*sum)[static_cast<std::size_t>(i)];
            level = Clamp(level, -1.0, 1.0);
        }
    }
}

void ThudForge::MixSubLayer(StereoView out, int frames) {
    const double amount = values[Param::BassLayerAmount];
    const bool solo = values[Param::BassLayerSolo] == 1.0;
    // Both channels take the left one: the layer is mono, also behind its filters.
    const double* sub = subOut.Left();
    for (int i = 0; i < frames; ++i) {
        const double layer = subAmountSm.Step(amount) * sub[i];
        out.left[i] = solo ? layer : out.left[i] + layer;
        out.right[i] = solo ? layer : out.right[i] + layer;
    }
}

void ThudForge::Limit(StereoView out, int frames) {
    limiter.Process(out, frames);
}

void ThudForge::MixBypass(StereoView out, int frames) {
    const double target = values[Param::BypassFX];
    for (int i = 0; i < frames; ++i) {
        const double b = bypassSm.Step(target);
        out.left[i] = b * voiceOut.Left()[i] + (1.0 - b) * out.left[i];
        out.right[i] = b * voiceOut.Right()[i] + (1.0 - b) * out.right[i];
    }
    bypassMix = bypassSm.state;
}

void ThudForge::ApplyVolumeAndPan(StereoView out, int frames) {
    const double volume = values[Param::Volume];
    const double pan = values[Param::Pan];
    for (int i = 0; i < frames; ++i) {
        const double v = volumeSm.Step(volume);
        const double p = panSm.Step(pan);
        if (p < 0.5) {
            out.left[i] *= v;
            out.right[i] *= 2.0 * p * v;
        } else {
            out.left[i] *= (1.0 - 2.0 * (p - 0.5)) * v;
            out.right[i] *= v;
        }
    }
}

void ThudForge::ClipAndMeasure(StereoView out, int frames) {
    double left = peakLeft.load(std::memory_order_relaxed);
    double right = peakRight.load(std::memory_order_relaxed);
    for (int i = 0; i < frames; ++i) {
        out.left[i] = Clamp(out.left[i], -kOutputCeiling, kOutputCeiling);
        out.right[i] = Clamp(out.right[i], -kOutputCeiling, kOutputCeiling);
        left = std::max(left, std::fabs(out.left[i]));
        right = std::max(right, std::fabs(out.right[i]));
    }
    const bool reset = peakResetPending.exchange(false, std::memory_order_acquire);
    peakLeft.store(reset ? 0.0 : left, std::memory_order_relaxed);
    peakRight.store(reset ? 0.0 : right, std::memory_order_relaxed);
}

} // namespace Grimworks
