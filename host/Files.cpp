#include "host/Files.h"

#include "host/HostError.h"

#include <cerrno>
#include <fstream>
#include <system_error>

#ifdef _WIN32
#include <array>
#include <io.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace Grimworks {

std::filesystem::path PathFromText(std::string_view text) {
    return {std::u8string(text.begin(), text.end())};
}

std::string TextFromPath(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::string LastSystemError() {
    return errno == 0 ? std::string("unknown error") : std::generic_category().message(errno);
}

std::vector<std::uint8_t> ReadFileBytes(const std::filesystem::path& path, std::size_t limit) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        throw HostError(TextFromPath(path) + ": is a directory");
    }
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file) throw HostError(TextFromPath(path) + ": cannot be opened: " + LastSystemError());
    std::vector<std::uint8_t> bytes;
    constexpr std::size_t kStep = 1U << 16U;
    while (file && bytes.size() <= limit) {
        const std::size_t before = bytes.size();
        bytes.resize(before + kStep);
        file.read(reinterpret_cast<char*>(bytes.data() + before), kStep);
        bytes.resize(before + static_cast<std::size_t>(file.gcount()));
    }
    if (file.bad()) throw HostError(TextFromPath(path) + ": cannot be read: " + LastSystemError());
    if (bytes.size() > limit) {
        throw HostError(TextFromPath(path) + ": is larger than " + std::to_string(limit) + " bytes");
    }
    return bytes;
}

void WriteFileBytes(const std::filesystem::path& path, const std::vector<std::uint8_t>& bytes) {
    const std::string fault = TextFromPath(path) + ": cannot be written: ";
    std::filesystem::path beside = path;
    beside += "." + std::to_string(ProcessNumber()) + ".part";
    errno = 0;
    std::ofstream file(beside, std::ios::binary | std::ios::trunc);
    if (!file) throw HostError(fault + LastSystemError());
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    file.close();
    std::error_code error;
    if (!file) {
        const std::string reason = LastSystemError();
        std::filesystem::remove(beside, error);
        throw HostError(fault + reason);
    }
    std::filesystem::rename(beside, path, error);
    if (!error) return;
    std::error_code ignored;
    std::filesystem::remove(beside, ignored);
    throw HostError(fault + error.message());
}

#ifdef _WIN32

std::filesystem::path ExecutablePath() {
    std::array<wchar_t, 32768> buffer{};
    const DWORD length = GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
    return {std::wstring(buffer.data(), length)};
}

unsigned long ProcessNumber() {
    return GetCurrentProcessId();
}

bool IsTerminal(int stream) {
    return _isatty(stream) != 0;
}

#else

std::filesystem::path ExecutablePath() {
    std::error_code ignored;
    return std::filesystem::read_symlink("/proc/self/exe", ignored);
}

unsigned long ProcessNumber() {
    return static_cast<unsigned long>(getpid());
}

bool IsTerminal(int stream) {
    return isatty(stream) != 0;
}

#endif

} // namespace Grimworks
