#include "editor/EmbeddedFiles.h"

#include "editor/win/WinModule.h"

namespace Grimworks {

namespace {

constexpr const char* kBitmapType = "PNG";
constexpr const char* kFontType = "TTF";
constexpr int kFontId = 1;
constexpr int kBoldFontId = 2;
constexpr DWORD kSmallestFile = 8; ///< bytes; less than a PNG's signature is no file

std::span<const std::uint8_t> Resource(int id, const char* type) {
    if (id <= 0 || id > 0xFFFF) return {};
    const HINSTANCE module = ThisModule();
    HRSRC found = FindResourceA(module, MAKEINTRESOURCEA(id), type);
    if (found == nullptr || SizeofResource(module, found) < kSmallestFile) return {};
    HGLOBAL loaded = LoadResource(module, found);
    const void* bytes = loaded != nullptr ? LockResource(loaded) : nullptr;
    if (bytes == nullptr) return {};
    return {static_cast<const std::uint8_t*>(bytes), SizeofResource(module, found)};
}

} // namespace

std::span<const std::uint8_t> EmbeddedBitmap(int id) {
    return Resource(id, kBitmapType);
}

std::span<const std::uint8_t> EmbeddedFont(bool bold) {
    return Resource(bold ? kBoldFontId : kFontId, kFontType);
}

} // namespace Grimworks
