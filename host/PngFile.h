#pragma once

#include "host/Picture.h"

#include <filesystem>

namespace Grimworks {

/// Writes a picture as a PNG file. The file appears as a whole or not at all; an older one of this name is
/// replaced. Throws HostError, naming the file, when it cannot be written.
void SavePng(const Picture& picture, const std::filesystem::path& path);

} // namespace Grimworks
