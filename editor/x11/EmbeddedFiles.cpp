#include "editor/EmbeddedFiles.h"

namespace Grimworks {

namespace {

/// One record of the list in EmbeddedFiles.S.
struct Record {
    std::int32_t id;
    std::int32_t offset; ///< bytes from the record to the file
    std::uint32_t size;
};

} // namespace

extern "C" {
extern const Record thudforgeBitmaps[];
extern const std::uint8_t thudforgeFont[];
extern const std::uint8_t thudforgeFontEnd[];
extern const std::uint8_t thudforgeBoldFont[];
extern const std::uint8_t thudforgeBoldFontEnd[];
}

std::span<const std::uint8_t> EmbeddedBitmap(int id) {
    if (id == 0) return {};
    for (const Record* record = thudforgeBitmaps; record->id != 0; ++record) {
        if (record->id == id) {
            return {reinterpret_cast<const std::uint8_t*>(record) + record->offset, record->size};
        }
    }
    return {};
}

std::span<const std::uint8_t> EmbeddedFont(bool bold) {
    if (bold) return {thudforgeBoldFont, thudforgeBoldFontEnd};
    return {thudforgeFont, thudforgeFontEnd};
}

} // namespace Grimworks
