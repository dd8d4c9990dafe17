#include "tests/editor/win/EditorWindow.h"

#include <commctrl.h>

namespace Grimworks {

namespace {

/// With a control of 10..60 by 10..60 that has a parameter, dragged from 30,30 on.
class DragWindow : public EditorWindow {
protected:
    static constexpr int kParam = 5;

    void SetUp() override {
        EditorWindow::SetUp();
        auto attached = std::make_unique<RecordingControl>(&plug, IRECT(10, 10, 60, 60), groundRecord,
                                                           IColor(255, 1, 2, 3), kParam);
        dragged = attached.get();
        graphics.AttachControl(std::move(attached));
    }

    void StartDrag() {
        MoveMouse(editor, 30, 30);
        ASSERT_TRUE(PumpUntil([this] { return groundRecord.Has("over 30,30"); }));
        groundRecord.Clear(); // of the release that ended the test before
        plug.log.clear();
        PressButton(MOUSEEVENTF_LEFTDOWN);
        ASSERT_TRUE(PumpUntil([this] { return plug.log == std::vector<std::string>{"begin 5"}; }));
        MoveMouse(editor, 35, 20);
        ASSERT_TRUE(PumpUntil([this] { return groundRecord.Has("dragged by 5,-10"); }));
    }
    void TearDown() override {
        PressButton(MOUSEEVENTF_LEFTUP);
        EditorWindow::TearDown();
    }

    RecordingControl* dragged = nullptr;
    const std::vector<std::string> wholeGesture{"begin 5", "end 5"};
};

} // namespace

TEST_F(DragWindow, AHostThatTakesItsWindowAwayHearsTheEndOfTheDrag) {
    StartDrag();
    host.Destroy();
    EXPECT_EQ(plug.log, wholeGesture);
    EXPECT_EQ(groundRecord.CountOf("up 35,20"), 1);
    EXPECT_EQ(graphics.MouseCapture(), -1);
}

TEST_F(DragWindow, AHostThatClosesTheEditorHearsTheEndOfTheDrag) {
    StartDrag();
    graphics.CloseWindow();
    EXPECT_EQ(plug.log, wholeGesture);
    EXPECT_EQ(groundRecord.CountOf("up 35,20"), 1);
}

TEST_F(DragWindow, ADragHandlerWhoseHostClosesTheEditorEndsItsOwnGesture) {
    dragged->onDrag = [this](RecordingControl&) {
        graphics.CloseWindow();
        EXPECT_EQ(plug.log, std::vector<std::string>{"begin 5"}) << "the handler is still at work";
    };
    StartDrag();
    EXPECT_FALSE(graphics.WindowIsOpen());
    EXPECT_EQ(plug.log, wholeGesture);
    EXPECT_EQ(groundRecord.CountOf("up"), 0);
}

TEST_F(DragWindow, AHostThatClosesTheEditorForAKeyHearsTheEndOfTheDrag) {
    StartDrag();
    host.onKey = [this] { graphics.CloseWindow(); };
    PressKey(VK_ESCAPE);
    ASSERT_TRUE(PumpUntil([this] { return !graphics.WindowIsOpen(); }));
    EXPECT_EQ(plug.log, wholeGesture);
}

TEST_F(DragWindow, AMessageBoxOfTheControlTakesTheMouseAndEndsTheGesture) {
    int answer = 0;
    dragged->onDown = [&](RecordingControl&) { answer = graphics.ShowMessageBox("Really?", "Thud", MB_OK); };
    control->onTick = [](RecordingControl&) {
        HWND box = FindShown("#32770");
        if (box != nullptr) PostMessageA(box, WM_COMMAND, IDOK, 0);
    };
    MoveMouse(editor, 30, 30);
    ASSERT_TRUE(PumpUntil([this] { return groundRecord.Has("over 30,30"); }));
    plug.log.clear();
    PressButton(MOUSEEVENTF_LEFTDOWN);
    EXPECT_TRUE(PumpUntil([&] { return answer == IDOK; }));
    EXPECT_EQ(plug.log, wholeGesture);
    EXPECT_EQ(graphics.MouseCapture(), -1);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(DragWindow, AnotherWindowThatTakesTheMouseEndsTheDrag) {
    StartDrag();
    SetCapture(host.Window());
    EXPECT_EQ(plug.log, wholeGesture);
    EXPECT_EQ(groundRecord.CountOf("up 35,20"), 1);
    ReleaseCapture();
}

TEST_F(EditorWindow, MousePressDragAndReleaseReachTheControl) {
    MoveMouse(editor, 150, 150);
    ASSERT_TRUE(Recorded("over 150,150"));
    PressButton(MOUSEEVENTF_LEFTDOWN);
    ASSERT_TRUE(Recorded("down 150,150 L"));
    EXPECT_EQ(GetCapture(), editor);
    MoveMouse(editor, 160, 130);
    EXPECT_TRUE(Recorded("drag 160,130 L"));
    EXPECT_TRUE(Recorded("dragged by 10,-20"));
    // Far outside of the control and of the editor: it holds the mouse.
    MoveMouse(editor, 450, -40);
    EXPECT_TRUE(Recorded("dragged by 300,-190"));
    PressButton(MOUSEEVENTF_LEFTUP);
    EXPECT_TRUE(Recorded("up 450,-40"));
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(EditorWindow, TheOtherButtonsReachTheControlToo) {
    MoveMouse(editor, 150, 150);
    PressButton(MOUSEEVENTF_RIGHTDOWN);
    EXPECT_TRUE(Recorded("down 150,150 R"));
    PressButton(MOUSEEVENTF_RIGHTUP);
    EXPECT_TRUE(Recorded("up 150,150"));
    PressButton(MOUSEEVENTF_MIDDLEDOWN);
    EXPECT_TRUE(Recorded("down 150,150"));
    PressButton(MOUSEEVENTF_MIDDLEUP);
    EXPECT_TRUE(PumpUntil([&] { return record.CountOf("up 150,150") == 2; }));
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(EditorWindow, KeysHeldWithTheMouseAreTold) {
    for (const auto& [key, held] :
         {std::pair<WORD, const char*>{VK_SHIFT, " L S"}, std::pair<WORD, const char*>{VK_CONTROL, " L C"},
          std::pair<WORD, const char*>{VK_MENU, " L A"}}) {
        HoldKey(key, true);
        MoveMouse(editor, 120, 120);
        PressButton(MOUSEEVENTF_LEFTDOWN);
        EXPECT_TRUE(Recorded(std::string("down 120,120") + held));
        PressButton(MOUSEEVENTF_LEFTUP);
        HoldKey(key, false);
        EXPECT_TRUE(PumpUntil([&] { return record.CountOf("up 120,120") > 0; }));
        record.Clear();
        // The next press must not count as the second of a double click.
        MoveMouse(editor, 180, 180);
        Click(editor, 180, 180);
        EXPECT_TRUE(PumpUntil([&] { return record.CountOf("up 180,180") > 0; }));
        record.Clear();
    }
}

TEST_F(EditorWindow, ASecondQuickClickIsADoubleClick) {
    Click(editor, 150, 150);
    Click(editor, 150, 150);
    EXPECT_TRUE(Recorded("double 150,150 L"));
    EXPECT_EQ(record.CountOf("down"), 1);
}

TEST_F(EditorWindow, TheWheelIsToldInNotches) {
    MoveMouse(editor, 150, 150);
    ASSERT_TRUE(Recorded("over 150,150"));
    Wheel(120);
    EXPECT_TRUE(Recorded("wheel 150,150 1"));
    Wheel(-240);
    EXPECT_TRUE(Recorded("wheel 150,150 -2"));
    Wheel(-119);
    EXPECT_TRUE(Recorded("wheel 150,150 0"));
}

TEST_F(EditorWindow, LeavingTheWindowIsTold) {
    MoveMouse(editor, 150, 150);
    ASSERT_TRUE(Recorded("over 150,150"));
    EXPECT_EQ(graphics.MouseOverIndex(), 1);
    MoveMouse(editor, kWidth + 20, 10);
    EXPECT_TRUE(Recorded("out"));
    EXPECT_EQ(graphics.MouseOverIndex(), -1);
}

TEST_F(EditorWindow, ATooltipShowsOverAControlThatTheMouseRestsOn) {
    control->SetTooltip("About\xC3\xA9 & more");
    MoveMouse(editor, 150, 150);
    ASSERT_TRUE(PumpUntil([] { return FindShown("tooltips_class32") != nullptr; }));
    HWND tip = FindShown("tooltips_class32");
    std::array<wchar_t, 80> text{};
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V2_SIZE;
    tool.hwnd = editor;
    tool.uId = reinterpret_cast<UINT_PTR>(editor);
    tool.lpszText = text.data();
    SendMessageW(tip, TTM_GETTEXTW, text.size(), reinterpret_cast<LPARAM>(&tool));
    EXPECT_EQ(std::wstring(text.data()), L"About\u00E9 & more");
    PressButton(MOUSEEVENTF_LEFTDOWN);
    EXPECT_TRUE(PumpUntil([] { return FindShown("tooltips_class32") == nullptr; }));
    PressButton(MOUSEEVENTF_LEFTUP);
    EXPECT_TRUE(PumpUntil([&] { return record.CountOf("up") > 0; }));
}

TEST_F(EditorWindow, LeavingHidesTheTooltip) {
    control->SetTooltip("Cutoff");
    MoveMouse(editor, 150, 150);
    ASSERT_TRUE(PumpUntil([] { return FindShown("tooltips_class32") != nullptr; }));
    MoveMouse(editor, kWidth + 20, 10);
    EXPECT_TRUE(PumpUntil([] { return FindShown("tooltips_class32") == nullptr; }));
}

TEST_F(DragWindow, TheTooltipOfOneControlDoesNotStayOverTheNext) {
    control->SetTooltip("Cutoff");
    MoveMouse(editor, 150, 150);
    ASSERT_TRUE(PumpUntil([] { return FindShown("tooltips_class32") != nullptr; }));
    MoveMouse(editor, 151, 151);
    ASSERT_TRUE(Recorded("over 151,151"));
    EXPECT_NE(FindShown("tooltips_class32"), nullptr) << "still over the same control";
    SendMessageA(editor, WM_MOUSEMOVE, 0, MAKELPARAM(30, 30));
    EXPECT_EQ(FindShown("tooltips_class32"), nullptr);
}

TEST_F(EditorWindow, WithTooltipsOffNoneShows) {
    graphics.CloseWindow();
    graphics.EnableTooltips(false);
    ASSERT_TRUE(graphics.OpenWindow(host.Window()));
    editor = static_cast<HWND>(graphics.GetWindow());
    control->SetTooltip("Cutoff");
    MoveMouse(editor, 150, 150);
    ASSERT_TRUE(Recorded("over 150,150"));
    SendMessageA(editor, WM_MOUSEHOVER, 0, MAKELPARAM(150, 150));
    EXPECT_EQ(FindShown("tooltips_class32"), nullptr);
}

TEST_F(EditorWindow, AKeyThatTheControlUsesStaysHere) {
    control->usesKeys = true;
    MoveMouse(editor, 150, 150);
    ASSERT_TRUE(Recorded("over 150,150"));
    PressKey(VK_UP);
    EXPECT_TRUE(Recorded("key " + std::to_string(KeyUp)));
    PressKey('Q');
    EXPECT_TRUE(Recorded("key " + std::to_string(KeyLetterA + 16)));
    PressKey('7');
    EXPECT_TRUE(Recorded("key " + std::to_string(KeyDigit0 + 7)));
    PressKey(VK_F12);
    EXPECT_TRUE(Recorded("key " + std::to_string(KeyF1 + 11)));
    PressKey(VK_SPACE);
    EXPECT_TRUE(Recorded("key " + std::to_string(KeySpace)));
    ASSERT_TRUE(PumpUntil([&] { return host.keys.size() == 5; }));
    for (const std::string& key : host.keys)
        EXPECT_TRUE(key.starts_with("up ")) << key;
}

TEST_F(EditorWindow, AKeyThatNobodyUsesGoesToTheHost) {
    MoveMouse(editor, 150, 150);
    ASSERT_TRUE(Recorded("over 150,150"));
    PressKey(VK_SPACE);
    EXPECT_TRUE(PumpUntil([&] { return host.keys.size() == 2; }));
    EXPECT_EQ(host.keys, (std::vector<std::string>{"down 32", "up 32"}));
    host.keys.clear();
    PressKey(VK_TAB); // has no code for controls
    EXPECT_TRUE(PumpUntil([&] { return host.keys.size() == 2; }));
    EXPECT_EQ(record.CountOf("key "), 1);
}

} // namespace Grimworks
