#include "editor/x11/DesktopDialogs.h"
#include "editor/x11/X11MenuLayout.h"
#include "editor/x11/X11Pointer.h"

#include <gtest/gtest.h>
#include <vector>

namespace Grimworks {

namespace {

std::vector<X11MenuLayout::Need> Rows(int count, int width = 100) {
    return std::vector<X11MenuLayout::Need>(static_cast<std::size_t>(count), {width, false});
}

} // namespace

TEST(X11MenuLayout, RowsFollowEachOtherAndSeparatorsAreLow) {
    auto rows = Rows(3);
    rows[1].separator = true;
    const X11MenuLayout layout(rows, 1000, 1000);
    EXPECT_EQ(layout.Height(), 20 + 9 + 20 + 8);
    EXPECT_EQ(layout.RectOf(0, 0), IRECT(4, 4, 154, 24));
    EXPECT_EQ(layout.RectOf(1, 0), IRECT(4, 24, 154, 33));
    EXPECT_EQ(layout.RectOf(2, 0), IRECT(4, 33, 154, 53));
    EXPECT_EQ(layout.Width(), 158);
    EXPECT_EQ(layout.RowAt(4, 4, 0), 0);
    EXPECT_EQ(layout.RowAt(153, 52, 0), 2);
    EXPECT_EQ(layout.RowAt(154, 52, 0), -1);
    EXPECT_EQ(layout.RowAt(10, 3, 0), -1);
    EXPECT_EQ(layout.RowAt(10, 53, 0), -1);
}

TEST(X11MenuLayout, MoreRowsThanTheScreenTakesGoInColumns) {
    // 208 pixels take 10 rows of 20 and the frame.
    const X11MenuLayout layout(Rows(25), 1000, 208);
    EXPECT_EQ(layout.Columns(), 3);
    EXPECT_EQ(layout.ShownColumns(), 3);
    EXPECT_EQ(layout.Height(), 208);
    EXPECT_EQ(layout.Width(), 3 * 150 + 8);
    EXPECT_EQ(layout.RectOf(10, 0), IRECT(154, 4, 304, 24));
    EXPECT_EQ(layout.RowBeside(3, 1), 13);
    EXPECT_EQ(layout.RowBeside(19, 1), 24);
    EXPECT_EQ(layout.RowBeside(24, 1), -1);
    EXPECT_EQ(layout.RowBeside(24, -1), 14);
    EXPECT_EQ(layout.RowBeside(0, -1), -1);
    EXPECT_EQ(layout.RowBeside(-1, 1), -1);
}

TEST(X11MenuLayout, ColumnsWithoutRoomAreReachedByScrolling) {
    const X11MenuLayout layout(Rows(45), 320, 208);
    EXPECT_EQ(layout.Columns(), 5);
    EXPECT_EQ(layout.ShownColumns(), 2);
    EXPECT_LE(layout.Width(), 320);
    EXPECT_TRUE(layout.RectOf(20, 0).Empty());
    EXPECT_EQ(layout.RectOf(20, 1), IRECT(154, 4, 304, 24));
    EXPECT_EQ(layout.RectOf(20, 2), IRECT(4, 4, 154, 24));
    EXPECT_EQ(layout.RowAt(10, 10, 2), 20);
}

TEST(X11MenuLayout, SmallScreensAndEmptyMenusDoNoHarm) {
    const X11MenuLayout tiny(Rows(3, 5000), 40, 10);
    EXPECT_GE(tiny.Width(), 1);
    EXPECT_EQ(tiny.Columns(), 3);
    EXPECT_EQ(tiny.ShownColumns(), 1);
    const X11MenuLayout none({}, 1000, 1000);
    EXPECT_EQ(none.RowAt(5, 5, 0), -1);
    EXPECT_TRUE(none.RectOf(0, 0).Empty());
}

TEST(X11MenuPlace, OpensBelowAboveOrWhereItFits) {
    const IRECT button(100, 100, 160, 120);
    EXPECT_EQ(X11MenuBelow(button, 200, 300, 1000, 1000), IRECT(100, 120, 300, 420));
    EXPECT_EQ(X11MenuBelow({100, 900, 160, 920}, 200, 300, 1000, 1000), IRECT(100, 600, 300, 900));
    EXPECT_EQ(X11MenuBelow({900, 100, 960, 120}, 200, 300, 1000, 1000), IRECT(800, 120, 1000, 420));
    EXPECT_EQ(X11MenuBelow({100, 500, 160, 520}, 200, 800, 1000, 1000), IRECT(100, 200, 300, 1000));
    EXPECT_EQ(X11MenuBelow({100, 500, 160, 520}, 2000, 2000, 1000, 1000), IRECT(0, 0, 2000, 2000));
}

TEST(X11MenuPlace, SubmenusOpenRightOfTheirRowOrLeft) {
    const IRECT row(100, 100, 250, 120);
    EXPECT_EQ(X11MenuBeside(row, 200, 300, 1000, 1000), IRECT(250, 96, 450, 396));
    EXPECT_EQ(X11MenuBeside({700, 100, 850, 120}, 200, 300, 1000, 1000), IRECT(500, 96, 700, 396));
    EXPECT_EQ(X11MenuBeside({100, 900, 250, 920}, 200, 300, 1000, 1000), IRECT(250, 700, 450, 1000));
}

TEST(X11Pointer, ADoubleClickIsTheSameButtonSoonAndNear) {
    X11Pointer pointer;
    EXPECT_FALSE(pointer.Press(1, 10, 10, 1000));
    EXPECT_TRUE(pointer.Press(1, 14, 6, 1400));
    EXPECT_FALSE(pointer.Press(1, 14, 6, 1401));
    EXPECT_FALSE(pointer.Press(1, 14, 6, 1802));
    EXPECT_FALSE(pointer.Press(1, 19, 6, 1803));
    EXPECT_FALSE(pointer.Press(3, 19, 6, 1804));
    EXPECT_TRUE(pointer.Press(3, 19, 6, 1805));
    EXPECT_FALSE(pointer.Press(1, 0, 0, 0xFFFFFF00U));
    EXPECT_TRUE(pointer.Press(1, 0, 0, 10)); // the clock went around meanwhile
    pointer.Press(1, 0, 0, 20);
    pointer.Clear();
    EXPECT_FALSE(pointer.Press(1, 0, 0, 21));
}

TEST(X11Pointer, KeepsWhichButtonsAreHeld) {
    X11Pointer pointer;
    EXPECT_FALSE(pointer.AnyHeld());
    pointer.Press(1, 0, 0, 0);
    pointer.Press(3, 0, 0, 0);
    EXPECT_TRUE(pointer.Mod(0).L);
    EXPECT_TRUE(pointer.Mod(0).R);
    EXPECT_FALSE(pointer.Mod(XCB_MOD_MASK_SHIFT).C);
    EXPECT_TRUE(pointer.Mod(XCB_MOD_MASK_SHIFT).S);
    EXPECT_TRUE(pointer.Mod(XCB_MOD_MASK_CONTROL).C);
    EXPECT_TRUE(pointer.Mod(XCB_MOD_MASK_1).A);
    pointer.Release(1);
    EXPECT_FALSE(pointer.Holds(1));
    EXPECT_TRUE(pointer.Holds(3));
    EXPECT_FALSE(pointer.Holds(200));
    pointer.Clear();
    EXPECT_FALSE(pointer.AnyHeld());
}

TEST(DesktopDialogs, ColoursAreReadInEveryFormThatProgramsWrite) {
    EXPECT_EQ(DesktopDialogs::ColorOfText("#0a80ff\n"), IColor(255, 10, 128, 255));
    EXPECT_EQ(DesktopDialogs::ColorOfText("#0a0a8080ffff"), IColor(255, 10, 128, 255));
    EXPECT_EQ(DesktopDialogs::ColorOfText("rgb(10,128,255)"), IColor(255, 10, 128, 255));
    EXPECT_EQ(DesktopDialogs::ColorOfText("rgba(10,128,255,0.5)"), IColor(255, 10, 128, 255));
    for (const char* const none :
         {"", "#", "#12345", "#12345g", "rgb(1,2)", "rgb(1,2,256)", "rgb(-1,2,3)", "red"})
        EXPECT_FALSE(DesktopDialogs::ColorOfText(none).has_value()) << none;
    EXPECT_EQ(DesktopDialogs::TextOfColor(IColor(255, 10, 128, 255)), "#0a80ff");
}

TEST(DesktopDialogs, PathsArePartedAtTheLastSeparator) {
    std::string dir;
    std::string file;
    DesktopDialogs::SplitPath("/a/b c/d.fxp", dir, file);
    EXPECT_EQ(dir, "/a/b c/");
    EXPECT_EQ(file, "d.fxp");
    DesktopDialogs::SplitPath("d.fxp", dir, file);
    EXPECT_EQ(dir, "");
    EXPECT_EQ(file, "d.fxp");
    DesktopDialogs::SplitPath("/a/", dir, file);
    EXPECT_EQ(dir, "/a/");
    EXPECT_EQ(file, "");
}

TEST(DesktopDialogs, ListsArePartedAtBlanks) {
    EXPECT_EQ(DesktopDialogs::WordsOf("gw tgp fxp"), (std::vector<std::string>{"gw", "tgp", "fxp"}));
    EXPECT_EQ(DesktopDialogs::WordsOf("  a  b "), (std::vector<std::string>{"a", "b"}));
    EXPECT_TRUE(DesktopDialogs::WordsOf("").empty());
}

} // namespace Grimworks
