#include "host/TempoMap.h"

#include <gtest/gtest.h>

using namespace Grimworks;

TEST(TempoMap, StartsAt120InFourFour) {
    const TempoMap map;
    const MusicalPosition position = map.At(3.0);
    EXPECT_DOUBLE_EQ(position.tempo, 120.0);
    EXPECT_DOUBLE_EQ(position.quarter, 6.0);
    EXPECT_DOUBLE_EQ(position.barStart, 4.0);
    EXPECT_EQ(position.numerator, 4);
    EXPECT_EQ(position.denominator, 4);
}

TEST(TempoMap, QuartersAreCountedThroughEveryTempo) {
    TempoMap map;
    map.AddTempo(1.0, 1000000.0); // 60 from 1 s on
    map.AddTempo(3.0, 250000.0);  // 240 from 3 s on
    EXPECT_DOUBLE_EQ(map.QuarterAt(0.5), 1.0);
    EXPECT_DOUBLE_EQ(map.QuarterAt(1.0), 2.0);
    EXPECT_DOUBLE_EQ(map.QuarterAt(2.0), 3.0);
    EXPECT_DOUBLE_EQ(map.QuarterAt(3.5), 6.0);
    EXPECT_DOUBLE_EQ(map.At(0.999).tempo, 120.0);
    EXPECT_DOUBLE_EQ(map.At(1.0).tempo, 60.0);
    EXPECT_DOUBLE_EQ(map.At(3.0).tempo, 240.0);
}

TEST(TempoMap, TheLastTempoOfAMomentStands) {
    TempoMap map;
    map.AddTempo(0.0, 250000.0);
    map.AddTempo(1.0, 1000000.0);
    map.AddTempo(1.0, 500000.0);
    EXPECT_DOUBLE_EQ(map.At(0.5).tempo, 240.0);
    EXPECT_DOUBLE_EQ(map.At(1.5).tempo, 120.0);
    EXPECT_DOUBLE_EQ(map.QuarterAt(1.5), 5.0);
}

TEST(TempoMap, BarsAreCountedFromTheLastChangeOfMeter) {
    TempoMap map;
    map.AddMeter(0.0, 3, 4);
    map.AddMeter(6.0, 7, 8);
    EXPECT_DOUBLE_EQ(map.At(2.0).barStart, 3.0);  // quarter 4, the second bar of three
    EXPECT_DOUBLE_EQ(map.At(3.0).barStart, 6.0);  // quarter 6, the first bar of seven eighths
    EXPECT_DOUBLE_EQ(map.At(4.75).barStart, 9.5); // quarter 9.5, exactly the next bar
    EXPECT_DOUBLE_EQ(map.At(4.7).barStart, 6.0);
    EXPECT_EQ(map.At(4.7).numerator, 7);
    EXPECT_EQ(map.At(4.7).denominator, 8);
}
