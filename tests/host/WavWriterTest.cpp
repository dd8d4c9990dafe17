#include "host/WavWriter.h"

#include "host/HostError.h"
#include "tests/host/TempFolder.h"

#include <gtest/gtest.h>
#include <sndfile.h>

#include <cmath>
#include <cstring>
#include <string>
#include <vector>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

struct Contents {
    SF_INFO info{};
    std::vector<double> samples;
};

Contents ReadBack(const std::filesystem::path& path) {
    Contents contents;
    SNDFILE* file = sf_open(TextFromPath(path).c_str(), SFM_READ, &contents.info);
    if (file == nullptr) {
        ADD_FAILURE() << sf_strerror(nullptr);
        return contents;
    }
    contents.samples.resize(static_cast<std::size_t>(contents.info.frames * contents.info.channels));
    sf_read_double(file, contents.samples.data(), static_cast<sf_count_t>(contents.samples.size()));
    sf_close(file);
    return contents;
}

const std::vector<double> kSound{0.0, 0.1, -0.3, 1.0, -1.0, 0.99999, 1.0 / 3.0, -1e-6};

Contents WriteAndReadBack(SampleFormat format, const std::vector<double>& sound, const std::string& name) {
    const TempFolder folder(name);
    WavWriter wav(folder.Path("a.wav"), 2, 48000, format);
    wav.Write(sound);
    wav.Commit();
    EXPECT_EQ(folder.Names(), std::set<std::string>{"a.wav"});
    return ReadBack(folder.Path("a.wav"));
}

std::string FaultOf(const std::filesystem::path& path) {
    try {
        const WavWriter wav(path, 2, 48000, SampleFormat::Pcm16);
    } catch (const HostError& fault) {
        return fault.what();
    }
    return {};
}

} // namespace

TEST(WavWriter, DoublesComeBackToTheBit) {
    const Contents contents = WriteAndReadBack(SampleFormat::Float64, kSound, "wav64");
    EXPECT_EQ(contents.info.format, SF_FORMAT_WAV | SF_FORMAT_DOUBLE);
    EXPECT_EQ(contents.info.samplerate, 48000);
    EXPECT_EQ(contents.info.channels, 2);
    EXPECT_EQ(contents.samples, kSound);
}

TEST(WavWriter, FloatsAreTheNearestFloats) {
    const Contents contents = WriteAndReadBack(SampleFormat::Float32, kSound, "wav32");
    EXPECT_EQ(contents.info.format, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    ASSERT_EQ(contents.samples.size(), kSound.size());
    for (std::size_t i = 0; i < kSound.size(); ++i) {
        EXPECT_EQ(contents.samples[i], static_cast<double>(static_cast<float>(kSound[i])));
    }
}

TEST(WavWriter, WholeNumbersAreRoundedToTheNearestAndLimited) {
    for (const auto format : {SampleFormat::Pcm16, SampleFormat::Pcm24}) {
        const double fullScale = format == SampleFormat::Pcm16 ? 32768.0 : 8388608.0;
        std::vector<double> sound = kSound;
        sound.insert(sound.end(), {3.1622777, -3.1622777});
        const Contents contents = WriteAndReadBack(format, sound, "wavpcm");
        EXPECT_EQ(contents.info.format & SF_FORMAT_SUBMASK,
                  format == SampleFormat::Pcm16 ? SF_FORMAT_PCM_16 : SF_FORMAT_PCM_24);
        ASSERT_EQ(contents.samples.size(), sound.size());
        for (std::size_t i = 0; i < sound.size(); ++i) {
            const double limited = std::min(std::max(sound[i], -1.0), (fullScale - 1.0) / fullScale);
            EXPECT_NEAR(contents.samples[i], limited, 0.5 / fullScale) << sound[i];
        }
        EXPECT_EQ(contents.samples[8], (fullScale - 1.0) / fullScale);
        EXPECT_EQ(contents.samples[9], -1.0);
    }
}

TEST(WavWriter, TheSameSoundGivesTheSameBytes) {
    const TempFolder folder("wavsame");
    for (const auto format :
         {SampleFormat::Pcm16, SampleFormat::Pcm24, SampleFormat::Float32, SampleFormat::Float64}) {
        for (const char* name : {"a.wav", "b.wav"}) {
            WavWriter wav(folder.Path(name), 2, 44100, format);
            wav.Write(kSound);
            wav.Commit();
        }
        EXPECT_EQ(ReadFileBytes(folder.Path("a.wav"), 100000), ReadFileBytes(folder.Path("b.wav"), 100000));
        // The chunk that names the peak would hold the time of day.
        const auto bytes = ReadFileBytes(folder.Path("a.wav"), 100000);
        EXPECT_EQ(std::string(bytes.begin(), bytes.end()).find("PEAK"), std::string::npos);
    }
}

TEST(WavWriter, WithoutCommitNothingIsLeftAndTheOldFileStays) {
    const TempFolder folder("wavleft");
    {
        WavWriter wav(folder.Path("new.wav"), 2, 48000, SampleFormat::Pcm24);
        wav.Write(kSound);
    }
    EXPECT_TRUE(folder.Names().empty());
    const std::vector<std::uint8_t> old{1, 2, 3};
    const auto path = folder.Write("old.wav", old);
    {
        WavWriter wav(path, 2, 48000, SampleFormat::Pcm24);
        wav.Write(kSound);
        EXPECT_EQ(ReadFileBytes(path, 100), old);
    }
    EXPECT_EQ(ReadFileBytes(path, 100), old);
    EXPECT_EQ(folder.Names(), std::set<std::string>{"old.wav"});
}

TEST(WavWriter, CommitReplacesTheOldFile) {
    const TempFolder folder("wavreplace");
    const auto path = folder.Write("old.wav", {1, 2, 3});
    WavWriter wav(path, 2, 48000, SampleFormat::Float64);
    wav.Write(kSound);
    wav.Commit();
    EXPECT_EQ(ReadBack(path).samples, kSound);
}

TEST(WavWriter, AnEmptyFileIsAFile) {
    const Contents contents = WriteAndReadBack(SampleFormat::Pcm16, {}, "wavempty");
    EXPECT_EQ(contents.info.frames, 0);
}

TEST(WavWriter, ATargetThatCannotBeIsRefusedByName) {
    const TempFolder folder("wavbad");
    const auto missing = folder.Path("none") / "a.wav";
    EXPECT_TRUE(FaultOf(missing).starts_with(TextFromPath(missing) + ": cannot be written"))
        << FaultOf(missing);
    EXPECT_NE(FaultOf(folder.Path(".")).find("is a directory"), std::string::npos)
        << FaultOf(folder.Path("."));
    EXPECT_TRUE(folder.Names().empty());
}

TEST(WavWriter, NamesInAnyAlphabetAreWritten) {
    const TempFolder folder("wavname");
    const auto path = folder.Path("") / PathFromText("тяжёлый удар.wav");
    WavWriter wav(path, 1, 48000, SampleFormat::Pcm16);
    wav.Commit();
    EXPECT_TRUE(std::filesystem::exists(path));
}

TEST(WavWriter, TheLargestFileFitsIn32BitSizes) {
    EXPECT_EQ(SampleBytes(SampleFormat::Pcm24), 3);
    EXPECT_LT(WavWriter::MaxFrames(2, SampleFormat::Float64) * 16, std::int64_t{1} << 32);
    EXPECT_GT(WavWriter::MaxFrames(2, SampleFormat::Float64) * 16, (std::int64_t{1} << 32) - 10000);
    EXPECT_EQ(WavWriter::MaxFrames(2, SampleFormat::Pcm16) / 2,
              WavWriter::MaxFrames(2, SampleFormat::Float32));
}
