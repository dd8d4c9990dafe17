#include "dsp/Biquad.h"

#include <gtest/gtest.h>

#include <limits>

using Dsp::Biquad;

TEST(Biquad, RunsTheDifferenceEquation) {
    Biquad filter;
    filter.stage = {1.0, -0.5, 0.25, 0.3, -0.2, 0.75};
    const double input[] = {1.0, -2.0, 0.5, 0.0, 3.0};
    double x1 = 0.0, x2 = 0.0, y1 = 0.0, y2 = 0.0;
    for (const double x : input) {
        const double y = 0.75 * x + 0.3 * x1 + -0.2 * x2 - -0.5 * y1 - 0.25 * y2;
        EXPECT_DOUBLE_EQ(filter.process(x), y);
        x2 = x1;
        x1 = x;
        y2 = y1;
        y1 = y;
    }
}

TEST(Biquad, FlushesDenormalOutputsAndKeepsTheSmallestNormalOne) {
    Biquad filter;
    const double smallest = std::numeric_limits<double>::min();
    EXPECT_EQ(filter.process(smallest), smallest);
    EXPECT_EQ(filter.process(smallest / 2.0), 0.0);
    EXPECT_EQ(filter.y1, 0.0);
}

TEST(Biquad, SilenceIsExact) {
    Biquad filter;
    filter.stage = {1.0, -1.9, 0.95, 0.0, 0.0, 1.0};
    filter.process(1.0);
    filter.reset();
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(filter.process(0.0), 0.0);
}
