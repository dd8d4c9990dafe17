#include "core/NumberText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>

using namespace Grimworks;

TEST(NumberText, ReadsWhatTheCLibraryReads) {
    // The process runs in the "C" locale here, where atof is the yardstick.
    for (const char* text : {"0",
                             "-0",
                             "1",
                             "-1.5",
                             "+2.25",
                             "  3.5",
                             "\t\n\v\f\r-4",
                             ".5",
                             "-.5e1",
                             "5.",
                             "1e3",
                             "1E-3",
                             "1e+5",
                             "1e",
                             "1e+",
                             "12abc",
                             "1.5.2",
                             "0.0003913894",
                             "1,5",
                             "0x10",
                             "0x1.8p3",
                             "-0X.8",
                             "0x",
                             "0xg",
                             "inf",
                             "-Infinity",
                             "infinit",
                             "1e308",
                             "1e309",
                             "-1e309",
                             "1e-400",
                             "123456789012345678901234567890",
                             "0.00000000000000000000000000000000000000000000001e-300",
                             "1e99999999999999999999",
                             "-1e-99999999999999999999",
                             "0e99999999999999999999",
                             "1000000e-400",
                             "0x1p2000",
                             "0x1p-2000"})
        EXPECT_EQ(ParseNumber(text), std::strtod(text, nullptr)) << text;
}

TEST(NumberText, TextWithoutANumberIsZero) {
    for (const char* text : {"", " ", "-", "+", "--1", "+-1", "-+1", "abc", ".", "e5", ",", "0x-1", "- 1"})
        EXPECT_EQ(ParseNumber(text), 0.0) << text;
    for (const char* text : {"-", "-abc", "- 1", "--1"})
        EXPECT_FALSE(std::signbit(ParseNumber(text))) << text;
    EXPECT_TRUE(std::signbit(ParseNumber("-0")));
    EXPECT_TRUE(std::signbit(ParseNumber("-0x0")));
}

TEST(NumberText, ReadsNaN) {
    EXPECT_TRUE(std::isnan(ParseNumber("nan")));
    EXPECT_TRUE(std::isnan(ParseNumber("-NaN")));
}

TEST(NumberText, WritesFixedNotation) {
    const auto fixed = [](double value, int decimals) {
        std::string text = "x";
        AppendFixed(text, value, decimals);
        return text;
    };
    EXPECT_EQ(fixed(0.0, 10), "x0.0000000000");
    EXPECT_EQ(fixed(-1.0, 10), "x-1.0000000000");
    EXPECT_EQ(fixed(0.123456789049, 10), "x0.1234567890");
    EXPECT_EQ(fixed(2.5, 0), "x2");
    EXPECT_EQ(fixed(1e300, 10).size(), 1U + 301U + 11U);
    EXPECT_EQ(fixed(std::numeric_limits<double>::max(), 10).size(), 1U + 309U + 11U);
}

TEST(NumberText, WritesTheShorterOfBothNotations) {
    // The process runs in the "C" locale here, where printf is the yardstick.
    for (const double value :
         {0.0, -0.0, 1.0, 0.5, 0.555556, 1.0 / 3.0, 1.259, 123456.0, 1234567.0, 1e-4, 1e-5, 0.0001234567,
          1e300, -2.5e-300, 100000.0, 999999.5, 0.30000000000000004}) {
        char expected[64];
        std::snprintf(expected, sizeof expected, "x%g", value);
        std::string text = "x";
        AppendGeneral(text, value);
        EXPECT_EQ(text, expected);
    }
}
