#include "effects/HqFilterUnit.h"

#include <gtest/gtest.h>

using namespace Grimworks;

TEST(HqFilterUnit, HoldsTwoBesselFiltersOfOrderFour) {
    const HqFilterUnit unit;
    EXPECT_STREQ(unit.LowPass().getName(), "Bessel Low Pass");
    EXPECT_STREQ(unit.HighPass().getName(), "Bessel High Pass");
    EXPECT_EQ(unit.LowPass().getParams()[1], 4.0);
    EXPECT_EQ(unit.HighPass().getParams()[1], 4.0);
    EXPECT_EQ(unit.LowPass().getParams()[2], 20000.0);
}

TEST(HqFilterUnit, FollowsTheSampleRate) {
    HqFilterUnit unit;
    unit.SetSampleRate(96000.0);
    EXPECT_EQ(unit.SampleRate(), 96000.0);
    EXPECT_EQ(unit.LowPass().getParams()[0], 96000.0);
    EXPECT_EQ(unit.HighPass().getParams()[0], 96000.0);
    unit.SetMode(2);
    EXPECT_EQ(unit.LowPass().getParams()[2], 20000.0);
}
