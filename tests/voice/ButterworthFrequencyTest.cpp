#include "voice/ButterworthFrequency.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Grimworks {
namespace {

constexpr double kUlp = std::numeric_limits<double>::epsilon();

double Share(double cutoff) {
    return cutoff * 0.5 * 0.957;
}

/// The exact tangent of the rounded angle.
double Exact(double fc) {
    return static_cast<double>(std::tan(static_cast<long double>(kPi * fc)));
}

TEST(ButterworthFrequency, IsTheTangentToTheLastBitsOverTheWholeRange) {
    for (int i = 1; i <= 100000; ++i) {
        const double cutoff = i * 1e-5;
        const double fc = std::fmax(0.0001, Share(cutoff));
        const ButterworthFrequency frequency = ButterworthFrequencyOf(cutoff);
        ASSERT_NEAR(frequency.tangent / Exact(fc), 1.0, 3.0 * kUlp) << cutoff;
        ASSERT_NEAR(frequency.cotangent * Exact(fc), 1.0, 3.0 * kUlp) << cutoff;
    }
}

TEST(ButterworthFrequency, RoundsLikeTheExactValueAtLowCutoffs) {
    int different = 0;
    for (int i = 0; i < 10000; ++i) {
        const double cutoff = 0.0003 + i * 1e-6;
        if (ButterworthFrequencyOf(cutoff).tangent != Exact(Share(cutoff))) ++different;
    }
    EXPECT_LT(different, 20);
    EXPECT_EQ(ButterworthFrequencyOf(0.0).tangent, Exact(0.0001));
}

TEST(ButterworthFrequency, NeverFallsBelowATenThousandthOfTheRate) {
    const double lowest = ButterworthFrequencyOf(0.0).tangent;
    EXPECT_NEAR(lowest, std::tan(kPi * 0.0001), 1e-18);
    for (const double cutoff : {-1.0, -1e9, 0.0002, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(ButterworthFrequencyOf(cutoff).tangent, lowest) << cutoff;
}

TEST(ButterworthFrequency, GoesOnAboveOne) {
    EXPECT_NEAR(ButterworthFrequencyOf(1.02).tangent / Exact(Share(1.02)), 1.0, 1e-12);
    EXPECT_NEAR(ButterworthFrequencyOf(1.3).tangent / Exact(Share(1.3)), 1.0, 1e-12);
    EXPECT_TRUE(std::isfinite(ButterworthFrequencyOf(1e300).tangent));
}

} // namespace
} // namespace Grimworks
