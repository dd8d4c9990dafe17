#pragma once

#include <string>
#include <string_view>

namespace Grimworks {

/// The characters of a text in UTF-8. Bytes that are none are taken as Latin-1, so that no text of a host or
/// a file goes lost.
[[nodiscard]] std::u32string CharactersOf(std::string_view text);

/// The beginning of a text, at most so many characters as CharactersOf counts them; none for a count below 1.
[[nodiscard]] std::string_view FirstCharacters(std::string_view text, int count);

} // namespace Grimworks
