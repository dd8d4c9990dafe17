#include "core/Choice.h"
#include "core/TempoSync.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace Grimworks;

TEST(Choice, DecodesEveryIndexOfATable) {
    for (int last = 1; last <= 41; ++last) {
        for (int index = 0; index <= last; ++index) {
            EXPECT_EQ(Choice(static_cast<double>(index) / last, last), index) << last;
        }
    }
}

TEST(Choice, RoundsHalfUp) {
    EXPECT_EQ(Choice(0.125, 4), 1);
    EXPECT_EQ(Choice(0.1249, 4), 0);
    EXPECT_EQ(Choice(-0.125, 4), 0);
    EXPECT_EQ(Choice(-0.2, 4), -1);
}

TEST(Choice, AbsurdValuesStayWithinAnInt) {
    EXPECT_EQ(Choice(1e300, 9), 9000);
    EXPECT_EQ(Choice(-1e300, 9), -9000);
    EXPECT_EQ(Choice(std::numeric_limits<double>::infinity(), 1), 1000);
    EXPECT_EQ(Choice(std::numeric_limits<double>::quiet_NaN(), 9), 0);
}

TEST(Choice, ClampedChoiceNeverLeavesTheTable) {
    EXPECT_EQ(ClampedChoice(-3.0, 6), 0);
    EXPECT_EQ(ClampedChoice(1.259, 6), 6);
}

TEST(TempoSync, DivisionsDoubleFromASixteenthToSixteen) {
    EXPECT_EQ(kTempoDivisions[0].factor, 0.0);
    for (int index = 1; index <= 9; ++index) {
        EXPECT_DOUBLE_EQ(kTempoDivisions[static_cast<std::size_t>(index)].factor, std::exp2(index - 5));
        EXPECT_EQ(TempoDivisionIndex(index / 9.0), index);
    }
}

TEST(TempoSync, AnIndexOutsideTheTableIsLimited) {
    EXPECT_EQ(TempoDivisionIndex(7.0), 9);
    EXPECT_EQ(TempoDivisionIndex(-7.0), 0);
}

TEST(TempoSync, RateGivesTheFrequencyInHertzOverTwenty) {
    EXPECT_DOUBLE_EQ(TempoSyncedRate(120.0, 1.0) * 20.0, 2.0);
    EXPECT_DOUBLE_EQ(TempoSyncedRate(174.0, 4.0) * 20.0, 174.0 / 60.0 * 4.0);
}
