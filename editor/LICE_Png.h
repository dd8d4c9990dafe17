#pragma once

#include "editor/LICE_MemBitmap.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

namespace Grimworks {

/// Decodes a PNG file of any colour type and depth. Null if it is none, is broken, or larger than
/// LICE_MemBitmap::kMaxSize a side.
[[nodiscard]] std::unique_ptr<LICE_MemBitmap> LoadPngFromMemory(const void* data, std::size_t size);

/// Reads the size of a PNG's picture from its first bytes. False if they are none.
[[nodiscard]] bool ReadPngSize(std::span<const std::uint8_t> file, int& width, int& height);

/// Appends a bitmap as a PNG file without transparency to `file`. False for an empty bitmap.
bool SavePngToMemory(LICE_IBitmap& bitmap, std::vector<std::uint8_t>& file);

/// A PNG file as a bitmap: knows its size at once and decodes when its pixels are first asked for, since
/// hosts that only look for instruments never draw. A broken picture has no pixels. Any thread may ask; the
/// pixels are for reading only.
class LICE_PngBitmap final : public LICE_IBitmap {
public:
    /// The bytes must outlive the bitmap. A file that does not begin as a PNG gives an empty bitmap.
    explicit LICE_PngBitmap(std::span<const std::uint8_t> file);

    LICE_pixel* getBits() override;
    int getWidth() override { return width; }
    int getHeight() override { return height; }
    int getRowSpan() override { return width; }
    bool resize(int, int) override { return false; }

private:
    std::span<const std::uint8_t> source;
    std::once_flag once;
    std::unique_ptr<LICE_MemBitmap> decoded;
    int width = 0;
    int height = 0;
};

} // namespace Grimworks
