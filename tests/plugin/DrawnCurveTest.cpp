#include "plugin/DrawnCurve.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

namespace Grimworks {

namespace {

using Values = std::vector<double>;

/// Some hills that stay within the area.
void DrawHills(DrawnCurve& drawn) {
    for (int x = 0; x < 128; ++x)
        drawn.Press(x, 0.8 * std::sin(x * 0.21) + 0.15 * std::cos(x * 1.3));
}

double At(const Values& values, int index) {
    return values[static_cast<std::size_t>(std::clamp(index, 0, static_cast<int>(values.size()) - 1))];
}

/// Weights of the four pixels around a point that lies so many quarters behind the second of them, worked out
/// by hand from the cubic.
constexpr std::array<std::array<double, 4>, 4> kQuarters{{{0.0, 1.0, 0.0, 0.0},
                                                          {-0.140625, 0.890625, 0.296875, -0.046875},
                                                          {-0.125, 0.625, 0.625, -0.125},
                                                          {-0.046875, 0.296875, 0.890625, -0.140625}}};

double ExpectedPoint(const Values& values, int point) {
    const int pixel = point / 4;
    const auto& weights = kQuarters[static_cast<std::size_t>(point % 4)];
    double sum = 0.0;
    for (int k = 0; k < 4; ++k)
        sum += weights[static_cast<std::size_t>(k)] * At(values, pixel - 1 + k);
    return -std::clamp(sum, -1.0, 1.0);
}

} // namespace

TEST(DrawnCurve, StartsAsALineThatRisesToTheRightOnTheScreen) {
    const DrawnCurve drawn;
    ASSERT_EQ(drawn.Values().size(), 128U);
    EXPECT_EQ(drawn.Values().front(), 1.0);
    EXPECT_EQ(drawn.Values()[64], 0.0);
    EXPECT_DOUBLE_EQ(drawn.Values().back(), -(254.0 / 128.0 - 1.0));
    EXPECT_FALSE(drawn.HasStroke());
}

TEST(DrawnCurve, AWidthThatIsNoneGivesOnePixel) {
    EXPECT_EQ(DrawnCurve(0).Values().size(), 1U);
    EXPECT_EQ(DrawnCurve(-5).Values().size(), 1U);
}

TEST(DrawnCurve, APressSetsOnePixel) {
    DrawnCurve drawn;
    Values expected = drawn.Values();
    drawn.Press(40, -0.25);
    expected[40] = -0.25;
    EXPECT_EQ(drawn.Values(), expected);
    EXPECT_TRUE(drawn.HasStroke());
}

TEST(DrawnCurve, AStrokeBeyondTheRightEdgeChangesNothingButCountsAsAStroke) {
    for (const int x : {128, 1000, -1}) {
        DrawnCurve drawn;
        const Values before = drawn.Values();
        drawn.Press(x, 0.5);
        EXPECT_EQ(drawn.Values(), before);
        EXPECT_TRUE(drawn.HasStroke());
    }
}

TEST(DrawnCurve, ADragOutsideTheAreaDoesNothing) {
    for (const int x : {128, -1}) {
        DrawnCurve drawn;
        const Values before = drawn.Values();
        drawn.Drag(x, 0.5, x < 0 ? 20 : -20);
        EXPECT_EQ(drawn.Values(), before);
        EXPECT_FALSE(drawn.HasStroke());
    }
}

TEST(DrawnCurve, ADragPullsTheDirectNeighbours) {
    for (const int dX : {-1, 0, 1}) {
        DrawnCurve drawn;
        Values expected = drawn.Values();
        drawn.Drag(64, 1.0, dX);
        expected[64] = 1.0;
        expected[63] = 0.7 + expected[63] * 0.3;
        expected[65] = 0.7 + expected[65] * 0.3;
        EXPECT_EQ(drawn.Values(), expected) << dX;
        EXPECT_TRUE(drawn.HasStroke());
    }
}

TEST(DrawnCurve, AFastDragToTheRightFillsAheadOfThePointer) {
    DrawnCurve drawn;
    Values expected = drawn.Values();
    drawn.Drag(50, 0.25, 3);
    expected[49] = 0.25 * 0.7 + expected[49] * 0.3;
    for (std::size_t x = 50; x <= 53; ++x)
        expected[x] = 0.25;
    EXPECT_EQ(drawn.Values(), expected);
}

TEST(DrawnCurve, AFastDragToTheRightStopsAtTheEdge) {
    DrawnCurve drawn;
    drawn.Drag(126, 0.25, 1000);
    EXPECT_EQ(drawn.Values()[127], 0.25);
    EXPECT_EQ(drawn.Values().size(), 128U);
}

TEST(DrawnCurve, AFastDragToTheLeftLeavesTheFirstPixelOut) {
    DrawnCurve drawn;
    Values expected = drawn.Values();
    drawn.Drag(4, -0.5, -100);
    expected[5] = -0.35 + expected[5] * 0.3;
    for (std::size_t x = 1; x <= 4; ++x)
        expected[x] = -0.5;
    EXPECT_EQ(drawn.Values(), expected);
    EXPECT_EQ(drawn.Values()[0], 1.0);
}

TEST(DrawnCurve, ADragAtTheFirstPixelMovingLeftWritesItAndFillsNothing) {
    DrawnCurve drawn;
    Values expected = drawn.Values();
    drawn.Drag(0, -0.5, -100);
    expected[0] = -0.5;
    expected[1] = -0.35 + expected[1] * 0.3;
    EXPECT_EQ(drawn.Values(), expected);
}

TEST(DrawnCurve, EveryFourthCurvePointIsAPixelWithTheOppositeSign) {
    DrawnCurve drawn;
    DrawHills(drawn);
    CurvePoints points{};
    drawn.WriteTo(points);
    for (std::size_t x = 0; x < 128; ++x)
        EXPECT_EQ(points[4 * x], -drawn.Values()[x]) << x;
    EXPECT_FALSE(drawn.HasStroke());
}

TEST(DrawnCurve, PointsBetweenPixelsLieOnTheCubicThroughTheirNeighbours) {
    DrawnCurve drawn;
    DrawHills(drawn);
    CurvePoints points{};
    drawn.WriteTo(points);
    for (int k = 0; k < kCurvePoints; ++k)
        EXPECT_NEAR(points[static_cast<std::size_t>(k)], ExpectedPoint(drawn.Values(), k), 1e-14) << k;
}

TEST(DrawnCurve, ADrawingBeyondTheAreaIsLimitedInTheCurve) {
    DrawnCurve drawn;
    drawn.Drag(60, 3.0, 8);
    drawn.Drag(20, -3.0, 8);
    CurvePoints points{};
    drawn.WriteTo(points);
    EXPECT_EQ(drawn.Values()[62], 3.0);
    EXPECT_EQ(points[std::size_t{4} * 62], -1.0);
    EXPECT_EQ(points[std::size_t{4} * 22], 1.0);
    for (const double point : points)
        EXPECT_LE(std::fabs(point), 1.0);
}

TEST(DrawnCurve, ReadingTakesEveryFourthPointWithTheOppositeSign) {
    CurvePoints points{};
    for (std::size_t k = 0; k < points.size(); ++k)
        points[k] = std::sin(static_cast<double>(k) / 81.0 * std::numbers::pi);
    DrawnCurve drawn;
    drawn.Press(3, 0.5);
    drawn.ReadFrom(points);
    for (std::size_t x = 0; x < 128; ++x)
        EXPECT_EQ(drawn.Values()[x], -points[4 * x]) << x;
    EXPECT_FALSE(drawn.HasStroke());
}

TEST(DrawnCurve, WritingWhatWasReadKeepsThePixelsWhereTheyWere) {
    DrawnCurve drawn;
    DrawHills(drawn);
    CurvePoints points{};
    drawn.WriteTo(points);
    const Values before = drawn.Values();
    drawn.ReadFrom(points);
    EXPECT_EQ(drawn.Values(), before);
}

} // namespace Grimworks
