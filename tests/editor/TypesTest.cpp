#include "editor/Types.h"

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

TEST(IRECT, AllZeroIsEmptyAndHoldsNoPoint) {
    const IRECT empty;
    EXPECT_TRUE(empty.Empty());
    EXPECT_FALSE(empty.Contains(0, 0));
    EXPECT_FALSE(IRECT(0, 0, 1, 1).Empty());
}

TEST(IRECT, LeftAndTopBelongToItRightAndBottomDoNot) {
    const IRECT rect(2, 3, 5, 7);
    EXPECT_TRUE(rect.Contains(2, 3));
    EXPECT_TRUE(rect.Contains(4, 6));
    EXPECT_FALSE(rect.Contains(5, 6));
    EXPECT_FALSE(rect.Contains(4, 7));
    EXPECT_FALSE(rect.Contains(1, 3));
    EXPECT_EQ(rect.W(), 3);
    EXPECT_EQ(rect.H(), 4);
    EXPECT_EQ(rect.MW(), 3);
    EXPECT_EQ(rect.MH(), 5);
}

TEST(IRECT, IntersectionIsWhatBothHave) {
    EXPECT_EQ(IRECT(0, 0, 5, 5).Intersect({3, 2, 9, 4}), IRECT(3, 2, 5, 4));
    EXPECT_EQ(IRECT(0, 0, 5, 5).Intersect({5, 0, 9, 5}), IRECT()) << "they only touch";
    EXPECT_EQ(IRECT(0, 0, 5, 5).Intersect({}), IRECT());
    EXPECT_TRUE(IRECT(0, 0, 5, 5).Intersects({4, 4, 9, 9}));
    EXPECT_FALSE(IRECT(0, 0, 5, 5).Intersects({4, 5, 9, 9}));
}

TEST(IRECT, UnionIgnoresAnEmptyOne) {
    const IRECT rect(2, 3, 5, 7);
    EXPECT_EQ(rect.Union({}), rect);
    EXPECT_EQ(IRECT().Union(rect), rect);
    EXPECT_EQ(rect.Union({8, 1, 9, 4}), IRECT(2, 1, 9, 7));
}

TEST(IBitmap, FrameSizeIsThePartOfOneFrame) {
    IBitmap bitmap;
    bitmap.W = 30;
    bitmap.H = 90;
    EXPECT_EQ(bitmap.FrameWidth(), 30);
    EXPECT_EQ(bitmap.FrameHeight(), 90);
    bitmap.N = 3;
    EXPECT_EQ(bitmap.FrameHeight(), 30);
    bitmap.framesAreHorizontal = true;
    EXPECT_EQ(bitmap.FrameWidth(), 10);
    EXPECT_EQ(bitmap.FrameHeight(), 90);
}

TEST(IText, StartsAsBlackVerdanaOfTwelvePixels) {
    const IText text;
    EXPECT_EQ(text.font, "Verdana");
    EXPECT_EQ(text.size, 12);
    EXPECT_EQ(text.style, IText::StyleNormal);
    EXPECT_EQ(text.orientation, 0);
    EXPECT_EQ(text.cached, nullptr);
}

} // namespace
} // namespace Grimworks
