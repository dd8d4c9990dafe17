#include "editor/LICE_CachedFont.h"

#include "editor/EmbeddedFiles.h"
#include "editor/Utf8.h"
#include "tests/editor/Canvas.h"

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

/// A font of solid blocks: every character is as wide as its number's last digit says and as high as a line;
/// a blank has no picture.
class BlockGlyphs final : public LICE_GlyphSource {
public:
    static constexpr int kHeight = 4;

    explicit BlockGlyphs(int* renderCount = nullptr) : renders(renderCount) {}

    LICE_Glyph Render(char32_t character) override {
        if (renders != nullptr) ++*renders;
        LICE_Glyph glyph;
        glyph.advanceX = static_cast<int>(character % 10);
        if (character == U' ') return glyph;
        glyph.width = glyph.advanceX;
        glyph.height = kHeight;
        glyph.coverage.assign(static_cast<std::size_t>(glyph.width) * kHeight, 255);
        return glyph;
    }
    [[nodiscard]] int LineHeight() const override { return kHeight; }

private:
    int* renders;
};

struct BlockFont {
    BlockFont() : font(std::make_unique<BlockGlyphs>(&renders)) { font.SetTextColor(kRed); }

    int renders = 0;
    LICE_CachedFont font;
};

/// The smallest rectangle around what is not the ground.
IRECT InkOf(LICE_IBitmap& bitmap, LICE_pixel ground = kBlack) {
    IRECT ink;
    for (int y = 0; y < bitmap.getHeight(); ++y) {
        for (int x = 0; x < bitmap.getWidth(); ++x) {
            if (LICE_GetPixel(&bitmap, x, y) != ground) ink = ink.Union({x, y, x + 1, y + 1});
        }
    }
    return ink;
}

// 'P' is 80 and thus 0 wide, 'Q' 1, 'R' 2, 'S' 3 ... 'Y' 9; a blank, 32, is 2 wide.

TEST(LICE_CachedFont, CharactersFollowEachOtherByTheirAdvance) {
    BlockFont block;
    Canvas canvas(12, 5);
    IRECT rect(1, 1, 12, 5);
    EXPECT_EQ(block.font.DrawText(canvas.Get(), "R S", rect, LICE_TextLeft), BlockGlyphs::kHeight);
    EXPECT_EQ(Shape(*canvas), (std::vector<std::string>{"............", ".##..###....", ".##..###....",
                                                        ".##..###....", ".##..###...."}));
    EXPECT_EQ(rect, IRECT(1, 1, 12, 5)) << "only measuring changes it";
}

TEST(LICE_CachedFont, MeasuredRectangleIsTheDrawnOne) {
    BlockFont block;
    for (const std::string& text : {std::string("RSTU"), std::string("S\nTT\nR"), std::string("Y")}) {
        Canvas canvas(60, 30);
        IRECT rect(5, 3, 60, 30);
        IRECT measured = rect;
        const int height = block.font.DrawText(canvas.Get(), text, measured, LICE_TextCalcRect);
        EXPECT_EQ(InkOf(*canvas), IRECT()) << "measuring draws nothing";
        EXPECT_EQ(block.font.DrawText(canvas.Get(), text, rect, LICE_TextLeft), height);
        EXPECT_EQ(InkOf(*canvas), measured);
        EXPECT_EQ(measured.H(), height);
    }
}

TEST(LICE_CachedFont, NewLineBeginsAtALineFeed) {
    BlockFont block;
    Canvas canvas(6, 9);
    IRECT rect(0, 0, 6, 9);
    EXPECT_EQ(block.font.DrawText(canvas.Get(), "U\nR", rect, LICE_TextLeft), 8);
    EXPECT_EQ(Shape(*canvas)[3], "#####.");
    EXPECT_EQ(Shape(*canvas)[4], "##....");
    EXPECT_EQ(Shape(*canvas)[8], "......");
}

TEST(LICE_CachedFont, EachLineIsAlignedInTheRectangle) {
    BlockFont block;
    Canvas centred(11, 8);
    IRECT rect(1, 0, 10, 8);
    block.font.DrawText(centred.Get(), "S\nU", rect, LICE_TextCenter);
    EXPECT_EQ(Shape(*centred)[0], "....###....");
    EXPECT_EQ(Shape(*centred)[4], "...#####...");
    Canvas right(11, 8);
    block.font.DrawText(right.Get(), "S\nU", rect, LICE_TextRight);
    EXPECT_EQ(Shape(*right)[0], ".......###.");
    EXPECT_EQ(Shape(*right)[4], ".....#####.");
}

TEST(LICE_CachedFont, TextIsClippedByRectangleAndBitmap) {
    BlockFont block;
    for (const IRECT& rect : {IRECT(2, 1, 5, 3), IRECT(-3, -2, 4, 2), IRECT(7, 4, 30, 30), IRECT(3, 3, 3, 3),
                              IRECT(20, 20, 30, 30)}) {
        Canvas canvas(9, 6);
        IRECT place = rect;
        block.font.DrawText(canvas.Get(), "YYY", place, LICE_TextLeft);
        const IRECT wanted =
            rect.Intersect({0, 0, 9, 6}).Intersect({rect.L, rect.T, rect.L + 27, rect.T + 4});
        EXPECT_EQ(InkOf(*canvas), wanted) << rect.L << ' ' << rect.T;
        EXPECT_TRUE(canvas.IsMarginWhole());
    }
}

TEST(LICE_CachedFont, CentredTextThatIsTooLongLosesBothEnds) {
    BlockFont block;
    Canvas canvas(9, 4);
    IRECT rect(2, 0, 6, 4);
    block.font.DrawText(canvas.Get(), "WQW", rect, LICE_TextCenter);
    EXPECT_EQ(Shape(*canvas)[0], "..####...");
}

TEST(LICE_CachedFont, ColoursAlphaCountsOnTheCoverage) {
    BlockFont block;
    Canvas canvas(3, 4);
    block.font.SetTextColor(LICE_RGBA(255, 255, 255, 51));
    IRECT rect(0, 0, 3, 4);
    block.font.DrawText(canvas.Get(), "R", rect, LICE_TextLeft | LICE_TextWantAlpha);
    EXPECT_EQ(canvas.At(0, 0), LICE_RGBA(51, 51, 51, 255));
    EXPECT_EQ(canvas.At(2, 0), kBlack);
}

TEST(LICE_CachedFont, GlyphIsRenderedOnceAndKept) {
    BlockFont block;
    Canvas canvas(50, 8);
    IRECT rect(0, 0, 50, 8);
    for (int i = 0; i < 10; ++i)
        block.font.DrawText(canvas.Get(), "RSRS", rect, LICE_TextLeft);
    EXPECT_EQ(block.renders, 2);
    const LICE_Glyph* const kept = block.font.GlyphOf(U'R');
    for (char32_t character = 33; character < 2000; ++character)
        ASSERT_NE(block.font.GlyphOf(character), nullptr);
    EXPECT_EQ(block.font.GlyphOf(U'R'), kept) << "stays where it is when others come";
    EXPECT_EQ(block.renders, 2000 - 33);
    EXPECT_EQ(block.font.GlyphCount(), block.renders);
}

/// Glyphs of a system that draws texts itself, unless it is told not to.
class NativeGlyphs final : public LICE_GlyphSource {
public:
    NativeGlyphs(int& nativeCount, bool canDraw) : count(nativeCount), can(canDraw) {}
    LICE_Glyph Render(char32_t) override { return {std::vector<std::uint8_t>(4, 255), 2, 2, 0, 0, 2, 0}; }
    [[nodiscard]] int LineHeight() const override { return 2; }
    bool DrawNative(LICE_IBitmap&, std::u32string_view, const IRECT&, LICE_pixel, unsigned) override {
        ++count;
        return can;
    }

private:
    int& count;
    bool can;
};

TEST(LICE_CachedFont, SystemDrawsWhatIsNotToBeBlended) {
    for (const bool can : {true, false}) {
        int natively = 0;
        LICE_CachedFont font(std::make_unique<NativeGlyphs>(natively, can));
        font.SetTextColor(kRed);
        Canvas canvas(4, 4);
        IRECT rect(0, 0, 4, 4);
        IRECT measured = rect;
        font.DrawText(canvas.Get(), "A", measured, LICE_TextNative | LICE_TextCalcRect);
        EXPECT_EQ(natively, 0) << "measuring draws nothing";
        EXPECT_EQ(font.DrawText(canvas.Get(), "A", rect, LICE_TextNative), 2);
        EXPECT_EQ(natively, 1);
        EXPECT_EQ(InkOf(*canvas).Empty(), can) << "what the system cannot draw, the glyphs draw";
        font.DrawText(canvas.Get(), "A", rect, LICE_TextNative | LICE_TextWantAlpha);
        font.DrawText(canvas.Get(), "A", rect, LICE_TextLeft);
        EXPECT_EQ(natively, 1);
        EXPECT_EQ(InkOf(*canvas), IRECT(0, 0, 2, 2));
    }
}

TEST(LICE_CachedFont, WithoutASourceItDrawsAndMeasuresNothing) {
    LICE_CachedFont font(nullptr);
    Canvas canvas(5, 5);
    IRECT rect(1, 1, 5, 5);
    EXPECT_EQ(font.DrawText(canvas.Get(), "RS", rect, LICE_TextLeft), 0);
    EXPECT_EQ(InkOf(*canvas), IRECT());
    EXPECT_EQ(font.DrawText(canvas.Get(), "RS", rect, LICE_TextCalcRect), 0);
    EXPECT_EQ(rect, IRECT(1, 1, 1, 1));
    EXPECT_EQ(font.LineHeight(), 0);
    EXPECT_EQ(font.GlyphOf(U'R'), nullptr);
}

TEST(LICE_CachedFont, MissingBitmapAndEmptyTextAreNothing) {
    BlockFont block;
    IRECT rect(0, 0, 9, 9);
    LICE_MemBitmap empty;
    EXPECT_EQ(block.font.DrawText(nullptr, "R", rect, LICE_TextLeft), BlockGlyphs::kHeight);
    EXPECT_EQ(block.font.DrawText(&empty, "R", rect, LICE_TextLeft), BlockGlyphs::kHeight);
    Canvas canvas(5, 5);
    EXPECT_EQ(block.font.DrawText(canvas.Get(), "", rect, LICE_TextLeft), 0);
    EXPECT_EQ(InkOf(*canvas), IRECT());
}

TEST(Utf8, FirstCharactersAreNeverCutInTwo) {
    const std::string_view text = "a\xC3\xA9\xE2\x88\x9Ez\xE9";
    EXPECT_EQ(FirstCharacters(text, 0), "");
    EXPECT_EQ(FirstCharacters(text, -1), "");
    EXPECT_EQ(FirstCharacters(text, 1), "a");
    EXPECT_EQ(FirstCharacters(text, 2), "a\xC3\xA9");
    EXPECT_EQ(FirstCharacters(text, 3), "a\xC3\xA9\xE2\x88\x9E");
    EXPECT_EQ(FirstCharacters(text, 5), text);
    EXPECT_EQ(FirstCharacters(text, 32), text);
}

TEST(Utf8, CharactersOfOneToFourBytes) {
    EXPECT_EQ(CharactersOf("a\xC3\xA9\xE2\x88\x9E\xF0\x9F\xA5\x81z"), U"a\u00E9\u221E\U0001F941z");
}

TEST(Utf8, BytesThatAreNoneAreLatin1) {
    EXPECT_EQ(CharactersOf("\xE9t\xE9"), U"\u00E9t\u00E9");
    EXPECT_EQ(CharactersOf("\xC3"), U"\u00C3") << "cut short";
    EXPECT_EQ(CharactersOf("\xE2\x88"), U"\u00E2\u0088") << "cut short";
    EXPECT_EQ(CharactersOf("\xC0\x80"), U"\u00C0\u0080") << "longer than needed";
    EXPECT_EQ(CharactersOf("\xE0\x80\x80"), U"\u00E0\u0080\u0080") << "longer than needed";
    EXPECT_EQ(CharactersOf("\xED\xA0\x80"), U"\u00ED\u00A0\u0080") << "half of a pair";
    EXPECT_EQ(CharactersOf("\xF4\x90\x80\x80"), U"\u00F4\u0090\u0080\u0080") << "beyond the last character";
    EXPECT_EQ(CharactersOf(std::string_view("a\0b", 3)).size(), 3U);
}

#ifndef _WIN32

IText Look(int size, int style = IText::StyleNormal) {
    return {size, IColor(255, 255, 255, 255), IText::AlignNear, style};
}

/// Draws a text in the embedded font, white on black, at 20, 20.
IRECT InkOfText(const IText& look, std::string_view text, IRECT* measured = nullptr) {
    const auto font = LICE_MakeFont(look);
    font->SetTextColor(kWhite);
    Canvas canvas(400, 200);
    IRECT rect(20, 20, 400, 200);
    font->DrawText(canvas.Get(), text, rect, LICE_TextLeft);
    if (measured != nullptr) {
        *measured = rect;
        font->DrawText(canvas.Get(), text, *measured, LICE_TextCalcRect);
    }
    return InkOf(*canvas);
}

TEST(LICE_MakeFont, LineIsAboutASixthHigherThanTheSize) {
    for (const int size : {10, 12, 16, 24, 48}) {
        const auto font = LICE_MakeFont(Look(size));
        ASSERT_NE(font, nullptr);
        EXPECT_NEAR(font->LineHeight(), size * 1.17, 1.0);
    }
}

TEST(LICE_MakeFont, InkLiesWithinTheMeasuredRectangle) {
    for (const int size : {10, 12, 14, 20}) {
        IRECT measured;
        const IRECT ink = InkOfText(Look(size), "HELLO gj 0.123", &measured);
        EXPECT_FALSE(ink.Empty());
        EXPECT_EQ(ink.Union(measured), measured) << size;
        EXPECT_GE(ink.W(), measured.W() - 3) << "and fills it";
    }
}

TEST(LICE_MakeFont, CapitalsAreAboutSevenTenthsOfTheSize) {
    EXPECT_NEAR(InkOfText(Look(40), "H").H(), 40 * 0.711, 1.0);
}

TEST(LICE_MakeFont, DigitsAreAllOfOneWidth) {
    const auto font = LICE_MakeFont(Look(12));
    IRECT zero;
    font->DrawText(nullptr, "0", zero, LICE_TextCalcRect);
    for (const char* digit : {"1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
        IRECT rect;
        font->DrawText(nullptr, digit, rect, LICE_TextCalcRect);
        EXPECT_EQ(rect.W(), zero.W()) << digit;
    }
}

TEST(LICE_MakeFont, BoldIsHeavierAndItalicLeans) {
    const auto inkWeight = [](const IText& look) {
        const auto font = LICE_MakeFont(look);
        font->SetTextColor(kWhite);
        Canvas canvas(100, 60);
        IRECT rect(0, 0, 100, 60);
        font->DrawText(canvas.Get(), "II", rect, LICE_TextLeft);
        int sum = 0;
        for (const LICE_pixel pixel : PixelsOf(*canvas))
            sum += static_cast<int>(pixel & 255U);
        return sum;
    };
    EXPECT_GT(inkWeight(Look(30, IText::StyleBold)), inkWeight(Look(30)) * 5 / 4);
    const IRECT upright = InkOfText(Look(40), "I");
    const IRECT leaning = InkOfText(Look(40, IText::StyleItalic), "I");
    EXPECT_NEAR(leaning.W() - upright.W(), 0.2 * upright.H(), 2.0);
    EXPECT_NEAR(leaning.H(), upright.H(), 1);
}

TEST(LICE_MakeFont, TurnedTextRunsUpward) {
    IText look = Look(20);
    IRECT level;
    InkOfText(look, "Hello", &level);
    look.orientation = 90;
    IRECT upright;
    const IRECT ink = InkOfText(look, "Hello", &upright);
    EXPECT_NEAR(upright.W(), level.H(), 1);
    EXPECT_NEAR(upright.H(), level.W(), 1);
    EXPECT_NEAR(ink.H(), level.W(), 3);
    EXPECT_EQ(ink.Union({upright.L - 1, upright.T - 1, upright.R + 1, upright.B + 1}),
              IRECT(upright.L - 1, upright.T - 1, upright.R + 1, upright.B + 1));
}

TEST(LICE_MakeFont, LinesOfATurnedTextFollowToTheRightAndAreAlignedTogether) {
    IText look = Look(20);
    look.orientation = 90;
    const auto font = LICE_MakeFont(look);
    font->SetTextColor(kWhite);
    const auto drawn = [&font](std::string_view text, unsigned flags) {
        Canvas canvas(200, 200);
        IRECT rect(20, 20, 180, 180);
        font->DrawText(canvas.Get(), text, rect, flags);
        return InkOf(*canvas);
    };
    const int line = font->LineHeight();
    const IRECT one = drawn("HHH", LICE_TextLeft);
    const IRECT two = drawn("HHH\nHHH", LICE_TextLeft);
    EXPECT_EQ(two, IRECT(one.L, one.T, one.R + line, one.B));
    // The width of two lines ends at 180, or stands in the middle of 160.
    const int right = 160 - 2 * line;
    EXPECT_EQ(drawn("HHH\nHHH", LICE_TextRight), IRECT(two.L + right, two.T, two.R + right, two.B));
    const int middle = right / 2;
    EXPECT_EQ(drawn("HHH\nHHH", LICE_TextCenter), IRECT(two.L + middle, two.T, two.R + middle, two.B));
    look.orientation = -90;
    const auto down = LICE_MakeFont(look);
    down->SetTextColor(kWhite);
    Canvas canvas(200, 200);
    IRECT rect(20, 20, 180, 180);
    IRECT measured = rect;
    down->DrawText(canvas.Get(), "HHH\nHHH", measured, LICE_TextCalcRect);
    down->DrawText(canvas.Get(), "HHH\nHHH", rect, LICE_TextLeft);
    EXPECT_EQ(InkOf(*canvas).Union(measured), measured) << "the first line stands to the right";
    EXPECT_EQ(InkOf(*canvas).W(), two.W());
}

TEST(LICE_MakeFont, AnyFaceIsTheEmbeddedFamily) {
    IText look = Look(14);
    IRECT first;
    InkOfText(look, "Level", &first);
    look.font = "No such face";
    IRECT second;
    InkOfText(look, "Level", &second);
    EXPECT_EQ(first, second);
}

TEST(LICE_MakeFont, ImpossibleSizesGiveNoFont) {
    EXPECT_EQ(LICE_MakeFont(Look(0)), nullptr);
    EXPECT_EQ(LICE_MakeFont(Look(-12)), nullptr);
    EXPECT_EQ(LICE_MakeFont(Look(100000)), nullptr);
}

TEST(LICE_MakeFont, CharactersOutsideTheFontAreDrawnAsItsMarkForThat) {
    EXPECT_FALSE(InkOfText(Look(20), "\xF0\x9F\xA5\x81").Empty());
    EXPECT_TRUE(InkOfText(Look(20), " ").Empty());
}

TEST(EmbeddedFiles, BothFontsAreThere) {
    for (const bool bold : {false, true}) {
        const auto file = EmbeddedFont(bold);
        ASSERT_GT(file.size(), 1000U);
        EXPECT_EQ(file[0], 0);
        EXPECT_EQ(file[1], 1) << "a TrueType file begins with 0x00010000";
    }
    EXPECT_NE(EmbeddedFont(false).data(), EmbeddedFont(true).data());
}

#endif

TEST(EmbeddedFiles, UnknownIdsHaveNoBitmap) {
    for (const int id : {0, -1, 999, 1000000})
        EXPECT_TRUE(EmbeddedBitmap(id).empty()) << id;
}

TEST(EmbeddedFiles, TableFindsEveryBitmapById) {
    EXPECT_EQ(BitmapTable().size(), 108U);
    const BitmapInfo* background = FindBitmap(10010);
    ASSERT_NE(background, nullptr);
    EXPECT_EQ(background->frames, 1);
    const BitmapInfo* knob = FindBitmap(3034);
    ASSERT_NE(knob, nullptr);
    EXPECT_EQ(std::string(knob->file), "knobs/GW_Filter_Knob_40px.png");
    EXPECT_EQ(knob->frames, 128);
    EXPECT_EQ(FindBitmap(7), nullptr);
    for (std::size_t i = 1; i < BitmapTable().size(); ++i)
        EXPECT_LT(BitmapTable()[i - 1].id, BitmapTable()[i].id);
}

} // namespace
} // namespace Grimworks
