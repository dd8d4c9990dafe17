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

} // namespace Grimworks
