#pragma once

#include "core/Limits.h"
#include "voice/ButterworthFrequency.h"
#include "voice/IGwFilter.h"

#include <limits>

namespace Grimworks {

inline constexpr double kButterworthRoot2 = 1.414213562373095;

/// Coefficients of y = d x + middle d x1 + d x2 - a1 y1 - a2 y2, where the design knows `middle`.
struct ButterworthCoefficients {
    double d = 0.0;
    double a1 = 0.0;
    double a2 = 0.0;
};

/// The last two inputs and outputs.
template <class Sample>
struct ButterworthState {
    Sample x1 = 0.0;
    Sample x2 = 0.0;
    Sample y1 = 0.0;
    Sample y2 = 0.0;
};

/// Bilinear second-order high pass. Resonance 1 takes the damping away altogether: it then rings without
/// decay.
struct ButterworthHighPassDesign {
    static constexpr double kMiddle = -2.0;

    [[nodiscard]] static ButterworthCoefficients Of(const ButterworthFrequency& frequency, double resonance) {
        const double w = frequency.tangent;
        const double ww = w * w;
        const double q = (kButterworthRoot2 - resonance * kButterworthRoot2) * w;
        const double d = 1.0 / (q + 1.0 + ww);
        return {d, 2.0 * (ww - 1.0) * d, (1.0 - q + ww) * d};
    }
};

/// Bilinear second-order low pass. The resonance is scaled so that some damping always remains.
struct ButterworthLowPassDesign {
    static constexpr double kMiddle = 2.0;
    static constexpr double kResonanceScale = 0.99;

    [[nodiscard]] static ButterworthCoefficients Of(const ButterworthFrequency& frequency, double resonance) {
        const double w = frequency.cotangent;
        const double ww = w * w;
        const double q = (kButterworthRoot2 - resonance * kResonanceScale * kButterworthRoot2) * w;
        const double d = 1.0 / (q + 1.0 + ww);
        return {d, 2.0 * (1.0 - ww) * d, (1.0 - q + ww) * d};
    }
};

/// What the high and the low pass share: the recursion, and coefficients that are kept for as long as cutoff
/// and resonance stand still. Audio thread.
template <class Sample, class Design>
class BiquadTweakedButterworth : public IGwFilter {
public:
    /// Cutoff 0..1 of 0.4785 of the sample rate, resonance 0..1.
    double Process(double input, double newCutoff, double newResonance) override {
        if (newCutoff != cutoff || newResonance != resonance) {
            Tune(newCutoff, newResonance, ButterworthFrequencyOf(newCutoff));
        }
        return Step(state, input, coefficients);
    }

    /// Process for filters on the same cutoff that share its frequency.
    double Process(double input, double newCutoff, double newResonance,
                   const ButterworthFrequency& frequency) {
        if (newCutoff != cutoff || newResonance != resonance) Tune(newCutoff, newResonance, frequency);
        return Step(state, input, coefficients);
    }

    /// One sample of a filter in this state with coefficients that the caller works out.
    static double Step(ButterworthState<Sample>& s, double input, const ButterworthCoefficients& c) {
        const Sample y = c.d * input + Design::kMiddle * c.d * s.x1 + c.d * s.x2 - c.a1 * s.y1 - c.a2 * s.y2;
        s.x2 = s.x1;
        s.x1 = input;
        s.y2 = s.y1;
        s.y1 = y;
        return y;
    }

    [[nodiscard]] const ButterworthState<Sample>& State() const { return state; }
    void SetState(const ButterworthState<Sample>& histories) { state = histories; }

    void SetSampleRate(double rate) override { sampleRate = rate; }
    /// Without effect: the class is the mode.
    void SetMode(int /*newMode*/) override {}

    void Reset() override {
        state = {};
        coefficients = {};
        cutoff = resonance = kNone;
    }

private:
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

    void Tune(double newCutoff, double newResonance, const ButterworthFrequency& frequency) {
        cutoff = newCutoff;
        resonance = newResonance;
        coefficients = Design::Of(frequency, resonance);
    }

    ButterworthState<Sample> state;
    ButterworthCoefficients coefficients;
    double cutoff = kNone;
    double resonance = kNone;
    double sampleRate = kDefaultSampleRate; ///< plays no part in the sound
};

template <class Sample>
class BiquadTweakedButterworthHP final : public BiquadTweakedButterworth<Sample, ButterworthHighPassDesign> {
};

template <class Sample>
class BiquadTweakedButterworthLP final : public BiquadTweakedButterworth<Sample, ButterworthLowPassDesign> {};

} // namespace Grimworks
