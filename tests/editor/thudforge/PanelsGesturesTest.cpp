#include "core/Limits.h"
#include "core/RandomGenerator.h"
#include "tests/editor/thudforge/EditorRig.h"
#include "tests/support/SlowBuild.h"

#include <array>
#include <atomic>
#include <cmath>
#include <cstdlib>
#include <string>
#include <thread>

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

/// A sanitizer makes every block some twenty times as long.
constexpr int kGestures = kSlowBuild ? 1000 : 10000;

/// Plays blocks in a thread of its own, as a host does, until it is stopped.
class AudioThread {
public:
    explicit AudioThread(ThudForge& instrument) : plug(instrument), thread([this] { Run(); }) {}
    ~AudioThread() { Stop(); }
    AudioThread(const AudioThread&) = delete;
    AudioThread& operator=(const AudioThread&) = delete;

    void Stop() {
        stopping = true;
        if (thread.joinable()) thread.join();
    }

    [[nodiscard]] int Blocks() const { return blocks; }
    [[nodiscard]] bool AllFinite() const { return finite; }

private:
    static constexpr int kFrames = 64;

    void Run() {
        std::array<double, kFrames> left{};
        std::array<double, kFrames> right{};
        std::array<double*, 2> outputs{left.data(), right.data()};
        while (!stopping) {
            {
                const PlugLockGuard guard(plug.Lock());
                if (blocks % 32 == 0) plug.ProcessMidiMsg({0, 0x90, 40, 100});
                if (blocks % 32 == 20) plug.ProcessMidiMsg({0, 0x80, 40, 0});
                plug.ProcessDoubleReplacing(nullptr, outputs.data(), kFrames);
            }
            for (const double sample : left)
                finite = finite && std::isfinite(sample);
            // A host automates as it plays.
            plug.SetParameterFromHost(blocks * 7 % kLiveParameters, blocks % 11 / 10.0);
            ++blocks;
            std::this_thread::yield();
        }
    }

    ThudForge& plug;
    std::atomic<bool> stopping{false};
    std::atomic<bool> finite{true};
    std::atomic<int> blocks{0};
    std::thread thread;
};

/// Somebody who does anything anywhere.
class RestlessUser {
public:
    explicit RestlessUser(EditorRig& editorRig) : rig(editorRig), random(4711) {
        rig.graphics.onMenu = [this](IPopupMenu& menu) { return Choose(menu); };
        rig.graphics.onFile = [](std::string& file, std::string&, int, const std::string&) { file.clear(); };
    }

    void Act() {
        const int x = Number(kEditorWidth + 40) - 20;
        const int y = Number(kEditorHeight + 40) - 20;
        const IMouseMod mod = AnyButtons();
        switch (Number(8)) {
        case 0:
            rig.graphics.OnMouseDblClick(x, y, mod);
            break;
        case 1:
            rig.graphics.OnMouseWheel(x, y, mod, Number(9) - 4);
            break;
        case 2:
            rig.graphics.OnMouseOver(x, y, mod);
            break;
        case 3:
            rig.graphics.OnKeyDown(x, y, Number(60));
            break;
        case 4:
            rig.graphics.OnMouseUp(x, y, mod);
            break;
        default:
            Stroke(x, y, mod);
        }
        AnswerEntries();
    }

private:
    /// 0 to below a limit.
    int Number(int limit) { return random.Next() % limit; }

    IMouseMod AnyButtons() {
        const int bits = Number(16);
        const bool right = Number(4) == 0;
        return IMouseMod(!right, right, (bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0);
    }

    void Stroke(int x, int y, const IMouseMod& mod) {
        rig.graphics.OnMouseDown(x, y, mod);
        for (int moves = Number(5); moves > 0; --moves) {
            const int dX = Number(81) - 40;
            const int dY = Number(81) - 40;
            x += dX;
            y += dY;
            rig.graphics.OnMouseDrag(x, y, dX, dY, mod);
        }
        if (Number(10) != 0) rig.graphics.OnMouseUp(x, y, mod);
    }

    IPopupMenu* Choose(IPopupMenu& menu) {
        if (menu.ItemCount() == 0 || Number(4) == 0) return nullptr;
        const int row = Number(menu.ItemCount());
        if (IPopupMenu* submenu = menu.Submenu(row)) return Choose(*submenu);
        if (!menu.Item(row)->CanBeChosen()) return nullptr;
        menu.SetChosenItem(row);
        return &menu;
    }

    void AnswerEntries() {
        static const std::array<const char*, 8> kTexts{
            "", "0.5", "-1", "1e400", "nan", "abc", "##", "a name with more than thirty-one letters"};
        for (const HeadlessGraphics::Entry& entry : rig.graphics.entries) {
            const auto text = static_cast<std::size_t>(Number(static_cast<int>(kTexts.size())));
            IGraphics::CommitTextEntry(*entry.control, entry.param, kTexts.at(text));
        }
        rig.graphics.entries.clear();
    }

    EditorRig& rig;
    RandomGenerator random;
};

/// Every control shows what its parameter is, once the last news has reached it.
void ExpectAgreement(EditorRig& rig) {
    rig.graphics.OnMouseUp(0, 0, {});
    rig.graphics.Tick();
    for (int i = 0; i < rig.graphics.ControlCount(); ++i) {
        const IControl& control = *rig.graphics.GetControl(i);
        if (control.ParamIdx() < 0) continue;
        EXPECT_NEAR(control.Value(), rig.plug.GetParameterNormalized(control.ParamIdx()), 1e-12)
            << "control " << i << " of parameter " << control.ParamIdx();
    }
}

void ExpectSoundState(EditorRig& rig) {
    for (int id = 0; id < kLiveParameters; ++id) {
        const double value = rig.plug.GetParameterNormalized(id);
        EXPECT_TRUE(std::isfinite(value)) << id;
        EXPECT_GE(value, 0.0) << id;
        EXPECT_LE(value, 1.0) << id;
    }
    EXPECT_GE(rig.plug.CurrentPreset(), 0);
    EXPECT_LT(rig.plug.CurrentPreset(), rig.plug.PresetCount());
    for (int i = 0; i < rig.graphics.ControlCount(); ++i) {
        const double value = rig.graphics.GetControl(i)->Value();
        EXPECT_TRUE(value >= 0.0 && value <= 1.0) << "control " << i << ": " << value;
    }
}

void Rage(EditorRig& rig) {
    RestlessUser user(rig);
    for (int i = 0; i < kGestures; ++i) {
        user.Act();
        if (i % 4 == 0) rig.graphics.RunTick();
    }
}

TEST(PanelsGestures, ThousandsOfThemLeaveASoundStateWhileNothingPlays) {
    EditorRig rig;
    Rage(rig);
    ExpectSoundState(rig);
    ExpectAgreement(rig);
    EXPECT_FALSE(rig.graphics.shown.empty());
}

TEST(PanelsGestures, ThousandsOfThemLeaveASoundStateWhileAnAudioThreadPlays) {
    EditorRig rig;
    rig.plug.Reset();
    rig.plug.OnActivate(true);
    AudioThread audio(rig.plug);
    Rage(rig);
    audio.Stop();
    EXPECT_GT(audio.Blocks(), 0);
    EXPECT_TRUE(audio.AllFinite());
    ExpectSoundState(rig);
    ExpectAgreement(rig);
}

} // namespace
} // namespace Grimworks
