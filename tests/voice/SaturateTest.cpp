#include "voice/Saturate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Grimworks {
namespace {

TEST(Saturate, AmountZeroLeavesTheSample) {
    for (const double x : {-3.0, -0.2, 0.0, 0.7, 12.0})
        EXPECT_EQ(Saturate(x, 0.0), x);
}

TEST(Saturate, SmallAmountsAllGiveTheArcTangentAtUnityGain) {
    for (const double amount : {1e-300, 0.05, 0.1287}) {
        for (double x = -1.0; x <= 1.0; x += 0.125)
            EXPECT_NEAR(Saturate(x, amount), std::atan(x) / (kPi / 4.0), 1e-12) << amount;
    }
    EXPECT_NEAR(Saturate(1.0, 0.01), 1.0, 1e-12);
}

TEST(Saturate, LargeAmountsDriveIntoTheCeiling) {
    EXPECT_NEAR(Saturate(0.05, 1.0), std::atan(0.05) / std::atan(1.0) * 7.77, 1e-12);
    EXPECT_EQ(Saturate(0.2, 1.0), 1.0);
    EXPECT_EQ(Saturate(-0.2, 1.0), -1.0);
    EXPECT_EQ(Saturate(std::numeric_limits<double>::infinity(), 0.5), 1.0);
}

TEST(Saturate, IsOdd) {
    for (double x = 0.0; x < 3.0; x += 0.1)
        EXPECT_EQ(Saturate(-x, 0.3), -Saturate(x, 0.3));
}

} // namespace
} // namespace Grimworks
