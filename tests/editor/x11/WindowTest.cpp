#include "editor/LICE_Draw.h"
#include "tests/editor/x11/EditorWindow.h"
#include "tests/editor/x11/ProcessEntries.h"

namespace Grimworks {

TEST_F(EditorWindow, OpensInsideTheHostsWindowInItsSize) {
    EXPECT_FALSE(graphics->WindowIsOpen());
    ASSERT_TRUE(Open());
    EXPECT_TRUE(graphics->WindowIsOpen());
    const auto editors = host.Editors();
    ASSERT_EQ(editors.size(), 1U);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(graphics->GetWindow()), editors[0]);
    EXPECT_EQ(host.PlaceOf(editors[0]), IRECT(kLeft, kTop, kLeft + kWidth, kTop + kHeight));
    graphics->CloseWindow();
    EXPECT_FALSE(graphics->WindowIsOpen());
    EXPECT_EQ(graphics->GetWindow(), nullptr);
    EXPECT_TRUE(Eventually([&] { return host.Editors().empty(); }));
}

TEST_F(EditorWindow, TicksWhileOpenAndNotBeforeOrAfter) {
    EXPECT_EQ(record.CountOf("tick"), 0);
    ASSERT_TRUE(Open());
    EXPECT_TRUE(Ticks(3));
    graphics->CloseWindow();
    const int after = record.CountOf("tick");
    ASSERT_TRUE(Open());
    EXPECT_GE(record.CountOf("tick"), after);
    EXPECT_TRUE(Ticks(1));
}

TEST_F(EditorWindow, ShowsWhatTheControlsDraw) {
    ASSERT_TRUE(Open());
    LICE_MemBitmap seen;
    EXPECT_TRUE(Eventually([&] {
        host.Grab(host.Editors().front(), seen);
        return (LICE_GetPixel(&seen, 150, 150) & 0xFFFFFFU) == 0x5A28A0U;
    }));
    EXPECT_EQ(LICE_GetPixel(&seen, 99, 150) & 0xFFFFFFU, 0x141E28U);
    EXPECT_EQ(LICE_GetPixel(&seen, 100, 100) & 0xFFFFFFU, 0x5A28A0U);
    EXPECT_EQ(LICE_GetPixel(&seen, 299, 199) & 0xFFFFFFU, 0x5A28A0U);
    EXPECT_EQ(LICE_GetPixel(&seen, 300, 200) & 0xFFFFFFU, 0x141E28U);
    EXPECT_EQ(LICE_GetPixel(&seen, kWidth - 1, kHeight - 1) & 0xFFFFFFU, 0x141E28U);
}

TEST_F(EditorWindow, MousePressDragAndReleaseReachTheControl) {
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    ASSERT_TRUE(User({"mousedown", "1"}));
    EXPECT_TRUE(Recorded("down 150,150 L"));
    // Far outside of the control and of the editor: it holds the mouse.
    ASSERT_TRUE(User(At(160, 130)));
    EXPECT_TRUE(Recorded("dragged by 10,-20"));
    ASSERT_TRUE(User(At(450, -40)));
    EXPECT_TRUE(Recorded("drag 450,-40 L"));
    EXPECT_TRUE(Recorded("dragged by 300,-190"));
    ASSERT_TRUE(User({"mouseup", "1"}));
    EXPECT_TRUE(Recorded("up 450,-40"));
    EXPECT_TRUE(Recorded("out"));
}

TEST_F(EditorWindow, LeavesNothingBehindAfterAHundredOpenings) {
    ASSERT_TRUE(Open());
    graphics->CloseWindow();
    const int files = CountEntries("/proc/self/fd");
    const int threads = CountEntries("/proc/self/task");
    for (int i = 0; i < 100; ++i) {
        ASSERT_TRUE(Open());
        graphics->CloseWindow();
    }
    EXPECT_EQ(CountEntries("/proc/self/fd"), files);
    EXPECT_EQ(CountEntries("/proc/self/task"), threads);
}

} // namespace Grimworks
