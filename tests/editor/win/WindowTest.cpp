#include "editor/win/WinModule.h"
#include "editor/win/WindowClass.h"
#include "tests/editor/win/EditorWindow.h"

#include <array>
#include <thread>

namespace Grimworks {

namespace {

constexpr std::uint32_t kGround = 0x141E28;
constexpr std::uint32_t kControl = 0x5A28A0;

bool ClassIsRegistered(WNDCLASSA& record) {
    return GetClassInfoA(ThisModule(), "IPlugWndClass", &record) != FALSE;
}

bool ClassIsRegistered() {
    WNDCLASSA record{};
    return ClassIsRegistered(record);
}

SIZE SizeOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

/// A child window that holds others, as hosts put between their frame and an editor.
HWND MakePane(HWND parent) {
    return CreateWindowExA(0, "STATIC", "", WS_CHILD | WS_VISIBLE, 0, 0, 410, 310, parent, nullptr,
                           GetModuleHandleA(nullptr), nullptr);
}

} // namespace

TEST_F(EditorWindow, OpensAsAVisibleChildOfItsOwnSize) {
    EXPECT_TRUE(graphics.WindowIsOpen());
    EXPECT_EQ(host.Editors(), std::vector<HWND>{editor});
    EXPECT_EQ(GetWindowLongPtrA(editor, GWL_STYLE), 0x50000000);
    std::array<char, 32> title{};
    GetWindowTextA(editor, title.data(), static_cast<int>(title.size()));
    EXPECT_STREQ(title.data(), "IPlug");
    EXPECT_EQ(SizeOf(editor).cx, kWidth);
    EXPECT_EQ(SizeOf(editor).cy, kHeight);
    WNDCLASSA registered{};
    ASSERT_TRUE(ClassIsRegistered(registered));
    EXPECT_EQ(registered.style, 8U);
    EXPECT_EQ(registered.hCursor, LoadCursorA(nullptr, MAKEINTRESOURCEA(32512)));
}

TEST_F(EditorWindow, TakesTheFocusWhenItOpens) {
    EXPECT_EQ(GetFocus(), editor);
}

TEST_F(EditorWindow, TheFirstWindowRegistersTheClassAndTheLastUnregistersIt) {
    ASSERT_TRUE(ClassIsRegistered());
    FakePlug secondPlug;
    IGraphicsWin second(secondPlug, 100, 80);
    ASSERT_TRUE(second.OpenWindow(host.Window()));
    EXPECT_EQ(WindowClass::WindowCount(), 2);
    graphics.CloseWindow();
    EXPECT_TRUE(ClassIsRegistered());
    EXPECT_TRUE(second.WindowIsOpen());
    second.CloseWindow();
    EXPECT_FALSE(ClassIsRegistered());
    EXPECT_EQ(WindowClass::WindowCount(), 0);
}

TEST_F(EditorWindow, AWindowThatCannotBeMadeCountsForNothing) {
    graphics.CloseWindow();
    EXPECT_FALSE(graphics.OpenWindow(reinterpret_cast<void*>(std::uintptr_t{0x7FFFFFF0})));
    EXPECT_FALSE(graphics.WindowIsOpen());
    EXPECT_EQ(WindowClass::WindowCount(), 0);
    EXPECT_FALSE(ClassIsRegistered());
    EXPECT_FALSE(graphics.OpenWindow(nullptr));
    EXPECT_TRUE(graphics.OpenWindow(host.Window()));
}

TEST_F(EditorWindow, ClosesAndOpensAHundredTimesWithoutLeavingAnythingBehind) {
    const DWORD gdiBefore = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    for (int i = 0; i < 100; ++i) {
        graphics.CloseWindow();
        ASSERT_TRUE(host.Editors().empty());
        ASSERT_EQ(WindowClass::WindowCount(), 0);
        ASSERT_TRUE(graphics.OpenWindow(host.Window()));
        ASSERT_EQ(host.Editors().size(), 1U);
    }
    EXPECT_EQ(WindowClass::WindowCount(), 1);
    EXPECT_EQ(FindShown("tooltips_class32"), nullptr);
    EXPECT_LE(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS), gdiBefore + 10);
    EXPECT_TRUE(Ticks(2));
}

TEST_F(EditorWindow, OpeningAgainClosesTheFirstWindow) {
    ASSERT_TRUE(graphics.OpenWindow(host.Window()));
    EXPECT_EQ(host.Editors().size(), 1U);
    EXPECT_EQ(WindowClass::WindowCount(), 1);
}

TEST_F(EditorWindow, TimerTwoDrivesTheTicks) {
    EXPECT_TRUE(Ticks(3));
    EXPECT_NE(KillTimer(editor, 2), FALSE);
    MSG message{};
    while (PeekMessageA(&message, editor, WM_TIMER, WM_TIMER, PM_REMOVE) != FALSE) {
    }
    const int before = record.CountOf("tick");
    SendMessageA(editor, WM_TIMER, 1, 0);
    EXPECT_EQ(record.CountOf("tick"), before);
    SendMessageA(editor, WM_TIMER, 2, 0);
    EXPECT_EQ(record.CountOf("tick"), before + 1);
}

TEST_F(EditorWindow, ShowsWhatTheControlsDraw) {
    std::vector<std::uint32_t> seen;
    EXPECT_TRUE(PumpUntil([&] {
        seen = Grab(editor, kWidth, kHeight);
        return seen[150 * kWidth + 150] == kControl;
    }));
    EXPECT_EQ(seen[0], kGround);
    EXPECT_EQ(seen[150 * kWidth + 99], kGround);
    EXPECT_EQ(seen[100 * kWidth + 100], kControl);
    EXPECT_EQ(seen[199 * kWidth + 299], kControl);
    EXPECT_EQ(seen[200 * kWidth + 300], kGround);
    EXPECT_EQ(seen[(kHeight - 1) * kWidth + kWidth - 1], kGround);
}

TEST_F(EditorWindow, DrawsAgainWhatWasCovered) {
    {
        const WinHost cover(200, 150, 300, 250);
        ASSERT_TRUE(Ticks(2));
    }
    InvalidateRect(editor, nullptr, FALSE);
    EXPECT_TRUE(PumpUntil([&] { return Grab(editor, kWidth, kHeight)[150 * kWidth + 150] == kControl; }));
}

TEST_F(EditorWindow, OnlyTheRectangleOfWhatIsDirtyIsDrawn) {
    ASSERT_TRUE(Ticks(2));
    record.Clear();
    groundRecord.Clear();
    control->SetDirty(false);
    ASSERT_TRUE(PumpUntil([&] { return record.Has("draw"); }));
    RECT rect{};
    EXPECT_EQ(GetUpdateRect(editor, &rect, FALSE), FALSE);
}

TEST_F(EditorWindow, AHostThatTakesItsWindowAwayTakesTheEditor) {
    host.Destroy();
    EXPECT_FALSE(graphics.WindowIsOpen());
    EXPECT_EQ(graphics.GetWindow(), nullptr);
    graphics.CloseWindow();
    EXPECT_FALSE(ClassIsRegistered());
    const WinHost another(0, 0, 500, 400);
    EXPECT_TRUE(graphics.OpenWindow(another.Window()));
    graphics.CloseWindow();
}

TEST_F(EditorWindow, AnotherThreadOfTheHostMayCloseIt) {
    std::atomic<bool> closed{false};
    std::thread other([&] {
        graphics.CloseWindow();
        closed = true;
    });
    EXPECT_TRUE(PumpUntil([&] { return closed.load(); }));
    other.join();
    EXPECT_FALSE(graphics.WindowIsOpen());
    EXPECT_TRUE(host.Editors().empty());
    EXPECT_FALSE(ClassIsRegistered());
}

TEST_F(EditorWindow, ACloseRequestIsForTheHostToDecide) {
    SendMessageA(editor, WM_CLOSE, 0, 0);
    EXPECT_TRUE(PumpUntil([&] { return host.closes == 1; }));
    EXPECT_TRUE(graphics.WindowIsOpen());
}

TEST_F(EditorWindow, ResizeChangesTheWindowAndUpToTwoPanesAboveIt) {
    graphics.CloseWindow();
    HWND outer = MakePane(host.Window());
    HWND middle = MakePane(outer);
    HWND inner = MakePane(middle);
    ASSERT_TRUE(graphics.OpenWindow(inner));
    graphics.Resize(kWidth + 20, kHeight - 30);
    const SIZE size = SizeOf(static_cast<HWND>(graphics.GetWindow()));
    EXPECT_EQ(size.cx, 420);
    EXPECT_EQ(size.cy, 270);
    EXPECT_EQ(SizeOf(inner).cx, 430);
    EXPECT_EQ(SizeOf(inner).cy, 280);
    EXPECT_EQ(SizeOf(middle).cx, 430);
    EXPECT_EQ(SizeOf(outer).cx, 410);
    EXPECT_EQ(graphics.DrawBuffer().getWidth(), 420);
    EXPECT_EQ(graphics.DrawBuffer().getHeight(), 270);
    graphics.CloseWindow();
}

TEST_F(EditorWindow, SomeHostsResizeTheirPanesThemselves) {
    for (const int kind : {1, 3}) {
        plug.host = kind;
        graphics.CloseWindow();
        HWND pane = MakePane(host.Window());
        ASSERT_TRUE(graphics.OpenWindow(pane));
        graphics.Resize(kWidth + 10 * kind, kHeight);
        EXPECT_EQ(SizeOf(static_cast<HWND>(graphics.GetWindow())).cx, kWidth + 10 * kind);
        EXPECT_EQ(SizeOf(pane).cx, 410) << kind;
        graphics.CloseWindow();
    }
}

TEST_F(EditorWindow, AHiddenCursorComesBackWhereItWas) {
    MoveMouse(editor, 150, 150);
    ASSERT_TRUE(Recorded("over 150,150"));
    POINT before{};
    GetCursorPos(&before);
    const int shown = ShowCursor(TRUE);
    graphics.HideMouseCursor();
    graphics.HideMouseCursor();
    MoveMouse(editor, 170, 120);
    graphics.ShowMouseCursor();
    POINT after{};
    GetCursorPos(&after);
    EXPECT_EQ(after.x, before.x);
    EXPECT_EQ(after.y, before.y);
    EXPECT_EQ(ShowCursor(FALSE), shown - 1) << "hidden and shown equally often";
}

TEST_F(EditorWindow, TheInstrumentMustNotGoWhileAHandlerRuns) {
    bool mayGo = true;
    control->onDown = [&](RecordingControl&) { mayGo = graphics.PrepareToGo(); };
    Click(editor, 150, 150);
    ASSERT_TRUE(Recorded("down 150,150 L"));
    EXPECT_FALSE(mayGo);
    EXPECT_FALSE(graphics.WindowIsOpen());
    EXPECT_TRUE(graphics.PrepareToGo());
}

TEST_F(EditorWindow, KnowsItsFolders) {
    std::array<char, MAX_PATH> program{};
    GetModuleFileNameA(nullptr, program.data(), static_cast<DWORD>(program.size()));
    const std::string path(program.data());
    const std::string folder = path.substr(0, path.rfind('\\') + 1);
    EXPECT_EQ(graphics.HostPath(), folder);
    EXPECT_EQ(graphics.PluginPath(), folder);
    const auto isFolder = [](const std::string& name) {
        const DWORD attributes = GetFileAttributesA(name.c_str());
        return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    };
    EXPECT_TRUE(isFolder(graphics.DesktopPath())) << graphics.DesktopPath();
    EXPECT_TRUE(isFolder(graphics.AppSupportPath(false))) << graphics.AppSupportPath(false);
    EXPECT_TRUE(isFolder(graphics.AppSupportPath(true))) << graphics.AppSupportPath(true);
    EXPECT_NE(graphics.AppSupportPath(false), graphics.AppSupportPath(true));
}

TEST_F(EditorWindow, AnAddressThatNoProgramOpensIsToldAsFailed) {
    EXPECT_FALSE(graphics.OpenURL("thudforge-no-such-kind:nothing"));
}

} // namespace Grimworks
