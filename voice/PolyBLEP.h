#pragma once

#include "core/Limits.h"
#include "core/Phase.h"
#include "core/Trigonometry.h"

#include <cstdint>

namespace Grimworks {

/// Geometric waves computed live, with the steps and corners rounded off over one sample on either side by
/// polynomial residues (band-limited steps and ramps after Välimäki and Huovilainen, "Antialiasing
/// oscillators in subtractive synthesis", 2007). From a quarter of the sample rate upwards, where residues
/// would overlap, every wave is a sine. Audio thread.
class PolyBLEP {
public:
    static constexpr std::uint32_t kSine = 0;
    static constexpr std::uint32_t kTriangle = 2;
    static constexpr std::uint32_t kSquare = 3; ///< the rectangle of width 0.5, whatever pulseWidth says
    static constexpr std::uint32_t kRectangle = 4;
    static constexpr std::uint32_t kSaw = 5;

    std::uint32_t waveform = kSine; ///< one of the numbers above; any other is silent
    double sampleRate = kDefaultSampleRate;
    double phaseInc = 440.0 / 44100.0; ///< cycles per sample, not negative
    double amplitude = 1.0;
    double pulseWidth = 0.5; ///< duty of the rectangle, 0..1
    double phase = 0.0;      ///< 0 up to 1
    double offset = 0.0;     ///< level that Next adds

    PolyBLEP() = default;
    virtual ~PolyBLEP() = default;
    PolyBLEP(const PolyBLEP&) = default;
    PolyBLEP& operator=(const PolyBLEP&) = default;

    /// Value at the current phase, -1..1 but for rectangles of other widths than 0.5, whose levels 2 - 2
    /// width and -2 width have their mean at 0. Does not advance.
    [[nodiscard]] double Get() const {
        if (phaseInc >= kSineFrom) return Sine() * amplitude;
        switch (waveform) {
        case kSine:
            return Sine() * amplitude;
        case kTriangle:
            return Triangle() * amplitude;
        case kSquare:
            return Rectangle(0.5) * amplitude;
        case kRectangle:
            return Rectangle(pulseWidth) * amplitude;
        case kSaw:
            return Saw() * amplitude;
        default:
            return 0.0;
        }
    }

    /// Moves the phase on by one sample.
    void Advance() { phase = WrappedPhase(phase + phaseInc); }

    /// The value with its offset, then one sample on.
    double Next() {
        const double value = Get() + offset;
        Advance();
        return value;
    }

    /// Takes a new rate in Hz and keeps the frequency. A rate that is not above 0 is ignored.
    void SetSampleRate(double rate) {
        if (!(rate > 0.0)) return;
        phaseInc = sampleRate * phaseInc / rate;
        sampleRate = rate;
    }

private:
    static constexpr double kSineFrom = 0.25; ///< cycles per sample

    [[nodiscard]] double Sine() const { return SineOfPhase(phase); }

    [[nodiscard]] double Triangle() const {
        double y = 4.0 * phase;
        if (y >= 3.0) {
            y -= 4.0;
        } else if (y > 1.0) {
            y = 2.0 - y;
        }
        const double rising = WrappedPhase(phase + 0.25);
        const double falling = WrappedPhase(phase + 0.75);
        return y + 4.0 * phaseInc * (RampResidue(rising) - RampResidue(falling));
    }

    [[nodiscard]] double Rectangle(double width) const {
        double y = -2.0 * width;
        if (phase < width) y += 2.0;
        return y + StepResidue(phase) - StepResidue(WrappedPhase(phase + 1.0 - width));
    }

    [[nodiscard]] double Saw() const {
        const double t = WrappedPhase(phase + 0.5);
        return 2.0 * t - 1.0 - StepResidue(t);
    }

    /// What a band-limited step of height 2 at phase 0 has over the plain one, near the step.
    [[nodiscard]] double StepResidue(double t) const {
        if (t < phaseInc) {
            const double u = t / phaseInc - 1.0;
            return -(u * u);
        }
        if (t > 1.0 - phaseInc) {
            const double u = (t - 1.0) / phaseInc + 1.0;
            return u * u;
        }
        return 0.0;
    }

    /// The integral of the step's residue: the same for a corner.
    [[nodiscard]] double RampResidue(double t) const {
        if (t < phaseInc) {
            const double u = t / phaseInc - 1.0;
            return -(1.0 / 3.0) * (u * u * u);
        }
        if (t > 1.0 - phaseInc) {
            const double u = (t - 1.0) / phaseInc + 1.0;
            return 1.0 / 3.0 * (u * u * u);
        }
        return 0.0;
    }
};

} // namespace Grimworks
