#pragma once

#include "core/AudioProcessingUnit.h"
#include "core/SmoothedValue.h"
#include "core/StereoBuffer.h"

#include <span>

namespace Grimworks {

inline constexpr int kShaperCurvePoints = 128;
inline constexpr int kShaperSignalPoints = 120;

/// Level-dependent waveshaper: bends a narrow window of amplitudes by a small bump. The window slides from
/// the top of the range towards zero as the effective amount grows. The result is not limited.
class DynShaper : public AudioProcessingUnit {
public:
    /// Knob 0..1, squared. A value that is not finite is ignored.
    void SetAmount(double value);
    /// Any value but 0 turns the bump over.
    void SetInvert(double value) { invert = value != 0.0; }
    /// Value 0..1: sine, triangle or pulse.
    void SetWaveform(double value);
    /// Value 0..1: "Shaper", "Sat.Shaper", "Boost Shaper", "Boost+Sat.Shaper".
    void SetMode(double value);
    /// Value 0..1: both half-waves, the positive or the negative one only.
    void SetPolarity(double value);

    /// In place; `modulation` is a factor a frame for the amount, or null. Does nothing once faded out, or at
    /// amount exactly 0, when fade and smoother stand still too. Audio thread.
    void Process(StereoView io, int frames, const double* modulation);

    /// The shaper's answer to one sample at the effect e, 0..1. Without the boost of the boost modes.
    [[nodiscard]] double Shape(double sample, double e) const;

    /// Draws the answers to a ramp from -1 and to one cycle of a full-scale sine, at the set amount.
    void RenderPreview(std::span<double, kShaperCurvePoints> curve,
                       std::span<double, kShaperSignalPoints> signal) const;

private:
    enum Waveform : int { kSine = 0, kTriangle = 1, kPulse = 2 };
    enum Mode : int { kShaper = 0, kSaturated = 1, kBoost = 2, kBoostSaturated = 3 };
    enum Polarity : int { kBoth = 0, kPositive = 1, kNegative = 2 };

    static constexpr double kWidth = 0.25; ///< of the window

    [[nodiscard]] double Bump(double t) const;

    SmoothedValue smoothed{0.99, 0.01, 0.0};
    double amount = 0.0;
    int waveform = kSine;
    bool invert = false;
    int mode = kShaper;
    int polarity = kBoth;
};

} // namespace Grimworks
