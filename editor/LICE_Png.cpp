#include "editor/LICE_Png.h"

#include <png.h>

#include <algorithm>
#include <csetjmp>
#include <cstring>

namespace Grimworks {

namespace {

constexpr std::size_t kSignatureSize = 8;
constexpr std::size_t kHeaderSize = 24; ///< signature, length and name of the first chunk, width, height

bool HasSignature(std::span<const std::uint8_t> file) {
    return file.size() >= kSignatureSize && png_sig_cmp(file.data(), 0, kSignatureSize) == 0;
}

/// libpng's objects for one file. Everything that a jump out of libpng passes over is a plain member here, so
/// that nothing is lost by it.
class PngReader {
public:
    explicit PngReader(std::span<const std::uint8_t> file)
        : rest(file), png(png_create_read_struct(PNG_LIBPNG_VER_STRING, this, Fail, Ignore)),
          info(png != nullptr ? png_create_info_struct(png) : nullptr) {}
    ~PngReader() { png_destroy_read_struct(&png, &info, nullptr); }
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;

    /// Reads the whole picture; false after any error.
    bool Read(LICE_MemBitmap& bitmap) {
        if (info == nullptr || !ReadHeader()) return false;
        return bitmap.resize(static_cast<int>(width), static_cast<int>(height)) && ReadRows(bitmap.getBits());
    }

private:
    bool ReadHeader() {
        if (setjmp(jump) != 0) return false; // NOLINT(cert-err52-cpp): libpng's way of reporting
        png_set_user_limits(png, LICE_MemBitmap::kMaxSize, LICE_MemBitmap::kMaxSize);
        png_set_read_fn(png, this, Take);
        png_read_info(png, info);
        width = png_get_image_width(png, info);
        height = png_get_image_height(png, info);
        AskForBgra();
        png_read_update_info(png, info);
        return png_get_rowbytes(png, info) == std::size_t{4} * width;
    }

    /// Has libpng turn every kind of picture into bytes of blue, green, red and alpha.
    void AskForBgra() {
        const int type = png_get_color_type(png, info);
        const bool hasTransparency = png_get_valid(png, info, PNG_INFO_tRNS) != 0;
        if (type == PNG_COLOR_TYPE_PALETTE) png_set_palette_to_rgb(png);
        if (png_get_bit_depth(png, info) < 8) png_set_expand_gray_1_2_4_to_8(png);
        if (hasTransparency) png_set_tRNS_to_alpha(png);
        png_set_scale_16(png);
        if ((type & PNG_COLOR_MASK_COLOR) == 0) png_set_gray_to_rgb(png);
        png_set_bgr(png);
        if ((type & PNG_COLOR_MASK_ALPHA) == 0 && !hasTransparency) {
            png_set_filler(png, 0xFF, PNG_FILLER_AFTER);
        }
        passes = png_set_interlace_handling(png);
    }

    bool ReadRows(LICE_pixel* pixels) {
        if (setjmp(jump) != 0) return false; // NOLINT(cert-err52-cpp)
        for (int pass = 0; pass < passes; ++pass) {
            for (png_uint_32 row = 0; row < height; ++row)
                png_read_row(png, reinterpret_cast<png_bytep>(pixels + std::size_t{row} * width), nullptr);
        }
        png_read_end(png, nullptr);
        return true;
    }

    static void Take(png_structp png, png_bytep to, std::size_t count) {
        auto& reader = *static_cast<PngReader*>(png_get_io_ptr(png));
        if (count > reader.rest.size()) png_error(png, "the file ends early");
        std::memcpy(to, reader.rest.data(), count);
        reader.rest = reader.rest.subspan(count);
    }

    [[noreturn]] static void Fail(png_structp png, png_const_charp) {
        std::longjmp(static_cast<PngReader*>(png_get_error_ptr(png))->jump, 1); // NOLINT(cert-err52-cpp)
    }
    static void Ignore(png_structp, png_const_charp) {}

    std::span<const std::uint8_t> rest;
    std::jmp_buf jump{};
    png_structp png;
    png_infop info;
    png_uint_32 width = 0;
    png_uint_32 height = 0;
    int passes = 1;
};

std::uint32_t BigEndian(const std::uint8_t* at) {
    return std::uint32_t{at[0]} << 24U | std::uint32_t{at[1]} << 16U | std::uint32_t{at[2]} << 8U | at[3];
}

} // namespace

std::unique_ptr<LICE_MemBitmap> LoadPngFromMemory(const void* data, std::size_t size) {
    if (data == nullptr) return nullptr;
    const std::span<const std::uint8_t> file(static_cast<const std::uint8_t*>(data), size);
    if (!HasSignature(file)) return nullptr;
    auto bitmap = std::make_unique<LICE_MemBitmap>();
    PngReader reader(file);
    return reader.Read(*bitmap) ? std::move(bitmap) : nullptr;
}

bool ReadPngSize(std::span<const std::uint8_t> file, int& width, int& height) {
    if (file.size() < kHeaderSize || !HasSignature(file)) return false;
    if (std::memcmp(file.data() + 12, "IHDR", 4) != 0) return false;
    const std::uint32_t w = BigEndian(file.data() + 16);
    const std::uint32_t h = BigEndian(file.data() + 20);
    if (w == 0 || h == 0 || w > LICE_MemBitmap::kMaxSize || h > LICE_MemBitmap::kMaxSize) return false;
    width = static_cast<int>(w);
    height = static_cast<int>(h);
    return true;
}

LICE_PngBitmap::LICE_PngBitmap(std::span<const std::uint8_t> file) : source(file) {
    if (!ReadPngSize(source, width, height)) source = {};
}

LICE_pixel* LICE_PngBitmap::getBits() {
    if (width == 0) return nullptr;
    std::call_once(once, [this] { decoded = LoadPngFromMemory(source.data(), source.size()); });
    return decoded != nullptr ? decoded->getBits() : nullptr;
}

} // namespace Grimworks
