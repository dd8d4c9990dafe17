#include "editor/IPopupMenu.h"

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

TEST(IPopupMenu, RowsKeepTheirOrderSeparatorsIncluded) {
    IPopupMenu menu;
    EXPECT_EQ(menu.AddItem("one"), 0);
    EXPECT_EQ(menu.AddSeparator(), 1);
    EXPECT_EQ(menu.AddItem("two", IPopupMenu::Checked), 2);
    ASSERT_EQ(menu.ItemCount(), 3);
    EXPECT_TRUE(menu.Item(1)->IsSeparator());
    EXPECT_FALSE(menu.Item(1)->CanBeChosen());
    EXPECT_EQ(menu.Item(2)->text, "two");
    EXPECT_TRUE(menu.Item(2)->IsChecked());
    EXPECT_TRUE(menu.Item(2)->CanBeChosen());
}

TEST(IPopupMenu, GrayedDisabledAndSubmenuRowsCannotBeChosen) {
    IPopupMenu menu;
    menu.AddItem("grayed", IPopupMenu::Grayed);
    menu.AddItem("disabled", IPopupMenu::Disabled);
    menu.AddSubmenu("more");
    for (int row = 0; row < 3; ++row)
        EXPECT_FALSE(menu.Item(row)->CanBeChosen()) << row;
}

TEST(IPopupMenu, BadIndexesAreIgnored) {
    IPopupMenu menu;
    menu.AddItem("one");
    for (const int bad : {-1, 1, 1000}) {
        EXPECT_EQ(menu.Item(bad), nullptr);
        EXPECT_EQ(menu.Submenu(bad), nullptr);
        EXPECT_EQ(menu.ShownText(bad), "");
        menu.CheckItem(bad, true);
    }
    EXPECT_FALSE(menu.Item(0)->IsChecked());
    EXPECT_EQ(menu.Submenu(0), nullptr);
}

TEST(IPopupMenu, PrefixNumbersTheRowsFromOne) {
    IPopupMenu menu;
    for (int row = 0; row < 12; ++row)
        menu.AddItem("row");
    EXPECT_EQ(menu.ShownText(0), "row");
    menu.SetPrefix(IPopupMenu::PrefixOneDigit);
    EXPECT_EQ(menu.ShownText(0), "1: row");
    EXPECT_EQ(menu.ShownText(11), "12: row");
    menu.SetPrefix(IPopupMenu::PrefixTwoDigits);
    EXPECT_EQ(menu.ShownText(0), "01: row");
    menu.SetPrefix(IPopupMenu::PrefixThreeDigits);
    EXPECT_EQ(menu.ShownText(11), "012: row");
    menu.SetPrefix(4);
    EXPECT_EQ(menu.ShownText(11), "row");
    menu.SetPrefix(IPopupMenu::PrefixTwoDigits);
    menu.AddSeparator();
    menu.AddItem("row");
    EXPECT_EQ(menu.ShownText(12), "");
    EXPECT_EQ(menu.ShownText(13), "14: row") << "a separator counts";
}

TEST(IPopupMenu, CheckMarksAndChoicesAreClearedInAllSubmenus) {
    IPopupMenu menu;
    menu.AddItem("one");
    IPopupMenu& inner = menu.AddSubmenu("more");
    IPopupMenu& innermost = inner.AddSubmenu("still more");
    innermost.AddItem("deep");
    menu.CheckItem(0, true);
    innermost.CheckItem(0, true);
    menu.SetChosenItem(0);
    innermost.SetChosenItem(0);
    menu.UncheckAll();
    menu.ClearChoice();
    EXPECT_FALSE(menu.Item(0)->IsChecked());
    EXPECT_FALSE(innermost.Item(0)->IsChecked());
    EXPECT_EQ(menu.ChosenItem(), -1);
    EXPECT_EQ(innermost.ChosenItem(), -1);
}

TEST(IPopupMenu, CountsTheRowsOfAllLevels) {
    IPopupMenu menu;
    menu.AddItem("one");
    IPopupMenu& inner = menu.AddSubmenu("more");
    inner.AddItem("a");
    inner.AddSeparator();
    inner.AddSubmenu("b").AddItem("c");
    EXPECT_EQ(menu.TotalItemCount(), 2 + 3 + 1);
    EXPECT_EQ(menu.Submenu(1), &inner);
}

TEST(IPopupMenu, CheckMarkCanBeTakenAwayAgain) {
    IPopupMenu menu;
    menu.AddItem("one", IPopupMenu::Grayed);
    menu.CheckItem(0, true);
    menu.CheckItem(0, false);
    EXPECT_EQ(menu.Item(0)->flags, IPopupMenu::Grayed);
}

} // namespace
} // namespace Grimworks
