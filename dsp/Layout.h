#pragma once

#include "dsp/Cascade.h"

#include <array>
#include <cmath>
#include <complex>
#include <cstddef>
#include <limits>
#include <numbers>

namespace Dsp {

using Complex = std::complex<double>;

/// A root at infinity has an infinite real part and no imaginary one.
inline constexpr Complex kInfiniteRoot{std::numeric_limits<double>::infinity(), 0.0};

[[nodiscard]] inline bool IsInfinite(const Complex& root) {
    return std::isinf(root.real());
}

/// Two roots that share a section: a conjugate pair, or two real ones.
struct RootPair {
    Complex first;
    Complex second;

    [[nodiscard]] bool IsConjugate() const { return first.imag() != 0.0; }
    [[nodiscard]] static RootPair Conjugate(const Complex& root) { return {root, std::conj(root)}; }
    [[nodiscard]] static RootPair Twice(const Complex& root) { return {root, root}; }
};

/// The poles and zeros of one section.
struct PoleZeroPair {
    RootPair poles;
    RootPair zeros;
};

/// Poles and zeros of a filter, in the s-plane (a prototype with its edge at 1) or in the z-plane. With an
/// odd number of poles the last pair holds one real pole and one zero, both in `first`.
template <int MaxPoles>
struct Layout {
    int numPoles = 0;
    std::array<PoleZeroPair, (MaxPoles + 1) / 2> pairs;
    double normalW = 0.0;    ///< angular frequency at which the gain is fixed, 0..pi
    double normalGain = 1.0; ///< the gain there

    [[nodiscard]] int numPairs() const { return (numPoles + 1) / 2; }
    [[nodiscard]] bool isSingle(int pair) const { return 2 * pair + 1 == numPoles; }

    PoleZeroPair& operator[](int index) { return pairs[static_cast<std::size_t>(index)]; }
    const PoleZeroPair& operator[](int index) const { return pairs[static_cast<std::size_t>(index)]; }
};

/// The section with these roots and a leading coefficient of 1.
[[nodiscard]] inline Stage StageOf(const PoleZeroPair& pair, bool single) {
    Stage stage;
    if (single) {
        stage.a1 = -pair.poles.first.real();
        stage.b1 = -pair.zeros.first.real();
        return stage;
    }
    const auto sum = [](const RootPair& r) { return r.first.real() + r.second.real(); };
    const auto product = [](const RootPair& r) {
        return r.first.real() * r.second.real() - r.first.imag() * r.second.imag();
    };
    stage.a1 = -sum(pair.poles);
    stage.a2 = product(pair.poles);
    stage.b1 = -sum(pair.zeros);
    stage.b2 = product(pair.zeros);
    return stage;
}

/// Turns a z-plane layout into sections and fixes the gain at `normalW`.
template <int MaxPoles, int MaxStages>
void SetLayout(Cascade<MaxStages>& cascade, const Layout<MaxPoles>& digital) {
    static_assert(MaxStages >= (MaxPoles + 1) / 2);
    cascade.numStages = digital.numPairs();
    for (int i = 0; i < digital.numPairs(); ++i)
        cascade[i] = StageOf(digital[i], digital.isSingle(i));

    const double w = digital.normalW;
    double cosine = 1.0;
    double sine = 0.0;
    if (w == std::numbers::pi) {
        cosine = -1.0;
    } else if (w != 0.0) {
        cosine = std::cos(w);
        sine = std::sin(w);
    }
    cascade.scale(digital.normalGain / cascade.magnitude(cosine, sine));
}

} // namespace Dsp
