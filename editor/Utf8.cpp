#include "editor/Utf8.h"

#include <array>

namespace Grimworks {

namespace {

/// Number of bytes of the character that this byte begins; 1 for a byte that begins none.
std::size_t LengthAt(unsigned char first) {
    if (first >= 0xC2 && first <= 0xDF) return 2;
    if (first >= 0xE0 && first <= 0xEF) return 3;
    if (first >= 0xF0 && first <= 0xF4) return 4;
    return 1;
}

/// Whether a decoded character is one, and written in no more bytes than it needs.
bool IsValid(char32_t character, std::size_t length) {
    constexpr std::array<char32_t, 5> kSmallest{0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
    return character >= kSmallest[length] && character <= 0x10FFFF && !surrogate;
}

/// Decodes what stands at the start of a text that is not empty; gives the bytes taken.
std::size_t TakeCharacter(std::string_view text, char32_t& character) {
    const auto first = static_cast<unsigned char>(text.front());
    const std::size_t length = LengthAt(first);
    character = first;
    if (length == 1 || text.size() < length) return 1;
    char32_t decoded = first & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0U) != 0x80U) return 1;
        decoded = decoded << 6U | (next & 0x3FU);
    }
    if (!IsValid(decoded, length)) return 1;
    character = decoded;
    return length;
}

} // namespace

std::u32string CharactersOf(std::string_view text) {
    std::u32string characters;
    characters.reserve(text.size());
    while (!text.empty()) {
        char32_t character = 0;
        text.remove_prefix(TakeCharacter(text, character));
        characters.push_back(character);
    }
    return characters;
}

std::string_view FirstCharacters(std::string_view text, int count) {
    std::size_t length = 0;
    for (char32_t ignored = 0; count > 0 && length < text.size(); --count)
        length += TakeCharacter(text.substr(length), ignored);
    return text.substr(0, length);
}

} // namespace Grimworks
