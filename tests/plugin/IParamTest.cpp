#include "plugin/IParam.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>

namespace Grimworks {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

IParam WithStep(double step, double value = 0.0, double max = 1.0) {
    IParam param;
    param.InitDouble(
        {.name = "Name", .defaultValue = value, .max = max, .step = step, .label = "Hz", .group = "Group"});
    return param;
}

TEST(IParam, StartsWithoutAType) {
    const IParam param;
    EXPECT_EQ(param.GetType(), IParam::Type::None);
    EXPECT_EQ(param.Min(), 0.0);
    EXPECT_EQ(param.Max(), 1.0);
    EXPECT_TRUE(param.CanAutomate());
    EXPECT_FALSE(param.NegatesDisplay());
}

TEST(IParam, InitTakesEverythingOfTheDefinition) {
    const IParam param = WithStep(0.001, 0.25, 1.259);
    EXPECT_EQ(param.GetType(), IParam::Type::Double);
    EXPECT_EQ(static_cast<int>(param.GetType()), 4);
    EXPECT_EQ(param.Value(), 0.25);
    EXPECT_EQ(param.Default(), 0.25);
    EXPECT_EQ(param.Max(), 1.259);
    EXPECT_EQ(param.Shape(), 1.0);
    EXPECT_EQ(param.Name(), "Name");
    EXPECT_EQ(param.Label(), "Hz");
    EXPECT_EQ(param.Group(), "Group");
}

TEST(IParam, TextsAreCutTo31Characters) {
    IParam param;
    const std::string longText(40, 'x');
    param.InitDouble({.name = longText, .label = longText, .group = longText});
    EXPECT_EQ(param.Name(), std::string(31, 'x'));
    EXPECT_EQ(param.Label(), std::string(31, 'x'));
    EXPECT_EQ(param.Group(), std::string(31, 'x'));
}

TEST(IParam, DecimalsComeFromTheStep) {
    EXPECT_EQ(WithStep(0.001).DisplayPrecision(), 3);
    EXPECT_EQ(WithStep(1.0).DisplayPrecision(), 0);
    EXPECT_EQ(WithStep(0.1).DisplayPrecision(), 1);
    EXPECT_EQ(WithStep(0.25).DisplayPrecision(), 2);
    EXPECT_EQ(WithStep(0.2).DisplayPrecision(), 1);
    EXPECT_EQ(WithStep(1.0 / 3.0).DisplayPrecision(), 6);
    EXPECT_EQ(WithStep(1.0 / 6.0).DisplayPrecision(), 6);
}

TEST(IParam, SwitchesShowNoDecimalsAndThirdsShowSix) {
    EXPECT_EQ(WithStep(1.0).DisplayText(0.0, false, true), "0");
    EXPECT_EQ(WithStep(1.0).DisplayText(1.0, false, true), "1");
    EXPECT_EQ(WithStep(1.0).DisplayText(0.9, false, true), "0");
    EXPECT_EQ(WithStep(1.0 / 3.0).DisplayText(1.0 / 3.0, false, true), "0.333333");
    EXPECT_EQ(WithStep(0.001).DisplayText(0.0005, false, true), "0.001");
    EXPECT_EQ(WithStep(0.001).DisplayText(0.5, false, true), "0.500");
}

TEST(IParam, ANormalisedValueIsShownPlain) {
    EXPECT_EQ(WithStep(0.001, 0.0, 1.259).DisplayText(1.0, true, true), "1.259");
    EXPECT_EQ(WithStep(0.001, 0.0, 1.259).DisplayText(2.0, true, true), "1.259");
    EXPECT_EQ(WithStep(0.001, 0.0, 1.259).DisplayText(0.25, true, true), "0.315");
}

TEST(IParam, AbsurdValuesStillMakeAShortText) {
    EXPECT_LE(WithStep(0.001).DisplayText(-1e300, false, true).size(), 31U);
    EXPECT_EQ(WithStep(0.001).DisplayText(kNaN, true, true), "nan");
    EXPECT_EQ(WithStep(1.0).DisplayText(kNaN, false, true), "0");
    EXPECT_EQ(WithStep(1.0).DisplayText(1e300, false, true), "2147483647");
}

TEST(IParam, ThePointIsAPointInEveryLocale) {
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    std::setlocale(LC_NUMERIC, "de_DE.UTF-8"); // stays "C" where it is not installed
    EXPECT_EQ(WithStep(0.001).DisplayText(0.5, false, true), "0.500");
    EXPECT_EQ(WithStep(0.001).ValueOfText("0.5"), 0.5);
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(IParam, FullScaleOfAWideParameterIsItsMaximumAndReadsOne) {
    IParam param = WithStep(0.001, 0.0, 1.259);
    param.SetNormalized(1.0);
    EXPECT_EQ(param.Value(), 1.259);
    EXPECT_EQ(param.GetNormalized(), 1.0);
    param.SetNormalized(0.5);
    EXPECT_EQ(param.Value(), 0.5 * 1.259);
    EXPECT_DOUBLE_EQ(param.GetNormalized(), 0.5);
}

TEST(IParam, NormalisedValuesAreLimitedFromAboveOnly) {
    IParam param = WithStep(0.001);
    param.SetNormalized(1.6);
    EXPECT_EQ(param.Value(), 1.0);
    param.SetNormalized(-0.25);
    EXPECT_EQ(param.Value(), -0.25);
    EXPECT_EQ(param.GetNormalized(), 0.0) << "out of range is limited on the way out";
}

TEST(IParam, NanKeepsTheOldValue) {
    IParam param = WithStep(0.001, 0.75);
    param.SetNormalized(kNaN);
    param.SetValue(kNaN);
    EXPECT_EQ(param.Value(), 0.75);
}

TEST(IParam, NegativeInfinityKeepsTheOldValueAndPositiveIsTheTop) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    IParam param = WithStep(0.001, 0.75);
    EXPECT_FALSE(param.SetNormalized(-kInfinity));
    EXPECT_EQ(param.Value(), 0.75);
    EXPECT_TRUE(param.SetNormalized(-1e300)) << "far below the range, but a number";
    EXPECT_EQ(param.Value(), -1e300);
    EXPECT_TRUE(param.SetNormalized(kInfinity));
    EXPECT_EQ(param.Value(), 1.0);
}

TEST(IParam, PlainValuesAreLimitedAtBothEnds) {
    IParam param = WithStep(0.001, 0.0, 1.259);
    param.SetValue(-3.0);
    EXPECT_EQ(param.Value(), 0.0);
    param.SetValue(3.0);
    EXPECT_EQ(param.Value(), 1.259);
    EXPECT_EQ(param.ToNormalized(5.0), 1.0);
}

TEST(IParam, ContinuousValuesAreNeverRoundedToTheStep) {
    IParam param = WithStep(0.25);
    param.SetNormalized(0.3);
    EXPECT_EQ(param.Value(), 0.3);
}

TEST(IParam, ADisplayTextStandsForItsWholeNumber) {
    IParam param = WithStep(0.001, 0.0, 3.0);
    param.SetDisplayText(0, "Off");
    param.SetDisplayText(2, "Fast");
    param.SetDisplayText(3, "");
    EXPECT_EQ(param.DisplayText(2.9, false, true), "Fast");
    EXPECT_EQ(param.DisplayText(2.0, false, false), "2.000");
    EXPECT_EQ(param.DisplayText(1.0, false, true), "1.000");
    EXPECT_EQ(param.DisplayText(3.0, false, true), "3.000") << "an empty text counts as none";
    EXPECT_EQ(param.LabelForHost(), "");
    param.SetValue(1.0);
    EXPECT_EQ(param.LabelForHost(), "Hz");
}

TEST(IParam, TextsBecomeValues) {
    IParam param = WithStep(0.001, 0.0, 3.0);
    param.SetDisplayText(2, "Fast");
    EXPECT_EQ(param.ValueOfText("Fast"), 2.0);
    EXPECT_EQ(param.ValueOfText("  +1.5 Hz"), 1.5);
    EXPECT_EQ(param.ValueOfText("1e9"), 3.0);
    EXPECT_EQ(param.ValueOfText("1e999"), 3.0);
    EXPECT_EQ(param.ValueOfText("-1"), 0.0);
    EXPECT_EQ(param.ValueOfText("rubbish"), 0.0);
    EXPECT_EQ(param.ValueOfText(""), 0.0);
    EXPECT_TRUE(std::isnan(param.ValueOfText("nan")));
}

TEST(IParam, ANegatedDisplayNegatesBothWays) {
    IParam param = WithStep(0.001);
    param.SetNegateDisplay(true);
    EXPECT_EQ(param.DisplayText(0.5, false, true), "-0.500");
    EXPECT_EQ(param.ValueOfText("-0.25"), 0.25);
    EXPECT_EQ(param.ValueOfText("0.25"), 0.0);
}

} // namespace
} // namespace Grimworks
