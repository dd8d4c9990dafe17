#include "plugin/IPlugVST.h"

#include "tests/plugin/TestPlug.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <random>

namespace Grimworks {
namespace {

constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();

/// What an opcode answers when every pointer is null and the index is a valid one. All others answer 0.
const std::map<int, std::intptr_t>& AnswersWithoutPointers() {
    static const std::map<int, std::intptr_t> answers{{PlugOp::Identify, 0x4E764566},
                                                      {PlugOp::CanBeAutomated, 1},
                                                      {PlugOp::GetCategory, 2},
                                                      {PlugOp::GetVendorVersion, 10803},
                                                      {PlugOp::GetInterfaceVersion, 2400}};
    return answers;
}

TEST(HostileHost, NullPointersGetTheDocumentedAnswerFromEveryOpcode) {
    for (const audioMasterCallback master : {&TestHost::AudioMaster, audioMasterCallback{nullptr}}) {
        TestPlug plug(master);
        AEffect* effect = plug.Effect();
        for (int opcode = -10; opcode < 300; ++opcode) {
            if (opcode == PlugOp::Close) continue;
            const auto known = AnswersWithoutPointers().find(opcode);
            const std::intptr_t expected = known == AnswersWithoutPointers().end() ? 0 : known->second;
            EXPECT_EQ(effect->dispatcher(effect, opcode, 0, 0, nullptr, 0.0F), expected) << opcode;
        }
    }
}

TEST(HostileHost, AbsurdNumbersGetZeroFromEveryOpcodeThatTakesAnIndex) {
    PlugAndHost both;
    both.plug.keepsRecords = false;
    alignas(16) char buffer[1024] = {};
    for (const std::int32_t index : {-1, 159, 128, 2, 100000, kMax, kMin}) {
        for (const int opcode :
             {PlugOp::GetParameterLabel, PlugOp::GetParameterDisplay, PlugOp::GetParameterName,
              PlugOp::CanBeAutomated, PlugOp::StringToParameter, PlugOp::GetProgramNameIndexed,
              PlugOp::GetInputProperties, PlugOp::GetOutputProperties}) {
            if (index >= 0 && index < 159 && opcode <= PlugOp::GetProgramNameIndexed) continue;
            EXPECT_EQ(both.Dispatch(opcode, index, 0, buffer), 0) << opcode << " " << index;
        }
    }
}

TEST(HostileHost, EveryOpcodeSurvivesEveryMixOfAbsurdNumbers) {
    PlugAndHost both;
    both.plug.keepsRecords = false;
    both.host.keepsCalls = false;
    const float opts[] = {0.0F, -1.0F, 1e38F, std::numeric_limits<float>::quiet_NaN(),
                          std::numeric_limits<float>::infinity()};
    const std::intptr_t values[] = {0,
                                    1,
                                    -1,
                                    kMax,
                                    kMin,
                                    std::numeric_limits<std::intptr_t>::max(),
                                    std::numeric_limits<std::intptr_t>::min()};
    for (int opcode = 0; opcode < 80; ++opcode) {
        if (opcode == PlugOp::Close) continue;
        for (const std::int32_t index : {0, 1, -1, 158, 159, kMax, kMin}) {
            for (const std::intptr_t value : values) {
                for (const float opt : opts)
                    both.Dispatch(opcode, index, value, nullptr, opt);
            }
        }
    }
    EXPECT_EQ(both.plug.GetSampleRate(), 44100.0);
    EXPECT_EQ(both.plug.CurrentPreset(), 1) << "one of the numbers is a program";
    EXPECT_EQ(both.Chunk(false).size(), 5380U);
}

TEST(HostileHost, NullAndForeignRecordsAnswerNothing) {
    PlugAndHost both;
    const AEffect effect = *both.plug.Effect();
    EXPECT_EQ(effect.dispatcher(nullptr, PlugOp::Identify, 0, 0, nullptr, 0.0F), 0);
    EXPECT_EQ(effect.dispatcher(nullptr, PlugOp::Close, 0, 0, nullptr, 0.0F), 0);
    EXPECT_EQ(effect.getParameter(nullptr, 0), 0.0F);
    effect.setParameter(nullptr, 0, 0.5F);
    effect.process(nullptr, nullptr, nullptr, 8);
    effect.processReplacing(nullptr, nullptr, nullptr, 8);
    effect.processDoubleReplacing(nullptr, nullptr, nullptr, 8);
    AEffect zeroed{};
    EXPECT_EQ(effect.dispatcher(&zeroed, PlugOp::Identify, 0, 0, nullptr, 0.0F), 0);
    zeroed.magic = kEffectMagic;
    EXPECT_EQ(effect.dispatcher(&zeroed, PlugOp::Identify, 0, 0, nullptr, 0.0F), 0);
    EXPECT_TRUE(both.plug.blocks.empty());
}

TEST(HostileHost, AnExceptionNeverReachesTheHost) {
    PlugAndHost both;
    both.host.reaction = [](const TestHost::HostCall& call) {
        if (call.opcode == HostOp::GetProductString) throw 1;
    };
    EXPECT_EQ(both.Dispatch(PlugOp::Open), 0);
    EXPECT_EQ(both.Dispatch(PlugOp::Identify), 0x4E764566) << "and the plug-in still answers";
}

TEST(HostileHost, RandomCallsInRandomOrderLeaveAPlugInThatWorks) {
    PlugAndHost both;
    both.plug.keepsRecords = false;
    both.host.keepsCalls = false;
    AEffect* effect = both.plug.Effect();
    std::mt19937 random(2024);
    std::vector<char> buffer(4096, 'x');
    std::vector<float> left(5000);
    std::vector<float> right(5000);
    for (int round = 0; round < 20000; ++round) {
        const int opcode = static_cast<int>(random() % 90U) - 10;
        const bool takesRecords = opcode == PlugOp::ProcessEvents ||
                                  opcode == PlugOp::SetSpeakerArrangement ||
                                  opcode == PlugOp::GetSpeakerArrangement;
        const bool isBig = opcode == PlugOp::SetBlockSize;
        if (opcode != PlugOp::Close) {
            buffer.back() = '\0';
            void* ptr = takesRecords || random() % 4 == 0 ? nullptr : buffer.data();
            const auto value = static_cast<std::intptr_t>(random() % (isBig ? 3000U : 200U)) - 20;
            both.Dispatch(opcode, static_cast<std::int32_t>(random() % 200U) - 20, value, ptr,
                          static_cast<float>(random() % 100000U));
        }
        if (round % 7 == 0) {
            float* outputs[2] = {random() % 3 == 0 ? nullptr : left.data(), right.data()};
            effect->processReplacing(effect, nullptr, outputs,
                                     static_cast<std::int32_t>(random() % 5010U) - 10);
        }
        if (round % 5 == 0) {
            effect->setParameter(effect, static_cast<std::int32_t>(random() % 200U) - 20,
                                 static_cast<float>(random() % 100U) / 100.0F);
        }
        const int program = both.plug.CurrentPreset();
        ASSERT_TRUE(program >= 0 && program < 128);
    }
    EXPECT_EQ(both.Chunk(false).size(), 5380U);
    for (int id = 0; id < 159; ++id)
        EXPECT_LE(both.plug.GetParameterValue(id), both.plug.GetParam(id)->Max());
}

} // namespace
} // namespace Grimworks
