#pragma once

#include "host/Files.h"
#include "host/Picture.h"

#include <filesystem>
#include <png.h>

namespace Grimworks::Testing {

/// What a PNG file shows; an empty picture if it is none.
inline Picture LoadPicture(const std::filesystem::path& path) {
    const auto bytes = ReadFileBytes(path, 64U << 20U);
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()) == 0) return {};
    image.format = PNG_FORMAT_RGB;
    Picture picture{static_cast<int>(image.width), static_cast<int>(image.height), {}};
    picture.pixels.resize(PNG_IMAGE_SIZE(image));
    if (png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr) == 0) return {};
    return picture;
}

} // namespace Grimworks::Testing
