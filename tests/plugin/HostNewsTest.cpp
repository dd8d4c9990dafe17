#include "plugin/HostNews.h"

#include "tests/plugin/AllocationCounter.h"
#include "tests/plugin/TestPlug.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <thread>

namespace Grimworks {
namespace {

/// Whether another thread could take the plug-in lock just now.
bool IsLockFree(const IPlugBase& plug) {
    bool taken = false;
    std::thread other([&] {
        taken = plug.Lock().TryEnter();
        if (taken) plug.Lock().Leave();
    });
    other.join();
    return taken;
}

/// A plug-in of which parameter 1 follows 0, 2 follows 1 and so on up to `last`.
class ChainPlug final : public IPlugVST {
public:
    explicit ChainPlug(audioMasterCallback master, int lastFollower)
        : IPlugVST(master, {}), last(lastFollower) {
        ValueBlock values;
        ConstructorValues(values);
        DefineParameters(values);
    }
    void ProcessDoubleReplacing(double**, double**, int) override {}
    void OnParamChange(int id) override {
        if (follows && id < last) SetParameterFromPlug(id + 1, GetParameterNormalized(id));
    }

    bool follows = true;

private:
    int last;
};

/// A chain with its host, which remembers what it was told and whether the lock was free then.
struct ChainAndHost {
    static constexpr int kPrograms = -1; ///< stands in `told` for the news of programs

    explicit ChainAndHost(int last) : plug(TestHost::AudioMaster, last) {
        host.Attach(plug.Effect());
        host.reaction = [this](const TestHost::HostCall& call) {
            if (call.opcode != HostOp::Automate && call.opcode != HostOp::UpdateDisplay) return;
            told.push_back(call.opcode == HostOp::Automate ? call.index : kPrograms);
            wasFree.push_back(IsLockFree(plug));
        };
    }

    TestHost host;
    ChainPlug plug;
    std::vector<int> told;
    std::vector<bool> wasFree;
};

TEST(HostNews, TheLockIsFreeWhenTheHostHearsOfAControlsChange) {
    ChainAndHost both(0);
    both.plug.SetParameterFromGUI(0, 0.25);
    EXPECT_EQ(both.told, std::vector<int>{0});
    EXPECT_EQ(both.wasFree, std::vector<bool>{true});
}

TEST(HostNews, ChangesThatFollowAreToldInOrderWithTheLockFree) {
    ChainAndHost both(3);
    both.plug.SetParameterFromGUI(0, 0.25);
    EXPECT_EQ(both.told, (std::vector<int>{0, 1, 2, 3}));
    EXPECT_EQ(both.wasFree, std::vector<bool>(4, true));
}

TEST(HostNews, ThePlugInsOwnChangeIsToldWithTheLockFreeToo) {
    ChainAndHost both(1);
    both.plug.SetParameterFromPlug(0, 0.25);
    EXPECT_EQ(both.told, (std::vector<int>{0, 1}));
    EXPECT_EQ(both.wasFree, std::vector<bool>(2, true));
}

TEST(HostNews, WhatFollowsFromTheHostsOwnChangeIsToldWithTheLockFree) {
    ChainAndHost both(2);
    both.plug.Effect()->setParameter(both.plug.Effect(), 0, 0.25F);
    EXPECT_EQ(both.told, (std::vector<int>{1, 2})) << "the host knows of 0 itself";
    EXPECT_EQ(both.wasFree, std::vector<bool>(2, true));
}

TEST(HostNews, UnderTheCallersLockItIsToldAtOnce) {
    ChainAndHost both(0);
    const PlugLockGuard guard(both.plug.Lock());
    both.plug.SetParameterFromPlug(0, 0.25);
    EXPECT_EQ(both.told, std::vector<int>{0}) << "as the audio thread does";
    EXPECT_EQ(both.wasFree, std::vector<bool>{false});
}

TEST(HostNews, MoreNewsThanUsualKeepTheirOrder) {
    constexpr int kLast = 100;
    ChainAndHost both(kLast);
    both.plug.SetParameterFromGUI(0, 0.25);
    ASSERT_EQ(both.told.size(), static_cast<std::size_t>(kLast + 1));
    for (int i = 0; i <= kLast; ++i)
        EXPECT_EQ(both.told[static_cast<std::size_t>(i)], i);
}

TEST(HostNews, AProgramOfTheHostTellsWhatFollowsWithTheLockFree) {
    ChainAndHost both(1);
    both.plug.follows = false;
    both.plug.RestorePreset(0);
    both.told.clear();
    both.wasFree.clear();
    both.plug.follows = true;
    AEffect* effect = both.plug.Effect();
    effect->dispatcher(effect, PlugOp::SetProgram, 0, 0, nullptr, 0.0F);
    EXPECT_EQ(both.told, std::vector<int>{1});
    EXPECT_EQ(both.wasFree, std::vector<bool>{true});
}

TEST(HostNews, ANewProgramNameIsToldWithTheLockFree) {
    ChainAndHost both(0);
    AEffect* effect = both.plug.Effect();
    char name[] = "Boom";
    effect->dispatcher(effect, PlugOp::SetProgramName, 0, 0, name, 0.0F);
    EXPECT_EQ(both.told, std::vector<int>{ChainAndHost::kPrograms});
    EXPECT_EQ(both.wasFree, std::vector<bool>{true});
}

TEST(HostNews, AProgramFileIsToldOnceTheWholeCallIsOver) {
    const std::string path = testing::TempDir() + "host-news.fxp";
    ChainAndHost both(1);
    ASSERT_TRUE(both.plug.SaveProgramAsFXP(path));
    both.told.clear();
    both.wasFree.clear();
    {
        const HostNews call(both.plug);
        EXPECT_TRUE(both.plug.LoadProgramFromFXP(path));
        EXPECT_TRUE(both.told.empty());
    }
    EXPECT_EQ(both.told, (std::vector<int>{1, ChainAndHost::kPrograms})) << "programs last, and once";
    EXPECT_EQ(both.wasFree, std::vector<bool>(2, true));
    std::filesystem::remove(path);
}

TEST(HostNews, AHostThatThrowsHearsNoMoreAndThePlugInGoesOn) {
    ChainAndHost both(2);
    int calls = 0;
    both.host.reaction = [&calls](const TestHost::HostCall& call) {
        if (call.opcode == HostOp::Automate && ++calls == 1) throw std::runtime_error("host");
    };
    both.plug.SetParameterFromGUI(0, 0.25);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(both.plug.GetParameterNormalized(2), 0.25);
    EXPECT_TRUE(IsLockFree(both.plug));
    both.plug.SetParameterFromGUI(0, 0.75);
    EXPECT_EQ(calls, 4) << "the next news are told as ever";
}

TEST(HostNews, ParametersThatTheHostSetsWhileItIsToldKeepWhatItSet) {
    ChainAndHost both(1);
    both.host.reaction = [&both](const TestHost::HostCall& call) {
        if (call.opcode != HostOp::Automate) return;
        both.told.push_back(call.index);
        if (both.told.size() == 1) both.plug.Effect()->setParameter(both.plug.Effect(), 0, 0.75F);
    };
    both.plug.SetParameterFromGUI(0, 0.25);
    EXPECT_EQ(both.told, (std::vector<int>{0, 1, 1}));
    EXPECT_EQ(both.plug.GetParameterNormalized(0), 0.75);
    EXPECT_EQ(both.plug.GetParameterNormalized(1), 0.75);
    EXPECT_TRUE(IsLockFree(both.plug));
}

TEST(HostNews, AsManyNewsAsAChangeMakesNeedNoMemory) {
    ChainAndHost both(15);
    both.host.keepsCalls = false;
    int calls = 0;
    both.host.reaction = [&calls](const TestHost::HostCall&) { ++calls; };
    const long before = AllocationCount();
    both.plug.SetParameterFromPlug(0, 0.25);
    EXPECT_EQ(AllocationCount(), before);
    EXPECT_EQ(before > 0, kCountsAllocations);
    EXPECT_EQ(calls, 16);
}

TEST(HostNews, ValueIsTheOneThatWasTaken) {
    ChainAndHost both(0);
    both.plug.SetParameterFromGUI(0, 7.0);
    EXPECT_EQ(both.host.Last().opt, 1.0F) << "limited to the range";
}

} // namespace
} // namespace Grimworks
