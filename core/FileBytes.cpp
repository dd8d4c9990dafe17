#include "core/FileBytes.h"

#include <chrono>
#include <exception>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace Grimworks {

namespace {

namespace fs = std::filesystem;

/// Bytes that are no UTF-8 are left to the system to make sense of.
fs::path PathOf(const std::string& path) {
    try {
        return std::u8string(path.begin(), path.end());
    } catch (const std::exception&) {
        return path;
    }
}

bool ReadRegularFile(const fs::path& path, std::vector<std::uint8_t>& bytes, std::uintmax_t limit) {
    if (!fs::is_regular_file(path)) return false;
    const std::uintmax_t size = fs::file_size(path);
    if (size > limit) return false;
    std::ifstream file(path, std::ios::binary);
    bytes.resize(static_cast<std::size_t>(size));
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size));
    return file.good() || (size == 0 && file.is_open());
}

/// A name beside the target that no other writer uses at the same time.
fs::path NameBeside(const fs::path& target) {
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    fs::path beside = target;
    beside += "." + std::to_string(now) + ".part";
    return beside;
}

bool WritePart(const fs::path& part, std::span<const std::uint8_t> bytes) {
    std::ofstream file(part, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    file.close();
    return file.good();
}

bool ReplaceFile(const fs::path& named, std::span<const std::uint8_t> bytes) {
    const fs::path target = fs::is_symlink(named) ? fs::canonical(named) : named;
    const bool exists = fs::exists(target);
    if (exists && !fs::is_regular_file(target)) return false;
    const fs::path part = NameBeside(target);
    std::error_code error;
    bool done = WritePart(part, bytes);
    if (done) {
        if (exists) fs::permissions(part, fs::status(target).permissions(), error);
        fs::rename(part, target, error);
        done = !error;
    }
    if (!done) fs::remove(part, error);
    return done;
}

} // namespace

bool ReadFileBytes(const std::string& path, std::vector<std::uint8_t>& bytes, std::uintmax_t limit) {
    bytes.clear();
    bool done = false;
    try {
        done = ReadRegularFile(PathOf(path), bytes, limit);
    } catch (const std::exception&) {
        done = false;
    }
    if (!done) bytes.clear();
    return done;
}

bool WriteFileBytes(const std::string& path, std::span<const std::uint8_t> bytes) {
    if (path.empty()) return false;
    try {
        return ReplaceFile(PathOf(path), bytes);
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace Grimworks
