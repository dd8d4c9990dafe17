#pragma once

#include "core/Limits.h"

#include <array>
#include <cmath>

namespace Grimworks {

/// Points of the pitch envelope's display curve.
inline constexpr int kPitchCurvePoints = 198;

/// The pitch sweep that turns a plain tone into a kick: a rise within the first millisecond, a fall along a
/// power curve, and a straight slide below the pitch that stays. A pure function of note time, so all voices
/// share one. Setters under the plug-in lock, Factor on the audio thread.
class PitchEnvelope {
public:
    PitchEnvelope() = default;
    virtual ~PitchEnvelope() = default;
    PitchEnvelope(const PitchEnvelope&) = default;
    PitchEnvelope& operator=(const PitchEnvelope&) = default;

    /// Stored only: the sweep is measured in seconds.
    void SetSampleRate(double rate) { sampleRate = rate; }

    /// Exactly 0 switches the envelope off, the slide included.
    void SetOnOff(double value) { off = value == 0.0; }
    /// 0..1 for a peak of up to 21 times the pitch.
    void SetAmount(double value) { amount = value; }
    /// 0..1 for a fall of up to 2 s. Below 0 the fall is left out, and the slide ends before the rise does.
    void SetDuration(double value) { decayTime = value * 2.0; }
    /// 0..1, limited to 0.002 from below: how soon the fall comes.
    void SetPower(double value) { power = value > kSmallestPower ? value : kSmallestPower; }
    /// 0..1 of the pitch that the slide takes away in the end.
    void SetDown(double value) { down = value; }

    /// Switched off: the factor is 1 at all times.
    [[nodiscard]] bool IsOff() const { return off; }

    /// Frequency multiplier at this note time in seconds, 0 or later.
    [[nodiscard]] double Factor(double seconds) const {
        if (off) return 1.0;
        const double end = kAttackTime + decayTime;
        if (seconds >= end) return (seconds < kAttackTime ? Rise(seconds) : 1.0) - down;
        return Rise(seconds) - down * seconds / end;
    }

    /// The curve for a display: rises as a share of the largest peak, falls below the pitch at full scale.
    void DrawCurve(std::array<double, kPitchCurvePoints>& out) const;

private:
    static constexpr double kAttackTime = 0.001; ///< seconds
    static constexpr double kAmountScale = 20.0;
    static constexpr double kPowerScale = 20.0;
    static constexpr double kSmallestPower = 0.002;

    /// The sweep before its end, without the slide. A time that is not a number counts as the end.
    [[nodiscard]] double Rise(double seconds) const {
        const double peak = kAmountScale * amount;
        if (seconds < kAttackTime) return 1.0 + peak * seconds / kAttackTime;
        if (peak == 0.0) return 1.0;
        const double u = (seconds - kAttackTime) / decayTime;
        return 1.0 + peak * std::pow(1.0 - u, kPowerScale * power);
    }

    double sampleRate = kDefaultSampleRate; ///< Hz
    bool off = false;
    double decayTime = 0.1; ///< seconds
    double amount = 0.0;
    double power = kSmallestPower;
    double down = 0.0;
};

} // namespace Grimworks
