#include "core/Trigonometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Grimworks {
namespace {

constexpr double kUnitInTheLastPlace = std::numeric_limits<double>::epsilon();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// The C library in extended precision is the reference; the argument is the rounded double. Next to a zero
// that library is only as good as its own reduction of the argument, which on Windows knows 66 bits of pi.
constexpr double kReferenceReduction = 1e-20;

TEST(Trigonometry, SineOfPhaseIsTheSineToTheLastBits) {
    for (int i = 0; i <= 20000; ++i) {
        const double phase = i / 20000.0;
        const auto exact = static_cast<double>(std::sin(static_cast<long double>(phase * 2.0 * kPi)));
        const double tolerance = 2.0 * kUnitInTheLastPlace * std::fabs(exact) + kReferenceReduction;
        ASSERT_NEAR(SineOfPhase(phase), exact, tolerance) << phase;
    }
}

TEST(Trigonometry, SineOfPhaseIsExactlyZeroAtPhaseZero) {
    EXPECT_EQ(SineOfPhase(0.0), 0.0);
}

TEST(Trigonometry, SineOfPhaseHoldsBeyondOneCycle) {
    for (const double phase : {-3.3, -0.25, 1.25, 7.9, 1000.125}) {
        EXPECT_NEAR(SineOfPhase(phase), std::sin(phase * 2.0 * kPi), 1e-12) << phase;
    }
}

TEST(Trigonometry, TangentOfPiIsTheTangentToTheLastBits) {
    for (int i = 0; i < 20000; ++i) {
        const double x = i / 40000.0;
        const auto exact = static_cast<double>(std::tan(static_cast<long double>(kPi * x)));
        ASSERT_NEAR(TangentOfPi(x), exact, 3.0 * kUnitInTheLastPlace * exact) << x;
    }
}

TEST(Trigonometry, ArcTangentIsTheArcTangentToTheLastBits) {
    for (int i = -9000; i <= 9000; ++i) {
        const double x = std::pow(10.0, i / 1000.0);
        const auto exact = static_cast<double>(std::atan(static_cast<long double>(x)));
        ASSERT_NEAR(ArcTangent(x), exact, 2.0 * kUnitInTheLastPlace * exact) << x;
        ASSERT_EQ(ArcTangent(-x), -ArcTangent(x)) << x;
    }
}

TEST(Trigonometry, ArcTangentTakesEveryNumber) {
    EXPECT_EQ(ArcTangent(0.0), 0.0);
    EXPECT_DOUBLE_EQ(ArcTangent(kInfinity), kPi / 2.0);
    EXPECT_DOUBLE_EQ(ArcTangent(-kInfinity), -kPi / 2.0);
    EXPECT_DOUBLE_EQ(ArcTangent(1.0), kPi / 4.0);
}

TEST(Trigonometry, NotANumberStaysOne) {
    EXPECT_TRUE(std::isnan(SineOfPhase(kNaN)));
    EXPECT_TRUE(std::isnan(SineOfPhase(kInfinity)));
    EXPECT_TRUE(std::isnan(TangentOfPi(kNaN)));
    EXPECT_TRUE(std::isnan(ArcTangent(kNaN)));
}

} // namespace
} // namespace Grimworks
