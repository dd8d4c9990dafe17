#pragma once

#include "dsp/Cascade.h"

#include <cmath>

namespace Dsp {

/// Size of the term that keeps a decaying filter out of the denormal range. Its sign turns with every sample,
/// so that it averages to nothing.
inline constexpr double kAntiDenormal = 1e-8;

/// Direct form I: past inputs and outputs of one section.
struct DirectFormI {
    double x1 = 0.0;
    double x2 = 0.0;
    double y1 = 0.0;
    double y2 = 0.0;

    /// One sample of the first section, with the anti-denormal term.
    double process(double x, const Stage& s, double vsa) {
        return Push(x, s.b0 * x + s.b1 * x1 + s.b2 * x2 - s.a1 * y1 - s.a2 * y2 + vsa);
    }

    /// One sample of a later section.
    double process(double x, const Stage& s) {
        return Push(x, s.b0 * x + s.b1 * x1 + s.b2 * x2 - s.a1 * y1 - s.a2 * y2);
    }

    [[nodiscard]] bool isFinite() const {
        return std::isfinite(x1) && std::isfinite(x2) && std::isfinite(y1) && std::isfinite(y2);
    }

private:
    double Push(double x, double y) {
        x2 = x1;
        x1 = x;
        y2 = y1;
        y1 = y;
        return y;
    }
};

/// Direct form II: the shared delay line of one section.
struct DirectFormII {
    double w1 = 0.0;
    double w2 = 0.0;

    /// One sample of the first section, with the anti-denormal term.
    double process(double x, const Stage& s, double vsa) { return Push(x - s.a1 * w1 - s.a2 * w2 + vsa, s); }

    /// One sample of a later section.
    double process(double x, const Stage& s) { return Push(x - s.a1 * w1 - s.a2 * w2, s); }

    [[nodiscard]] bool isFinite() const { return std::isfinite(w1) && std::isfinite(w2); }

private:
    double Push(double w, const Stage& s) {
        const double y = s.b0 * w + s.b1 * w1 + s.b2 * w2;
        w2 = w1;
        w1 = w;
        return y;
    }
};

} // namespace Dsp
