#include "core/Limits.h"
#include "core/ParameterIds.h"
#include "core/RandomGenerator.h"
#include "editor/thudforge/Layout.h"
#include "plugin/ThudForge.h"
#include "tests/editor/x11/HostWindow.h"
#include "tests/editor/x11/StandInPrograms.h"
#include "tests/editor/x11/XServer.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace Grimworks {
namespace {

constexpr int kFrames = 64;
/// Where the curve is drawn.
constexpr int kCurveLeft = 837;
constexpr int kCurveTop = 391;
constexpr int kCurveSize = 128;

/// Plays blocks in a thread of its own, as a host does, and watches the level.
class Player {
public:
    explicit Player(ThudForge& instrument) : plug(instrument), thread([this] { Run(); }) {}
    ~Player() {
        stopping = true;
        thread.join();
    }
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    [[nodiscard]] bool AllFinite() const { return finite; }
    [[nodiscard]] int Blocks() const { return blocks; }

    /// Highest level of the blocks from now on, once `count` of them were played.
    [[nodiscard]] double PeakOfNext(int count) {
        restart = true;
        const int until = blocks + count;
        if (!Eventually([&] { return blocks >= until && !restart; })) return -1.0;
        return peak;
    }

private:
    void Run() {
        std::array<double, kFrames> left{};
        std::array<double, kFrames> right{};
        std::array<double*, 2> outputs{left.data(), right.data()};
        AEffect* const effect = plug.Effect();
        while (!stopping) {
            if (blocks % 64 == 0) plug.ProcessMidiMsg({0, 0x90, 40, 100});
            if (blocks % 64 == 50) plug.ProcessMidiMsg({0, 0x80, 40, 0});
            effect->processDoubleReplacing(effect, nullptr, outputs.data(), kFrames);
            double highest = restart.exchange(false) ? 0.0 : peak.load();
            for (const double sample : left) {
                finite = finite && std::isfinite(sample);
                highest = std::max(highest, std::fabs(sample));
            }
            peak = highest;
            ++blocks;
            std::this_thread::yield();
        }
    }

    ThudForge& plug;
    std::atomic<bool> stopping{false};
    std::atomic<bool> finite{true};
    std::atomic<bool> restart{false};
    std::atomic<double> peak{0.0};
    std::atomic<int> blocks{0};
    std::thread thread;
};

/// The whole instrument with its editor open in a host's window, under a user's mouse and keyboard.
class InstrumentWindow : public ::testing::Test {
protected:
    static constexpr int kLeft = 100;
    static constexpr int kTop = 80;

    void SetUp() override {
        ASSERT_TRUE(server.Runs());
        ASSERT_TRUE(host.Works());
        ASSERT_FALSE(programs.Folder().empty());
        Dispatch(PlugOp::Open);
        Dispatch(PlugOp::SetSampleRate, 0, nullptr, 44100.0F);
        Dispatch(PlugOp::SetBlockSize, kFrames);
        ASSERT_EQ(Dispatch(PlugOp::EditOpen, 0, host.Parent()), 1);
    }
    void TearDown() override { Dispatch(PlugOp::EditClose); }

    std::intptr_t Dispatch(std::int32_t opcode, std::intptr_t value = 0, void* ptr = nullptr,
                           float opt = 0.0F) {
        return plug.Effect()->dispatcher(plug.Effect(), opcode, 0, value, ptr, opt);
    }

    void SwitchOn() { Dispatch(PlugOp::MainsChanged, 1); }

    static void Then(std::vector<std::string>& words, const std::vector<std::string>& more) {
        words.insert(words.end(), more.begin(), more.end());
    }

    /// Draws a level line over the whole curve: v from -1 at the bottom to 1 at the top.
    [[nodiscard]] static bool DrawLevel(double v) {
        const int y = kTop + kCurveTop + static_cast<int>(std::lround((0.5 - v / 2.0) * kCurveSize));
        const int x = kLeft + kCurveLeft;
        std::vector<std::string> words = MoveTo(x, y);
        Then(words, {"mousedown", "1"});
        for (int step = 1; step < kCurveSize; ++step)
            Then(words, MoveTo(x + step, y));
        Then(words, {"mouseup", "1"});
        return User(words);
    }

    [[nodiscard]] double Heard(int point) {
        const PlugLockGuard guard(plug.Lock());
        return plug.AudioStage().GetDistortion().Points().at(static_cast<std::size_t>(point));
    }

    [[nodiscard]] bool AllHeardAre(double v) {
        for (int point = 0; point < 500; ++point) {
            if (std::fabs(Heard(point) - v) > 1e-12) return false;
        }
        return true;
    }

    /// Draws until the line is whole: a quick stroke may leave gaps behind it.
    [[nodiscard]] bool DrawUntilHeard(double v) {
        return Eventually([&] {
            if (!DrawLevel(v)) return false;
            for (int patience = 0; patience < 20 && !AllHeardAre(v); ++patience)
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
            return AllHeardAre(v);
        });
    }

    XServer server;
    StandInPrograms programs;
    HostWindow host{kLeft, kTop, kEditorWidth, kEditorHeight};
    ThudForge plug{nullptr};
};

TEST_F(InstrumentWindow, ALevelLineOverTheCurveIsWhatTheSoundGoesThroughWhileNothingPlays) {
    EXPECT_TRUE(DrawUntilHeard(0.5));
    EXPECT_TRUE(DrawUntilHeard(0.0));
}

TEST_F(InstrumentWindow, ALevelLineAtZeroLeavesTheHalfThatGoesAroundTheCurve) {
    SwitchOn();
    Player player(plug);
    const double dry = player.PeakOfNext(500);
    EXPECT_GT(dry, 0.05);
    // At its highest the amount mixes the curve's half with a half that goes around it.
    plug.SetParameterFromHost(Param::Distortion, 1.0);
    EXPECT_TRUE(Eventually([&] { return player.PeakOfNext(500) > dry * 1.1; })) << "a straight line drives";
    ASSERT_TRUE(DrawUntilHeard(0.0));
    EXPECT_TRUE(Eventually([&] { return std::fabs(player.PeakOfNext(500) / dry - 0.5) < 0.02; }));
    EXPECT_TRUE(player.AllFinite());
}

/// Somebody who does anything anywhere, with the words of xdotool.
class RestlessUser {
public:
    RestlessUser(int windowLeft, int windowTop) : random(1312), left(windowLeft), top(windowTop) {}

    /// Some gestures as one run of the program.
    std::vector<std::string> Gestures(int count) {
        std::vector<std::string> words;
        for (int i = 0; i < count; ++i)
            Add(words);
        for (const char* button : {"1", "2", "3"})
            Then(words, {"mouseup", button});
        // Out of menus and dialogs.
        Then(words, {"key", "--delay", "0", "Escape", "Escape"});
        return words;
    }

private:
    int Number(int limit) { return random.Next() % limit; }

    static void Then(std::vector<std::string>& words, const std::vector<std::string>& more) {
        words.insert(words.end(), more.begin(), more.end());
    }

    void Add(std::vector<std::string>& words) {
        Then(words, MoveTo(left + Number(kEditorWidth), top + Number(kEditorHeight)));
        const std::string button = Number(4) == 0 ? "3" : "1";
        switch (Number(8)) {
        case 0:
            Then(words, {"mousedown", button, "mouseup", button, "mousedown", button, "mouseup", button});
            break;
        case 1: {
            const std::string wheel = Number(2) == 0 ? "4" : "5";
            Then(words, {"mousedown", wheel, "mouseup", wheel});
            break;
        }
        case 2:
            Then(words, {"key", "--delay", "0", kKeys.at(static_cast<std::size_t>(Number(kKeyCount)))});
            break;
        default:
            Then(words, {"mousedown", button});
            for (int moves = Number(5); moves > 0; --moves)
                Then(words, MoveTo(left + Number(kEditorWidth), top + Number(kEditorHeight)));
            Then(words, {"mouseup", button});
        }
    }

    static constexpr int kKeyCount = 8;
    static constexpr std::array<const char*, kKeyCount> kKeys{"Escape", "Return", "Down", "Up",
                                                              "Right",  "5",      "Tab",  "a"};
    RandomGenerator random;
    int left;
    int top;
};

TEST_F(InstrumentWindow, TenThousandGesturesLeaveASoundInstrumentWhileItPlays) {
    constexpr int kGestures = 10000;
    constexpr int kAtOnce = 250;
    SwitchOn();
    {
        Player player(plug);
        RestlessUser user(kLeft, kTop);
        for (int done = 0; done < kGestures; done += kAtOnce)
            ASSERT_TRUE(User(user.Gestures(kAtOnce)));
        EXPECT_TRUE(player.AllFinite());
        EXPECT_GT(player.Blocks(), 0);
    }
    for (int id = 0; id < kLiveParameters; ++id) {
        const double value = plug.GetParameterNormalized(id);
        EXPECT_TRUE(value >= 0.0 && value <= 1.0) << id << ": " << value;
    }
    // It still listens: what is drawn now arrives.
    Dispatch(PlugOp::EditClose);
    plug.SelectPage(0);
    ASSERT_EQ(Dispatch(PlugOp::EditOpen, 0, host.Parent()), 1);
    Dispatch(PlugOp::MainsChanged, 0);
    EXPECT_TRUE(DrawUntilHeard(0.25));
}

} // namespace
} // namespace Grimworks
