#include "effects/CurveText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <locale>
#include <sstream>
#include <string>

using namespace Grimworks;

namespace {

std::string Repeat(const std::string& field, int count) {
    std::string text;
    for (int k = 0; k < count; ++k)
        text += (k == 0 ? "" : ",") + field;
    return text;
}

/// A locale's number format with a comma for the point and groups of three.
class CommaFormat final : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

bool Read(const std::string& text, CurvePoints& points) {
    std::istringstream stream(text);
    return ReadCurveText(stream, points);
}

} // namespace

TEST(CurveText, WritesTenDecimalsAndSingleCommas) {
    CurvePoints points{};
    points[0] = -1.0;
    points[1] = 0.5;
    points[2] = 1.0 / 3.0;
    points[511] = 12.25;
    const std::string text = WriteCurveText(points);
    EXPECT_EQ(text.substr(0, 42), "-1.0000000000,0.5000000000,0.3333333333,0.");
    EXPECT_EQ(text.substr(text.size() - 14), ",12.2500000000");
    EXPECT_EQ(std::count(text.begin(), text.end(), ','), 511);
    EXPECT_EQ(text.find_first_of(" \r\n"), std::string::npos);
}

TEST(CurveText, ComesBackWithinTheWrittenDecimals) {
    CurvePoints points{};
    for (std::size_t k = 0; k < 512; ++k)
        points[k] = std::sin(static_cast<double>(k));
    CurvePoints read{};
    ASSERT_TRUE(Read(WriteCurveText(points), read));
    for (std::size_t k = 0; k < 512; ++k)
        EXPECT_NEAR(read[k], points[k], 0.5001e-10);
}

TEST(CurveText, FiveHundredAndElevenNumbersFailAndChangeNothing) {
    CurvePoints points{};
    points.fill(0.25);
    const CurvePoints before = points;
    EXPECT_FALSE(Read(Repeat("0.5", 511), points));
    EXPECT_FALSE(Read("", points));
    EXPECT_EQ(points, before);
}

TEST(CurveText, FiveHundredAndThirteenNumbersSucceedWithoutTheLast) {
    CurvePoints points{};
    EXPECT_TRUE(Read(Repeat("0.5", 512) + ",9", points));
    EXPECT_EQ(points[511], 0.5);
}

TEST(CurveText, ACommaAtTheVeryEndOpensNoField) {
    CurvePoints points{};
    EXPECT_FALSE(Read(Repeat("0.5", 511) + ",", points));
    EXPECT_TRUE(Read(Repeat("0.5", 512) + ",", points));
    EXPECT_TRUE(Read(Repeat("0.5", 511) + ", ", points));
    EXPECT_EQ(points[511], 0.0);
}

TEST(CurveText, UnreadableAndEmptyFieldsCountAsZero) {
    CurvePoints points{};
    points.fill(9.0);
    ASSERT_TRUE(Read("abc,,-,0.5x, 0.25," + Repeat("1", 507), points));
    EXPECT_EQ(points[0], 0.0);
    EXPECT_EQ(points[1], 0.0);
    EXPECT_EQ(points[2], 0.0);
    EXPECT_EQ(points[3], 0.5);
    EXPECT_EQ(points[4], 0.25);
    EXPECT_EQ(points[5], 1.0);
}

TEST(CurveText, LineEndsArePartOfTheirField) {
    CurvePoints points{};
    // Three lines of numbers without commas between the lines: the joints melt into one field each.
    EXPECT_FALSE(Read(Repeat("0.5", 256) + "\n" + Repeat("0.5", 256), points));
    EXPECT_TRUE(Read(Repeat("0.5", 256) + "\r\n," + Repeat("0.75", 256) + "\n", points));
    EXPECT_EQ(points[255], 0.5);
    EXPECT_EQ(points[256], 0.75);
}

TEST(CurveText, KeepsItsFormatInOtherLocales) {
    const std::string saved = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8"}) {
        if (std::setlocale(LC_ALL, name) != nullptr) break;
    }
    // Streams have a locale of their own, which is there on every machine.
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new CommaFormat));
    CurvePoints points{};
    points[0] = 0.5;
    points[1] = 1234.25;
    EXPECT_EQ(WriteCurveText(points).substr(0, 29), "0.5000000000,1234.2500000000,");
    CurvePoints read{};
    EXPECT_TRUE(Read(WriteCurveText(points), read));
    EXPECT_EQ(read[0], 0.5);
    EXPECT_EQ(read[1], 1234.25);
    std::locale::global(before);
    std::setlocale(LC_ALL, saved.c_str());
}

TEST(CurveText, FileNamesHoldTheEndingAnywhereInOneOfTwoSpellings) {
    EXPECT_TRUE(IsCurveFileName("a.csv"));
    EXPECT_TRUE(IsCurveFileName("a.CSV"));
    EXPECT_TRUE(IsCurveFileName("a.csv.bak"));
    EXPECT_FALSE(IsCurveFileName("a.Csv"));
    EXPECT_FALSE(IsCurveFileName("acsv"));
    EXPECT_FALSE(IsCurveFileName(""));
}
