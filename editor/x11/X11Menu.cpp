#include "editor/x11/X11Menu.h"

#include "editor/x11/X11Pointer.h"

#include <cstdlib>

namespace Grimworks {

namespace {

/// How long the mouse rests on a row before its submenu opens, or the one beside it closes.
constexpr std::chrono::milliseconds kSubmenuTime{150};
constexpr int kMostGrabTries = 25;
constexpr int kTremble = 4;

} // namespace

X11Menu::~X11Menu() {
    xcb_connection_t* const display = Loop().Connection().Get();
    if (hasMouse) xcb_ungrab_pointer(display, XCB_CURRENT_TIME);
    if (hasKeys) xcb_ungrab_keyboard(display, XCB_CURRENT_TIME);
    CloseAbove(0);
    Loop().Connection().Flush();
}

IPopupMenu* X11Menu::Choose(IPopupMenu& menu, const IRECT& rect) {
    if (menu.ItemCount() == 0) return nullptr;
    auto pane = std::make_unique<X11MenuPane>(Loop(), menu);
    if (!pane->Open(rect, false)) return nullptr;
    panes.push_back(std::move(pane));
    NoteMousePlace();
    return Run() ? result : nullptr;
}

void X11Menu::NoteMousePlace() {
    xcb_connection_t* const display = Loop().Connection().Get();
    const X11Reply<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(display, xcb_query_pointer(display, panes.front()->Id()), nullptr));
    if (reply == nullptr) return;
    openedAtX = reply->root_x;
    openedAtY = reply->root_y;
}

void X11Menu::GrabInput() {
    // The host's own grab, of the click that opened the menu, may take a moment to end.
    if ((hasMouse && hasKeys) || grabTries >= kMostGrabTries) return;
    ++grabTries;
    xcb_connection_t* const display = Loop().Connection().Get();
    const xcb_window_t window = panes.front()->Id();
    if (!hasMouse) {
        constexpr std::uint16_t kEvents =
            XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;
        const X11Reply<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(
            display,
            xcb_grab_pointer(display, 0, window, kEvents, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_NONE,
                             XCB_NONE, XCB_CURRENT_TIME),
            nullptr));
        hasMouse = reply != nullptr && reply->status == XCB_GRAB_STATUS_SUCCESS;
    }
    if (!hasKeys) {
        const X11Reply<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(
            display,
            xcb_grab_keyboard(display, 0, window, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
            nullptr));
        hasKeys = reply != nullptr && reply->status == XCB_GRAB_STATUS_SUCCESS;
    }
}

void X11Menu::OnStep() {
    GrabInput();
    if (!hovers || Clock::now() - hoversSince < kSubmenuTime) return;
    hovers = false;
    FollowHighlight(hoverLevel);
}

bool X11Menu::TakesEvent(const xcb_generic_event_t& event) {
    switch (X11KindOf(event)) {
    case XCB_MOTION_NOTIFY: {
        const auto& motion = X11As<xcb_motion_notify_event_t>(event);
        OnMotion(motion.root_x, motion.root_y);
        return true;
    }
    case XCB_BUTTON_PRESS: {
        const auto& press = X11As<xcb_button_press_event_t>(event);
        OnPress(press.detail, press.root_x, press.root_y);
        return true;
    }
    case XCB_BUTTON_RELEASE: {
        const auto& release = X11As<xcb_button_release_event_t>(event);
        if (release.detail <= X11Pointer::kRight) OnRelease(release.root_x, release.root_y);
        return true;
    }
    case XCB_KEY_PRESS: {
        const auto& key = X11As<xcb_key_press_event_t>(event);
        OnKey(Loop().Keyboard().Read(key.detail, key.state));
        return true;
    }
    case XCB_KEY_RELEASE:
    case XCB_ENTER_NOTIFY:
    case XCB_LEAVE_NOTIFY:
        return true;
    default:
        return false;
    }
}

int X11Menu::PaneAt(int x, int y) const {
    for (int i = static_cast<int>(panes.size()) - 1; i >= 0; --i) {
        if (panes[static_cast<std::size_t>(i)]->Contains(x, y)) return i;
    }
    return -1;
}

void X11Menu::OnMotion(int x, int y) {
    if (std::abs(x - openedAtX) > kTremble || std::abs(y - openedAtY) > kTremble) mayRelease = true;
    HighlightAt(x, y);
}

void X11Menu::HighlightAt(int x, int y) {
    const int level = PaneAt(x, y);
    if (level < 0) return;
    X11MenuPane& pane = *panes[static_cast<std::size_t>(level)];
    const int row = pane.RowAt(x, y);
    if (row == pane.Highlighted()) return;
    pane.Highlight(row);
    hovers = true;
    hoverLevel = static_cast<std::size_t>(level);
    hoversSince = Clock::now();
}

void X11Menu::OnPress(int button, int x, int y) {
    const int level = PaneAt(x, y);
    if (button == X11Pointer::kWheelUp || button == X11Pointer::kWheelDown) {
        if (level >= 0) {
            CloseAbove(static_cast<std::size_t>(level) + 1);
            Top().Scroll(button == X11Pointer::kWheelUp ? -1 : 1);
        }
        return;
    }
    if (button > X11Pointer::kRight) return;
    if (level < 0) {
        End();
        return;
    }
    mayRelease = true;
    HighlightAt(x, y);
    hovers = false;
    FollowHighlight(static_cast<std::size_t>(level));
}

void X11Menu::OnRelease(int x, int y) {
    const int level = PaneAt(x, y);
    if (level < 0 || !mayRelease) return;
    X11MenuPane& pane = *panes[static_cast<std::size_t>(level)];
    ChooseRow(pane, pane.RowAt(x, y));
}

void X11Menu::ChooseRow(X11MenuPane& pane, int row) {
    const IPopupMenu::Row* const item = pane.Menu().Item(row);
    if (item == nullptr || !item->CanBeChosen()) return;
    pane.Menu().SetChosenItem(row);
    result = &pane.Menu();
    End();
}

void X11Menu::CloseAbove(std::size_t level) {
    while (panes.size() > level)
        panes.pop_back();
}

void X11Menu::FollowHighlight(std::size_t level) {
    if (level >= panes.size()) return;
    X11MenuPane& pane = *panes[level];
    IPopupMenu* const wanted = pane.Menu().Submenu(pane.Highlighted());
    if (level + 1 < panes.size() && &panes[level + 1]->Menu() == wanted) {
        CloseAbove(level + 2);
        return;
    }
    CloseAbove(level + 1);
    OpenSubmenu(false);
}

void X11Menu::OpenSubmenu(bool highlightFirst) {
    X11MenuPane& pane = Top();
    IPopupMenu* const submenu = pane.Menu().Submenu(pane.Highlighted());
    if (submenu == nullptr || submenu->ItemCount() == 0) return;
    auto opened = std::make_unique<X11MenuPane>(Loop(), *submenu);
    if (!opened->Open(pane.ScreenRectOf(pane.Highlighted()), true)) return;
    if (highlightFirst) opened->Highlight(opened->NextRow(-1, 1));
    panes.push_back(std::move(opened));
}

void X11Menu::OnKey(const X11KeyPress& press) {
    hovers = false;
    X11MenuPane& pane = Top();
    const int row = pane.Highlighted();
    switch (press.plainSymbol) {
    case X11Key::Down:
        pane.Highlight(pane.NextRow(row, 1));
        return;
    case X11Key::Up:
        pane.Highlight(pane.NextRow(row, -1));
        return;
    case X11Key::Home:
        pane.Highlight(pane.NextRow(-1, 1));
        return;
    case X11Key::End:
        pane.Highlight(pane.NextRow(-1, -1));
        return;
    case X11Key::Right:
        OnSideKey(1);
        return;
    case X11Key::Left:
        OnSideKey(-1);
        return;
    case X11Key::Return:
    case X11Key::PadEnter:
    case ' ':
        if (pane.Menu().Submenu(row) != nullptr) {
            OpenSubmenu(true);
        } else {
            ChooseRow(pane, row);
        }
        return;
    case X11Key::Escape:
        if (panes.size() > 1) {
            panes.pop_back();
        } else {
            End();
        }
        return;
    default:
        break;
    }
    if (press.character == 0 || press.control) return;
    const int found = pane.NextRowWith(press.character);
    if (found >= 0) pane.Highlight(found);
}

void X11Menu::OnSideKey(int columnStep) {
    X11MenuPane& pane = Top();
    if (columnStep > 0 && pane.Menu().Submenu(pane.Highlighted()) != nullptr) {
        OpenSubmenu(true);
        return;
    }
    const int beside = pane.RowBeside(columnStep);
    if (beside >= 0) {
        pane.Highlight(beside);
    } else if (columnStep < 0 && panes.size() > 1) {
        panes.pop_back();
    }
}

} // namespace Grimworks
