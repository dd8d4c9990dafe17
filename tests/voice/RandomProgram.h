#pragma once

#include "core/Limits.h"
#include "core/ParameterIds.h"
#include "tests/voice/VoiceRig.h"

#include <algorithm>
#include <random>

namespace Grimworks::Testing {

/// Repeatable chance.
class Dice {
public:
    explicit Dice(unsigned seed) : engine(seed) {}
    double Knob() { return std::uniform_real_distribution<double>(0.0, 1.0)(engine); }
    /// Often one end or the middle of a knob.
    double Landmark() {
        const double sample = Knob();
        return sample < 0.15 ? 0.0 : sample < 0.25 ? 1.0 : sample < 0.35 ? 0.5 : Knob();
    }
    int Below(int count) { return std::min(static_cast<int>(Knob() * count), count - 1); }

private:
    std::mt19937 engine;
};

/// The waves that do not hang on a last bit: an exact 0 between samples freezes a filter or not.
inline int RandomWave(Dice& dice) {
    static constexpr int kWaves[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 13, 20, 25, 30, 40};
    return kWaves[dice.Below(16)];
}

/// A program of random settings with moderate resonances, in which most oscillators sound.
inline void RandomProgram(VoiceRig& rig, Dice& dice) {
    for (int id = 0; id < Param::BassAmount; ++id)
        rig.Set(id, dice.Landmark());
    for (int i = 0; i < kOscillators; ++i) {
        rig.Set(i, OscParam::OnOff, dice.Knob() < 0.7 ? 1.0 : 0.0);
        rig.SetWave(i, RandomWave(dice));
        rig.Set(i, OscParam::FilterResonance, 0.6 * dice.Knob());
    }
    if (dice.Below(8) > 0) {
        for (const int id :
             {Param::EnvVelocity, Param::EnvAmount, Param::FilterEnvVelocity, Param::FilterEnvAmount})
            rig.Set(id, 0.3 + 0.7 * dice.Knob());
    }
    rig.Set(Param::NoteTransposeMode, dice.Below(10) / 9.0);
    rig.Set(Param::PitchAmount, 0.3 * dice.Landmark());
    // The pass in ascending order ends with the shape, as loading a program does.
    rig.Set(Param::AdsrShape, dice.Knob());
}

} // namespace Grimworks::Testing
