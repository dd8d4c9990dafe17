#include "voice/WaveFft.h"

#include "core/Maths.h"

#include <cmath>
#include <cstddef>
#include <utility>

namespace Grimworks {
namespace {

constexpr std::size_t kSize = kWaveSize;

/// The butterflies of one group: `half` sums in the lower part, as many differences in the upper one. The
/// four pieces never overlap, which lets the compiler work on several at a time.
void Butterflies(double* __restrict lowReal, double* __restrict lowImag, double* __restrict highReal,
                 double* __restrict highImag, const double* __restrict wReal, const double* __restrict wImag,
                 std::size_t half) {
    for (std::size_t j = 0; j < half; ++j) {
        const double tr = highReal[j] * wReal[j] - highImag[j] * wImag[j];
        const double ti = highReal[j] * wImag[j] + highImag[j] * wReal[j];
        highReal[j] = lowReal[j] - tr;
        highImag[j] = lowImag[j] - ti;
        lowReal[j] = lowReal[j] + tr;
        lowImag[j] = lowImag[j] + ti;
    }
}

} // namespace

WaveFft::WaveFft() {
    std::size_t reversed = 0;
    for (std::size_t i = 1; i < kSize; ++i) {
        std::size_t bit = kSize / 2;
        for (; (reversed & bit) != 0; bit /= 2)
            reversed ^= bit;
        reversed |= bit;
        if (i < reversed)
            swaps.push_back({static_cast<std::uint16_t>(i), static_cast<std::uint16_t>(reversed)});
    }
    twiddleReal.reserve(kSize);
    twiddleImag.reserve(kSize);
    for (std::size_t half = 1; half < kSize; half *= 2) {
        const double stepReal = std::cos(kPi / static_cast<double>(half));
        const double stepImag = -std::sin(kPi / static_cast<double>(half));
        double real = 1.0;
        double imag = 0.0;
        for (std::size_t j = 0; j < half; ++j) {
            twiddleReal.push_back(real);
            twiddleImag.push_back(imag);
            const double last = real;
            real = last * stepReal - imag * stepImag;
            imag = last * stepImag + imag * stepReal;
        }
    }
}

void WaveFft::Transform(WaveSpan re, WaveSpan im) const {
    for (const Swap& swap : swaps) {
        std::swap(re[swap.from], re[swap.to]);
        std::swap(im[swap.from], im[swap.to]);
    }
    for (std::size_t half = 1; half < kSize; half *= 2) {
        const double* wReal = twiddleReal.data() + half - 1;
        const double* wImag = twiddleImag.data() + half - 1;
        for (std::size_t group = 0; group < kSize; group += 2 * half) {
            double* real = re.data() + group;
            double* imag = im.data() + group;
            Butterflies(real, imag, real + half, imag + half, wReal, wImag, half);
        }
    }
}

} // namespace Grimworks
