#pragma once

#include <cstdint>

namespace Grimworks {

/// A pixel: blue, green, red, alpha in memory.
using LICE_pixel = std::uint32_t;

constexpr LICE_pixel LICE_RGBA(int r, int g, int b, int a) {
    return (static_cast<LICE_pixel>(b) & 0xFFU) | ((static_cast<LICE_pixel>(g) & 0xFFU) << 8U) |
           ((static_cast<LICE_pixel>(r) & 0xFFU) << 16U) | ((static_cast<LICE_pixel>(a) & 0xFFU) << 24U);
}

/// Pixels in rows from top to bottom. An empty bitmap (no bits) takes every draw operation and does nothing.
/// One thread at a time.
class LICE_IBitmap {
public:
    virtual ~LICE_IBitmap() = default;
    LICE_IBitmap(const LICE_IBitmap&) = delete;
    LICE_IBitmap& operator=(const LICE_IBitmap&) = delete;

    virtual LICE_pixel* getBits() = 0; ///< null if empty
    virtual int getWidth() = 0;
    virtual int getHeight() = 0;
    virtual int getRowSpan() = 0; ///< pixels from one row to the next, at least the width
    virtual bool isFlipped() { return false; }

    /// New size; content is undefined afterwards. False, and empty, if it cannot be had. 0 by 0 frees.
    virtual bool resize(int width, int height) = 0;

    /// The system's drawing context for these pixels, null where there is none.
    virtual void* getDC() { return nullptr; }

    /// Room for a platform's own handle, null here.
    virtual void* Extended(int /*id*/, void* /*data*/) { return nullptr; }

protected:
    LICE_IBitmap() = default;
};

} // namespace Grimworks
