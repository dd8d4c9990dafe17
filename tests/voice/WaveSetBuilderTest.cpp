#include "voice/WaveSetBuilder.h"

#include "core/Normalise.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

using namespace Grimworks;

namespace {

constexpr double kTwoPi = 2.0 * 3.14159265358979323846;

std::vector<double> Cycle(double (*shape)(double)) {
    std::vector<double> cycle(4096);
    for (int i = 0; i < 4096; ++i)
        cycle[static_cast<std::size_t>(i)] = shape(i / 4096.0);
    return cycle;
}

std::vector<double> WhiteCycle() {
    std::vector<double> cycle(4096);
    std::uint32_t s = 4711;
    for (double& v : cycle) {
        s = s * 1664525U + 1013904223U;
        v = s / 2147483648.0 - 1.0;
    }
    return cycle;
}

ConstWaveSpan Span(const std::vector<double>& cycle) {
    return ConstWaveSpan(cycle.data(), 4096);
}

std::unique_ptr<WaveTableSet> Built(const std::vector<double>& cycle) {
    auto set = std::make_unique<WaveTableSet>();
    WaveSetBuilder().Build(*set, Span(cycle));
    return set;
}

/// Amplitudes of the harmonics 0 to 2048.
std::vector<double> Amplitudes(ConstWaveSpan samples) {
    const auto re = std::make_unique<WaveCycle>();
    const auto im = std::make_unique<WaveCycle>();
    std::copy(samples.begin(), samples.end(), re->begin());
    im->fill(0.0);
    WaveFft().Transform(*re, *im);
    std::vector<double> amplitudes;
    for (std::size_t k = 0; k <= 2048; ++k)
        amplitudes.push_back(std::hypot((*re)[k], (*im)[k]) / 2048.0);
    return amplitudes;
}

double Energy(const std::vector<double>& amplitudes, std::size_t from) {
    double energy = 0.0;
    for (std::size_t k = from; k < amplitudes.size(); ++k)
        energy += amplitudes[k] * amplitudes[k];
    return energy;
}

const WaveCycle& Samples(const WaveTableSet& set, int level) {
    return *set.levels[static_cast<std::size_t>(level)].samples;
}

} // namespace

TEST(WaveSetBuilder, AFullSpectrumGivesElevenLevels) {
    const auto set = Built(WhiteCycle());
    EXPECT_EQ(set->count, 11);
    double top = (2.0 / 3.0) / 2047;
    for (int level = 0; level < set->count; ++level) {
        EXPECT_DOUBLE_EQ(set->levels[static_cast<std::size_t>(level)].topFrequency, top);
        top *= 2.0;
    }
}

TEST(WaveSetBuilder, ALevelHoldsOnlyItsHarmonics) {
    for (const std::vector<double>& cycle :
         {WhiteCycle(), Cycle([](double x) { return x < 0.5 ? 1.0 : -1.0; }),
          Cycle([](double x) { return 2.0 * x - 1.0; })}) {
        const auto set = Built(cycle);
        std::size_t harmonics = 2047;
        for (int level = 0; level < set->count; ++level) {
            const std::vector<double> amplitudes = Amplitudes(Samples(*set, level));
            const double all = Energy(amplitudes, 1);
            EXPECT_LT(Energy(amplitudes, harmonics + 1), all * 1e-20) << "level " << level; // -200 dB
            EXPECT_LT(amplitudes[0], 1e-12);
            EXPECT_GT(amplitudes[harmonics] + amplitudes[harmonics - (harmonics > 1 ? 1 : 0)], 1e-7);
            harmonics /= 2;
        }
    }
}

TEST(WaveSetBuilder, AHarmonicKeepsItsLevelThroughTheLadder) {
    const auto set = Built(Cycle([](double x) { return 2.0 * x - 1.0; }));
    const std::vector<double> first = Amplitudes(Samples(*set, 0));
    std::size_t harmonics = 2047;
    for (int level = 0; level < set->count; ++level) {
        const std::vector<double> amplitudes = Amplitudes(Samples(*set, level));
        for (std::size_t k = 1; k <= harmonics; ++k)
            ASSERT_NEAR(amplitudes[k], first[k], 1e-12) << "level " << level << " harmonic " << k;
        harmonics /= 2;
    }
}

TEST(WaveSetBuilder, TheFirstLevelPeaksJustBelowOne) {
    for (const double gain : {1e-3, 1.0, 250.0}) {
        std::vector<double> cycle = WhiteCycle();
        for (double& v : cycle)
            v *= gain;
        const auto set = Built(cycle);
        EXPECT_NEAR(PeakOf(Samples(*set, 0)), 0.999, 1e-12);
    }
}

TEST(WaveSetBuilder, ASineHasOneLevelForAllFrequencies) {
    const auto set = Built(Cycle([](double x) { return std::sin(kTwoPi * x); }));
    ASSERT_EQ(set->count, 1);
    EXPECT_DOUBLE_EQ(set->levels[0].topFrequency, 2.0 / 3.0);
}

TEST(WaveSetBuilder, HighestHarmonicDecidesTheNumberOfLevels) {
    const auto set =
        Built(Cycle([](double x) { return std::sin(kTwoPi * x) + 0.1 * std::sin(kTwoPi * 100.0 * x); }));
    EXPECT_EQ(set->count, 7); // 100, 50, 25, 12, 6, 3, 1
    EXPECT_DOUBLE_EQ(set->levels[0].topFrequency, (2.0 / 3.0) / 100);
}

TEST(WaveSetBuilder, TheCycleIsStoredOneSampleEarly) {
    const auto shape = [](double x) {
        return std::sin(kTwoPi * x + 0.3) + 0.5 * std::cos(kTwoPi * 5.0 * x) -
               0.2 * std::sin(kTwoPi * 31.0 * x);
    };
    const std::vector<double> cycle = Cycle(shape);
    const double scale = 0.999 / PeakOf(cycle);
    const auto set = Built(cycle);
    for (std::size_t j = 0; j < 4096; ++j)
        ASSERT_NEAR(Samples(*set, 0)[j], cycle[(j + 1) % 4096] * scale, 1e-9);
}

TEST(WaveSetBuilder, TheMeanIsTakenOut) {
    const auto with = Built(Cycle([](double x) { return 5.0 + std::sin(kTwoPi * x); }));
    const auto without = Built(Cycle([](double x) { return std::sin(kTwoPi * x); }));
    ASSERT_EQ(with->count, 1);
    for (std::size_t j = 0; j < 4096; ++j)
        ASSERT_NEAR(Samples(*with, 0)[j], Samples(*without, 0)[j], 1e-9);
}

TEST(WaveSetBuilder, AWaveWithoutHarmonicsLeavesTheSetEmpty) {
    EXPECT_EQ(Built(std::vector<double>(4096, 0.0))->count, 0);
    EXPECT_EQ(Built(std::vector<double>(4096, 0.75))->count, 0);
    // Only the harmonic at half the table's rate, which is left out.
    EXPECT_EQ(Built(Cycle([](double x) { return std::cos(kTwoPi * 2048.0 * x); }))->count, 0);
}

TEST(WaveSetBuilder, ASetCanBeBuiltAnew) {
    WaveTableSet set;
    WaveSetBuilder builder;
    builder.Build(set, Span(WhiteCycle()));
    const double* const first = set.levels[0].samples->data();
    const std::vector<double> sine = Cycle([](double x) { return std::sin(kTwoPi * x); });
    builder.Build(set, Span(sine));
    EXPECT_EQ(set.count, 1);
    EXPECT_EQ(set.levels[0].samples->data(), first);
    const auto fresh = Built(sine);
    EXPECT_EQ(*set.levels[0].samples, *fresh->levels[0].samples);
    builder.Build(set, Span(std::vector<double>(4096, 0.0)));
    EXPECT_EQ(set.count, 0);
}
