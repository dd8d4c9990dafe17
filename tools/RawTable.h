#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

/// What the drawing tools share: a table of doubles and its file.
namespace Drawing {

using Table = std::vector<double>;

inline constexpr double kPi = 3.14159265358979323846;

/// Scales the table so that its largest absolute value is exactly 1.
inline void NormaliseToOne(Table& table) {
    double peak = 0.0;
    for (const double v : table)
        peak = std::fabs(v) > peak ? std::fabs(v) : peak;
    for (double& v : table)
        v /= peak;
}

/// Noise of its own sequence, -1 up to 1, so that every run draws the same.
class Noise {
public:
    explicit Noise(std::uint64_t seed) : state(seed) {}

    double Next() {
        state = state * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<double>(state >> 33U) / 1073741824.0 - 1.0;
    }

private:
    std::uint64_t state;
};

/// Writes little-endian 64-bit floats without a header. False, with a message, if the file can't be written.
inline bool WriteRaw(const std::string& path, const Table& table) {
    std::ofstream file(path, std::ios::binary);
    for (const double v : table) {
        const auto word = std::bit_cast<std::uint64_t>(v);
        for (unsigned i = 0; i < 8; ++i)
            file.put(static_cast<char>((word >> (8 * i)) & 0xffU));
    }
    file.flush();
    if (file) return true;
    std::fprintf(stderr, "%s: can't be written\n", path.c_str());
    return false;
}

} // namespace Drawing
