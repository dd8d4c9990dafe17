#include "editor/thudforge/IGwCurve.h"

#include "editor/thudforge/CurvePainter.h"
#include "tests/editor/thudforge/DisplayRig.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace Grimworks {

namespace {

/// 40 wide, 21 high: the middle row is the eleventh.
const IRECT kRect{100, 50, 140, 71};
constexpr int kMiddle = 60;

} // namespace

TEST(IGwCurve, DrawsAWhiteLineThroughItsPoints) {
    DisplayRig rig;
    const std::array<double, 4> points{0.0, 0.0, 0.0, 0.0};
    rig.graphics.Attach<IGwCurve>(&rig.plug, kRect, points);
    rig.DrawAll();
    // Four points stand for the whole width, so the last of them lies ten pixels before its end.
    for (int x = 100; x <= 130; ++x)
        EXPECT_EQ(rig.Color(x, kMiddle), kWhite) << x;
    EXPECT_EQ(rig.Color(131, kMiddle), kBlack);
    EXPECT_EQ(rig.Color(110, kMiddle - 1), kBlack);
    EXPECT_EQ(rig.Color(110, kMiddle + 1), kBlack);
}

TEST(IGwCurve, OneIsTheTopAndMinusOneTheBottom) {
    DisplayRig rig;
    const std::array<double, 4> points{1.0, 1.0, -1.0, -1.0};
    rig.graphics.Attach<IGwCurve>(&rig.plug, kRect, points);
    rig.DrawAll();
    EXPECT_EQ(rig.Color(105, 50), kWhite);
    EXPECT_EQ(rig.Color(125, 70), kWhite);
}

TEST(IGwCurve, LimitsItsPointsUnlessToldNotTo) {
    DisplayRig rig;
    const std::array<double, 4> points{2.0, 2.0, -2.0, -2.0};
    auto& curve = rig.graphics.Attach<IGwCurve>(&rig.plug, kRect, points);
    rig.DrawAll();
    EXPECT_EQ(rig.Color(105, 50), kWhite);
    EXPECT_EQ(rig.Color(125, 70), kWhite);
    curve.ClampValues(false);
    rig.DrawAll();
    EXPECT_EQ(rig.Color(105, 40), kWhite);
    EXPECT_EQ(rig.Color(125, 80), kWhite);
}

TEST(IGwCurve, PointsThatAreNoNumbersLieInTheMiddle) {
    DisplayRig rig;
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const std::array<double, 4> points{kNan, kNan, kInfinity, kInfinity};
    auto& curve = rig.graphics.Attach<IGwCurve>(&rig.plug, kRect, points);
    rig.DrawAll();
    EXPECT_EQ(rig.Color(105, kMiddle), kWhite);
    EXPECT_EQ(rig.Color(125, 50), kWhite);
    curve.ClampValues(false);
    rig.DrawAll(); // somewhere far above the window
    EXPECT_EQ(rig.Color(105, kMiddle), kWhite);
}

TEST(IGwCurve, AGradientIsBrightestInTheMiddle) {
    DisplayRig rig;
    const std::array<double, 4> points{0.0, 0.0, 0.0, 0.0};
    auto& curve = rig.graphics.Attach<IGwCurve>(&rig.plug, kRect, points);
    curve.UseGradient(true);
    rig.DrawAll();
    EXPECT_EQ(rig.Color(105, kMiddle), Gray(100));
    EXPECT_EQ(rig.Color(115, kMiddle), Gray(209)); // 155 times the sine of an eighth turn is 109.6
    EXPECT_EQ(rig.Color(125, kMiddle), Gray(254)); // just below 155
}

TEST(IGwCurve, ItsFrameIsWhite) {
    DisplayRig rig;
    const std::array<double, 2> points{0.0, 0.0};
    auto& curve = rig.graphics.Attach<IGwCurve>(&rig.plug, kRect, points);
    curve.ShowFrame(true);
    rig.DrawAll();
    EXPECT_EQ(rig.Color(100, 50), kWhite);
    EXPECT_EQ(rig.Color(139, 50), kWhite);
    EXPECT_EQ(rig.Color(139, 70), kWhite);
    EXPECT_EQ(rig.Color(100, 65), kWhite);
    EXPECT_EQ(rig.Color(101, 51), kBlack);
}

TEST(IGwCurve, WithoutPointsItDrawsNothing) {
    DisplayRig rig;
    auto& curve = rig.graphics.Attach<IGwCurve>(&rig.plug, kRect, std::span<const double>());
    EXPECT_TRUE(curve.Draw(rig.graphics));
    rig.DrawAll();
    EXPECT_EQ(rig.Color(100, kMiddle), kBlack);
}

TEST(GlowLevels, GraysWrapLikeAByte) {
    constexpr GlowLevels kLoud{200.0, 100.0};
    EXPECT_EQ(kLoud.At(0.0), IColor(255, 200, 200, 200));
    EXPECT_EQ(kLoud.At(0.5), IColor(255, 43, 43, 43)); // 200 + 99 - 256
    constexpr GlowLevels kSoft{0.0, 10.0};
    EXPECT_EQ(kSoft.At(1.5), IColor(255, 246, 246, 246)); // -10 + 256
}

} // namespace Grimworks
