#include "voice/StoredWaves.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

using namespace Grimworks;

namespace {

constexpr std::array<std::size_t, 9> kClickLengths{436, 1460, 1953, 1604, 2336, 4174, 2464, 5030, 8224};

std::vector<double> FileValues(const std::string& name) {
    std::ifstream file(std::string(THUDFORGE_SOURCE_DIR) + "/data/" + name, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    std::vector<double> values;
    for (std::size_t i = 0; i + 8 <= bytes.size(); i += 8) {
        std::uint64_t word = 0;
        for (std::size_t k = 0; k < 8; ++k)
            word += static_cast<std::uint64_t>(static_cast<unsigned char>(bytes[i + k])) << (8 * k);
        values.push_back(std::bit_cast<double>(word));
    }
    return values;
}

int Crossings(std::span<const double> table) {
    int crossings = 0;
    for (std::size_t i = 1; i < table.size(); ++i)
        crossings += (table[i] >= 0.0) != (table[i - 1] >= 0.0) ? 1 : 0;
    return crossings;
}

double Peak(std::span<const double> table) {
    double peak = 0.0;
    for (const double v : table)
        peak = std::fmax(peak, std::fabs(v));
    return peak;
}

double Mean(std::span<const double> table) {
    double sum = 0.0;
    for (const double v : table)
        sum += v;
    return sum / static_cast<double>(table.size());
}

/// Frequency in Hz of the sine with the same power and the same power of differences: a measure of
/// brightness.
double Brightness(std::span<const double> click) {
    double power = 0.0, steps = 0.0;
    for (std::size_t i = 1; i < click.size(); ++i) {
        power += click[i] * click[i];
        steps += (click[i] - click[i - 1]) * (click[i] - click[i - 1]);
    }
    return std::asin(std::sqrt(steps / power) / 2.0) / 3.14159265358979323846 * 44100.0;
}

/// Levels of the first sixteen harmonics, as shares of their sum.
std::array<double, 16> Timbre(std::span<const double> wave) {
    std::array<double, 16> levels{};
    double sum = 0.0;
    for (std::size_t h = 0; h < levels.size(); ++h) {
        double re = 0.0, im = 0.0;
        for (std::size_t i = 0; i < wave.size(); ++i) {
            const double angle =
                2.0 * 3.14159265358979323846 * static_cast<double>((h + 1) * i % 4096) / 4096.0;
            re += wave[i] * std::cos(angle);
            im += wave[i] * std::sin(angle);
        }
        levels[h] = std::hypot(re, im);
        sum += levels[h];
    }
    for (double& level : levels)
        level /= sum;
    return levels;
}

} // namespace

TEST(StoredWaves, EmbeddedValuesAreThoseOfTheFiles) {
    const std::array<std::pair<int, const char*>, 5> shapes{
        {{2, "pulse"}, {3, "quad-pulse"}, {5, "triangle"}, {6, "trapez"}, {7, "x-trapez"}}};
    const auto expectSame = [](std::span<const double> stored, const std::string& name) {
        const std::vector<double> file = FileValues(name);
        ASSERT_EQ(stored.size(), file.size()) << name;
        for (std::size_t i = 0; i < file.size(); ++i)
            ASSERT_EQ(stored[i], file[i]) << name << " " << i;
    };
    for (const auto& [index, name] : shapes)
        expectSame(StoredWave(index), "waves/" + std::string(name) + ".raw");
    for (int user = 1; user <= 16; ++user) {
        expectSame(StoredWave(24 + user),
                   "waves/user" + std::string(user < 10 ? "0" : "") + std::to_string(user) + ".raw");
    }
    for (int click = 0; click < 9; ++click)
        expectSame(StoredClick(click), "clicks/click" + std::to_string(click + 1) + ".raw");
}

TEST(StoredWaves, OnlyTheStoredWaveformsHaveACycle) {
    for (int index = -3; index < 45; ++index) {
        const bool stored =
            index == 2 || index == 3 || (index >= 5 && index <= 7) || (index >= 25 && index <= 40);
        EXPECT_EQ(StoredWave(index).size(), stored ? 4096U : 0U) << index;
    }
}

TEST(StoredWaves, PlainShapes) {
    for (std::size_t i = 0; i < 4096; ++i) {
        const double x = static_cast<double>(i) / 4096.0;
        EXPECT_EQ(StoredWave(2)[i], i < 2048 ? 1.0 : -1.0);
        EXPECT_EQ(StoredWave(3)[i], i < 1024 ? 1.0 : -1.0);
        const double triangle = x < 0.25 ? 4.0 * x : x < 0.75 ? 2.0 - 4.0 * x : 4.0 * x - 4.0;
        EXPECT_EQ(StoredWave(5)[i], triangle);
    }
    EXPECT_EQ(Mean(StoredWave(3)), -0.5);
}

TEST(StoredWaves, TrapezesRiseToAFlatTopAndFallThroughZeroInTheMiddle) {
    for (const int index : {6, 7}) {
        const std::span<const double> wave = StoredWave(index);
        EXPECT_EQ(wave[0], 0.0);
        EXPECT_EQ(wave[2048], 0.0);
        for (std::size_t i = 1; i < 2048; ++i) {
            EXPECT_GT(wave[i], 0.0);
            EXPECT_EQ(wave[2048 + i], -wave[i]);
        }
        for (std::size_t i = 1; i < 256; ++i) {
            EXPECT_GT(wave[i], wave[i - 1]);
            EXPECT_LT(wave[1792 + i], wave[1791 + i]);
        }
        EXPECT_EQ(Peak(wave), 1.0);
    }
    for (std::size_t i = 512; i <= 1536; ++i)
        EXPECT_EQ(StoredWave(6)[i], 1.0);
    EXPECT_EQ(StoredWave(7)[600], 1.0);
    EXPECT_EQ(StoredWave(7)[1448], 1.0);
    EXPECT_LT(StoredWave(7)[1024], 0.5);
}

TEST(StoredWaves, UserWavesHaveTheirPeakAndNoMean) {
    for (int index = 25; index <= 40; ++index) {
        EXPECT_NEAR(Peak(StoredWave(index)), 1.0, 1e-3) << index;
        EXPECT_NEAR(Mean(StoredWave(index)), 0.0, 1e-3) << index;
    }
}

TEST(StoredWaves, UserWavesStartAndEndNearZeroButForTwo) {
    for (int index = 25; index <= 40; ++index) {
        const std::span<const double> wave = StoredWave(index);
        if (index == 30 || index == 38) {
            EXPECT_EQ(wave.front(), 1.0);
            EXPECT_EQ(wave.back(), -1.0);
            continue;
        }
        EXPECT_NEAR(wave.front(), 0.0, 0.03) << index;
        EXPECT_NEAR(wave.back(), 0.0, 0.03) << index;
    }
}

TEST(StoredWaves, UserWavesHaveTwoToThirtyCrossingsAndOneHasManyMore) {
    for (int index = 25; index <= 40; ++index) {
        const int crossings = Crossings(StoredWave(index));
        if (index == 39) {
            EXPECT_EQ(crossings, 218);
            continue;
        }
        EXPECT_GE(crossings, 2) << index;
        EXPECT_LE(crossings, 30) << index;
    }
}

TEST(StoredWaves, NoTwoUserWavesSoundAlike) {
    std::vector<std::array<double, 16>> timbres;
    for (int index = 25; index <= 40; ++index)
        timbres.push_back(Timbre(StoredWave(index)));
    for (std::size_t a = 0; a < timbres.size(); ++a) {
        for (std::size_t b = a + 1; b < timbres.size(); ++b) {
            double difference = 0.0;
            for (std::size_t h = 0; h < 16; ++h)
                difference += std::fabs(timbres[a][h] - timbres[b][h]);
            EXPECT_GT(difference, 0.15) << "User" << a + 1 << " and User" << b + 1;
        }
    }
}

TEST(StoredWaves, ClicksHaveTheirLengths) {
    for (int click = 0; click < 9; ++click)
        EXPECT_EQ(StoredClick(click).size(), kClickLengths[static_cast<std::size_t>(click)]);
    EXPECT_TRUE(StoredClick(-1).empty());
    EXPECT_TRUE(StoredClick(9).empty());
}

TEST(StoredWaves, ClicksPeakAtOneWithinTheirFirstFiveMilliseconds) {
    for (int click = 0; click < 9; ++click) {
        const std::span<const double> samples = StoredClick(click);
        EXPECT_EQ(Peak(samples), 1.0);
        EXPECT_EQ(Peak(samples.first(220)), 1.0) << click;
    }
}

TEST(StoredWaves, ClicksDieAwayWithoutAStepAtTheEnd) {
    for (int click = 0; click < 9; ++click) {
        const std::span<const double> samples = StoredClick(click);
        EXPECT_LT(Peak(samples.last(2)), 1e-3) << click;
        EXPECT_LT(Peak(samples.last(samples.size() / 10)), 0.05) << click;
        EXPECT_LT(Peak(samples.last(samples.size() / 2)), 0.6) << click;
        EXPECT_NEAR(Mean(samples), 0.0, 0.03) << click;
    }
}

TEST(StoredWaves, ClicksRunFromThumpsToTicks) {
    EXPECT_EQ(Crossings(StoredClick(0)), 8);
    EXPECT_GT(Crossings(StoredClick(7)), 1000);
    EXPECT_GT(Crossings(StoredClick(8)), 1000);
    for (int click = 1; click < 9; ++click)
        EXPECT_GT(Crossings(StoredClick(click)), Crossings(StoredClick(click - 1))) << click;
    for (int click = 0; click < 4; ++click)
        EXPECT_LT(Brightness(StoredClick(click)), 1000.0) << click;
    for (int click = 6; click < 9; ++click)
        EXPECT_GT(Brightness(StoredClick(click)), 4000.0) << click;
}
