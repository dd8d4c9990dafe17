#include "editor/LICE_CachedFont.h"
#include "editor/LICE_Draw.h"
#include "editor/LICE_MemBitmap.h"
#include "editor/x11/X11Style.h"
#include "editor/x11/X11TextField.h"

#include <gtest/gtest.h>
#include <memory>

namespace Grimworks {

namespace {

X11KeyPress Key(std::uint32_t symbol, bool shift = false, bool control = false) {
    return {symbol, symbol, X11Keyboard::CharacterOf(symbol), shift, control};
}

/// A keyboard of three keys from code 10 on: "a", "1" with "!", and the pad's "7".
X11Keyboard SmallKeyboard() {
    X11Keyboard keyboard;
    keyboard.Set(10, 6,
                 {'a', 0, 0x6C1, 0x6E1, 0xE6, 0xC6, '1', '!', '1', '!', 0xB9, 0, 0xFF95, 0xFFB7, 0, 0, 0, 0});
    return keyboard;
}

} // namespace

TEST(X11TextField, StartsWithAllSelected) {
    X11TextField field;
    field.Start("kick", 7);
    EXPECT_EQ(field.SelectionBegin(), 0);
    EXPECT_EQ(field.SelectionEnd(), 4);
    field.OnKey(Key('x'));
    EXPECT_EQ(field.Text(), "x");
}

TEST(X11TextField, AStartBeyondTheLimitStaysWholeAndGrowsNoMore) {
    X11TextField field;
    field.Start("a\xC3\xA4o\xC3\xB6u", 4);
    EXPECT_EQ(field.Text(), "a\xC3\xA4o\xC3\xB6u");
    EXPECT_EQ(field.Length(), 5);
    field.OnKey(Key(X11Key::End));
    field.OnKey(Key('x'));
    EXPECT_EQ(field.Length(), 5);
    field.OnKey(Key(X11Key::BackSpace));
    field.OnKey(Key(X11Key::BackSpace));
    field.OnKey(Key('x'));
    field.OnKey(Key('y'));
    EXPECT_EQ(field.Text(), "a\xC3\xA4ox");
    field.Start("", -1);
    field.OnKey(Key('x'));
    EXPECT_EQ(field.Text(), "");
}

TEST(X11TextField, KeysMoveSelectAndDelete) {
    X11TextField field;
    field.Start("abcdef", 10);
    field.OnKey(Key(X11Key::Home));
    field.OnKey(Key(X11Key::Right));
    field.OnKey(Key(X11Key::Right, true));
    field.OnKey(Key(X11Key::Right, true));
    EXPECT_EQ(field.SelectionBegin(), 1);
    EXPECT_EQ(field.SelectionEnd(), 3);
    field.OnKey(Key(X11Key::BackSpace));
    EXPECT_EQ(field.Text(), "adef");
    field.OnKey(Key(X11Key::BackSpace));
    EXPECT_EQ(field.Text(), "def");
    field.OnKey(Key(X11Key::BackSpace));
    EXPECT_EQ(field.Text(), "def");
    field.OnKey(Key(X11Key::Delete));
    EXPECT_EQ(field.Text(), "ef");
    field.OnKey(Key(X11Key::End, true));
    field.OnKey(Key(X11Key::Delete));
    EXPECT_EQ(field.Text(), "");
    field.OnKey(Key(X11Key::Delete));
    EXPECT_EQ(field.Text(), "");
}

TEST(X11TextField, ReturnEscapeAndPasteAreToldAndChangeNothing) {
    X11TextField field;
    field.Start("abc", 10);
    EXPECT_EQ(field.OnKey(Key(X11Key::Return)), X11TextField::Outcome::Commit);
    EXPECT_EQ(field.OnKey(Key(X11Key::PadEnter)), X11TextField::Outcome::Commit);
    EXPECT_EQ(field.OnKey(Key(X11Key::Escape)), X11TextField::Outcome::Cancel);
    EXPECT_EQ(field.OnKey(Key('v', false, true)), X11TextField::Outcome::Paste);
    EXPECT_EQ(field.OnKey(Key('q', false, true)), X11TextField::Outcome::Nothing);
    EXPECT_EQ(field.OnKey(Key(X11Key::F1)), X11TextField::Outcome::Nothing);
    EXPECT_EQ(field.Text(), "abc");
}

TEST(X11TextField, WhatTheFilterRefusesKeepsTheSelection) {
    X11TextField field;
    field.Start("12", 10, [](char32_t character) { return character >= U'0' && character <= U'9'; });
    EXPECT_EQ(field.OnKey(Key('x')), X11TextField::Outcome::Nothing);
    EXPECT_EQ(field.Text(), "12");
    field.Insert(U"3a\n4\x7F");
    EXPECT_EQ(field.Text(), "34");
}

TEST(X11TextField, CharactersOfAllLengthsBecomeUtf8) {
    X11TextField field;
    field.Start("", 10);
    field.Insert(U"A\u00E9\u20AC\U0001F941");
    EXPECT_EQ(field.Text(), "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\xA5\x81");
    EXPECT_EQ(field.Before(2), "A\xC3\xA9");
}

TEST(X11TextField, ALongTextIsShiftedSoThatTheCaretIsSeen) {
    const auto font = LICE_MakeFont(IText(12, IColor(255, 255, 255, 255)));
    ASSERT_NE(font, nullptr);
    X11TextFieldLook look;
    look.font = font.get();
    X11TextField field;
    field.Start(std::string(100, 'm'), 200);
    const IRECT rect(10, 0, 110, 20);
    const int width = X11Style::WidthOf(font.get(), field.Text());
    EXPECT_EQ(X11TextFieldLeft(field, look, rect) + width, rect.R - look.margin);
    field.MoveCaret(0, false);
    EXPECT_EQ(X11TextFieldLeft(field, look, rect), rect.L + look.margin);
}

TEST(X11TextField, ShortTextsAreAligned) {
    const auto font = LICE_MakeFont(IText(12, IColor(255, 255, 255, 255)));
    ASSERT_NE(font, nullptr);
    X11TextFieldLook look;
    look.font = font.get();
    X11TextField field;
    field.Start("0.5", 7);
    const int width = X11Style::WidthOf(font.get(), "0.5");
    const IRECT rect(0, 0, 100, 20);
    look.align = IText::AlignCenter;
    EXPECT_EQ(X11TextFieldLeft(field, look, rect), (100 - width) / 2);
    look.align = IText::AlignFar;
    EXPECT_EQ(X11TextFieldLeft(field, look, rect), 100 - look.margin - width);
}

TEST(X11TextField, AClickFindsTheNearestPlace) {
    const auto font = LICE_MakeFont(IText(12, IColor(255, 255, 255, 255)));
    ASSERT_NE(font, nullptr);
    X11TextFieldLook look;
    look.font = font.get();
    X11TextField field;
    field.Start("wide text", 20);
    const IRECT rect(0, 0, 200, 20);
    EXPECT_EQ(X11TextFieldPlaceAt(field, look, rect, -50), 0);
    EXPECT_EQ(X11TextFieldPlaceAt(field, look, rect, 199), 9);
    for (int place = 0; place <= 9; ++place) {
        const int x = look.margin + X11Style::WidthOf(font.get(), field.Before(place));
        EXPECT_EQ(X11TextFieldPlaceAt(field, look, rect, x), place);
    }
}

TEST(X11TextField, SelectionCaretAndGroundHaveTheirColours) {
    const auto font = LICE_MakeFont(IText(12, IColor(255, 255, 255, 255)));
    X11TextFieldLook look;
    look.font = font.get();
    look.ground = LICE_RGBA(255, 255, 255, 255);
    look.ink = LICE_RGBA(0, 0, 0, 255);
    X11TextField field;
    field.Start("    ", 10);
    LICE_MemBitmap picture(60, 20);
    const IRECT rect(0, 0, 60, 20);
    DrawX11TextField(picture, field, look, rect, true);
    EXPECT_EQ(LICE_GetPixel(&picture, look.margin, 10), look.ink);
    EXPECT_EQ(LICE_GetPixel(&picture, look.margin - 1, 10), look.ground);
    EXPECT_EQ(LICE_GetPixel(&picture, 59, 19), look.ground);
    field.MoveCaret(0, false);
    DrawX11TextField(picture, field, look, rect, true);
    EXPECT_EQ(LICE_GetPixel(&picture, look.margin, 10), look.ink);
    EXPECT_EQ(LICE_GetPixel(&picture, look.margin + 1, 10), look.ground);
    DrawX11TextField(picture, field, look, rect, false);
    EXPECT_EQ(LICE_GetPixel(&picture, look.margin, 10), look.ground);
}

TEST(X11Style, LinesAreBrokenAtBlanksAndLongWordsAnywhere) {
    const auto font = LICE_MakeFont(IText(12, IColor(255, 255, 255, 255)));
    ASSERT_NE(font, nullptr);
    const int width = X11Style::WidthOf(font.get(), "one two ");
    const auto lines = X11Style::Wrap(font.get(), "one two three\n\nfour", width);
    ASSERT_GE(lines.size(), 4U);
    EXPECT_EQ(lines[0], "one two ");
    EXPECT_EQ(lines[1], "three");
    EXPECT_EQ(lines[2], "");
    EXPECT_EQ(lines[3], "four");
    std::string all;
    for (const std::string& line : X11Style::Wrap(font.get(), std::string(200, 'W'), 50)) {
        EXPECT_LE(X11Style::WidthOf(font.get(), line), 50);
        all += line;
    }
    EXPECT_EQ(all, std::string(200, 'W'));
    EXPECT_EQ(X11Style::Wrap(font.get(), "ab", 0), (std::vector<std::string>{"a", "b"}));
}

TEST(X11Keyboard, ShiftLockAndLevelsChooseTheSymbol) {
    const X11Keyboard keyboard = SmallKeyboard();
    EXPECT_EQ(keyboard.Read(10, 0).character, U'a');
    EXPECT_EQ(keyboard.Read(10, XCB_MOD_MASK_SHIFT).character, U'A');
    EXPECT_EQ(keyboard.Read(10, XCB_MOD_MASK_LOCK).character, U'A');
    EXPECT_EQ(keyboard.Read(10, XCB_MOD_MASK_LOCK | XCB_MOD_MASK_SHIFT).character, U'a');
    EXPECT_EQ(keyboard.Read(10, XCB_MOD_MASK_5).character, U'\u00E6');
    EXPECT_EQ(keyboard.Read(10, XCB_MOD_MASK_5 | XCB_MOD_MASK_SHIFT).character, U'\u00C6');
    EXPECT_EQ(keyboard.Read(11, 0).character, U'1');
    EXPECT_EQ(keyboard.Read(11, XCB_MOD_MASK_LOCK).character, U'1');
    EXPECT_EQ(keyboard.Read(11, XCB_MOD_MASK_SHIFT).character, U'!');
    // The second layout, which the display tells in bits 13 and 14.
    EXPECT_EQ(keyboard.Read(10, 1U << 13U).symbol, 0x6C1U);
}

TEST(X11Keyboard, ThePadTypesNumbersWithNumLockOnly) {
    const X11Keyboard keyboard = SmallKeyboard();
    EXPECT_EQ(keyboard.Read(12, 0).symbol, 0xFF95U);
    EXPECT_EQ(keyboard.Read(12, 0).character, char32_t{0});
    EXPECT_EQ(keyboard.Read(12, XCB_MOD_MASK_2).character, U'7');
    EXPECT_EQ(keyboard.Read(12, XCB_MOD_MASK_2 | XCB_MOD_MASK_SHIFT).symbol, 0xFF95U);
}

TEST(X11Keyboard, KeysOutsideOfTheLayoutMeanNothing) {
    const X11Keyboard keyboard = SmallKeyboard();
    EXPECT_EQ(keyboard.Read(9, 0).symbol, 0U);
    EXPECT_EQ(keyboard.Read(13, 0).symbol, 0U);
    EXPECT_EQ(X11Keyboard().Read(10, 0).symbol, 0U);
    EXPECT_EQ(X11Keyboard::KeyCodeOf(0), 0);
}

} // namespace Grimworks
