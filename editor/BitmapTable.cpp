#include "editor/EmbeddedFiles.h"

#include <algorithm>
#include <iterator>

namespace Grimworks {

namespace {

constexpr BitmapInfo kBitmaps[] = {
#define BITMAP(id, file, frames) {id, file, frames},
#include "resources/Bitmaps.inc"
#undef BITMAP
};

} // namespace

std::span<const BitmapInfo> BitmapTable() {
    return kBitmaps;
}

const BitmapInfo* FindBitmap(int id) {
    const auto* const found = std::find_if(std::begin(kBitmaps), std::end(kBitmaps),
                                           [id](const BitmapInfo& info) { return info.id == id; });
    return found == std::end(kBitmaps) ? nullptr : found;
}

} // namespace Grimworks
