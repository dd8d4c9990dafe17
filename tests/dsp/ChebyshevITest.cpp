#include "tests/dsp/FilterTestTools.h"

#include "dsp/ChebyshevI.h"

#include <algorithm>

using namespace Dsp;
using namespace DspTest;

namespace {

/// Chebyshev polynomial by its cosine form.
double T(int n, double x) {
    return std::fabs(x) <= 1.0
               ? std::cos(n * std::acos(x))
               : std::cosh(n * std::acosh(std::fabs(x))) * (x < 0.0 && n % 2 != 0 ? -1.0 : 1.0);
}

/// The magnitude that defines the family, normalised to a peak of 1.
double Magnitude(int n, double ripple, double analog) {
    const double power = std::pow(10.0, ripple / 10.0) - 1.0;
    return 1.0 / std::sqrt(1.0 + power * T(n, analog) * T(n, analog));
}

/// One section with the analog denominator s^2 + s p + r and its edge at k = tan(pi fc).
struct Section {
    double a1, a2, lowGain;
};

Section LowPassSection(double p, double r, double k) {
    const double d = 1.0 + p * k + r * k * k;
    return {2.0 * (r * k * k - 1.0) / d, (1.0 - p * k + r * k * k) / d, r * k * k / d};
}

/// Sum and product of the pole pairs of order 2 or 4.
std::array<double, 2> PoleTerms(int n, double ripple, int pair) {
    const double eps = std::sqrt(std::pow(10.0, ripple / 10.0) - 1.0);
    const double mu = std::asinh(1.0 / eps) / n;
    const double angle = (n - 1 - 2 * pair) * kPi / (2 * n);
    const double re = std::sinh(mu) * std::cos(angle);
    const double im = std::cosh(mu) * std::sin(angle);
    return {2.0 * re, re * re + im * im};
}

} // namespace

TEST(ChebyshevI, SecondOrderLowPassHasTheClosedForm) {
    ChebyshevI::LowPass<4> design;
    for (const double rate : kRates) {
        for (const double ripple : {0.001, 0.01, 0.5, 3.0, 12.0}) {
            for (const double f : {10.0, 100.0, 1000.0, 9000.0, 22040.0}) {
                design.setParams(Set({rate, 2.0, f, ripple}));
                const auto [p, r] = PoleTerms(2, ripple, 0);
                const Section expected = LowPassSection(p, r, std::tan(kPi * Share(f, rate)));
                const double gain = expected.lowGain * std::pow(10.0, -ripple / 20.0);
                ASSERT_EQ(design.cascade.numStages, 1);
                EXPECT_NEAR(design.cascade[0].a1, expected.a1, 1e-9);
                EXPECT_NEAR(design.cascade[0].a2, expected.a2, 1e-9);
                EXPECT_NEAR(design.cascade[0].b0, gain, 1e-9);
                EXPECT_NEAR(design.cascade[0].b1, 2.0 * gain, 1e-9);
                EXPECT_NEAR(design.cascade[0].b2, gain, 1e-9);
            }
        }
    }
}

TEST(ChebyshevI, FourthOrderHighPassHasTheClosedForm) {
    ChebyshevI::HighPass<4> design;
    for (const double ripple : {0.001, 1.0, 12.0}) {
        for (const double f : {20.0, 400.0, 5000.0, 20000.0}) {
            design.setParams(Set({48000.0, 4.0, f, ripple}));
            ASSERT_EQ(design.cascade.numStages, 2);
            double gain = std::pow(10.0, -ripple / 20.0);
            for (int i = 0; i < 2; ++i) {
                const auto [p, r] = PoleTerms(4, ripple, i);
                // A high pass is the low pass at the mirrored frequency, with the odd coefficients turned.
                const Section mirrored = LowPassSection(p, r, 1.0 / std::tan(kPi * f / 48000.0));
                EXPECT_NEAR(design.cascade[i].a1, -mirrored.a1, 1e-9);
                EXPECT_NEAR(design.cascade[i].a2, mirrored.a2, 1e-9);
                EXPECT_NEAR(design.cascade[i].b1, -2.0 * design.cascade[i].b0, 1e-9);
                EXPECT_NEAR(design.cascade[i].b2, design.cascade[i].b0, 1e-9);
                gain *= mirrored.lowGain;
            }
            EXPECT_NEAR(design.cascade[0].b0 * design.cascade[1].b0, gain, 1e-9);
        }
    }
}

TEST(ChebyshevI, MagnitudeFollowsTheDefiningPolynomial) {
    ChebyshevI::LowPass<4> low;
    ChebyshevI::HighPass<4> high;
    for (int n = 1; n <= 4; ++n) {
        for (const double ripple : {0.001, 0.01, 1.0, 6.0, 12.0}) {
            for (const double fc : {0.02, 0.1, 0.3, 0.45}) {
                low.setParams(Set({48000.0, static_cast<double>(n), fc * 48000.0, ripple}));
                high.setParams(Set({48000.0, static_cast<double>(n), fc * 48000.0, ripple}));
                for (int i = 1; i < 50; ++i) {
                    const double f = i / 100.0;
                    EXPECT_NEAR(Gain(low.cascade, f), Magnitude(n, ripple, LowPassAnalog(f, fc)), 1e-9);
                    EXPECT_NEAR(Gain(high.cascade, f), Magnitude(n, ripple, 1.0 / LowPassAnalog(f, fc)),
                                1e-9);
                }
            }
        }
    }
}

TEST(ChebyshevI, PassBandKeepsToTheRipple) {
    for (const double ripple : {0.001, 0.1, 1.0, 12.0}) {
        for (const int n : {2, 4}) {
            ChebyshevI::LowPass<4> low;
            low.setParams(Set({44100.0, static_cast<double>(n), 5000.0, ripple}));
            double least = 1.0;
            double most = 0.0;
            for (int i = 0; i <= 5000; ++i) {
                const double gain = Gain(low.cascade, i / 44100.0);
                least = std::min(least, gain);
                most = std::max(most, gain);
            }
            EXPECT_NEAR(least, std::pow(10.0, -ripple / 20.0), 1e-9);
            EXPECT_LE(most, 1.0 + 1e-9);
            EXPECT_GT(most, 1.0 - 1e-5);
            EXPECT_NEAR(Decibels(Gain(low.cascade, 5000.0 / 44100.0)), -ripple, 1e-9);
        }
    }
}

TEST(ChebyshevI, EvenOrdersStartAtTheFootOfTheRippleOddOnesAtUnity) {
    for (int n = 1; n <= 4; ++n) {
        ChebyshevI::LowPass<4> low;
        ChebyshevI::HighPass<4> high;
        low.setParams(Set({44100.0, static_cast<double>(n), 700.0, 3.0}));
        high.setParams(Set({44100.0, static_cast<double>(n), 700.0, 3.0}));
        const double expected = n % 2 == 0 ? std::pow(10.0, -0.15) : 1.0;
        EXPECT_NEAR(Gain(low.cascade, 0.0), expected, 1e-9);
        EXPECT_NEAR(Gain(high.cascade, 0.5), expected, 1e-9);
    }
}

TEST(ChebyshevI, SmallestRippleIsNearlyButterworth) {
    ChebyshevI::LowPass<4> low;
    low.setParams(Set({44100.0, 2.0, 1000.0, 0.001}));
    EXPECT_NEAR(Gain(low.cascade, 0.0), 1.0, 1.2e-4);
    // The poles of a Butterworth lie on a circle at 135 degrees; here they are within a degree.
    const auto [p, r] = PoleTerms(2, 0.001, 0);
    EXPECT_NEAR(p / std::sqrt(r), std::numbers::sqrt2, 0.02);
}

TEST(ChebyshevI, PolesStayInsideTheUnitCircleOverTheGrid) {
    ChebyshevI::LowPass<4> low;
    ChebyshevI::HighPass<4> high;
    for (const double rate : kRates) {
        for (int i = 0; i <= 24; ++i) {
            for (int k = 0; k <= 12; ++k) {
                for (const double n : {2.0, 3.0, 4.0}) {
                    const Params params = Set({rate, n, CutoffAt(i / 24.0), 0.001 + 11.999 * k / 12.0});
                    low.setParams(params);
                    high.setParams(params);
                    EXPECT_TRUE(IsStable(low.cascade)) << rate << " " << n << " " << params[2];
                    EXPECT_TRUE(IsStable(high.cascade)) << rate << " " << n << " " << params[2];
                }
            }
        }
    }
}

TEST(ChebyshevI, CutoffCloseToHalfTheRateStaysFinite) {
    ChebyshevI::LowPass<4> low;
    for (const double n : {2.0, 4.0}) {
        low.setParams(Set({44100.0, n, 22040.0, 0.001}));
        EXPECT_TRUE(IsStable(low.cascade));
        EXPECT_NEAR(Gain(low.cascade, 0.25), 1.0, 2e-4);
    }
}

TEST(ChebyshevI, OrdersBetweenAreTruncated) {
    ChebyshevI::LowPass<4> fractional;
    ChebyshevI::LowPass<4> whole;
    fractional.setParams(Set({44100.0, 3.99, 900.0, 1.0}));
    whole.setParams(Set({44100.0, 3.0, 900.0, 1.0}));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(fractional.cascade[i].a1, whole.cascade[i].a1);
        EXPECT_EQ(fractional.cascade[i].b0, whole.cascade[i].b0);
    }
    EXPECT_EQ(whole.cascade[1].a2, 0.0);
}
