#include "editor/IPopupMenu.h"
#include "tests/editor/x11/EditorWindow.h"

#include <string>
#include <vector>

namespace Grimworks {

namespace {

/// A control whose press opens a menu below it: five plain rows ("Alpha" checked, "Bravo" off, a separator at
/// 2, "Charlie", "Delta"), then "More" with "Echo" and "Foxtrot", then "Golf".
class MenuWindow : public EditorWindow {
protected:
    static constexpr int kRow = 20;
    static constexpr int kSeparator = 9;
    static constexpr int kFrame = 4;

    void SetUp() override {
        EditorWindow::SetUp();
        menu.AddItem("Alpha", IPopupMenu::Checked);
        menu.AddItem("Bravo", IPopupMenu::Grayed);
        menu.AddSeparator();
        menu.AddItem("Charlie");
        menu.AddItem("Delta");
        more = &menu.AddSubmenu("More");
        more->AddItem("Echo");
        more->AddItem("Foxtrot");
        menu.AddItem("Golf");
        control->onDown = [this](RecordingControl&) {
            IPopupMenu* const chosen = graphics->CreateIPopupMenu(menu, control->Rect());
            std::string line = "chose nothing";
            if (chosen == &menu) line = "chose " + std::to_string(chosen->ChosenItem());
            if (chosen == more) line = "chose more " + std::to_string(chosen->ChosenItem());
            record.Add(line);
        };
    }

    /// Opens the menu by a click; true when it is on the screen and listens.
    [[nodiscard]] bool OpenMenu() {
        return Open() && PointAt(150, 150) && User({"click", "1"}) && MenuIsOpen(1);
    }

    [[nodiscard]] bool MenuIsOpen(std::size_t levels) {
        return Eventually([&] { return host.Popups().size() == levels; });
    }

    /// Middle of a row of the first level, on the screen; the menu's corner is at the control's lower left.
    [[nodiscard]] std::vector<std::string> Row(int row) {
        const IRECT place = host.PlaceOf(host.Popups().front());
        const int separators = row > 2 ? 1 : 0;
        return MoveTo(place.L + 40,
                      place.T + kFrame + (row - separators) * kRow + separators * kSeparator + kRow / 2);
    }

    [[nodiscard]] static std::vector<std::string> Keys(std::vector<std::string> names) {
        names.insert(names.begin(), "key");
        return names;
    }

    IPopupMenu menu;
    IPopupMenu* more = nullptr;
};

} // namespace

TEST_F(MenuWindow, OpensAtTheLowerLeftOfTheRectangle) {
    ASSERT_TRUE(OpenMenu());
    const IRECT place = host.PlaceOf(host.Popups().front());
    EXPECT_EQ(place.L, kLeft + 100);
    EXPECT_EQ(place.T, kTop + 200);
    EXPECT_EQ(place.H(), 6 * kRow + kSeparator + 2 * kFrame);
}

TEST_F(MenuWindow, AClickChoosesARow) {
    ASSERT_TRUE(OpenMenu());
    ASSERT_TRUE(User(Row(3)));
    ASSERT_TRUE(User({"click", "1"}));
    EXPECT_TRUE(Recorded("chose 3"));
    EXPECT_TRUE(MenuIsOpen(0));
}

TEST_F(MenuWindow, PressDragAndReleaseChoosesARow) {
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    ASSERT_TRUE(User({"mousedown", "1"}));
    ASSERT_TRUE(MenuIsOpen(1));
    ASSERT_TRUE(User(Row(4)));
    ASSERT_TRUE(User({"mouseup", "1"}));
    EXPECT_TRUE(Recorded("chose 4"));
}

TEST_F(MenuWindow, ASeparatorCountsAsARow) {
    ASSERT_TRUE(OpenMenu());
    ASSERT_TRUE(User(Row(6)));
    ASSERT_TRUE(User({"click", "1"}));
    EXPECT_TRUE(Recorded("chose 6"));
}

TEST_F(MenuWindow, GrayedRowsAndSeparatorsCannotBeChosen) {
    ASSERT_TRUE(OpenMenu());
    ASSERT_TRUE(User(Row(1)));
    ASSERT_TRUE(User({"click", "1"}));
    ASSERT_TRUE(User(Row(0)));
    ASSERT_TRUE(User({"click", "1"}));
    EXPECT_TRUE(Recorded("chose 0"));
    EXPECT_EQ(record.CountOf("chose"), 1);
}

TEST_F(MenuWindow, ARowOfASubmenuIsChosenByMouse) {
    ASSERT_TRUE(OpenMenu());
    ASSERT_TRUE(User(Row(5)));
    ASSERT_TRUE(MenuIsOpen(2));
    const auto popups = host.Popups();
    const IRECT first = host.PlaceOf(popups[0]);
    const IRECT second = host.PlaceOf(popups[1]);
    EXPECT_EQ(second.L, first.R - kFrame);
    ASSERT_TRUE(User(MoveTo(second.L + 30, second.T + kFrame + kRow + kRow / 2)));
    ASSERT_TRUE(User({"click", "1"}));
    EXPECT_TRUE(Recorded("chose more 1"));
    EXPECT_EQ(menu.ChosenItem(), -1);
    EXPECT_TRUE(MenuIsOpen(0));
}

TEST_F(MenuWindow, AnotherRowClosesTheSubmenu) {
    ASSERT_TRUE(OpenMenu());
    ASSERT_TRUE(User(Row(5)));
    ASSERT_TRUE(MenuIsOpen(2));
    ASSERT_TRUE(User(Row(3)));
    EXPECT_TRUE(MenuIsOpen(1));
    ASSERT_TRUE(User({"key", "Escape"}));
    EXPECT_TRUE(Recorded("chose nothing"));
}

TEST_F(MenuWindow, KeysWalkOverSeparatorsAndGrayedRowsAndChoose) {
    ASSERT_TRUE(OpenMenu());
    ASSERT_TRUE(User(Keys({"Down", "Down", "Return"})));
    EXPECT_TRUE(Recorded("chose 3"));
}

TEST_F(MenuWindow, KeysGoAroundAtTheEnds) {
    ASSERT_TRUE(OpenMenu());
    ASSERT_TRUE(User(Keys({"Up", "Down", "Up", "Up", "Up", "space"})));
    EXPECT_TRUE(Recorded("chose 4"));
}

TEST_F(MenuWindow, HomeAndEndReachTheFirstAndTheLastRow) {
    ASSERT_TRUE(OpenMenu());
    ASSERT_TRUE(User(Keys({"End", "Return"})));
    EXPECT_TRUE(Recorded("chose 6"));
    record.Clear();
    ASSERT_TRUE(User({"click", "1"}));
    ASSERT_TRUE(MenuIsOpen(1));
    ASSERT_TRUE(User(Keys({"End", "Home", "Return"})));
    EXPECT_TRUE(Recorded("chose 0"));
}

TEST_F(MenuWindow, ALetterReachesTheRowThatBeginsWithIt) {
    ASSERT_TRUE(OpenMenu());
    ASSERT_TRUE(User(Keys({"d", "Return"})));
    EXPECT_TRUE(Recorded("chose 4"));
}

TEST_F(MenuWindow, KeysReachRowsOfASubmenu) {
    ASSERT_TRUE(OpenMenu());
    ASSERT_TRUE(User(Keys({"m", "Right"})));
    ASSERT_TRUE(MenuIsOpen(2));
    ASSERT_TRUE(User(Keys({"Left"})));
    ASSERT_TRUE(MenuIsOpen(1));
    ASSERT_TRUE(User(Keys({"Return"})));
    ASSERT_TRUE(MenuIsOpen(2));
    ASSERT_TRUE(User(Keys({"Down", "Return"})));
    EXPECT_TRUE(Recorded("chose more 1"));
}

TEST_F(MenuWindow, EscapeClosesOneLevelAtATime) {
    ASSERT_TRUE(OpenMenu());
    ASSERT_TRUE(User(Keys({"m", "Right"})));
    ASSERT_TRUE(MenuIsOpen(2));
    ASSERT_TRUE(User(Keys({"Escape"})));
    ASSERT_TRUE(MenuIsOpen(1));
    ASSERT_TRUE(User(Keys({"Escape"})));
    EXPECT_TRUE(Recorded("chose nothing"));
}

TEST_F(MenuWindow, AClickElsewhereClosesItAndDoesNothingElse) {
    ASSERT_TRUE(OpenMenu());
    ASSERT_TRUE(User(At(110, 110)));
    ASSERT_TRUE(User({"click", "1"}));
    EXPECT_TRUE(Recorded("chose nothing"));
    EXPECT_TRUE(Ticks(3));
    EXPECT_EQ(record.CountOf("down"), 1);
}

TEST_F(MenuWindow, AClickOutsideOfTheHostClosesIt) {
    ASSERT_TRUE(OpenMenu());
    ASSERT_TRUE(User(MoveTo(1500, 1100)));
    ASSERT_TRUE(User({"click", "1"}));
    EXPECT_TRUE(Recorded("chose nothing"));
}

TEST_F(MenuWindow, TheEditorTicksAndDrawsWhileItIsOpen) {
    control->onTick = [](RecordingControl& ticking) { ticking.SetDirty(false); };
    ASSERT_TRUE(OpenMenu());
    EXPECT_TRUE(Ticks(3));
    record.Clear();
    EXPECT_TRUE(Eventually([&] { return record.CountOf("draw") >= 2; }));
    EXPECT_EQ(record.CountOf("chose"), 0);
}

TEST_F(MenuWindow, ClosingTheEditorEndsTheMenuFirst) {
    ASSERT_TRUE(OpenMenu());
    graphics->CloseWindow();
    EXPECT_TRUE(record.Has("chose nothing"));
    EXPECT_TRUE(MenuIsOpen(0));
    control->onDown = nullptr;
    ASSERT_TRUE(Open());
    EXPECT_TRUE(Ticks(1));
}

TEST_F(MenuWindow, TheHostsWindowGoingEndsTheMenu) {
    ASSERT_TRUE(OpenMenu());
    host.Destroy();
    EXPECT_TRUE(Recorded("chose nothing"));
    EXPECT_TRUE(Eventually([&] { return !graphics->WindowIsOpen(); }));
    graphics->CloseWindow();
}

TEST_F(MenuWindow, StaysOnTheScreen) {
    const HostWindow corner(1300, 950, kWidth, kHeight);
    control->SetTargetRect(IRECT(0, 0, kWidth, kHeight));
    ASSERT_TRUE(graphics->OpenWindow(corner.Parent()));
    ASSERT_TRUE(User(MoveTo(1310, 960)));
    ASSERT_TRUE(User({"click", "1"}));
    ASSERT_TRUE(MenuIsOpen(1));
    const IRECT place = host.PlaceOf(host.Popups().front());
    // Below the control, at y 1150, there is no room for 137 pixels: it opens above, and ends where that
    // begins.
    EXPECT_EQ(place.B, 950 + 100);
    EXPECT_LE(place.R, 1600);
    ASSERT_TRUE(User({"key", "Escape"}));
    EXPECT_TRUE(Recorded("chose nothing"));
    graphics->CloseWindow();
}

TEST_F(MenuWindow, LongListsGoInColumnsThatKeysCross) {
    IPopupMenu list;
    list.SetPrefix(IPopupMenu::PrefixThreeDigits);
    for (int i = 0; i < 128; ++i)
        list.AddItem("Program");
    control->onDown = [this, &list](RecordingControl&) {
        IPopupMenu* const chosen = graphics->CreateIPopupMenu(list, control->Rect());
        record.Add("chose " + std::to_string(chosen != nullptr ? chosen->ChosenItem() : -1));
    };
    ASSERT_TRUE(OpenMenu());
    const IRECT place = host.PlaceOf(host.Popups().front());
    EXPECT_LE(place.B, 1200);
    EXPECT_GE(place.T, 0);
    // 1192 pixels take 59 rows: three columns, and the second one's first row is number 59.
    ASSERT_TRUE(User(Keys({"Home", "Right", "Right", "Down", "Return"})));
    EXPECT_TRUE(Recorded("chose " + std::to_string(2 * 59 + 1)));
    graphics->CloseWindow();
}

} // namespace Grimworks
