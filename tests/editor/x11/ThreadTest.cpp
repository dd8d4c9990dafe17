#include "core/Limits.h"
#include "editor/IPopupMenu.h"
#include "editor/x11/X11Gate.h"
#include "editor/x11/X11Jobs.h"
#include "tests/editor/x11/EditorWindow.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

namespace Grimworks {

TEST_F(EditorWindow, ThreadAutomationOfAllParametersWhileTheWindowDraws) {
    for (int id = 0; id < kParameters; ++id) {
        graphics->AttachControl(std::make_unique<RecordingControl>(&plug, IRECT(id * 2, 250, id * 2 + 2, 260),
                                                                   record, IColor(255, id, 90, 90), id));
    }
    ASSERT_TRUE(Open());
    std::atomic<bool> enough{false};
    std::thread audio([this, &enough] {
        for (int round = 0; !enough; ++round) {
            for (int id = 0; id < kParameters; ++id) {
                const PlugLockGuard guard(plug.Lock());
                graphics->SetParameterFromPlug(id, ((round + id) % 101) / 100.0, true);
            }
        }
    });
    EXPECT_TRUE(PointAt(150, 150));
    EXPECT_TRUE(User({"mousedown", "1"}));
    EXPECT_TRUE(User(At(160, 160)));
    EXPECT_TRUE(User({"mouseup", "1"}));
    EXPECT_TRUE(Eventually([&] { return record.CountOf("from plug") >= 5 * kParameters; }));
    EXPECT_TRUE(Ticks(10));
    enough = true;
    audio.join();
    // What was sent last is what stands in the end.
    {
        const PlugLockGuard guard(plug.Lock());
        for (int id = 0; id < kParameters; ++id)
            graphics->SetParameterFromPlug(id, 0.25, true);
    }
    EXPECT_TRUE(Ticks(3));
    graphics->CloseWindow();
    for (int i = 2; i < graphics->ControlCount(); ++i)
        EXPECT_EQ(graphics->GetControl(i)->Value(), 0.25) << i;
}

TEST_F(EditorWindow, ThreadOpeningAndClosingFromTwoThreadsAtOnce) {
    Record otherRecord;
    auto other = MakeGraphics(plug, kWidth, kHeight);
    other->AttachControl(
        std::make_unique<RecordingControl>(&plug, IRECT(0, 0, kWidth, kHeight), otherRecord));
    const HostWindow otherHost(800, 600, kWidth, kHeight);
    const auto openAndClose = [](IGraphics& editor, void* parent) {
        int opened = 0;
        for (int i = 0; i < 15; ++i) {
            opened += editor.OpenWindow(parent) ? 1 : 0;
            editor.CloseWindow();
        }
        return opened;
    };
    int first = 0;
    std::thread one([&] { first = openAndClose(*graphics, host.Parent()); });
    const int second = openAndClose(*other, otherHost.Parent());
    one.join();
    EXPECT_EQ(first, 15);
    EXPECT_EQ(second, 15);
}

TEST_F(EditorWindow, ThreadMenuOpenWhileTheHostCloses) {
    IPopupMenu menu;
    menu.AddItem("Row");
    control->onDown = [&](RecordingControl&) {
        graphics->CreateIPopupMenu(menu, control->Rect());
        record.Add("ended");
    };
    for (int i = 0; i < 3; ++i) {
        record.Clear();
        ASSERT_TRUE(Open());
        ASSERT_TRUE(PointAt(150, 150));
        ASSERT_TRUE(User({"click", "1"}));
        ASSERT_TRUE(Eventually([&] { return host.Popups().size() == 1; }));
        graphics->CloseWindow();
        EXPECT_TRUE(record.Has("ended"));
    }
}

TEST(X11JobsThread, WorkIsDoneOnTheThreadThatRunsItAndCallersWait) {
    X11Jobs jobs;
    std::thread::id ranOn;
    std::thread runner([&] {
        while (!jobs.Stopped()) {
            jobs.RunAll();
            std::this_thread::yield();
        }
    });
    const auto runnerId = runner.get_id();
    EXPECT_TRUE(jobs.Call(
        [&] {
            ranOn = std::this_thread::get_id();
            return true;
        },
        std::chrono::minutes(1)));
    EXPECT_EQ(ranOn, runnerId);
    int asked = 0;
    EXPECT_TRUE(jobs.Call([&] { return ++asked == 4; }, std::chrono::minutes(1)));
    EXPECT_EQ(asked, 4);
    jobs.Stop();
    runner.join();
}

TEST(X11JobsThread, WorkThatNobodyTakesIsDropped) {
    X11Jobs jobs;
    bool ran = false;
    EXPECT_FALSE(jobs.Call(
        [&] {
            ran = true;
            return true;
        },
        std::chrono::milliseconds(10)));
    jobs.RunAll();
    EXPECT_FALSE(ran);
}

TEST(X11JobsThread, WorkThatWasPutOffGoesOnAfterItsCallerGaveUp) {
    X11Jobs jobs;
    const auto free = std::make_shared<std::atomic<bool>>(false);
    const auto done = std::make_shared<std::atomic<bool>>(false);
    std::atomic<bool> gaveUp{false};
    std::thread caller([&] {
        EXPECT_FALSE(jobs.Call([free, done] { return free->load() && (*done = true); },
                               std::chrono::milliseconds(300)));
        gaveUp = true;
    });
    while (!gaveUp)
        jobs.RunAll();
    caller.join();
    EXPECT_FALSE(*done);
    *free = true;
    jobs.RunAll();
    EXPECT_TRUE(*done);
}

TEST(X11Jobs, AJobThatRunsIsNotRunAgainFromWithin) {
    X11Jobs jobs;
    int outer = 0;
    int inner = 0;
    jobs.Post([&] {
        ++outer;
        jobs.Post([&] {
            ++inner;
            return true;
        });
        jobs.RunAll();
        return true;
    });
    jobs.RunAll();
    jobs.RunAll();
    EXPECT_EQ(outer, 1);
    EXPECT_EQ(inner, 1);
}

TEST(X11GateThread, ShutLetsThoseInsideFinishAndNobodyElseIn) {
    X11Gate gate;
    std::atomic<bool> inside{false};
    std::atomic<bool> leave{false};
    bool nested = false;
    std::thread visitor([&] {
        const X11Gate::Visit visit(gate);
        inside = true;
        while (!leave)
            std::this_thread::yield();
        const X11Gate::Visit again(gate);
        nested = static_cast<bool>(again);
    });
    while (!inside)
        std::this_thread::yield();
    EXPECT_FALSE(gate.Shut(std::chrono::milliseconds(10)));
    leave = true;
    EXPECT_TRUE(gate.Shut(std::chrono::minutes(1)));
    visitor.join();
    EXPECT_TRUE(nested);
    const X11Gate::Visit late(gate);
    EXPECT_FALSE(static_cast<bool>(late));
    EXPECT_EQ(gate.Inside(), 0);
}

} // namespace Grimworks
