#include "editor/thudforge/EditorPictures.h"

#include "core/ParameterIds.h"
#include "editor/thudforge/IGwCurve.h"
#include "plugin/ThudForge.h"

#include <cstddef>

namespace Grimworks {

namespace {

constexpr std::size_t kEnvelopes = kOscillators; // index of the first of two
constexpr std::size_t kPitch = kOscillators + 2;

bool IsOscillator(int oscillator) {
    return oscillator >= 0 && oscillator < kOscillators;
}

} // namespace

EditorPictures::EditorPictures(ThudForge& instrument) : plug(instrument) {
    stale.fill(true);
}

std::span<const double> EditorPictures::WavePoints(int oscillator) const {
    if (!IsOscillator(oscillator)) return {};
    return waves[static_cast<std::size_t>(oscillator)];
}

std::span<const double> EditorPictures::EnvelopePoints(Envelope envelope) const {
    return envelopes[static_cast<std::size_t>(envelope)];
}

void EditorPictures::SetWave(int oscillator, IGwCurve* control) {
    if (IsOscillator(oscillator)) controls[static_cast<std::size_t>(oscillator)] = control;
}

void EditorPictures::SetEnvelope(Envelope envelope, IGwCurve* control) {
    controls[kEnvelopes + static_cast<std::size_t>(envelope)] = control;
}

void EditorPictures::SetPitch(IGwCurve* control) {
    controls[kPitch] = control;
}

void EditorPictures::Changed(int id) {
    if (id < 0) return;
    if (id < Param::EnvAttack) {
        const auto parameter = static_cast<OscParam>(id % kOscParams);
        if (parameter == OscParam::Waveform || parameter == OscParam::Phase)
            stale[static_cast<std::size_t>(id / kOscParams)] = true;
    } else if (id == Param::AdsrShape) {
        stale[kEnvelopes + Volume] = stale[kEnvelopes + Filter] = true;
    } else if (id <= Param::EnvAmount) {
        stale[kEnvelopes + Volume] = true;
    } else if (id <= Param::FilterEnvAmount) {
        stale[kEnvelopes + Filter] = true;
    } else if (id >= Param::PitchOnOff && id <= Param::PitchDown) {
        stale[kPitch] = true;
    }
}

void EditorPictures::Update() {
    for (std::size_t picture = 0; picture < stale.size(); ++picture) {
        if (!stale[picture]) continue;
        stale[picture] = false;
        Render(static_cast<int>(picture));
        if (controls[picture] != nullptr) controls[picture]->SetDirty(false);
    }
}

void EditorPictures::Render(int picture) {
    const auto index = static_cast<std::size_t>(picture);
    if (index < kEnvelopes) {
        plug.RenderWave(picture, waves[index]);
    } else if (index == kPitch) {
        plug.RenderPitchEnvelope(pitch);
    } else {
        RenderEnvelope(static_cast<Envelope>(index - kEnvelopes));
    }
}

/// An envelope stands on the ground of its display: levels of 0..1 take its whole height.
void EditorPictures::RenderEnvelope(Envelope envelope) {
    auto& points = envelopes[static_cast<std::size_t>(envelope)];
    if (envelope == Volume) {
        plug.RenderVolumeEnvelope(points);
    } else {
        plug.RenderFilterEnvelope(points);
    }
    for (double& point : points)
        point = 2.0 * point - 1.0;
}

} // namespace Grimworks
