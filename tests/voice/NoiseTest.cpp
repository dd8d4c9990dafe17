#include "voice/Noise.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace Grimworks {
namespace {

/// The generator's results by plain modular arithmetic.
std::vector<double> Draws(std::uint64_t seed, int count) {
    std::vector<double> draws;
    std::uint64_t state = seed;
    for (int i = 0; i < count; ++i) {
        state = (state * 214013ULL + 2531011ULL) % 4294967296ULL;
        draws.push_back(static_cast<double>(state / 65536ULL % 32768ULL));
    }
    return draws;
}

TEST(WhiteNoise, TakesOneDrawToMinusOneToOne) {
    RandomGenerator random(1800);
    for (const double draw : Draws(1800, 1000))
        EXPECT_EQ(WhiteNoise(random), 2.0 * draw / 32767.0 - 1.0);
}

TEST(WhiteNoise, TwoGeneratorsOfOneSeedAgree) {
    RandomGenerator first(42);
    RandomGenerator second(42);
    for (int i = 0; i < 1000; ++i)
        EXPECT_EQ(WhiteNoise(first), WhiteNoise(second));
}

/// A one-pole filter as the sum of its impulse response over all past draws.
double Filtered(const std::vector<double>& draws, std::size_t channel, std::size_t last, double pole) {
    double sum = 0.0;
    for (std::size_t n = 0; n <= last; ++n)
        sum += (1.0 - pole) * std::pow(pole, static_cast<double>(last - n)) * draws[3 * n + channel];
    return sum;
}

TEST(PinkNoise, IsThreeWeightedOnePolesOnDrawsOfTheirOwn) {
    constexpr std::size_t kCount = 300;
    const std::vector<double> draws = Draws(7, static_cast<int>(3 * kCount));
    RandomGenerator random(7);
    PinkNoise pink;
    for (std::size_t n = 0; n < kCount; ++n) {
        const double sum = Filtered(draws, 0, n, 0.319) * 0.02109238 +
                           Filtered(draws, 1, n, 0.7756) * 0.07113478 +
                           Filtered(draws, 2, n, 0.9613) * 0.68873558;
        EXPECT_NEAR(pink.Tick(random), sum * 2.0 / 32767.0 - 0.78096274, 1e-9) << n;
    }
}

TEST(PinkNoise, StatesAreIndependent) {
    RandomGenerator random(3);
    PinkNoise warm;
    for (int i = 0; i < 100; ++i)
        warm.Tick(random);
    RandomGenerator forWarm(9);
    RandomGenerator forFresh(9);
    PinkNoise fresh;
    EXPECT_NE(warm.Tick(forWarm), fresh.Tick(forFresh));
}

TEST(PinkNoise, SettlesAroundZeroAndFallsTowardsHighFrequencies) {
    RandomGenerator random(1800);
    PinkNoise pink;
    double sum = 0.0;
    double level = 0.0;
    double slope = 0.0;
    double last = 0.0;
    constexpr int kCount = 200000;
    for (int i = 0; i < 500; ++i)
        last = pink.Tick(random);
    for (int i = 0; i < kCount; ++i) {
        const double value = pink.Tick(random);
        sum += value;
        level += value * value;
        slope += (value - last) * (value - last);
        last = value;
    }
    EXPECT_NEAR(sum / kCount, 0.0, 0.01);
    EXPECT_LT(slope, 0.25 * level); // white noise has twice its level in its differences
}

} // namespace
} // namespace Grimworks
