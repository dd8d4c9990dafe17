#pragma once

#include "core/Limits.h"

#include <array>
#include <string>
#include <string_view>

namespace Grimworks {

/// Where an envelope stands. A free voice has both of its envelopes Off.
enum class EnvelopeStage : int { Off = 0, Attack = 1, Decay = 2, Sustain = 3, Release = 4 };

/// Points of an envelope's display curve.
inline constexpr int kEnvelopeCurvePoints = 116;

/// Exponential ADSR: every stage is the recursion level = base + level * coefficient towards a target beyond
/// its end, and how far beyond is the shape (after Nigel Redmon, "Envelope generators - ADSR code").
/// Setters on the parameter path under the plug-in lock, Tick on the audio thread.
class EnvelopeGenerator {
public:
    explicit EnvelopeGenerator(std::string_view displayName = {});

    /// Stage lengths 0..1 of the duration; 0 takes effect within one sample.
    void SetAttack(double x);
    void SetDecay(double x);
    void SetRelease(double x);

    /// Level 0..1; a held note glides to it.
    void SetSustain(double x);

    /// 0..1 for a length of 5 ms to 5 s that a stage value of 1 means; the stages keep their stage values.
    void SetDuration(double x);

    /// 0..1: small values bend the curves strongly, large ones make them nearly straight.
    void SetShape(double x);

    /// Rate in Hz. The stages keep their lengths in samples until they are set again.
    void SetSampleRate(double rate) { sampleRate = rate; }

    /// Note on: attack from 0.
    void Start() {
        stage = EnvelopeStage::Attack;
        output = 0.0;
    }

    /// Note off: release from the present level, unless the envelope is off.
    void Release() {
        if (stage != EnvelopeStage::Off) stage = EnvelopeStage::Release;
    }

    /// The next level, 0..1. A stage that ends leaves the next one to the following tick.
    double Tick() {
        switch (stage) {
        case EnvelopeStage::Off:
            break;
        case EnvelopeStage::Attack:
            output = attackBase + output * attackCoef;
            if (output >= 1.0) {
                output = 1.0;
                stage = EnvelopeStage::Decay;
            }
            break;
        case EnvelopeStage::Decay:
            output = decayBase + output * decayCoef;
            if (output <= sustainLevel) {
                output = sustainState = sustainLevel;
                stage = EnvelopeStage::Sustain;
            }
            break;
        case EnvelopeStage::Sustain:
            sustainState = kSustainA * sustainState + kSustainB * sustainLevel;
            output = sustainState;
            break;
        case EnvelopeStage::Release:
            output = releaseBase + output * releaseCoef;
            if (output <= 0.0) {
                output = 0.0;
                stage = EnvelopeStage::Off;
            }
            break;
        }
        return output;
    }

    [[nodiscard]] EnvelopeStage Stage() const { return stage; }
    [[nodiscard]] bool IsOff() const { return stage == EnvelopeStage::Off; }
    [[nodiscard]] double Output() const { return output; }     ///< last level, 0..1
    [[nodiscard]] double Duration() const { return duration; } ///< seconds of a stage value of 1
    [[nodiscard]] const std::string& Name() const { return name; }

    /// The curve for a display: attack, decay and release share the width, the first and the last point are
    /// 0, every point is times `scale`.
    void DrawCurve(std::array<double, kEnvelopeCurvePoints>& out, double scale) const;

private:
    static constexpr double kSustainA = 0.99;
    static constexpr double kSustainB = 0.010000000000000009;

    void UpdateAttack();
    void UpdateDecay();
    void UpdateRelease();

    EnvelopeStage stage = EnvelopeStage::Off;
    double output = 0.0;
    double attackRate = 0.0; ///< samples
    double decayRate = 0.0;
    double releaseRate = 0.0;
    double attackCoef = 0.0;
    double decayCoef = 0.0;
    double releaseCoef = 0.0;
    double sustainLevel = 1.0;
    double targetRatioA = 0.0;  ///< overshoot of the attack
    double targetRatioDR = 0.0; ///< undershoot of decay and release
    double attackBase = 0.0;
    double decayBase = 0.0;
    double releaseBase = 0.0;
    double sampleRate = kDefaultSampleRate; ///< Hz
    double duration = 0.2;                  ///< seconds
    double sustainState = 0.0;
    std::string name;
};

/// One of the setters above, for code that hands a parameter to many envelopes.
using EnvelopeSetter = void (EnvelopeGenerator::*)(double);

} // namespace Grimworks
