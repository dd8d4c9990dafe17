#include "plugin/IPlugBase.h"

#include "tests/plugin/TestPlug.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <random>

namespace Grimworks {
namespace {

constexpr int kStateSize = 5372;
constexpr int kCurveEnd = 4100;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// A small plug-in, so that every length of a bank can be tried.
PlugIdentity Small() {
    PlugIdentity identity;
    identity.parameters = 4;
    identity.programs = 3;
    return identity;
}

ByteChunk State(TestPlug& plug) {
    ByteChunk chunk;
    plug.SerializeState(chunk);
    return chunk;
}

ByteChunk Cut(const ByteChunk& chunk, int length) {
    ByteChunk cut;
    cut.Assign(chunk.Bytes().first(static_cast<std::size_t>(length)));
    return cut;
}

void Scramble(TestPlug& plug, unsigned seed) {
    std::mt19937 random(seed);
    for (int id = 0; id < plug.ParameterCount(); ++id)
        plug.SetParameterFromHost(id, static_cast<double>(random()) / 4294967296.0);
    for (double& x : plug.payload)
        x = static_cast<double>(random()) / 4294967296.0;
    plug.changes.clear();
}

TEST(Presets, AStateComesBackByteForByteReservedIdsIncluded) {
    PlugAndHost a;
    Scramble(a.plug, 1);
    const ByteChunk state = State(a.plug);
    ASSERT_EQ(state.Size(), kStateSize);
    PlugAndHost b;
    EXPECT_EQ(b.plug.UnserializeState(state, 0), kStateSize);
    EXPECT_TRUE(State(b.plug) == state);
    EXPECT_EQ(b.plug.GetParameterValue(158), a.plug.GetParameterValue(158));
    EXPECT_NE(b.plug.GetParameterValue(158), 0.0);
    EXPECT_EQ(b.plug.changes.size(), 159U);
}

TEST(Presets, AStateCutAnywhereLoadsAsFarAsItGoesAndSendsEveryParameter) {
    PlugAndHost a;
    Scramble(a.plug, 2);
    const ByteChunk state = State(a.plug);
    PlugAndHost b;
    for (int length = kCurveEnd - 16; length < kStateSize; ++length) {
        Scramble(b.plug, 3);
        std::vector<double> old;
        old.reserve(159);
        for (int id = 0; id < 159; ++id)
            old.push_back(b.plug.GetParameterValue(id));
        ASSERT_EQ(b.plug.UnserializeState(Cut(state, length), 0), -1);
        ASSERT_EQ(b.plug.changes.size(), 159U);
        const int whole = length < kCurveEnd ? 0 : (length - kCurveEnd) / 8;
        for (int id = 0; id < 159; ++id) {
            const double expected =
                id < whole ? a.plug.GetParameterValue(id) : old[static_cast<std::size_t>(id)];
            ASSERT_EQ(b.plug.GetParameterValue(id), expected) << length << " " << id;
        }
    }
}

TEST(Presets, ReadingLimitsValuesAndLeavesNansOut) {
    PlugAndHost both;
    ByteChunk chunk;
    for (int id = 0; id < 159; ++id)
        chunk.Put(id == 0 ? 7.0 : id == 1 ? -7.0 : id == 2 ? kNaN : id == 80 ? 1.2 : 0.5);
    both.plug.SetParameterFromHost(2, 0.125);
    EXPECT_EQ(both.plug.UnserializeParams(chunk, 0), chunk.Size());
    EXPECT_EQ(both.plug.GetParameterValue(0), 1.0);
    EXPECT_EQ(both.plug.GetParameterValue(1), 0.0);
    EXPECT_EQ(both.plug.GetParameterValue(2), 0.125);
    EXPECT_EQ(both.plug.GetParameterValue(80), 1.2);
    EXPECT_EQ(both.plug.GetParameterValue(158), 0.5);
}

TEST(Presets, AStateComparesEqualToItselfWithinAHundredThousandth) {
    PlugAndHost both;
    ByteChunk chunk;
    both.plug.SetParameterFromHost(5, 0.5);
    both.plug.SerializeParams(chunk);
    EXPECT_TRUE(both.plug.CompareParams(chunk.Bytes(), 0));
    both.plug.SetParameterFromHost(5, 0.500008);
    EXPECT_TRUE(both.plug.CompareParams(chunk.Bytes(), 0));
    both.plug.SetParameterFromHost(5, 0.500012);
    EXPECT_FALSE(both.plug.CompareParams(chunk.Bytes(), 0));
}

TEST(Presets, ComparingNeedsAllTheBytes) {
    PlugAndHost both;
    ByteChunk chunk;
    chunk.Put(0.0);
    both.plug.SerializeParams(chunk);
    const auto bytes = chunk.Bytes();
    EXPECT_TRUE(both.plug.CompareParams(bytes, 8));
    EXPECT_FALSE(both.plug.CompareParams(bytes.first(bytes.size() - 1), 8));
    EXPECT_FALSE(both.plug.CompareParams(bytes, 9));
    EXPECT_FALSE(both.plug.CompareParams(bytes, -1));
    EXPECT_FALSE(both.plug.CompareParams({}, 0));
    EXPECT_FALSE(both.plug.CompareParams(bytes, std::numeric_limits<int>::max()));
    ByteChunk nan;
    for (int id = 0; id < 159; ++id)
        nan.Put(kNaN);
    EXPECT_FALSE(both.plug.CompareParams(nan.Bytes(), 0));
}

TEST(Presets, UnusedPresetsBecomeUserPresetsInTurn) {
    PlugAndHost both;
    Scramble(both.plug, 4);
    const ByteChunk live = State(both.plug);
    EXPECT_TRUE(both.plug.RestorePreset(7));
    EXPECT_EQ(both.plug.CurrentPreset(), 7);
    EXPECT_EQ(both.plug.PresetName(7), "user preset 1");
    EXPECT_TRUE(both.plug.GetPreset(7)->initialized);
    EXPECT_TRUE(both.plug.GetPreset(7)->chunk == live);
    EXPECT_TRUE(both.plug.RestorePreset(3));
    EXPECT_EQ(both.plug.PresetName(3), "user preset 2");
    EXPECT_TRUE(both.plug.RestorePreset(7));
    EXPECT_EQ(both.plug.PresetName(7), "user preset 1");
}

TEST(Presets, RestoringBringsTheStoredStateBackAndShowsIt) {
    PlugAndHost both;
    TestEditor editor;
    both.plug.AttachGraphics(&editor);
    Scramble(both.plug, 5);
    const ByteChunk stored = State(both.plug);
    ASSERT_TRUE(both.plug.RestorePreset(0));
    Scramble(both.plug, 6);
    editor.told.clear();
    ASSERT_TRUE(both.plug.RestorePreset(0));
    EXPECT_TRUE(State(both.plug) == stored);
    EXPECT_EQ(both.plug.changes.size(), 159U);
    ASSERT_EQ(editor.told.size(), 159U);
    EXPECT_EQ(editor.told[80].value, both.plug.GetParameterValue(80));
    EXPECT_FALSE(editor.told[80].normalized);
    EXPECT_EQ(both.host.Count(HostOp::UpdateDisplay), 0) << "whoever restores tells the host";
}

TEST(Presets, BadIndexesRestoreNothing) {
    PlugAndHost both;
    Scramble(both.plug, 7);
    const ByteChunk live = State(both.plug);
    for (const int index : {-1, 128, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_FALSE(both.plug.RestorePreset(index));
        EXPECT_EQ(both.plug.GetPreset(index), nullptr);
        EXPECT_EQ(both.plug.PresetName(index), "");
    }
    EXPECT_EQ(both.plug.CurrentPreset(), 0);
    EXPECT_TRUE(State(both.plug) == live);
}

TEST(Presets, APresetThatIsTooShortIsNotMadeCurrent) {
    PlugAndHost both;
    both.plug.MakePresetFromChunk("short", Cut(State(both.plug), 4200));
    both.plug.MakePresetFromChunk("whole", State(both.plug));
    EXPECT_TRUE(both.plug.RestorePreset(1));
    both.plug.changes.clear();
    EXPECT_FALSE(both.plug.RestorePreset(0));
    EXPECT_EQ(both.plug.CurrentPreset(), 1);
    EXPECT_EQ(both.plug.changes.size(), 159U) << "what was there went through the engine all the same";
}

TEST(Presets, ChunksFillTheListFromTheFrontAndTheRestIsDropped) {
    PlugAndHost both(Small());
    for (const char* name : {"a", "b", "c", "d"})
        both.plug.MakePresetFromChunk(name, State(both.plug));
    EXPECT_EQ(both.plug.PresetName(0), "a");
    EXPECT_EQ(both.plug.PresetName(2), "c");
    EXPECT_TRUE(both.plug.GetPreset(2)->initialized);
}

TEST(Presets, UnusedOnesAreFilledWithTheLiveState) {
    PlugAndHost both(Small());
    both.plug.MakePresetFromChunk("first", State(both.plug));
    Scramble(both.plug, 8);
    both.plug.FillUnusedPresets("Empty");
    EXPECT_EQ(both.plug.PresetName(0), "first");
    EXPECT_EQ(both.plug.PresetName(1), "Empty");
    EXPECT_TRUE(both.plug.GetPreset(2)->chunk == State(both.plug));
    EXPECT_FALSE(both.plug.GetPreset(0)->chunk == State(both.plug));
}

TEST(Presets, ModifyingStoresTheStateAndAGivenName) {
    PlugAndHost both(Small());
    both.plug.FillUnusedPresets("Empty");
    Scramble(both.plug, 9);
    both.plug.ModifyCurrentPreset();
    EXPECT_EQ(both.plug.PresetName(0), "Empty");
    EXPECT_TRUE(both.plug.GetPreset(0)->chunk == State(both.plug));
    both.plug.ModifyCurrentPreset("Mine");
    EXPECT_EQ(both.plug.PresetName(0), "Mine");
    EXPECT_EQ(both.plug.GetPreset(0)->chunk.Size(), State(both.plug).Size()) << "not appended";
    both.plug.ModifyCurrentPreset(std::string(300, 'n'));
    EXPECT_EQ(both.plug.PresetName(0), std::string(255, 'n'));
}

void PutBankPreset(ByteChunk& bank, std::string_view name, std::int32_t length, int used,
                   const ByteChunk& state) {
    bank.Put(length);
    bank.PutBytes(name.data(), static_cast<int>(name.size()));
    bank.Put(static_cast<std::uint8_t>(used));
    if (used != 0) bank.PutBytes(state.Data(), state.Size());
}

TEST(Presets, ABankComesBackByteForByte) {
    PlugAndHost a;
    for (int i = 0; i < 128; ++i) {
        Scramble(a.plug, static_cast<unsigned>(i));
        a.plug.MakePresetFromChunk("Program " + std::to_string(i), State(a.plug));
    }
    a.plug.RestorePreset(0);
    ByteChunk bank;
    EXPECT_TRUE(a.plug.SerializePresets(bank));
    PlugAndHost b;
    b.plug.keepsRecords = false;
    EXPECT_EQ(b.plug.UnserializePresets(bank, 0), bank.Size());
    ByteChunk again;
    b.plug.SerializePresets(again);
    EXPECT_TRUE(again == bank);
    EXPECT_EQ(b.plug.CurrentPreset(), 0);
    EXPECT_TRUE(State(b.plug) == a.plug.GetPreset(0)->chunk) << "the current preset sounds afterwards";
}

TEST(Presets, APresetThatABankLeavesOutKeepsAllButItsName) {
    PlugAndHost both;
    both.plug.FillUnusedPresets("old");
    const ByteChunk old = both.plug.GetPreset(5)->chunk;
    Scramble(both.plug, 10);
    const ByteChunk fresh = State(both.plug);
    ByteChunk bank;
    for (int i = 0; i < 128; ++i)
        PutBankPreset(bank, "new", 3, i == 5 ? 0 : 1, fresh);
    EXPECT_EQ(both.plug.UnserializePresets(bank, 0), bank.Size());
    EXPECT_EQ(both.plug.PresetName(5), "new");
    EXPECT_TRUE(both.plug.GetPreset(5)->initialized);
    EXPECT_TRUE(both.plug.GetPreset(5)->chunk == old);
    EXPECT_TRUE(both.plug.GetPreset(6)->chunk == fresh);
}

TEST(Presets, NamesOfNoBytesReadEmptyAndLongOnesAreCut) {
    PlugAndHost both(Small());
    const ByteChunk state = State(both.plug);
    ByteChunk bank;
    PutBankPreset(bank, "", 0, 1, state);
    PutBankPreset(bank, "", -77, 1, state);
    const std::string longName(1000, 'x');
    PutBankPreset(bank, longName, 1000, 1, state);
    EXPECT_EQ(both.plug.UnserializePresets(bank, 0), bank.Size());
    EXPECT_EQ(both.plug.PresetName(0), "");
    EXPECT_EQ(both.plug.PresetName(1), "");
    EXPECT_EQ(both.plug.PresetName(2), std::string(255, 'x'));
}

TEST(Presets, ANameLengthPastTheEndStopsTheBank) {
    PlugAndHost both(Small());
    both.plug.FillUnusedPresets("old");
    ByteChunk bank;
    PutBankPreset(bank, "ok", 2, 0, {});
    bank.Put(std::numeric_limits<std::int32_t>::max());
    bank.PutBytes("rest", 4);
    EXPECT_EQ(both.plug.UnserializePresets(bank, 0), -1);
    EXPECT_EQ(both.plug.PresetName(0), "ok");
    EXPECT_EQ(both.plug.PresetName(1), "old");
    EXPECT_EQ(both.plug.PresetName(2), "old");
}

TEST(Presets, EveryTruncationOfABankIsToldAndLeavesLaterPresetsAlone) {
    PlugAndHost a(Small());
    for (int i = 0; i < 3; ++i) {
        Scramble(a.plug, static_cast<unsigned>(20 + i));
        a.plug.MakePresetFromChunk("P", State(a.plug));
    }
    ByteChunk bank;
    a.plug.SerializePresets(bank);
    const int presetSize = bank.Size() / 3;
    PlugAndHost b(Small());
    b.plug.FillUnusedPresets("old");
    ByteChunk original;
    b.plug.SerializePresets(original);
    for (int length = 0; length < bank.Size(); ++length) {
        ASSERT_GT(b.plug.UnserializePresets(original, 0), 0);
        ASSERT_EQ(b.plug.UnserializePresets(Cut(bank, length), 0), -1) << length;
        const int whole = length / presetSize;
        for (int i = 0; i < 3; ++i) {
            if (i < whole) {
                ASSERT_TRUE(b.plug.GetPreset(i)->chunk == a.plug.GetPreset(i)->chunk) << length << " " << i;
            } else if (i > whole) {
                ASSERT_EQ(b.plug.PresetName(i), "old") << length << " " << i;
            }
        }
        b.plug.changes.clear();
    }
}

TEST(Presets, MutatedBanksNeverHarm) {
    PlugAndHost both(Small());
    both.plug.keepsRecords = false;
    both.plug.FillUnusedPresets("old");
    ByteChunk bank;
    both.plug.SerializePresets(bank);
    std::mt19937 random(99);
    for (int round = 0; round < 3000; ++round) {
        ByteChunk mutated = bank;
        const int flips = 1 + static_cast<int>(random() % 8);
        for (int i = 0; i < flips; ++i) {
            const auto at = random() % static_cast<unsigned>(mutated.Size());
            mutated.Data()[at] = static_cast<std::uint8_t>(random());
        }
        if (round % 3 == 0) {
            mutated = Cut(mutated, static_cast<int>(random() % static_cast<unsigned>(bank.Size())));
        }
        const int position = both.plug.UnserializePresets(mutated, 0);
        ASSERT_LE(position, mutated.Size());
        for (int id = 0; id < 4; ++id) {
            ASSERT_GE(both.plug.GetParameterValue(id), 0.0);
            ASSERT_LE(both.plug.GetParameterValue(id), 1.0);
        }
    }
}

TEST(Presets, TheHeaderIsEightBytesAndOptional) {
    ByteChunk chunk;
    IPlugBase::PutHeader(chunk);
    ASSERT_EQ(chunk.Size(), 8);
    EXPECT_EQ(std::memcmp(chunk.Data(), "tffp\0\0\1\0", 8), 0);
    std::int32_t version = -1;
    EXPECT_EQ(IPlugBase::SkipHeader(chunk, 0, version), 8);
    EXPECT_EQ(version, 0x00010000);
    EXPECT_EQ(IPlugBase::SkipHeader(Cut(chunk, 7), 0, version), 0) << "too short to be one";
    EXPECT_EQ(version, 0);
    EXPECT_EQ(IPlugBase::SkipHeader(chunk, 1, version), 1);
    EXPECT_EQ(IPlugBase::SkipHeader(chunk, -1, version), -1);
    EXPECT_EQ(IPlugBase::SkipHeader(chunk, 8, version), 8);
}

} // namespace
} // namespace Grimworks
