#pragma once

#include "core/Choice.h"
#include "core/Maths.h"
#include "core/SmoothedValue.h"
#include "core/StereoBuffer.h"

#include <algorithm>
#include <cmath>

namespace Grimworks {

/// Static limiter curve for one sample: unchanged below threshold - knee/2, a parabola through the knee, and
/// a straight line of slope 1/ratio above. A NaN stays a NaN.
[[nodiscard]] inline double SoftKneeCurve(double sample, double threshold, double knee, double ratio,
                                          double lowEdge, double highEdge) {
    const double sign = Sign(sample);
    const double v = std::fabs(sample);
    if (v < lowEdge) return sample;
    if (lowEdge <= v && v < highEdge) {
        const double d = v - threshold + knee / 2.0;
        return (v + (1.0 / ratio - 1.0) * (d * d) / (2.0 * knee)) * sign;
    }
    return ((v - threshold) / ratio + threshold) * sign;
}

/// The limiter in front of the final clip: no look-ahead and no memory but the smoothing of its threshold, an
/// instantaneous waveshaper for each channel alone. It starts with its threshold in place.
class OutputLimiter {
public:
    /// Threshold, knob 0..1, linear. A value that is not finite is ignored.
    void SetLevel(double value) {
        if (std::isfinite(value)) level = value;
    }

    /// Value 0..1: off, so that only the final clip is left, or on.
    void SetMode(double value) { mode = ClampedChoice(value, 1); }

    /// In place; audio thread.
    void Process(StereoView io, int frames) {
        if (mode == 0) return;
        for (int i = 0; i < frames; ++i) {
            const double threshold = smoothedLevel.Step(level);
            const double knee = std::min(threshold, kLargestKnee);
            const double lowEdge = threshold - knee / 2.0;
            const double highEdge = threshold + knee / 2.0;
            io.left[i] = SoftKneeCurve(io.left[i], threshold, knee, kRatio, lowEdge, highEdge);
            io.right[i] = SoftKneeCurve(io.right[i], threshold, knee, kRatio, lowEdge, highEdge);
        }
    }

private:
    static constexpr double kStartLevel = 0.705;
    static constexpr double kLargestKnee = 0.02;
    static constexpr double kRatio = 1000.0;

    double level = kStartLevel;
    SmoothedValue smoothedLevel{0.9944, 0.0056, kStartLevel};
    int mode = 1;
};

} // namespace Grimworks
