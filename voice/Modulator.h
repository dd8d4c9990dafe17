#pragma once

#include "core/AudioProcessingUnit.h"
#include "core/Phase.h"
#include "core/Trigonometry.h"

#include <array>
#include <cmath>

namespace Grimworks {

/// One wave of the LFO: its names and the sign that the sine is taken with.
struct LfoWave {
    const char* name;
    const char* shortName;
    double polarity;
};

inline constexpr std::array<LfoWave, 5> kLfoWaves{{{"Sine", "Sine", 1.0},
                                                   {"Sine (Positive Part)", "Sine(Pos.)", 1.0},
                                                   {"Sine (Negative Part)", "Sine(Neg.)", 1.0},
                                                   {"Sine (Absolute Value)", "Sine(Abs.)", 1.0},
                                                   {"Sine (Inverted)", "Sine(Inv.)", -1.0}}};

/// The row of an LFO wave index; outside the table one that is named "Unknown".
[[nodiscard]] const LfoWave& LfoWaveOf(int index);

/// A sine generator that restarts with each note: the LFO of an oscillator. Audio thread; the setters under
/// the plug-in lock.
class Modulator : public AudioProcessingUnit {
public:
    Modulator() = default;

    /// Frequency and increment follow the rate value again.
    void SetSampleRate(double newRate) override;

    /// Rate value 0..1 of the largest rate (20 Hz for an LFO); 0 switches the modulator off. NaN is ignored.
    void SetRate(double value);

    /// The same in Hz; the rate value follows. NaN is ignored.
    void SetFrequency(double hz);

    /// Peak value; 0 switches the modulator off.
    void SetAmplitude(double value) { amplitude = value; }

    /// Wave from the parameter value 0..1, limited to the table; the phase runs on.
    void SetMode(double value);

    /// Phase and last value to 0, at the start of a note.
    void Restart() {
        phase = 0.0;
        output = 0.0;
    }

    /// The next value, kept as Output. While switched off it gives 0, stands still and keeps its last Output.
    double Tick() {
        if (IsOff()) return 0.0;
        output = Shaped(SineOfPhase(phase) * amplitude * polarity);
        phase = WrappedPhase(phase + phaseInc);
        return output;
    }

    /// The same for a run of samples: to the bit what as many calls of Tick give, several sines at once.
    void Render(double* values, int frames);

    /// The last value that a running Tick gave.
    [[nodiscard]] double Output() const { return output; }
    [[nodiscard]] double Rate() const { return rate; }
    [[nodiscard]] double Frequency() const { return frequency; }     ///< Hz
    [[nodiscard]] double PhaseIncrement() const { return phaseInc; } ///< cycles per sample
    [[nodiscard]] int Mode() const { return mode; }

protected:
    Modulator(double startAmplitude, double largestRate, double startRate)
        : amplitude(startAmplitude), maxRate(largestRate), rate(startRate),
          frequency(startRate * largestRate) {}

private:
    [[nodiscard]] bool IsOff() const { return bypass || rate == 0.0 || amplitude == 0.0; }

    [[nodiscard]] double Shaped(double sine) const {
        switch (mode) {
        case 1:
            return sine < 0.0 ? 0.0 : sine;
        case 2:
            return sine > 0.0 ? 0.0 : sine;
        case 3:
            return std::fabs(sine);
        default:
            return sine;
        }
    }

    double output = 0.0;
    double amplitude = 1.0;
    double maxRate = 20.0; ///< Hz at rate 1
    double rate = 0.05;
    double frequency = 1.0; ///< Hz
    double phase = 0.0;     ///< 0 up to 1
    double phaseInc = 1.0 / kDefaultSampleRate;
    double polarity = 1.0;
    int mode = 0;
};

} // namespace Grimworks
