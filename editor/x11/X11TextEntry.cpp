#include "editor/x11/X11TextEntry.h"

#include "editor/IControl.h"
#include "editor/LICE_CachedFont.h"
#include "editor/Utf8.h"
#include "editor/x11/X11Clipboard.h"
#include "editor/x11/X11Pointer.h"
#include "editor/x11/X11Style.h"

#include <algorithm>

namespace Grimworks {

namespace {

constexpr std::uint32_t kEvents = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_BUTTON_PRESS |
                                  XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_BUTTON_MOTION |
                                  XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_FOCUS_CHANGE;

/// The caret is shown and hidden for so many ticks.
constexpr int kBlinkTicks = 13;

X11TextField::Filter FilterOf(const IParam* param) {
    return [param](char32_t character) {
        return param == nullptr || (character < 0x80 && TextEntryTakes(param, static_cast<char>(character)));
    };
}

} // namespace

X11TextEntry::X11TextEntry(X11Loop& itsLoop, IControl& itsControl, const IText& text, const IParam* itsParam)
    : X11Surface(itsLoop), control(itsControl), param(itsParam), font(LICE_MakeFont(text)) {
    look.font = font.get();
    look.ground = X11PixelOf(text.textEntryBGColor);
    look.ink = X11PixelOf(text.textEntryFGColor);
    look.align = text.align;
}

bool X11TextEntry::Open(xcb_window_t parent, const IRECT& rect, const std::string& string) {
    const IRECT place(rect.L, rect.T, rect.R + 1, rect.B + 1);
    if (!Create({parent, place, kEvents}) || !picture.resize(place.W(), place.H())) return false;
    field.Start(string, std::min(control.TextEntryLength(), kTextEntryMaxLength), FilterOf(param));
    state = TextEntryState::Editing;
    Show();
    TakeFocus();
    Redraw();
    return true;
}

void X11TextEntry::OnEvent(const xcb_generic_event_t& event) {
    switch (X11KindOf(event)) {
    case XCB_EXPOSE:
        Redraw();
        break;
    case XCB_KEY_PRESS: {
        const auto& key = X11As<xcb_key_press_event_t>(event);
        OnKey(Loop().Keyboard().Read(key.detail, key.state));
        break;
    }
    case XCB_BUTTON_PRESS: {
        const auto& press = X11As<xcb_button_press_event_t>(event);
        const bool wheel = press.detail == X11Pointer::kWheelUp || press.detail == X11Pointer::kWheelDown;
        if (wheel) Cancel();
        selecting = press.detail == X11Pointer::kLeft;
        if (selecting) OnMouse(press.event_x, (press.state & XCB_MOD_MASK_SHIFT) != 0);
        break;
    }
    case XCB_BUTTON_RELEASE:
        selecting = false;
        break;
    case XCB_MOTION_NOTIFY:
        if (selecting) OnMouse(X11As<xcb_motion_notify_event_t>(event).event_x, true);
        break;
    case XCB_FOCUS_IN:
    case XCB_FOCUS_OUT: {
        const auto& focus = X11As<xcb_focus_in_event_t>(event);
        OnFocus(X11KindOf(event) == XCB_FOCUS_IN, focus.mode, focus.detail);
        break;
    }
    case XCB_SELECTION_NOTIFY:
        field.Insert(CharactersOf(X11Clipboard::Take(*this, X11As<xcb_selection_notify_event_t>(event))));
        Redraw();
        break;
    default:
        break;
    }
}

void X11TextEntry::OnFocus(bool got, std::uint8_t mode, std::uint8_t detail) {
    const bool ofGrab = mode == XCB_NOTIFY_MODE_GRAB || mode == XCB_NOTIFY_MODE_UNGRAB;
    if (ofGrab || detail == XCB_NOTIFY_DETAIL_POINTER || detail == XCB_NOTIFY_DETAIL_INFERIOR) return;
    const bool ends = state == TextEntryState::Commit || state == TextEntryState::Cancel;
    if (got && !ends) state = TextEntryState::Editing;
    if (!got && !ends) Commit();
}

void X11TextEntry::OnKey(const X11KeyPress& press) {
    ticks = 0;
    switch (field.OnKey(press)) {
    case X11TextField::Outcome::Commit:
        Commit();
        break;
    case X11TextField::Outcome::Cancel:
        Cancel();
        break;
    case X11TextField::Outcome::Paste:
        X11Clipboard::Ask(*this);
        break;
    case X11TextField::Outcome::Changed:
        Redraw();
        break;
    case X11TextField::Outcome::Nothing:
        break;
    }
}

void X11TextEntry::OnMouse(int x, bool select) {
    const IRECT whole(0, 0, picture.getWidth(), picture.getHeight());
    field.MoveCaret(X11TextFieldPlaceAt(field, look, whole, x), select);
    ticks = 0;
    Redraw();
}

void X11TextEntry::Tick() {
    if (state == TextEntryState::Editing) state = TextEntryState::Update;
    ++ticks;
    if (ticks % kBlinkTicks == 0) Redraw();
}

void X11TextEntry::Redraw() {
    const IRECT whole(0, 0, picture.getWidth(), picture.getHeight());
    DrawX11TextField(picture, field, look, whole, ticks / kBlinkTicks % 2 == 0);
    Put(picture, whole);
}

} // namespace Grimworks
