#include "tests/dsp/FilterTestTools.h"

#include "dsp/Bessel.h"

#include <array>

using namespace Dsp;
using namespace DspTest;

namespace {

/// The reverse Bessel polynomials of textbooks, highest power first.
std::complex<double> Theta(int n, std::complex<double> s) {
    switch (n) {
    case 1:
        return s + 1.0;
    case 2:
        return s * s + 3.0 * s + 3.0;
    case 3:
        return ((s + 6.0) * s + 15.0) * s + 15.0;
    default:
        return (((s + 10.0) * s + 45.0) * s + 105.0) * s + 105.0;
    }
}

} // namespace

TEST(Bessel, PolynomialsHaveTheTextbookCoefficients) {
    std::array<double, 5> c{};
    Bessel::ReversePolynomial(4, c);
    EXPECT_EQ(c, (std::array<double, 5>{105.0, 105.0, 45.0, 10.0, 1.0}));
    std::array<double, 4> third{};
    Bessel::ReversePolynomial(3, third);
    EXPECT_EQ(third, (std::array<double, 4>{15.0, 15.0, 6.0, 1.0}));
}

TEST(Bessel, FourthOrderDeliversTwoConjugatePairs) {
    Bessel::LowPassPrototype<4> prototype;
    const Layout<4>& layout = prototype.Design(4);
    ASSERT_EQ(layout.numPoles, 4);
    // The roots of s^4 + 10 s^3 + 45 s^2 + 105 s + 105 as tabulated, the larger imaginary part first.
    EXPECT_NEAR(layout[0].poles.first.real(), -2.10378939717963, 1e-12);
    EXPECT_NEAR(layout[0].poles.first.imag(), 2.65741804185675, 1e-12);
    EXPECT_NEAR(layout[1].poles.first.real(), -2.89621060282037, 1e-12);
    EXPECT_NEAR(layout[1].poles.first.imag(), 0.86723412893450, 1e-12);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(layout[i].poles.second, std::conj(layout[i].poles.first));
        EXPECT_TRUE(IsInfinite(layout[i].zeros.first));
        EXPECT_EQ(layout[i].zeros.first.imag(), 0.0);
        EXPECT_NEAR(std::abs(Theta(4, layout[i].poles.first)), 0.0, 1e-11);
    }
}

TEST(Bessel, ResponseIsThatOfTheBilinearTransformedPolynomial) {
    Bessel::LowPass<4> low;
    Bessel::HighPass<4> high;
    for (int n = 1; n <= 4; ++n) {
        for (const double fc : {0.01, 0.1, 0.4}) {
            low.setParams(Set({48000.0, static_cast<double>(n), fc * 48000.0}));
            high.setParams(Set({48000.0, static_cast<double>(n), fc * 48000.0}));
            for (int i = 1; i < 50; ++i) {
                const double f = i / 100.0;
                const std::complex<double> s{0.0, LowPassAnalog(f, fc)};
                EXPECT_NEAR(std::abs(low.cascade.response(f) - Theta(n, 0.0) / Theta(n, s)), 0.0, 1e-9);
                EXPECT_NEAR(Gain(high.cascade, f), std::abs(Theta(n, 0.0) / Theta(n, 1.0 / s)), 1e-9);
            }
            EXPECT_NEAR(Gain(low.cascade, 0.0), 1.0, 1e-9);
            EXPECT_NEAR(Gain(high.cascade, 0.5), 1.0, 1e-9);
        }
    }
}

TEST(Bessel, PolesStayInsideTheUnitCircleOverTheGrid) {
    Bessel::LowPass<4> low;
    Bessel::HighPass<4> high;
    for (const double rate : kRates) {
        for (int i = 0; i <= 48; ++i) {
            for (int n = 1; n <= 4; ++n) {
                const Params params = Set({rate, static_cast<double>(n), CutoffAt(i / 48.0)});
                low.setParams(params);
                high.setParams(params);
                EXPECT_TRUE(IsStable(low.cascade)) << rate << " " << n << " " << params[2];
                EXPECT_TRUE(IsStable(high.cascade)) << rate << " " << n << " " << params[2];
            }
        }
    }
}
