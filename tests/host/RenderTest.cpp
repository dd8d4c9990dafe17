#include "host/Render.h"

#include "host/HostError.h"
#include "tests/host/FakePlugin.h"
#include "tests/host/TempFolder.h"

#include <gtest/gtest.h>
#include <sndfile.h>

#include <map>
#include <string>
#include <vector>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

constexpr std::int64_t kRate = 48000;

/// The samples of the left channel that are not 0, by frame, and the number of frames.
struct Rendered {
    RenderResult result;
    std::int64_t frames = 0;
    std::map<std::int64_t, double> hits;
};

Rendered ReadBack(const std::filesystem::path& path) {
    Rendered rendered;
    SF_INFO info{};
    SNDFILE* file = sf_open(TextFromPath(path).c_str(), SFM_READ, &info);
    if (file == nullptr) {
        ADD_FAILURE() << sf_strerror(nullptr);
        return rendered;
    }
    std::vector<double> samples(static_cast<std::size_t>(info.frames * info.channels));
    sf_readf_double(file, samples.data(), info.frames);
    sf_close(file);
    rendered.frames = info.frames;
    for (std::int64_t i = 0; i < info.frames; ++i) {
        const auto at = static_cast<std::size_t>(i) * 2;
        EXPECT_EQ(samples[at], samples[at + 1]);
        if (samples[at] != 0.0) rendered.hits[i] = samples[at];
    }
    return rendered;
}

Rendered RenderFake(FakePlugin&, const Song& song, std::optional<double> tail, int block,
                    const RenderProgress& progress = {}) {
    const TempFolder folder("render");
    const auto path = folder.Path("a.wav");
    PluginHost host(FakePlugin::Entry, "fake.so", {static_cast<double>(kRate), block});
    WavWriter wav(path, 2, static_cast<int>(kRate), SampleFormat::Float64);
    const RenderResult result = RenderSong(host, song, tail, wav, SampleFormat::Float64, progress);
    wav.Commit();
    Rendered rendered = ReadBack(path);
    rendered.result = result;
    EXPECT_EQ(rendered.frames, result.frames);
    return rendered;
}

/// Note ons at the given frames, in a song of `length` frames.
Song SongOf(const std::vector<std::int64_t>& frames, std::int64_t length) {
    Song song;
    std::uint8_t key = 0;
    for (const std::int64_t frame : frames) {
        song.events.push_back({static_cast<double>(frame) / static_cast<double>(kRate), {0x90, key, 127}});
        song.events.push_back({static_cast<double>(frame) / static_cast<double>(kRate), {0xB0, 64, 0}});
        ++key;
    }
    song.seconds = static_cast<double>(length) / kRate;
    return song;
}

} // namespace

TEST(Render, EveryEventFallsOnItsOwnSampleWhateverTheBlockSize) {
    const std::vector<std::int64_t> frames{0, 1, 63, 64, 65, 255, 256, 1000, 47999};
    for (const int block : {1, 17, 64, 256, 4096}) {
        FakePlugin plugin;
        const Rendered rendered = RenderFake(plugin, SongOf(frames, 48000), 0.0, block);
        EXPECT_EQ(rendered.frames, 48000);
        EXPECT_EQ(rendered.hits.size(), frames.size());
        for (const std::int64_t frame : frames)
            EXPECT_EQ(rendered.hits.count(frame), 1U) << frame;
        for (const std::int32_t size : plugin.blockSizes)
            EXPECT_LE(size, block);
    }
}

TEST(Render, KeysLeftDownAreReleasedAtTheEndOfTheSong) {
    FakePlugin plugin;
    Song song = SongOf({100, 200}, 1000);
    song.events.push_back({500.0 / kRate, {0x90, 1, 0}});
    const Rendered rendered = RenderFake(plugin, song, 0.5, 64);
    EXPECT_EQ(rendered.frames, 1000 + 24000);
    EXPECT_EQ(rendered.hits,
              (std::map<std::int64_t, double>{{100, 1.0}, {200, 1.0}, {500, -0.25}, {1000, -0.25}}));
}

TEST(Render, TheAutomaticTailEndsShortlyAfterTheSound) {
    FakePlugin plugin;
    plugin.echoFrames = 4 * kRate; // the longest echo
    const Rendered rendered = RenderFake(plugin, SongOf({1000}, 24000), std::nullopt, 256);
    EXPECT_EQ(rendered.hits.count(1000 + 4 * kRate), 1U);
    EXPECT_EQ(rendered.frames, 1000 + 4 * kRate + 1 + kRate / 10);
}

TEST(Render, TheAutomaticTailDoesNotDependOnTheBlockSize) {
    std::map<std::int64_t, double> hits;
    std::int64_t frames = 0;
    for (const int block : {1, 100, 1024}) {
        FakePlugin plugin;
        plugin.echoFrames = 12345;
        const Rendered rendered = RenderFake(plugin, SongOf({10, 2000}, 3001), std::nullopt, block);
        if (frames == 0) {
            hits = rendered.hits;
            frames = rendered.frames;
        }
        EXPECT_EQ(rendered.frames, frames);
        EXPECT_EQ(rendered.hits, hits);
    }
    EXPECT_EQ(frames, 2000 + 12345 + 1 + kRate / 10);
}

TEST(Render, TheAutomaticTailNeverCutsTheSongItself) {
    FakePlugin plugin;
    Song song = SongOf({0}, 10 * kRate);
    song.events.push_back({0.0, {0x80, 0, 0}});
    const Rendered rendered = RenderFake(plugin, song, std::nullopt, 512);
    EXPECT_EQ(rendered.frames, 10 * kRate + kRate / 10);
}

TEST(Render, ASoundThatNeverEndsIsCutAfterAMinute) {
    FakePlugin plugin;
    Song song = SongOf({}, 100);
    // One hit a second for longer than the render will wait.
    for (int second = 0; second < 70; ++second) {
        song.events.push_back({static_cast<double>(second), {0x80, 0, 0}});
    }
    const Rendered rendered = RenderFake(plugin, song, std::nullopt, 4096);
    EXPECT_EQ(rendered.frames, 100 + 60 * kRate);
}

TEST(Render, ThePeakIsTheLargestSample) {
    FakePlugin plugin;
    Song song = SongOf({}, 1000);
    song.events.push_back({0.001, {0x90, 1, 64}});
    song.events.push_back({0.002, {0x90, 2, 100}});
    EXPECT_EQ(RenderFake(plugin, song, 0.0, 64).result.peak, 100.0 / 127.0);
}

TEST(Render, ASampleThatIsNoNumberIsAFault) {
    FakePlugin plugin;
    plugin.nanAt = 777;
    try {
        static_cast<void>(RenderFake(plugin, SongOf({0}, 1000), 0.0, 64));
        FAIL() << "the render went through";
    } catch (const HostError& fault) {
        EXPECT_TRUE(std::string(fault.what()).starts_with("fake.so: ")) << fault.what();
    }
}

TEST(Render, ItCanBeStoppedFromOutside) {
    FakePlugin plugin;
    int blocks = 0;
    const Rendered rendered =
        RenderFake(plugin, SongOf({0}, 48000), 0.0, 100, [&blocks](double, double) { return ++blocks < 5; });
    EXPECT_TRUE(rendered.result.interrupted);
    EXPECT_EQ(rendered.frames, 500);
}

TEST(Render, ASongThatAWavFileCannotHoldIsRefusedBeforeItStarts) {
    FakePlugin plugin;
    EXPECT_THROW(static_cast<void>(RenderFake(plugin, SongOf({0}, 86400 * kRate), 0.0, 4096)), HostError);
    EXPECT_TRUE(plugin.blockSizes.empty());
}

TEST(Render, TheHostIsTakenOutOfPlayAfterwards) {
    FakePlugin plugin;
    static_cast<void>(RenderFake(plugin, SongOf({0}, 1000), 0.0, 64));
    std::vector<std::intptr_t> mains;
    for (const auto& call : plugin.calls) {
        if (call.opcode == PlugOp::MainsChanged) mains.push_back(call.value);
    }
    EXPECT_EQ(mains, (std::vector<std::intptr_t>{1, 0}));
}

TEST(Render, NotesFollowEachOther) {
    const Song song = MakeNotes({24, 36}, 100, 0.5);
    ASSERT_EQ(song.events.size(), 4U);
    EXPECT_EQ(song.seconds, 1.0);
    EXPECT_EQ(song.events[1].seconds, 0.5);
    EXPECT_EQ(song.events[1].bytes, (std::array<std::uint8_t, 3>{0x80, 24, 0}));
    EXPECT_EQ(song.events[2].bytes, (std::array<std::uint8_t, 3>{0x90, 36, 100}));
}
