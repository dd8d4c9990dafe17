#pragma once

#include "dsp/Cascade.h"
#include "dsp/ParamInfo.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <initializer_list>
#include <numbers>
#include <vector>

namespace DspTest {

inline constexpr double kPi = std::numbers::pi;
inline constexpr double kRates[] = {22050.0, 32000.0, 44100.0, 48000.0, 88200.0, 96000.0, 176400.0, 192000.0};

inline Dsp::Params Set(std::initializer_list<double> values) {
    Dsp::Params params;
    int i = 0;
    for (const double v : values)
        params[i++] = v;
    return params;
}

inline double Decibels(double magnitude) {
    return 20.0 * std::log10(magnitude);
}

/// The frequency share that a design uses in place of one beyond the bilinear transform.
inline double Share(double frequency, double rate) {
    return frequency / rate >= 0.5 ? 0.4999 : frequency / rate;
}

template <int N>
double Gain(const Dsp::Cascade<N>& cascade, double share) {
    return std::abs(cascade.response(share));
}

/// Product of polynomials in 1/z.
inline std::vector<double> Multiply(const std::vector<double>& a, const std::vector<double>& b) {
    std::vector<double> product(a.size() + b.size() - 1, 0.0);
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (std::size_t k = 0; k < b.size(); ++k)
            product[i + k] += a[i] * b[k];
    }
    return product;
}

template <int N>
std::vector<double> Numerator(const Dsp::Cascade<N>& cascade) {
    std::vector<double> product{1.0};
    for (int i = 0; i < cascade.numStages; ++i)
        product = Multiply(product, {cascade[i].b0, cascade[i].b1, cascade[i].b2});
    return product;
}

template <int N>
std::vector<double> Denominator(const Dsp::Cascade<N>& cascade) {
    std::vector<double> product{1.0};
    for (int i = 0; i < cascade.numStages; ++i)
        product = Multiply(product, {1.0, cascade[i].a1, cascade[i].a2});
    return product;
}

inline void ExpectPolynomial(const std::vector<double>& actual, const std::vector<double>& expected,
                             double tolerance) {
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i)
        EXPECT_NEAR(actual[i], expected[i], tolerance) << "coefficient " << i;
}

/// Both poles of every section inside the unit circle, by the stability triangle.
template <int N>
bool IsStable(const Dsp::Cascade<N>& cascade) {
    for (int i = 0; i < cascade.numStages; ++i) {
        const Dsp::Stage& s = cascade[i];
        if (!(std::fabs(s.a2) < 1.0) || !(std::fabs(s.a1) < 1.0 + s.a2)) return false;
        if (!std::isfinite(s.b0) || !std::isfinite(s.b1) || !std::isfinite(s.b2)) return false;
    }
    return cascade.numStages > 0;
}

/// A control's way over the audible cutoffs, 0..1 to 10..22040 Hz.
inline double CutoffAt(double control) {
    return 10.0 * std::pow(2204.0, control);
}

/// The s-plane frequency that a z-plane one is mapped from in a low pass with its edge at fc.
inline double LowPassAnalog(double f, double fc) {
    return std::tan(kPi * f) / std::tan(kPi * fc);
}

/// The same for the band transform: b (alpha - cos w) / sin w.
inline double BandAnalog(double f, double fc, double bw) {
    const double w = 2.0 * kPi * f;
    return (std::cos(2.0 * kPi * fc) - std::cos(w)) / (std::sin(w) * std::tan(kPi * bw));
}

} // namespace DspTest
