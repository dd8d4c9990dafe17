#pragma once

#include <cstdint>
#include <vector>

namespace Grimworks {

/// What a window shows: rows from the top, three bytes (red, green, blue) a pixel.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;
};

} // namespace Grimworks
