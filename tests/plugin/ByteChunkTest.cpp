#include "plugin/ByteChunk.h"

#include <gtest/gtest.h>

#include <limits>

namespace Grimworks {
namespace {

TEST(ByteChunk, NumbersStandLittleEndianAndReadBack) {
    ByteChunk chunk;
    chunk.Put(std::int32_t{0x01020304});
    chunk.Put(-0.1);
    chunk.Put(std::uint8_t{200});
    ASSERT_EQ(chunk.Size(), 13);
    EXPECT_EQ(chunk.Data()[0], 4);
    EXPECT_EQ(chunk.Data()[3], 1);

    std::int32_t number = 0;
    double real = 0.0;
    std::uint8_t byte = 0;
    EXPECT_EQ(chunk.Get(number, 0), 4);
    EXPECT_EQ(chunk.Get(real, 4), 12);
    EXPECT_EQ(chunk.Get(byte, 12), 13);
    EXPECT_EQ(number, 0x01020304);
    EXPECT_EQ(real, -0.1);
    EXPECT_EQ(byte, 200);
}

TEST(ByteChunk, AReadPastTheEndGivesMinusOneAndKeepsTheNumber) {
    ByteChunk chunk;
    chunk.Put(1.0);
    double real = 7.0;
    EXPECT_EQ(chunk.Get(real, 1), -1);
    EXPECT_EQ(chunk.Get(real, 8), -1);
    EXPECT_EQ(chunk.Get(real, -1), -1);
    EXPECT_EQ(chunk.Get(real, std::numeric_limits<int>::max()), -1);
    EXPECT_EQ(chunk.Get(real, std::numeric_limits<int>::min()), -1);
    EXPECT_EQ(real, 7.0);
    EXPECT_EQ(chunk.Get(real, 0), 8);
    EXPECT_EQ(real, 1.0);
}

TEST(ByteChunk, OnceMinusOneAlwaysMinusOne) {
    ByteChunk chunk;
    chunk.Put(1.0);
    double real = 0.0;
    int position = chunk.Get(real, 4);
    for (int i = 0; i < 3; ++i)
        position = chunk.Get(real, position);
    EXPECT_EQ(position, -1);
}

TEST(ByteChunk, BytesAndSkips) {
    ByteChunk chunk;
    chunk.PutBytes("abc", 3);
    chunk.PutBytes("abc", 0);
    chunk.PutBytes("abc", -5);
    chunk.PutBytes(nullptr, 5);
    EXPECT_EQ(chunk.Size(), 3);
    char text[4] = {};
    EXPECT_EQ(chunk.GetBytes(text, 3, 0), 3);
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(chunk.GetBytes(text, 0, 3), 3);
    EXPECT_EQ(chunk.GetBytes(text, -1, 0), -1);
    EXPECT_EQ(chunk.Skip(3, 0), 3);
    EXPECT_EQ(chunk.Skip(4, 0), -1);
    EXPECT_EQ(chunk.Skip(std::numeric_limits<int>::max(), 1), -1);
    EXPECT_EQ(chunk.Skip(-1, 1), -1);
}

TEST(ByteChunk, ClearEmptiesAndAssignReplaces) {
    ByteChunk chunk;
    chunk.Put(1.0);
    ByteChunk other;
    other.Assign(chunk.Bytes());
    EXPECT_TRUE(other == chunk);
    chunk.Clear();
    EXPECT_TRUE(chunk.IsEmpty());
    EXPECT_FALSE(other == chunk);
    EXPECT_EQ(chunk.Skip(0, 0), 0);
}

} // namespace
} // namespace Grimworks
