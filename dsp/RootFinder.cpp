#include "dsp/RootFinder.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <utility>

namespace Dsp {

namespace {

using Complex = std::complex<double>;

constexpr int kIterations = 80;
constexpr int kStallPeriod = 10; ///< after so many steps a shortened one breaks a limit cycle

/// Value, first and half the second derivative, with the rounding error of the value.
struct Evaluation {
    Complex value;
    Complex slope;
    Complex bend;
    double error;
};

Evaluation Evaluate(std::span<const Complex> a, const Complex& x) {
    Evaluation at{a.back(), 0.0, 0.0, std::abs(a.back())};
    const double size = std::abs(x);
    for (std::size_t k = a.size() - 1; k-- > 0;) {
        at.bend = x * at.bend + at.slope;
        at.slope = x * at.slope + at.value;
        at.value = x * at.value + a[k];
        at.error = std::abs(at.value) + size * at.error;
    }
    at.error *= std::numeric_limits<double>::epsilon();
    return at;
}

/// Laguerre's step: the distance to a root under the guess that all others lie together.
Complex StepFrom(const Evaluation& at, const Complex& x, double degree, int iteration) {
    const Complex g = at.slope / at.value;
    const Complex g2 = g * g;
    const Complex h = g2 - 2.0 * at.bend / at.value;
    const Complex root = std::sqrt((degree - 1.0) * (degree * h - g2));
    const Complex plus = g + root;
    const Complex minus = g - root;
    const Complex divisor = std::abs(plus) < std::abs(minus) ? minus : plus;
    if (std::abs(divisor) > 0.0) return degree / divisor;
    return (1.0 + std::abs(x)) * std::polar(1.0, static_cast<double>(iteration));
}

Complex Laguerre(std::span<const Complex> a, Complex x) {
    const auto degree = static_cast<double>(a.size() - 1);
    for (int i = 1; i <= kIterations; ++i) {
        const Evaluation at = Evaluate(a, x);
        if (std::abs(at.value) <= at.error) return x;
        const Complex step = StepFrom(at, x, degree, i);
        const Complex next = x - step;
        if (next == x) return x;
        x = i % kStallPeriod != 0 ? next : x - 0.5 * step;
    }
    throw std::logic_error("laguerre failed");
}

} // namespace

void RootFinder::Solve(std::span<const double> coefficients, std::span<std::complex<double>> roots) {
    const std::size_t degree = coefficients.size() - 1;
    std::array<Complex, kMaxDegree + 1> whole{};
    std::copy(coefficients.begin(), coefficients.end(), whole.begin());
    std::array<Complex, kMaxDegree + 1> rest = whole;

    for (std::size_t n = degree; n > 0; --n) {
        Complex root = Laguerre(std::span(rest).first(n + 1), 0.0);
        root = Laguerre(std::span(whole).first(degree + 1), root);
        roots[n - 1] = root;
        Complex carry = rest[n];
        for (std::size_t k = n; k-- > 0;)
            carry = std::exchange(rest[k], carry) + root * carry;
    }

    for (std::size_t i = 1; i < degree; ++i) {
        const Complex moving = roots[i];
        std::size_t k = i;
        for (; k > 0 && roots[k - 1].imag() < moving.imag(); --k)
            roots[k] = roots[k - 1];
        roots[k] = moving;
    }
}

} // namespace Dsp
