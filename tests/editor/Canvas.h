#pragma once

#include "editor/LICE_Draw.h"
#include "editor/LICE_MemBitmap.h"

#include <string>
#include <vector>

namespace Grimworks {

inline constexpr LICE_pixel kBlack = LICE_RGBA(0, 0, 0, 255);
inline constexpr LICE_pixel kWhite = LICE_RGBA(255, 255, 255, 255);
inline constexpr LICE_pixel kRed = LICE_RGBA(255, 0, 0, 255);
inline constexpr LICE_pixel kGreen = LICE_RGBA(0, 255, 0, 255);
inline constexpr LICE_pixel kBlue = LICE_RGBA(0, 0, 255, 255);

/// Every pixel of a bitmap, row by row.
inline std::vector<LICE_pixel> PixelsOf(LICE_IBitmap& bitmap) {
    std::vector<LICE_pixel> pixels;
    pixels.reserve(static_cast<std::size_t>(bitmap.getWidth()) *
                   static_cast<std::size_t>(bitmap.getHeight()));
    for (int y = 0; y < bitmap.getHeight(); ++y) {
        for (int x = 0; x < bitmap.getWidth(); ++x)
            pixels.push_back(LICE_GetPixel(&bitmap, x, y));
    }
    return pixels;
}

/// A picture as rows of letters: '.' where the pixel is still the ground, '#' where it is another.
inline std::vector<std::string> Shape(LICE_IBitmap& bitmap, LICE_pixel ground = kBlack) {
    std::vector<std::string> rows;
    for (int y = 0; y < bitmap.getHeight(); ++y) {
        std::string row;
        for (int x = 0; x < bitmap.getWidth(); ++x)
            row += LICE_GetPixel(&bitmap, x, y) == ground ? '.' : '#';
        rows.push_back(row);
    }
    return rows;
}

/// A bitmap of one colour. Its memory is larger than the picture by a margin on all sides, so that a draw
/// operation that leaves the picture is seen.
class Canvas {
public:
    static constexpr int kMargin = 40;
    static constexpr LICE_pixel kMarginColor = LICE_RGBA(1, 2, 3, 4);

    Canvas(int width, int height, LICE_pixel ground = kBlack)
        : whole(width + 2 * kMargin, height + 2 * kMargin), inside(whole, width, height) {
        for (int y = 0; y < whole.getHeight(); ++y) {
            for (int x = 0; x < whole.getWidth(); ++x)
                whole.getBits()[y * whole.getRowSpan() + x] = kMarginColor;
        }
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x)
                inside.getBits()[y * whole.getRowSpan() + x] = ground;
        }
    }

    LICE_IBitmap& operator*() { return inside; }
    [[nodiscard]] LICE_IBitmap* Get() { return &inside; }

    [[nodiscard]] LICE_pixel At(int x, int y) { return LICE_GetPixel(&inside, x, y); }

    /// Whether nothing was drawn outside the picture.
    [[nodiscard]] bool IsMarginWhole() {
        for (int y = 0; y < whole.getHeight(); ++y) {
            for (int x = 0; x < whole.getWidth(); ++x) {
                const bool outside = x < kMargin || y < kMargin || x >= kMargin + inside.getWidth() ||
                                     y >= kMargin + inside.getHeight();
                if (outside && whole.getBits()[y * whole.getRowSpan() + x] != kMarginColor) return false;
            }
        }
        return true;
    }

private:
    class Inside final : public LICE_IBitmap {
    public:
        Inside(LICE_MemBitmap& around, int pictureWidth, int pictureHeight)
            : bits(around.getBits() + std::ptrdiff_t{kMargin} * around.getRowSpan() + kMargin),
              span(around.getRowSpan()), width(pictureWidth), height(pictureHeight) {}
        LICE_pixel* getBits() override { return bits; }
        int getWidth() override { return width; }
        int getHeight() override { return height; }
        int getRowSpan() override { return span; }
        bool resize(int, int) override { return false; }

    private:
        LICE_pixel* bits;
        int span;
        int width;
        int height;
    };

    LICE_MemBitmap whole;
    Inside inside;
};

} // namespace Grimworks
