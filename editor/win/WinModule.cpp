#include "editor/win/WinModule.h"

#include "editor/Utf8.h"

namespace Grimworks {

namespace {

void Append(std::wstring& text, char32_t character) {
    if (character > 0xFFFF) {
        const char32_t rest = character - 0x10000;
        text += static_cast<wchar_t>(0xD800 + (rest >> 10U));
        text += static_cast<wchar_t>(0xDC00 + (rest & 0x3FFU));
    } else {
        text += static_cast<wchar_t>(character);
    }
}

const char anchor = 0; ///< something that lies in this module

} // namespace

HINSTANCE ThisModule() {
    HMODULE module = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       &anchor, &module);
    return module;
}

std::wstring WideText(std::string_view text) {
    std::wstring wide;
    for (const char32_t character : CharactersOf(text))
        Append(wide, character);
    return wide;
}

std::wstring WideCharacter(char32_t character) {
    std::wstring wide;
    Append(wide, character);
    return wide;
}

} // namespace Grimworks
