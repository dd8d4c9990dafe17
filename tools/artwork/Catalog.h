#pragma once

#include "tools/artwork/Canvas.h"

#include <string>
#include <vector>

namespace Artwork {

/// One row of the bitmap table.
struct BitmapRow {
    int id;
    std::string file;
    int frames;
};

[[nodiscard]] const std::vector<BitmapRow>& BitmapRows();

/// Draws the bitmap of an id: a strip of its frames. Throws for an id without a drawing.
[[nodiscard]] Canvas DrawBitmap(int id);

} // namespace Artwork
