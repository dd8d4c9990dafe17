#include "editor/LICE_Draw.h"

#include "editor/LICE_SubBitmap.h"
#include "tests/editor/Canvas.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Grimworks {
namespace {

using Rows = std::vector<std::string>;

int Channel(LICE_pixel pixel, int shift) {
    return static_cast<int>((pixel >> static_cast<unsigned>(shift)) & 255U);
}

/// What a put pixel must be, in real numbers: `alpha` parts of 1 of the source.
int Mixed(int below, int source, double alpha) {
    return static_cast<int>(std::lround(source * alpha + below * (1.0 - alpha)));
}

TEST(LICE_PutPixel, PixelsAreBlueGreenRedAlphaInMemory) {
    Canvas canvas(1, 1);
    LICE_PutPixel(canvas.Get(), 0, 0, LICE_RGBA(1, 2, 3, 255));
    const auto* bytes = reinterpret_cast<const unsigned char*>((*canvas).getBits());
    EXPECT_EQ(bytes[0], 3);
    EXPECT_EQ(bytes[1], 2);
    EXPECT_EQ(bytes[2], 1);
    EXPECT_EQ(bytes[3], 255);
}

TEST(LICE_PutPixel, AlphaZeroChangesNothingAnd255Overwrites) {
    for (const int below : {0, 1, 100, 254, 255}) {
        const LICE_pixel ground = LICE_RGBA(below, 255 - below, 7, 255);
        Canvas canvas(1, 1, ground);
        LICE_PutPixel(canvas.Get(), 0, 0, LICE_RGBA(200, 100, 50, 0));
        EXPECT_EQ(canvas.At(0, 0), ground);
        LICE_PutPixel(canvas.Get(), 0, 0, LICE_RGBA(200, 100, 50, 255));
        EXPECT_EQ(canvas.At(0, 0), LICE_RGBA(200, 100, 50, 255));
    }
}

TEST(LICE_PutPixel, EveryAlphaMixesToTheNearestValue) {
    for (int alpha = 0; alpha < 256; ++alpha) {
        for (const int below : {0, 13, 128, 255}) {
            Canvas canvas(1, 1, LICE_RGBA(below, below, below, 255));
            LICE_PutPixel(canvas.Get(), 0, 0, LICE_RGBA(255, 77, 0, alpha));
            const LICE_pixel result = canvas.At(0, 0);
            EXPECT_EQ(Channel(result, 16), Mixed(below, 255, alpha / 255.0)) << alpha << ' ' << below;
            EXPECT_EQ(Channel(result, 8), Mixed(below, 77, alpha / 255.0)) << alpha << ' ' << below;
            EXPECT_EQ(Channel(result, 0), Mixed(below, 0, alpha / 255.0)) << alpha << ' ' << below;
            EXPECT_EQ(Channel(result, 24), 255) << "an opaque ground stays opaque";
        }
    }
}

TEST(LICE_PutPixel, WeightCountsOnThePixelsAlpha) {
    // 255 at a quarter is an alpha of 64 (63.75 rounded): 0 + 200 * 64 / 255 = 50.2.
    Canvas canvas(1, 1);
    LICE_PutPixel(canvas.Get(), 0, 0, LICE_RGBA(200, 0, 0, 255), 0.25F);
    EXPECT_EQ(Channel(canvas.At(0, 0), 16), 50);
    // 128 at one half is 64 as well.
    Canvas other(1, 1);
    LICE_PutPixel(other.Get(), 0, 0, LICE_RGBA(200, 0, 0, 128), 0.5F);
    EXPECT_EQ(Channel(other.At(0, 0), 16), 50);
}

TEST(LICE_PutPixel, WithoutItsAlphaThePixelIsOpaque) {
    Canvas canvas(1, 1);
    LICE_PutPixel(canvas.Get(), 0, 0, LICE_RGBA(9, 8, 7, 0), 1.0F, LICE_Copy);
    EXPECT_EQ(canvas.At(0, 0), LICE_RGBA(9, 8, 7, 0));
    LICE_PutPixel(canvas.Get(), 0, 0, LICE_RGBA(109, 108, 107, 0), 0.5F, LICE_Copy);
    // Half of 255 is 127.5, thus 128: 9 + 100 * 128 / 255 = 59.2 and so on.
    EXPECT_EQ(canvas.At(0, 0) & 0xFFFFFFU, LICE_RGBA(59, 58, 57, 0));
}

TEST(LICE_PutPixel, AddStopsAtFull) {
    Canvas canvas(1, 1, LICE_RGBA(100, 200, 0, 255));
    LICE_PutPixel(canvas.Get(), 0, 0, LICE_RGBA(50, 100, 30, 255), 1.0F, IChannelBlend::BlendAdd);
    EXPECT_EQ(canvas.At(0, 0), LICE_RGBA(150, 255, 30, 255));
}

TEST(LICE_PutPixel, AddTakesThePartOfTheAlpha) {
    Canvas canvas(1, 1, LICE_RGBA(100, 100, 100, 255));
    LICE_PutPixel(canvas.Get(), 0, 0, LICE_RGBA(255, 51, 0, 51), 1.0F, IChannelBlend::BlendAdd);
    // 51 is a fifth of 255.
    EXPECT_EQ(canvas.At(0, 0), LICE_RGBA(151, 110, 100, 255));
}

TEST(LICE_PutPixel, MultiplyDarkensByTheColour) {
    Canvas canvas(1, 1, LICE_RGBA(200, 200, 200, 255));
    LICE_PutPixel(canvas.Get(), 0, 0, LICE_RGBA(255, 51, 0, 255), 1.0F, IChannelBlend::BlendMultiply);
    EXPECT_EQ(canvas.At(0, 0), LICE_RGBA(200, 40, 0, 255));
    // A fifth of the way from 40 to 40 * 51 / 255 = 8.
    LICE_PutPixel(canvas.Get(), 0, 0, LICE_RGBA(255, 51, 0, 51), 1.0F, IChannelBlend::BlendMultiply);
    EXPECT_EQ(Channel(canvas.At(0, 0), 8), 34) << "40 * 4 / 5 + 8 / 5 = 33.6";
}

TEST(LICE_PutPixel, AddAndMultiplyWithAlphaZeroChangeNothing) {
    for (const int mode : {IChannelBlend::BlendAdd, IChannelBlend::BlendMultiply}) {
        Canvas canvas(1, 1, kRed);
        LICE_PutPixel(canvas.Get(), 0, 0, LICE_RGBA(1, 2, 3, 0), 1.0F, mode);
        LICE_PutPixel(canvas.Get(), 0, 0, LICE_RGBA(1, 2, 3, 255), 0.0F, mode);
        EXPECT_EQ(canvas.At(0, 0), kRed) << mode;
    }
}

TEST(LICE_PutPixel, AbsurdWeightsAreLimited) {
    Canvas canvas(3, 1);
    LICE_PutPixel(canvas.Get(), 0, 0, kWhite, std::numeric_limits<float>::quiet_NaN());
    LICE_PutPixel(canvas.Get(), 1, 0, kWhite, -5.0F);
    LICE_PutPixel(canvas.Get(), 2, 0, kWhite, std::numeric_limits<float>::infinity());
    EXPECT_EQ(Shape(*canvas), Rows{"..#"});
    EXPECT_EQ(canvas.At(2, 0), kWhite);
}

TEST(LICE_PutPixel, OutsideTheBitmapIsNothing) {
    Canvas canvas(2, 2);
    for (const int far : {-1, 2, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        LICE_PutPixel(canvas.Get(), far, 0, kWhite);
        LICE_PutPixel(canvas.Get(), 0, far, kWhite);
        EXPECT_EQ(LICE_GetPixel(canvas.Get(), far, 0), 0U);
        EXPECT_EQ(LICE_GetPixel(canvas.Get(), 0, far), 0U);
    }
    EXPECT_EQ(Shape(*canvas), (Rows{"..", ".."}));
    EXPECT_TRUE(canvas.IsMarginWhole());
}

TEST(LICE_FillRect, FillsFromTheCornerAsFarAsTold) {
    Canvas canvas(5, 4);
    LICE_FillRect(canvas.Get(), 1, 1, 3, 2, kRed);
    EXPECT_EQ(Shape(*canvas), (Rows{".....", ".###.", ".###.", "....."}));
}

TEST(LICE_FillRect, IsClippedAtEveryEdge) {
    struct Case {
        int x, y, w, h;
        Rows shape;
    };
    const std::vector<Case> cases{
        {-2, 1, 3, 1, {"...", "#..", "..."}},    {2, 1, 9, 1, {"...", "..#", "..."}},
        {1, -5, 1, 6, {".#.", "...", "..."}},    {1, 2, 1, 6, {"...", "...", ".#."}},
        {-9, -9, 99, 99, {"###", "###", "###"}}, {-3, 0, 3, 3, {"...", "...", "..."}},
        {3, 0, 3, 3, {"...", "...", "..."}},     {0, 0, 0, 3, {"...", "...", "..."}},
        {0, 0, 3, -1, {"...", "...", "..."}},
    };
    for (const Case& c : cases) {
        Canvas canvas(3, 3);
        LICE_FillRect(canvas.Get(), c.x, c.y, c.w, c.h, kRed);
        EXPECT_EQ(Shape(*canvas), c.shape) << c.x << ' ' << c.y << ' ' << c.w << ' ' << c.h;
        EXPECT_TRUE(canvas.IsMarginWhole());
    }
}

TEST(LICE_FillRect, FarthestCornersDoNotOverflow) {
    constexpr int kMax = std::numeric_limits<int>::max();
    constexpr int kMin = std::numeric_limits<int>::min();
    Canvas canvas(2, 2);
    LICE_FillRect(canvas.Get(), kMax, kMax, kMax, kMax, kRed);
    LICE_FillRect(canvas.Get(), kMin, kMin, kMax, kMax, kRed);
    EXPECT_EQ(Shape(*canvas), (Rows{"..", ".."}));
    LICE_FillRect(canvas.Get(), 1, 1, kMax, kMax, kRed);
    EXPECT_EQ(Shape(*canvas), (Rows{"..", ".#"}));
    EXPECT_TRUE(canvas.IsMarginWhole());
}

TEST(LICE_FillRect, BlendsEachPixelWithItsOwnGround) {
    Canvas canvas(2, 1);
    LICE_PutPixel(canvas.Get(), 1, 0, kWhite);
    LICE_FillRect(canvas.Get(), 0, 0, 2, 1, LICE_RGBA(255, 0, 0, 51));
    EXPECT_EQ(canvas.At(0, 0), LICE_RGBA(51, 0, 0, 255));
    EXPECT_EQ(canvas.At(1, 0), LICE_RGBA(255, 204, 204, 255));
}

TEST(LICE_Clear, SetsEveryPixelAsItIs) {
    Canvas canvas(3, 2, kWhite);
    LICE_Clear(canvas.Get(), LICE_RGBA(1, 2, 3, 4));
    EXPECT_EQ(PixelsOf(*canvas), std::vector<LICE_pixel>(6, LICE_RGBA(1, 2, 3, 4)));
    EXPECT_TRUE(canvas.IsMarginWhole());
}

/// A source whose pixel at x, y is told by its red and green.
struct Numbered {
    Numbered(int width, int height, int alpha = 255) : bitmap(width, height) {
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x)
                bitmap.getBits()[y * width + x] = LICE_RGBA(x + 1, y + 1, 0, alpha);
        }
    }

    LICE_MemBitmap bitmap;
};

TEST(LICE_Blit, EveryPlaceAndPartGivesThePixelsThatLieInside) {
    Numbered numbered(3, 3);
    LICE_MemBitmap& source = numbered.bitmap;
    for (int x = -4; x <= 5; ++x) {
        for (int y = -4; y <= 5; y += 3) {
            for (int left = -2; left <= 4; ++left) {
                for (int right = left - 1; right <= 5; ++right) {
                    Canvas canvas(4, 4);
                    LICE_Blit(canvas.Get(), &source, x, y, {left, 0, right, 3});
                    for (int row = 0; row < 4; ++row) {
                        for (int column = 0; column < 4; ++column) {
                            const int fromX = column - x + left;
                            const int fromY = row - y;
                            const bool drawn = fromX >= left && fromX < right && fromX >= 0 && fromX < 3 &&
                                               fromY >= 0 && fromY < 3;
                            const LICE_pixel wanted =
                                drawn ? LICE_RGBA(fromX + 1, fromY + 1, 0, 255) : kBlack;
                            ASSERT_EQ(canvas.At(column, row), wanted);
                        }
                    }
                    ASSERT_TRUE(canvas.IsMarginWhole());
                }
            }
        }
    }
}

TEST(LICE_Blit, FarthestPlacesDoNotOverflow) {
    constexpr int kMax = std::numeric_limits<int>::max();
    constexpr int kMin = std::numeric_limits<int>::min();
    Numbered numbered(3, 3);
    LICE_MemBitmap& source = numbered.bitmap;
    Canvas canvas(2, 2);
    for (const int far : {kMin, kMax}) {
        LICE_Blit(canvas.Get(), &source, far, 0, {0, 0, 3, 3});
        LICE_Blit(canvas.Get(), &source, 0, far, {0, 0, 3, 3});
        LICE_Blit(canvas.Get(), &source, 0, 0, {far, far, far, far});
    }
    EXPECT_EQ(Shape(*canvas), (Rows{"..", ".."}));
    LICE_Blit(canvas.Get(), &source, 0, 0, {0, 0, kMax, kMax});
    EXPECT_EQ(canvas.At(1, 1), LICE_RGBA(2, 2, 0, 255));
    LICE_Clear(canvas.Get(), kBlack);
    LICE_Blit(canvas.Get(), &source, 0, 0, {kMin, kMin, kMax, kMax});
    EXPECT_EQ(Shape(*canvas), (Rows{"..", ".."})) << "the source lies far to the right of the place";
    EXPECT_TRUE(canvas.IsMarginWhole());
}

TEST(LICE_Blit, BlendsWithTheSourcesAlphaAndTheWeight) {
    LICE_MemBitmap source(2, 1);
    source.getBits()[0] = LICE_RGBA(255, 255, 255, 102);
    source.getBits()[1] = LICE_RGBA(255, 255, 255, 0);
    Canvas canvas(2, 1);
    LICE_Blit(canvas.Get(), &source, 0, 0, {0, 0, 2, 1}, 0.5F);
    EXPECT_EQ(canvas.At(0, 0), LICE_RGBA(51, 51, 51, 255)) << "102 / 2 = 51 parts of 255";
    EXPECT_EQ(canvas.At(1, 0), kBlack);
}

TEST(LICE_Blit, OneTranslucentPixelAmongOpaqueOnesIsBlendedWhereverItStands) {
    constexpr int kWidth = 21;
    for (int place = 0; place < kWidth; ++place) {
        LICE_MemBitmap source(kWidth, 1);
        for (int x = 0; x < kWidth; ++x)
            source.getBits()[x] = x == place ? LICE_RGBA(255, 255, 255, 51) : LICE_RGBA(x, 100, 0, 255);
        Canvas canvas(kWidth, 1);
        LICE_Blit(canvas.Get(), &source, 0, 0, {0, 0, kWidth, 1});
        for (int x = 0; x < kWidth; ++x) {
            EXPECT_EQ(canvas.At(x, 0), x == place ? LICE_RGBA(51, 51, 51, 255) : LICE_RGBA(x, 100, 0, 255));
        }
        EXPECT_TRUE(canvas.IsMarginWhole());
    }
}

TEST(LICE_Blit, CopyTakesPixelsAsTheyAre) {
    Numbered numbered(2, 1, 17);
    LICE_MemBitmap& source = numbered.bitmap;
    Canvas canvas(2, 1);
    LICE_Blit(canvas.Get(), &source, 0, 0, {0, 0, 2, 1}, 1.0F, LICE_Copy);
    EXPECT_EQ(canvas.At(1, 0), LICE_RGBA(2, 1, 0, 17));
}

TEST(LICE_Blit, AddsAndMultiplies) {
    LICE_MemBitmap source(1, 1);
    source.getBits()[0] = LICE_RGBA(51, 255, 0, 255);
    Canvas canvas(2, 1, LICE_RGBA(100, 100, 100, 255));
    LICE_Blit(canvas.Get(), &source, 0, 0, {0, 0, 1, 1}, 1.0F, IChannelBlend::BlendAdd);
    LICE_Blit(canvas.Get(), &source, 1, 0, {0, 0, 1, 1}, 1.0F, IChannelBlend::BlendMultiply);
    EXPECT_EQ(canvas.At(0, 0), LICE_RGBA(151, 255, 100, 255));
    EXPECT_EQ(canvas.At(1, 0), LICE_RGBA(20, 100, 0, 255));
}

TEST(LICE_ScaledBlit, TwiceTheSizeDoublesEveryPixel) {
    Numbered numbered(2, 2);
    LICE_MemBitmap& source = numbered.bitmap;
    Canvas canvas(4, 4);
    LICE_ScaledBlit(canvas.Get(), &source, {0, 0, 4, 4}, {0, 0, 2, 2});
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 4; ++x)
            EXPECT_EQ(canvas.At(x, y), LICE_RGBA(x / 2 + 1, y / 2 + 1, 0, 255));
    }
}

TEST(LICE_ScaledBlit, AThirdOfTheSizeTakesTheMiddles) {
    Numbered numbered(6, 3);
    LICE_MemBitmap& source = numbered.bitmap;
    Canvas canvas(2, 1);
    LICE_ScaledBlit(canvas.Get(), &source, {0, 0, 2, 1}, {0, 0, 6, 3});
    EXPECT_EQ(canvas.At(0, 0), LICE_RGBA(2, 2, 0, 255));
    EXPECT_EQ(canvas.At(1, 0), LICE_RGBA(5, 2, 0, 255));
}

TEST(LICE_ScaledBlit, ClippingMovesNoPixel) {
    Numbered numbered(5, 5);
    LICE_MemBitmap& source = numbered.bitmap;
    Canvas whole(20, 20);
    LICE_ScaledBlit(whole.Get(), &source, {3, 4, 17, 15}, {0, 0, 5, 5});
    Canvas part(6, 6);
    LICE_ScaledBlit(part.Get(), &source, {3 - 7, 4 - 8, 17 - 7, 15 - 8}, {0, 0, 5, 5});
    for (int y = 0; y < 6; ++y) {
        for (int x = 0; x < 6; ++x)
            EXPECT_EQ(part.At(x, y), whole.At(x + 7, y + 8));
    }
    EXPECT_TRUE(part.IsMarginWhole());
}

TEST(LICE_ScaledBlit, WhatLiesOutsideTheSourceIsLeftOut) {
    Numbered numbered(2, 1);
    LICE_MemBitmap& source = numbered.bitmap;
    Canvas canvas(4, 1);
    LICE_ScaledBlit(canvas.Get(), &source, {0, 0, 4, 1}, {-1, 0, 3, 1});
    EXPECT_EQ(Shape(*canvas), Rows{".##."});
}

TEST(LICE_DrawRect, DrawsEachPixelOfTheOutlineOnce) {
    Canvas canvas(5, 4);
    LICE_DrawRect(canvas.Get(), 0, 0, 4, 4, LICE_RGBA(255, 0, 0, 51));
    EXPECT_EQ(Shape(*canvas), (Rows{"####.", "#..#.", "#..#.", "####."}));
    for (const auto& [x, y] : {std::pair{0, 0}, {3, 0}, {0, 3}, {3, 3}, {1, 0}})
        EXPECT_EQ(canvas.At(x, y), LICE_RGBA(51, 0, 0, 255)) << x << ' ' << y;
}

TEST(LICE_DrawRect, ThinRectanglesAreLines) {
    const LICE_pixel faint = LICE_RGBA(255, 0, 0, 51);
    for (const auto& [w, h] : {std::pair{1, 3}, {3, 1}, {1, 1}, {2, 2}}) {
        Canvas canvas(3, 3);
        LICE_DrawRect(canvas.Get(), 0, 0, w, h, faint);
        for (int y = 0; y < 3; ++y) {
            for (int x = 0; x < 3; ++x)
                EXPECT_EQ(canvas.At(x, y), x < w && y < h ? LICE_RGBA(51, 0, 0, 255) : kBlack);
        }
    }
}

TEST(LICE_Draw, EmptyAndMissingBitmapsTakeEveryCall) {
    LICE_MemBitmap empty;
    Numbered numbered(2, 2);
    LICE_MemBitmap& source = numbered.bitmap;
    Canvas canvas(2, 2);
    for (LICE_IBitmap* target : {static_cast<LICE_IBitmap*>(nullptr), static_cast<LICE_IBitmap*>(&empty)}) {
        LICE_PutPixel(target, 0, 0, kRed);
        LICE_Clear(target, kRed);
        LICE_FillRect(target, 0, 0, 5, 5, kRed);
        LICE_Line(target, 0, 0, 5, 5, kRed);
        LICE_Line(target, 0, 0, 5, 5, kRed, 1.0F, LICE_UseAlpha, true);
        LICE_DrawRect(target, 0, 0, 5, 5, kRed);
        LICE_FillTriangle(target, 0, 0, 5, 5, 0, 5, kRed);
        LICE_Blit(target, &source, 0, 0, {0, 0, 2, 2});
        LICE_ScaledBlit(target, &source, {0, 0, 2, 2}, {0, 0, 2, 2});
        LICE_Blit(canvas.Get(), target, 0, 0, {0, 0, 2, 2});
        LICE_ScaledBlit(canvas.Get(), target, {0, 0, 2, 2}, {0, 0, 2, 2});
        EXPECT_EQ(LICE_GetPixel(target, 0, 0), 0U);
    }
    EXPECT_EQ(empty.getBits(), nullptr);
    EXPECT_EQ(Shape(*canvas), (Rows{"..", ".."}));
}

TEST(LICE_SubBitmap, ShowsAPartOfTheWhole) {
    LICE_MemBitmap whole(10, 10);
    LICE_Clear(&whole, kBlack);
    LICE_SubBitmap part(whole, {3, 4, 6, 9});
    EXPECT_EQ(part.getWidth(), 3);
    EXPECT_EQ(part.getHeight(), 5);
    EXPECT_EQ(part.Left(), 3);
    EXPECT_EQ(part.Top(), 4);
    LICE_FillRect(&part, -5, 1, 50, 2, kRed);
    for (int y = 0; y < 10; ++y) {
        for (int x = 0; x < 10; ++x) {
            const bool drawn = x >= 3 && x < 6 && y >= 5 && y < 7;
            EXPECT_EQ(LICE_GetPixel(&whole, x, y), drawn ? kRed : kBlack);
        }
    }
}

TEST(LICE_SubBitmap, IsLimitedToTheWhole) {
    LICE_MemBitmap whole(4, 4);
    LICE_SubBitmap part(whole, {-2, 3, 9, 9});
    EXPECT_EQ(part.getWidth(), 4);
    EXPECT_EQ(part.getHeight(), 1);
    LICE_SubBitmap outside(whole, {4, 0, 9, 9});
    EXPECT_EQ(outside.getBits(), nullptr);
    LICE_MemBitmap empty;
    LICE_SubBitmap ofNothing(empty, {0, 0, 9, 9});
    EXPECT_EQ(ofNothing.getBits(), nullptr);
    EXPECT_FALSE(part.resize(2, 2));
}

} // namespace
} // namespace Grimworks
