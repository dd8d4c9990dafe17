#include "editor/x11/X11Dialog.h"

#include "editor/LICE_Draw.h"
#include "editor/LICE_IFont.h"
#include "editor/Utf8.h"
#include "editor/x11/X11Clipboard.h"
#include "editor/x11/X11Pointer.h"
#include "editor/x11/X11Style.h"

#include <algorithm>

namespace Grimworks {

namespace {

constexpr int kMargin = 16;
constexpr int kTitleHeight = 28;
constexpr int kButtonHeight = 26;
constexpr int kButtonWidth = 84;
constexpr int kButtonGap = 10;
constexpr int kFieldHeight = 24;
constexpr int kLeastWidth = 260;
constexpr int kFieldWidth = 560;

constexpr std::uint32_t kEvents = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_BUTTON_PRESS |
                                  XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_BUTTON_MOTION |
                                  XCB_EVENT_MASK_KEY_PRESS;

bool IsInput(const xcb_generic_event_t& event) {
    const int kind = X11KindOf(event);
    return kind >= XCB_KEY_PRESS && kind <= XCB_LEAVE_NOTIFY;
}

} // namespace

/// Keeps mouse and keys from the editor's window while a dialog is open on it.
class X11Dialog::Waiting final : public X11Modal {
public:
    explicit Waiting(X11Dialog& itsDialog) : X11Modal(itsDialog.Loop(), itsDialog.owner), dialog(itsDialog) {
        dialog.waiting = this;
    }
    ~Waiting() override { dialog.waiting = nullptr; }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

    bool TakesEvent(const xcb_generic_event_t& event) override {
        if (X11WindowOf(event) != dialog.over || !IsInput(event)) return false;
        if (X11KindOf(event) == XCB_KEY_PRESS) {
            const auto& key = X11As<xcb_key_press_event_t>(event);
            dialog.OnKey(dialog.Loop().Keyboard().Read(key.detail, key.state));
        }
        return true;
    }

private:
    X11Dialog& dialog;
};

X11Dialog::X11Dialog(X11Loop& itsLoop, const void* waitingFor, xcb_window_t overWindow,
                     const IRECT& windowSize)
    : X11Surface(itsLoop), owner(waitingFor), over(overWindow), overSize(windowSize) {}

int X11Dialog::Ask(const X11Question& asked) {
    question = asked;
    result = question.cancelled;
    field.Start(question.fieldText, question.fieldLimit);
    LayOut();
    if (!Create({over, size, kEvents}) || !picture.resize(size.W(), size.H())) return result;
    Show();
    Raise();
    TakeFocus();
    Redraw();
    const bool answered = Waiting(*this).Run();
    Destroy();
    return answered ? result : question.cancelled;
}

void X11Dialog::LayOut() {
    LICE_IFont* const font = Loop().Font(false);
    const int lineHeight = font != nullptr ? font->LineHeight() : 0;
    const int most = std::max(kLeastWidth, overSize.W() * 3 / 4);
    lines = X11Style::Wrap(font, question.message, most - 2 * kMargin);
    const int buttons = static_cast<int>(question.buttons.size());
    const int buttonsWidth = buttons * (kButtonWidth + kButtonGap) - kButtonGap;
    int width = std::max(kLeastWidth, X11Style::WidthOf(Loop().Font(true), question.title) + 2 * kMargin);
    for (const std::string& line : lines)
        width = std::max(width, X11Style::WidthOf(font, line) + 2 * kMargin);
    if (question.hasField) width = std::max(width, kFieldWidth);
    width = std::max(std::min(width, most), buttonsWidth + 2 * kMargin);
    int y = kTitleHeight + kMargin + static_cast<int>(lines.size()) * lineHeight + kMargin;
    if (question.hasField) {
        fieldRect = IRECT(kMargin, y, width - kMargin, y + kFieldHeight);
        y += kFieldHeight + kMargin;
    }
    buttonRects.clear();
    int x = width - kMargin - buttonsWidth;
    for (int i = 0; i < buttons; ++i) {
        buttonRects.emplace_back(x, y, x + kButtonWidth,
                                 y + kButtonHeight); // NOLINT(performance-inefficient-vector-operation)
        x += kButtonWidth + kButtonGap;
    }
    const int height = y + kButtonHeight + kMargin;
    const int left = std::max(0, (overSize.W() - width) / 2);
    const int top = std::max(0, (overSize.H() - height) / 3);
    size = IRECT(left, top, left + width, top + height);
}

X11TextFieldLook X11Dialog::FieldLook() {
    X11TextFieldLook look;
    look.font = Loop().Font(false);
    look.ground = X11Style::kSunken;
    look.ink = X11Style::kText;
    look.margin = 6;
    return look;
}

void X11Dialog::Redraw() {
    const IRECT whole(0, 0, size.W(), size.H());
    X11Style::DrawBox(picture, whole, X11Style::kBack, X11Style::kBorder);
    LICE_FillRect(&picture, 1, 1, whole.R - 2, kTitleHeight, X11Style::kRaised);
    X11Style::DrawLine(picture, Loop().Font(true), question.title,
                       IRECT(kMargin, 1, whole.R - kMargin, kTitleHeight + 1), X11Style::kText);
    LICE_IFont* const font = Loop().Font(false);
    const int lineHeight = font != nullptr ? font->LineHeight() : 0;
    int y = kTitleHeight + kMargin;
    for (const std::string& line : lines) {
        X11Style::DrawLine(picture, font, line, IRECT(kMargin, y, whole.R - kMargin, y + lineHeight),
                           X11Style::kText);
        y += lineHeight;
    }
    if (question.hasField) {
        DrawX11TextField(picture, field, FieldLook(), fieldRect, true);
        LICE_DrawRect(&picture, fieldRect.L, fieldRect.T, fieldRect.W(), fieldRect.H(), X11Style::kBorder);
    }
    for (std::size_t i = 0; i < buttonRects.size(); ++i)
        DrawButton(i);
    Put(picture, whole);
}

void X11Dialog::DrawButton(std::size_t index) {
    const bool down = pressed == static_cast<int>(index);
    const bool chosen = focused == index;
    X11Style::DrawBox(picture, buttonRects[index], down ? X11Style::kChosen : X11Style::kRaised,
                      chosen ? X11Style::kMark : X11Style::kBorder);
    X11Style::DrawLine(picture, Loop().Font(false), question.buttons[index].label, buttonRects[index],
                       X11Style::kText, LICE_TextCenter);
}

void X11Dialog::OnEvent(const xcb_generic_event_t& event) {
    switch (X11KindOf(event)) {
    case XCB_EXPOSE:
        Redraw();
        break;
    case XCB_KEY_PRESS: {
        const auto& key = X11As<xcb_key_press_event_t>(event);
        OnKey(Loop().Keyboard().Read(key.detail, key.state));
        break;
    }
    case XCB_BUTTON_PRESS:
        OnPress(X11As<xcb_button_press_event_t>(event));
        break;
    case XCB_BUTTON_RELEASE:
        OnRelease(X11As<xcb_button_release_event_t>(event));
        break;
    case XCB_SELECTION_NOTIFY:
        field.Insert(CharactersOf(X11Clipboard::Take(*this, X11As<xcb_selection_notify_event_t>(event))));
        Redraw();
        break;
    default:
        break;
    }
}

int X11Dialog::ButtonAt(int x, int y) const {
    for (std::size_t i = 0; i < buttonRects.size(); ++i) {
        if (buttonRects[i].Contains(x, y)) return static_cast<int>(i);
    }
    return -1;
}

void X11Dialog::OnPress(const xcb_button_press_event_t& event) {
    if (event.detail != X11Pointer::kLeft) return;
    pressed = ButtonAt(event.event_x, event.event_y);
    if (pressed >= 0) focused = static_cast<std::size_t>(pressed);
    if (question.hasField && fieldRect.Contains(event.event_x, event.event_y))
        field.MoveCaret(X11TextFieldPlaceAt(field, FieldLook(), fieldRect, event.event_x), false);
    Redraw();
}

void X11Dialog::OnRelease(const xcb_button_release_event_t& event) {
    if (event.detail != X11Pointer::kLeft) return;
    const int released = ButtonAt(event.event_x, event.event_y);
    const bool same = released >= 0 && released == pressed;
    pressed = -1;
    Redraw();
    if (same) Press(static_cast<std::size_t>(released));
}

void X11Dialog::Press(std::size_t button) {
    if (button < question.buttons.size()) Finish(question.buttons[button].result);
}

void X11Dialog::Finish(int value) {
    result = value;
    if (waiting != nullptr) waiting->End();
}

void X11Dialog::MoveFocus(int step) {
    const int count = static_cast<int>(question.buttons.size());
    if (count == 0) return;
    focused = static_cast<std::size_t>((static_cast<int>(focused) + step + count) % count);
    Redraw();
}

void X11Dialog::OnKey(const X11KeyPress& press) {
    switch (press.plainSymbol) {
    case X11Key::Escape:
        Finish(question.cancelled);
        return;
    case X11Key::Return:
    case X11Key::PadEnter:
        Press(focused);
        return;
    case X11Key::Tab:
        MoveFocus(press.shift ? -1 : 1);
        return;
    default:
        break;
    }
    if (question.hasField) {
        OnFieldKey(press);
        return;
    }
    switch (press.plainSymbol) {
    case X11Key::Left:
        MoveFocus(-1);
        break;
    case X11Key::Right:
        MoveFocus(1);
        break;
    case ' ':
        Press(focused);
        break;
    default:
        break;
    }
}

void X11Dialog::OnFieldKey(const X11KeyPress& press) {
    const auto outcome = field.OnKey(press);
    if (outcome == X11TextField::Outcome::Paste) X11Clipboard::Ask(*this);
    if (outcome == X11TextField::Outcome::Changed) Redraw();
}

} // namespace Grimworks
