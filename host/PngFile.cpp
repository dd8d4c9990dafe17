#include "host/PngFile.h"

#include "host/Files.h"
#include "host/HostError.h"

#include <png.h>

#include <string>

namespace Grimworks {

namespace {

std::vector<std::uint8_t> Encoded(const Picture& picture, const std::filesystem::path& path) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGB;
    png_alloc_size_t length = 0;
    std::vector<std::uint8_t> bytes;
    const auto write = [&](void* target) {
        return png_image_write_to_memory(&image, target, &length, 0, picture.pixels.data(), 0, nullptr) != 0;
    };
    // The first call only counts.
    bool done = write(nullptr);
    if (done) {
        bytes.resize(length);
        done = write(bytes.data());
    }
    if (!done) throw HostError(TextFromPath(path) + ": cannot be written: " + image.message);
    bytes.resize(length);
    return bytes;
}

} // namespace

void SavePng(const Picture& picture, const std::filesystem::path& path) {
    WriteFileBytes(path, Encoded(picture, path));
}

} // namespace Grimworks
