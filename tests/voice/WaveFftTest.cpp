#include "voice/WaveFft.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstdint>
#include <memory>
#include <vector>

using namespace Grimworks;

namespace {

using Complex = std::complex<double>;

std::vector<Complex> RandomInput() {
    std::vector<Complex> input;
    std::uint64_t s = 12345;
    const auto next = [&s] {
        s = s * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<double>(s >> 33U) / 1073741824.0 - 1.0;
    };
    for (int i = 0; i < 4096; ++i) {
        const double real = next();
        input.emplace_back(real, next());
    }
    return input;
}

std::vector<Complex> Transformed(const std::vector<Complex>& input) {
    const auto re = std::make_unique<WaveCycle>();
    const auto im = std::make_unique<WaveCycle>();
    for (std::size_t i = 0; i < 4096; ++i) {
        (*re)[i] = input[i].real();
        (*im)[i] = input[i].imag();
    }
    WaveFft().Transform(*re, *im);
    std::vector<Complex> output;
    for (std::size_t i = 0; i < 4096; ++i)
        output.emplace_back((*re)[i], (*im)[i]);
    return output;
}

} // namespace

TEST(WaveFft, AgreesWithThePlainSum) {
    const std::vector<Complex> input = RandomInput();
    const std::vector<Complex> output = Transformed(input);
    std::vector<Complex> roots;
    roots.reserve(4096);
    for (int k = 0; k < 4096; ++k)
        roots.push_back(std::polar(1.0, -2.0 * 3.14159265358979323846 * k / 4096));
    double worst = 0.0;
    for (std::size_t k = 0; k < 4096; k += k < 64 || k >= 4032 || (k > 2000 && k < 2100) ? 1 : 7) {
        double real = 0.0, imag = 0.0;
        for (std::size_t n = 0; n < 4096; ++n) {
            const Complex w = roots[k * n % 4096];
            real += input[n].real() * w.real() - input[n].imag() * w.imag();
            imag += input[n].real() * w.imag() + input[n].imag() * w.real();
        }
        worst = std::fmax(worst, std::abs(output[k] - Complex(real, imag)));
    }
    EXPECT_LT(worst, 1e-9);
}

TEST(WaveFft, AnImpulseTurnsIntoARunningPhase) {
    std::vector<Complex> input(4096);
    input[1] = 1.0;
    const std::vector<Complex> output = Transformed(input);
    EXPECT_NEAR(output[1024].real(), 0.0, 1e-13);
    EXPECT_NEAR(output[1024].imag(), -1.0, 1e-13); // forward sign
    for (const Complex& bin : output)
        EXPECT_NEAR(std::abs(bin), 1.0, 1e-12);
}

TEST(WaveFft, TwiceIsTheInputTurnedRoundTimesItsLength) {
    const std::vector<Complex> input = RandomInput();
    const std::vector<Complex> twice = Transformed(Transformed(input));
    for (std::size_t i = 0; i < 4096; ++i)
        EXPECT_NEAR(std::abs(twice[i] / 4096.0 - input[(4096 - i) % 4096]), 0.0, 1e-12);
}
