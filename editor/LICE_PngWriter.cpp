#include "editor/LICE_Png.h"

#include <png.h>

#include <csetjmp>

namespace Grimworks {

namespace {

/// As the reader: nothing that a jump passes over has a destructor of its own.
class PngWriter {
public:
    explicit PngWriter(std::vector<std::uint8_t>& target)
        : file(target), png(png_create_write_struct(PNG_LIBPNG_VER_STRING, this, Fail, Ignore)),
          info(png != nullptr ? png_create_info_struct(png) : nullptr) {}
    ~PngWriter() { png_destroy_write_struct(&png, &info); }
    PngWriter(const PngWriter&) = delete;
    PngWriter& operator=(const PngWriter&) = delete;

    bool Write(LICE_IBitmap& bitmap) {
        if (info == nullptr) return false;
        if (setjmp(jump) != 0) return false; // NOLINT(cert-err52-cpp): libpng's way of reporting
        png_set_write_fn(png, this, Append, nullptr);
        png_set_IHDR(png, info, static_cast<png_uint_32>(bitmap.getWidth()),
                     static_cast<png_uint_32>(bitmap.getHeight()), 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                     PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        png_write_info(png, info);
        png_set_bgr(png);
        png_set_filler(png, 0, PNG_FILLER_AFTER);
        const LICE_pixel* row = bitmap.getBits();
        for (int y = 0; y < bitmap.getHeight(); ++y, row += bitmap.getRowSpan())
            png_write_row(png, reinterpret_cast<png_const_bytep>(row));
        png_write_end(png, nullptr);
        return !failed;
    }

private:
    /// Must not let an exception pass through libpng.
    static void Append(png_structp png, png_bytep data, std::size_t count) {
        auto& writer = *static_cast<PngWriter*>(png_get_io_ptr(png));
        try {
            writer.file.insert(writer.file.end(), data, data + count);
        } catch (...) {
            writer.failed = true;
        }
    }
    [[noreturn]] static void Fail(png_structp png, png_const_charp) {
        std::longjmp(static_cast<PngWriter*>(png_get_error_ptr(png))->jump, 1); // NOLINT(cert-err52-cpp)
    }
    static void Ignore(png_structp, png_const_charp) {}

    std::vector<std::uint8_t>& file;
    std::jmp_buf jump{};
    png_structp png;
    png_infop info;
    bool failed = false;
};

} // namespace

bool SavePngToMemory(LICE_IBitmap& bitmap, std::vector<std::uint8_t>& file) {
    return bitmap.getBits() != nullptr && PngWriter(file).Write(bitmap);
}

} // namespace Grimworks
