#pragma once

#include "core/AudioProcessingUnit.h"
#include "voice/BiquadTweakedButterworth.h"
#include "voice/GwFilterPaulKellett.h"

#include <array>
#include <cstdint>

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
        const double a = leftBank.Process(left, input, cutoff, resonance, tangent);
        const double b = rightBank.Process(right, input, cutoff, resonance, tangent);
        balanceState = kBalanceA * balanceState + kBalanceB * balance;
        return (1.0 - balanceState) * a + balanceState * b;
    }

    [[nodiscard]] double LeftType() const { return leftType; }
    [[nodiscard]] double RightType() const { return rightType; }

private:
    static constexpr double kBalanceA = 0.99;
    static constexpr double kBalanceB = 0.010000000000000009;

    struct Bank {
        GwFilterPaulKellett lowPass{GwFilterPaulKellett::kLowPass};
        GwFilterPaulKellett highPass{GwFilterPaulKellett::kHighPass};
        GwFilterPaulKellett bandPass{GwFilterPaulKellett::kBandPass};
        BiquadTweakedButterworthHP<double> butterworthHighPass;
        BiquadTweakedButterworthLP<double> butterworthLowPass;

        [[nodiscard]] std::array<IGwFilter*, 5> All() {
            return {&lowPass, &highPass, &bandPass, &butterworthHighPass, &butterworthLowPass};
        }

        double Process(int entry, double input, double cutoff, double resonance, ButterworthTangent& shared) {
            switch (entry) {
            case 1:
                return highPass.Process(input, cutoff, resonance);
            case 2:
                return bandPass.Process(input, cutoff, resonance);
            case 3:
                return butterworthHighPass.Tick(input, cutoff, resonance, shared);
            case 4:
                return butterworthLowPass.Tick(input, cutoff, resonance, shared);
            default:
                return lowPass.Process(input, cutoff, resonance);
            }
        }
    };

    double leftType = 0.0;
    double rightType = 0.75;
    double balanceState = 0.0;
    int left = 0;
    int right = 3;
    ButterworthTangent tangent;
    Bank leftBank;
    Bank rightBank;
};

} // namespace Grimworks
