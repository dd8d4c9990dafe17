#include "plugin/MidiReceiver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace Grimworks {
namespace {

constexpr std::uint8_t kOn = 0x90;
constexpr std::uint8_t kOff = 0x80;
constexpr std::uint8_t kBend = 0xE0;
constexpr std::uint8_t kControl = 0xB0;

/// Writes down what the signals say and at which sample.
struct Recorder {
    struct Heard {
        char what;
        int a;
        int b;
        int offset;
        double value;
        int at;
    };

    explicit Recorder(int blockSize = 512) {
        midi.noteOn.Connect<&Recorder::NoteOn>(this);
        midi.noteOff.Connect<&Recorder::NoteOff>(this);
        midi.pitchBend.Connect<&Recorder::PitchBend>(this);
        midi.controlChange.Connect<&Recorder::ControlChange>(this);
        if (blockSize > 0) midi.Resize(blockSize);
    }
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    void NoteOn(int note, int velocity, int offset) { heard.push_back({'n', note, velocity, offset, 0, at}); }
    void NoteOff(int note, int velocity) { heard.push_back({'o', note, velocity, 0, 0, at}); }
    void PitchBend(int offset, double value) { heard.push_back({'p', 0, 0, offset, value, at}); }
    void ControlChange(int offset, int controller, double value) {
        heard.push_back({'c', controller, 0, offset, value, at});
    }

    void RunBlock(int frames) {
        for (at = 0; at < frames; ++at)
            midi.Advance();
        midi.Flush(frames);
    }

    MidiReceiver midi;
    std::vector<Heard> heard;
    int at = 0;
};

TEST(MidiReceiver, VelocityZeroReleasesTheKey) {
    Recorder r;
    r.midi.Add({0, kOn, 60, 100});
    r.midi.Add({1, kOn, 60, 0});
    r.RunBlock(1);
    EXPECT_EQ(r.midi.KeysHeld(), 1);
    EXPECT_TRUE(r.midi.IsKeyDown(60));
    r.RunBlock(1);
    EXPECT_EQ(r.midi.KeysHeld(), 0);
    EXPECT_FALSE(r.midi.IsKeyDown(60));
    ASSERT_EQ(r.heard.size(), 2U);
    EXPECT_EQ(r.heard[1].what, 'o');
    EXPECT_EQ(r.heard[1].a, 60);
    EXPECT_EQ(r.heard[1].b, 0);
}

TEST(MidiReceiver, ASecondNoteOnOfAHeldKeyIsIgnored) {
    Recorder r;
    r.midi.Add({0, kOn, 60, 100});
    r.midi.Add({5, kOn, 60, 90});
    r.RunBlock(16);
    EXPECT_EQ(r.heard.size(), 1U);
    EXPECT_EQ(r.midi.KeysHeld(), 1);
}

TEST(MidiReceiver, AllChannelsAreOne) {
    Recorder r;
    r.midi.Add({0, kOn, 60, 100});
    r.midi.Add({1, kOn | 5, 60, 90});
    r.midi.Add({2, kOff | 9, 60, 64});
    r.RunBlock(16);
    ASSERT_EQ(r.heard.size(), 2U);
    EXPECT_EQ(r.heard[0].what, 'n');
    EXPECT_EQ(r.heard[1].what, 'o');
    EXPECT_EQ(r.heard[1].b, 64);
    EXPECT_EQ(r.midi.KeysHeld(), 0);
}

TEST(MidiReceiver, ANoteOffForAKeyThatIsUpSendsNothing) {
    Recorder r;
    r.midi.Add({0, kOff, 60, 64});
    r.midi.Add({0, kOn, 61, 0});
    r.RunBlock(4);
    EXPECT_TRUE(r.heard.empty());
    EXPECT_EQ(r.midi.KeysHeld(), 0);
}

TEST(MidiReceiver, ANoteAtTheLastSampleIsSentThere) {
    Recorder r;
    r.midi.Add({63, kOn, 60, 100});
    r.RunBlock(64);
    ASSERT_EQ(r.heard.size(), 1U);
    EXPECT_EQ(r.heard[0].at, 63);
    EXPECT_EQ(r.heard[0].offset, 63);
}

TEST(MidiReceiver, AMessageBeyondTheBlockWaitsForTheNext) {
    Recorder r;
    r.midi.Add({100, kOn, 60, 100});
    r.RunBlock(64);
    EXPECT_TRUE(r.heard.empty());
    EXPECT_EQ(r.midi.Waiting(), 1);
    r.RunBlock(64);
    ASSERT_EQ(r.heard.size(), 1U);
    EXPECT_EQ(r.heard[0].at, 36);
    EXPECT_EQ(r.heard[0].offset, 36);
    EXPECT_EQ(r.midi.Waiting(), 0);
}

TEST(MidiReceiver, AMessageForTheFirstSampleOfTheNextBlockIsSentThere) {
    Recorder r;
    r.midi.Add({64, kOn, 60, 100});
    r.RunBlock(64);
    EXPECT_TRUE(r.heard.empty());
    r.RunBlock(64);
    ASSERT_EQ(r.heard.size(), 1U);
    EXPECT_EQ(r.heard[0].at, 0);
}

TEST(MidiReceiver, MessagesComeOutByOffsetAndThenByArrival) {
    Recorder r;
    r.midi.Add({30, kControl, 1, 127});
    r.midi.Add({10, kControl, 2, 0});
    r.midi.Add({30, kControl, 3, 0});
    r.midi.Add({20, kControl, 4, 0});
    r.midi.Add({10, kControl, 5, 0});
    r.RunBlock(64);
    std::vector<int> order;
    for (const auto& h : r.heard)
        order.push_back(h.a);
    EXPECT_EQ(order, (std::vector<int>{2, 5, 4, 1, 3}));
}

TEST(MidiReceiver, BendRunsFromMinusOneToJustUnderOne) {
    Recorder r;
    r.midi.Add({0, kBend, 0, 0});
    r.midi.Add({1, kBend, 0, 64});
    r.midi.Add({2, kBend, 127, 127});
    r.midi.Add({3, kBend, 1, 64});
    r.RunBlock(8);
    ASSERT_EQ(r.heard.size(), 4U);
    EXPECT_EQ(r.heard[0].value, -1.0);
    EXPECT_EQ(r.heard[1].value, 0.0);
    EXPECT_EQ(r.heard[2].value, 8191.0 / 8192.0);
    EXPECT_EQ(r.heard[2].offset, 2);
    EXPECT_EQ(r.heard[3].value, 1.0 / 8192.0);
}

TEST(MidiReceiver, ControlChangesCarryControllerAndShare) {
    Recorder r;
    r.midi.Add({2, kControl, 64, 127});
    r.midi.Add({3, kControl, 7, 1});
    r.RunBlock(8);
    ASSERT_EQ(r.heard.size(), 2U);
    EXPECT_EQ(r.heard[0].a, 64);
    EXPECT_EQ(r.heard[0].value, 1.0);
    EXPECT_EQ(r.heard[0].offset, 2);
    EXPECT_EQ(r.heard[1].value, 1.0 / 127.0);
}

TEST(MidiReceiver, BendsControllersAndPressureLeaveTheKeysAlone) {
    Recorder r;
    r.midi.Add({0, kOn, 60, 100});
    for (const int kind : {0xA0, 0xB0, 0xC0, 0xD0, 0xE0, 0xF0, 0x00, 0x70})
        r.midi.Add({1, static_cast<std::uint8_t>(kind), 60, 0});
    r.RunBlock(8);
    EXPECT_EQ(r.midi.KeysHeld(), 1);
    ASSERT_EQ(r.heard.size(), 3U) << "the note, the controller and the bend";
}

TEST(MidiReceiver, NotesAbove127HaveNoEffect) {
    Recorder r;
    for (const int note : {128, 200, 255}) {
        r.midi.Add({0, kOn, static_cast<std::uint8_t>(note), 100});
        r.midi.Add({0, kOff, static_cast<std::uint8_t>(note), 100});
    }
    r.RunBlock(8);
    EXPECT_TRUE(r.heard.empty());
    EXPECT_EQ(r.midi.KeysHeld(), 0);
    EXPECT_FALSE(r.midi.IsKeyDown(128));
    EXPECT_FALSE(r.midi.IsKeyDown(-1));
}

TEST(MidiReceiver, NegativeOffsetsAreDueAtOnce) {
    Recorder r;
    r.midi.Add({-5, kOn, 60, 100});
    r.midi.Add({std::numeric_limits<std::int32_t>::min(), kOn, 61, 100});
    r.RunBlock(0);
    EXPECT_EQ(r.midi.Waiting(), 2);
    r.RunBlock(8);
    ASSERT_EQ(r.heard.size(), 2U);
    EXPECT_EQ(r.heard[0].a, 61);
    EXPECT_EQ(r.heard[1].at, 0);
    EXPECT_EQ(r.heard[1].offset, -5);
}

TEST(MidiReceiver, OffsetsNeverWrapAroundWhileTheyWait) {
    Recorder r;
    r.midi.Add({std::numeric_limits<std::int32_t>::min(), kControl, 1, 0});
    r.midi.Flush(1000); // a block that never advanced
    r.midi.Add({-2, kControl, 2, 0});
    r.RunBlock(1);
    ASSERT_EQ(r.heard.size(), 2U);
    EXPECT_EQ(r.heard[0].a, 1);
}

TEST(MidiReceiver, BeforeTheFirstSizeEveryMessageIsDropped) {
    Recorder r(0);
    EXPECT_EQ(r.midi.Capacity(), 0);
    r.midi.Add({0, kOn, 60, 100});
    EXPECT_EQ(r.midi.Waiting(), 0);
    r.RunBlock(8);
    EXPECT_TRUE(r.heard.empty());
}

TEST(MidiReceiver, TheQueueComesInPagesOf512Messages) {
    const std::vector<std::pair<int, int>> expected{{1, 512}, {512, 512}, {513, 1024}, {1024, 1024}};
    for (const auto& [blockSize, capacity] : expected) {
        Recorder r(blockSize);
        EXPECT_EQ(r.midi.Capacity(), capacity) << blockSize;
    }
}

TEST(MidiReceiver, AFullQueueGrowsByItsOwnSize) {
    Recorder r(512);
    for (int i = 0; i < 513; ++i)
        r.midi.Add({i, kControl, 1, 0});
    EXPECT_EQ(r.midi.Waiting(), 513);
    EXPECT_EQ(r.midi.Capacity(), 1024);
    for (int i = 0; i < 512; ++i)
        r.midi.Add({i, kControl, 1, 0});
    EXPECT_EQ(r.midi.Capacity(), 1536);
    EXPECT_EQ(r.midi.Waiting(), 1025);
}

TEST(MidiReceiver, AFullQueueWithSentMessagesIsMovedToTheFrontInstead) {
    Recorder r(512);
    for (int i = 0; i < 512; ++i)
        r.midi.Add({i / 256, kControl, 1, 0});
    r.midi.Advance();
    ASSERT_EQ(r.midi.Waiting(), 256);
    for (int i = 0; i < 256; ++i)
        r.midi.Add({1, kControl, 2, 0});
    EXPECT_EQ(r.midi.Capacity(), 512);
    EXPECT_EQ(r.midi.Waiting(), 512);
    r.midi.Advance();
    EXPECT_EQ(r.heard.size(), 768U);
    EXPECT_EQ(r.heard.back().a, 2);
}

TEST(MidiReceiver, ResizingKeepsMessagesAndKeysAndHoldsThemAll) {
    Recorder r(1024);
    r.midi.Add({0, kOn, 60, 100});
    for (int i = 0; i < 700; ++i)
        r.midi.Add({8 + i, kControl, 1, 0});
    r.midi.Advance();
    r.midi.Resize(64);
    EXPECT_EQ(r.midi.Waiting(), 700);
    EXPECT_EQ(r.midi.Capacity(), 1024) << "700 messages need two pages";
    EXPECT_TRUE(r.midi.IsKeyDown(60));
    r.midi.Flush(1);
    r.RunBlock(800);
    EXPECT_EQ(r.heard.size(), 701U);
    r.midi.Resize(64);
    EXPECT_EQ(r.midi.Capacity(), 512);
}

/// A slot that answers every controller with another message.
struct Echo {
    MidiReceiver* midi;
    int left;

    void Answer(int offset, int, double) {
        if (left-- > 0) midi->Add({offset, kControl, 99, 0});
    }
};

TEST(MidiReceiver, ASlotMayAddMessages) {
    Recorder r(512);
    Echo echo{&r.midi, 20};
    r.midi.controlChange.Connect<&Echo::Answer>(&echo);
    for (int i = 0; i < 512; ++i)
        r.midi.Add({0, kControl, 1, 0});
    r.RunBlock(4);
    EXPECT_EQ(r.heard.size(), 532U);
}

TEST(MidiReceiver, AStormComesOutAsASortedListWould) {
    std::mt19937 random(7);
    Recorder r(64);
    struct Sent {
        long when;
        int id;
    };
    std::vector<Sent> sent;
    std::vector<Sent> got;
    long now = 0;
    int id = 0;
    for (int block = 0; block < 400; ++block) {
        const int count = static_cast<int>(random() % 40);
        for (int i = 0; i < count; ++i) {
            const int offset = static_cast<int>(random() % 300);
            r.midi.Add({offset, kControl, static_cast<std::uint8_t>(id % 128),
                        static_cast<std::uint8_t>(id / 128 % 128)});
            sent.push_back({now + offset, id % 16384});
            ++id;
        }
        const int frames = static_cast<int>(random() % 100);
        r.heard.clear();
        r.RunBlock(frames);
        for (const auto& h : r.heard)
            got.push_back({now + h.at, h.a + 128 * static_cast<int>(std::lround(h.value * 127.0))});
        now += frames;
    }
    std::stable_sort(sent.begin(), sent.end(), [](const Sent& a, const Sent& b) { return a.when < b.when; });
    ASSERT_LE(got.size(), sent.size());
    ASSERT_EQ(got.size() + static_cast<std::size_t>(r.midi.Waiting()), sent.size());
    for (std::size_t i = 0; i < got.size(); ++i) {
        ASSERT_EQ(got[i].when, sent[i].when) << i;
        ASSERT_EQ(got[i].id, sent[i].id) << i;
    }
}

} // namespace
} // namespace Grimworks
