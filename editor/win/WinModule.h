#pragma once

#include "editor/win/WinApi.h"

#include <string>
#include <string_view>

namespace Grimworks {

/// The module that this code is in: where its resources are, and who owns its window class. Any thread.
[[nodiscard]] HINSTANCE ThisModule();

/// A text of the editor in the system's wide form. See CharactersOf for what counts as a character.
[[nodiscard]] std::wstring WideText(std::string_view text);

/// One character in the system's wide form: one or two units.
[[nodiscard]] std::wstring WideCharacter(char32_t character);

/// A text of the system in the process's own code page, such as a path, as UTF-8, and back. Characters that
/// the code page has not become question marks.
[[nodiscard]] std::string Utf8OfSystem(const char* text);
[[nodiscard]] std::string SystemOfUtf8(const std::string& text);

} // namespace Grimworks
