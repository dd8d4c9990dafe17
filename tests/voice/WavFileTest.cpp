#include "voice/WavFile.h"

#include "tests/voice/WavBytes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

using namespace Grimworks;
using namespace Testing;

namespace {

std::vector<double> Frames(const Bytes& bytes) {
    const WavFile wav(bytes);
    std::vector<double> frames;
    for (std::size_t i = 0; i < wav.Frames(); ++i)
        frames.push_back(wav.Frame(i));
    return frames;
}

Bytes Numbers(const std::vector<std::int64_t>& values, std::size_t width) {
    Bytes bytes;
    for (const std::int64_t v : values)
        Put(bytes, static_cast<std::uint64_t>(v), width);
    return bytes;
}

Bytes Floats(const std::vector<float>& values) {
    Bytes bytes;
    for (const float v : values)
        Put(bytes, std::bit_cast<std::uint32_t>(v), 4);
    return bytes;
}

std::vector<double> Resampled(const std::vector<double>& values) {
    const Bytes bytes = FloatWav(values);
    const auto cycle = std::make_unique<WaveCycle>();
    cycle->fill(77.0);
    WavFile(bytes).ResampleTo(*cycle);
    return {cycle->begin(), cycle->end()};
}

/// The low-pass in transposed direct form and with more digits than the instrument's.
std::vector<long double> SlowLowPass(const std::vector<long double>& input, long double w) {
    constexpr long double kPiL = 3.141592653589793238462643383279502884L;
    const long double cosine = std::cos(kPiL * w);
    const long double alpha = std::sin(kPiL * w) / (2 * 0.7071L);
    const long double norm = 1 + alpha;
    const long double b0 = (1 - cosine) / 2 / norm, b1 = (1 - cosine) / norm;
    const long double a1 = -2 * cosine / norm, a2 = (1 - alpha) / norm;
    long double s1 = 0, s2 = 0;
    std::vector<long double> output;
    for (const long double x : input) {
        const long double y = b0 * x + s1;
        s1 = b1 * x - a1 * y + s2;
        s2 = b0 * x - a2 * y;
        output.push_back(y);
    }
    return output;
}

std::vector<double> SlowResampled(const std::vector<double>& values) {
    const long double ratio = static_cast<long double>(values.size()) / 4096;
    std::vector<long double> input(values.begin(), values.end());
    if (ratio > 1) input = SlowLowPass(input, 0.693L / ratio);
    std::vector<long double> points;
    for (int n = 0; n < 4100; ++n) {
        // As if the last value went on for ever.
        const long double position = std::fmin(n * ratio, static_cast<long double>(input.size() - 1));
        const auto left = static_cast<std::size_t>(position);
        const std::size_t right = left + 1 < input.size() ? left + 1 : left;
        points.push_back(input[left] +
                         (input[right] - input[left]) * (position - static_cast<long double>(left)));
    }
    if (ratio < 1) points = SlowLowPass(points, 0.693L * ratio);
    std::vector<double> cycle;
    for (std::size_t i = 0; i < 4096; ++i)
        cycle.push_back(static_cast<double>(points[i + 2]));
    return cycle;
}

std::vector<double> Wobble(std::size_t count) {
    std::vector<double> values;
    for (std::size_t i = 0; i < count; ++i) {
        const double x = static_cast<double>(i) / static_cast<double>(count);
        values.push_back(std::sin(6.283185307179586 * x) + 0.4 * std::sin(40.0 * x * x) +
                         (i % 5 == 0 ? 0.3 : 0.0));
    }
    return values;
}

} // namespace

TEST(WavFile, EightBitIsUnsignedAroundItsMiddle) {
    EXPECT_EQ(Frames(WavBytes({.bits = 8}, Numbers({0, 1, 127, 128, 255}, 1))),
              (std::vector<double>{-128, -127, -1, 0, 127}));
}

TEST(WavFile, SixteenBitIsSigned) {
    EXPECT_EQ(Frames(WavBytes({.bits = 16}, Numbers({0, 1, -1, 32767, -32768}, 2))),
              (std::vector<double>{0, 1, -1, 32767, -32768}));
}

TEST(WavFile, TwentyFourBitStandsInTheUpperBytes) {
    EXPECT_EQ(Frames(WavBytes({.bits = 24}, Numbers({0, 1, -1, 8388607, -8388608}, 3))),
              (std::vector<double>{0, 256, -256, 2147483392, -2147483648.0}));
}

TEST(WavFile, ThirtyTwoBitIsSigned) {
    EXPECT_EQ(Frames(WavBytes({.bits = 32}, Numbers({0, 1, -1, 2147483647, -2147483648LL}, 4))),
              (std::vector<double>{0, 1, -1, 2147483647, -2147483648.0}));
}

TEST(WavFile, FloatsComeAsTheyAre) {
    EXPECT_EQ(Frames(WavBytes({.format = 3, .bits = 32}, Floats({0.0F, 0.5F, -1.25F, 300.0F}))),
              (std::vector<double>{0.0, 0.5, -1.25, 300.0}));
    EXPECT_EQ(Frames(FloatWav({0.1, -1e30, 3.0})), (std::vector<double>{0.1, -1e30, 3.0}));
}

TEST(WavFile, TwoChannelsAreAveraged) {
    EXPECT_EQ(Frames(WavBytes({.channels = 2, .bits = 16}, Numbers({10, 20, -5, 6, 32767, 32767}, 2))),
              (std::vector<double>{15, 0.5, 32767}));
    EXPECT_EQ(Frames(WavBytes({.format = 3, .channels = 2, .bits = 32}, Floats({1.0F, -0.5F}))),
              (std::vector<double>{0.25}));
    EXPECT_EQ(Frames(WavBytes({.channels = 2, .bits = 8}, Numbers({0, 255, 128, 130}, 1))),
              (std::vector<double>{-0.5, 1}));
    EXPECT_EQ(Frames(WavBytes({.channels = 2, .bits = 24}, Numbers({1, 3}, 3))), (std::vector<double>{512}));
}

TEST(WavFile, FormatsWithoutARuleReadAsZeros) {
    EXPECT_EQ(Frames(WavBytes({.format = 1, .bits = 64}, Numbers({5, -5}, 8))), (std::vector<double>{0, 0}));
    for (const unsigned bits : {8U, 16U, 24U}) {
        const std::vector<double> frames =
            Frames(WavBytes({.format = 3, .bits = bits}, Numbers({5, 6, 7}, bits / 8)));
        EXPECT_EQ(frames, (std::vector<double>{0, 0, 0})) << bits;
    }
}

TEST(WavFile, AnyFormatTagButThreeIsInteger) {
    for (const unsigned tag : {0U, 1U, 2U, 7U, 0xfffeU}) {
        EXPECT_EQ(Frames(WavBytes({.format = tag, .bits = 16}, Numbers({-2, 9}, 2))),
                  (std::vector<double>{-2, 9}));
    }
}

TEST(WavFile, OtherWidthsAndChannelCountsAreRefused) {
    const Bytes samples(4096, std::byte{1});
    for (const unsigned bits : {0U, 1U, 4U, 12U, 20U, 40U, 48U, 128U, 65535U})
        EXPECT_EQ(WavFile(WavBytes({.bits = bits}, samples)).Frames(), 0U) << bits;
    for (const unsigned channels : {0U, 3U, 4U, 6U, 65535U})
        EXPECT_EQ(WavFile(WavBytes({.channels = channels}, samples)).Frames(), 0U) << channels;
}

TEST(WavFile, FilesOfAnotherKindAreRefused) {
    const Bytes good = WavBytes({}, Bytes(64, std::byte{1}));
    ASSERT_EQ(WavFile(good).Frames(), 32U);
    for (const std::size_t place : {0U, 3U, 8U, 11U}) {
        Bytes bad = good;
        bad[place] = std::byte{'x'};
        EXPECT_EQ(WavFile(bad).Frames(), 0U) << place;
    }
}

TEST(WavFile, DataIsFoundBehindOtherChunks) {
    // The mark is looked for from byte 44 on, so the chunk in between has at least its own head of 8 bytes.
    for (const std::size_t between : {1U, 2U, 3U, 10U, 1000U}) {
        const Bytes file = WavBytes({.bits = 16, .bytesBeforeData = between}, Numbers({7, -8, 9}, 2));
        EXPECT_EQ(Frames(file), (std::vector<double>{7, -8, 9})) << between;
    }
}

TEST(WavFile, WithoutDataItIsRefused) {
    Bytes file = WavBytes({.bits = 16, .bytesBeforeData = 20}, Numbers({7, -8, 9}, 2));
    file[36 + 8 + 20] = std::byte{'D'};
    EXPECT_EQ(WavFile(file).Frames(), 0U);
    EXPECT_EQ(WavFile(Bytes(4000, std::byte{0})).Frames(), 0U);
    EXPECT_EQ(WavFile(Bytes{}).Frames(), 0U);
}

TEST(WavFile, NoFramesInAnEmptyDataChunk) {
    EXPECT_EQ(WavFile(WavBytes({}, {})).Frames(), 0U);
}

TEST(WavFile, AnIncompleteFrameAtTheEndIsLeftOut) {
    EXPECT_EQ(WavFile(WavBytes({.bits = 16}, Bytes(7))).Frames(), 3U);
    EXPECT_EQ(WavFile(WavBytes({.channels = 2, .bits = 24}, Bytes(17))).Frames(), 2U);
}

TEST(WavFile, ACountBeyondTheEndIsLimitedToTheFile) {
    EXPECT_EQ(WavFile(WavBytes({.bits = 16, .dataSize = 1000}, Bytes(10))).Frames(), 5U);
    EXPECT_EQ(WavFile(WavBytes({.bits = 16, .dataSize = 0xffffffff}, Bytes(10))).Frames(), 5U);
    EXPECT_EQ(WavFile(WavBytes({.bits = 64, .dataSize = 0x80000000}, Bytes(7))).Frames(), 0U);
}

TEST(WavFile, BytesBehindTheDataAreNotSamples) {
    EXPECT_EQ(WavFile(WavBytes({.bits = 16, .dataSize = 6}, Bytes(100))).Frames(), 3U);
}

TEST(WavFile, ADataChunkOfOneSampleTakesItsCountFromTheFileSizeWord) {
    // riff / bytes / channels - 36 frames.
    const Bytes samples(400, std::byte{3});
    EXPECT_EQ(WavFile(WavBytes({.bits = 16, .riffSize = 200, .dataSize = 2}, samples)).Frames(), 64U);
    EXPECT_EQ(
        WavFile(WavBytes({.channels = 2, .bits = 16, .riffSize = 200, .dataSize = 2}, samples)).Frames(),
        14U);
    EXPECT_EQ(WavFile(WavBytes({.bits = 8, .riffSize = 100, .dataSize = 1}, samples)).Frames(), 64U);
    EXPECT_EQ(WavFile(WavBytes({.bits = 16, .riffSize = 72, .dataSize = 2}, samples)).Frames(), 0U);
    EXPECT_EQ(WavFile(WavBytes({.bits = 16, .riffSize = 10, .dataSize = 2}, samples)).Frames(), 0U);
    EXPECT_EQ(WavFile(WavBytes({.bits = 16, .riffSize = 0xffffffff, .dataSize = 2}, samples)).Frames(), 200U);
}

TEST(WavFile, TruncatedAtAnyByteItReadsWhatIsThere) {
    for (const std::size_t between : {0U, 6U}) {
        const Bytes whole = WavBytes({.channels = 2, .bits = 16, .bytesBeforeData = between},
                                     Numbers({1, 3, 5, 7, 9, 11, 13, 15}, 2));
        const std::size_t start = whole.size() - 16;
        for (std::size_t length = 0; length <= whole.size(); ++length) {
            const Bytes part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
            const std::size_t expected = length < start ? 0 : (length - start) / 4;
            const std::vector<double> frames = Frames(part);
            ASSERT_EQ(frames.size(), expected) << length;
            for (std::size_t i = 0; i < frames.size(); ++i)
                EXPECT_EQ(frames[i], static_cast<double>(4 * i + 2));
        }
    }
}

TEST(WavFile, ValuesThatAreNotFiniteReadAsZero) {
    constexpr double kInf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Frames(FloatWav({std::nan(""), kInf, -kInf, 2.0})), (std::vector<double>{0, 0, 0, 2}));
}

TEST(WavFile, BrokenHeadersNeverReadOutsideTheFile) {
    std::uint32_t s = 1;
    const auto next = [&s](std::uint32_t range) {
        s = s * 1664525U + 1013904223U;
        return (s >> 8U) % range;
    };
    const Bytes good = WavBytes({.channels = 2, .bits = 16, .bytesBeforeData = 9}, Bytes(50, std::byte{9}));
    const auto cycle = std::make_unique<WaveCycle>();
    for (int round = 0; round < 400; ++round) {
        Bytes bad = good;
        for (int change = 0; change < 3; ++change)
            bad[next(60)] = static_cast<std::byte>(next(256));
        bad.resize(bad.size() - next(30));
        bad.shrink_to_fit();
        const WavFile wav(bad);
        for (std::size_t i = 0; i < wav.Frames(); ++i)
            ASSERT_TRUE(std::isfinite(wav.Frame(i)));
        ASSERT_LE(wav.Frames(), bad.size());
        if (wav.Frames() > 0 && round % 20 == 0) wav.ResampleTo(*cycle);
    }
}

TEST(WavFile, ResamplingAgreesWithASlowComputation) {
    for (const std::size_t count : {2U, 3U, 100U, 2048U, 4095U, 4097U, 5000U, 8192U, 20000U}) {
        const std::vector<double> expected = SlowResampled(Wobble(count));
        const std::vector<double> cycle = Resampled(Wobble(count));
        for (std::size_t i = 0; i < 4096; ++i)
            ASSERT_NEAR(cycle[i], expected[i], 1e-9) << count << " frames, sample " << i;
    }
}

TEST(WavFile, ResamplingKeepsAConstantLevel) {
    for (const std::size_t count : {100U, 9000U}) {
        const std::vector<double> cycle = Resampled(std::vector<double>(count, 0.5));
        EXPECT_NEAR(cycle[4095], 0.5, 1e-6) << count; // the filter has settled
    }
}

TEST(WavFile, ResamplingLongFilesTakesOutWhatTheCycleCannotHold) {
    std::vector<double> values;
    values.reserve(40960);
    for (int i = 0; i < 40960; ++i)
        values.push_back(std::sin(6.283185307179586 * i * 0.2)); // four times above the cycle's limit
    double peak = 0.0;
    for (const double v : Resampled(values))
        peak = std::fmax(peak, std::fabs(v));
    EXPECT_LT(peak, 0.04);
}
