#include "voice/WavFile.h"

#include "core/Maths.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cfloat>
#include <cmath>
#include <cstring>
#include <vector>

namespace Grimworks {
namespace {

constexpr std::size_t kHeaderBytes = 44;
constexpr std::size_t kResampledPoints = 4100;
constexpr std::size_t kDroppedPoints = 2;
constexpr double kCutoff = 0.693; ///< of the Nyquist frequency of the slower side
constexpr double kQ = 0.7071;

/// Second-order low-pass, direct form 1; coefficients after the audio EQ cookbook of R. Bristow-Johnson.
class LowPass {
public:
    /// w is the cutoff relative to the Nyquist frequency, 0..1.
    explicit LowPass(double w) {
        const double c = std::cos(kPi * w);
        const double a = std::sin(kPi * w) / (2.0 * kQ);
        const double d = 1.0 / (1.0 + a);
        b0 = (1.0 - c) * d / 2.0;
        b1 = (1.0 - c) * d;
        a1 = -2.0 * c * d;
        a2 = (1.0 - a) * d;
    }

    double Process(double x) {
        const double y = b0 * x + b1 * x1 + b0 * x2 - a1 * y1 - a2 * y2;
        x2 = x1;
        x1 = x;
        y2 = y1;
        y1 = std::fabs(y) < DBL_MIN ? 0.0 : y;
        return y1;
    }

private:
    double b0, b1, a1, a2;
    double x1 = 0.0, x2 = 0.0, y1 = 0.0, y2 = 0.0;
};

void Filter(std::span<double> points, double w) {
    LowPass filter(w);
    for (double& v : points)
        v = filter.Process(v);
}

} // namespace

WavFile::WavFile(std::span<const std::byte> file) : bytes(file) {
    if (!ReadFormat()) return;
    const std::size_t data = FindData();
    if (data == 0) return;
    start = data + 8;
    const std::size_t byteCount = Word(data + 4, 4);
    std::size_t announced = byteCount / sampleBytes / channels;
    if (byteCount == sampleBytes) {
        // A data chunk of a single sample is no wave: the length is taken from the RIFF header instead.
        const std::size_t all = Word(4, 4) / sampleBytes / channels;
        announced = all > 36 ? all - 36 : 0;
    }
    frames = std::min(announced, (bytes.size() - start) / sampleBytes / channels);
}

/// Little-endian number of up to four bytes, which must lie within the file.
std::uint32_t WavFile::Word(std::size_t offset, std::size_t width) const {
    std::uint32_t word = 0;
    for (std::size_t i = 0; i < width; ++i)
        word |= std::to_integer<std::uint32_t>(bytes[offset + i]) << (8 * i);
    return word;
}

bool WavFile::HasMark(std::size_t offset, const char (&mark)[5]) const {
    return std::memcmp(bytes.data() + offset, mark, 4) == 0;
}

bool WavFile::ReadFormat() {
    if (bytes.size() < kHeaderBytes || !HasMark(0, "RIFF") || !HasMark(8, "WAVE")) return false;
    isFloat = Word(20, 2) == 3;
    channels = Word(22, 2);
    const std::uint32_t bits = Word(34, 2);
    sampleBytes = bits / 8;
    constexpr std::array<std::uint32_t, 5> kWidths{8, 16, 24, 32, 64};
    const bool knownWidth = std::find(kWidths.begin(), kWidths.end(), bits) != kWidths.end();
    return knownWidth && (channels == 1 || channels == 2);
}

/// Place of the data chunk's mark, with its length word inside the file; 0 if there is none.
std::size_t WavFile::FindData() const {
    constexpr std::size_t kUsualPlace = 36;
    if (HasMark(kUsualPlace, "data")) return kUsualPlace;
    for (std::size_t place = kHeaderBytes; place + 8 <= bytes.size(); ++place) {
        if (HasMark(place, "data")) return place;
    }
    return 0;
}

double WavFile::Sample(std::size_t offset) const {
    if (isFloat) {
        if (sampleBytes == 4) return static_cast<double>(std::bit_cast<float>(Word(offset, 4)));
        if (sampleBytes != 8) return 0.0;
        const std::uint64_t high = Word(offset + 4, 4);
        return std::bit_cast<double>((high << 32U) | Word(offset, 4));
    }
    switch (sampleBytes) {
    case 1:
        return static_cast<double>(Word(offset, 1)) - 128.0;
    case 2:
        return static_cast<double>(static_cast<std::int16_t>(Word(offset, 2)));
    case 3:
        return static_cast<double>(static_cast<std::int32_t>(Word(offset, 3) << 8U));
    case 4:
        return static_cast<double>(static_cast<std::int32_t>(Word(offset, 4)));
    default:
        return 0.0;
    }
}

double WavFile::Frame(std::size_t index) const {
    const std::size_t offset = start + index * sampleBytes * channels;
    double value = Sample(offset);
    if (channels == 2) value = (value + Sample(offset + sampleBytes)) / 2.0;
    return std::isfinite(value) ? value : 0.0;
}

void WavFile::ResampleTo(WaveSpan cycle) const {
    if (frames == 0) return;
    const double ratio = static_cast<double>(frames) / kWaveSize;
    std::vector<double> input(frames);
    for (std::size_t i = 0; i < frames; ++i)
        input[i] = Frame(i);
    if (ratio > 1.0) Filter(input, kCutoff / ratio);

    std::array<double, kResampledPoints> output{};
    double position = 0.0;
    for (double& point : output) {
        const auto k = static_cast<std::size_t>(position);
        const double f = position - static_cast<double>(k);
        const double a = input[std::min(k, frames - 1)];
        const double b = input[std::min(k + 1, frames - 1)];
        point = (1.0 - f) * a + f * b;
        position += ratio;
    }
    if (ratio < 1.0) Filter(output, kCutoff * ratio);
    std::copy_n(output.begin() + kDroppedPoints, cycle.size(), cycle.begin());
}

} // namespace Grimworks
