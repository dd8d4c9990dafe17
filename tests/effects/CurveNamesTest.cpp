#include "effects/CurveNames.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

using namespace Grimworks;

TEST(CurveNames, EveryNameLeadsBackToItsNumber) {
    std::set<std::string_view> names;
    for (int number = 0; number < kCurves; ++number) {
        EXPECT_EQ(GetCurveNumber(GetCurveName(number)), number);
        names.insert(GetCurveName(number));
    }
    EXPECT_EQ(names.size(), 42U);
}

TEST(CurveNames, LandmarksOfTheSelection) {
    EXPECT_EQ(GetCurveName(0), "Linear");
    EXPECT_EQ(GetCurveName(7), "Hard-Overload");
    EXPECT_EQ(GetCurveName(13), "QRX-Fuzz 1");
    EXPECT_EQ(GetCurveName(24), "Industrial-Fuzz1");
    EXPECT_EQ(GetCurveName(31), "VoxFreak-Fuzz 3");
    EXPECT_EQ(GetCurveName(39), "Public Enemy by O:MAR");
    EXPECT_EQ(GetCurveName(40), "QRX Thrashcore");
    EXPECT_EQ(GetCurveName(41), "More in PRO version");
}

TEST(CurveNames, NumbersOutsideTheTableHaveTheGeneralName) {
    for (const int number : {-1, 42, 1000, -2147483647})
        EXPECT_EQ(GetCurveName(number), "Distortion");
}

TEST(CurveNames, ShortNamesMeanTheFirstOfTheirKind) {
    EXPECT_EQ(GetCurveNumber("Fuzz-Drive"), 19);
    EXPECT_EQ(GetCurveNumber("Fuzz-Drive1"), 19);
    EXPECT_EQ(GetCurveNumber("GrimWorks-Drive"), 25);
    EXPECT_EQ(GetCurveNumber("GrimWorks-Drive1"), 25);
}

TEST(CurveNames, UnknownEmptyAndLowerCaseNamesGiveTheFirst) {
    EXPECT_EQ(GetCurveNumber(""), 0);
    EXPECT_EQ(GetCurveNumber("fuzz-drive1"), 0);
    EXPECT_EQ(GetCurveNumber("Full-Clip "), 0);
    EXPECT_EQ(GetCurveNumber("Distortion"), 0);
}
