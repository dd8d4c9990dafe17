#include "voice/WaveSetBuilder.h"

#include "core/Normalise.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace Grimworks {
namespace {

constexpr std::size_t kSize = kWaveSize;
constexpr double kFirstLevelPeak = 0.999;
constexpr double kSilentBin = 1e-6;

void StoreLevel(WaveTableLevel& level, double topFrequency, ConstWaveSpan samples, double scale) {
    level.topFrequency = topFrequency;
    if (!level.samples) level.samples = std::make_unique<WaveCycle>();
    // Two forward transforms leave the cycle turned round in time.
    for (std::size_t j = 0; j < kSize; ++j)
        (*level.samples)[j] = samples[kSize - 1 - j] * scale;
}

} // namespace

WaveSetBuilder::WaveSetBuilder() : work(std::make_unique<Work>()) {}

void WaveSetBuilder::Build(WaveTableSet& set, ConstWaveSpan cycle) {
    set.count = 0;
    int maxHarmonic = Analyse(cycle);
    if (maxHarmonic == 0) return;

    double topFrequency = (2.0 / 3.0) / maxHarmonic;
    double scale = 0.0;
    while (maxHarmonic > 0 && set.count < WaveTableSet::kMaxLevels) {
        Synthesise(maxHarmonic);
        if (set.count == 0) scale = kFirstLevelPeak / PeakOf(work->imag);
        StoreLevel(set.levels[static_cast<std::size_t>(set.count)], topFrequency, work->imag, scale);
        ++set.count;
        maxHarmonic /= 2;
        topFrequency *= 2.0;
    }
}

/// Leaves the spectrum of the cycle in the work space and gives its highest harmonic, 0 for silence.
int WaveSetBuilder::Analyse(ConstWaveSpan cycle) {
    WaveCycle& real = work->spectrumReal;
    WaveCycle& imag = work->spectrumImag;
    real.fill(0.0);
    std::copy(cycle.begin(), cycle.end(), imag.begin());
    fft.Transform(real, imag);
    for (const std::size_t bin : {std::size_t{0}, kSize / 2}) {
        real[bin] = 0.0;
        imag[bin] = 0.0;
    }
    std::size_t harmonic = kSize / 2;
    while (harmonic > 0 && std::fabs(real[harmonic]) + std::fabs(imag[harmonic]) < kSilentBin)
        --harmonic;
    return static_cast<int>(harmonic);
}

/// Turns the harmonics 1 to maxHarmonic back into a cycle, which appears in the imaginary part.
void WaveSetBuilder::Synthesise(int maxHarmonic) {
    const auto top = static_cast<std::size_t>(maxHarmonic);
    const auto copyBins = [top](const WaveCycle& from, WaveCycle& to) {
        to.fill(0.0);
        std::copy_n(from.begin() + 1, top, to.begin() + 1);
        std::copy(from.end() - static_cast<std::ptrdiff_t>(top), from.end(),
                  to.end() - static_cast<std::ptrdiff_t>(top));
    };
    copyBins(work->spectrumReal, work->real);
    copyBins(work->spectrumImag, work->imag);
    fft.Transform(work->real, work->imag);
}

} // namespace Grimworks
