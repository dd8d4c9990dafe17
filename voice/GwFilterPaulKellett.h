#pragma once

#include "core/Limits.h"
#include "core/Maths.h"
#include "voice/IGwFilter.h"

#include <cstdint>

namespace Grimworks {

/// What a cutoff and a resonance make of the four-pole filter.
struct PaulKellettTuning {
    double k = 0.01; ///< coefficient of all stages
    double feedback = 0.0;

    /// Cutoff 0..1, limited to 0.01..0.99 as coefficient; the feedback follows it, which keeps the resonance
    /// about level over the range.
    [[nodiscard]] static PaulKellettTuning Of(double cutoff, double resonance) {
        const double k = Clamp(cutoff, 0.01, 0.99);
        return {k, resonance / (1.0 - k) + resonance};
    }
};

/// The four stages of the filter.
struct PaulKellettState {
    double buf0 = 0.0;
    double buf1 = 0.0;
    double buf2 = 0.0;
    double buf3 = 0.0;

    void Step(double input, const PaulKellettTuning& t) {
        buf0 = ((buf0 - buf1) * t.feedback + (input - buf0)) * t.k + buf0;
        buf1 = (buf0 - buf1) * t.k + buf1;
        buf2 = (buf1 - buf2) * t.k + buf2;
        buf3 = (buf2 - buf3) * t.k + buf3;
    }
};

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

    /// Cutoff and resonance 0..1. An input of exactly 0 gives 0 and leaves the filter frozen: it does not
    /// ring out into digital silence.
    double Process(double input, double newCutoff, double newResonance) override {
        if (newCutoff != cutoff || newResonance != resonance) {
            cutoff = newCutoff;
            resonance = newResonance;
            tuning = PaulKellettTuning::Of(cutoff, resonance);
        }
        return Step(state, mode, input, tuning);
    }

    /// One sample of a filter in this state and mode with a tuning that the caller works out.
    static double Step(PaulKellettState& stages, std::uint32_t outputMode, double input,
                       const PaulKellettTuning& t) {
        if (input == 0.0) return 0.0;
        stages.Step(input, t);
        switch (outputMode) {
        case kLowPass:
            return stages.buf3;
        case kHighPass:
            return input - stages.buf3;
        case kBandPass:
            return stages.buf0 - stages.buf3;
        default:
            return 0.0;
        }
    }

    [[nodiscard]] std::uint32_t Mode() const { return mode; }
    [[nodiscard]] const PaulKellettState& State() const { return state; }
    void SetState(const PaulKellettState& stages) { state = stages; }

    void SetSampleRate(double rate) override { sampleRate = rate; }
    /// kLowPass, kHighPass or kBandPass; any other mode is silent.
    void SetMode(int newMode) override { mode = static_cast<std::uint32_t>(newMode); }
    void Reset() override { state = {}; }

private:
    std::uint32_t mode = kLowPass;
    double cutoff = 0.0;
    double resonance = 0.0;
    PaulKellettTuning tuning;               ///< of this cutoff and resonance
    double sampleRate = kDefaultSampleRate; ///< plays no part in the sound
    PaulKellettState state;
};

} // namespace Grimworks
