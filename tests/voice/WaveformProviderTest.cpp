#include "voice/WaveformProvider.h"

#include "tests/voice/WavBytes.h"
#include "voice/StoredWaves.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

using namespace Grimworks;
namespace fs = std::filesystem;

namespace {

constexpr double kTwoPi = 2.0 * 3.14159265358979323846;
constexpr const char* kNoFolder = "/no/such/folder";

struct Instrument {
    RandomGenerator random{1};
    WaveformProvider waves;

    explicit Instrument(const std::string& base = kNoFolder) : waves(random, base) {
        waves.GenerateWaves();
        waves.BuildSets();
    }
};

const WaveformProvider& Stock() {
    static const Instrument instrument;
    return instrument.waves;
}

struct TemporaryBase {
    fs::path path =
        fs::temp_directory_path() / ("thudforge-provider-test-" + std::to_string(std::random_device{}()));

    TemporaryBase() {
        fs::remove_all(path);
        fs::create_directories(path / "waveforms");
    }
    ~TemporaryBase() {
        std::error_code error;
        fs::remove_all(path, error);
    }
    void Write(const std::string& name, const std::vector<double>& values) const {
        const Testing::Bytes bytes = Testing::RawBytes(values);
        std::ofstream file(path / "waveforms" / name, std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }
};

void ExpectSame(const WaveTableSet& a, const WaveTableSet& b) {
    ASSERT_EQ(a.count, b.count);
    for (std::size_t level = 0; level < static_cast<std::size_t>(a.count); ++level) {
        EXPECT_EQ(a.levels[level].topFrequency, b.levels[level].topFrequency);
        EXPECT_EQ(*a.levels[level].samples, *b.levels[level].samples);
    }
}

std::vector<double> Preview(int index, double phase, std::uint32_t seed = 5) {
    std::vector<double> points(105, 99.0);
    RandomGenerator random(seed);
    Stock().PreviewWave(index / 40.0, phase, std::span<double, 105>(points), random);
    return points;
}

std::vector<std::string> Dump(double value, std::uint32_t seed = 5) {
    RandomGenerator random(seed);
    std::istringstream text(Stock().WaveDumpText(value, random));
    std::vector<std::string> numbers;
    for (std::string number; std::getline(text, number, ',');)
        numbers.push_back(number);
    return numbers;
}

/// A level's sample at this share of the cycle, one sample late as tables are stored one early.
double At(const WaveTableSet& set, std::size_t level, double x) {
    return (*set.levels[level].samples)[static_cast<std::size_t>(std::lround(x * 4096.0)) - 1];
}

} // namespace

TEST(WaveformProvider, ThirtySevenWavesHaveALadder) {
    for (int index = 0; index < 41; ++index) {
        const bool live = index == 1 || index == 4 || index == 8 || index == 9;
        EXPECT_EQ(Stock().Set(index).count == 0, live) << index;
        EXPECT_LE(Stock().Set(index).count, 12);
    }
}

TEST(WaveformProvider, AnIndexOutsideReadsAsSilence) {
    for (const int index : {-1000, -1, 41, 1000})
        EXPECT_EQ(Stock().Set(index).count, 0);
}

TEST(WaveformProvider, NothingStandsBeforeTheWavesAreMade) {
    RandomGenerator random(7);
    const WaveformProvider waves(random, kNoFolder);
    for (int index = 0; index < 41; ++index)
        EXPECT_EQ(waves.Set(index).count, 0);
    RandomGenerator untouched(7);
    EXPECT_EQ(random.Next(), untouched.Next());
}

TEST(WaveformProvider, TwoInstrumentsHaveTheSameWavesToTheLastBit) {
    const Instrument other;
    for (int index = 0; index < 41; ++index)
        ExpectSame(Stock().Set(index), other.waves.Set(index));
}

TEST(WaveformProvider, LiveNoiseGoesOnFromTheNoiseWaves) {
    Instrument instrument;
    std::uint32_t s = 1800;
    const auto next = [&s] {
        s = s * 214013U + 2531011U;
        return static_cast<int>((s >> 16U) & 0x7fffU);
    };
    const int draws = 4096 + (4096 + 74) / 75 + (4096 + 49) / 50 + (4096 + 24) / 25 + (4096 + 99) / 100;
    for (int i = 0; i < draws; ++i)
        next();
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(instrument.random.Next(), next());
}

TEST(WaveformProvider, WithoutUserFilesTheSlotsAreTheStoredWaves) {
    for (int index = 25; index <= 40; ++index) {
        const std::span<const double> stored = StoredWave(index);
        double peak = 0.0;
        for (const double v : stored)
            peak = std::fmax(peak, std::fabs(v));
        for (std::size_t i = 0; i < 4096; ++i) {
            const double expected = index <= 37 ? stored[i] / peak * 0.998777 : stored[i];
            ASSERT_EQ(Stock().Cycle(index)[i], expected) << index;
        }
    }
}

TEST(WaveformProvider, PlainShapesAreStoredWaves) {
    for (const int index : {2, 3, 5, 6, 7}) {
        for (std::size_t i = 0; i < 4096; ++i)
            ASSERT_EQ(Stock().Cycle(index)[i], StoredWave(index)[i]);
    }
}

TEST(WaveformProvider, OneTenthFileMakesFourEqualWaves) {
    const TemporaryBase base;
    std::vector<double> values;
    values.reserve(4096);
    for (int i = 0; i < 4096; ++i)
        values.push_back(std::sin(kTwoPi * 3.0 * i / 4096.0));
    base.Write("user10.raw", values);
    const Instrument instrument(base.path.string());
    ASSERT_EQ(instrument.waves.Set(34).count, 2);
    for (const int index : {35, 36, 37})
        ExpectSame(instrument.waves.Set(index), instrument.waves.Set(34));
    for (int index = 25; index <= 33; ++index)
        ExpectSame(instrument.waves.Set(index), Stock().Set(index));
    for (int index = 38; index <= 40; ++index)
        ExpectSame(instrument.waves.Set(index), Stock().Set(index));
}

TEST(WaveformProvider, SilentAndUnusableUserFiles) {
    const TemporaryBase base;
    base.Write("user01.raw", std::vector<double>(4096, 0.0));
    base.Write("user02.raw", std::vector<double>(4096, std::nan("")));
    base.Write("user03.raw", {});
    base.Write("user04.raw", {0.3});
    base.Write("user05.raw", std::vector<double>(300, std::numeric_limits<double>::infinity()));
    const Instrument instrument(base.path.string());
    EXPECT_EQ(instrument.waves.Set(25).count, 0); // all zero
    EXPECT_EQ(instrument.waves.Set(26).count, 0); // all became zero
    ExpectSame(instrument.waves.Set(27), Stock().Set(27));
    EXPECT_EQ(instrument.waves.Set(28).count, 0); // one value has no harmonics
    EXPECT_EQ(instrument.waves.Cycle(28)[4095], 0.998777);
    EXPECT_EQ(instrument.waves.Set(29).count, 0);
}

TEST(WaveformProvider, TheBaseFolderCanBeSetUntilTheWavesAreMade) {
    const TemporaryBase base;
    base.Write("user01.raw", {1.0, -1.0});
    RandomGenerator random;
    WaveformProvider waves(random, kNoFolder);
    waves.SetBaseFolder(base.path.string());
    waves.GenerateWaves();
    EXPECT_DOUBLE_EQ(waves.Cycle(25)[0], 0.998777);
    EXPECT_DOUBLE_EQ(waves.Cycle(25)[2048], -0.998777);
}

TEST(WaveformProvider, AllTablesAreFiniteAndTheFirstLevelPeaksBelowOne) {
    for (int index = 0; index < 41; ++index) {
        const WaveTableSet& set = Stock().Set(index);
        for (std::size_t level = 0; level < static_cast<std::size_t>(set.count); ++level) {
            double peak = 0.0;
            for (const double v : *set.levels[level].samples) {
                ASSERT_TRUE(std::isfinite(v));
                peak = std::fmax(peak, std::fabs(v));
            }
            if (level == 0) {
                EXPECT_NEAR(peak, 0.999, 1e-12) << index;
            }
        }
    }
}

TEST(WaveformProvider, TheSineIsOneCleanLevel) {
    const WaveTableSet& set = Stock().Set(0);
    ASSERT_EQ(set.count, 1);
    for (std::size_t j = 0; j < 4096; ++j) {
        ASSERT_NEAR((*set.levels[0].samples)[j],
                    0.999 * std::sin(kTwoPi * static_cast<double>(j + 1) / 4096.0), 1e-9);
    }
}

TEST(WaveformProvider, BricksAreFlatAtTheLowEndAndRingHigherUp) {
    const WaveTableSet& set = Stock().Set(23);
    ASSERT_EQ(set.count, 11);
    const auto ripple = [&](std::size_t level) {
        double low = 10.0, high = -10.0;
        for (double x = 0.15; x <= 0.25; x += 0.001) {
            low = std::fmin(low, At(set, level, x));
            high = std::fmax(high, At(set, level, x));
        }
        return high - low;
    };
    EXPECT_LT(ripple(0), 0.01);
    EXPECT_LT(ripple(1), 0.02);
    EXPECT_GT(ripple(7), 0.03);
}

TEST(WaveformProvider, BricksAreTheirFourierSumAtEachLevel) {
    // The full wave is the cycle without its mean and without the harmonic at half the table's rate.
    std::array<double, 4096> full{};
    double mean = 0.0, alternating = 0.0;
    for (std::size_t i = 0; i < 4096; ++i) {
        full[i] = i >= 410 && i <= 1228 ? 1.0 : i >= 2458 && i <= 2867 ? -1.0 : 0.0;
        mean += full[i] / 4096.0;
        alternating += full[i] / 4096.0 * (i % 2 == 0 ? 1.0 : -1.0);
    }
    double peak = 0.0;
    for (std::size_t i = 0; i < 4096; ++i)
        peak = std::fmax(peak, std::fabs(full[i] - mean - alternating * (i % 2 == 0 ? 1.0 : -1.0)));

    std::array<double, 4096> sum{};
    std::size_t harmonic = 1;
    for (std::size_t level = 10; level >= 5; --level) {
        for (; harmonic <= (std::size_t{2047} >> level); ++harmonic) {
            double c = 0.0, s = 0.0;
            const double turn = kTwoPi * static_cast<double>(harmonic) / 4096.0;
            for (std::size_t i = 0; i < 4096; ++i) {
                c += full[i] * std::cos(turn * static_cast<double>(i)) / 2048.0;
                s += full[i] * std::sin(turn * static_cast<double>(i)) / 2048.0;
            }
            for (std::size_t i = 0; i < 4096; ++i) {
                sum[i] +=
                    c * std::cos(turn * static_cast<double>(i)) + s * std::sin(turn * static_cast<double>(i));
            }
        }
        for (std::size_t j = 0; j < 4096; ++j) {
            ASSERT_NEAR((*Stock().Set(23).levels[level].samples)[j], sum[(j + 1) % 4096] * 0.999 / peak,
                        1e-9);
        }
    }
}

TEST(WaveformProvider, ASetCanBeRebuiltFromADrawing) {
    Instrument instrument;
    std::vector<double> drawing;
    drawing.reserve(4096);
    for (int i = 0; i < 4096; ++i)
        drawing.push_back(std::sin(kTwoPi * 2.0 * i / 4096.0));
    drawing[1000] = std::nan("");
    const ConstWaveSpan span(drawing.data(), 4096);
    instrument.waves.RebuildSet(30, span);
    EXPECT_EQ(instrument.waves.Set(30).count, 11); // the hole that the lost point leaves is sharp
    for (const double v : *instrument.waves.Set(30).levels[0].samples)
        ASSERT_TRUE(std::isfinite(v));
    ExpectSame(instrument.waves.Set(31), Stock().Set(31));
    instrument.waves.RebuildSet(-1, span);
    instrument.waves.RebuildSet(41, span);
    EXPECT_EQ(instrument.waves.Set(-1).count, 0);
    EXPECT_EQ(instrument.waves.Set(41).count, 0);
}

TEST(WavePreview, TheSineStartsAtThePhase) {
    for (const double phase : {0.0, 0.25, -0.25, -0.5, 0.5, -1.0}) {
        const std::vector<double> points = Preview(0, phase);
        for (int n = 0; n < 105; ++n)
            EXPECT_NEAR(points[static_cast<std::size_t>(n)], std::sin(kTwoPi * (n / 105.0 + phase)), 1e-12);
    }
}

TEST(WavePreview, PulsesHaveTheirWidthsAndLevels) {
    const std::vector<std::pair<int, double>> pulses{{2, 0.5}, {3, 0.25}, {4, 0.125}};
    for (const auto& [index, width] : pulses) {
        const std::vector<double> points = Preview(index, 0.0);
        for (int n = 0; n < 105; ++n) {
            const double x = n / 105.0;
            const double edge = std::fmin(std::fmin(x, 1.0 - x), std::fabs(x - width));
            if (edge < 1.5 / 105.0) continue;
            EXPECT_NEAR(points[static_cast<std::size_t>(n)], x < width ? 1.0 : -1.0, 1e-12)
                << index << " " << n;
        }
    }
}

TEST(WavePreview, SawAndTriangleFollowTheirSlopes) {
    const std::vector<double> saw = Preview(1, 0.0);
    const std::vector<double> triangle = Preview(5, 0.0);
    EXPECT_NEAR(saw[26], 2.0 * (26 / 105.0), 1e-12);
    EXPECT_NEAR(saw[79], 2.0 * (79 / 105.0) - 2.0, 1e-12);
    EXPECT_NEAR(triangle[13], 4.0 * 13 / 105.0, 1e-12);
    EXPECT_NEAR(triangle[52], 2.0 - 4.0 * 52 / 105.0, 1e-12);
    EXPECT_NEAR(triangle[92], 4.0 * 92 / 105.0 - 4.0, 1e-12);
}

TEST(WavePreview, TableWavesShowTheirFirstLevelUninterpolated) {
    for (const int index : {6, 7, 10, 16, 24, 25, 40}) {
        for (const double phase : {0.0, -0.37, 0.5, 0.4999}) {
            const std::vector<double> points = Preview(index, phase);
            for (int n = 0; n < 105; ++n) {
                double at = n / 105.0 + phase;
                at -= std::floor(at);
                const auto k = std::min<std::size_t>(4095, static_cast<std::size_t>(4096.0 * at));
                EXPECT_EQ(points[static_cast<std::size_t>(n)], (*Stock().Set(index).levels[0].samples)[k])
                    << index << " " << n;
            }
        }
    }
}

TEST(WavePreview, APhaseThatWrapsToOneReadsTheStart) {
    const std::vector<double> points = Preview(6, -1e-18);
    EXPECT_EQ(points[0], (*Stock().Set(6).levels[0].samples)[0]);
}

TEST(WavePreview, NoiseIsDrawnFromTheEditorsGenerator) {
    std::uint32_t s = 5;
    const std::vector<double> white = Preview(8, 0.3);
    const std::vector<double> pink = Preview(9, 0.3);
    for (std::size_t n = 0; n < 105; ++n) {
        s = s * 214013U + 2531011U;
        const double expected = 2.0 * static_cast<double>((s >> 16U) & 0x7fffU) / 32767.0 - 1.0;
        EXPECT_EQ(white[n], expected);
        EXPECT_EQ(pink[n], expected * 0.5);
    }
}

TEST(WavePreview, OutsideTheListItIsFlat) {
    for (const int index : {-1, 41, 80})
        EXPECT_EQ(Preview(index, 0.1), std::vector<double>(105, 0.0));
}

TEST(WavePreview, AnUnusablePhaseStillGivesPoints) {
    for (const int index : {0, 6}) {
        for (const double v : Preview(index, std::nan("")))
            EXPECT_TRUE(std::isfinite(v));
    }
}

TEST(WaveDump, IsTextOfOneCycleWithTenDecimals) {
    for (int index = 0; index < 41; ++index) {
        const std::vector<std::string> numbers = Dump(index / 40.0);
        ASSERT_EQ(numbers.size(), 4096U) << index;
        for (const std::string& number : numbers) {
            const std::size_t point = number.find('.');
            ASSERT_EQ(number.size() - point, 11U) << number;
            ASSERT_EQ(number.find_first_not_of("-0123456789."), std::string::npos) << number;
        }
    }
    RandomGenerator random;
    const std::string text = Stock().WaveDumpText(0.0, random);
    EXPECT_EQ(text.substr(0, 26), "0.0000000000,0.0015339802,");
    EXPECT_NE(text.back(), ',');
}

TEST(WaveDump, LiveWavesRunOneCycle) {
    const std::vector<std::string> sine = Dump(0.0);
    const std::vector<std::string> quad = Dump(3 / 40.0);
    const std::vector<std::string> saw = Dump(1 / 40.0);
    for (int i = 0; i < 4096; ++i) {
        const auto k = static_cast<std::size_t>(i);
        EXPECT_NEAR(std::stod(sine[k]), std::sin(kTwoPi * i / 4096.0), 1e-10);
        if (i > 1 && i < 4095 && std::abs(i - 1024) > 1) {
            EXPECT_NEAR(std::stod(quad[k]), i < 1024 ? 1.0 : -1.0, 1e-10) << i;
        }
        if (std::abs(i - 2048) > 1) {
            EXPECT_NEAR(std::stod(saw[k]), i < 2048 ? i / 2048.0 : i / 2048.0 - 2.0, 1e-10) << i;
        }
    }
}

TEST(WaveDump, TableWavesShowTheirFirstLevel) {
    for (const int index : {6, 13, 39}) {
        const std::vector<std::string> numbers = Dump(index / 40.0);
        for (std::size_t i = 0; i < 4096; ++i)
            ASSERT_NEAR(std::stod(numbers[i]), (*Stock().Set(index).levels[0].samples)[i], 5.1e-11);
    }
}

TEST(WaveDump, WhiteNoiseIsDrawnAnewInItsOwnSteps) {
    const std::vector<std::string> numbers = Dump(8 / 40.0, 77);
    std::uint32_t s = 77;
    for (std::size_t i = 0; i < 4096; ++i) {
        s = s * 214013U + 2531011U;
        const int r = static_cast<int>((s >> 16U) & 0x7fffU);
        ASSERT_NEAR(std::stod(numbers[i]), (r % 17000 - 8500) / 8500.0, 5.1e-11);
    }
    EXPECT_NE(Dump(8 / 40.0, 78), numbers);
}

TEST(WaveDump, PinkNoiseAndUnknownWavesAreZeros) {
    for (const double value : {9 / 40.0, 1.5, -0.5}) {
        for (const std::string& number : Dump(value))
            ASSERT_EQ(number, "0.0000000000");
    }
}
