#include "editor/LICE_Draw.h"

#include "editor/LICE_Blend.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace Grimworks {

namespace {

bool UsesAlpha(int mode) {
    return (mode & LICE_UseAlpha) != 0;
}

/// A rectangle by corner and size without the overflow of far corners.
IRECT RectOf(int x, int y, int w, int h) {
    const auto end = [](int start, int size) {
        return static_cast<int>(std::min<std::int64_t>(std::int64_t{start} + size, INT32_MAX));
    };
    return {x, y, end(x, w), end(y, h)};
}

/// One coordinate's part of a blit: where the source's span [from, to) goes with its start at `at`, limited
/// to both bitmaps.
struct BlitSpan {
    int source;
    int dest;
    int count;
};

BlitSpan ClipSpan(int from, int to, int at, int sourceSize, int destSize) {
    std::int64_t first = std::max<std::int64_t>({0, -std::int64_t{from}, -std::int64_t{at}});
    const std::int64_t end =
        std::min({std::int64_t{to} - from, std::int64_t{sourceSize} - from, std::int64_t{destSize} - at});
    if (end <= first) return {0, 0, 0};
    return {static_cast<int>(from + first), static_cast<int>(at + first), static_cast<int>(end - first)};
}

constexpr int kGroup = 8;

bool AreOpaque(const LICE_pixel* pixels) {
    LICE_pixel all = pixels[0];
    for (int i = 1; i < kGroup; ++i)
        all &= pixels[i];
    return all >= 0xFF000000U;
}

template <int Operation>
void BlendPixels(LICE_pixel* dest, const LICE_pixel* source, int count, unsigned weight, bool useAlpha) {
    for (int i = 0; i < count; ++i)
        PutBlended<Operation>(dest[i], source[i], PutAlpha(source[i], weight, useAlpha));
}

/// Most pictures are opaque in long stretches, which are copied several pixels at a time.
template <int Operation>
void BlendRow(LICE_pixel* dest, const LICE_pixel* source, int count, unsigned weight, bool useAlpha) {
    if (Operation == LICE_Copy && useAlpha && weight == kFullWeight) {
        for (; count >= kGroup; count -= kGroup, dest += kGroup, source += kGroup) {
            if (AreOpaque(source)) {
                std::memcpy(dest, source, kGroup * sizeof(LICE_pixel));
            } else {
                BlendPixels<Operation>(dest, source, kGroup, weight, useAlpha);
            }
        }
    }
    BlendPixels<Operation>(dest, source, count, weight, useAlpha);
}

template <int Operation>
void FillRow(LICE_pixel* dest, int count, LICE_pixel color, unsigned alpha) {
    if (Operation == LICE_Copy && alpha == 255U) {
        std::fill_n(dest, count, color);
        return;
    }
    for (int i = 0; i < count; ++i)
        PutBlended<Operation>(dest[i], color, alpha);
}

} // namespace

void LICE_PutPixel(LICE_IBitmap* dest, int x, int y, LICE_pixel color, float alpha, int mode) {
    const PixelRows rows(dest);
    if (rows.Empty() || !rows.Bounds().Contains(x, y)) return;
    const unsigned put = PutAlpha(color, WeightOf(alpha), UsesAlpha(mode));
    WithOperation(mode, [&]<int Operation>() { PutBlended<Operation>(*rows.At(x, y), color, put); });
}

LICE_pixel LICE_GetPixel(LICE_IBitmap* source, int x, int y) {
    const PixelRows rows(source);
    return !rows.Empty() && rows.Bounds().Contains(x, y) ? *rows.At(x, y) : 0;
}

void LICE_Clear(LICE_IBitmap* dest, LICE_pixel color) {
    if (dest == nullptr) return;
    LICE_FillRect(dest, 0, 0, dest->getWidth(), dest->getHeight(), color, 1.0F, LICE_Copy);
}

void LICE_Blit(LICE_IBitmap* dest, LICE_IBitmap* src, int x, int y, const IRECT& srcRect, float alpha,
               int mode) {
    const PixelRows to(dest);
    const PixelRows from(src);
    const unsigned weight = WeightOf(alpha);
    if (to.Empty() || from.Empty() || weight == 0) return;
    const BlitSpan across = ClipSpan(srcRect.L, srcRect.R, x, from.Bounds().R, to.Bounds().R);
    const BlitSpan down = ClipSpan(srcRect.T, srcRect.B, y, from.Bounds().B, to.Bounds().B);
    if (across.count == 0) return;
    WithOperation(mode, [&]<int Operation>() {
        for (int row = 0; row < down.count; ++row) {
            BlendRow<Operation>(to.At(across.dest, down.dest + row),
                                from.At(across.source, down.source + row), across.count, weight,
                                UsesAlpha(mode));
        }
    });
}

void LICE_ScaledBlit(LICE_IBitmap* dest, LICE_IBitmap* src, const IRECT& destRect, const IRECT& srcRect,
                     float alpha, int mode) {
    const PixelRows to(dest);
    const PixelRows from(src);
    const unsigned weight = WeightOf(alpha);
    const IRECT drawn = destRect.Intersect(to.Bounds());
    if (to.Empty() || from.Empty() || weight == 0 || drawn.Empty()) return;
    // The source pixel under the middle of a destination pixel.
    const auto nearest = [](int at, int destStart, int destEnd, int start, int end) {
        const std::int64_t destSize = std::int64_t{destEnd} - destStart;
        const std::int64_t middle = 2 * (std::int64_t{at} - destStart) + 1;
        return start + static_cast<int>(middle * (std::int64_t{end} - start) / (2 * destSize));
    };
    WithOperation(mode, [&]<int Operation>() {
        for (int y = drawn.T; y < drawn.B; ++y) {
            const int sourceY = nearest(y, destRect.T, destRect.B, srcRect.T, srcRect.B);
            for (int x = drawn.L; x < drawn.R; ++x) {
                const int sourceX = nearest(x, destRect.L, destRect.R, srcRect.L, srcRect.R);
                if (!from.Bounds().Contains(sourceX, sourceY)) continue;
                const LICE_pixel pixel = *from.At(sourceX, sourceY);
                PutBlended<Operation>(*to.At(x, y), pixel, PutAlpha(pixel, weight, UsesAlpha(mode)));
            }
        }
    });
}

void LICE_FillRect(LICE_IBitmap* dest, int x, int y, int w, int h, LICE_pixel color, float alpha, int mode) {
    const PixelRows rows(dest);
    if (rows.Empty() || w <= 0 || h <= 0) return;
    const IRECT filled = RectOf(x, y, w, h).Intersect(rows.Bounds());
    const unsigned put = PutAlpha(color, WeightOf(alpha), UsesAlpha(mode));
    if (filled.Empty() || put == 0) return;
    WithOperation(mode, [&]<int Operation>() {
        for (int row = filled.T; row < filled.B; ++row)
            FillRow<Operation>(rows.At(filled.L, row), filled.W(), color, put);
    });
}

} // namespace Grimworks
