#pragma once

#include "core/RandomGenerator.h"

namespace Grimworks {

/// One sample of white noise, -1..1, from one draw.
[[nodiscard]] inline double WhiteNoise(RandomGenerator& random) {
    return 2.0 * random.Next() / RandomGenerator::kMax - 1.0;
}

/// Pink noise: the sum of three one-pole filters on white noise of their own (poles and weights of the
/// widely published three-pole approximation). Starts from empty filters; each oscillator has its own.
/// Audio thread.
struct PinkNoise {
    double s0 = 0.0;
    double s1 = 0.0;
    double s2 = 0.0;

    /// One sample, about -0.8..0.8, from three draws.
    double Tick(RandomGenerator& random) {
        const double r0 = random.Next();
        const double r1 = random.Next();
        const double r2 = random.Next();
        s0 = (s0 - r0) * 0.319 + r0;
        s1 = (s1 - r1) * 0.7756 + r1;
        s2 = (s2 - r2) * 0.9613 + r2;
        // The scale takes 0..32767 to 0..2, and the sum of the weights centres it.
        return (s0 * 0.02109238 + s1 * 0.07113478 + s2 * 0.68873558) * 6.103701895199438e-5 - 0.78096274;
    }
};

} // namespace Grimworks
