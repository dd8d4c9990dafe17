#include "editor/LICE_Draw.h"
#include "tests/editor/x11/EditorWindow.h"

#include <string>

namespace Grimworks {

TEST_F(EditorWindow, ButtonsAndKeysThatAreHeldReachTheControl) {
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    ASSERT_TRUE(User({"click", "3"}));
    EXPECT_TRUE(Recorded("down 150,150 R"));
    EXPECT_TRUE(Recorded("up 150,150"));
    record.Clear();
    ASSERT_TRUE(User({"keydown", "shift", "mousedown", "1"}));
    EXPECT_TRUE(Recorded("down 150,150 L S"));
    ASSERT_TRUE(User({"mousedown", "3"}));
    EXPECT_TRUE(Recorded("down 150,150 L R S"));
    ASSERT_TRUE(User({"mouseup", "1", "keyup", "shift"}));
    EXPECT_TRUE(Recorded("up 150,150 R S"));
    ASSERT_TRUE(User({"mouseup", "3", "keydown", "ctrl", "keydown", "alt", "mousedown", "2"}));
    EXPECT_TRUE(Recorded("down 150,150 C A"));
    ASSERT_TRUE(User({"mouseup", "2", "keyup", "alt", "keyup", "ctrl"}));
    EXPECT_TRUE(Recorded("up 150,150 C A"));
}

TEST_F(EditorWindow, TwoQuickClicksAreADoubleClickAndAThirdIsNot) {
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    ASSERT_TRUE(User({"click", "--repeat", "3", "--delay", "10", "1"}));
    EXPECT_TRUE(Eventually([&] { return record.CountOf("up") == 3; }));
    EXPECT_EQ(record.CountOf("down"), 2);
    EXPECT_EQ(record.CountOf("double 150,150 L"), 1);
}

TEST_F(EditorWindow, TwoClicksApartFromEachOtherAreNoDoubleClick) {
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    ASSERT_TRUE(User({"click", "1", "mousemove_relative", "6", "0", "click", "1"}));
    EXPECT_TRUE(Recorded("down 156,150 L"));
    ASSERT_TRUE(User({"click", "3"}));
    EXPECT_TRUE(Recorded("down 156,150 R"));
    EXPECT_EQ(record.CountOf("double"), 0);
}

TEST_F(EditorWindow, EachStepOfTheWheelIsANotch) {
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    ASSERT_TRUE(User({"click", "4"}));
    EXPECT_TRUE(Recorded("wheel 150,150 1"));
    ASSERT_TRUE(User({"keydown", "ctrl", "click", "5", "keyup", "ctrl"}));
    EXPECT_TRUE(Recorded("wheel 150,150 C -1"));
    EXPECT_EQ(record.CountOf("down"), 0);
}

TEST_F(EditorWindow, LeavingTheWindowTakesTheMouseOffTheControl) {
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    record.Clear();
    ASSERT_TRUE(User(MoveTo(1000, 1000)));
    EXPECT_TRUE(Recorded("out"));
}

TEST_F(EditorWindow, AMouseThatAnotherProgramTakesLeavesTheControl) {
    control->SetTooltip("Select Next Waveform");
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    ASSERT_TRUE(Eventually([&] { return host.Popups().size() == 1; }));
    record.Clear();
    host.TakeMouse();
    EXPECT_TRUE(Recorded("out"));
    EXPECT_TRUE(Eventually([&] { return host.Popups().empty(); }));
    host.LetMouseGo();
    EXPECT_TRUE(Recorded("over 150,150"));
}

TEST_F(EditorWindow, AButtonLetGoWhileTheHostHidTheEditorEndsTheDrag) {
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    ASSERT_TRUE(User({"mousedown", "1"}));
    EXPECT_TRUE(Recorded("down 150,150 L"));
    host.Hide();
    ASSERT_TRUE(User({"mouseup", "1"}));
    host.ShowAgain();
    ASSERT_TRUE(User(At(160, 150)));
    EXPECT_TRUE(Eventually([&] { return record.CountOf("up") == 1; }));
    EXPECT_TRUE(Recorded("over 160,150"));
    EXPECT_EQ(record.CountOf("drag"), 0);
}

TEST_F(EditorWindow, AnEditorThatIsClosedByADragLetsTheControlGo) {
    control->onDrag = [this](RecordingControl&) { graphics->CloseWindow(); };
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    ASSERT_TRUE(User({"mousedown", "1"}));
    EXPECT_TRUE(Recorded("down 150,150 L"));
    ASSERT_TRUE(User(At(160, 150)));
    EXPECT_TRUE(Eventually([&] { return record.CountOf("dragged") > 0; }));
    EXPECT_TRUE(Eventually([&] { return host.Editors().empty(); }));
    ASSERT_TRUE(User({"mouseup", "1"}));
    graphics->CloseWindow(); // waits for the editor's thread
    EXPECT_EQ(graphics->MouseCapture(), -1);
}

TEST_F(EditorWindow, AKeyGoesToTheControlUnderTheMouse) {
    control->usesKeys = true;
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    host.TakeFocus();
    ASSERT_TRUE(User({"key", "space", "Up", "Down", "Left", "Right", "7", "c", "F3"}));
    for (const int key : {int{KeySpace}, int{KeyUp}, int{KeyDown}, int{KeyLeft}, int{KeyRight}, KeyDigit0 + 7,
                          KeyLetterA + 2, KeyF1 + 2})
        EXPECT_TRUE(Recorded("key " + std::to_string(key)));
}

TEST_F(EditorWindow, AKeyThatNoControlUsesGoesToTheHost) {
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    host.TakeFocus();
    ASSERT_TRUE(User({"key", "space"}));
    EXPECT_TRUE(Recorded("key " + std::to_string(int{KeySpace})));
    EXPECT_TRUE(Eventually([&] { return host.Keys().size() >= 2; }));
    const auto keys = host.Keys();
    ASSERT_EQ(keys.size(), 2U);
    EXPECT_GT(keys[0], 0);
    EXPECT_EQ(keys[1], -keys[0]);
}

TEST_F(EditorWindow, AKeyThatAControlUsesDoesNotGoToTheHost) {
    control->usesKeys = true;
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    host.TakeFocus();
    ASSERT_TRUE(User({"key", "space", "Tab"}));
    EXPECT_TRUE(Eventually([&] { return host.Keys().size() >= 3; }));
    // The space key's release, and all of the tab key, which controls do not know.
    const auto keys = host.Keys();
    ASSERT_EQ(keys.size(), 3U);
    EXPECT_LT(keys[0], 0);
    EXPECT_GT(keys[1], 0);
    EXPECT_NE(keys[1], -keys[0]);
}

TEST_F(EditorWindow, AClickDoesNotTakeTheKeyboardFromTheHost) {
    ASSERT_TRUE(Open());
    host.TakeFocus();
    const xcb_window_t before = host.Focus();
    ASSERT_TRUE(PointAt(150, 150));
    ASSERT_TRUE(User({"click", "1"}));
    EXPECT_TRUE(Recorded("up 150,150"));
    EXPECT_EQ(host.Focus(), before);
}

TEST_F(EditorWindow, TheTooltipComesWhereTheMouseRestsAndGoesWithAPress) {
    control->SetTooltip("Select Next Waveform");
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    ASSERT_TRUE(Eventually([&] { return host.Popups().size() == 1; }));
    const IRECT place = host.PlaceOf(host.Popups().front());
    EXPECT_EQ(place.L, kLeft + 150);
    EXPECT_GT(place.T, kTop + 150);
    // Some of it is text on the ground.
    LICE_MemBitmap seen;
    EXPECT_TRUE(Eventually([&] {
        host.Grab(host.Popups().front(), seen);
        int bright = 0;
        for (int y = 0; y < seen.getHeight(); ++y) {
            for (int x = 0; x < seen.getWidth(); ++x)
                bright += (LICE_GetPixel(&seen, x, y) & 0xFFU) > 160 ? 1 : 0;
        }
        return bright > 50;
    }));
    ASSERT_TRUE(User({"mousedown", "1"}));
    EXPECT_TRUE(Eventually([&] { return host.Popups().empty(); }));
    ASSERT_TRUE(User({"mouseup", "1"}));
}

TEST_F(EditorWindow, TheTooltipGoesWhenTheMouseLeavesTheControl) {
    control->SetTooltip("Select Next Waveform");
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    ASSERT_TRUE(Eventually([&] { return host.Popups().size() == 1; }));
    ASSERT_TRUE(User(At(20, 20)));
    EXPECT_TRUE(Eventually([&] { return host.Popups().empty(); }));
}

TEST_F(EditorWindow, AWindowThatOpensUnderTheMouseShowsNoTooltipBeforeItMoves) {
    control->SetTooltip("Select Next Waveform");
    ASSERT_TRUE(User(MoveTo(kLeft + 150, kTop + 150)));
    ASSERT_TRUE(Open());
    ASSERT_TRUE(Recorded("over 150,150"));
    EXPECT_TRUE(Ticks(30));
    EXPECT_TRUE(host.Popups().empty());
    ASSERT_TRUE(User({"mousemove_relative", "1", "0"}));
    EXPECT_TRUE(Eventually([&] { return host.Popups().size() == 1; }));
}

TEST_F(EditorWindow, NoTooltipIsShownWhenTheyAreOff) {
    control->SetTooltip("Select Next Waveform");
    graphics->EnableTooltips(false);
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    EXPECT_TRUE(Ticks(20));
    EXPECT_TRUE(host.Popups().empty());
}

TEST_F(EditorWindow, AHiddenCursorComesBackWhereItWas) {
    control->onDown = [this](RecordingControl&) { graphics->HideMouseCursor(); };
    control->onUp = [this](RecordingControl&) { graphics->ShowMouseCursor(); };
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    ASSERT_TRUE(User({"mousedown", "1"}));
    EXPECT_TRUE(Recorded("down 150,150 L"));
    ASSERT_TRUE(User(At(190, 110)));
    EXPECT_TRUE(Recorded("dragged by 40,-40"));
    record.Clear();
    ASSERT_TRUE(User({"mouseup", "1"}));
    EXPECT_TRUE(Recorded("up 190,110"));
    EXPECT_TRUE(Eventually([&] { return host.Mouse() == IRECT(kLeft + 150, kTop + 150, 0, 0); }));
}

} // namespace Grimworks
