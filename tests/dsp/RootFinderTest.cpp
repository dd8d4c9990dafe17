#include "dsp/RootFinder.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <stdexcept>

using Dsp::RootFinder;

TEST(RootFinder, FindsComplexRootsLargestImaginaryPartFirst) {
    // (x^2 + 4)(x^2 + 2x + 2): roots +-2i and -1 +- i.
    const std::array<double, 5> coefficients{8.0, 8.0, 6.0, 2.0, 1.0};
    std::array<std::complex<double>, 4> roots;
    RootFinder::Solve(coefficients, roots);
    const std::array<std::complex<double>, 4> expected{{{0.0, 2.0}, {-1.0, 1.0}, {-1.0, -1.0}, {0.0, -2.0}}};
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_NEAR(std::abs(roots[i] - expected[i]), 0.0, 1e-13);
}

TEST(RootFinder, FindsRealRoots) {
    // (x - 1)(x - 2)(x - 3)
    const std::array<double, 4> coefficients{-6.0, 11.0, -6.0, 1.0};
    std::array<std::complex<double>, 3> roots;
    RootFinder::Solve(coefficients, roots);
    double sum = 0.0;
    for (const auto& root : roots) {
        EXPECT_NEAR(root.imag(), 0.0, 1e-13);
        EXPECT_NEAR((root.real() - 1.0) * (root.real() - 2.0) * (root.real() - 3.0), 0.0, 1e-12);
        sum += root.real();
    }
    EXPECT_NEAR(sum, 6.0, 1e-12);
}

TEST(RootFinder, SaysWhenARootDoesNotSettle) {
    const std::array<double, 3> coefficients{std::numeric_limits<double>::quiet_NaN(), 1.0, 1.0};
    std::array<std::complex<double>, 2> roots;
    try {
        RootFinder::Solve(coefficients, roots);
        FAIL() << "no error";
    } catch (const std::logic_error& error) {
        EXPECT_STREQ(error.what(), "laguerre failed");
    }
}
