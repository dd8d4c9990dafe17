#include "plugin/IParam.h"
#include "tests/editor/win/EditorWindow.h"

#include <cmath>

namespace Grimworks {

namespace {

/// A text entry over the control of the fixture.
class TextEntryWindow : public EditorWindow {
protected:
    static constexpr int kChoice = 0;

    /// Opens the entry with a text; the box has it selected.
    void Enter(const std::string& text, const IParam* param = nullptr, int align = IText::AlignCenter) {
        IText look;
        look.align = align;
        look.textEntryFGColor = {255, 255, 255, 0};
        look.textEntryBGColor = {255, 0, 0, 255};
        graphics.CreateTextEntry(*control, look, {110, 120, 200, 140}, text, param);
        ASSERT_NE(EditBox(), nullptr);
        ASSERT_TRUE(PumpUntil([this] { return GetFocus() == EditBox(); }));
    }

    [[nodiscard]] std::string Entered() const {
        std::array<char, 80> text{};
        SendMessageA(EditBox(), WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
        return text.data();
    }

    [[nodiscard]] bool Shows(const std::string& text) {
        const bool shown = PumpUntil([&] { return Entered() == text; });
        EXPECT_TRUE(shown) << "shows " << Entered();
        return shown;
    }

    [[nodiscard]] bool Closed() {
        return PumpUntil([this] { return EditBox() == nullptr; });
    }

    /// The first parameter of a kind.
    [[nodiscard]] const IParam* ParamOf(IParam::Type type) {
        for (int id = 0; id < plug.ParameterCount(); ++id) {
            if (plug.GetParam(id)->GetType() == type) return plug.GetParam(id);
        }
        return nullptr;
    }
};

} // namespace

TEST_F(TextEntryWindow, HasTheStyleOfItsAlignment) {
    for (const auto& [align, style] :
         {std::pair{0, 0x50000084}, std::pair{1, 0x50000085}, std::pair{2, 0x50000086}}) {
        Enter("text", nullptr, align);
        EXPECT_EQ(GetWindowLongPtrA(EditBox(), GWL_STYLE), style);
        EXPECT_EQ(GetWindowLongPtrA(EditBox(), GWLP_USERDATA), static_cast<LONG_PTR>(0xDEADF00B));
        graphics.ForceEndUserEdit();
        EXPECT_EQ(EditBox(), nullptr);
    }
}

TEST_F(TextEntryWindow, IsOnePixelLargerToTheRightAndBottom) {
    Enter("text");
    RECT rect{};
    GetWindowRect(EditBox(), &rect);
    POINT corner{rect.left, rect.top};
    ScreenToClient(editor, &corner);
    EXPECT_EQ(corner.x, 110);
    EXPECT_EQ(corner.y, 120);
    EXPECT_EQ(rect.right - rect.left, 91);
    EXPECT_EQ(rect.bottom - rect.top, 21);
}

TEST_F(TextEntryWindow, StartsWithEverythingSelected) {
    Enter("old");
    Type("new");
    EXPECT_TRUE(Shows("new"));
}

TEST_F(TextEntryWindow, ReturnCommits) {
    Enter("old");
    Type("abc");
    ASSERT_TRUE(Shows("abc"));
    PressKey(VK_RETURN);
    EXPECT_TRUE(Recorded("text abc"));
    EXPECT_TRUE(Closed());
    EXPECT_EQ(record.CountOf("text"), 1);
}

TEST_F(TextEntryWindow, AClickOnTheEditorCommits) {
    Enter("old");
    Type("abc");
    ASSERT_TRUE(Shows("abc"));
    Click(editor, 30, 30);
    EXPECT_TRUE(Recorded("text abc"));
    EXPECT_TRUE(Closed());
    EXPECT_EQ(groundRecord.CountOf("down"), 0) << "the click is spent";
}

TEST_F(TextEntryWindow, TheMouseWheelCancels) {
    Enter("old");
    Type("abc");
    ASSERT_TRUE(Shows("abc"));
    MoveMouse(editor, 30, 30);
    Wheel(120);
    EXPECT_TRUE(Closed());
    ASSERT_TRUE(Ticks(2));
    EXPECT_EQ(record.CountOf("text"), 0);
    EXPECT_EQ(groundRecord.CountOf("wheel"), 0);
}

TEST_F(TextEntryWindow, TheMouseWheelOverTheBoxCancelsToo) {
    Enter("old");
    MoveMouse(editor, 150, 130);
    Wheel(-120);
    EXPECT_TRUE(Closed());
    ASSERT_TRUE(Ticks(2));
    EXPECT_EQ(record.CountOf("text"), 0);
}

TEST_F(TextEntryWindow, EscapeCancels) {
    Enter("old");
    Type("abc");
    ASSERT_TRUE(Shows("abc"));
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(Closed());
    ASSERT_TRUE(Ticks(2));
    EXPECT_EQ(record.CountOf("text"), 0);
}

TEST_F(TextEntryWindow, LosingTheFocusCommits) {
    Enter("old");
    Type("abc");
    ASSERT_TRUE(Shows("abc"));
    SetFocus(host.Window());
    EXPECT_TRUE(Recorded("text abc"));
    EXPECT_TRUE(Closed());
}

TEST_F(TextEntryWindow, CommitsOnceWhileItsControlAsksSomething) {
    Enter("old");
    control->onText = [this](RecordingControl&) {
        SetFocus(host.Window()); // as a dialog does
        EXPECT_TRUE(Ticks(3));
    };
    PressKey(VK_RETURN);
    EXPECT_TRUE(Closed());
    ASSERT_TRUE(Ticks(2));
    EXPECT_EQ(record.CountOf("text"), 1);
}

TEST_F(TextEntryWindow, ACommitDuringATickIsDoneAtTheNext) {
    Enter("old");
    control->onTick = [this](RecordingControl&) {
        if (EditBox() == nullptr) return;
        control->SetDirty(false);
        SendMessageA(EditBox(), WM_KEYDOWN, VK_RETURN, 0);
    };
    EXPECT_TRUE(Closed());
    EXPECT_EQ(record.CountOf("text old"), 1);
}

TEST_F(TextEntryWindow, ALetterBeyondAsciiIsOfferedAndToldInUtf8) {
    Enter("K\xC3\xAFlck");
    EXPECT_EQ(Entered(), "K\xEFlck"); // as the system of these tests has its letters
    PressKey(VK_RETURN);
    EXPECT_TRUE(Recorded("text K\xC3\xAFlck"));
}

TEST_F(TextEntryWindow, LosingTheFocusDoesNotTakeACancelBack) {
    Enter("old");
    HWND box = EditBox();
    SendMessageA(box, WM_KEYDOWN, VK_ESCAPE, 0);
    SetFocus(host.Window());
    EXPECT_TRUE(Closed());
    ASSERT_TRUE(Ticks(2));
    EXPECT_EQ(record.CountOf("text"), 0);
}

TEST_F(TextEntryWindow, ASecondEntryIsNotOpenedBesideTheFirst) {
    Enter("first");
    HWND box = EditBox();
    graphics.CreateTextEntry(*control, IText(), {0, 0, 50, 20}, "second", nullptr);
    EXPECT_EQ(FindWindowExA(editor, box, "EDIT", nullptr), nullptr);
    EXPECT_EQ(Entered(), "first");
}

TEST_F(TextEntryWindow, TakesSoManyCharactersAsTheControlAllows) {
    control->SetTextEntryLength(5);
    Enter("");
    Type("1234567");
    EXPECT_TRUE(Shows("12345"));
}

TEST_F(TextEntryWindow, ReadsThirtyTwoCharactersAtMost) {
    control->SetTextEntryLength(40);
    Enter("", nullptr, IText::AlignNear); // others take no more than fits the box
    Type("abcdefghijklmnopqrstuvwxyz0123456789");
    ASSERT_TRUE(Shows("abcdefghijklmnopqrstuvwxyz0123456789"));
    PressKey(VK_RETURN);
    EXPECT_TRUE(Recorded("text abcdefghijklmnopqrstuvwxyz012345"));
}

TEST_F(TextEntryWindow, ANumberTakesNothingButDigitsSignsAndThePoint) {
    const IParam* param = ParamOf(IParam::Type::Double);
    ASSERT_NE(param, nullptr);
    Enter("0", param);
    Type("-x1,a.+5e");
    EXPECT_TRUE(Shows("-1.+5"));
    PressKey(VK_BACK);
    EXPECT_TRUE(Shows("-1.+"));
}

TEST_F(TextEntryWindow, AWholeNumberTakesNoPoint) {
    for (const auto type : {IParam::Type::Bool, IParam::Type::Int, IParam::Type::Enum}) {
        IParam param;
        param.SetType(type);
        Enter("0", &param);
        Type("+1.x2-");
        EXPECT_TRUE(Shows("+12-"));
        graphics.ForceEndUserEdit();
    }
}

TEST_F(TextEntryWindow, ANumberGoesToTheControlLimitedAndNormalised) {
    const IParam* param = ParamOf(IParam::Type::Double);
    ASSERT_NE(param, nullptr);
    Enter("0", param);
    Type("99999.");
    ASSERT_TRUE(Shows("99999."));
    PressKey(VK_RETURN);
    EXPECT_TRUE(Recorded("value " + std::to_string(1.0)));
    EXPECT_TRUE(Closed());
}

TEST_F(TextEntryWindow, ShowsTheTextsOwnColours) {
    Enter("");
    ASSERT_TRUE(PumpUntil([&] { return Grab(editor, kWidth, kHeight)[136 * kWidth + 195] == 0x0000FF; }));
    const HDC context = GetDC(EditBox());
    const LRESULT brush = SendMessageA(editor, WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(context),
                                       reinterpret_cast<LPARAM>(EditBox()));
    EXPECT_EQ(brush, reinterpret_cast<LRESULT>(GetStockObject(18)));
    EXPECT_EQ(GetTextColor(context), RGB(255, 255, 0));
    EXPECT_EQ(GetBkColor(context), RGB(0, 0, 255));
    EXPECT_EQ(GetBkMode(context), 2);
    ReleaseDC(EditBox(), context);
}

TEST_F(TextEntryWindow, TheEditorGoesOnBesideItAndDoesNotDrawOverIt) {
    Enter("");
    ASSERT_TRUE(PumpUntil([&] { return Grab(editor, kWidth, kHeight)[136 * kWidth + 195] == 0x0000FF; }));
    record.Clear();
    for (int i = 0; i < 3; ++i) {
        graphics.SetAllControlsDirty();
        ASSERT_TRUE(PumpUntil([&] { return record.CountOf("draw") > i; }));
        const auto seen = Grab(editor, kWidth, kHeight);
        EXPECT_EQ(seen[136 * kWidth + 195], 0x0000FFU);
        EXPECT_EQ(seen[150 * kWidth + 150], 0x5A28A0U);
    }
}

TEST_F(TextEntryWindow, ClosingTheEditorEndsItWithoutATrace) {
    Enter("old");
    Type("abc");
    ASSERT_TRUE(Shows("abc"));
    graphics.CloseWindow();
    EXPECT_EQ(record.CountOf("text"), 0);
    ASSERT_TRUE(graphics.OpenWindow(host.Window()));
    editor = static_cast<HWND>(graphics.GetWindow());
    EXPECT_EQ(EditBox(), nullptr);
    EXPECT_TRUE(Ticks(2));
    EXPECT_EQ(record.CountOf("text"), 0);
}

TEST_F(TextEntryWindow, ADialogHostLeavesReturnAndEscapeToTheBox) {
    Enter("old");
    EXPECT_EQ(SendMessageA(EditBox(), WM_GETDLGCODE, 0, 0) & DLGC_WANTALLKEYS, DLGC_WANTALLKEYS);
}

} // namespace Grimworks
