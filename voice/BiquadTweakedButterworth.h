#pragma once

#include "core/Limits.h"
#include "core/Maths.h"
#include "voice/IGwFilter.h"

#include <cmath>
#include <limits>

namespace Grimworks {

/// The analogue frequency of a normalised cutoff, tan(pi * fc), where a cutoff of 1 is 0.4785 of the sample
/// rate. Kept for as long as the cutoff stands still; two filters on one cutoff share one.
class ButterworthTangent {
public:
    double For(double newCutoff) {
        if (newCutoff != cutoff) {
            cutoff = newCutoff;
            const double scaled = cutoff * 0.5 * kMaxCutoff;
            tangent = std::tan(kPi * (scaled > kMinCutoff ? scaled : kMinCutoff));
        }
        return tangent;
    }

private:
    static constexpr double kMaxCutoff = 0.957;
    static constexpr double kMinCutoff = 0.0001;

    double cutoff = std::numeric_limits<double>::quiet_NaN();
    double tangent = 0.0;
};

inline constexpr double kButterworthRoot2 = 1.414213562373095;

/// What the high and the low pass share: the direct form of a bilinear second-order section. `Design` gives
/// the coefficients; they are kept for as long as cutoff and resonance stand still. Audio thread.
template <class Sample, class Design>
class BiquadTweakedButterworth : public IGwFilter {
public:
    double Process(double input, double newCutoff, double newResonance) override {
        return Tick(input, newCutoff, newResonance, ownTangent);
    }

    /// Process with a tangent that is shared with other filters on the same cutoff.
    double Tick(double input, double newCutoff, double newResonance, ButterworthTangent& tangent) {
        if (newCutoff != cutoff || newResonance != resonance) Tune(newCutoff, newResonance, tangent);
        const Sample y = d * input + b1 * x1 + d * x2 - a1 * y1 - a2 * y2;
        x2 = x1;
        x1 = input;
        y2 = y1;
        y1 = y;
        return y;
    }

    void SetSampleRate(double rate) override { sampleRate = rate; }
    /// Without effect: the type is the mode.
    void SetMode(int /*newMode*/) override {}

    void Reset() override {
        x1 = x2 = y1 = y2 = 0.0;
        d = b1 = a1 = a2 = 0.0;
        cutoff = resonance = kNone;
    }

private:
    static constexpr Sample kNone = std::numeric_limits<Sample>::quiet_NaN();

    void Tune(Sample newCutoff, Sample newResonance, ButterworthTangent& tangent) {
        cutoff = newCutoff;
        resonance = newResonance;
        const Sample w = Design::Frequency(tangent.For(cutoff));
        const Sample ww = w * w;
        const Sample q = Design::Damping(resonance) * w;
        d = 1.0 / (q + 1.0 + ww);
        b1 = Design::kMiddle * d;
        a1 = 2.0 * Design::Balance(ww) * d;
        a2 = (1.0 - q + ww) * d;
    }

    Sample x1 = 0.0;
    Sample x2 = 0.0;
    Sample y1 = 0.0;
    Sample y2 = 0.0;
    Sample d = 0.0;
    Sample b1 = 0.0;
    Sample a1 = 0.0;
    Sample a2 = 0.0;
    Sample cutoff = kNone;
    Sample resonance = kNone;
    double sampleRate = kDefaultSampleRate; ///< plays no part in the sound
    ButterworthTangent ownTangent;
};

/// Resonance 1 takes the damping away altogether: the high pass then rings without decay.
struct ButterworthHighPassDesign {
    static constexpr double kMiddle = -2.0;
    static double Frequency(double tangent) { return tangent; }
    static double Damping(double resonance) { return kButterworthRoot2 - resonance * kButterworthRoot2; }
    static double Balance(double ww) { return ww - 1.0; }
};

/// Here the resonance is scaled so that some damping always remains.
struct ButterworthLowPassDesign {
    static constexpr double kResonanceScale = 0.99;
    static constexpr double kMiddle = 2.0;
    static double Frequency(double tangent) { return 1.0 / tangent; }
    static double Damping(double resonance) {
        return kButterworthRoot2 - resonance * kResonanceScale * kButterworthRoot2;
    }
    static double Balance(double ww) { return 1.0 - ww; }
};

template <class Sample>
class BiquadTweakedButterworthHP final : public BiquadTweakedButterworth<Sample, ButterworthHighPassDesign> {
};

template <class Sample>
class BiquadTweakedButterworthLP final : public BiquadTweakedButterworth<Sample, ButterworthLowPassDesign> {};

} // namespace Grimworks
