#pragma once

#include "core/Limits.h"
#include "core/Maths.h"
#include "voice/IGwFilter.h"

#include <cstdint>

namespace Grimworks {

/// Four one-pole stages in a row with resonance from the difference of the first two (the published "resonant
/// filter" recursion of Paul Kellett, one multiply per stage). The cutoff is the coefficient of the stages,
/// so the corner moves with the sample rate. Unlimited: high resonance may grow without bound. Audio thread.
class GwFilterPaulKellett final : public IGwFilter {
public:
    static constexpr int kLowPass = 0;
    static constexpr int kHighPass = 1;
    static constexpr int kBandPass = 2;

    GwFilterPaulKellett() = default;
    explicit GwFilterPaulKellett(int startMode) : mode(static_cast<std::uint32_t>(startMode)) {}

    /// Cutoff 0..1 is limited to 0.01..0.99 of a stage's coefficient. An input of exactly 0 gives 0 and
    /// leaves the filter frozen: it does not ring out into digital silence.
    double Process(double input, double newCutoff, double newResonance) override {
        if (newCutoff != cutoff || newResonance != resonance) Tune(newCutoff, newResonance);
        if (input == 0.0) return 0.0;
        buf0 = ((buf0 - buf1) * feedback + (input - buf0)) * k + buf0;
        buf1 = (buf0 - buf1) * k + buf1;
        buf2 = (buf1 - buf2) * k + buf2;
        buf3 = (buf2 - buf3) * k + buf3;
        switch (mode) {
        case kLowPass:
            return buf3;
        case kHighPass:
            return input - buf3;
        case kBandPass:
            return buf0 - buf3;
        default:
            return 0.0;
        }
    }

    void SetSampleRate(double rate) override { sampleRate = rate; }
    /// kLowPass, kHighPass or kBandPass; any other mode is silent.
    void SetMode(int newMode) override { mode = static_cast<std::uint32_t>(newMode); }
    void Reset() override { buf0 = buf1 = buf2 = buf3 = 0.0; }

private:
    void Tune(double newCutoff, double newResonance) {
        cutoff = newCutoff;
        resonance = newResonance;
        k = Clamp(cutoff, 0.01, 0.99);
        feedback = resonance / (1.0 - k) + resonance;
    }

    std::uint32_t mode = kLowPass;
    double cutoff = 0.0;
    double resonance = 0.0;
    double k = 0.01;
    double feedback = 0.0;
    double sampleRate = kDefaultSampleRate; ///< plays no part in the sound
    double buf0 = 0.0;
    double buf1 = 0.0;
    double buf2 = 0.0;
    double buf3 = 0.0;
};

} // namespace Grimworks
