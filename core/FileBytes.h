#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace Grimworks {

/// Reads a whole regular file into `bytes`. False, with `bytes` empty, if there is none, it cannot be read or
/// it has more than `limit` bytes. Paths are UTF-8.
[[nodiscard]] bool ReadFileBytes(const std::string& path, std::vector<std::uint8_t>& bytes,
                                 std::uintmax_t limit = 1U << 26U);

/// Writes a whole file: first beside the place, then renamed into it, so that an old file there is whole
/// until the new one is. A link is followed. False, with an old file untouched, if anything fails or if the
/// place is taken by something that is no regular file.
[[nodiscard]] bool WriteFileBytes(const std::string& path, std::span<const std::uint8_t> bytes);

} // namespace Grimworks
