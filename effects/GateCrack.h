#pragma once

#include "core/Maths.h"
#include "core/SmoothedValue.h"
#include "core/StereoBuffer.h"

#include <algorithm>
#include <cmath>

namespace Grimworks {

/// A gate without hysteresis that pushes the signal up sharply just above its level, which is heard as a
/// crackle. It knows no switch of its own and runs whenever its level is above 0. While the smoother still
/// rises towards a new level the crack is missing, since its upper edge lies below the gate.
class GateCrack {
public:
    /// Knob 0..1; the level is its fourth power. A value that is not finite is ignored.
    void SetGate(double value) {
        if (!std::isfinite(value)) return;
        raw = value;
        level = std::pow(value, 4.0);
    }

    /// The knob as it was set, 0..1.
    [[nodiscard]] double Raw() const { return raw; }

    /// Linear level below which the signal is cut, 0..1.
    [[nodiscard]] double Level() const { return level; }

    /// In place; audio thread.
    void Process(StereoView io, int frames) {
        if (level == 0.0) return;
        for (int i = 0; i < frames; ++i) {
            smoothed.Step(level);
            knee = std::min(smoothed.state, kLargestKnee);
            top = smoothed.state + knee;
            io.left[i] = Crack(io.left[i]);
            io.right[i] = Crack(io.right[i]);
        }
    }

private:
    static constexpr double kLargestKnee = 0.01;

    [[nodiscard]] double Crack(double sample) const {
        const double v = std::fabs(sample);
        if (v < level) return 0.0;
        if (level <= v && v < top) return ((v - level) / knee * top + v) * Sign(sample);
        return sample;
    }

    double raw = 0.0;
    double level = 0.0;
    SmoothedValue smoothed{0.9944, 0.0056, 0.0};
    double knee = kLargestKnee;
    double top = 0.0;
};

} // namespace Grimworks
