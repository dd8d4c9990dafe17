#pragma once

#include "core/Maths.h"

#include <cmath>
#include <complex>

namespace Grimworks {

using Complex = std::complex<double>;

/// Transfer functions of the oscillator filters, worked out by hand from their recursions, at f cycles per
/// sample.
namespace Responses {

/// Second-order section with the tangent of the library, cutoff 0..1.
inline Complex Butterworth(bool highPass, double cutoff, double resonance, double f) {
    const double fc = std::fmax(0.0001, cutoff * 0.5 * 0.957);
    const double w = highPass ? std::tan(kPi * fc) : 1.0 / std::tan(kPi * fc);
    const double damping = std::sqrt(2.0) * (1.0 - resonance * (highPass ? 1.0 : 0.99));
    const double d = 1.0 / (1.0 + damping * w + w * w);
    const double a1 = (highPass ? 2.0 : -2.0) * (w * w - 1.0) * d;
    const double a2 = (1.0 - damping * w + w * w) * d;
    const Complex z = std::polar(1.0, -2.0 * kPi * f);
    const double middle = highPass ? -2.0 : 2.0;
    return d * (1.0 + middle * z + z * z) / (1.0 + a1 * z + a2 * z * z);
}

/// Each later stage is G = k / (1 - (1 - k) z) of the one before; the first holds the feedback.
inline Complex PaulKellett(int mode, double cutoff, double resonance, double f) {
    const double k = std::fmin(std::fmax(cutoff, 0.01), 0.99);
    const double feedback = resonance / (1.0 - k) + resonance;
    const Complex z = std::polar(1.0, -2.0 * kPi * f);
    const Complex stage = k / (1.0 - (1.0 - k) * z);
    const Complex first = k / (1.0 - z * (1.0 - k + k * feedback - k * feedback * stage));
    const Complex last = first * stage * stage * stage;
    return mode == 0 ? last : mode == 1 ? 1.0 - last : first - last;
}

} // namespace Responses

/// Response of a linear filter at f cycles per sample, from its answer to a sine that never crosses 0 on a
/// sample: the steady state of `run` over a whole number of cycles. `step` filters one sample.
template <class Step>
Complex MeasuredBySine(Step step, double f, int settle, int cycles) {
    const int length = static_cast<int>(std::lround(cycles / f));
    Complex sum = 0.0;
    for (int n = 0; n < settle + length; ++n) {
        const double angle = 2.0 * kPi * f * n + 0.1;
        const double y = step(std::sin(angle));
        if (n >= settle) sum += y * std::polar(1.0, -angle);
    }
    return sum * Complex(0.0, 2.0) / static_cast<double>(length);
}

} // namespace Grimworks
