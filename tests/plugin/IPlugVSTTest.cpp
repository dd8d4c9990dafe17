#include "plugin/IPlugVST.h"

#include "tests/plugin/TestPlug.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <thread>

namespace Grimworks {
namespace {

TEST(IPlugVST, FillsTheRecordThatHostsRead) {
    PlugAndHost both;
    const AEffect& effect = *both.plug.Effect();
    EXPECT_EQ(std::memcmp(&effect.magic, "PtsV", 4), 0);
    EXPECT_EQ(std::memcmp(&effect.uniqueID, "otra", 4), 0);
    EXPECT_EQ(effect.uniqueID, 0x6172746F);
    EXPECT_EQ(effect.numPrograms, 128);
    EXPECT_EQ(effect.numParams, 159);
    EXPECT_EQ(effect.numInputs, 0);
    EXPECT_EQ(effect.numOutputs, 2);
    EXPECT_EQ(effect.flags, 0x1030 | 0x100);
    EXPECT_EQ(effect.initialDelay, 0);
    EXPECT_EQ(effect.ioRatio, 1.0F);
    EXPECT_EQ(effect.version, 10803);
    EXPECT_EQ(IPlugVST::FromEffect(both.plug.Effect()), &both.plug);
    EXPECT_NE(effect.dispatcher, nullptr);
    EXPECT_NE(effect.process, nullptr);
    EXPECT_NE(effect.setParameter, nullptr);
    EXPECT_NE(effect.getParameter, nullptr);
    EXPECT_NE(effect.processReplacing, nullptr);
    EXPECT_NE(effect.processDoubleReplacing, nullptr);
}

TEST(IPlugVST, FlagsFollowWhatThePlugInIs) {
    PlugIdentity identity;
    identity.isInstrument = false;
    identity.stateChunks = false;
    identity.channels = "1-1 2-2";
    identity.programs = 0;
    PlugAndHost both(identity);
    EXPECT_EQ(both.plug.Effect()->flags, 0x1010 | 0x8);
    EXPECT_EQ(both.plug.Effect()->numInputs, 2);
    EXPECT_EQ(both.plug.Effect()->numPrograms, 1) << "hosts want at least one";
}

TEST(IPlugVST, AnAttachedEditorShowsInTheFlags) {
    PlugAndHost both;
    TestEditor editor;
    both.plug.AttachGraphics(&editor);
    EXPECT_EQ(both.plug.Effect()->flags, 0x1131);
    both.plug.AttachGraphics(nullptr);
    EXPECT_EQ(both.plug.Effect()->flags, 0x1130);
}

TEST(IPlugVST, ParametersAreSetAndReadAsFloats) {
    PlugAndHost both;
    AEffect* effect = both.plug.Effect();
    effect->setParameter(effect, 80, 1.0F);
    EXPECT_EQ(both.plug.GetParameterValue(80), 1.259);
    EXPECT_EQ(effect->getParameter(effect, 80), 1.0F);
    effect->setParameter(effect, 7, 0.1F);
    EXPECT_EQ(both.plug.GetParameterValue(7), static_cast<double>(0.1F));
    EXPECT_EQ(effect->getParameter(effect, 7), 0.1F);
    EXPECT_EQ(both.plug.changes, (std::vector<int>{80, 7}));
    EXPECT_TRUE(both.host.calls.empty());
}

TEST(IPlugVST, ParametersOutsideTheListDoNothing) {
    PlugAndHost both;
    AEffect* effect = both.plug.Effect();
    for (const int id : {-1, 159, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        effect->setParameter(effect, id, 0.5F);
        EXPECT_EQ(effect->getParameter(effect, id), 0.0F);
    }
    effect->setParameter(effect, 7, std::numeric_limits<float>::quiet_NaN());
    EXPECT_TRUE(both.plug.changes.empty());
}

TEST(IPlugVST, ThreadsMaySetAndPlayAtOnce) {
    PlugAndHost both;
    both.plug.keepsRecords = false;
    both.host.keepsCalls = false;
    AEffect* effect = both.plug.Effect();
    std::thread automation([effect] {
        for (int i = 0; i < 20000; ++i)
            effect->setParameter(effect, i % 159, static_cast<float>(i % 100) / 100.0F);
    });
    std::vector<float> left(64);
    std::vector<float> right(64);
    float* outputs[2] = {left.data(), right.data()};
    for (int i = 0; i < 500; ++i)
        effect->processReplacing(effect, nullptr, outputs, 64);
    automation.join();
    EXPECT_EQ(both.plug.played, 500 * 64);
    EXPECT_EQ(left[63], static_cast<float>(TestPlug::SoundAt(500 * 64 - 1, 0)));
}

} // namespace
} // namespace Grimworks
