#include "editor/x11/X11PixelFormat.h"

#include <bit>
#include <cstring>

namespace Grimworks {

namespace {

constexpr std::uint32_t kOpaque = 0xFF000000U;

/// A component of 0..255 in its place under `mask`.
std::uint32_t Under(std::uint32_t mask, std::uint32_t component) {
    if (mask == 0) return 0;
    const int width = std::popcount(mask);
    const std::uint32_t scaled = width <= 8 ? component >> (8 - width) : component << (width - 8);
    return (scaled << std::countr_zero(mask)) & mask;
}

} // namespace

std::size_t X11PixelFormat::Stride(int width) const {
    const auto pad = static_cast<std::size_t>(scanlinePad);
    const std::size_t bits = static_cast<std::size_t>(width) * static_cast<std::size_t>(bitsPerPixel);
    return (bits + pad - 1) / pad * pad / 8;
}

bool X11PixelFormat::IsUsable() const {
    return (bitsPerPixel == 16 || bitsPerPixel == 24 || bitsPerPixel == 32) && redMask != 0 &&
           greenMask != 0 && blueMask != 0 && scanlinePad >= 8;
}

void X11PixelFormat::ConvertRow(const LICE_pixel* from, std::uint8_t* to, int count) const {
    if (IsNative()) {
        for (int i = 0; i < count; ++i) {
            const std::uint32_t pixel = from[i] | kOpaque;
            std::memcpy(to + static_cast<std::ptrdiff_t>(i) * 4, &pixel, 4);
        }
        return;
    }
    const int bytes = bitsPerPixel / 8;
    const std::uint32_t colors = redMask | greenMask | blueMask;
    const std::uint32_t alpha = depth == 32 ? ~colors : 0U;
    for (int i = 0; i < count; ++i) {
        const std::uint32_t pixel = Under(redMask, (from[i] >> 16U) & 0xFFU) |
                                    Under(greenMask, (from[i] >> 8U) & 0xFFU) |
                                    Under(blueMask, from[i] & 0xFFU) | alpha;
        for (int byte = 0; byte < bytes; ++byte) {
            const int shift = 8 * (msbFirst ? bytes - 1 - byte : byte);
            *to++ = static_cast<std::uint8_t>(pixel >> static_cast<unsigned>(shift));
        }
    }
}

} // namespace Grimworks
