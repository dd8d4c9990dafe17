#pragma once

#include "editor/LICE_Draw.h"

#include <algorithm>
#include <cmath>

namespace Grimworks {

// Arithmetic of one pixel, shared by the draw operations. Alphas are 0..255, weights 0..256.

inline constexpr unsigned kFullWeight = 256;

/// x / 255, rounded, for x up to 255 * 255.
constexpr unsigned DivideBy255(unsigned x) {
    return (x + 128U + ((x + 128U) >> 8U)) >> 8U;
}

/// A weight of 0..1 in steps of 1/256; NaN is 0.
inline unsigned WeightOf(float alpha) {
    if (!(alpha > 0.0F)) return 0;
    return static_cast<unsigned>(std::lround(std::min(alpha, 1.0F) * static_cast<float>(kFullWeight)));
}

/// Alpha with which a pixel is put.
constexpr unsigned PutAlpha(LICE_pixel source, unsigned weight, bool useAlpha) {
    return ((useAlpha ? source >> 24U : 255U) * weight + 128U) >> 8U;
}

/// One channel of two pixels, `alpha` parts of 255 from the source.
constexpr unsigned MixChannel(unsigned below, unsigned source, unsigned alpha) {
    return DivideBy255(source * alpha + below * (255U - alpha));
}

template <typename Channel>
constexpr LICE_pixel PerColour(LICE_pixel below, LICE_pixel source, unsigned topByte, Channel channel) {
    LICE_pixel result = topByte << 24U;
    for (unsigned shift = 0; shift < 24U; shift += 8U)
        result |= channel((below >> shift) & 255U, (source >> shift) & 255U) << shift;
    return result;
}

/// The pixel that results where `source` is put on `below` with `alpha`.
template <int Operation>
constexpr LICE_pixel Blended(LICE_pixel below, LICE_pixel source, unsigned alpha) {
    const unsigned alphaBelow = below >> 24U;
    if constexpr (Operation == LICE_Add) {
        return PerColour(below, source, alphaBelow, [alpha](unsigned b, unsigned s) {
            return std::min(255U, b + DivideBy255(s * alpha));
        });
    } else if constexpr (Operation == LICE_Multiply) {
        return PerColour(below, source, alphaBelow, [alpha](unsigned b, unsigned s) {
            return MixChannel(b, DivideBy255(b * s), alpha);
        });
    } else {
        return PerColour(below, source, MixChannel(alphaBelow, 255U, alpha),
                         [alpha](unsigned b, unsigned s) { return MixChannel(b, s, alpha); });
    }
}

/// Puts `source` on `below`: alpha 0 changes nothing, 255 overwrites.
template <int Operation>
inline void PutBlended(LICE_pixel& below, LICE_pixel source, unsigned alpha) {
    if (alpha == 0) return;
    if (Operation == LICE_Copy && alpha == 255U) {
        below = source;
    } else {
        below = Blended<Operation>(below, source, alpha);
    }
}

/// Calls `draw` with the operation of a mode as a constant, so that the choice is made outside the loops.
template <typename Draw>
void WithOperation(int mode, Draw draw) {
    switch (mode & 0xFF) {
    case LICE_Add:
        draw.template operator()<LICE_Add>();
        break;
    case LICE_Multiply:
        draw.template operator()<LICE_Multiply>();
        break;
    default:
        draw.template operator()<LICE_Copy>();
    }
}

/// The pixels of a bitmap for drawing, or for reading.
class PixelRows {
public:
    explicit PixelRows(LICE_IBitmap* bitmap) {
        if (bitmap == nullptr || bitmap->getBits() == nullptr) return;
        bits = bitmap->getBits();
        span = bitmap->getRowSpan();
        bounds = {0, 0, bitmap->getWidth(), bitmap->getHeight()};
    }

    [[nodiscard]] bool Empty() const { return bits == nullptr; }
    [[nodiscard]] const IRECT& Bounds() const { return bounds; }
    [[nodiscard]] LICE_pixel* At(int x, int y) const {
        return bits + static_cast<std::ptrdiff_t>(y) * span + x;
    }

private:
    LICE_pixel* bits = nullptr;
    std::ptrdiff_t span = 0;
    IRECT bounds;
};

} // namespace Grimworks
