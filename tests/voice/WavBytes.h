#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

/// Builds wave files byte by byte for the tests.
namespace Grimworks::Testing {

using Bytes = std::vector<std::byte>;

inline void Put(Bytes& bytes, std::uint64_t value, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i)
        bytes.push_back(static_cast<std::byte>((value >> (8 * i)) & 0xffU));
}

inline void Put(Bytes& bytes, std::string_view text) {
    for (const char c : text)
        bytes.push_back(static_cast<std::byte>(c));
}

inline Bytes RawBytes(const std::vector<double>& values) {
    Bytes bytes;
    for (const double v : values)
        Put(bytes, std::bit_cast<std::uint64_t>(v), 8);
    return bytes;
}

struct WavLayout {
    unsigned format = 1;
    unsigned channels = 1;
    unsigned bits = 16;
    std::size_t bytesBeforeData = 0; ///< of another chunk between format and data
    std::uint32_t riffSize = 0;      ///< 0: as it should be
    std::int64_t dataSize = -1;      ///< -1: as it should be
};

inline Bytes WavBytes(const WavLayout& layout, const Bytes& samples) {
    Bytes file;
    const std::size_t extra = layout.bytesBeforeData > 0 ? 8 + layout.bytesBeforeData : 0;
    Put(file, "RIFF");
    Put(file, layout.riffSize != 0 ? layout.riffSize : 36 + extra + samples.size(), 4);
    Put(file, "WAVEfmt ");
    Put(file, 16, 4);
    Put(file, layout.format, 2);
    Put(file, layout.channels, 2);
    Put(file, 44100, 4);
    Put(file, 44100 * layout.channels * layout.bits / 8, 4);
    Put(file, layout.channels * layout.bits / 8, 2);
    Put(file, layout.bits, 2);
    if (layout.bytesBeforeData > 0) {
        Put(file, "LIST");
        Put(file, layout.bytesBeforeData, 4);
        file.resize(file.size() + layout.bytesBeforeData, std::byte{0x20});
    }
    Put(file, "data");
    Put(file, layout.dataSize >= 0 ? static_cast<std::uint64_t>(layout.dataSize) : samples.size(), 4);
    file.insert(file.end(), samples.begin(), samples.end());
    return file;
}

/// Mono 64-bit float, which holds any value exactly.
inline Bytes FloatWav(const std::vector<double>& values) {
    return WavBytes({.format = 3, .bits = 64}, RawBytes(values));
}

} // namespace Grimworks::Testing
