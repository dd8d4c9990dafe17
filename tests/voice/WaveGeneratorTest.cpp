#include "voice/WaveGenerator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <vector>

using namespace Grimworks;

namespace {

using Real = long double;
constexpr Real kPiL = 3.141592653589793238462643383279502884L;

std::vector<WaveCycle> Generated() {
    std::vector<WaveCycle> waves(41);
    RandomGenerator random;
    WriteGeneratedWaves(random, std::span<WaveCycle, kWaveforms>(waves));
    return waves;
}

const std::vector<WaveCycle>& Waves() {
    static const std::vector<WaveCycle> waves = Generated();
    return waves;
}

/// Triangle from its Fourier-free definition by distance to the nearest peak.
Real Tri(Real p) {
    p -= std::floor(p);
    if (p < 0.5L) return 1.0L - 4.0L * std::fabs(p - 0.25L);
    return -1.0L + 4.0L * std::fabs(p - 0.75L);
}

Real Limited(Real v, Real limit) {
    return std::fmax(-limit, std::fmin(limit, v));
}

void ExpectWave(int index, const std::function<Real(Real)>& formula, double tolerance = 2e-13) {
    const WaveCycle& wave = Waves()[static_cast<std::size_t>(index)];
    for (int i = 0; i < 4096; ++i) {
        ASSERT_NEAR(wave[static_cast<std::size_t>(i)], static_cast<double>(formula(Real(i) / 4096)),
                    tolerance)
            << "wave " << index << " sample " << i;
    }
}

Real Fire(Real x) {
    const Real sine = std::sin(2 * kPiL * x);
    const Real humped = std::sin(kPiL * x);
    if (sine > 0.5L) return -(sine - Tri(x)) * humped;
    if (sine < -0.5L) return -(sine + std::fabs(Tri(x))) * humped;
    return -sine * humped;
}

/// All numbers of the sequence that starts at 1800, by the recurrence on 64 bits reduced afterwards.
struct Stream {
    std::uint64_t s = 1800;
    std::uint64_t Next() {
        s = (s * 214013U + 2531011U) % 4294967296ULL;
        return s / 65536U % 32768U;
    }
    double Draw() { return (static_cast<double>(Next() % 16384U) - 8192.0) / 8192.0; }
};

struct NoiseWaves {
    std::vector<double> plain, h1, h2, h3;
    Stream stream;

    NoiseWaves() {
        double a = 0.0, b = 0.0, c = 0.0;
        for (int i = 0; i < 4096; ++i) {
            const double x = i / 4096.0;
            plain.push_back(stream.Draw());
            if (i % 75 == 0) a = stream.Draw();
            if (i % 50 == 0) {
                const double r = stream.Draw();
                b = r * (1.0 + static_cast<double>(Tri(0.5L * x))) / 2.0;
            }
            if (i % 25 == 0) c = stream.Draw() * static_cast<double>(Tri(x));
            if (i % 100 == 0) stream.Next();
            h1.push_back(a);
            h2.push_back(b);
            h3.push_back(c);
        }
    }
};

} // namespace

TEST(WaveGenerator, SineAndItsHumpedHarmonics) {
    ExpectWave(0, [](Real x) { return std::sin(2 * kPiL * x); });
    ExpectWave(14, [](Real x) { return -std::sin(4 * kPiL * x) * (1 - std::cos(2 * kPiL * x)) / 2; });
    ExpectWave(16, [](Real x) { return std::sin(8 * kPiL * x) * (1 - std::cos(2 * kPiL * x)) / 2; });
}

TEST(WaveGenerator, BrickBreakerIsOneLongAndOneShortBrick) {
    const WaveCycle& wave = Waves()[23];
    for (int i = 0; i < 4096; ++i) {
        // 0.1 * 4096 = 409.6 and so on: the edges lie between samples.
        const double expected = i >= 410 && i <= 1228 ? 1.0 : i >= 2458 && i <= 2867 ? -1.0 : 0.0;
        EXPECT_EQ(wave[static_cast<std::size_t>(i)], expected) << i;
    }
}

TEST(WaveGenerator, PyrokinesisSubtractsTheTriangleFromTheLoudHalf) {
    ExpectWave(19, Fire);
}

TEST(WaveGenerator, ReceptorsAreClippedTangents) {
    const auto tangent = [](Real turns) {
        const Real s = std::sin(kPiL * turns), c = std::cos(kPiL * turns);
        return std::fabs(c) < 1e-12L ? 4.0L : Limited(s / c, 4.0L); // at a pole the upper side counts
    };
    ExpectWave(
        17, [&](Real x) { return tangent(x); }, 2e-12);
    ExpectWave(
        18, [&](Real x) { return tangent(2 * x); }, 2e-12);
}

TEST(WaveGenerator, ShikokuIsATriangleBetweenTwoHalves) {
    ExpectWave(20, [](Real x) { return x < 0.25L || x >= 0.75L ? Tri(2 * x) / 2 : Tri(2 * x - 0.5L); });
}

TEST(WaveGenerator, KicIsAClippedSineThenATriangle) {
    ExpectWave(21, [](Real x) {
        const Real body = x < 0.5L ? Limited(4.4L * std::sin(4 * kPiL * x), 1) : Tri(2 * x - 1) / 2;
        return body + Tri(4 * x) / 4;
    });
}

TEST(WaveGenerator, SynapsisIsASquareWithAHumOnIt) {
    ExpectWave(22, [](Real x) {
        const Real square = x < 0.5L ? 1 : -1;
        const Real hum = 0.4L * std::sin(16 * kPiL * x) * std::pow(std::sin(kPiL * x), 2);
        return Limited(square * (0.7L - hum), 1);
    });
}

TEST(WaveGenerator, GeoChirpFallsByTheFifteenthPower) {
    ExpectWave(
        24, [](Real x) { return Tri(60 * std::pow(1 - x, Real(15))) * std::cos(kPiL * x / 2); }, 1e-11);
}

TEST(WaveGenerator, WaveGardenCrossesTwoHarmonics) {
    ExpectWave(15, [](Real x) {
        const Real hump = std::sin(kPiL * x);
        return std::sin(4 * kPiL * x) * std::pow(hump, 4) + std::sin(12 * kPiL * x) * (1 - hump) / 4;
    });
}

TEST(WaveGenerator, NoiseWavesFollowTheSequenceInItsOrder) {
    const NoiseWaves expected;
    for (std::size_t i = 0; i < 4096; ++i) {
        const Real x = Real(i) / 4096;
        EXPECT_EQ(Waves()[10][i], expected.plain[i]) << i;
        EXPECT_EQ(Waves()[13][i], expected.h3[i]) << i;
        const Real first = expected.h1[i] * (0.2L * Fire(x) + 0.8L);
        EXPECT_NEAR(Waves()[11][i], static_cast<double>(first), 1e-13) << i;
        const Real second = expected.h2[i] * (0.2L * Tri(x) + 0.8L) + 0.1L * std::sin(2 * kPiL * x);
        EXPECT_NEAR(Waves()[12][i], static_cast<double>(second), 1e-13) << i;
    }
}

TEST(WaveGenerator, FirstDrawsOfTheNoiseByHand) {
    // 1800 * 214013 + 2531011 = 387754411, bits 16 to 30: 5916; less 8192, over 8192.
    EXPECT_EQ(Waves()[10][0], -2276.0 / 8192.0);
    EXPECT_EQ(Waves()[13][0], 0.0); // the triangle starts at 0
}

TEST(WaveGenerator, LeavesTheSequenceWhereItStands) {
    std::vector<WaveCycle> waves(41);
    RandomGenerator random(99);
    WriteGeneratedWaves(random, std::span<WaveCycle, kWaveforms>(waves));
    NoiseWaves expected;
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(static_cast<std::uint64_t>(random.Next()), expected.stream.Next());

    // 4096 + 55 + 82 + 164 + 41 draws.
    Stream counted;
    for (int i = 0; i < 4438; ++i)
        counted.Next();
    RandomGenerator again;
    WriteGeneratedWaves(again, std::span<WaveCycle, kWaveforms>(waves));
    EXPECT_EQ(static_cast<std::uint64_t>(again.Next()), counted.Next());
}

TEST(WaveGenerator, TouchesOnlyItsOwnWaves) {
    std::vector<WaveCycle> waves(41);
    for (WaveCycle& wave : waves)
        wave.fill(7.0);
    RandomGenerator random;
    WriteGeneratedWaves(random, std::span<WaveCycle, kWaveforms>(waves));
    NormaliseGeneratedWaves(std::span<WaveCycle, kWaveforms>(waves));
    for (int index = 0; index < 41; ++index) {
        const bool computed = index == 0 || (index >= 10 && index <= 24);
        EXPECT_EQ(IsGeneratedWave(index), computed);
        const WaveCycle& wave = waves[static_cast<std::size_t>(index)];
        EXPECT_EQ(wave[1] == 7.0 && wave[4095] == 7.0, !computed) << index;
    }
}

TEST(WaveGenerator, TwelveWavesAreBroughtToOnePeak) {
    std::vector<WaveCycle> waves = Generated();
    NormaliseGeneratedWaves(std::span<WaveCycle, kWaveforms>(waves));
    for (int index = 0; index < 41; ++index) {
        if (!IsGeneratedWave(index)) continue;
        const auto place = static_cast<std::size_t>(index);
        if (index == 0 || index == 14 || index == 16 || index == 23) {
            EXPECT_EQ(waves[place], Waves()[place]) << index;
            continue;
        }
        double before = 0.0, after = 0.0;
        for (std::size_t i = 0; i < 4096; ++i) {
            before = std::fmax(before, std::fabs(Waves()[place][i]));
            after = std::fmax(after, std::fabs(waves[place][i]));
        }
        EXPECT_DOUBLE_EQ(after, 0.98777) << index;
        for (std::size_t i = 0; i < 4096; ++i)
            ASSERT_EQ(waves[place][i], Waves()[place][i] / before * 0.98777) << index;
    }
}
