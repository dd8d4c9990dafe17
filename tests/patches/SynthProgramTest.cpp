#include "patches/SynthProgram.h"

#include "core/ParameterTable.h"
#include "core/RandomGenerator.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>

namespace Grimworks {
namespace {

const DistortionDataProvider& Curves() {
    static RandomGenerator random;
    static const DistortionDataProvider curves(random);
    return curves;
}

TEST(SynthProgram, IsBornWithTheConstructorValues) {
    const SynthProgram program;
    EXPECT_EQ(program.name, "Basic Bass Drum");
    for (const ParameterInfo& row : kParameterTable)
        EXPECT_EQ(program.GetValue(row.id), row.constructorValue) << row.key;
    EXPECT_EQ(program.values.transposeRatio, 1.0);
}

TEST(SynthProgram, HasOneKeyForEachParameter) {
    const SynthProgram program;
    ASSERT_EQ(program.keys.size(), 159U);
    std::set<std::string> keys;
    for (int id = 0; id < kParameters; ++id) {
        EXPECT_EQ(program.IdOfKey(program.KeyOfId(id)), id);
        keys.insert(program.KeyOfId(id));
    }
    EXPECT_EQ(keys.size(), 159U);
    EXPECT_EQ(program.KeyOfId(134), "Pan");
    EXPECT_EQ(program.KeyOfId(158), "Reserved_18");
    EXPECT_EQ(program.KeyOfId(159), "");
}

TEST(SynthProgram, AnUnknownKeyIsTheIdBehindTheLast) {
    const SynthProgram program;
    for (const char* key : {"", "pan", "Pan ", "Osc1OnOff2", "OscWaveData", "DistortionCurveData"})
        EXPECT_EQ(program.IdOfKey(key), 159) << key;
}

TEST(SynthProgram, SetValueLimitsToZeroAndOne) {
    SynthProgram program;
    program.SetValue(Param::Pan, -3.0);
    EXPECT_EQ(program.GetValue(Param::Pan), 0.0);
    program.SetValue(Param::Pan, 1.5);
    EXPECT_EQ(program.GetValue(Param::Pan), 1.0);
    program.SetValue(Param::BassLayerAmount, 1.259);
    EXPECT_EQ(program.GetValue(Param::BassLayerAmount), 1.0);
    program.SetValue(Param::Pan, 0.25);
    program.SetValue(Param::Pan, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(program.GetValue(Param::Pan), 0.25);
}

TEST(SynthProgram, SetValueLeavesLimiterAndVolumeAlone) {
    SynthProgram program;
    for (const int id : {133, 137, 138}) {
        const double before = program.GetValue(id);
        program.SetValue(id, 0.123);
        EXPECT_EQ(program.GetValue(id), before);
    }
    EXPECT_EQ(program.GetValue(133), 1.0);
    EXPECT_EQ(program.GetValue(137), 0.705);
    EXPECT_EQ(program.GetValue(138), 0.79);
}

TEST(SynthProgram, ReservedAndForeignIdsReadZeroAndTakeNothing) {
    SynthProgram program;
    const ValueBlock before = program.values;
    for (const int id : {140, 158, 159, 1000, -1, std::numeric_limits<int>::min()}) {
        program.SetValue(id, 0.5);
        program.SetChoice(id, 0.5);
        EXPECT_EQ(program.GetValue(id), 0.0) << id;
    }
    EXPECT_EQ(program.values, before);
}

TEST(SynthProgram, PresetValuesAreTheStockCurveAndAllParameters) {
    SynthProgram program;
    program.SetChoice(Param::DistortionType, 20.0 / 41.0);
    program.SetValue(Param::Gate, 0.75);
    const std::vector<double> numbers = program.BuildPresetValues(Curves());
    ASSERT_EQ(numbers.size(), 671U);
    const CurvePoints& curve = Curves().GetCurveData(20);
    for (std::size_t i = 0; i < 512; ++i)
        ASSERT_EQ(numbers[i], curve[i]);
    for (int id = 0; id < 159; ++id)
        ASSERT_EQ(numbers[512 + static_cast<std::size_t>(id)], program.GetValue(id));
    EXPECT_EQ(numbers[512 + 112], 0.75);
    EXPECT_EQ(numbers[670], 0.0);
}

TEST(SynthProgram, PresetValuesTakeTheNearestCurve) {
    SynthProgram program;
    for (const auto& [value, number] :
         {std::pair{0.487805, 20}, {1.0, 41}, {0.0, 0}, {7.4 / 41.0, 7}, {7.6 / 41.0, 8}}) {
        program.SetChoice(Param::DistortionType, value);
        const std::vector<double> numbers = program.BuildPresetValues(Curves());
        EXPECT_EQ(numbers[300], Curves().GetCurveData(number)[300]) << number;
        EXPECT_EQ(numbers[100], Curves().GetCurveData(number)[100]) << number;
    }
}

} // namespace
} // namespace Grimworks
