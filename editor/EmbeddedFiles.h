#pragma once

#include <cstdint>
#include <span>

namespace Grimworks {

/// The PNG file of a bitmap's numeric id, from the module itself; empty if there is none.
[[nodiscard]] std::span<const std::uint8_t> EmbeddedBitmap(int id);

/// The TrueType file of the editor's texts; empty where the system brings the fonts.
[[nodiscard]] std::span<const std::uint8_t> EmbeddedFont(bool bold);

/// One bitmap of the editor: what LoadIBitmap is to be called with.
struct BitmapInfo {
    int id;
    const char* file; ///< below resources/img/grimworks/
    int frames;
};

/// Every bitmap of the editor, by ascending id.
[[nodiscard]] std::span<const BitmapInfo> BitmapTable();

/// The row of an id, null if there is none.
[[nodiscard]] const BitmapInfo* FindBitmap(int id);

} // namespace Grimworks
