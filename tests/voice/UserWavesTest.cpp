#include "voice/UserWaves.h"

#include "tests/voice/WavBytes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

using namespace Grimworks;
using namespace Testing;
namespace fs = std::filesystem;

namespace {

/// What stood in a slot before: every sample different, so that a kept one shows.
std::vector<double> Before() {
    std::vector<double> values;
    values.reserve(4096);
    for (int i = 0; i < 4096; ++i)
        values.push_back(1000.0 + i);
    return values;
}

std::vector<double> After(void (*take)(std::span<const std::byte>, WaveSpan), const Bytes& file) {
    std::vector<double> cycle = Before();
    take(file, WaveSpan(cycle.data(), 4096));
    return cycle;
}

std::vector<double> Ramp(std::size_t count) {
    std::vector<double> values;
    for (std::size_t i = 0; i < count; ++i)
        values.push_back(0.25 * static_cast<double>(i) - 3.0);
    return values;
}

class UserWaveFolder : public ::testing::Test {
protected:
    void SetUp() override {
        base = fs::temp_directory_path() / ("thudforge-user-waves-" + std::to_string(std::random_device{}()));
        fs::remove_all(base);
        fs::create_directories(base / "waveforms");
    }
    void TearDown() override { fs::remove_all(base); }

    fs::path Write(const std::string& name, const Bytes& bytes) const {
        fs::path path = base / "waveforms" / name;
        std::ofstream file(path, std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        return path;
    }

    static std::vector<double> Loaded(const fs::path& path) {
        std::vector<double> cycle = Before();
        LoadUserWave(path.string(), WaveSpan(cycle.data(), 4096));
        return cycle;
    }

    std::vector<WaveCycle> LoadedSlots() const {
        std::vector<WaveCycle> waves(41);
        for (std::size_t i = 0; i < 41; ++i)
            waves[i].fill(static_cast<double>(i + 1));
        LoadUserWaves(base.string(), std::span<WaveCycle, kWaveforms>(waves));
        return waves;
    }

    fs::path base;
};

} // namespace

TEST(RawWave, OneValueFillsTheCycle) {
    EXPECT_EQ(After(TakeRawWave, RawBytes({-0.75})), std::vector<double>(4096, -0.75));
}

TEST(RawWave, EightToFifteenBytesAreOneValue) {
    for (std::size_t extra = 1; extra < 8; ++extra) {
        Bytes file = RawBytes({2.0});
        file.resize(8 + extra, std::byte{0x55});
        EXPECT_EQ(After(TakeRawWave, file), std::vector<double>(4096, 2.0)) << extra;
    }
}

TEST(RawWave, WithoutAWholeValueTheCycleIsKept) {
    for (std::size_t size = 0; size < 8; ++size)
        EXPECT_EQ(After(TakeRawWave, Bytes(size, std::byte{0x40})), Before()) << size;
}

TEST(RawWave, AllZeroIsTaken) {
    EXPECT_EQ(After(TakeRawWave, RawBytes(std::vector<double>(4096, 0.0))), std::vector<double>(4096, 0.0));
    EXPECT_EQ(After(TakeRawWave, RawBytes(std::vector<double>(100, 0.0))), std::vector<double>(4096, 0.0));
}

TEST(RawWave, NotANumberBecomesZero) {
    const double nan = std::nan("");
    EXPECT_EQ(After(TakeRawWave, RawBytes(std::vector<double>(4096, nan))), std::vector<double>(4096, 0.0));
    EXPECT_EQ(After(TakeRawWave, RawBytes(std::vector<double>(10, nan))), std::vector<double>(4096, 0.0));
    std::vector<double> values = Ramp(4096);
    values[17] = nan;
    std::vector<double> expected = Ramp(4096);
    expected[17] = 0.0;
    EXPECT_EQ(After(TakeRawWave, RawBytes(values)), expected);
}

TEST(RawWave, InfinityBecomesZero) {
    std::vector<double> values = Ramp(4096);
    values[17] = std::numeric_limits<double>::infinity();
    values[4095] = -std::numeric_limits<double>::infinity();
    std::vector<double> expected = Ramp(4096);
    expected[17] = expected[4095] = 0.0;
    EXPECT_EQ(After(TakeRawWave, RawBytes(values)), expected);
}

TEST(RawWave, FourThousandAndNinetySixValuesAreTakenAsTheyAre) {
    EXPECT_EQ(After(TakeRawWave, RawBytes(Ramp(4096))), Ramp(4096));
}

TEST(RawWave, OfALongerFileTheFirstValuesCount) {
    EXPECT_EQ(After(TakeRawWave, RawBytes(Ramp(5000))), Ramp(4096));
}

TEST(RawWave, AShorterFileIsStretchedWithoutAWrapAtTheEnd) {
    for (const std::size_t count : {2U, 3U, 100U, 1000U, 2048U, 4095U}) {
        std::vector<double> values;
        for (std::size_t i = 0; i < count; ++i)
            values.push_back(std::sin(static_cast<double>(i * i)) + 2.0);
        const std::vector<double> cycle = After(TakeRawWave, RawBytes(values));
        for (std::size_t i = 0; i < 4096; ++i) {
            // In whole numbers: i * count = left * 4096 + rest.
            const std::size_t left = i * count / 4096;
            const double rest = static_cast<double>(i * count % 4096) / 4096.0;
            const double right = left + 1 < count ? values[left + 1] : values[count - 1];
            ASSERT_NEAR(cycle[i], values[left] + (right - values[left]) * rest, 1e-12) << count << " " << i;
        }
        EXPECT_EQ(cycle[0], values[0]);
        EXPECT_DOUBLE_EQ(cycle[4095], values[count - 1]);
    }
}

TEST(WavWave, ARefusedFileKeepsTheCycle) {
    EXPECT_EQ(After(TakeWavWave, {}), Before());
    EXPECT_EQ(After(TakeWavWave, Bytes(43, std::byte{1})), Before());
    EXPECT_EQ(After(TakeWavWave, Bytes(10000, std::byte{1})), Before());
    EXPECT_EQ(After(TakeWavWave, WavBytes({.channels = 3}, Bytes(6000, std::byte{1}))), Before());
    EXPECT_EQ(After(TakeWavWave, WavBytes({.bits = 20}, Bytes(6000, std::byte{1}))), Before());
    EXPECT_EQ(After(TakeWavWave, WavBytes({}, {})), Before());
}

TEST(WavWave, ExactlyOneCycleInterleavesWithWhatStoodThere) {
    const std::vector<double> cycle = After(TakeWavWave, FloatWav(Ramp(4096)));
    for (std::size_t i = 0; i < 4096; ++i)
        EXPECT_EQ(cycle[i], i % 2 == 0 ? Ramp(4096)[i] : Before()[i]) << i;
}

TEST(WavWave, StereoOfOneCycleInterleavesToo) {
    Bytes samples;
    for (std::uint64_t i = 0; i < 4096; ++i) {
        Put(samples, i, 2);
        Put(samples, i + 10, 2);
    }
    const std::vector<double> cycle = After(TakeWavWave, WavBytes({.channels = 2, .bits = 16}, samples));
    for (std::size_t i = 0; i < 4096; ++i)
        EXPECT_EQ(cycle[i], i % 2 == 0 ? static_cast<double>(i) + 5.0 : Before()[i]) << i;
}

TEST(WavWave, OtherLengthsFillTheWholeCycle) {
    for (const std::size_t count : {2U, 100U, 4095U, 4097U, 9000U}) {
        const std::vector<double> cycle = After(TakeWavWave, FloatWav(std::vector<double>(count, 1.0)));
        for (std::size_t i = 0; i < 4096; ++i) {
            ASSERT_GE(cycle[i], -0.1) << count; // nothing of what stood there (from 1000 up) is left
            ASSERT_LE(cycle[i], 1.1) << count;
        }
    }
}

TEST(WavWave, OneStereoFrameIsALevelThatFadesIn) {
    const Bytes file = WavBytes({.format = 3, .channels = 2, .bits = 64}, RawBytes({1.0, 0.5}));
    const std::vector<double> cycle = After(TakeWavWave, file);
    EXPECT_LT(cycle[0], 0.01); // the low-pass starts from silence
    EXPECT_GT(cycle[4095], 0.4);
}

TEST(WavWave, OneMonoFrameKeepsTheCycle) {
    // Its data chunk is one sample long, so the count comes from the file size, which leaves none.
    EXPECT_EQ(After(TakeWavWave, FloatWav({1.0})), Before());
}

TEST(WavWave, NothingUnusualInAFileMakesTheCycleUnusual) {
    std::vector<double> values(3000, std::nan(""));
    EXPECT_EQ(After(TakeWavWave, FloatWav(values)), std::vector<double>(4096, 0.0));
    values.assign(4096, std::numeric_limits<double>::infinity());
    EXPECT_EQ(After(TakeWavWave, FloatWav(values))[0], 0.0);
    values.assign(3000, 1.7e308);
    for (std::size_t i = 0; i < values.size(); i += 2)
        values[i] = -1.7e308;
    for (const double v : After(TakeWavWave, FloatWav(values)))
        ASSERT_TRUE(std::isfinite(v));
}

TEST(UserWavePaths, FilesAreNumberedInTheFolderOfTheBase) {
#ifdef _WIN32
    EXPECT_EQ(UserWavePath("C:\\Music", 1), "C:\\Music\\waveforms\\user01.raw");
    EXPECT_EQ(UserWavePath("", 10), "\\waveforms\\user10.raw");
#else
    EXPECT_EQ(UserWavePath("/home/music", 1), "/home/music/waveforms/user01.raw");
    EXPECT_EQ(UserWavePath("/home/music", 9), "/home/music/waveforms/user09.raw");
    EXPECT_EQ(UserWavePath("", 10), "/waveforms/user10.raw");
#endif
}

TEST(UserWavePaths, TheBaseComesFromTheEnvironment) {
    const auto set = [](const char* value) {
#ifdef _WIN32
        _putenv_s("THUDFORGE_WAVES", value == nullptr ? "" : value);
#else
        if (value == nullptr) {
            unsetenv("THUDFORGE_WAVES");
        } else {
            setenv("THUDFORGE_WAVES", value, 1);
        }
#endif
    };
    const char* const old = std::getenv("THUDFORGE_WAVES");
    const std::string kept = old == nullptr ? "" : old;
    set(nullptr);
    EXPECT_EQ(UserWaveBaseFolder(), "");
    set("/some/where");
    EXPECT_EQ(UserWaveBaseFolder(), "/some/where");
    set(old == nullptr ? nullptr : kept.c_str());
}

TEST_F(UserWaveFolder, AMissingFileKeepsTheCycle) {
    EXPECT_EQ(Loaded(base / "waveforms" / "user01.raw"), Before());
    EXPECT_EQ(Loaded(base / "nowhere" / "user01.wav"), Before());
}

TEST_F(UserWaveFolder, AFolderInPlaceOfAFileKeepsTheCycle) {
    fs::create_directories(base / "waveforms" / "user01.raw");
    EXPECT_EQ(Loaded(base / "waveforms" / "user01.raw"), Before());
}

TEST_F(UserWaveFolder, RawFilesOfAllSizes) {
    EXPECT_EQ(Loaded(Write("empty.raw", {})), Before());
    EXPECT_EQ(Loaded(Write("one.raw", RawBytes({0.5}))), std::vector<double>(4096, 0.5));
    EXPECT_EQ(Loaded(Write("full.raw", RawBytes(Ramp(4096)))), Ramp(4096));
    EXPECT_EQ(Loaded(Write("long.raw", RawBytes(Ramp(5000)))), Ramp(4096));
    EXPECT_EQ(Loaded(Write("hundred.raw", RawBytes(Ramp(100)))), After(TakeRawWave, RawBytes(Ramp(100))));
    EXPECT_EQ(Loaded(Write("huge.raw", RawBytes(Ramp(200000)))), Ramp(4096));
}

TEST_F(UserWaveFolder, AWavAnywhereInThePathIsReadAsRiff) {
    const Bytes file = FloatWav(Ramp(4096));
    const std::vector<double> expected = After(TakeWavWave, file);
    EXPECT_EQ(Loaded(Write("a.wav", file)), expected);
    EXPECT_EQ(Loaded(Write("a.wav.raw", file)), expected);
    fs::create_directories(base / "waveforms" / "my.waves");
    EXPECT_EQ(Loaded(Write("my.waves/user01.raw", file)), expected);
    // Upper case is not a wave file, and its bytes are taken for raw values.
    EXPECT_EQ(Loaded(Write("a.WAV", file)), After(TakeRawWave, file));
}

TEST_F(UserWaveFolder, AWavFileOfTheSizeLimitIsRefused) {
    constexpr std::size_t kLimit = 10485760;
    const Bytes allowed = WavBytes({.bits = 32}, Bytes(kLimit - 1 - 44, std::byte{0x11}));
    ASSERT_EQ(allowed.size(), kLimit - 1);
    EXPECT_NE(Loaded(Write("below.wav", allowed)), Before());
    const Bytes refused = WavBytes({.bits = 32}, Bytes(kLimit - 44, std::byte{0x11}));
    EXPECT_EQ(Loaded(Write("at.wav", refused)), Before());
    const Bytes larger = WavBytes({.bits = 32}, Bytes(kLimit, std::byte{0x11}));
    EXPECT_EQ(Loaded(Write("above.wav", larger)), Before());
}

TEST_F(UserWaveFolder, TheTenthFileFeedsFourSlots) {
    Write("user10.raw", RawBytes(Ramp(4096)));
    const std::vector<WaveCycle> waves = LoadedSlots();
    for (std::size_t slot = 35; slot <= 37; ++slot)
        EXPECT_EQ(waves[slot], waves[34]);
    const double peak = 0.25 * 4095 - 3.0;
    EXPECT_DOUBLE_EQ(waves[34][4095], 0.998777);
    EXPECT_DOUBLE_EQ(waves[34][0], -3.0 / peak * 0.998777);
    EXPECT_NE(waves[33], waves[34]);
}

TEST_F(UserWaveFolder, ThirteenSlotsAreNormalisedAndTheOthersAreNot) {
    const std::vector<WaveCycle> waves = LoadedSlots();
    for (std::size_t index = 0; index < 41; ++index) {
        const bool slot = index >= 25 && index <= 37;
        WaveCycle expected;
        expected.fill(slot ? 0.998777 : static_cast<double>(index + 1));
        EXPECT_EQ(waves[index], expected) << index;
    }
}

TEST_F(UserWaveFolder, EachFileFeedsItsSlot) {
    for (int n = 1; n <= 10; ++n) {
        std::vector<double> values(4096, 0.5);
        values[static_cast<std::size_t>(n)] = -1.0;
        Write(std::string("user") + (n < 10 ? "0" : "") + std::to_string(n) + ".raw", RawBytes(values));
    }
    const std::vector<WaveCycle> waves = LoadedSlots();
    for (std::size_t n = 1; n <= 13; ++n) {
        const std::size_t file = n < 10 ? n : 10;
        EXPECT_EQ(waves[24 + n][file], -0.998777);
        EXPECT_EQ(waves[24 + n][file + 1], 0.5 * 0.998777);
    }
}

TEST_F(UserWaveFolder, ALoudFileIsTamedAndASilentOneStaysSilent) {
    Write("user01.raw", RawBytes(std::vector<double>(4096, 1e6)));
    Write("user02.raw", RawBytes(std::vector<double>(4096, 0.0)));
    const std::vector<WaveCycle> waves = LoadedSlots();
    EXPECT_DOUBLE_EQ(waves[25][100], 0.998777);
    EXPECT_EQ(waves[26][100], 0.0);
}
