#include "host/LiveAudio.h"

#include "host/Module.h"
#include "tests/host/FakePlugin.h"

#include <gtest/gtest.h>

#include <bit>
#include <chrono>
#include <functional>
#include <thread>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

/// Waits until something is so; false if it takes longer than any machine needs.
bool Eventually(const std::function<bool()>& isSo) {
    for (int i = 0; i < 6000; ++i) {
        if (isSo()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

} // namespace

TEST(KeyEvents, AKeyIsStruckAtTheStartAndEverySecond) {
    const RepeatedKey key{36, 90};
    const auto first = KeyEvents(key, 0, 100, 1000);
    ASSERT_EQ(first.size(), 1U);
    EXPECT_EQ(first[0].offset, 0);
    EXPECT_EQ(first[0].bytes, (std::array<std::uint8_t, 3>{0x90, 36, 90}));
    EXPECT_TRUE(KeyEvents(key, 100, 400, 1000).empty());
    const auto third = KeyEvents(key, 1990, 20, 1000);
    ASSERT_EQ(third.size(), 1U);
    EXPECT_EQ(third[0].offset, 10);
    EXPECT_EQ(third[0].bytes[0], 0x90);
}

TEST(KeyEvents, AKeyIsReleasedHalfASecondLater) {
    const auto events = KeyEvents({36, 90}, 500, 1, 1000);
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].offset, 0);
    EXPECT_EQ(events[0].bytes, (std::array<std::uint8_t, 3>{0x80, 36, 0}));
}

TEST(KeyEvents, ALongBlockHoldsEveryStrokeInOrder) {
    const auto events = KeyEvents({36, 90}, 250, 2000, 1000);
    std::vector<int> offsets;
    std::vector<int> kinds;
    for (const BlockEvent& event : events) {
        offsets.push_back(event.offset);
        kinds.push_back(event.bytes[0]);
    }
    EXPECT_EQ(offsets, (std::vector<int>{250, 750, 1250, 1750}));
    EXPECT_EQ(kinds, (std::vector<int>{0x80, 0x90, 0x80, 0x90}));
}

TEST(LiveAudio, PlaysBlocksOneBehindTheOther) {
    FakePlugin plugin;
    PluginHost host(FakePlugin::Entry, "fake.so", {48000.0, 64, true});
    {
        const LiveAudio audio(host, std::nullopt);
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    ASSERT_FALSE(plugin.times.empty());
    for (std::size_t block = 0; block < plugin.times.size(); ++block) {
        EXPECT_EQ(plugin.times[block].samplePos, 64.0 * static_cast<double>(block));
        EXPECT_EQ(plugin.blockSizes[block], 64);
    }
}

TEST(LiveAudio, IsNeverAheadOfTheClock) {
    FakePlugin plugin;
    PluginHost host(FakePlugin::Entry, "fake.so", {48000.0, 480, true});
    const auto start = std::chrono::steady_clock::now();
    {
        const LiveAudio audio(host, std::nullopt);
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    // One block is begun at once; every further one only when 10 ms more are over.
    EXPECT_LE(static_cast<double>(plugin.blockSizes.size() - 1) * 0.01, took.count());
}

TEST(LiveAudio, SwitchesThePluginOnAndOff) {
    FakePlugin plugin;
    PluginHost host(FakePlugin::Entry, "fake.so", {});
    plugin.calls.clear();
    { const LiveAudio audio(host, std::nullopt); }
    ASSERT_EQ(plugin.calls.size(), 2U);
    EXPECT_EQ(plugin.calls[0].opcode, PlugOp::MainsChanged);
    EXPECT_EQ(plugin.calls[0].value, 1);
    EXPECT_EQ(plugin.calls[1].opcode, PlugOp::MainsChanged);
    EXPECT_EQ(plugin.calls[1].value, 0);
}

TEST(LiveAudio, PluginsAreToldThatTheyAreHeardAsTheyPlay) {
    constexpr std::intptr_t kRealTime = 2;
    FakePlugin plugin;
    const PluginHost live(FakePlugin::Entry, "fake.so", {48000.0, 256, true});
    EXPECT_EQ(plugin.Ask(HostOp::GetProcessLevel), kRealTime);
}

TEST(LiveAudioThread, TheTimeThatAnotherThreadIsToldIsThatOfOneBlock) {
    FakePlugin plugin;
    PluginHost host(FakePlugin::Entry, "fake.so", {48000.0, 48, true});
    const LiveAudio audio(host, std::nullopt);
    double last = 0.0;
    EXPECT_TRUE(Eventually([&] {
        const auto* time = std::bit_cast<const VstTimeInfo*>(plugin.Ask(HostOp::GetTime));
        EXPECT_GE(time->samplePos, last);
        EXPECT_DOUBLE_EQ(time->ppqPos, time->samplePos / 48000.0 * 2.0);
        last = time->samplePos;
        return last >= 480.0;
    }));
}

TEST(LiveAudioThread, TheInstrumentPlaysWhileItsParametersMove) {
    const Module module(THUDFORGE_MODULE);
    PluginHost host(module.Entry(), "ThudForge", {48000.0, 256, true});
    const LiveAudio audio(host, RepeatedKey{36, 127});
    for (int round = 0; round < 5; ++round) {
        for (int id = 0; id < host.ParameterCount(); ++id)
            host.SetParameter(id, static_cast<float>((id + round) % 11) / 10.0F);
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    for (int id = 0; id < host.ParameterCount(); ++id) {
        EXPECT_GE(host.Parameter(id), 0.0F) << id;
        EXPECT_LE(host.Parameter(id), 1.0F) << id;
    }
}
