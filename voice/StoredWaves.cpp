#include "voice/StoredWaves.h"

#include "core/Limits.h"
#include "voice/WaveNames.h"

#include <array>
#include <bit>
#include <cstddef>

// The files are embedded as they are.
static_assert(std::endian::native == std::endian::little);

// Laid out in StoredWaves.S: the five plain shapes and the sixteen user waves one after another, then the
// nine clicks one after another.
extern "C" {
[[gnu::visibility("hidden")]] extern const double thudforgeStoredWaves[];
[[gnu::visibility("hidden")]] extern const double thudforgeStoredClicks[];
}

namespace Grimworks {
namespace {

constexpr std::array kPlainShapes{Waveform::Pulse, Waveform::QuadPulse, Waveform::Triangle, Waveform::Trapez,
                                  Waveform::XTrapez};

constexpr std::array<std::size_t, kStoredClicks> kClickLengths{436,  1460, 1953, 1604, 2336,
                                                               4174, 2464, 5030, 8224};

/// Place of a waveform's cycle among the stored ones, -1 for a wave that is not stored.
int StoredPlace(int waveform) {
    for (std::size_t i = 0; i < kPlainShapes.size(); ++i) {
        if (kPlainShapes[i] == waveform) return static_cast<int>(i);
    }
    if (waveform < Waveform::User1 || waveform > Waveform::User16) return -1;
    return static_cast<int>(kPlainShapes.size()) + waveform - Waveform::User1;
}

} // namespace

std::span<const double> StoredWave(int waveform) {
    const int place = StoredPlace(waveform);
    if (place < 0) return {};
    constexpr std::size_t kLength = kWaveSize;
    return {&thudforgeStoredWaves[static_cast<std::size_t>(place) * kLength], kLength};
}

std::span<const double> StoredClick(int index) {
    if (index < 0 || index >= kStoredClicks) return {};
    const auto click = static_cast<std::size_t>(index);
    std::size_t begin = 0;
    for (std::size_t i = 0; i < click; ++i)
        begin += kClickLengths[i];
    return {&thudforgeStoredClicks[begin], kClickLengths[click]};
}

} // namespace Grimworks
