#pragma once

#include <array>
#include <complex>
#include <cstddef>
#include <span>

namespace Dsp {

/// Roots of a polynomial by Laguerre's method with deflation, each polished on the undivided polynomial,
/// sorted by imaginary part with the largest first.
///
/// `coefficients` run from the constant to the leading one; `roots` takes one fewer, at most kMaxDegree. A
/// root that does not settle within 80 iterations throws std::logic_error ("laguerre failed"); for the
/// polynomials used here this cannot happen. Does not allocate.
class RootFinder {
public:
    static constexpr std::size_t kMaxDegree = 8;

    static void Solve(std::span<const double> coefficients, std::span<std::complex<double>> roots);
};

} // namespace Dsp
