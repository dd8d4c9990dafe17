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

std::wstring Widened(const char* text) {
    const int length = MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0);
    if (length < 1) return {};
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text, -1, wide.data(), length);
    wide.pop_back(); // the end mark
    return wide;
}

std::string Narrowed(UINT codePage, const std::wstring& wide) {
    const int length = WideCharToMultiByte(codePage, 0, wide.c_str(), -1, nullptr, 0, nullptr, nullptr);
    if (length < 1) return {};
    std::string text(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(codePage, 0, wide.c_str(), -1, text.data(), length, nullptr, nullptr);
    text.pop_back(); // the end mark
    return text;
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

std::string Utf8OfSystem(const char* text) {
    return Narrowed(CP_UTF8, Widened(text));
}

std::string SystemOfUtf8(const std::string& text) {
    return Narrowed(CP_ACP, WideText(text));
}

} // namespace Grimworks
