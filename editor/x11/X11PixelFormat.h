#pragma once

#include "editor/LICE_IBitmap.h"

#include <cstddef>
#include <cstdint>

namespace Grimworks {

/// How a display wants its pixels.
struct X11PixelFormat {
    std::uint32_t visual = 0;
    int depth = 0;
    int bitsPerPixel = 0;
    int scanlinePad = 32; ///< rows are a multiple of so many bits
    bool msbFirst = false;
    std::uint32_t redMask = 0;
    std::uint32_t greenMask = 0;
    std::uint32_t blueMask = 0;

    /// Whether a pixel of ours is one of the display's, but for the alpha.
    [[nodiscard]] bool IsNative() const {
        return bitsPerPixel == 32 && !msbFirst && redMask == 0xFF0000U && greenMask == 0xFF00U &&
               blueMask == 0xFFU;
    }

    /// Bytes of a row of so many pixels.
    [[nodiscard]] std::size_t Stride(int width) const;

    /// Whether rows can be made at all: 16, 24 or 32 bits a pixel.
    [[nodiscard]] bool IsUsable() const;

    /// Turns a row of `count` pixels into the display's form, opaque where the display knows alpha.
    void ConvertRow(const LICE_pixel* from, std::uint8_t* to, int count) const;
};

} // namespace Grimworks
