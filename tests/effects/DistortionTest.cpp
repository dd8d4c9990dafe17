#include "effects/Distortion.h"

#include "tests/effects/TestSignals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

const DistortionDataProvider& Provider() {
    static const DistortionDataProvider provider = [] {
        RandomGenerator random;
        return DistortionDataProvider(random);
    }();
    return provider;
}

double TypeValue(int number) {
    return number / 41.0;
}

/// Runs a constant until the amount's smoother rests, and gives the last frame.
double Rest(Distortion& distortion, double input) {
    Signal signal(3000, input);
    distortion.Process(signal.View(), 3000, nullptr);
    EXPECT_EQ(signal.left.back(), signal.right.back());
    return signal.left.back();
}

/// Correction of the loud curves.
double Loudness(int number) {
    for (const int loud : {3, 5, 6, 7}) {
        if (number == loud) return 0.777;
    }
    for (const int loudest : {1, 2, 4}) {
        if (number == loudest) return 0.5;
    }
    return 1.0;
}

} // namespace

TEST(Distortion, AmountZeroIsBitExactInEveryMode) {
    Distortion distortion(Provider());
    distortion.SetType(TypeValue(18));
    for (const double mode : {0.0, 0.5, 1.0}) {
        distortion.SetMode(mode);
        distortion.SetAmount(0.0);
        Signal signal = NoiseSignal(512, 1.0);
        const Signal before = signal;
        distortion.Process(signal.View(), 512, nullptr);
        EXPECT_EQ(signal, before);
    }
    EXPECT_EQ(distortion.SmoothedAmount(), 0.0);
}

TEST(Distortion, WhileOffOrAtZeroTheSmootherStandsStill) {
    Distortion distortion(Provider());
    distortion.SetAmount(0.5);
    Rest(distortion, 0.1);
    const double rest = distortion.SmoothedAmount();
    EXPECT_NEAR(rest, 0.5, 1e-12);
    distortion.SetAmount(0.9);
    distortion.SetBypass(true);
    EXPECT_EQ(Rest(distortion, 0.1), 0.1);
    EXPECT_EQ(distortion.SmoothedAmount(), rest);
    distortion.SetBypass(false);
    distortion.SetAmount(0.0);
    EXPECT_EQ(Rest(distortion, 0.1), 0.1);
    EXPECT_EQ(distortion.SmoothedAmount(), rest);
}

TEST(Distortion, PlainModeAtFullAmountDoublesAndMixesHalf) {
    Distortion distortion(Provider());
    distortion.SetInterpolation(1.0 / 3.0);
    distortion.SetMode(0.0);
    distortion.SetAmount(1.0);
    EXPECT_NEAR(Rest(distortion, 0.8), 0.5 * 1.0 + 0.5 * 0.8, 1e-9);
    EXPECT_NEAR(Rest(distortion, 0.3), 0.5 * 0.6 + 0.5 * 0.3, 1e-9);
}

TEST(Distortion, FoldModeAtTheClipReachesTwo) {
    Distortion distortion(Provider());
    distortion.SetMode(1.0);
    distortion.SetAmount(1.0);
    EXPECT_NEAR(Rest(distortion, 0.8), 1.0 + 0.4, 1e-9);
    EXPECT_NEAR(Rest(distortion, -0.8), -1.4, 1e-9);
}

TEST(Distortion, LoudCurvesAreBroughtDown) {
    for (int number = 0; number < 9; ++number) {
        Distortion distortion(Provider());
        distortion.SetType(TypeValue(number));
        distortion.SetMode(0.5);
        distortion.SetAmount(0.25);
        const double input = 0.05;
        const double shaped = LookUpCurve(Provider().GetCurveData(number), input, 3);
        const double y = std::fmin(1.0, (1.0 + 0.25 * 15.0) * Loudness(number) * shaped);
        EXPECT_NEAR(Rest(distortion, input), 0.125 * y + 0.875 * input, 1e-9) << number;
    }
}

TEST(Distortion, FollowsItsFormulaWithModulation) {
    for (const int number : {0, 3, 4, 18, 24, 29, 39, 40, 41}) {
        for (int mode = 0; mode < 3; ++mode) {
            Distortion distortion(Provider());
            distortion.SetType(TypeValue(number));
            distortion.SetMode(mode / 2.0);
            distortion.SetAmount(0.7);
            Signal signal = NoiseSignal(600, 1.3);
            const Signal before = signal;
            const Signal modulation = NoiseSignal(600, 1.0, 99);
            distortion.Process(signal.View(), 600, modulation.left.data());
            double s = 0.0;
            for (std::size_t i = 0; i < 600; ++i) {
                s = 0.9777 * s + 0.0223 * 0.7;
                const double e = s * modulation.left[i];
                const double g = mode == 0 ? 2.0 * e : (1.0 + 15.0 * e) * Loudness(number);
                const double work = LookUpCurve(Provider().GetCurveData(number), before.right[i], 3);
                double y = std::fmax(-1.0, std::fmin(1.0, g * work));
                if (mode == 2) y = 2.0 * std::sin(y * kPi / 2.0);
                EXPECT_NEAR(signal.right[i], e / 2.0 * y + (1.0 - e / 2.0) * before.right[i], 1e-12);
            }
        }
    }
}

TEST(Distortion, TypeRunsOverAllNumbersAndIsLimited) {
    Distortion distortion(Provider());
    for (int number = 0; number < kCurves; ++number) {
        distortion.SetType(TypeValue(number));
        EXPECT_EQ(distortion.CurveNumber(), number);
        EXPECT_EQ(distortion.Points(), Provider().GetCurveData(number));
    }
    distortion.SetType(7.0);
    EXPECT_EQ(distortion.CurveNumber(), 41);
    distortion.SetType(-7.0);
    EXPECT_EQ(distortion.CurveNumber(), 0);
    distortion.SetType(std::nan(""));
    EXPECT_EQ(distortion.CurveNumber(), 0);
}

TEST(Distortion, EditsStayWhenTheTypeMovesAwayAndBack) {
    Distortion distortion(Provider());
    distortion.SetType(TypeValue(5));
    distortion.RunCurveOperation(CurveOperation::Reset, {});
    distortion.SetType(TypeValue(6));
    EXPECT_EQ(distortion.Points(), Provider().GetCurveData(6));
    distortion.SetType(TypeValue(5));
    EXPECT_EQ(distortion.Points(), DistortionCurve().points);
    distortion.RunCurveOperation(CurveOperation::Restore, {});
    EXPECT_EQ(distortion.Points(), Provider().GetCurveData(5));
}

TEST(Distortion, TheLastNumberSharesItsCurveWithMovaFuzz) {
    Distortion distortion(Provider());
    distortion.SetType(1.0);
    distortion.RunCurveOperation(CurveOperation::Steps, {});
    const CurvePoints edited = distortion.Points();
    distortion.SetType(TypeValue(12));
    EXPECT_EQ(distortion.Points(), edited);
    distortion.SetType(TypeValue(13));
    EXPECT_EQ(distortion.Points(), Provider().GetCurveData(13));
}

TEST(Distortion, EveryOperationCodeDoesItsEdit) {
    CurveNoise noise{};
    for (std::size_t k = 0; k < noise.size(); ++k)
        noise[k] = static_cast<int>(k * 61 % 32768);
    for (int code = -1; code <= 9; ++code) {
        Distortion distortion(Provider());
        distortion.SetType(TypeValue(28));
        CurvePoints points = distortion.Points();
        points[77] = 0.123;
        distortion.SetPoints(points);
        DistortionCurve expected;
        expected.points = points;
        if (code == 0) expected.points = Provider().GetCurveData(28);
        if (code == 1) expected.Normalise();
        if (code == 2) expected.Smooth();
        if (code == 3) expected.SmoothZeroCrossing();
        if (code == 4) expected.AddNoise(noise);
        if (code == 5) expected.MakeSteps();
        if (code == 7) expected.ResetToRamp();
        distortion.RunCurveOperation(code, noise);
        EXPECT_EQ(distortion.Points(), expected.points) << code;
    }
}

TEST(Distortion, NoiseIsDrawnOnceForBothUnits) {
    Distortion first(Provider());
    Distortion second(Provider());
    RandomGenerator random(5);
    RandomGenerator same(5);
    RunCurveOperation(CurveOperation::Smooth, random, first, second);
    RunCurveOperation(CurveOperation::AddNoise, random, first, second);
    EXPECT_EQ(first.Points(), second.Points());
    CurveNoise noise{};
    for (int& draw : noise)
        draw = same.Next();
    DistortionCurve expected;
    expected.Load(Provider().GetCurveData(0));
    expected.Smooth();
    expected.AddNoise(noise);
    EXPECT_EQ(first.Points(), expected.points);
    EXPECT_EQ(random.Next(), same.Next());
}

TEST(Distortion, InterpolationReachesEveryCurve) {
    Distortion distortion(Provider());
    distortion.SetMode(0.0);
    distortion.SetAmount(1.0);
    for (const int number : {18, 32}) {
        distortion.SetType(TypeValue(number));
        const double input = 0.00123;
        for (int mode = 0; mode < 4; ++mode) {
            distortion.SetInterpolation(mode / 3.0);
            const double y = 2.0 * LookUpCurve(Provider().GetCurveData(number), input, mode);
            const double clipped = std::fmax(-1.0, std::fmin(1.0, y));
            EXPECT_NEAR(Rest(distortion, input), 0.5 * clipped + 0.5 * input, 1e-9);
        }
    }
}

TEST(Distortion, CopyTakesPointsOfTheOther) {
    Distortion first(Provider());
    Distortion second(Provider());
    first.SetType(TypeValue(9));
    second.SetType(TypeValue(9));
    first.RunCurveOperation(CurveOperation::Steps, {});
    second.CopyCurveFrom(first);
    EXPECT_EQ(second.Points(), first.Points());
}

TEST(Distortion, TextGoesRoundAndBadTextChangesNothing) {
    Distortion distortion(Provider());
    distortion.SetType(TypeValue(20));
    const std::string text = distortion.ExportCurveText();
    distortion.SetType(TypeValue(0));
    const CurvePoints before = distortion.Points();
    EXPECT_FALSE(distortion.ImportCurveText("1,2,3"));
    EXPECT_EQ(distortion.Points(), before);
    EXPECT_TRUE(distortion.ImportCurveText(text));
    EXPECT_EQ(distortion.ExportCurveText(), text);
}

TEST(Distortion, FilesGoRoundByTheirEnding) {
    const std::filesystem::path folder = std::filesystem::path(::testing::TempDir()) / "thudforge-curves";
    std::filesystem::create_directories(folder);
    const std::string path = (folder / "curve.csv").string();
    Distortion distortion(Provider());
    distortion.SetType(TypeValue(20));
    { std::ofstream(path) << std::string(100000, '9'); }
    EXPECT_TRUE(distortion.ExportCurveFile(path));
    EXPECT_EQ(std::filesystem::file_size(path), distortion.ExportCurveText().size());
    Distortion other(Provider());
    EXPECT_TRUE(other.ImportCurveFile(path));
    EXPECT_EQ(other.ExportCurveText(), distortion.ExportCurveText());
    const CurvePoints before = other.Points();
    EXPECT_FALSE(other.ImportCurveFile((folder / "missing.csv").string()));
    EXPECT_FALSE(other.ImportCurveFile(folder.string() + "/.csv/"));
    EXPECT_FALSE(other.ExportCurveFile((folder / "curve.txt").string()));
    EXPECT_FALSE(std::filesystem::exists(folder / "curve.txt"));
    EXPECT_EQ(other.Points(), before);
    std::filesystem::remove_all(folder);
}

TEST(Distortion, PreviewShowsCurveAndSineAndMovesOnlyTheSmoother) {
    Distortion distortion(Provider());
    distortion.SetType(TypeValue(19));
    distortion.SetMode(1.0);
    distortion.SetAmount(0.6);
    Rest(distortion, 0.0);
    std::array<double, kCurvePreviewPoints> curve{};
    std::array<double, kSignalPreviewPoints> signal{};
    const CurvePoints points = distortion.Points();
    distortion.RenderPreview(curve, signal);
    for (int k = 0; k < kCurvePreviewPoints; ++k)
        EXPECT_EQ(curve[static_cast<std::size_t>(k)], LookUpCurve(points, k * (2.0 / 127) - 1.0, 3));
    for (int k = 0; k < kSignalPreviewPoints; ++k) {
        const double dry = std::sin(2.0 * kPi * k / 120);
        const double y = std::fmax(-1.0, std::fmin(1.0, 10.0 * LookUpCurve(points, dry, 3)));
        EXPECT_NEAR(signal[static_cast<std::size_t>(k)], 0.3 * 2.0 * std::sin(y * kPi / 2) + 0.7 * dry, 1e-9);
    }
    EXPECT_EQ(distortion.Points(), points);
    distortion.SetBypass(true);
    distortion.RenderPreview(curve, signal);
    EXPECT_EQ(signal[30], std::sin(2.0 * kPi * 30 / 120));
}

TEST(Distortion, SilenceStaysSilentUnderCurvesThatCrossZero) {
    for (const int number : {0, 1, 5, 6, 15, 18, 19, 39}) {
        Distortion distortion(Provider());
        distortion.SetType(TypeValue(number));
        distortion.SetMode(1.0);
        distortion.SetAmount(1.0);
        EXPECT_LT(std::fabs(Rest(distortion, 0.0)), 1e-10) << number;
    }
}

TEST(Distortion, NoInputOrKnobDoesHarm) {
    Distortion distortion(Provider());
    for (const double value : {0.0, 1.0, -3.0, 1e308, std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        distortion.SetAmount(value);
        distortion.SetMode(value);
        distortion.SetInterpolation(value);
        distortion.SetType(value);
        Signal signal = HostileSignal();
        distortion.Process(signal.View(), signal.Frames(), nullptr);
    }
    distortion.SetAmount(0.5);
    distortion.SetInterpolation(1.0);
    Signal flush(40000);
    distortion.Process(flush.View(), 40000, nullptr);
    EXPECT_TRUE(std::isfinite(Rest(distortion, 0.5)));
    EXPECT_NEAR(distortion.SmoothedAmount(), 0.5, 1e-9);
}
