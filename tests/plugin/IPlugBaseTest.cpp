#include "plugin/IPlugBase.h"

#include "core/ParameterTable.h"
#include "tests/plugin/TestPlug.h"

#include <gtest/gtest.h>

#include <limits>

namespace Grimworks {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(IPlugBase, ReadsChannelConfigurations) {
    const auto pairs = IPlugBase::ParseChannels("0-1 0-2");
    ASSERT_EQ(pairs.size(), 2U);
    EXPECT_EQ(pairs[0].inputs, 0);
    EXPECT_EQ(pairs[0].outputs, 1);
    EXPECT_EQ(pairs[1].outputs, 2);
    EXPECT_EQ(IPlugBase::ParseChannels("  2-2   4-6 ").size(), 2U);
}

TEST(IPlugBase, LeavesOutWhatIsNoChannelPair) {
    for (const char* text : {"", " ", "1", "-", "1-", "-2", "a-b", "1-2x", "1--2", "65-1", "99999999999-1"})
        EXPECT_TRUE(IPlugBase::ParseChannels(text).empty()) << text;
}

TEST(IPlugBase, StartsAsTheInstrumentIs) {
    const PlugAndHost both;
    const IPlugBase& plug = both.plug;
    EXPECT_EQ(plug.ParameterCount(), 159);
    EXPECT_EQ(plug.PresetCount(), 128);
    EXPECT_EQ(plug.InputCount(), 0);
    EXPECT_EQ(plug.OutputCount(), 2);
    EXPECT_EQ(plug.GetSampleRate(), 44100.0);
    EXPECT_EQ(plug.GetBlockSize(), 1024);
    EXPECT_EQ(plug.Latency(), 0);
    EXPECT_EQ(plug.TailSize(), 0);
    EXPECT_EQ(plug.CurrentPreset(), 0);
    EXPECT_EQ(plug.Identity().VersionNumber(), 10803);
    EXPECT_EQ(plug.Identity().effectName, "ThudForge 1.8.3 FREE");
    EXPECT_EQ(plug.Identity().makerName, "GrimWorks");
    for (int i = 0; i < 128; ++i) {
        EXPECT_EQ(plug.PresetName(i), "empty");
        EXPECT_FALSE(plug.GetPreset(i)->initialized);
    }
}

TEST(IPlugBase, DefinesEveryParameterFromTheTable) {
    ValueBlock values;
    ConstructorValues(values);
    values[55] = 0.125;
    values[60] = 0.875;
    PlugAndHost both;
    both.plug.DefineParameters(values);
    for (int id = 0; id < kParameters; ++id) {
        const IParam* param = both.plug.GetParam(id);
        ASSERT_NE(param, nullptr);
        EXPECT_EQ(param->Name(), ParameterName(id));
        EXPECT_EQ(param->GetType(), IParam::Type::Double);
        EXPECT_EQ(param->Min(), 0.0);
        EXPECT_EQ(param->Max(), id == 80 ? 1.259 : 1.0);
        EXPECT_EQ(param->Value(), id < kLiveParameters ? values[id] : 0.0);
        EXPECT_EQ(param->Default(), id == 55 ? 0.875 : param->Value()) << id;
    }
    EXPECT_EQ(both.plug.GetParam(34)->Default(), values[34]);
    EXPECT_EQ(both.plug.GetParam(13)->Label(), "Hz");
    EXPECT_EQ(both.plug.GetParam(140)->Name(), "Reserved Parameter 00");
    EXPECT_EQ(both.plug.GetParam(158)->Name(), "Reserved Parameter 18");
    EXPECT_EQ(both.plug.GetParam(158)->Group(), "Reserved Group");
    EXPECT_EQ(both.plug.GetParam(158)->DisplayPrecision(), 3);
}

TEST(IPlugBase, BadIdsChangeNothingAndReadZero) {
    PlugAndHost both;
    const std::vector<std::uint8_t> before = both.Chunk(false);
    for (const int id : {-1, 159, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_EQ(both.plug.GetParam(id), nullptr);
        EXPECT_EQ(both.plug.GetParameterNormalized(id), 0.0);
        EXPECT_EQ(both.plug.GetParameterValue(id), 0.0);
        both.plug.SetParameterFromHost(id, 0.5);
        both.plug.SetParameterFromPlug(id, 0.5);
        both.plug.SetParameterFromGUI(id, 0.5);
        EXPECT_FALSE(both.plug.SetParameterFromText(id, "0.5"));
    }
    EXPECT_TRUE(both.plug.changes.empty());
    EXPECT_TRUE(both.host.calls.empty());
    EXPECT_EQ(both.Chunk(false), before);
}

TEST(IPlugBase, ThePlugInsOwnChangeReachesEditorHostAndEngine) {
    PlugAndHost both;
    TestEditor editor;
    both.plug.AttachGraphics(&editor);
    both.plug.SetParameterFromPlug(13, 1.6);
    EXPECT_EQ(both.plug.GetParameterValue(13), 1.0);
    ASSERT_EQ(editor.told.size(), 1U);
    EXPECT_EQ(editor.told[0].id, 13);
    EXPECT_EQ(editor.told[0].value, 1.0);
    EXPECT_TRUE(editor.told[0].normalized);
    ASSERT_EQ(both.host.calls.size(), 1U) << "no begin or end of an edit";
    EXPECT_EQ(both.host.Last().opcode, HostOp::Automate);
    EXPECT_EQ(both.host.Last().index, 13);
    EXPECT_EQ(both.host.Last().opt, 1.0F);
    EXPECT_EQ(both.plug.changes, std::vector<int>{13});
}

TEST(IPlugBase, AControlsChangeReachesHostAndEngine) {
    PlugAndHost both;
    TestEditor editor;
    both.plug.AttachGraphics(&editor);
    both.plug.SetParameterFromGUI(80, 0.5);
    EXPECT_EQ(both.plug.GetParameterValue(80), 0.5 * 1.259);
    EXPECT_TRUE(editor.told.empty());
    ASSERT_EQ(both.host.calls.size(), 1U);
    EXPECT_EQ(both.host.Last().opcode, HostOp::Automate);
    EXPECT_EQ(both.host.Last().opt, 0.5F);
    EXPECT_EQ(both.plug.changes, std::vector<int>{80});
}

TEST(IPlugBase, TheHostsChangeReachesEditorAndEngineOnly) {
    PlugAndHost both;
    TestEditor editor;
    both.plug.AttachGraphics(&editor);
    both.plug.SetParameterFromHost(10, 0.25);
    ASSERT_EQ(editor.told.size(), 1U);
    EXPECT_EQ(editor.told[0].value, 0.25);
    EXPECT_TRUE(both.host.calls.empty());
    EXPECT_EQ(both.plug.changes, std::vector<int>{10});
}

TEST(IPlugBase, WhatIsNoNumberIsNeverTakenOnAnyRoad) {
    PlugAndHost both;
    TestEditor editor;
    both.plug.AttachGraphics(&editor);
    const double before = both.plug.GetParameterValue(137);
    for (const double value : {kNaN, -std::numeric_limits<double>::infinity()}) {
        both.plug.SetParameterFromHost(137, value);
        both.plug.SetParameterFromPlug(137, value);
        both.plug.SetParameterFromGUI(137, value);
    }
    EXPECT_FALSE(both.plug.SetParameterFromText(137, "nan"));
    EXPECT_EQ(both.plug.GetParameterValue(137), before);
    EXPECT_TRUE(editor.told.empty());
    EXPECT_TRUE(both.host.calls.empty());
    EXPECT_TRUE(both.plug.changes.empty());
}

TEST(IPlugBase, TextSetsThePlainLimitedValue) {
    PlugAndHost both;
    TestEditor editor;
    both.plug.AttachGraphics(&editor);
    EXPECT_TRUE(both.plug.SetParameterFromText(80, "1.1"));
    EXPECT_EQ(both.plug.GetParameterValue(80), 1.1);
    ASSERT_EQ(editor.told.size(), 1U);
    EXPECT_FALSE(editor.told[0].normalized);
    EXPECT_TRUE(both.plug.SetParameterFromText(80, "7"));
    EXPECT_EQ(both.plug.GetParameterValue(80), 1.259);
    EXPECT_EQ(both.plug.changes, (std::vector<int>{80, 80}));
}

TEST(IPlugBase, EveryParameterIsSentInIdOrder) {
    PlugAndHost both;
    both.plug.SendAllParameters();
    ASSERT_EQ(both.plug.changes.size(), 159U);
    for (int id = 0; id < 159; ++id)
        EXPECT_EQ(both.plug.changes[static_cast<std::size_t>(id)], id);
}

TEST(IPlugBase, ANegativeLatencyIsNone) {
    PlugAndHost both;
    both.plug.SetLatency(64);
    EXPECT_EQ(both.plug.Latency(), 64);
    both.plug.SetLatency(-1);
    EXPECT_EQ(both.plug.Latency(), 0);
    EXPECT_EQ(both.plug.Effect()->initialDelay, 0);
}

} // namespace
} // namespace Grimworks
