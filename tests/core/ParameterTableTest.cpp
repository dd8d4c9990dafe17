#include "core/ParameterTable.h"

#include <gtest/gtest.h>

#include <set>

using namespace Grimworks;

TEST(ParameterTable, RowsStandInIdOrderWithUniqueKeysAndNames) {
    std::set<std::string> keys;
    std::set<std::string> names;
    for (int id = 0; id < kParameters; ++id) {
        EXPECT_TRUE(keys.insert(ParameterKey(id)).second) << id;
        EXPECT_TRUE(names.insert(ParameterName(id)).second) << id;
    }
}

TEST(ParameterTable, OscillatorsShareOneLayout) {
    for (int oscillator = 1; oscillator < kOscillators; ++oscillator) {
        for (int offset = 0; offset < kOscParams; ++offset) {
            const ParameterInfo& first = kParameterTable[static_cast<std::size_t>(offset)];
            const ParameterInfo& other =
                kParameterTable[static_cast<std::size_t>(Osc(oscillator, static_cast<OscParam>(offset)))];
            EXPECT_EQ(first.step, other.step) << other.name;
            EXPECT_EQ(first.max, other.max) << other.name;
            EXPECT_EQ(first.label, other.label) << other.name;
            const std::string digit = std::to_string(oscillator + 1);
            EXPECT_EQ(other.group, "Oscillator " + digit);
            EXPECT_NE(other.key.find(digit), std::string_view::npos);
        }
    }
}

TEST(ParameterTable, IdsAreThoseOfTheirKeys) {
    EXPECT_EQ(ParameterKey(Osc(1, OscParam::FilterBalance)), "OscFilterType2");
    EXPECT_EQ(ParameterKey(Param::EnvAttack), "EnvAttack");
    EXPECT_EQ(ParameterKey(Param::BassLayerAmount), "BassLayerAmount");
    EXPECT_EQ(ParameterKey(Param::DumpExpand), "DumpExpand");
    EXPECT_EQ(ParameterKey(Param::PhaserTempoSync), "PhaserTempoSync");
}

TEST(ParameterTable, OnlyTheSubOscillatorPassesUnity) {
    for (const ParameterInfo& row : kParameterTable) {
        EXPECT_EQ(row.max, row.id == Param::BassLayerAmount ? 1.259 : 1.0) << row.name;
    }
}

TEST(ParameterTable, NamesAndKeysThatDisagreeStay) {
    EXPECT_EQ(ParameterName(95), "FM 1.00 carrier amount");
    EXPECT_EQ(ParameterName(115), "Filter 1/2 Balance");
    EXPECT_EQ(ParameterKey(115), "FilterType");
    EXPECT_EQ(ParameterName(103), "Distortion Mode");
    EXPECT_EQ(ParameterKey(103), "DistortionLoudness");
}

TEST(ParameterTable, ReservedIdsAreNamedByRule) {
    EXPECT_EQ(ParameterKey(140), "Reserved_00");
    EXPECT_EQ(ParameterKey(158), "Reserved_18");
    EXPECT_EQ(ParameterName(140), "Reserved Parameter 00");
    EXPECT_EQ(ParameterName(158), "Reserved Parameter 18");
    EXPECT_EQ(ParameterKey(159), "");
    EXPECT_EQ(ParameterKey(-1), "");
    EXPECT_EQ(ParameterName(159), "");
}

TEST(ParameterTable, ResetIsOnePlainOscillator) {
    ValueBlock values;
    values.transposeRatio = 3.0;
    ResetValues(values);
    EXPECT_EQ(values.transposeRatio, 1.0);
    EXPECT_EQ(values[Osc(0, OscParam::OnOff)], 1.0);
    EXPECT_EQ(values[Osc(1, OscParam::OnOff)], 0.0);
    EXPECT_EQ(values[Osc(2, OscParam::OnOff)], 0.0);
    for (int oscillator = 0; oscillator < kOscillators; ++oscillator) {
        EXPECT_EQ(values[Osc(oscillator, OscParam::FilterTypeRight)], 0.75);
        EXPECT_EQ(values[Osc(oscillator, OscParam::Volume)], 1.0);
    }
    EXPECT_EQ(values[Param::UnisonDetune], 0.125);
    EXPECT_EQ(values[Param::Volume], 0.705);
    EXPECT_EQ(values[Param::LimiterLevel], 0.79);
}

TEST(ParameterTable, TheFirstProgramIsAThreeOscillatorKick) {
    ValueBlock values;
    ConstructorValues(values);
    EXPECT_EQ(values[Osc(1, OscParam::FilterTypeRight)], 0.25);
    EXPECT_EQ(values[Osc(1, OscParam::Tune)], 0.55);
    EXPECT_EQ(values[Osc(2, OscParam::Tune)], 0.45);
    EXPECT_EQ(values[Param::PitchAmount], 0.4);
    EXPECT_EQ(values[Param::PitchDuration], 0.15);
    EXPECT_EQ(values[Param::PitchPower], 0.7);
    EXPECT_EQ(values[Param::UnisonDetune], 0.0);
}

TEST(ValueBlock, ReservedAndAbsurdIdsReadAsZero) {
    ValueBlock values;
    values.values.fill(0.25);
    EXPECT_EQ(values.GetValue(139), 0.25);
    EXPECT_EQ(values.GetValue(140), 0.0);
    EXPECT_EQ(values.GetValue(158), 0.0);
    EXPECT_EQ(values.GetValue(-1), 0.0);
}

TEST(ValueBlock, ACopyTakesTheTransposeRatioAlong) {
    ValueBlock values;
    values.transposeRatio = 2.0;
    const ValueBlock copy = values;
    EXPECT_EQ(copy.transposeRatio, 2.0);
    EXPECT_TRUE(copy == values);
}
