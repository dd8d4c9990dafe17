#pragma once

#include "core/Limits.h"
#include "voice/EnvelopeGenerator.h"
#include "voice/PitchEnvelope.h"
#include "voice/WaveformProvider.h"

#include <array>
#include <span>

namespace Grimworks {

class IGwCurve;
class ThudForge;

/// The pictures of waves and envelopes: the points that the curve controls show, made anew when a parameter
/// behind them changes. Editor thread.
class EditorPictures {
public:
    enum Envelope : int { Volume = 0, Filter = 1 };

    explicit EditorPictures(ThudForge& instrument);

    // Points to show, one span for each picture; they stay where they are. Oscillators 0..2.
    [[nodiscard]] std::span<const double> WavePoints(int oscillator) const;
    [[nodiscard]] std::span<const double> EnvelopePoints(Envelope envelope) const;
    [[nodiscard]] std::span<const double> PitchPoints() const { return pitch; }

    // The controls that show them; not owned, null for none.
    void SetWave(int oscillator, IGwCurve* control);
    void SetEnvelope(Envelope envelope, IGwCurve* control);
    void SetPitch(IGwCurve* control);

    /// A parameter has changed: the pictures that depend on it are out of date.
    void Changed(int id);

    /// Makes all pictures that are out of date and has them redrawn.
    void Update();

private:
    static constexpr int kPictures = kOscillators + 3;

    void Render(int picture);
    void RenderEnvelope(Envelope envelope);

    ThudForge& plug;
    std::array<std::array<double, kWavePreviewPoints>, kOscillators> waves{};
    std::array<std::array<double, kEnvelopeCurvePoints>, 2> envelopes{};
    std::array<double, kPitchCurvePoints> pitch{};
    std::array<IGwCurve*, kPictures> controls{}; ///< waves, envelopes, pitch
    std::array<bool, kPictures> stale{};
};

} // namespace Grimworks
