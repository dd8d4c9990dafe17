#include "editor/x11/X11TextField.h"

#include "editor/LICE_Draw.h"
#include "editor/LICE_IFont.h"
#include "editor/Utf8.h"
#include "editor/x11/X11Style.h"

#include <algorithm>
#include <utility>

namespace Grimworks {

namespace {

void AppendUtf8(std::string& text, char32_t c) {
    const auto byte = [&text](char32_t value) { text.push_back(static_cast<char>(value)); };
    if (c < 0x80) {
        byte(c);
    } else if (c < 0x800) {
        byte(0xC0 | (c >> 6));
        byte(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        byte(0xE0 | (c >> 12));
        byte(0x80 | ((c >> 6) & 0x3F));
        byte(0x80 | (c & 0x3F));
    } else {
        byte(0xF0 | (c >> 18));
        byte(0x80 | ((c >> 12) & 0x3F));
        byte(0x80 | ((c >> 6) & 0x3F));
        byte(0x80 | (c & 0x3F));
    }
}

std::size_t Place(int place) {
    return static_cast<std::size_t>(place);
}

} // namespace

void X11TextField::Start(std::string_view text, int mostCharacters, Filter typed) {
    limit = std::max(mostCharacters, 0);
    filter = std::move(typed);
    characters = CharactersOf(text);
    SelectAll();
}

std::string X11TextField::Text() const {
    return Before(Length());
}

std::string X11TextField::Before(int place) const {
    std::string text;
    for (int i = 0; i < std::min(place, Length()); ++i)
        AppendUtf8(text, characters[Place(i)]);
    return text;
}

void X11TextField::SelectAll() {
    anchor = 0;
    caret = Length();
}

void X11TextField::MoveCaret(int place, bool select) {
    caret = std::clamp(place, 0, Length());
    if (!select) anchor = caret;
}

void X11TextField::DeleteSelection() {
    const int begin = SelectionBegin();
    characters.erase(Place(begin), Place(SelectionEnd() - begin));
    MoveCaret(begin, false);
}

void X11TextField::DeleteTowards(int place) {
    if (caret == anchor) MoveCaret(place, true);
    DeleteSelection();
}

void X11TextField::Insert(std::u32string_view typed) {
    DeleteSelection();
    for (const char32_t character : typed) {
        const bool control = character < 0x20 || character == 0x7F;
        if (control || Length() >= limit || (filter && !filter(character))) continue;
        characters.insert(Place(caret), 1, character);
        MoveCaret(caret + 1, false);
    }
}

X11TextField::Outcome X11TextField::OnKey(const X11KeyPress& press) {
    if (press.control) return OnControlKey(press);
    switch (press.symbol) {
    case X11Key::Return:
    case X11Key::PadEnter:
        return Outcome::Commit;
    case X11Key::Escape:
        return Outcome::Cancel;
    case X11Key::BackSpace:
        DeleteTowards(caret - 1);
        return Outcome::Changed;
    case X11Key::Delete:
        DeleteTowards(caret + 1);
        return Outcome::Changed;
    case X11Key::Left:
        MoveCaret(caret - 1, press.shift);
        return Outcome::Changed;
    case X11Key::Right:
        MoveCaret(caret + 1, press.shift);
        return Outcome::Changed;
    case X11Key::Home:
        MoveCaret(0, press.shift);
        return Outcome::Changed;
    case X11Key::End:
        MoveCaret(Length(), press.shift);
        return Outcome::Changed;
    default:
        break;
    }
    if (press.character == 0 || (filter && !filter(press.character))) return Outcome::Nothing;
    Insert({&press.character, 1});
    return Outcome::Changed;
}

X11TextField::Outcome X11TextField::OnControlKey(const X11KeyPress& press) {
    switch (X11Keyboard::CharacterOf(press.plainSymbol)) {
    case U'a':
        SelectAll();
        return Outcome::Changed;
    case U'v':
        return Outcome::Paste;
    default:
        return Outcome::Nothing;
    }
}

int X11TextFieldLeft(const X11TextField& field, const X11TextFieldLook& look, const IRECT& rect) {
    const int width = X11Style::WidthOf(look.font, field.Text());
    const int room = rect.W() - 2 * look.margin;
    if (width <= room) {
        if (look.align == IText::AlignCenter) return rect.L + (rect.W() - width) / 2;
        if (look.align == IText::AlignFar) return rect.R - look.margin - width;
        return rect.L + look.margin;
    }
    const int toCaret = X11Style::WidthOf(look.font, field.Before(field.Caret()));
    return rect.L + look.margin - std::max(0, toCaret - room);
}

void DrawX11TextField(LICE_IBitmap& bitmap, const X11TextField& field, const X11TextFieldLook& look,
                      const IRECT& rect, bool caretShown) {
    LICE_FillRect(&bitmap, rect.L, rect.T, rect.W(), rect.H(), look.ground);
    if (look.font == nullptr) return;
    const int left = X11TextFieldLeft(field, look, rect);
    const auto columnOf = [&](int place) { return left + X11Style::WidthOf(look.font, field.Before(place)); };
    const int begin = columnOf(field.SelectionBegin());
    const int end = columnOf(field.SelectionEnd());
    const int width = X11Style::WidthOf(look.font, field.Text());
    const IRECT line(left, rect.T, left + width + 1, rect.B);
    X11Style::DrawLine(bitmap, look.font, field.Text(), line, look.ink);
    const int height = std::min(rect.H(), look.font->LineHeight() + 2);
    const int top = rect.T + (rect.H() - height) / 2;
    if (end > begin) {
        LICE_FillRect(&bitmap, begin, top, end - begin, height, look.ink);
        const std::string before = field.Before(field.SelectionBegin());
        const std::string chosen = field.Before(field.SelectionEnd()).substr(before.size());
        X11Style::DrawLine(bitmap, look.font, chosen, IRECT(begin, rect.T, end, rect.B), look.ground);
    } else if (caretShown) {
        LICE_FillRect(&bitmap, columnOf(field.Caret()), top, 1, height, look.ink);
    }
}

int X11TextFieldPlaceAt(const X11TextField& field, const X11TextFieldLook& look, const IRECT& rect, int x) {
    const int left = X11TextFieldLeft(field, look, rect);
    int best = 0;
    int distance = std::abs(x - left);
    for (int place = 1; place <= field.Length(); ++place) {
        const int there = std::abs(x - left - X11Style::WidthOf(look.font, field.Before(place)));
        if (there >= distance) continue;
        best = place;
        distance = there;
    }
    return best;
}

} // namespace Grimworks
