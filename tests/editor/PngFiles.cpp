#include "tests/editor/PngFiles.h"

#include <png.h>

#include <cmath>
#include <cstdlib>

namespace Grimworks {

namespace {

constexpr int kPaletteTransparent = 3; ///< entries with a transparency of their own

int ChannelsOf(const PngKind& kind) {
    switch (kind.colorType) {
    case PNG_COLOR_TYPE_RGB:
        return 3;
    case PNG_COLOR_TYPE_RGB_ALPHA:
        return 4;
    case PNG_COLOR_TYPE_GRAY_ALPHA:
        return 2;
    default:
        return 1;
    }
}

int Largest(const PngKind& kind) {
    return (1 << kind.bitDepth) - 1;
}

/// A sample on 0..255.
int InEightBits(const PngKind& kind, int sample) {
    return static_cast<int>(std::lround(sample * 255.0 / Largest(kind)));
}

int PaletteRed(int index) {
    return (index * 37 + 11) % 256;
}
int PaletteGreen(int index) {
    return (index * 91 + 200) % 256;
}
int PaletteBlue(int index) {
    return (index * 13) % 256;
}
int PaletteAlpha(int index) {
    return index < kPaletteTransparent ? index * 100 : 255;
}

void Append(png_structp png, png_bytep data, std::size_t count) {
    auto& file = *static_cast<std::vector<std::uint8_t>*>(png_get_io_ptr(png));
    file.insert(file.end(), data, data + count);
}

void Stop(png_structp, png_const_charp) {
    std::abort();
}

void WritePalette(png_structp png, png_infop info, const PngKind& kind) {
    std::vector<png_color> palette;
    std::vector<png_byte> alphas;
    for (int i = 0; i <= Largest(kind); ++i) {
        palette.push_back({static_cast<png_byte>(PaletteRed(i)), static_cast<png_byte>(PaletteGreen(i)),
                           static_cast<png_byte>(PaletteBlue(i))});
        if (i < kPaletteTransparent) alphas.push_back(static_cast<png_byte>(PaletteAlpha(i)));
    }
    png_set_PLTE(png, info, palette.data(), static_cast<int>(palette.size()));
    if (kind.transparency) png_set_tRNS(png, info, alphas.data(), static_cast<int>(alphas.size()), nullptr);
}

/// The colour of the pixel at 0, 0 is the transparent one.
void WriteTransparentColor(png_structp png, png_infop info, const PngKind& kind) {
    png_color_16 color{};
    color.gray = static_cast<png_uint_16>(PngSample(kind, 0, 0, 0));
    color.red = color.gray;
    color.green = static_cast<png_uint_16>(PngSample(kind, 0, 0, 1));
    color.blue = static_cast<png_uint_16>(PngSample(kind, 0, 0, 2));
    png_set_tRNS(png, info, nullptr, 0, &color);
}

/// Rows of samples packed as the file holds them.
std::vector<std::vector<png_byte>> PackedRows(const PngKind& kind, int width, int height) {
    const int channels = ChannelsOf(kind);
    const int bits = kind.bitDepth * channels * width;
    std::vector<std::vector<png_byte>> rows;
    for (int y = 0; y < height; ++y) {
        std::vector<png_byte> row(static_cast<std::size_t>((bits + 7) / 8));
        int at = 0;
        for (int x = 0; x < width; ++x) {
            for (int channel = 0; channel < channels; ++channel) {
                const int sample = PngSample(kind, x, y, channel);
                for (int bit = kind.bitDepth - 1; bit >= 0; --bit, ++at) {
                    if ((sample >> bit & 1) == 0) continue;
                    png_byte& byte = row[static_cast<std::size_t>(at / 8)];
                    byte = static_cast<png_byte>(byte | (0x80 >> (at % 8)));
                }
            }
        }
        rows.push_back(row);
    }
    return rows;
}

} // namespace

std::vector<PngKind> AllPngKinds() {
    std::vector<PngKind> kinds;
    const auto add = [&kinds](int type, std::initializer_list<int> depths, bool mayBeTransparent) {
        for (const int depth : depths) {
            for (const bool interlaced : {false, true}) {
                kinds.push_back({type, depth, interlaced, false});
                if (mayBeTransparent) kinds.push_back({type, depth, interlaced, true});
            }
        }
    };
    add(PNG_COLOR_TYPE_GRAY, {1, 2, 4, 8, 16}, true);
    add(PNG_COLOR_TYPE_RGB, {8, 16}, true);
    add(PNG_COLOR_TYPE_PALETTE, {1, 2, 4, 8}, true);
    add(PNG_COLOR_TYPE_GRAY_ALPHA, {8, 16}, false);
    add(PNG_COLOR_TYPE_RGB_ALPHA, {8, 16}, false);
    return kinds;
}

int PngSample(const PngKind& kind, int x, int y, int channel) {
    const unsigned mixed =
        static_cast<unsigned>(x * 7919 + y * 104729 + channel * 1299709 + 12345) * 2654435761U;
    return static_cast<int>((mixed >> 8U) % static_cast<unsigned>(Largest(kind) + 1));
}

LICE_pixel PngPixel(const PngKind& kind, int x, int y) {
    const auto sample = [&](int channel) { return PngSample(kind, x, y, channel); };
    const auto eight = [&](int channel) { return InEightBits(kind, sample(channel)); };
    const auto isFirst = [&](int channel) { return sample(channel) == PngSample(kind, 0, 0, channel); };
    switch (kind.colorType) {
    case PNG_COLOR_TYPE_PALETTE: {
        const int index = sample(0);
        return LICE_RGBA(PaletteRed(index), PaletteGreen(index), PaletteBlue(index),
                         kind.transparency ? PaletteAlpha(index) : 255);
    }
    case PNG_COLOR_TYPE_GRAY:
        return LICE_RGBA(eight(0), eight(0), eight(0), kind.transparency && isFirst(0) ? 0 : 255);
    case PNG_COLOR_TYPE_GRAY_ALPHA:
        return LICE_RGBA(eight(0), eight(0), eight(0), eight(1));
    case PNG_COLOR_TYPE_RGB: {
        const bool transparent = kind.transparency && isFirst(0) && isFirst(1) && isFirst(2);
        return LICE_RGBA(eight(0), eight(1), eight(2), transparent ? 0 : 255);
    }
    default:
        return LICE_RGBA(eight(0), eight(1), eight(2), eight(3));
    }
}

std::vector<std::uint8_t> MakePng(const PngKind& kind, int width, int height) {
    std::vector<std::uint8_t> file;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, Stop, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(png, &file, Append, nullptr);
    png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), kind.bitDepth,
                 kind.colorType, kind.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (kind.colorType == PNG_COLOR_TYPE_PALETTE) {
        WritePalette(png, info, kind);
    } else if (kind.transparency) {
        WriteTransparentColor(png, info, kind);
    }
    png_write_info(png, info);
    auto rows = PackedRows(kind, width, height);
    std::vector<png_bytep> pointers;
    pointers.reserve(rows.size());
    for (auto& row : rows)
        pointers.push_back(row.data());
    png_write_image(png, pointers.data());
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return file;
}

} // namespace Grimworks
