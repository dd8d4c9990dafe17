#include "host/MidiFile.h"

#include "host/HostError.h"
#include "tests/host/MidiBytes.h"
#include "tests/host/TempFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

Song Parse(const Bytes& bytes) {
    return MidiFile::Parse(bytes, "song.mid");
}

/// The message with which a file is refused, empty if it is not.
std::string FaultOf(const Bytes& bytes) {
    try {
        static_cast<void>(Parse(bytes));
    } catch (const HostError& fault) {
        return fault.what();
    }
    return {};
}

void ExpectMessage(const SongEvent& event, double seconds, int status, int data1, int data2) {
    EXPECT_DOUBLE_EQ(event.seconds, seconds);
    EXPECT_EQ(event.bytes[0], status);
    EXPECT_EQ(event.bytes[1], data1);
    EXPECT_EQ(event.bytes[2], data2);
}

/// Two tracks with tempo, meter, running status, exclusive messages and every kind of channel message.
Bytes RichFile() {
    const Bytes conductor = Bytes{0x00, 0xFF, 0x03, 0x02, 'h', 'i'} + TempoEvent(0, 400000) +
                            Bytes{0x00, 0xFF, 0x58, 0x04, 0x03, 0x02, 24, 8} + TempoEvent(96, 600000) +
                            kEndOfTrack;
    const Bytes music = Bytes{0x00, 0xC1, 0x05,                   // program change
                              0x00, 0x91, 0x24, 0x7F,             // note on
                              0x30, 0x24, 0x00,                   // running status
                              0x00, 0xF0, 0x03, 0x7E, 0x01, 0xF7, // exclusive
                              0x00, 0xE1, 0x00, 0x50,             // bend
                              0x60, 0xB1, 0x07, 0x40,             // controller
                              0x81, 0x00, 0xD1, 0x22,             // pressure, 128 ticks later
                              0x00, 0xA1, 0x24, 0x10} +
                        kEndOfTrack;
    return MidiBytes(1, 96, {conductor, music});
}

} // namespace

TEST(MidiFile, TypeZeroIsReadAt120UntilATempoComes) {
    const Bytes track = Bytes{0x00, 0x90, 60, 100, 0x60, 0x80, 60, 64} + kEndOfTrack;
    const Song song = Parse(MidiBytes(0, 96, {track}));
    ASSERT_EQ(song.events.size(), 2U);
    ExpectMessage(song.events[0], 0.0, 0x90, 60, 100);
    ExpectMessage(song.events[1], 0.5, 0x80, 60, 64);
    EXPECT_DOUBLE_EQ(song.seconds, 0.5);
    EXPECT_DOUBLE_EQ(song.tempo.At(0.25).tempo, 120.0);
    EXPECT_DOUBLE_EQ(song.tempo.At(0.25).quarter, 0.5);
}

TEST(MidiFile, TypeOneTracksAreMergedInOrderOfTimeAndTrack) {
    const Bytes first = Bytes{0x00, 0x90, 1, 1, 0x60, 0x90, 3, 1} + kEndOfTrack;
    const Bytes second = Bytes{0x00, 0x90, 2, 1, 0x30, 0x90, 4, 1} + kEndOfTrack;
    const Song song = Parse(MidiBytes(1, 96, {first, second}));
    ASSERT_EQ(song.events.size(), 4U);
    EXPECT_EQ(song.events[0].bytes[1], 1);
    EXPECT_EQ(song.events[1].bytes[1], 2);
    EXPECT_EQ(song.events[2].bytes[1], 4);
    EXPECT_EQ(song.events[3].bytes[1], 3);
}

TEST(MidiFile, TempoChangesInOneTrackMoveTheEventsOfAnother) {
    const Song song = Parse(RichFile());
    // The first quarter (96 ticks) lasts 0.4 s, every later one 0.6 s.
    ASSERT_EQ(song.events.size(), 7U);
    ExpectMessage(song.events[0], 0.0, 0xC1, 0x05, 0);
    ExpectMessage(song.events[1], 0.0, 0x91, 0x24, 0x7F);
    ExpectMessage(song.events[2], 0.2, 0x91, 0x24, 0x00);
    ExpectMessage(song.events[3], 0.2, 0xE1, 0x00, 0x50);
    ExpectMessage(song.events[4], 0.4 + 0.3, 0xB1, 0x07, 0x40);
    ExpectMessage(song.events[5], 0.4 + 0.6 * (144.0 + 128.0 - 96.0) / 96.0, 0xD1, 0x22, 0);
    EXPECT_DOUBLE_EQ(song.tempo.At(0.1).tempo, 150.0);
    EXPECT_DOUBLE_EQ(song.tempo.At(0.4).tempo, 100.0);
    EXPECT_DOUBLE_EQ(song.tempo.At(1.0).quarter, 2.0);
    EXPECT_EQ(song.tempo.At(0.0).numerator, 3);
    EXPECT_EQ(song.tempo.At(0.0).denominator, 4);
}

TEST(MidiFile, RunningStatusEndsAtAMetaEventOrExclusiveMessage) {
    const Bytes meta = Bytes{0x00, 0x90, 60, 1, 0x00, 0xFF, 0x01, 0x00, 0x00, 61, 1} + kEndOfTrack;
    const Bytes exclusive = Bytes{0x00, 0x90, 60, 1, 0x00, 0xF0, 0x00, 0x00, 61, 1} + kEndOfTrack;
    EXPECT_NE(FaultOf(MidiBytes(0, 96, {meta})).find("data without a status"), std::string::npos);
    EXPECT_NE(FaultOf(MidiBytes(0, 96, {exclusive})).find("data without a status"), std::string::npos);
}

TEST(MidiFile, DataBeforeAnyStatusIsRefused) {
    const std::string fault = FaultOf(MidiBytes(0, 96, {Bytes{0x00, 60, 1} + kEndOfTrack}));
    EXPECT_NE(fault.find("song.mid: has data without a status at byte"), std::string::npos) << fault;
}

TEST(MidiFile, FilmFramesCountSecondsWhateverTheTempo) {
    const Bytes track = TempoEvent(0, 250000) + Bytes{0x64, 0x90, 60, 1} + kEndOfTrack;
    // 25 frames of 40 ticks: 1000 ticks a second.
    const Song even = Parse(MidiBytes(0, 0xE728, {track}));
    EXPECT_DOUBLE_EQ(even.events.at(0).seconds, 0.1);
    EXPECT_DOUBLE_EQ(even.tempo.At(0.1).tempo, 240.0);
    // 29 stands for the 30000/1001 frames of colour television.
    const Song drop = Parse(MidiBytes(0, 0xE304, {track}));
    EXPECT_DOUBLE_EQ(drop.events.at(0).seconds, 100.0 * 1001.0 / 30000.0 / 4.0);
}

TEST(MidiFile, UnknownChunksAndLongHeadersArePassedOver) {
    const Bytes track = Bytes{0x60, 0x90, 60, 1} + kEndOfTrack;
    const Bytes file = Chunk("MThd", Big(0, 2) + Big(1, 2) + Big(96, 2) + Bytes{1, 2, 3}) +
                       Chunk("XFIH", Bytes{9, 9}) + Chunk("MTrk", track) + Bytes{1, 2, 3};
    EXPECT_EQ(Parse(file).events.size(), 1U);
}

TEST(MidiFile, EventsBehindTheEndOfATrackAreNotPlayed) {
    const Bytes track = Bytes{0x00, 0x90, 60, 1} + kEndOfTrack + Bytes{0x00, 0x90, 61, 1};
    EXPECT_EQ(Parse(MidiBytes(0, 96, {track})).events.size(), 1U);
}

TEST(MidiFile, ATempoOfZeroAndASenselessMeterChangeNothing) {
    const Bytes track = TempoEvent(0, 0) + Bytes{0x00, 0xFF, 0x58, 0x02, 0x00, 0x02} +
                        Bytes{0x00, 0xFF, 0x58, 0x02, 0x03, 0xFF} + Bytes{0x60, 0x90, 60, 1} + kEndOfTrack;
    const Song song = Parse(MidiBytes(0, 96, {track}));
    EXPECT_DOUBLE_EQ(song.events.at(0).seconds, 0.5);
    EXPECT_EQ(song.tempo.At(0.0).numerator, 4);
    EXPECT_EQ(song.tempo.At(0.0).denominator, 4);
}

TEST(MidiFile, HeadersThatMakeNoSenseAreRefusedByName) {
    const Bytes track = kEndOfTrack;
    EXPECT_EQ(FaultOf(Letters("RIFF....WAVE")), "song.mid: is not a Standard MIDI file");
    EXPECT_EQ(FaultOf({}), "song.mid: is not a Standard MIDI file");
    EXPECT_EQ(FaultOf(MidiBytes(2, 96, {track})), "song.mid: is a MIDI file of type 2, not 0 or 1");
    EXPECT_EQ(FaultOf(MidiBytes(1, 96, {})), "song.mid: has no tracks");
    EXPECT_EQ(FaultOf(MidiBytes(0, 96, {track, track})),
              "song.mid: is of type 0 but has more than one track");
    EXPECT_NE(FaultOf(MidiBytes(0, 0, {track})).find("no ticks in a quarter note"), std::string::npos);
    EXPECT_NE(FaultOf(MidiBytes(0, 0xE700, {track})).find("no ticks in a film frame"), std::string::npos);
    EXPECT_NE(FaultOf(MidiBytes(0, 0x9928, {track})).find("unknown film frame rate"), std::string::npos);
    const Bytes crowd = Chunk("MThd", Big(1, 2) + Big(1025, 2) + Big(96, 2));
    EXPECT_EQ(FaultOf(crowd), "song.mid: has too many tracks: 1025");
}

TEST(MidiFile, AbsurdLengthsAreRefused) {
    // A track that says it has 4 GB, a meta event longer than its track, a number of five bytes.
    const Bytes huge =
        Chunk("MThd", Big(0, 2) + Big(1, 2) + Big(96, 2)) + Letters("MTrk") + Big(0xFFFFFFFF, 4);
    EXPECT_NE(FaultOf(huge).find("truncated"), std::string::npos);
    const Bytes meta{0x00, 0xFF, 0x01, 0xFF, 0xFF, 0xFF, 0x7F};
    EXPECT_NE(FaultOf(MidiBytes(0, 96, {meta})).find("truncated"), std::string::npos);
    const Bytes number{0x81, 0x81, 0x81, 0x81, 0x01};
    EXPECT_NE(FaultOf(MidiBytes(0, 96, {number})).find("more than four bytes"), std::string::npos);
}

TEST(MidiFile, ASongOfMoreThanADayIsRefused) {
    Bytes track;
    for (int i = 0; i < 4; ++i)
        track = track + Bytes{0xFF, 0xFF, 0xFF, 0x7F, 0x90, 60, 1};
    EXPECT_EQ(FaultOf(MidiBytes(0, 1, {track + kEndOfTrack})), "song.mid: lasts longer than 24 hours");
}

TEST(MidiFile, AFileCutOffAtAnyByteIsRefusedInOneLine) {
    const Bytes whole = RichFile();
    EXPECT_EQ(FaultOf(whole), "");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const std::string fault =
            FaultOf({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)});
        EXPECT_TRUE(fault.starts_with("song.mid: ")) << "length " << length << ": " << fault;
        EXPECT_EQ(fault.find('\n'), std::string::npos);
    }
}

TEST(MidiFile, MutatedFilesAreEitherRefusedOrSound) {
    const Bytes whole = RichFile();
    std::mt19937 random(20230817);
    int refused = 0;
    int read = 0;
    for (int round = 0; round < 20000; ++round) {
        Bytes bytes = whole;
        const int changes = 1 + static_cast<int>(random() % 4);
        for (int i = 0; i < changes; ++i)
            bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random());
        try {
            const Song song = Parse(bytes);
            double last = 0.0;
            for (const SongEvent& event : song.events) {
                ASSERT_GE(event.seconds, last);
                ASSERT_LE(event.seconds, song.seconds);
                ASSERT_GE(event.bytes[0], 0x80);
                ASSERT_LT(event.bytes[0], 0xF0);
                ASSERT_LT(event.bytes[1], 0x80);
                ASSERT_LT(event.bytes[2], 0x80);
                last = event.seconds;
            }
            ASSERT_LE(song.seconds, MidiFile::kMaxSeconds);
            const MusicalPosition position = song.tempo.At(song.seconds / 2.0);
            ASSERT_TRUE(std::isfinite(position.quarter) && std::isfinite(position.barStart));
            ASSERT_LE(position.barStart, position.quarter);
            ++read;
        } catch (const HostError& fault) {
            ASSERT_EQ(std::string(fault.what()).find('\n'), std::string::npos);
            ++refused;
        }
    }
    EXPECT_GT(refused, 1000);
    EXPECT_GT(read, 1000);
}

TEST(MidiFile, AFileIsReadFromDisk) {
    const TempFolder folder("midi");
    EXPECT_EQ(MidiFile::Load(folder.Write("song.mid", RichFile())).events.size(), 7U);
}

TEST(MidiFile, AMissingFileAndAFolderAreRefusedByName) {
    const TempFolder folder("midi-missing");
    const auto fault = [](const std::filesystem::path& path) -> std::string {
        try {
            static_cast<void>(MidiFile::Load(path));
        } catch (const HostError& error) {
            return error.what();
        }
        return {};
    };
    EXPECT_TRUE(fault(folder.Path("none.mid")).starts_with(TextFromPath(folder.Path("none.mid")) + ": "));
    EXPECT_NE(fault(folder.Path("")).find("is a directory"), std::string::npos);
}

TEST(MidiFile, TheKickPatternHasEightBarsAndSlowsDownAtTheEnd) {
    const auto path = PathFromText(THUDFORGE_SOURCE_DIR) / "examples" / "kick-pattern.mid";
    const Song song = MidiFile::Load(path);
    EXPECT_DOUBLE_EQ(song.tempo.At(0.0).tempo, 60e6 / 352941.0);
    EXPECT_NEAR(song.tempo.At(song.seconds).tempo, 160.0, 1e-9);
    EXPECT_NEAR(song.tempo.At(song.seconds).quarter, 32.0, 1e-9);
    int balance = 0;
    int kicks = 0;
    for (const SongEvent& event : song.events) {
        ASSERT_EQ(event.bytes[0], 0x99);
        kicks += event.bytes[2] != 0 ? 1 : 0;
        balance += event.bytes[2] != 0 ? 1 : -1;
        ASSERT_TRUE(balance == 0 || balance == 1) << "kicks overlap at " << event.seconds;
    }
    EXPECT_EQ(balance, 0);
    EXPECT_GE(kicks, 32);
}
