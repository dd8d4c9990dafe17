#include "editor/IPopupMenu.h"
#include "editor/LICE_Draw.h"
#include "tests/editor/x11/EditorWindow.h"
#include "tests/editor/x11/ProcessEntries.h"

#include <atomic>
#include <chrono>
#include <thread>

namespace Grimworks {

namespace {

/// Whether both show the same; alpha does not show.
[[nodiscard]] bool SamePixels(LICE_IBitmap& a, LICE_IBitmap& b) {
    if (a.getWidth() != b.getWidth() || a.getHeight() != b.getHeight() || a.getBits() == nullptr)
        return false;
    for (int y = 0; y < a.getHeight(); ++y) {
        for (int x = 0; x < a.getWidth(); ++x)
            if (((LICE_GetPixel(&a, x, y) ^ LICE_GetPixel(&b, x, y)) & 0xFFFFFFU) != 0) return false;
    }
    return true;
}

} // namespace

TEST_F(EditorWindow, WithoutADisplayOpeningFails) {
    server.Kill();
    EXPECT_FALSE(Open());
    EXPECT_FALSE(graphics->WindowIsOpen());
    unsetenv("DISPLAY");
    EXPECT_FALSE(Open());
    graphics->CloseWindow();
}

TEST_F(EditorWindow, InAWindowThatDoesNotExistOpeningFails) {
    EXPECT_FALSE(graphics->OpenWindow(nullptr));
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the interface carries the window's number as a pointer
    EXPECT_FALSE(graphics->OpenWindow(reinterpret_cast<void*>(std::uintptr_t{0x7777777})));
    EXPECT_FALSE(graphics->WindowIsOpen());
    EXPECT_TRUE(Open());
}

TEST_F(EditorWindow, OpeningInAnotherWindowClosesTheFirst) {
    HostWindow other(800, 600, kWidth, kHeight);
    ASSERT_TRUE(Open());
    ASSERT_TRUE(graphics->OpenWindow(other.Parent()));
    EXPECT_TRUE(Eventually([&] { return host.Editors().empty(); }));
    EXPECT_EQ(other.Editors().size(), 1U);
    graphics->CloseWindow();
}

TEST_F(EditorWindow, CanBeClosedTwiceAndDestroyedOpen) {
    graphics->CloseWindow();
    ASSERT_TRUE(Open());
    graphics->CloseWindow();
    graphics->CloseWindow();
    ASSERT_TRUE(Open());
    graphics.reset();
    EXPECT_TRUE(Eventually([&] { return host.Editors().empty(); }));
}

TEST_F(EditorWindow, TwoInstancesShareAThreadAndTheSecondGoesOnAloneWhenTheFirstCloses) {
    Record otherRecord;
    auto other = MakeGraphics(plug, kWidth, kHeight);
    other->AttachControl(
        std::make_unique<RecordingControl>(&plug, IRECT(0, 0, kWidth, kHeight), otherRecord));
    HostWindow otherHost(800, 600, kWidth, kHeight);
    ASSERT_TRUE(Open());
    const auto threads = CountEntries("/proc/self/task");
    ASSERT_TRUE(other->OpenWindow(otherHost.Parent()));
    EXPECT_EQ(CountEntries("/proc/self/task"), threads);
    EXPECT_TRUE(Ticks(2));
    graphics->CloseWindow();
    otherRecord.Clear();
    EXPECT_TRUE(Eventually([&] { return otherRecord.CountOf("tick") >= 2; }));
    ASSERT_TRUE(User(MoveTo(900, 700)));
    EXPECT_TRUE(Eventually([&] { return otherRecord.Has("over 100,100"); }));
    ASSERT_TRUE(Open());
    other->CloseWindow();
    EXPECT_TRUE(Ticks(2));
    graphics->CloseWindow();
    EXPECT_EQ(CountEntries("/proc/self/task"), threads - 1);
}

TEST_F(EditorWindow, TheHostsWindowMayGoFirst) {
    ASSERT_TRUE(Open());
    host.Destroy();
    EXPECT_TRUE(Eventually([&] { return !graphics->WindowIsOpen(); }));
    graphics->CloseWindow();
    HostWindow next(0, 0, kWidth, kHeight);
    ASSERT_TRUE(graphics->OpenWindow(next.Parent()));
    EXPECT_TRUE(Ticks(2));
    graphics->CloseWindow();
}

TEST_F(EditorWindow, ADisplayThatGoesAwayEndsTheWindowAndAnotherOneTakesIt) {
    ASSERT_TRUE(Open());
    EXPECT_TRUE(Ticks(1));
    server.Kill();
    EXPECT_TRUE(Eventually([&] { return !graphics->WindowIsOpen(); }));
    graphics->CloseWindow();
    const XServer next;
    HostWindow nextHost(kLeft, kTop, kWidth, kHeight);
    ASSERT_TRUE(nextHost.Works());
    record.Clear();
    ASSERT_TRUE(graphics->OpenWindow(nextHost.Parent()));
    EXPECT_TRUE(Ticks(2));
    graphics->CloseWindow();
}

TEST_F(EditorWindow, WithTheDisplayGoneAnotherOneTakesTheWindowWithoutAClose) {
    ASSERT_TRUE(Open());
    server.Kill();
    const XServer next;
    HostWindow nextHost(kLeft, kTop, kWidth, kHeight);
    ASSERT_TRUE(graphics->OpenWindow(nextHost.Parent()));
    EXPECT_TRUE(Ticks(2));
    graphics->CloseWindow();
}

TEST_F(EditorWindow, ADisplayThatGoesAwayEndsAMenu) {
    IPopupMenu menu;
    menu.AddItem("Row");
    control->onDown = [&](RecordingControl&) {
        IPopupMenu* const chosen = graphics->CreateIPopupMenu(menu, control->Rect());
        record.Add(chosen == nullptr ? "nothing" : "something");
    };
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    ASSERT_TRUE(User({"click", "1"}));
    ASSERT_TRUE(Eventually([&] { return host.Popups().size() == 1; }));
    server.Kill();
    EXPECT_TRUE(Recorded("nothing"));
    graphics->CloseWindow();
}

TEST_F(EditorWindow, ClosingEndsAGestureThatIsUnderWay) {
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    ASSERT_TRUE(User({"mousedown", "1"}));
    EXPECT_TRUE(Recorded("down 150,150 L"));
    graphics->CloseWindow();
    EXPECT_TRUE(record.Has("up 150,150"));
    ASSERT_TRUE(User({"mouseup", "1"}));
}

TEST_F(EditorWindow, AHostsWindowThatGoesEndsAGestureThatIsUnderWay) {
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    ASSERT_TRUE(User({"mousedown", "1"}));
    EXPECT_TRUE(Recorded("down 150,150 L"));
    host.Destroy();
    EXPECT_TRUE(Recorded("up 150,150"));
    EXPECT_TRUE(Eventually([&] { return !graphics->WindowIsOpen(); }));
    EXPECT_EQ(graphics->MouseCapture(), -1);
    graphics->CloseWindow();
    ASSERT_TRUE(User({"mouseup", "1"}));
}

TEST_F(EditorWindow, ADisplayThatGoesAwayEndsAGestureThatIsUnderWay) {
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    ASSERT_TRUE(User({"mousedown", "1"}));
    EXPECT_TRUE(Recorded("down 150,150 L"));
    server.Kill();
    EXPECT_TRUE(Recorded("up 150,150"));
    EXPECT_TRUE(Eventually([&] { return !graphics->WindowIsOpen(); }));
    graphics->CloseWindow();
    EXPECT_EQ(graphics->MouseCapture(), -1);
}

TEST_F(EditorWindow, ClosingFromWithinAControlTakesTheWindowAway) {
    control->onDown = [this](RecordingControl&) {
        graphics->CloseWindow();
        record.Add("closed");
    };
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    ASSERT_TRUE(User({"click", "1"}));
    EXPECT_TRUE(Recorded("closed"));
    EXPECT_FALSE(graphics->WindowIsOpen());
    EXPECT_TRUE(Eventually([&] { return host.Editors().empty(); }));
    control->onDown = nullptr;
    ASSERT_TRUE(Open());
    EXPECT_TRUE(Ticks(1));
    graphics->CloseWindow();
}

TEST_F(EditorWindow, ACloseThatTheHostItselfHoldsUpGivesUpAndThePlugInMustStay) {
    std::atomic<bool> letGo{false};
    control->onDown = [&](RecordingControl&) {
        record.Add("stuck");
        while (!letGo)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    };
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    ASSERT_TRUE(User({"click", "1"}));
    ASSERT_TRUE(Recorded("stuck"));
    EXPECT_FALSE(graphics->PrepareToGo());
    letGo = true;
    EXPECT_TRUE(graphics->PrepareToGo());
    EXPECT_FALSE(graphics->WindowIsOpen());
}

TEST_F(EditorWindow, TellsHostsThatItCanBeEmbedded) {
    ASSERT_TRUE(Open());
    // The display may serve the host between two requests of the editor.
    EXPECT_TRUE(Eventually([&] {
        const std::vector<xcb_window_t> editors = host.Editors();
        return !editors.empty() &&
               host.Numbers(editors.front(), "_XEMBED_INFO") == std::vector<std::uint32_t>{0, 1};
    }));
}

TEST_F(EditorWindow, ShowsTheWholeBackBufferAlsoInParts) {
    // A picture in which no two pixels near each other are alike.
    control->Hide(true);
    ground->onDraw = [](IGraphics& drawn) {
        LICE_IBitmap& buffer = drawn.DrawBuffer();
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x)
                LICE_PutPixel(&buffer, x, y, LICE_RGBA(x * 7, y * 5, x ^ y, 255), 1.0F, LICE_Copy);
        }
    };
    ASSERT_TRUE(Open());
    EXPECT_TRUE(Ticks(2));
    // What covers the window and goes again makes parts of it show anew.
    {
        const HostWindow cover(kLeft + 37, kTop + 41, 111, 59);
        EXPECT_TRUE(Ticks(2));
    }
    LICE_MemBitmap seen;
    const bool same = Eventually([&] {
        host.Grab(host.Editors().front(), seen);
        return seen.getBits() != nullptr && LICE_GetPixel(&seen, 80, 60) != 0;
    });
    ASSERT_TRUE(same);
    graphics->CloseWindow();
    EXPECT_TRUE(SamePixels(seen, graphics->DrawBuffer()));
}

TEST_F(EditorWindow, AResizeChangesTheWindow) {
    control->onDown = [this](RecordingControl&) { graphics->Resize(320, 240); };
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    ASSERT_TRUE(User({"click", "1"}));
    EXPECT_TRUE(Eventually(
        [&] { return host.PlaceOf(host.Editors().front()) == IRECT(kLeft, kTop, kLeft + 320, kTop + 240); }));
    EXPECT_TRUE(Ticks(2));
    graphics->CloseWindow();
    EXPECT_EQ(graphics->Width(), 320);
}

TEST_F(EditorWindow, AParentThatKnowsTransparencyGetsOpaquePixels) {
    HostWindow clear(800, 600, kWidth, kHeight, 32);
    ASSERT_TRUE(graphics->OpenWindow(clear.Parent()));
    LICE_MemBitmap seen;
    EXPECT_TRUE(Eventually([&] {
        host.Grab(clear.Editors().front(), seen);
        return LICE_GetPixel(&seen, 150, 150) == 0xFF5A28A0U;
    }));
    graphics->CloseWindow();
}

} // namespace Grimworks
