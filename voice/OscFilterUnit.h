#pragma once

#include "core/AudioProcessingUnit.h"
#include "voice/BiquadTweakedButterworth.h"
#include "voice/GwFilterPaulKellett.h"

#include <array>
#include <limits>

namespace Grimworks {

/// One choice of filter for an oscillator: its names and the filter of the bank that it plays.
struct OscFilterType {
    const char* name;
    const char* shortName;
    int bankEntry;
};

/// The choice named "Paul Kellett BP" plays the high pass; patches rely on its sound.
inline constexpr std::array<OscFilterType, 5> kOscFilterTypes{{{"Paul Kellett LP", "PK LP", 0},
                                                               {"Paul Kellett HP", "PK HP", 1},
                                                               {"Paul Kellett BP", "PK BP", 1},
                                                               {"Butterworth HP", "BW HP", 3},
                                                               {"Butterworth LP", "BW LP", 4}}};

/// The row of a parameter value 0..1; a value outside gives a row named "Unknown Filter" that plays entry 0.
[[nodiscard]] const OscFilterType& OscFilterTypeOf(double value);

/// Two filters side by side on the signal of one oscillator, and a smoothed balance between their outputs.
/// Both run at every sample, so that a move of the balance finds the other one warmed up. Audio thread; the
/// type setters under the plug-in lock.
class OscFilterUnit final : public AudioProcessingUnit {
public:
    double balance = 1.0; ///< target: 0 is the left filter alone, 1 the right one

    OscFilterUnit() = default;

    /// Parameter value 0..1 of the left filter's type. Filters keep their state while not chosen.
    void SetLeftType(double value);
    /// The same for the right one.
    void SetRightType(double value);

    /// Empties all ten filters; the balance stands.
    void Reset();

    void SetSampleRate(double rate) override;

    /// One sample through both filters; cutoff and resonance 0..1.
    double Tick(double input, double cutoff, double resonance) {
        const double a = leftBank.Process(left, input, cutoff, resonance, frequency);
        const double b = rightBank.Process(right, input, cutoff, resonance, frequency);
        return Balanced(balanceState, a, b);
    }

    /// The same for a run of samples in place, with a cutoff for each: to the bit what as many calls of Tick
    /// give, but the coefficients of a moving cutoff are worked out several at once.
    void Process(double* samples, const double* cutoffs, double resonance, int frames);

    [[nodiscard]] double LeftType() const { return leftType; }
    [[nodiscard]] double RightType() const { return rightType; }

private:
    static constexpr double kBalanceA = 0.99;
    static constexpr double kBalanceB = 0.010000000000000009;

    /// The frequency of the last cutoff, which both filters share.
    class SharedFrequency {
    public:
        const ButterworthFrequency& Of(double newCutoff) {
            if (newCutoff != cutoff) {
                cutoff = newCutoff;
                frequency = ButterworthFrequencyOf(newCutoff);
            }
            return frequency;
        }

    private:
        double cutoff = std::numeric_limits<double>::quiet_NaN();
        ButterworthFrequency frequency;
    };

    struct Bank {
        GwFilterPaulKellett lowPass{GwFilterPaulKellett::kLowPass};
        GwFilterPaulKellett highPass{GwFilterPaulKellett::kHighPass};
        GwFilterPaulKellett bandPass{GwFilterPaulKellett::kBandPass};
        BiquadTweakedButterworthHP<double> butterworthHighPass;
        BiquadTweakedButterworthLP<double> butterworthLowPass;

        [[nodiscard]] std::array<IGwFilter*, 5> All() {
            return {&lowPass, &highPass, &bandPass, &butterworthHighPass, &butterworthLowPass};
        }

        double Process(int entry, double input, double cutoff, double resonance, SharedFrequency& shared) {
            switch (entry) {
            case 1:
                return highPass.Process(input, cutoff, resonance);
            case 2:
                return bandPass.Process(input, cutoff, resonance);
            case 3:
                return butterworthHighPass.Process(input, cutoff, resonance, shared.Of(cutoff));
            case 4:
                return butterworthLowPass.Process(input, cutoff, resonance, shared.Of(cutoff));
            default:
                return lowPass.Process(input, cutoff, resonance);
            }
        }
    };

    /// Moves the smoothed balance on by a sample and mixes with it.
    [[nodiscard]] double Balanced(double& state, double a, double b) const {
        state = kBalanceA * state + kBalanceB * balance;
        return (1.0 - state) * a + state * b;
    }

    template <class Left, class Right>
    void Run(Left& leftLane, Right& rightLane, double* samples, int frames);

    double leftType = 0.0;
    double rightType = 0.75;
    double balanceState = 0.0;
    int left = 0;
    int right = 3;
    SharedFrequency frequency;
    Bank leftBank;
    Bank rightBank;
};

} // namespace Grimworks
