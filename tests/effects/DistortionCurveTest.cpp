#include "effects/DistortionCurve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace Grimworks;

namespace {

CurvePoints WildPoints() {
    CurvePoints points{};
    for (std::size_t k = 0; k < points.size(); ++k)
        points[k] = std::sin(0.37 * static_cast<double>(k * k)) * 0.9;
    return points;
}

double PointAt(const CurvePoints& points, long k) {
    return points[static_cast<std::size_t>(std::min(std::max(k, 0L), 511L))];
}

/// The four-point formula in its powers of the fraction, gathered differently from the code under test.
double CubicAt(const CurvePoints& c, double v) {
    const double t = (v + 1.0) * 255.5;
    const long i = static_cast<long>(std::floor(t));
    const double f = t - static_cast<double>(i);
    const double p0 = PointAt(c, i - 1);
    const double p1 = PointAt(c, i);
    const double p2 = PointAt(c, i + 1);
    const double p3 = PointAt(c, i + 2);
    const double cube = p3 - p2 - p0 + p1;
    const double square = 2.0 * p0 - 2.0 * p1 + p2 - p3;
    return ((cube * f + square) * f + (p2 - p0)) * f + p1;
}

} // namespace

TEST(DistortionCurve, StartsAsTheStraightLine) {
    const DistortionCurve curve;
    EXPECT_EQ(curve.points.front(), -1.0);
    EXPECT_EQ(curve.points.back(), 1.0);
    for (int k = 0; k < kCurvePoints; ++k)
        EXPECT_EQ(curve.points[static_cast<std::size_t>(k)], 2.0 * k / 511 - 1.0);
    EXPECT_EQ(curve.interpolation, CurveInterpolation::Cubic);
}

TEST(DistortionCurve, WithoutInterpolationFullScaleReadsTheLastEntry) {
    DistortionCurve curve;
    curve.points = WildPoints();
    curve.interpolation = CurveInterpolation::None;
    EXPECT_EQ(curve.LookUp(1.0), curve.points[511]);
    EXPECT_EQ(curve.LookUp(-1.0), curve.points[0]);
    EXPECT_EQ(curve.LookUp(0.0), curve.points[255]);
}

TEST(DistortionCurve, EveryInterpolationMeetsItsFormulaBetweenPoints) {
    DistortionCurve curve;
    curve.points = WildPoints();
    for (int step = -1000; step <= 1000; ++step) {
        const double v = step / 1000.0 * 0.99871;
        const double t = (v + 1.0) * 255.5;
        const long i = static_cast<long>(std::floor(t));
        const double f = t - static_cast<double>(i);
        const double from = PointAt(curve.points, i);
        const double to = PointAt(curve.points, i + 1);
        curve.interpolation = CurveInterpolation::None;
        EXPECT_EQ(curve.LookUp(v), from);
        curve.interpolation = CurveInterpolation::Linear;
        EXPECT_NEAR(curve.LookUp(v), from + f * (to - from), 1e-12);
        curve.interpolation = CurveInterpolation::Cosine;
        const double sine = std::sin(f * kPi / 2.0);
        EXPECT_NEAR(curve.LookUp(v), from + sine * sine * (to - from), 1e-12);
        curve.interpolation = CurveInterpolation::Cubic;
        EXPECT_NEAR(curve.LookUp(v), CubicAt(curve.points, v), 1e-12);
    }
}

TEST(DistortionCurve, AnyOtherInterpolationNumberIsCubic) {
    DistortionCurve curve;
    curve.points = WildPoints();
    const double cubic = curve.LookUp(0.1234);
    for (const int number : {-1, 4, 7, 1000}) {
        curve.interpolation = number;
        EXPECT_EQ(curve.LookUp(0.1234), cubic);
    }
}

TEST(DistortionCurve, CubicHitsThePointsAtBothEndsOfAStep) {
    EXPECT_EQ(CurveFourPoint(0.3, 0.1, -0.7, 0.9, 0.0), 0.1);
    EXPECT_EQ(CurveFourPoint(0.3, 0.1, -0.7, 0.9, 1.0), -0.7);
}

TEST(DistortionCurve, InputBeyondFullScaleReadsTheEnds) {
    DistortionCurve curve;
    curve.points = WildPoints();
    for (const int mode : {0, 1, 2, 3}) {
        curve.interpolation = mode;
        for (const double v : {1.0, 1.5, 1e300, std::numeric_limits<double>::infinity()}) {
            EXPECT_EQ(curve.LookUp(v), curve.points.back());
            EXPECT_EQ(curve.LookUp(-v), curve.points.front());
        }
    }
}

TEST(DistortionCurve, NaNPasses) {
    DistortionCurve curve;
    for (const int mode : {0, 1, 2, 3}) {
        curve.interpolation = mode;
        EXPECT_TRUE(std::isnan(curve.LookUp(std::nan(""))));
    }
}

TEST(DistortionCurve, NormaliseBringsThePeakToOneAndLeavesSilence) {
    DistortionCurve curve;
    curve.points.fill(0.25);
    curve.points[7] = -0.5;
    curve.Normalise();
    EXPECT_EQ(curve.points[7], -1.0);
    EXPECT_EQ(curve.points[8], 0.5);
    curve.points.fill(0.0);
    curve.Normalise();
    EXPECT_EQ(curve.points, CurvePoints{});
}

TEST(DistortionCurve, SmoothAveragesUpThenDown) {
    DistortionCurve curve;
    curve.points.fill(0.0);
    curve.points[100] = 1.0;
    curve.Smooth();
    // Up: 2^-1 at the spike and half of it on each further entry; down: the same again from the right, which
    // sums to a two-sided decay of a third.
    EXPECT_NEAR(curve.points[100], 1.0 / 3.0, 1e-12);
    EXPECT_NEAR(curve.points[101], 1.0 / 6.0, 1e-12);
    EXPECT_NEAR(curve.points[99], 1.0 / 6.0, 1e-12);
    EXPECT_NEAR(curve.points[90], std::pow(0.5, 10) / 3.0, 1e-12);
}

TEST(DistortionCurve, SmoothLeavesAConstantAndLimitsWhatIsBeyondTheRails) {
    DistortionCurve curve;
    curve.points.fill(0.75);
    curve.Smooth();
    for (const double point : curve.points)
        EXPECT_EQ(point, 0.75);
    curve.points.fill(-3.0);
    curve.Smooth();
    for (const double point : curve.points)
        EXPECT_EQ(point, -1.0);
}

TEST(DistortionCurve, SmoothZeroCrossingTouchesTheMiddleSixteenOnly) {
    DistortionCurve curve;
    curve.points = WildPoints();
    curve.SmoothZeroCrossing();
    EXPECT_EQ(curve.points[255], 0.0);
    EXPECT_EQ(curve.points[256], 0.0);
    for (std::size_t k = 0; k < 512; ++k) {
        double factor = 1.0;
        if (k >= 248 && k < 256) factor = 0.125 * static_cast<double>(255 - k);
        if (k >= 256 && k < 264) factor = 0.125 * static_cast<double>(k - 256);
        EXPECT_EQ(curve.points[k], WildPoints()[k] * factor) << k;
    }
}

TEST(DistortionCurve, NoiseFollowsTheDrawsAndTheSignOfTheEntry) {
    DistortionCurve curve;
    curve.points.fill(0.5);
    curve.points[1] = -0.5;
    curve.points[2] = 0.99;
    curve.points[3] = 0.0;
    std::array<int, kCurvePoints> draws{};
    draws[1] = 0;
    draws[2] = 32766;
    draws[3] = 32766;
    draws[4] = 32767; // wraps to 0
    curve.AddNoise(draws);
    EXPECT_NEAR(curve.points[0], 0.5 - 0.0777, 1e-15);
    EXPECT_NEAR(curve.points[1], -0.5 + 0.0777, 1e-15);
    EXPECT_EQ(curve.points[2], 1.0);
    EXPECT_NEAR(curve.points[3], 16382.5 / 16383.5 * 0.0777, 1e-15);
    EXPECT_NEAR(curve.points[4], 0.5 - 0.0777, 1e-15);
}

TEST(DistortionCurve, StepsHoldSixteenValues) {
    DistortionCurve curve;
    curve.points = WildPoints();
    curve.MakeSteps();
    for (std::size_t k = 0; k < 512; ++k)
        EXPECT_EQ(curve.points[k], WildPoints()[k / 32 * 32]);
}

TEST(DistortionCurve, EditsKeepNaNPointsWithoutHarm) {
    DistortionCurve curve;
    curve.points[300] = std::nan("");
    curve.SmoothZeroCrossing();
    curve.MakeSteps();
    curve.Normalise();
    curve.AddNoise(std::array<int, kCurvePoints>{});
    EXPECT_TRUE(std::isfinite(curve.LookUp(-0.5)));
    curve.Smooth();
    curve.ResetToRamp();
    EXPECT_EQ(curve.points, DistortionCurve().points);
}
