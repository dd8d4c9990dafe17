#include "core/ParameterIds.h"
#include "plugin/IParam.h"
#include "tests/editor/x11/EditorWindow.h"

#include <atomic>
#include <string>

namespace Grimworks {

namespace {

/// A control without a parameter whose press with the right button opens a text entry over it.
class EntryWindow : public EditorWindow {
protected:
    static constexpr int kField = 60; ///< an entry of 100 by 20 stands at 150, 60

    void SetUp() override {
        EditorWindow::SetUp();
        control->SetTextEntryLength(20);
        control->onDown = [this](RecordingControl& pressed) {
            if (opens) graphics->CreateTextEntry(pressed, text, kEntry, start, param);
        };
    }

    [[nodiscard]] bool EntryIsOpen() {
        return Eventually([&] { return host.ChildrenOf(host.Editors().front()).size() == 1; });
    }
    [[nodiscard]] bool EntryIsGone() {
        return Eventually([&] { return host.ChildrenOf(host.Editors().front()).empty(); });
    }

    [[nodiscard]] bool OpenEntry() {
        if (!Open() || !PointAt(150, 150) || !User({"click", "3"}) || !EntryIsOpen()) return false;
        const xcb_window_t entry = host.ChildrenOf(host.Editors().front()).front();
        return Eventually([&] { return host.Focus() == entry; });
    }

    [[nodiscard]] static bool Type(const std::string& typed) { return User({"type", "--delay", "0", typed}); }

    const IRECT kEntry{150, kField, 250, kField + 20};
    std::atomic<bool> opens{true};
    IText text;
    std::string start = "12.5";
    const IParam* param = nullptr;
};

} // namespace

TEST_F(EntryWindow, IsOnePixelLargerThanItsRectangleToTheRightAndBelow) {
    ASSERT_TRUE(OpenEntry());
    const xcb_window_t entry = host.ChildrenOf(host.Editors().front()).front();
    EXPECT_EQ(host.PlaceOf(entry), IRECT(kLeft + 150, kTop + 60, kLeft + 251, kTop + 81));
}

TEST_F(EntryWindow, AllIsSelectedSoThatTypingReplacesAndReturnCommits) {
    ASSERT_TRUE(OpenEntry());
    ASSERT_TRUE(Type("Kick 7"));
    ASSERT_TRUE(User({"key", "Return"}));
    EXPECT_TRUE(Recorded("text Kick 7"));
    EXPECT_TRUE(EntryIsGone());
}

TEST_F(EntryWindow, WhatStoodThereCanBeEdited) {
    ASSERT_TRUE(OpenEntry());
    ASSERT_TRUE(
        User({"key", "Home", "Delete", "3", "End", "BackSpace", "8", "Left", "Left", "minus", "Return"}));
    EXPECT_TRUE(Recorded("text 32-.8"));
}

TEST_F(EntryWindow, AClickOnTheEditorCommits) {
    ASSERT_TRUE(OpenEntry());
    opens = false;
    ASSERT_TRUE(Type("by click"));
    ASSERT_TRUE(User(At(20, 20)));
    ASSERT_TRUE(User({"click", "1"}));
    EXPECT_TRUE(Recorded("text by click"));
    EXPECT_TRUE(EntryIsGone());
    EXPECT_TRUE(Ticks(2));
    EXPECT_EQ(groundRecord.CountOf("down"), 0);
}

TEST_F(EntryWindow, LosingTheKeyboardCommits) {
    ASSERT_TRUE(OpenEntry());
    ASSERT_TRUE(Type("lost"));
    host.TakeFocus();
    EXPECT_TRUE(Recorded("text lost"));
    EXPECT_TRUE(EntryIsGone());
}

TEST_F(EntryWindow, EscapeCancels) {
    ASSERT_TRUE(OpenEntry());
    ASSERT_TRUE(Type("nothing"));
    ASSERT_TRUE(User({"key", "Escape"}));
    EXPECT_TRUE(EntryIsGone());
    EXPECT_TRUE(Ticks(2));
    EXPECT_EQ(record.CountOf("text"), 0);
}

TEST_F(EntryWindow, TheMouseWheelCancelsAndTurnsNothing) {
    ASSERT_TRUE(OpenEntry());
    ASSERT_TRUE(Type("nothing"));
    ASSERT_TRUE(User({"click", "4"}));
    EXPECT_TRUE(EntryIsGone());
    EXPECT_TRUE(Ticks(2));
    EXPECT_EQ(record.CountOf("wheel"), 0);
    EXPECT_EQ(record.CountOf("text"), 0);
}

TEST_F(EntryWindow, TheWheelIsFreeForOtherControlsOnceItIsGone) {
    ASSERT_TRUE(OpenEntry());
    ASSERT_TRUE(User({"key", "Escape"}));
    ASSERT_TRUE(EntryIsGone());
    ASSERT_TRUE(PointAt(20, 20));
    ASSERT_TRUE(User({"click", "4"}));
    EXPECT_TRUE(Eventually([&] { return groundRecord.CountOf("wheel") == 1; }));
    EXPECT_EQ(record.CountOf("wheel"), 0) << "the control that opened the entry holds the mouse no longer";
}

TEST_F(EntryWindow, EndsTheGestureOfTheClickThatOpenedIt) {
    auto knob =
        std::make_unique<RecordingControl>(&plug, IRECT(100, 100, 300, 200), record, IColor(255, 9, 9, 9), 7);
    knob->onDown = control->onDown;
    graphics->AttachControl(std::move(knob));
    ASSERT_TRUE(OpenEntry());
    ASSERT_TRUE(User({"key", "Escape"}));
    ASSERT_TRUE(EntryIsGone());
    graphics->CloseWindow();
    EXPECT_EQ(plug.log, (std::vector<std::string>{"begin 7", "end 7"}));
}

TEST_F(EntryWindow, TheMouseWheelOverTheFieldCancels) {
    ASSERT_TRUE(OpenEntry());
    ASSERT_TRUE(User(At(200, 70)));
    ASSERT_TRUE(User({"click", "5"}));
    EXPECT_TRUE(EntryIsGone());
    EXPECT_TRUE(Ticks(2));
    EXPECT_EQ(record.CountOf("text"), 0);
}

TEST_F(EntryWindow, ClosingTheEditorCancels) {
    ASSERT_TRUE(OpenEntry());
    ASSERT_TRUE(Type("nothing"));
    graphics->CloseWindow();
    EXPECT_EQ(record.CountOf("text"), 0);
    ASSERT_TRUE(Open());
    EXPECT_TRUE(Ticks(1));
}

TEST_F(EntryWindow, GivesTheKeyboardBackToTheHost) {
    host.TakeFocus();
    const xcb_window_t before = host.Focus();
    ASSERT_TRUE(OpenEntry());
    ASSERT_TRUE(User({"key", "Escape"}));
    EXPECT_TRUE(EntryIsGone());
    EXPECT_TRUE(Eventually([&] { return host.Focus() == before; }));
}

TEST_F(EntryWindow, TakesNoMoreCharactersThanTheControlAllows) {
    control->SetTextEntryLength(5);
    ASSERT_TRUE(OpenEntry());
    ASSERT_TRUE(Type("123456789"));
    ASSERT_TRUE(User({"key", "Return"}));
    EXPECT_TRUE(Recorded("text 12345"));
}

TEST_F(EntryWindow, ALongerTextThatStoodThereStaysWhole) {
    start = "-1234.5678";
    control->SetTextEntryLength(5);
    ASSERT_TRUE(OpenEntry());
    ASSERT_TRUE(User({"key", "End", "9", "Return"}));
    EXPECT_TRUE(Recorded("text -1234.5678"));
}

TEST_F(EntryWindow, ANumberParameterRefusesLetters) {
    param = plug.GetParam(Osc(1, OscParam::Pan));
    ASSERT_NE(param, nullptr);
    ASSERT_TRUE(OpenEntry());
    ASSERT_TRUE(Type("a0x.2q5"));
    ASSERT_TRUE(User({"key", "Return"}));
    EXPECT_TRUE(Recorded("value 0.250000"));
}

TEST_F(EntryWindow, PastesFromTheClipboard) {
    ASSERT_TRUE(OpenEntry());
    bool pressed = false;
    host.OfferClipboard("from\nelsewhere", [&] {
        if (!pressed) pressed = User({"key", "ctrl+a", "ctrl+v"});
        return host.ClipboardAnswers() > 0;
    });
    ASSERT_TRUE(User({"key", "Return"}));
    EXPECT_TRUE(Recorded("text fromelsewhere"));
}

TEST_F(EntryWindow, ASecondEntryIsNotOpenedOverTheFirst) {
    control->onDown = [this](RecordingControl& pressed) {
        graphics->CreateTextEntry(pressed, text, kEntry, "first", nullptr);
        graphics->CreateTextEntry(pressed, text, IRECT(0, 0, 90, 20), "second", nullptr);
    };
    ASSERT_TRUE(OpenEntry());
    const auto children = host.ChildrenOf(host.Editors().front());
    ASSERT_EQ(children.size(), 1U);
    EXPECT_EQ(host.PlaceOf(children.front()).L, kLeft + 150);
    ASSERT_TRUE(User({"key", "Return"}));
    EXPECT_TRUE(Recorded("text first"));
}

TEST_F(EntryWindow, ForceEndUserEditEndsItWithoutATrace) {
    control->onDown = [this](RecordingControl& pressed) {
        graphics->CreateTextEntry(pressed, text, kEntry, "first", nullptr);
        graphics->ForceEndUserEdit();
        record.Add("ended");
    };
    ASSERT_TRUE(Open());
    ASSERT_TRUE(PointAt(150, 150));
    ASSERT_TRUE(User({"click", "3"}));
    ASSERT_TRUE(Recorded("ended"));
    EXPECT_TRUE(EntryIsGone());
    EXPECT_TRUE(Ticks(2));
    EXPECT_EQ(record.CountOf("text"), 0);
}

TEST_F(EntryWindow, CharactersOutsideOfAsciiAreTyped) {
    // A layout that changes while the editor is open.
    constexpr int kSpareKey = 250;
    ASSERT_TRUE(OpenEntry());
    host.MapKey(kSpareKey, 0xFC);
    ASSERT_TRUE(User({"key", "k", std::to_string(kSpareKey), "Return"}));
    EXPECT_TRUE(Recorded("text k\xC3\xBC"));
}

} // namespace Grimworks
