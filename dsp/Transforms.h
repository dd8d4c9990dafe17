#pragma once

#include "dsp/Layout.h"

#include <cmath>
#include <limits>
#include <numbers>
#include <tuple>
#include <utility>

namespace Dsp {

/// A frequency as a share of the sample rate. The bilinear transform ends at half the rate, so anything that
/// reaches it (or is not a number) is taken just below; all smaller values pass untouched.
[[nodiscard]] inline double NormalisedFrequency(double frequency, double sampleRate) {
    const double share = frequency / sampleRate;
    return share < 0.5 ? share : 0.4999;
}

/// (1 + k c) / (1 - k c), the bilinear map of a finite s-plane root.
[[nodiscard]] inline Complex Bilinear(const Complex& c, double k) {
    const double x = k * c.real();
    const double y = k * c.imag();
    const double divisor = (1.0 - x) * (1.0 - x) + y * y;
    return {(1.0 - x * x - y * y) / divisor, 2.0 * y / divisor};
}

/// The bilinear transforms of textbooks on digital filters, from a prototype with its edge at 1. `fc` is the
/// edge as a share of the sample rate, below 0.5; the edge is prewarped, so it lies there exactly.
class EdgeTransform {
public:
    /// A transform that is yet to be placed.
    EdgeTransform() = default;

    [[nodiscard]] static EdgeTransform LowPass(double fc) {
        return {fc, std::tan(std::numbers::pi * fc), 1.0, false};
    }
    [[nodiscard]] static EdgeTransform HighPass(double fc) {
        return {fc, 1.0 / std::tan(std::numbers::pi * fc), -1.0, true};
    }

    /// Becomes make(fc) unless it stands there already: most sweeps leave the edge alone.
    void Place(EdgeTransform (*make)(double), double fc) {
        if (fc != edge) *this = make(fc);
    }

    template <int MaxPoles>
    void Apply(Layout<MaxPoles>& digital, const Layout<MaxPoles>& analog) const {
        digital.numPoles = analog.numPoles;
        digital.normalW = mirrored ? std::numbers::pi - analog.normalW : analog.normalW;
        digital.normalGain = analog.normalGain;
        for (int i = 0; i < analog.numPairs(); ++i) {
            digital[i].poles = Map(analog[i].poles);
            digital[i].zeros = Map(analog[i].zeros);
        }
    }

private:
    EdgeTransform(double fc, double factor, double direction, bool mirror)
        : edge(fc), k(factor), sign(direction), mirrored(mirror) {}

    [[nodiscard]] Complex Map(const Complex& root) const {
        if (IsInfinite(root)) return {-sign, 0.0};
        const Complex image = Bilinear(root, k);
        return {sign * image.real(), sign * image.imag()};
    }

    [[nodiscard]] RootPair Map(const RootPair& roots) const {
        if (roots.IsConjugate()) return RootPair::Conjugate(Map(roots.first));
        return {Map(roots.first), Map(roots.second)};
    }

    double edge = std::numeric_limits<double>::quiet_NaN();
    double k = 0.0;
    double sign = 1.0;
    bool mirrored = false;
};

/// Square root with a real part of 0 or more.
[[nodiscard]] inline Complex PrincipalRoot(double re, double im) {
    const double modulus = std::sqrt(re * re + im * im);
    if (modulus == 0.0) return {0.0, 0.0};
    if (re >= 0.0) {
        const double root = std::sqrt((modulus + re) * 0.5);
        return {root, im / (2.0 * root)};
    }
    const double root = std::sqrt((modulus - re) * 0.5);
    return {std::fabs(im) / (2.0 * root), std::copysign(root, im)};
}

/// The bilinear band transforms: s = b (z^2 - 2 alpha z + 1) / (z^2 - 1) for a band pass and the inverse for
/// a band stop, with alpha = cos(2 pi fc), b = 1 / tan(pi bw). Each root gives two, so the number of poles
/// doubles; every section takes one image of a root and its conjugate, the lower edge of the band first.
/// `fc` and `bw` are shares of the sample rate below 0.5.
class BandTransform {
public:
    [[nodiscard]] static BandTransform Pass(double fc, double bw) { return {fc, bw, false}; }
    [[nodiscard]] static BandTransform Stop(double fc, double bw) { return {fc, bw, true}; }

    template <int MaxPoles, int MaxDigitalPoles>
    void Apply(Layout<MaxDigitalPoles>& digital, const Layout<MaxPoles>& analog) const {
        static_assert(MaxDigitalPoles >= 2 * MaxPoles);
        digital.numPoles = 0;
        digital.normalW = NormalPoint(analog.normalW);
        digital.normalGain = analog.normalGain;
        int next = 0;
        for (int i = 0; i < analog.numPairs(); ++i) {
            if (analog.isSingle(i)) {
                digital[next].poles = MapReal(analog[i].poles.first);
                digital[next].zeros = MapReal(analog[i].zeros.first);
                next += 1;
            } else {
                std::tie(digital[next].poles, digital[next + 1].poles) = MapPair(analog[i].poles);
                std::tie(digital[next].zeros, digital[next + 1].zeros) = MapPair(analog[i].zeros);
                next += 2;
            }
        }
        digital.numPoles = 2 * analog.numPoles;
    }

private:
    BandTransform(double fc, double bw, bool inverse)
        : centre(fc), alpha(std::cos(2.0 * std::numbers::pi * fc)),
          sine(std::sin(2.0 * std::numbers::pi * fc)), b(1.0 / std::tan(std::numbers::pi * bw)),
          stop(inverse) {}

    /// A band pass is fixed at its centre; what must be flat outside the band is fixed at the farther end.
    [[nodiscard]] double NormalPoint(double prototypeW) const {
        if (!stop && prototypeW == 0.0) return 2.0 * std::numbers::pi * centre;
        return centre < 0.25 ? std::numbers::pi : 0.0;
    }

    /// Both images of a finite root, lower edge first: the roots of (b - s) z^2 - 2 alpha b z + (b + s).
    [[nodiscard]] std::pair<Complex, Complex> Images(Complex s) const {
        if (stop) {
            const double square = s.real() * s.real() + s.imag() * s.imag();
            s = {s.real() / square, -s.imag() / square};
        }
        const double x = s.real();
        const double y = s.imag();
        const Complex root = PrincipalRoot(x * x - y * y - b * b * sine * sine, 2.0 * x * y);
        const double divisor = (b - x) * (b - x) + y * y;
        const auto over = [&](double re, double im) {
            return Complex{(re * (b - x) - im * y) / divisor, (re * y + im * (b - x)) / divisor};
        };
        return {over(alpha * b + root.real(), root.imag()), over(alpha * b - root.real(), -root.imag())};
    }

    [[nodiscard]] std::pair<RootPair, RootPair> MapPair(const RootPair& roots) const {
        if (IsInfinite(roots.first)) {
            if (stop) return {Notch(), Notch()};
            return {RootPair::Twice({1.0, 0.0}), RootPair::Twice({-1.0, 0.0})};
        }
        const auto [lower, upper] = Images(roots.first);
        return {RootPair::Conjugate(lower), RootPair::Conjugate(upper)};
    }

    [[nodiscard]] RootPair MapReal(const Complex& root) const {
        if (IsInfinite(root)) return stop ? Notch() : RootPair{{1.0, 0.0}, {-1.0, 0.0}};
        const auto [lower, upper] = Images(root);
        return {lower, upper};
    }

    [[nodiscard]] RootPair Notch() const { return RootPair::Conjugate({alpha, sine}); }

    double centre;
    double alpha;
    double sine;
    double b;
    bool stop;
};

} // namespace Dsp
