#include "host/PluginHost.h"

#include "host/HostError.h"
#include "tests/host/FakePlugin.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

std::vector<std::int32_t> Opcodes(const FakePlugin& plugin) {
    std::vector<std::int32_t> opcodes;
    for (const auto& call : plugin.calls)
        opcodes.push_back(call.opcode);
    return opcodes;
}

/// The message with which the host refuses a plug-in whose record was changed.
std::string FaultOf(const std::function<void(AEffect&)>& change) {
    FakePlugin plugin;
    change(plugin.record);
    try {
        const PluginHost host(FakePlugin::Entry, "fake.so", {});
    } catch (const HostError& fault) {
        return fault.what();
    }
    return {};
}

} // namespace

TEST(PluginHost, SetsRateAndBlockSizeBeforeItOpens) {
    FakePlugin plugin;
    const PluginHost host(FakePlugin::Entry, "fake.so", {96000.0, 64});
    ASSERT_EQ(Opcodes(plugin),
              (std::vector<std::int32_t>{PlugOp::SetSampleRate, PlugOp::SetBlockSize, PlugOp::Open}));
    EXPECT_EQ(plugin.calls[0].option, 96000.0F);
    EXPECT_EQ(plugin.calls[1].value, 64);
    EXPECT_EQ(plugin.versionAtBirth, 2400);
}

TEST(PluginHost, SwitchesOffAndClosesAtTheEnd) {
    FakePlugin plugin;
    {
        PluginHost host(FakePlugin::Entry, "fake.so", {});
        host.Activate(true);
        plugin.calls.clear();
        host.Activate(true);
        EXPECT_TRUE(plugin.calls.empty());
    }
    ASSERT_EQ(Opcodes(plugin), (std::vector<std::int32_t>{PlugOp::MainsChanged, PlugOp::Close}));
    EXPECT_EQ(plugin.calls[0].value, 0);
}

TEST(PluginHost, RefusesWhatIsNoPlugin) {
    const auto none = [](audioMasterCallback) -> AEffect* { return nullptr; };
    EXPECT_THROW(PluginHost(none, "fake.so", {}), HostError);
    EXPECT_EQ(FaultOf([](AEffect&) {}), "");
    EXPECT_TRUE(FaultOf([](AEffect& record) { record.magic = 0; }).starts_with("fake.so: "));
    EXPECT_NE(FaultOf([](AEffect& record) { record.dispatcher = nullptr; }), "");
    EXPECT_NE(FaultOf([](AEffect& record) { record.processReplacing = nullptr; }), "");
    EXPECT_NE(FaultOf([](AEffect& record) { record.numOutputs = 0; }), "");
    EXPECT_NE(FaultOf([](AEffect& record) { record.numOutputs = 1 << 30; }), "");
    EXPECT_NE(FaultOf([](AEffect& record) { record.numInputs = -1; }), "");
    EXPECT_NE(FaultOf([](AEffect& record) { record.numParams = -1; }), "");
}

TEST(PluginHost, TellsThePluginWhereTheSongIs) {
    FakePlugin plugin;
    PluginHost host(FakePlugin::Entry, "fake.so", {48000.0, 48000});
    TempoMap map;
    map.AddTempo(1.0, 1000000.0);
    map.AddMeter(0.0, 3, 4);
    host.FollowTempo(&map);
    host.Activate(true);
    host.Process(0, {}, 24000);
    host.Process(96000, {}, 24000);
    ASSERT_EQ(plugin.times.size(), 2U);
    EXPECT_EQ(plugin.times[0].tempo, 120.0);
    EXPECT_EQ(plugin.times[0].ppqPos, 0.0);
    EXPECT_EQ(plugin.times[1].samplePos, 96000.0);
    EXPECT_EQ(plugin.times[1].sampleRate, 48000.0);
    EXPECT_EQ(plugin.times[1].tempo, 60.0);
    EXPECT_EQ(plugin.times[1].ppqPos, 3.0);
    EXPECT_EQ(plugin.times[1].barStartPos, 3.0);
    EXPECT_EQ(plugin.times[1].timeSigNumerator, 3);
    EXPECT_EQ(plugin.times[1].timeSigDenominator, 4);
    EXPECT_EQ(plugin.times[1].flags, 0x2 | 0x200 | 0x400 | 0x800 | 0x2000);
}

TEST(PluginHost, AnswersWhatPluginsAsk) {
    FakePlugin plugin;
    const PluginHost host(FakePlugin::Entry, "fake.so", {44100.0, 512});
    EXPECT_EQ(plugin.Ask(1), 2400);
    EXPECT_EQ(plugin.Ask(HostOp::WantMidi), 1);
    EXPECT_EQ(plugin.Ask(16), 44100);
    EXPECT_EQ(plugin.Ask(17), 512);
    EXPECT_EQ(plugin.Ask(HostOp::GetProcessLevel), 4);
    EXPECT_EQ(plugin.Ask(HostOp::GetVendorVersion), 10803);
    char text[64] = {};
    EXPECT_EQ(plugin.Ask(HostOp::GetProductString, text), 1);
    EXPECT_STREQ(text, "ThudForge Standalone");
    EXPECT_EQ(plugin.Ask(HostOp::GetProductString, nullptr), 0);
    EXPECT_EQ(plugin.Ask(12345, text), 0);
    char timeQuestion[] = "sendVstTimeInfo";
    char otherQuestion[] = "openFileSelector";
    EXPECT_EQ(plugin.Ask(37, timeQuestion), 1);
    EXPECT_EQ(plugin.Ask(37, otherQuestion), 0);
    EXPECT_EQ(plugin.Ask(37, nullptr), 0);
}

TEST(PluginHost, EventsComeWithTheirOffsets) {
    FakePlugin plugin;
    PluginHost host(FakePlugin::Entry, "fake.so", {48000.0, 64});
    const std::vector<BlockEvent> events{{3, {0x90, 60, 127}}, {63, {0x90, 61, 127}}, {63, {0x80, 60, 0}}};
    host.Process(0, events, 64);
    EXPECT_EQ(host.Output(0)[2], 0.0);
    EXPECT_EQ(host.Output(0)[3], 1.0);
    EXPECT_EQ(host.Output(1)[63], 0.75);
    host.Process(64, {}, 64);
    EXPECT_EQ(host.Output(0)[63], 0.0);
}

TEST(PluginHost, FloatsAreTakenWhereThereAreNoDoubles) {
    FakePlugin plugin;
    plugin.record.flags = EffectFlag::CanReplacing;
    PluginHost host(FakePlugin::Entry, "fake.so", {48000.0, 64});
    const std::vector<BlockEvent> events{{5, {0x90, 60, 100}}};
    host.Process(0, events, 64);
    EXPECT_EQ(host.Output(0)[5], static_cast<double>(static_cast<float>(100.0 / 127.0)));
}

TEST(PluginHost, ParametersOutsideTheListAreNotAskedFor) {
    FakePlugin plugin;
    PluginHost host(FakePlugin::Entry, "fake.so", {});
    EXPECT_EQ(host.ParameterName(1), "Master Volume");
    EXPECT_EQ(host.ParameterDisplay(0), "25");
    EXPECT_EQ(host.ParameterLabel(0), "%");
    EXPECT_EQ(host.Parameter(2), 0.75F);
    for (const int id : {-1, 3, 1 << 30}) {
        EXPECT_EQ(host.ParameterName(id), "");
        EXPECT_EQ(host.Parameter(id), 0.0F);
        host.SetParameter(id, 1.0F);
    }
}
