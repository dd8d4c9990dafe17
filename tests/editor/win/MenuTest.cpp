#include "editor/IPopupMenu.h"
#include "tests/editor/win/EditorWindow.h"

namespace Grimworks {

namespace {

constexpr const char* kMenuClass = "#32768";
constexpr UINT kGetMenuHandle = 0x01E1;

/// A menu that the control opens when it is clicked, with a user who answers it from its ticks.
class MenuWindow : public EditorWindow {
protected:
    void SetUp() override {
        EditorWindow::SetUp();
        control->onDown = [this](RecordingControl&) {
            returned = graphics.CreateIPopupMenu(menu, {120, 110, 180, 130});
            ended = true;
        };
    }

    /// Opens the menu, presses one key after the other and waits until it is over.
    void Choose(std::vector<WORD> keys) {
        OpenAnd([this, keys = std::move(keys)] {
            for (const WORD key : keys)
                PressKey(key);
        });
    }

    /// Opens the menu, does something once it is shown and waits until it is over.
    void OpenAnd(std::function<void()> act) {
        ended = false;
        returned = nullptr;
        bool acted = false;
        int ticks = 0;
        control->onTick = [&](RecordingControl&) {
            constexpr int kMostTicks = 250;
            if (++ticks == kMostTicks) {
                ADD_FAILURE() << "the menu stays";
                EndMenu();
            }
            if (acted || FindShown(kMenuClass) == nullptr) return;
            acted = true;
            act();
        };
        // Beside the menu, so that the mouse chooses no row.
        Click(editor, 105, 190);
        EXPECT_TRUE(PumpUntil([this] { return ended; }));
        EXPECT_TRUE(acted);
        control->onTick = nullptr;
        // The next click must not count as the second of a double click.
        Click(editor, 30, 30);
        EXPECT_TRUE(PumpUntil([this] { return groundRecord.CountOf("up 30,30") > 0; }));
        groundRecord.Clear();
    }

    IPopupMenu menu;
    IPopupMenu* returned = nullptr;
    bool ended = false;
};

} // namespace

TEST_F(MenuWindow, ARowIsChosenByKeyboard) {
    menu.AddItem("Sine");
    menu.AddItem("Saw");
    menu.AddItem("Square");
    Choose({VK_DOWN, VK_DOWN, VK_RETURN});
    EXPECT_EQ(returned, &menu);
    EXPECT_EQ(menu.ChosenItem(), 1);
    Choose({VK_DOWN, VK_RETURN});
    EXPECT_EQ(menu.ChosenItem(), 0);
    Choose({VK_UP, VK_RETURN});
    EXPECT_EQ(menu.ChosenItem(), 2);
}

TEST_F(MenuWindow, ARowIsChosenByMouse) {
    for (int i = 0; i < 4; ++i)
        menu.AddItem("Row of some length " + std::to_string(i));
    OpenAnd([] {
        HWND shown = FindShown(kMenuClass);
        RECT row{};
        GetMenuItemRect(nullptr, reinterpret_cast<HMENU>(SendMessageA(shown, kGetMenuHandle, 0, 0)), 2, &row);
        Click(nullptr, (row.left + row.right) / 2, (row.top + row.bottom) / 2);
    });
    EXPECT_EQ(returned, &menu);
    EXPECT_EQ(menu.ChosenItem(), 2);
}

TEST_F(MenuWindow, ASeparatorTakesARowIdAsWell) {
    menu.AddItem("Copy");
    menu.AddSeparator();
    menu.AddItem("Paste");
    Choose({VK_DOWN, VK_DOWN, VK_RETURN});
    EXPECT_EQ(returned, &menu);
    EXPECT_EQ(menu.ChosenItem(), 2);
}

TEST_F(MenuWindow, RowsOfSubmenusAreFoundInTheirOwnMenu) {
    menu.AddItem("First");
    IPopupMenu& kicks = menu.AddSubmenu("Kicks");
    kicks.AddItem("Kick 1");
    kicks.AddItem("Kick 2");
    IPopupMenu& deep = kicks.AddSubmenu("Deep");
    deep.AddItem("Deep 1");
    deep.AddItem("Deep 2");
    menu.AddSeparator();
    IPopupMenu& basses = menu.AddSubmenu("Basses");
    basses.AddItem("Bass 1");
    basses.AddItem("Bass 2");
    menu.AddItem("Last");
    Choose({VK_DOWN, VK_DOWN, VK_RIGHT, VK_DOWN, VK_RETURN});
    EXPECT_EQ(returned, &kicks);
    EXPECT_EQ(kicks.ChosenItem(), 1);
    Choose({VK_DOWN, VK_DOWN, VK_RIGHT, VK_UP, VK_RIGHT, VK_DOWN, VK_RETURN});
    EXPECT_EQ(returned, &deep);
    EXPECT_EQ(deep.ChosenItem(), 1);
    EXPECT_EQ(kicks.ChosenItem(), -1);
    Choose({VK_UP, VK_UP, VK_RIGHT, VK_RETURN});
    EXPECT_EQ(returned, &basses);
    EXPECT_EQ(basses.ChosenItem(), 0);
    Choose({VK_UP, VK_RETURN});
    EXPECT_EQ(returned, &menu);
    EXPECT_EQ(menu.ChosenItem(), 4);
}

TEST_F(MenuWindow, EscapeChoosesNothing) {
    menu.AddItem("Only");
    menu.SetChosenItem(0);
    Choose({VK_DOWN, VK_ESCAPE});
    EXPECT_EQ(returned, nullptr);
    EXPECT_EQ(menu.ChosenItem(), -1);
}

TEST_F(MenuWindow, ARowThatCannotBeChosenIsNot) {
    menu.AddItem("Grayed", IPopupMenu::Grayed);
    menu.AddItem("Checked", IPopupMenu::Checked);
    Choose({VK_DOWN, VK_RETURN, VK_ESCAPE, VK_ESCAPE});
    EXPECT_EQ(returned, nullptr);
}

TEST_F(MenuWindow, RowsHaveConsecutiveIdsAndShowTheirTexts) {
    menu.SetPrefix(IPopupMenu::PrefixTwoDigits);
    menu.AddItem("Thud & Boom", IPopupMenu::Checked);
    IPopupMenu& below = menu.AddSubmenu("More");
    below.AddItem("Inside", IPopupMenu::Disabled);
    menu.AddItem("Third", IPopupMenu::Grayed);
    std::vector<UINT> ids;
    std::vector<UINT> states;
    std::array<wchar_t, 60> text{};
    OpenAnd([&] {
        auto* shown = reinterpret_cast<HMENU>(SendMessageA(FindShown(kMenuClass), kGetMenuHandle, 0, 0));
        GetMenuStringW(shown, 0, text.data(), static_cast<int>(text.size()), MF_BYPOSITION);
        HMENU inside = GetSubMenu(shown, 1);
        ids = {GetMenuItemID(shown, 0), GetMenuItemID(shown, 2), GetMenuItemID(inside, 0)};
        states = {GetMenuState(shown, 0, MF_BYPOSITION) & 0xFFU,
                  GetMenuState(shown, 2, MF_BYPOSITION) & 0xFFU,
                  GetMenuState(inside, 0, MF_BYPOSITION) & 0xFFU};
        PressKey(VK_ESCAPE);
    });
    EXPECT_EQ(ids, (std::vector<UINT>{0, 2, 3}));
    EXPECT_EQ(states, (std::vector<UINT>{MF_CHECKED, MF_GRAYED, MF_DISABLED}));
    EXPECT_EQ(std::wstring(text.data()), L"01: Thud && Boom");
}

TEST_F(MenuWindow, OpensAtTheLowerLeftOfItsRectangle) {
    menu.AddItem("Only");
    RECT place{};
    OpenAnd([&] {
        GetWindowRect(FindShown(kMenuClass), &place);
        PressKey(VK_ESCAPE);
    });
    POINT corner{120, 130};
    ClientToScreen(editor, &corner);
    EXPECT_EQ(place.left, corner.x);
    EXPECT_EQ(place.top, corner.y);
}

TEST_F(MenuWindow, TheEditorTicksBehindTheMenu) {
    menu.AddItem("Only");
    int ticks = 0;
    OpenAnd([&] {
        control->onTick = [&](RecordingControl&) {
            if (++ticks == 3) PressKey(VK_ESCAPE);
        };
    });
    EXPECT_GE(ticks, 3);
}

TEST_F(MenuWindow, TheHostMayCloseTheEditorBehindTheMenu) {
    menu.AddItem("Only");
    bool acted = false;
    control->onTick = [&](RecordingControl&) {
        if (acted || FindShown(kMenuClass) == nullptr) return;
        acted = true;
        PressKey(VK_DOWN);
        graphics.CloseWindow();
    };
    Click(editor, 105, 190);
    EXPECT_TRUE(PumpUntil([this] { return ended; }));
    EXPECT_TRUE(acted);
    EXPECT_EQ(returned, nullptr);
    EXPECT_FALSE(graphics.WindowIsOpen());
    EXPECT_TRUE(PumpUntil([] { return FindShown(kMenuClass) == nullptr; }));
}

TEST_F(MenuWindow, AMenuWithoutAWindowChoosesNothing) {
    menu.AddItem("Only");
    menu.SetChosenItem(0);
    graphics.CloseWindow();
    EXPECT_EQ(graphics.CreateIPopupMenu(menu, {0, 0, 10, 10}), nullptr);
    EXPECT_EQ(menu.ChosenItem(), -1);
}

} // namespace Grimworks
