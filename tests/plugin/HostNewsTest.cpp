#include "plugin/HostNews.h"

#include "tests/plugin/TestPlug.h"

#include <gtest/gtest.h>

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
    explicit ChainAndHost(int last) : plug(TestHost::AudioMaster, last) {
        host.Attach(plug.Effect());
        host.reaction = [this](const TestHost::HostCall& call) {
            if (call.opcode != HostOp::Automate) return;
            told.push_back(call.index);
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

TEST(HostNews, ValueIsTheOneThatWasTaken) {
    ChainAndHost both(0);
    both.plug.SetParameterFromGUI(0, 7.0);
    EXPECT_EQ(both.host.Last().opt, 1.0F) << "limited to the range";
}

} // namespace
} // namespace Grimworks
