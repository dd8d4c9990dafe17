#pragma once

#include <cstdint>
#include <vector>
#include <xcb/xcb.h>

namespace Grimworks {

class X11Connection;

/// Keys by their symbols, the numbers that the display protocol gives to what is printed on them.
namespace X11Key {
inline constexpr std::uint32_t BackSpace = 0xFF08;
inline constexpr std::uint32_t Tab = 0xFF09;
inline constexpr std::uint32_t Return = 0xFF0D;
inline constexpr std::uint32_t Escape = 0xFF1B;
inline constexpr std::uint32_t Home = 0xFF50;
inline constexpr std::uint32_t Left = 0xFF51;
inline constexpr std::uint32_t Up = 0xFF52;
inline constexpr std::uint32_t Right = 0xFF53;
inline constexpr std::uint32_t Down = 0xFF54;
inline constexpr std::uint32_t PageUp = 0xFF55;
inline constexpr std::uint32_t PageDown = 0xFF56;
inline constexpr std::uint32_t End = 0xFF57;
inline constexpr std::uint32_t PadEnter = 0xFF8D;
inline constexpr std::uint32_t F1 = 0xFFBE;
inline constexpr std::uint32_t Delete = 0xFFFF;
} // namespace X11Key

/// What a key press means: its symbol with and without the keys that are held, and the character that it
/// types.
struct X11KeyPress {
    std::uint32_t symbol = 0;      ///< with shift and the like taken into account
    std::uint32_t plainSymbol = 0; ///< of the key alone
    char32_t character = 0;        ///< 0 for none
    bool shift = false;
    bool control = false;
};

/// The keyboard of a display. Editor thread only.
class X11Keyboard {
public:
    /// Reads the layout; keys mean nothing before, or when the display does not answer.
    void Load(X11Connection& connection);

    /// For tests and others who know a layout: `width` symbols a key, from the key code `first` on.
    void Set(int first, int width, std::vector<std::uint32_t> layout);

    [[nodiscard]] X11KeyPress Read(std::uint8_t code, std::uint16_t state) const;

    /// The KeyCode of IGraphics.h that controls know, 0 for none.
    [[nodiscard]] static int KeyCodeOf(std::uint32_t plainSymbol);

    /// The character of a symbol, 0 for none.
    [[nodiscard]] static char32_t CharacterOf(std::uint32_t symbol);

private:
    [[nodiscard]] std::uint32_t SymbolAt(std::uint8_t code, int column) const;
    [[nodiscard]] std::uint32_t SymbolWith(std::uint8_t code, std::uint16_t state) const;

    int firstCode = 0;
    int columns = 0;
    std::vector<std::uint32_t> symbols;
};

} // namespace Grimworks
