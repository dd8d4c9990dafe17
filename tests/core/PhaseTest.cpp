#include "core/Phase.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Grimworks {
namespace {

TEST(Phase, WrapsLikeTheFractionForAnyValue) {
    for (int i = -300; i < 500; ++i) {
        const double x = i * 0.0101;
        EXPECT_EQ(WrappedPhase(x), x - std::trunc(x)) << x;
    }
    for (const double x : {0.0, 1.0, 2.0, std::nextafter(1.0, 0.0), std::nextafter(2.0, 0.0), 1e9 + 0.25})
        EXPECT_EQ(WrappedPhase(x), x - std::trunc(x)) << x;
}

TEST(Phase, KeepsNaN) {
    EXPECT_TRUE(std::isnan(WrappedPhase(std::numeric_limits<double>::quiet_NaN())));
}

} // namespace
} // namespace Grimworks
