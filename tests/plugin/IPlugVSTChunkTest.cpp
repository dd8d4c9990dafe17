#include "plugin/IPlugVST.h"

#include "tests/plugin/TestPlug.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

namespace Grimworks {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(Chunks, AProgramChunkIsHeaderAndState) {
    PlugAndHost both;
    const Bytes chunk = both.Chunk(false);
    ASSERT_EQ(chunk.size(), 8U + 5372U);
    EXPECT_EQ(std::memcmp(chunk.data(), "tffp\0\0\1\0", 8), 0);
    std::int32_t count = 0;
    std::memcpy(&count, &chunk[8], 4);
    EXPECT_EQ(count, 671);
}

TEST(Chunks, AProgramChunkComesBackIntoTheCurrentPreset) {
    PlugAndHost a;
    a.plug.SetParameterFromHost(4, 0.25);
    a.plug.payload[511] = 0.5;
    const Bytes chunk = a.Chunk(false);
    PlugAndHost b;
    TestEditor editor;
    b.plug.AttachGraphics(&editor);
    b.plug.FillUnusedPresets("Empty");
    EXPECT_EQ(b.GiveChunk(false, chunk), 1);
    EXPECT_EQ(b.Chunk(false), chunk);
    EXPECT_EQ(b.plug.GetParameterValue(4), 0.25);
    EXPECT_EQ(editor.told.size(), 159U);
    ByteChunk live;
    b.plug.SerializeState(live);
    EXPECT_TRUE(b.plug.GetPreset(0)->chunk == live);
}

TEST(Chunks, AProgramChunkWithoutHeaderLoadsToo) {
    PlugAndHost a;
    a.plug.SetParameterFromHost(4, 0.25);
    Bytes chunk = a.Chunk(false);
    chunk.erase(chunk.begin(), chunk.begin() + 8);
    PlugAndHost b;
    EXPECT_EQ(b.GiveChunk(false, chunk), 1);
    EXPECT_EQ(b.plug.GetParameterValue(4), 0.25);
}

TEST(Chunks, ABankChunkHoldsThePresentStateAndComesBackWhole) {
    PlugAndHost a;
    a.plug.FillUnusedPresets("Empty");
    a.plug.SetParameterFromHost(4, 0.25);
    const Bytes bank = a.Chunk(true);
    EXPECT_EQ(bank.size(), 8U + 128U * (4U + 5U + 1U + 5372U));
    PlugAndHost b;
    EXPECT_EQ(b.GiveChunk(true, bank), 1);
    EXPECT_EQ(b.plug.GetParameterValue(4), 0.25);
    EXPECT_EQ(b.Chunk(true), bank);
}

TEST(Chunks, ABankOfAnOlderVersionOrWithoutHeaderIsReadAsAState) {
    PlugAndHost a;
    a.plug.SetParameterFromHost(4, 0.25);
    Bytes state = a.Chunk(false);
    state[6] = 0; // version 0
    PlugAndHost b;
    EXPECT_EQ(b.GiveChunk(true, state), 1);
    EXPECT_EQ(b.plug.GetParameterValue(4), 0.25);
    PlugAndHost c;
    EXPECT_EQ(c.GiveChunk(true, Bytes(state.begin() + 8, state.end())), 1);
    EXPECT_EQ(c.plug.GetParameterValue(4), 0.25);

    a.plug.FillUnusedPresets("Empty");
    const Bytes bank = a.Chunk(true);
    PlugAndHost d;
    d.plug.FillUnusedPresets("Mine");
    EXPECT_EQ(d.GiveChunk(true, Bytes(bank.begin() + 8, bank.end())), 1) << "long enough for a state";
    EXPECT_EQ(d.plug.PresetName(0), "Mine");
    for (int id = 0; id < 159; ++id) {
        EXPECT_GE(d.plug.GetParameterValue(id), 0.0);
        EXPECT_LE(d.plug.GetParameterValue(id), d.plug.GetParam(id)->Max());
    }
}

TEST(Chunks, EveryTruncationOfAProgramChunkAnswersZero) {
    PlugAndHost a;
    const Bytes chunk = a.Chunk(false);
    PlugAndHost b;
    b.plug.keepsRecords = false;
    for (std::size_t length = 0; length < chunk.size(); ++length) {
        const Bytes cut(chunk.begin(), chunk.begin() + static_cast<std::ptrdiff_t>(length));
        ASSERT_EQ(b.GiveChunk(false, cut), 0) << length;
    }
    EXPECT_EQ(b.GiveChunk(false, chunk), 1);
}

TEST(Chunks, TheHostMayHandBackTheBufferItWasGiven) {
    PlugAndHost both;
    both.plug.SetParameterFromHost(4, 0.25);
    void* data = nullptr;
    const std::intptr_t size = both.Dispatch(PlugOp::GetChunk, 1, 0, &data);
    both.plug.SetParameterFromHost(4, 0.75);
    EXPECT_EQ(both.Dispatch(PlugOp::SetChunk, 1, size, data), 1);
    EXPECT_EQ(both.plug.GetParameterValue(4), 0.25);
    EXPECT_EQ(both.Dispatch(PlugOp::SetChunk, 1, size - 1, data), 0) << "a part of it is copied first";
}

TEST(Chunks, TheTwoKindsHaveBuffersOfTheirOwn) {
    PlugAndHost both;
    void* program = nullptr;
    const std::intptr_t size = both.Dispatch(PlugOp::GetChunk, 1, 0, &program);
    const Bytes before(static_cast<std::uint8_t*>(program), static_cast<std::uint8_t*>(program) + size);
    void* bank = nullptr;
    both.plug.SetParameterFromHost(4, 0.125);
    both.Dispatch(PlugOp::GetChunk, 0, 0, &bank);
    EXPECT_NE(program, bank);
    EXPECT_EQ(std::memcmp(program, before.data(), before.size()), 0);
}

TEST(Chunks, AbsurdSizesAndNullBuffersAnswerZero) {
    PlugAndHost both;
    std::uint8_t byte = 0;
    for (const std::intptr_t size :
         {std::intptr_t{0}, std::intptr_t{-1}, std::numeric_limits<std::intptr_t>::max(),
          std::numeric_limits<std::intptr_t>::min(), std::intptr_t{1} << 40}) {
        EXPECT_EQ(both.Dispatch(PlugOp::SetChunk, 0, size, &byte), 0);
        EXPECT_EQ(both.Dispatch(PlugOp::SetChunk, 1, size, &byte), 0);
    }
    EXPECT_EQ(both.Dispatch(PlugOp::SetChunk, 1, 100, nullptr), 0);
    EXPECT_EQ(both.Dispatch(PlugOp::GetChunk, 1, 0, nullptr), 0);
    EXPECT_TRUE(both.plug.changes.empty());
}

} // namespace
} // namespace Grimworks
