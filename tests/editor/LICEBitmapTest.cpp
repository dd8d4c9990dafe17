#include "editor/LICE_MemBitmap.h"
#include "editor/LICE_SysBitmap.h"
#include "tests/editor/Canvas.h"

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

TEST(LICE_MemBitmap, StartsEmptyOrTransparentBlack) {
    LICE_MemBitmap empty;
    EXPECT_EQ(empty.getBits(), nullptr);
    EXPECT_EQ(empty.getWidth(), 0);
    EXPECT_FALSE(empty.isFlipped());
    EXPECT_EQ(empty.getDC(), nullptr);
    EXPECT_EQ(empty.Extended(1, nullptr), nullptr);
    LICE_MemBitmap bitmap(3, 2);
    EXPECT_EQ(bitmap.getRowSpan(), 3);
    EXPECT_EQ(PixelsOf(bitmap), std::vector<LICE_pixel>(6, 0U));
}

TEST(LICE_MemBitmap, KeepsItsMemoryWhenTheNewSizeFits) {
    LICE_MemBitmap bitmap(10, 10);
    const LICE_pixel* const before = bitmap.getBits();
    ASSERT_TRUE(bitmap.resize(4, 20));
    EXPECT_EQ(bitmap.getBits(), before);
    EXPECT_EQ(bitmap.getWidth(), 4);
    EXPECT_EQ(bitmap.getHeight(), 20);
    ASSERT_TRUE(bitmap.resize(10, 10));
    EXPECT_EQ(bitmap.getBits(), before);
}

TEST(LICE_MemBitmap, SizeZeroFrees) {
    LICE_MemBitmap bitmap(10, 10);
    EXPECT_TRUE(bitmap.resize(0, 7));
    EXPECT_EQ(bitmap.getBits(), nullptr);
    EXPECT_EQ(bitmap.getWidth(), 0);
    EXPECT_EQ(bitmap.getHeight(), 0);
}

TEST(LICE_MemBitmap, ImpossibleSizesLeaveItEmpty) {
    constexpr int kTooMuch = LICE_MemBitmap::kMaxSize + 1;
    for (const auto& [width, height] : {std::pair{-1, 5}, {5, -1}, {kTooMuch, 1}, {1, kTooMuch}}) {
        LICE_MemBitmap bitmap(10, 10);
        EXPECT_FALSE(bitmap.resize(width, height));
        EXPECT_EQ(bitmap.getBits(), nullptr);
        EXPECT_EQ(bitmap.getWidth(), 0);
        LICE_FillRect(&bitmap, 0, 0, 5, 5, kRed);
        EXPECT_EQ(LICE_GetPixel(&bitmap, 0, 0), 0U) << "draw operations do nothing";
    }
}

TEST(LICE_SysBitmap, HoldsPixelsLikeAnyBitmap) {
    LICE_SysBitmap bitmap(4, 3);
    ASSERT_NE(bitmap.getBits(), nullptr);
    EXPECT_EQ(bitmap.getWidth(), 4);
    EXPECT_EQ(bitmap.getHeight(), 3);
    EXPECT_EQ(bitmap.getRowSpan(), 4) << "rows follow each other without gaps";
    LICE_FillRect(&bitmap, 1, 1, 2, 1, kRed);
    EXPECT_EQ(LICE_GetPixel(&bitmap, 2, 1), kRed);
}

#ifndef _WIN32
TEST(LICE_SysBitmap, PictureMovesIntoLentMemoryAndBack) {
    LICE_SysBitmap bitmap(4, 3);
    LICE_PutPixel(&bitmap, 3, 2, kRed);
    std::vector<LICE_pixel> lent(12, 0U);
    ASSERT_TRUE(bitmap.Lend(lent.data()));
    EXPECT_TRUE(bitmap.IsLent());
    EXPECT_EQ(bitmap.getBits(), lent.data());
    EXPECT_EQ(lent[11], kRed);
    LICE_PutPixel(&bitmap, 0, 0, kBlue);
    EXPECT_EQ(lent[0], kBlue);
    bitmap.TakeBack();
    EXPECT_FALSE(bitmap.IsLent());
    EXPECT_NE(bitmap.getBits(), lent.data());
    EXPECT_EQ(LICE_GetPixel(&bitmap, 0, 0), kBlue);
    EXPECT_EQ(LICE_GetPixel(&bitmap, 3, 2), kRed);
    bitmap.TakeBack();
}

TEST(LICE_SysBitmap, NewSizeGoesBackToItsOwnMemory) {
    LICE_SysBitmap bitmap(4, 3);
    std::vector<LICE_pixel> lent(12, 0U);
    ASSERT_TRUE(bitmap.Lend(lent.data()));
    EXPECT_TRUE(bitmap.resize(4, 3));
    EXPECT_TRUE(bitmap.IsLent()) << "the size is the same";
    EXPECT_TRUE(bitmap.resize(40, 30));
    EXPECT_FALSE(bitmap.IsLent());
    LICE_FillRect(&bitmap, 0, 0, 40, 30, kRed);
    EXPECT_EQ(lent, std::vector<LICE_pixel>(12, 0U));
}

TEST(LICE_SysBitmap, NothingIsLentToAnEmptyBitmapOrFromNowhere) {
    LICE_SysBitmap empty;
    LICE_pixel pixel = 0;
    EXPECT_FALSE(empty.Lend(&pixel));
    EXPECT_FALSE(empty.IsLent());
    LICE_SysBitmap bitmap(1, 1);
    EXPECT_FALSE(bitmap.Lend(nullptr));
    EXPECT_FALSE(bitmap.IsLent());
}
#endif

} // namespace
} // namespace Grimworks
