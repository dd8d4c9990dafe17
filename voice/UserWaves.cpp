#include "voice/UserWaves.h"

#include "core/Normalise.h"
#include "voice/WavFile.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace Grimworks {
namespace {

constexpr double kUserPeak = 0.998777;
constexpr std::size_t kWavFileLimit = 10485760;
constexpr std::size_t kRawFileLimit = sizeof(double) * kWaveSize;

#ifdef _WIN32
constexpr const char* kSeparator = "\\";
#else
constexpr const char* kSeparator = "/";
#endif

struct FileCloser {
    void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};

/// The first `limit` bytes of a file; empty if it can't be read.
std::vector<std::byte> ReadFile(const std::string& path, std::size_t limit) {
    std::vector<std::byte> bytes;
    const std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "rb"));
    if (!file) return bytes;
    constexpr std::size_t kPiece = 65536;
    while (bytes.size() < limit) {
        const std::size_t have = bytes.size();
        bytes.resize(have + kPiece);
        const std::size_t got = std::fread(bytes.data() + have, 1, kPiece, file.get());
        bytes.resize(have + got);
        if (got == 0) break;
    }
    if (bytes.size() > limit) bytes.resize(limit);
    return bytes;
}

double RawValue(std::span<const std::byte> file, std::size_t index) {
    std::uint64_t word = 0;
    for (std::size_t i = 0; i < sizeof(double); ++i)
        word |= std::to_integer<std::uint64_t>(file[index * sizeof(double) + i]) << (8 * i);
    return std::bit_cast<double>(word);
}

void SilenceNonFinite(WaveSpan cycle) {
    for (double& v : cycle) {
        if (!std::isfinite(v)) v = 0.0;
    }
}

void Stretch(std::span<const std::byte> file, std::size_t count, WaveSpan cycle) {
    for (std::size_t i = 0; i < cycle.size(); ++i) {
        const double position = static_cast<double>(i) / kWaveSize * static_cast<double>(count);
        const auto k = static_cast<std::size_t>(position);
        const double f = position - static_cast<double>(k);
        const std::size_t next = k + 1 < count ? k + 1 : count - 1;
        cycle[i] = (1.0 - f) * RawValue(file, k) + f * RawValue(file, next);
    }
}

} // namespace

std::string UserWaveBaseFolder() {
    const char* base = std::getenv("THUDFORGE_WAVES"); // NOLINT(concurrency-mt-unsafe)
    return base != nullptr ? base : "";
}

std::string UserWavePath(const std::string& baseFolder, int number) {
    std::string path = baseFolder;
    path.append(kSeparator).append("waveforms").append(kSeparator).append("user");
    if (number < 10) path += '0';
    return path.append(std::to_string(number)).append(".raw");
}

void TakeRawWave(std::span<const std::byte> file, WaveSpan cycle) {
    const std::size_t count = file.size() / sizeof(double);
    if (count == 0) return;
    if (count >= cycle.size()) {
        for (std::size_t i = 0; i < cycle.size(); ++i)
            cycle[i] = RawValue(file, i);
    } else {
        Stretch(file, count, cycle);
    }
    SilenceNonFinite(cycle);
}

void TakeWavWave(std::span<const std::byte> file, WaveSpan cycle) {
    const WavFile wav(file);
    if (wav.Frames() == 0) return;
    if (wav.Frames() == cycle.size()) {
        // The odd samples keep what stood there: such files interleave with the wave of the slot.
        for (std::size_t i = 0; i < cycle.size(); i += 2)
            cycle[i] = wav.Frame(i);
    } else {
        wav.ResampleTo(cycle);
    }
    SilenceNonFinite(cycle);
}

void LoadUserWave(const std::string& path, WaveSpan cycle) {
    if (path.find(".wav") == std::string::npos) {
        TakeRawWave(ReadFile(path, kRawFileLimit), cycle);
        return;
    }
    const std::vector<std::byte> file = ReadFile(path, kWavFileLimit);
    if (file.size() < kWavFileLimit) TakeWavWave(file, cycle);
}

void LoadUserWaves(const std::string& baseFolder, std::span<WaveCycle, kWaveforms> waves) {
    const std::span<WaveCycle> slots = waves.subspan(Waveform::User1, kUserFileSlots);
    for (int slot = 0; slot < kUserFileSlots; ++slot) {
        const int number = slot < kUserFiles ? slot + 1 : kUserFiles;
        WaveCycle& cycle = slots[static_cast<std::size_t>(slot)];
        LoadUserWave(UserWavePath(baseFolder, number), cycle);
        Normalise(cycle, kUserPeak);
    }
}

} // namespace Grimworks
