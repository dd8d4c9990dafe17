#include "editor/thudforge/EditorCaptions.h"
#include "editor/thudforge/EditorPictures.h"
#include "editor/thudforge/IGwCurve2.h"
#include "editor/thudforge/IGwLevelDisplays.h"
#include "editor/thudforge/IGwWaveDrawer.h"
#include "tests/editor/thudforge/DisplayRig.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <thread>

namespace Grimworks {

namespace {

/// The instrument's audio on a thread of its own, under the lock as a host's process call has it.
class AudioThread {
public:
    explicit AudioThread(DisplayRig& playing) : rig(playing), thread([this] { Run(); }) {}
    ~AudioThread() {
        stop = true;
        thread.join();
    }
    AudioThread(const AudioThread&) = delete;
    AudioThread& operator=(const AudioThread&) = delete;

private:
    void Run() {
        for (std::uint8_t note = 36; !stop; note = note < 60 ? note + 1 : 36) {
            const PlugLockGuard guard(rig.plug.Lock());
            rig.NoteOn(note);
            rig.Play(1);
        }
    }

    DisplayRig& rig;
    std::atomic<bool> stop{false};
    std::thread thread;
};

} // namespace

TEST(DisplaysThread, TheScopeIsDrawnWhileTheAudioFeedsIt) {
    DisplayRig rig;
    auto& drawer = rig.graphics.Attach<IGwWaveDrawer>(&rig.plug, IRECT(109, 110, 1109, 430));
    rig.graphics.Attach<IGwMaxLevelText>(&rig.plug, IRECT(10, 10, 400, 26), IText());
    rig.graphics.Attach<IGwHostInfoText>(&rig.plug, IRECT(10, 30, 400, 46), IText());
    rig.graphics.Attach<IGwVuEyeDrawer>(&rig.plug, IRECT(10, 60, 66, 100), true);
    rig.plug.OnActivate(true);
    rig.plug.SelectScopePage();
    {
        const AudioThread audio(rig);
        for (int tick = 0; tick < 60; ++tick) {
            rig.graphics.RunTick();
            drawer.NextFillMode();
            if (tick % 10 == 5) rig.plug.SetScopeFrozen(tick % 20 == 5);
            if (tick % 20 == 10) rig.plug.SelectAboutPage();
            if (tick % 20 == 15) rig.plug.SelectScopePage();
        }
    }
    const std::uint32_t before = rig.plug.Scope().WritePos();
    rig.plug.SetScopeFrozen(false);
    rig.plug.SelectScopePage();
    rig.Play(1);
    EXPECT_GT(rig.plug.Scope().WritePos(), before);
}

TEST(DisplaysThread, CurvesCaptionsAndPicturesFollowWhileTheAudioRuns) {
    DisplayRig rig;
    rig.graphics.Attach<IGwCurve2>(&rig.plug, IRECT(837, 391, 965, 519), 128, 0, true);
    EditorCaptions captions(rig.plug);
    EditorPictures pictures(rig.plug);
    rig.plug.OnActivate(true);
    {
        const AudioThread audio(rig);
        for (int tick = 0; tick < 150; ++tick) {
            const int x = 837 + tick * 5 % 128;
            rig.graphics.OnMouseDown(x, 391 + tick * 7 % 128, kLeftDown);
            rig.graphics.OnMouseDrag(x + 6, 391 + tick * 11 % 128, 6, 0, kLeftDown);
            rig.graphics.OnMouseUp(x + 6, 400, kLeftDown);
            rig.Set(tick % kLiveParameters, tick % 9 / 8.0);
            rig.plug.changedParameters.Take([&](int id) {
                captions.Changed(id);
                pictures.Changed(id);
            });
            captions.Update();
            pictures.Update();
            rig.plug.RefreshCurveDisplay();
            rig.graphics.RunTick();
        }
        rig.graphics.OnMouseDown(837 + 64, 391 + 96, kLeftDown);
    }
    rig.Play(1);
    EXPECT_EQ(rig.plug.AudioStage().GetDistortion().Points()[256], -0.5);
}

} // namespace Grimworks
