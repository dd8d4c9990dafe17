#pragma once

#include <array>
#include <cmath>
#include <complex>
#include <cstddef>
#include <numbers>

namespace Dsp {

/// Coefficients of one second-order section, already divided by the leading one, which is kept as 1.
struct Stage {
    double a0 = 1.0;
    double a1 = 0.0;
    double a2 = 0.0;
    double b1 = 0.0;
    double b2 = 0.0;
    double b0 = 1.0;
};

/// Squared magnitude of c0 + c1/z + c2/z^2 at z = cosine + j sine. Turning the sum by z first keeps the small
/// differences near the unit circle exact, which squares of the plain coefficients would lose.
[[nodiscard]] inline double SquaredMagnitude(double c0, double c1, double c2, double cosine, double sine) {
    const double re = c1 + (c0 + c2) * cosine;
    const double im = (c0 - c2) * sine;
    return re * re + im * im;
}

/// Sections in series. The largest number is fixed, so that a design never allocates.
template <int MaxStages>
struct Cascade {
    int numStages = 0;
    std::array<Stage, MaxStages> stages;

    Stage& operator[](int index) { return stages[static_cast<std::size_t>(index)]; }
    const Stage& operator[](int index) const { return stages[static_cast<std::size_t>(index)]; }

    /// Complex response at a frequency given as a share of the sample rate, 0..0.5.
    [[nodiscard]] std::complex<double> response(double normalizedFrequency) const {
        const double w = 2.0 * std::numbers::pi * normalizedFrequency;
        const std::complex<double> z1 = std::polar(1.0, -w);
        const std::complex<double> z2 = std::polar(1.0, -2.0 * w);
        std::complex<double> numerator = 1.0;
        std::complex<double> denominator = 1.0;
        for (int i = 0; i < numStages; ++i) {
            const Stage& s = (*this)[i];
            numerator *= s.b0 + s.b1 * z1 + s.b2 * z2;
            denominator *= 1.0 + s.a1 * z1 + s.a2 * z2;
        }
        return numerator / denominator;
    }

    /// Magnitude of the response at the point cosine + j sine of the unit circle.
    [[nodiscard]] double magnitude(double cosine, double sine) const {
        double numerator = 1.0;
        double denominator = 1.0;
        for (int i = 0; i < numStages; ++i) {
            const Stage& s = (*this)[i];
            numerator *= SquaredMagnitude(s.b0, s.b1, s.b2, cosine, sine);
            denominator *= SquaredMagnitude(1.0, s.a1, s.a2, cosine, sine);
        }
        return std::sqrt(numerator / denominator);
    }

    /// Multiplies the whole by a gain, through the first section.
    void scale(double gain) {
        stages[0].b0 *= gain;
        stages[0].b1 *= gain;
        stages[0].b2 *= gain;
    }
};

} // namespace Dsp
