#include "tools/artwork/Canvas.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>

#include <png.h>
#include <zlib.h>

namespace Artwork {

namespace {

using Bytes = std::vector<std::uint8_t>;

/// Pixels in one of the forms that a PNG can have.
struct Form {
    int colorType = PNG_COLOR_TYPE_RGB_ALPHA;
    int channels = 4;
    Bytes rows;
    std::vector<png_color> palette;
    std::vector<png_byte> transparency;
};

Form RgbaForm(const Bytes& pixels) {
    Form form;
    form.rows = pixels;
    return form;
}

bool IsOpaque(const Bytes& pixels) {
    for (std::size_t i = 3; i < pixels.size(); i += 4) {
        if (pixels[i] != 255) return false;
    }
    return true;
}

Form RgbForm(const Bytes& pixels) {
    Form form;
    form.colorType = PNG_COLOR_TYPE_RGB;
    form.channels = 3;
    form.rows.reserve(pixels.size() / 4 * 3);
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
        for (std::size_t k = 0; k < 3; ++k)
            form.rows.push_back(pixels[i + k]);
    }
    return form;
}

/// Empty rows if there are more than 256 colours. Colours with transparency come first, ordered by
/// brightness, so that neighbours in the picture are neighbours in the palette.
Form PaletteForm(const Bytes& pixels) {
    std::map<std::array<std::uint8_t, 5>, std::size_t> rows;
    const auto keyOf = [&pixels](std::size_t i) {
        return std::array<std::uint8_t, 5>{static_cast<std::uint8_t>(pixels[i + 3] == 255 ? 1 : 0),
                                           pixels[i + 1], pixels[i], pixels[i + 2], pixels[i + 3]};
    };
    Form form;
    form.colorType = PNG_COLOR_TYPE_PALETTE;
    form.channels = 1;
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
        rows.emplace(keyOf(i), 0);
        if (rows.size() > 256) return form;
    }
    for (auto& [key, index] : rows) {
        index = form.palette.size();
        form.palette.push_back({key[2], key[1], key[3]});
        if (key[4] != 255) form.transparency.push_back(key[4]);
    }
    form.rows.reserve(pixels.size() / 4);
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
        form.rows.push_back(static_cast<std::uint8_t>(rows[keyOf(i)]));
    }
    return form;
}

void Append(png_structp png, png_bytep data, png_size_t size) {
    auto* bytes = static_cast<Bytes*>(png_get_io_ptr(png));
    bytes->insert(bytes->end(), data, data + size);
}

Bytes Encode(const Form& form, int width, int height, int filters, int strategy) {
    Bytes file;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(png, &file, Append, nullptr);
    png_set_compression_level(png, 9);
    png_set_compression_mem_level(png, 9);
    png_set_compression_strategy(png, strategy);
    png_set_compression_buffer_size(png, 1U << 20U);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, filters);
    png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), 8,
                 form.colorType, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_BASE, PNG_FILTER_TYPE_BASE);
    if (!form.palette.empty()) {
        png_set_PLTE(png, info, form.palette.data(), static_cast<int>(form.palette.size()));
    }
    if (!form.transparency.empty()) {
        png_set_tRNS(png, info, form.transparency.data(), static_cast<int>(form.transparency.size()),
                     nullptr);
    }
    png_write_info(png, info);
    const std::size_t rowBytes = static_cast<std::size_t>(width) * static_cast<std::size_t>(form.channels);
    for (int y = 0; y < height; ++y)
        png_write_row(png, form.rows.data() + static_cast<std::size_t>(y) * rowBytes);
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return file;
}

void KeepSmaller(Bytes& best, Bytes&& candidate) {
    if (best.empty() || candidate.size() < best.size()) best = std::move(candidate);
}

Bytes Smallest(const Canvas& canvas) {
    const Bytes pixels = canvas.Pixels();
    std::vector<Form> forms;
    forms.push_back(PaletteForm(pixels));
    if (forms.back().rows.empty()) forms.back() = IsOpaque(pixels) ? RgbForm(pixels) : RgbaForm(pixels);
    Bytes best;
    for (const Form& form : forms) {
        for (const int filters :
             {PNG_FILTER_NONE, PNG_FILTER_SUB, PNG_FILTER_UP, PNG_FILTER_PAETH, PNG_ALL_FILTERS}) {
            for (const int strategy : {Z_DEFAULT_STRATEGY, Z_FILTERED}) {
                KeepSmaller(best, Encode(form, canvas.Width(), canvas.Height(), filters, strategy));
            }
        }
    }
    return best;
}

} // namespace

bool WritePng(const Canvas& canvas, const std::string& path) {
    const Bytes file = Smallest(canvas);
    std::FILE* out = std::fopen(path.c_str(), "wb");
    if (out == nullptr) return false;
    const bool written = std::fwrite(file.data(), 1, file.size(), out) == file.size();
    return std::fclose(out) == 0 && written;
}

} // namespace Artwork
