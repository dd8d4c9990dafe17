#include "effects/DistortionDataProvider.h"
#include "effects/StoredCurves.h"

#include "tests/effects/CurveReference.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <set>
#include <string>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

const DistortionDataProvider& Provider() {
    static const DistortionDataProvider provider = [] {
        RandomGenerator random(77);
        return DistortionDataProvider(random);
    }();
    return provider;
}

double Peak(const CurvePoints& points) {
    double peak = 0.0;
    for (const double point : points)
        peak = std::fmax(peak, std::fabs(point));
    return peak;
}

std::vector<double> ReadRaw(const std::string& name) {
    std::ifstream file(std::string(THUDFORGE_SOURCE_DIR) + "/data/curves/" + name, std::ios::binary);
    std::vector<double> values;
    unsigned char bytes[8];
    while (file.read(reinterpret_cast<char*>(bytes), 8)) {
        std::uint64_t word = 0;
        for (int k = 7; k >= 0; --k)
            word = word << 8U | bytes[k];
        values.push_back(std::bit_cast<double>(word));
    }
    return values;
}

constexpr double kTellingEnemy[] = {-0.9777, -0.6406, -0.354,  -0.786, -0.8486, -0.1284, 0.1224, -0.9828, 0.0,
                                    -0.7949, -0.0146, -0.2418, 0.4126, 0.6402,  0.5501,  0.6382, 0.7108};
constexpr double kTellingThrash[] = {-0.7984, -0.644,  -0.4238, -0.5214, 0.0024, 0.0523,
                                     -0.245,  -0.6779, -0.0188, 0.245,   0.6738, 0.9817,
                                     0.9817,  0.505,   0.9813,  0.3525,  0.4176};

void ExpectTelling(const CurvePoints& table, const double (&telling)[17]) {
    for (std::size_t k = 0; k < 17; ++k) {
        const std::size_t entry = k == 16 ? 511 : 32 * k;
        EXPECT_NEAR(table[entry], telling[k], 0.00005) << entry;
    }
    for (const double point : table) {
        EXPECT_LE(point, 1.0);
        EXPECT_GE(point, -1.0);
    }
}

} // namespace

class FormulaCurve : public ::testing::TestWithParam<int> {};

TEST_P(FormulaCurve, MeetsItsFormulaInEveryEntry) {
    const int table = GetParam();
    const std::vector<long double> expected = ReferenceCurve(table);
    ASSERT_EQ(expected.size(), 512U);
    const CurvePoints& points = Provider().GetTable(table);
    for (std::size_t k = 0; k < 512; ++k) {
        ASSERT_NEAR(points[k], static_cast<double>(expected[k]), 1e-12)
            << "table " << table << " entry " << k;
    }
}

INSTANTIATE_TEST_SUITE_P(AllTables, FormulaCurve, ::testing::ValuesIn(ReferenceCurveTables()));

TEST(DistortionDataProvider, EverySelectableFormulaIsCheckedAgainstItsReference) {
    const std::vector<int> checked = ReferenceCurveTables();
    for (const CurveInfo& info : kCurveInfos) {
        if (info.table == 60 || info.table == 77) continue;
        EXPECT_NE(std::find(checked.begin(), checked.end(), info.table), checked.end()) << info.name;
    }
}

TEST(DistortionDataProvider, NormalisedCurvesPeakAtExactlyOne) {
    for (const int table : {19, 20, 21, 29, 30, 31, 41, 42, 43, 44, 47, 81})
        EXPECT_EQ(Peak(Provider().GetTable(table)), 1.0) << table;
}

TEST(DistortionDataProvider, LinearRunsFromMinusOneToOne) {
    const CurvePoints& linear = Provider().GetTable(0);
    EXPECT_EQ(linear[0], -1.0);
    EXPECT_EQ(linear[511], 1.0);
    for (int k = 0; k < 512; ++k)
        EXPECT_EQ(linear[static_cast<std::size_t>(k)], k * (2.0 / 511) - 1.0);
}

TEST(DistortionDataProvider, MirroredCurvesAreExactNegatives) {
    // Plain odd curves: what is only mirrored, clamped or normalised stays odd to the last bit.
    for (const int table : {1, 2, 3, 4, 5, 6, 7, 8, 9, 17, 18, 29, 34, 38, 41, 42, 43, 44, 79, 81}) {
        const CurvePoints& points = Provider().GetTable(table);
        for (std::size_t i = 0; i < 256; ++i)
            EXPECT_EQ(points[256 + i], -points[255 - i]) << table << " " << i;
    }
}

TEST(DistortionDataProvider, FullClipIsSilentOnItsFourCentreEntriesOnly) {
    const CurvePoints& clip = Provider().GetCurveData(18);
    for (std::size_t k = 0; k < 512; ++k) {
        const double expected = k < 254 ? -1.0 : k > 257 ? 1.0 : 0.0;
        EXPECT_EQ(clip[k], expected) << k;
    }
}

TEST(DistortionDataProvider, FuzzDriveStartsAtZero) {
    const CurvePoints& fuzz = Provider().GetCurveData(GetCurveNumber("Fuzz-Drive"));
    EXPECT_EQ(fuzz[256], 0.0);
    EXPECT_EQ(fuzz[255], 0.0);
    EXPECT_NEAR(fuzz[257], (std::log(3.0 / 511.0) + std::log(256.0)) / std::log(256.0), 1e-12);
    EXPECT_NEAR(fuzz[511], 1.0, 1e-15);
}

TEST(DistortionDataProvider, InvertAndDriveJumpsAtTheCentreAndFallsToTheEnds) {
    const CurvePoints& curve = Provider().GetCurveData(32);
    EXPECT_EQ(curve[256], 1.0);
    EXPECT_EQ(curve[255], -1.0);
    EXPECT_EQ(curve[511], 0.0);
    EXPECT_EQ(curve[0], 0.0);
}

TEST(DistortionDataProvider, SoftKneeLimiterIsFlatAboveItsKnee) {
    const CurvePoints& curve = Provider().GetCurveData(4);
    const std::size_t firstHeld = 256 + 153; // x = 307/511 is the first at or above 0.6
    for (std::size_t k = firstHeld; k < 512; ++k)
        EXPECT_EQ(curve[k], curve[firstHeld - 1]);
    EXPECT_LT(curve[firstHeld - 2], curve[firstHeld - 1]);
}

TEST(DistortionDataProvider, NoiseCurvesAreTheSameInEveryRun) {
    RandomGenerator random(4711);
    const DistortionDataProvider again(random);
    for (const int table : {23, 24, 25, 27, 28}) {
        EXPECT_EQ(again.GetTable(table), Provider().GetTable(table));
    }
}

TEST(DistortionDataProvider, LeavesTheGeneratorBehindItsLastDraw) {
    RandomGenerator random(4711);
    const DistortionDataProvider provider(random);
    // 64 + 128 + 2 * 256 draws for the first noise loop, 256 + 128 for the second.
    RandomGenerator expected(1600);
    for (int draw = 0; draw < 704 + 384; ++draw)
        (void)expected.Next();
    EXPECT_EQ(random.Next(), expected.Next());
    EXPECT_EQ(random.Next(), expected.Next());
}

TEST(DistortionDataProvider, StoredCurvesRunThroughTheirTellingValues) {
    ExpectTelling(Provider().GetTable(60), kTellingEnemy);
    ExpectTelling(Provider().GetTable(77), kTellingThrash);
    EXPECT_NEAR(Provider().GetTable(77)[255], -0.036, 0.0005);
}

TEST(DistortionDataProvider, SilenceStaysSilentUnderPublicEnemy) {
    const CurvePoints& curve = Provider().GetTable(60);
    EXPECT_LT(std::fabs(curve[255]), 1e-11);
    EXPECT_LT(std::fabs(curve[256]), 1e-11);
    for (const int mode : {0, 1, 2, 3})
        EXPECT_LT(std::fabs(LookUpCurve(curve, 0.0, mode)), 1e-11);
}

TEST(DistortionDataProvider, StoredCurvesAreTheirFilesReadOnceThroughTheCurve) {
    const std::vector<double> enemy = ReadRaw("public-enemy.raw");
    const std::vector<double> thrash = ReadRaw("thrashcore.raw");
    ASSERT_EQ(enemy.size(), 512U);
    ASSERT_EQ(thrash.size(), 512U);
    for (std::size_t k = 0; k < 512; ++k) {
        EXPECT_EQ(StoredPublicEnemy()[k], enemy[k]);
        EXPECT_EQ(StoredThrashcore()[k], thrash[k]);
        // The inputs are the entries' own but for rounding, so a continuous reading gives the entries back.
        EXPECT_NEAR(Provider().GetTable(60)[k], enemy[k], 1e-12);
        EXPECT_NEAR(Provider().GetTable(77)[k], thrash[k], 1e-12);
    }
}

TEST(DistortionDataProvider, StoredCurvesAreNotOdd) {
    for (const int table : {60, 77}) {
        const CurvePoints& points = Provider().GetTable(table);
        double difference = 0.0;
        for (std::size_t i = 0; i < 256; ++i)
            difference = std::fmax(difference, std::fabs(points[256 + i] + points[255 - i]));
        EXPECT_GT(difference, 0.5);
    }
}

TEST(DistortionDataProvider, LastRowPlaysMovaFuzz) {
    EXPECT_EQ(&Provider().GetCurveData(41), &Provider().GetCurveData(12));
}

TEST(DistortionDataProvider, NumbersOutsideGiveTheStraightLine) {
    for (const int number : {-1, 42, 1000})
        EXPECT_EQ(&Provider().GetCurveData(number), &Provider().GetTable(0));
    for (const int table : {-1, 82, 100000})
        EXPECT_EQ(&Provider().GetTable(table), &Provider().GetTable(0));
}

TEST(DistortionDataProvider, NoTwoSelectableCurvesAreAlikeButTheLast) {
    std::set<CurvePoints> different;
    for (int number = 0; number < kCurves; ++number)
        different.insert(Provider().GetCurveData(number));
    EXPECT_EQ(different.size(), 41U);
}
