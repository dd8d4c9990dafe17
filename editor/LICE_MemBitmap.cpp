#include "editor/LICE_MemBitmap.h"

#include <new>

namespace Grimworks {

bool LICE_MemBitmap::resize(int newWidth, int newHeight) {
    const bool possible = newWidth >= 0 && newHeight >= 0 && newWidth <= kMaxSize && newHeight <= kMaxSize;
    const std::size_t wanted =
        possible ? static_cast<std::size_t>(newWidth) * static_cast<std::size_t>(newHeight) : 0;
    if (wanted == 0) {
        Free();
        return possible;
    }
    if (wanted > allocSize) {
        Free();
        fb.reset(new (std::nothrow) LICE_pixel[wanted]());
        if (fb == nullptr) return false;
        allocSize = wanted;
    }
    width = newWidth;
    height = newHeight;
    return true;
}

void LICE_MemBitmap::Free() {
    fb.reset();
    width = 0;
    height = 0;
    allocSize = 0;
}

} // namespace Grimworks
