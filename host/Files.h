#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace Grimworks {

/// The path that UTF-8 text names, on every system.
[[nodiscard]] std::filesystem::path PathFromText(std::string_view text);

/// A path as UTF-8 text, for messages.
[[nodiscard]] std::string TextFromPath(const std::filesystem::path& path);

/// What the last failed call of the C library meant, or "unknown error".
[[nodiscard]] std::string LastSystemError();

/// The whole content of a file. Throws HostError when it cannot be read or has more than `limit` bytes.
[[nodiscard]] std::vector<std::uint8_t> ReadFileBytes(const std::filesystem::path& path, std::size_t limit);

/// Makes a file of these bytes, or puts it in the place of an older one; a file that could not be written
/// whole is never seen under this name. Throws HostError when it cannot be written.
void WriteFileBytes(const std::filesystem::path& path, const std::vector<std::uint8_t>& bytes);

/// The absolute path of the running program, empty if the system will not tell.
[[nodiscard]] std::filesystem::path ExecutablePath();

/// A number that no other running program has: keeps files that are still being written apart.
[[nodiscard]] unsigned long ProcessNumber();

/// True if `stream` (1 output, 2 errors) goes to a terminal and not to a file or another program.
[[nodiscard]] bool IsTerminal(int stream);

} // namespace Grimworks
