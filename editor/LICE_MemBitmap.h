#pragma once

#include "editor/LICE_IBitmap.h"

#include <memory>

namespace Grimworks {

/// A bitmap in memory of its own.
class LICE_MemBitmap final : public LICE_IBitmap {
public:
    static constexpr int kMaxSize = 32768; ///< pixels a side

    LICE_MemBitmap() = default;
    /// Content starts as zero, transparent black.
    LICE_MemBitmap(int startWidth, int startHeight) { LICE_MemBitmap::resize(startWidth, startHeight); }

    LICE_pixel* getBits() override { return width > 0 ? fb.get() : nullptr; }
    int getWidth() override { return width; }
    int getHeight() override { return height; }
    int getRowSpan() override { return width; }

    /// Keeps the memory when the new size fits; a size of 0 frees it. Sides below 0 or above kMaxSize, and
    /// memory that is not there, leave the bitmap empty.
    bool resize(int newWidth, int newHeight) override;

private:
    void Free();

    std::unique_ptr<LICE_pixel[]> fb;
    int width = 0;
    int height = 0;
    std::size_t allocSize = 0; ///< pixels
};

} // namespace Grimworks
