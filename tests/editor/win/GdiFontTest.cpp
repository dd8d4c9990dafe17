#include "editor/win/GdiFont.h"

#include "editor/EmbeddedFiles.h"
#include "editor/LICE_Draw.h"
#include "editor/LICE_SubBitmap.h"
#include "editor/LICE_SysBitmap.h"
#include "editor/win/WinModule.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>
#include <thread>

namespace Grimworks {

namespace {

constexpr LICE_pixel kRed = LICE_RGBA(255, 0, 0, 255);

/// Rectangle of the pixels that are not black.
IRECT Drawn(LICE_IBitmap& bitmap) {
    IRECT drawn;
    for (int y = 0; y < bitmap.getHeight(); ++y) {
        for (int x = 0; x < bitmap.getWidth(); ++x) {
            if ((LICE_GetPixel(&bitmap, x, y) & 0xFFFFFFU) != 0) drawn = drawn.Union({x, y, x + 1, y + 1});
        }
    }
    return drawn;
}

std::vector<LICE_pixel> ColoursOf(LICE_IBitmap& bitmap) {
    std::vector<LICE_pixel> pixels;
    for (int y = 0; y < bitmap.getHeight(); ++y) {
        for (int x = 0; x < bitmap.getWidth(); ++x)
            pixels.push_back(LICE_GetPixel(&bitmap, x, y) & 0xFFFFFFU);
    }
    return pixels;
}

int SumOf(const LICE_Glyph& glyph) {
    return std::accumulate(glyph.coverage.begin(), glyph.coverage.end(), 0);
}

} // namespace

TEST(GdiFont, ASolidLetterCoversItsPixelsWholly) {
    GdiGlyphs glyphs(IText(100, IColor()));
    ASSERT_TRUE(glyphs.IsUsable());
    const LICE_Glyph bar = glyphs.Render(U'|');
    EXPECT_EQ(bar.coverage.size(),
              static_cast<std::size_t>(bar.width) * static_cast<std::size_t>(bar.height));
    EXPECT_EQ(*std::max_element(bar.coverage.begin(), bar.coverage.end()), 255);
    EXPECT_GT(bar.height, 80);
    EXPECT_LT(bar.width, 20);
    EXPECT_GT(bar.advanceX, bar.width);
    EXPECT_EQ(bar.advanceY, 0);
}

TEST(GdiFont, ABlankHasAWidthAndNoPicture) {
    GdiGlyphs glyphs(IText(14, IColor()));
    const LICE_Glyph blank = glyphs.Render(U' ');
    EXPECT_GT(blank.advanceX, 0);
    EXPECT_TRUE(blank.coverage.empty());
}

TEST(GdiFont, LinesAreAsHighAsTheFontsDesignerMeant) {
    // 1.171875 of the em, as the font's header has it: 1900 + 500 of 2048.
    for (const int size : {10, 12, 14, 20, 64}) {
        const GdiGlyphs glyphs(IText(size, IColor()));
        EXPECT_EQ(glyphs.LineHeight(), static_cast<int>(size * 1.171875 + 0.5)) << size;
    }
}

TEST(GdiFont, CapitalsStandOnTheDesignedBaseline) {
    // The baseline is 1900 of 2048 of the em below the top, and an H stands on it.
    GdiGlyphs glyphs(IText(64, IColor()));
    const LICE_Glyph letter = glyphs.Render(U'H');
    EXPECT_NEAR(letter.top + letter.height, 64.0 * 1900 / 2048, 1.0);
}

TEST(GdiFont, BoldCoversMoreThanNormal) {
    GdiGlyphs normal(IText(40, IColor()));
    GdiGlyphs bold(IText(40, IColor(), IText::AlignNear, IText::StyleBold));
    EXPECT_GT(SumOf(bold.Render(U'H')), SumOf(normal.Render(U'H')) * 5 / 4);
}

TEST(GdiFont, AQuarterTurnRunsUpwards) {
    IText text(30, IColor());
    text.orientation = 90;
    GdiGlyphs turned(text);
    text.orientation = 0;
    GdiGlyphs level(text);
    const LICE_Glyph up = turned.Render(U'L');
    const LICE_Glyph straight = level.Render(U'L');
    EXPECT_EQ(up.advanceX, 0);
    EXPECT_EQ(up.advanceY, -straight.advanceX);
    EXPECT_NEAR(up.width, straight.height, 2);
    EXPECT_NEAR(up.height, straight.width, 2);
    EXPECT_EQ(turned.LineStep().x, level.LineHeight());
    EXPECT_EQ(turned.LineStep().y, 0);
}

TEST(GdiFont, SizesThatNoFontHasGiveNone) {
    EXPECT_EQ(LICE_MakeFont(IText(0, IColor())), nullptr);
    EXPECT_EQ(LICE_MakeFont(IText(-12, IColor())), nullptr);
    EXPECT_EQ(LICE_MakeFont(IText(100000, IColor())), nullptr);
}

TEST(GdiFont, CharactersAreDrawnOnceAndKept) {
    LICE_CachedFont font(std::make_unique<GdiGlyphs>(IText(14, IColor())));
    const LICE_Glyph* first = font.GlyphOf(U'g');
    EXPECT_EQ(font.GlyphOf(U'g'), first);
    EXPECT_EQ(font.GlyphCount(), 1);
    EXPECT_NE(font.GlyphOf(U'\u00E9'), font.GlyphOf(U'e'));
}

TEST(GdiFont, MeasuresWhatItDraws) {
    const auto font = LICE_MakeFont(IText(16, IColor()));
    ASSERT_NE(font, nullptr);
    font->SetTextColor(kRed);
    IRECT size(0, 0, 0, 0);
    font->DrawText(nullptr, "Kick drum", size, LICE_TextCalcRect);
    LICE_SysBitmap bitmap(200, 40);
    IRECT place(0, 0, 200, 40);
    font->DrawText(&bitmap, "Kick drum", place, LICE_TextNative);
    const IRECT drawn = Drawn(bitmap);
    EXPECT_GE(drawn.L, 0);
    EXPECT_LE(drawn.R, size.R);
    EXPECT_GT(drawn.R, size.R - 4);
    EXPECT_LE(drawn.B, size.B);
}

TEST(GdiFont, WhereWineIsTheSystemNeverDrawsTheTextItself) {
    ASSERT_TRUE(RunsUnderWine()) << "these tests run under Wine";
    const auto font = LICE_MakeFont(IText(16, IColor()));
    font->SetTextColor(kRed);
    LICE_SysBitmap asked(100, 30);
    LICE_SysBitmap cached(100, 30);
    IRECT place(0, 0, 100, 30);
    font->DrawText(&asked, "Thud", place, LICE_TextNative);
    font->DrawText(&cached, "Thud", place, 0);
    EXPECT_FALSE(Drawn(cached).Empty());
    EXPECT_EQ(ColoursOf(asked), ColoursOf(cached));
    GdiGlyphs glyphs(IText(16, IColor()));
    LICE_SysBitmap untouched(100, 30);
    EXPECT_FALSE(glyphs.DrawNative(untouched, U"Thud", place, kRed, 0));
    EXPECT_TRUE(Drawn(untouched).Empty());
}

TEST(GdiFont, BothWaysPutTheSamePixelsInThePlace) {
    GdiGlyphs glyphs(IText(20, IColor()));
    const auto font = LICE_MakeFont(IText(20, IColor()));
    font->SetTextColor(kRed);
    for (const unsigned align : {0U, unsigned{LICE_TextCenter}, unsigned{LICE_TextRight}}) {
        LICE_SysBitmap native(160, 60);
        LICE_SysBitmap cached(160, 60);
        IRECT place(10, 5, 150, 55);
        ASSERT_TRUE(glyphs.DrawInContext(native, U"Bass\nHH", place, kRed, align));
        font->DrawText(&cached, "Bass\nHH", place, align);
        const IRECT one = Drawn(native);
        const IRECT other = Drawn(cached);
        EXPECT_NEAR(one.L, other.L, 1) << align;
        EXPECT_NEAR(one.R, other.R, 1) << align;
        EXPECT_EQ(one.T, other.T) << align;
        EXPECT_EQ(one.B, other.B) << align;
    }
}

TEST(GdiFont, TheSystemDrawsInsideAPartOfABitmapOnly) {
    GdiGlyphs glyphs(IText(40, IColor()));
    LICE_SysBitmap whole(200, 100);
    LICE_SubBitmap part(whole, {50, 20, 90, 45});
    ASSERT_TRUE(glyphs.DrawInContext(part, U"MMMM", {0, 0, 200, 100}, kRed, 0));
    const IRECT drawn = Drawn(whole);
    EXPECT_FALSE(drawn.Empty());
    EXPECT_GE(drawn.L, 50);
    EXPECT_EQ(drawn.R, 90);
    EXPECT_GE(drawn.T, 20);
    EXPECT_EQ(drawn.B, 45);
}

TEST(GdiFont, TheSystemLeavesTurnedTextsAndPlainMemoryAlone) {
    IText text(20, IColor());
    LICE_MemBitmap memory(50, 50);
    EXPECT_FALSE(GdiGlyphs(text).DrawInContext(memory, U"H", {0, 0, 50, 50}, kRed, 0));
    LICE_SysBitmap bitmap(50, 50);
    text.orientation = 90;
    EXPECT_FALSE(GdiGlyphs(text).DrawInContext(bitmap, U"H", {0, 0, 50, 50}, kRed, 0));
    EXPECT_TRUE(Drawn(bitmap).Empty());
}

TEST(LICESysBitmap, WhatTheSystemDrawsIsInItsPixels) {
    LICE_SysBitmap bitmap(40, 30);
    auto* context = static_cast<HDC>(bitmap.getDC());
    ASSERT_NE(context, nullptr);
    const RECT rect{10, 5, 20, 8};
    HBRUSH brush = CreateSolidBrush(RGB(10, 20, 30));
    FillRect(context, &rect, brush);
    DeleteObject(brush);
    GdiFlush();
    EXPECT_EQ(bitmap.getRowSpan(), 40);
    EXPECT_EQ(LICE_GetPixel(&bitmap, 10, 5) & 0xFFFFFFU, 0x0A141EU);
    EXPECT_EQ(LICE_GetPixel(&bitmap, 19, 7) & 0xFFFFFFU, 0x0A141EU);
    EXPECT_EQ(LICE_GetPixel(&bitmap, 20, 7) & 0xFFFFFFU, 0U);
    EXPECT_EQ(LICE_GetPixel(&bitmap, 10, 8) & 0xFFFFFFU, 0U);
}

TEST(LICESysBitmap, AnotherThreadGetsAContextOfItsOwn) {
    LICE_SysBitmap bitmap;
    std::thread maker([&] {
        bitmap.resize(20, 20);
        EXPECT_NE(bitmap.getDC(), nullptr);
    });
    maker.join();
    auto* context = static_cast<HDC>(bitmap.getDC());
    ASSERT_NE(context, nullptr);
    EXPECT_NE(SetPixelV(context, 3, 4, RGB(255, 0, 0)), FALSE);
    GdiFlush();
    EXPECT_EQ(LICE_GetPixel(&bitmap, 3, 4) & 0xFFFFFFU, 0xFF0000U);
}

TEST(LICESysBitmap, ASizeThatCannotBeLeavesItEmpty) {
    LICE_SysBitmap bitmap(20, 20);
    EXPECT_FALSE(bitmap.resize(-1, 5));
    EXPECT_EQ(bitmap.getBits(), nullptr);
    EXPECT_EQ(bitmap.getDC(), nullptr);
    EXPECT_EQ(bitmap.getWidth(), 0);
    EXPECT_FALSE(bitmap.resize(32769, 1));
    EXPECT_TRUE(bitmap.resize(8, 9));
    EXPECT_EQ(bitmap.getHeight(), 9);
    EXPECT_TRUE(bitmap.resize(0, 0));
    EXPECT_EQ(bitmap.getBits(), nullptr);
    LICE_FillRect(&bitmap, 0, 0, 5, 5, kRed);
    EXPECT_FALSE(bitmap.Lend(nullptr));
    EXPECT_FALSE(bitmap.IsLent());
}

TEST(EmbeddedFiles, EveryBitmapOfTheTableIsAPngResourceUnderItsId) {
    for (const BitmapInfo& info : BitmapTable()) {
        const auto file = EmbeddedBitmap(info.id);
        ASSERT_GE(file.size(), 8U) << info.id << " " << info.file;
        EXPECT_EQ(file[1], 'P') << info.id;
        EXPECT_EQ(file[2], 'N') << info.id;
        EXPECT_NE(FindResourceA(ThisModule(), MAKEINTRESOURCEA(info.id), "PNG"), nullptr) << info.id;
    }
}

TEST(EmbeddedFiles, IdsWithoutAFileGiveNothing) {
    for (const int id : {0, -1, 7, 65536, 1000000})
        EXPECT_TRUE(EmbeddedBitmap(id).empty()) << id;
    EXPECT_FALSE(EmbeddedFont(false).empty());
    EXPECT_FALSE(EmbeddedFont(true).empty());
}

} // namespace Grimworks
