#include "editor/x11/X11Keyboard.h"

#include "editor/IGraphics.h"
#include "editor/x11/X11Connection.h"
#include "editor/x11/X11Reply.h"

#include <utility>

namespace Grimworks {

namespace {

constexpr unsigned kNumLock = XCB_MOD_MASK_2;
constexpr unsigned kThirdLevel = XCB_MOD_MASK_5;
constexpr std::uint32_t kPadFirst = 0xFF80;
constexpr std::uint32_t kPadLast = 0xFFB9;

bool IsLetter(std::uint32_t symbol) {
    return (symbol >= 'a' && symbol <= 'z') || (symbol >= 0xE0 && symbol <= 0xFE && symbol != 0xF7);
}

bool IsPadKey(std::uint32_t symbol) {
    return symbol >= kPadFirst && symbol <= kPadLast;
}

} // namespace

void X11Keyboard::Load(X11Connection& connection) {
    const xcb_setup_t* const setup = xcb_get_setup(connection.Get());
    const int first = setup->min_keycode;
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const X11Reply<xcb_get_keyboard_mapping_reply_t> reply(xcb_get_keyboard_mapping_reply(
        connection.Get(), xcb_get_keyboard_mapping(connection.Get(), setup->min_keycode, count), nullptr));
    if (reply == nullptr) return;
    const xcb_keysym_t* const all = xcb_get_keyboard_mapping_keysyms(reply.get());
    Set(first, reply->keysyms_per_keycode, {all, all + xcb_get_keyboard_mapping_keysyms_length(reply.get())});
}

void X11Keyboard::Set(int first, int width, std::vector<std::uint32_t> layout) {
    firstCode = first;
    columns = width;
    symbols = std::move(layout);
}

std::uint32_t X11Keyboard::SymbolAt(std::uint8_t code, int column) const {
    if (column >= columns || code < firstCode) return 0;
    const auto key = static_cast<std::size_t>(code - firstCode);
    const std::size_t place = key * static_cast<std::size_t>(columns) + static_cast<std::size_t>(column);
    return place < symbols.size() ? symbols[place] : 0;
}

std::uint32_t X11Keyboard::SymbolWith(std::uint8_t code, std::uint16_t state) const {
    const bool shift = (state & XCB_MOD_MASK_SHIFT) != 0;
    const bool lock = (state & XCB_MOD_MASK_LOCK) != 0;
    const int secondLayout = ((state >> 13) & 3) == 1 ? 2 : 0;
    if ((state & kThirdLevel) != 0) {
        const std::uint32_t third = SymbolAt(code, 4 + (shift ? 1 : 0));
        if (third != 0) return third;
    }
    int column = SymbolAt(code, secondLayout) != 0 ? secondLayout : 0;
    const std::uint32_t plain = SymbolAt(code, column);
    const std::uint32_t shifted = SymbolAt(code, column + 1);
    if (IsPadKey(shifted)) {
        const bool numbers = (state & kNumLock) != 0;
        return numbers != shift ? shifted : plain;
    }
    const bool upper = IsLetter(plain) ? shift != lock : shift;
    if (!upper) return plain;
    if (shifted != 0) return shifted;
    return IsLetter(plain) ? plain - 0x20 : plain;
}

X11KeyPress X11Keyboard::Read(std::uint8_t code, std::uint16_t state) const {
    X11KeyPress press;
    press.symbol = SymbolWith(code, state);
    press.plainSymbol = SymbolAt(code, 0);
    press.shift = (state & XCB_MOD_MASK_SHIFT) != 0;
    press.control = (state & XCB_MOD_MASK_CONTROL) != 0;
    press.character = CharacterOf(press.symbol);
    return press;
}

char32_t X11Keyboard::CharacterOf(std::uint32_t symbol) {
    if ((symbol >= 0x20 && symbol <= 0x7E) || (symbol >= 0xA0 && symbol <= 0xFF)) return symbol;
    if (symbol >= 0x01000100 && symbol <= 0x0110FFFF) return symbol - 0x01000000;
    if (symbol >= 0xFFB0 && symbol <= kPadLast) return U'0' + (symbol - 0xFFB0);
    switch (symbol) {
    case 0xFF80:
        return U' ';
    case 0xFFAA:
        return U'*';
    case 0xFFAB:
        return U'+';
    case 0xFFAC:
        return U',';
    case 0xFFAD:
        return U'-';
    case 0xFFAE:
        return U'.';
    case 0xFFAF:
        return U'/';
    case 0x20AC:
        return U'\u20AC';
    default:
        return 0;
    }
}

int X11Keyboard::KeyCodeOf(std::uint32_t plainSymbol) {
    if (plainSymbol >= '0' && plainSymbol <= '9') return KeyDigit0 + static_cast<int>(plainSymbol - '0');
    if (plainSymbol >= 'a' && plainSymbol <= 'z') return KeyLetterA + static_cast<int>(plainSymbol - 'a');
    if (plainSymbol >= 'A' && plainSymbol <= 'Z') return KeyLetterA + static_cast<int>(plainSymbol - 'A');
    if (plainSymbol >= X11Key::F1 && plainSymbol < X11Key::F1 + 12)
        return KeyF1 + static_cast<int>(plainSymbol - X11Key::F1);
    switch (plainSymbol) {
    case ' ':
        return KeySpace;
    case X11Key::Up:
        return KeyUp;
    case X11Key::Down:
        return KeyDown;
    case X11Key::Left:
        return KeyLeft;
    case X11Key::Right:
        return KeyRight;
    default:
        return 0;
    }
}

} // namespace Grimworks
