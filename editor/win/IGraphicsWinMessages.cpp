#include "editor/win/IGraphicsWin.h"

#include <commctrl.h>
#include <windowsx.h>

namespace Grimworks {

namespace {

IMouseMod ModOf(WPARAM keys) {
    constexpr int kAlt = 18;
    constexpr SHORT kHeld = static_cast<SHORT>(0x8000);
    return IMouseMod((keys & MK_LBUTTON) != 0, (keys & MK_RBUTTON) != 0, (keys & MK_SHIFT) != 0,
                     (keys & MK_CONTROL) != 0, (GetKeyState(kAlt) & kHeld) != 0);
}

/// Code of a key for the controls, 0 if it has none.
int KeyOf(WPARAM key) {
    const int code = static_cast<int>(key);
    if (code >= '0' && code <= '9') return KeyDigit0 + code - '0';
    if (code >= 'A' && code <= 'Z') return KeyLetterA + code - 'A';
    if (code >= VK_F1 && code <= VK_F12) return KeyF1 + code - VK_F1;
    switch (code) {
    case VK_SPACE:
        return KeySpace;
    case VK_UP:
        return KeyUp;
    case VK_DOWN:
        return KeyDown;
    case VK_LEFT:
        return KeyLeft;
    case VK_RIGHT:
        return KeyRight;
    default:
        return 0;
    }
}

} // namespace

std::optional<LRESULT> IGraphicsWin::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_TIMER:
        if (wParam != kTimer) return std::nullopt;
        OnTimer();
        return 0;
    case WM_PAINT:
        OnPaint();
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_KEYDOWN:
    case WM_KEYUP:
        OnKey(message, wParam, lParam);
        return 0;
    case WM_CTLCOLOREDIT:
        if (paramEditWindow == nullptr) return std::nullopt;
        return EditColors(reinterpret_cast<HDC>(wParam));
    case WM_CLOSE:
        // The host closes what it has opened: asked through its own window it knows of it.
        PostMessageA(parentWindow, WM_CLOSE, 0, 0);
        return 0;
    default:
        return OnMouseMessage(message, wParam, lParam);
    }
}

std::optional<LRESULT> IGraphicsWin::OnMouseMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
        OnButtonDown(wParam, lParam);
        return 0;
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
    case WM_MBUTTONUP:
        OnButtonUp(wParam, lParam);
        return 0;
    case WM_LBUTTONDBLCLK:
        OnDoubleClick(wParam, lParam);
        return 0;
    case WM_MOUSEMOVE:
        OnMove(wParam, lParam);
        return 0;
    case WM_MOUSEWHEEL:
        OnWheel(wParam, lParam);
        return 0;
    case WM_CAPTURECHANGED:
        if (reinterpret_cast<HWND>(lParam) != window) OnCaptureLost();
        return 0;
    case WM_MOUSEHOVER:
        ShowTooltip();
        return 0;
    case WM_MOUSELEAVE:
        HideTooltip();
        OnMouseOut();
        return 0;
    default:
        return std::nullopt;
    }
}

void IGraphicsWin::OnTimer() {
    if (paramEditWindow != nullptr && paramEditState == TextEntryState::Cancel) return EndEdit();
    if (paramEditWindow != nullptr && paramEditState == TextEntryState::Commit) return CommitEdit();
    const IRECT dirty = Tick();
    if (window == nullptr) return;
    // What ends the entry is kept for the next tick.
    const bool goesOn = paramEditState != TextEntryState::Cancel && paramEditState != TextEntryState::Commit;
    if (paramEditWindow != nullptr && goesOn) paramEditState = TextEntryState::Update;
    if (dirty.Empty()) return;
    const RECT invalid{dirty.L, dirty.T, dirty.R, dirty.B};
    InvalidateRect(window, &invalid, FALSE);
    if (paramEditWindow != nullptr) {
        const RECT kept{editRect.L, editRect.T, editRect.R, editRect.B};
        ValidateRect(window, &kept);
    }
    UpdateWindow(window);
}

void IGraphicsWin::OnPaint() {
    RECT rect{};
    if (GetUpdateRect(window, &rect, FALSE) != FALSE) {
        Draw(IRECT(static_cast<int>(rect.left), static_cast<int>(rect.top), static_cast<int>(rect.right),
                   static_cast<int>(rect.bottom)));
    }
    // What asked for another redraw meanwhile is dirty at the next tick.
    if (window != nullptr) ValidateRect(window, nullptr);
}

void IGraphicsWin::OnButtonDown(WPARAM wParam, LPARAM lParam) {
    HideTooltip();
    if (paramEditWindow != nullptr) return AskEdit(TextEntryState::Commit);
    SetFocus(window);
    SetCapture(window);
    OnMouseDown(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam), ModOf(wParam));
}

void IGraphicsWin::OnButtonUp(WPARAM wParam, LPARAM lParam) {
    ReleaseCapture();
    OnMouseUp(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam), ModOf(wParam));
}

void IGraphicsWin::OnDoubleClick(WPARAM wParam, LPARAM lParam) {
    HideTooltip();
    if (paramEditWindow != nullptr) return AskEdit(TextEntryState::Commit);
    if (OnMouseDblClick(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam), ModOf(wParam)) && window != nullptr)
        SetCapture(window);
}

void IGraphicsWin::OnMove(WPARAM wParam, LPARAM lParam) {
    const int x = GET_X_LPARAM(lParam);
    const int y = GET_Y_LPARAM(lParam);
    const bool held = (wParam & (MK_LBUTTON | MK_RBUTTON)) != 0;
    if (held && GetCapture() == window && paramEditWindow == nullptr) {
        if (x != MouseX() || y != MouseY()) OnMouseDrag(x, y, x - MouseX(), y - MouseY(), ModOf(wParam));
        return;
    }
    OnMouseOver(x, y, ModOf(wParam));
    if (window == nullptr) return;
    if (MouseOverIndex() != tooltipIndex) HideTooltip();
    TRACKMOUSEEVENT track{sizeof(track), TME_LEAVE, window, HOVER_DEFAULT};
    if (TooltipsEnabled()) track.dwFlags |= TME_HOVER;
    TrackMouseEvent(&track);
}

void IGraphicsWin::OnWheel(WPARAM wParam, LPARAM lParam) {
    if (paramEditWindow != nullptr) return AskEdit(TextEntryState::Cancel);
    POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    ScreenToClient(window, &point);
    OnMouseWheel(static_cast<int>(point.x), static_cast<int>(point.y), ModOf(GET_KEYSTATE_WPARAM(wParam)),
                 WheelNotches(GET_WHEEL_DELTA_WPARAM(wParam)));
}

/// Another window takes the mouse in the middle of a drag, such as a dialog of the host's or another
/// program's.
void IGraphicsWin::OnCaptureLost() {
    // The handler of a release or of a menu gives the mouse back itself.
    if (inside == 1) EndDrag(1);
}

void IGraphicsWin::OnKey(UINT message, WPARAM wParam, LPARAM lParam) {
    const int key = message == WM_KEYDOWN ? KeyOf(wParam) : 0;
    if (key != 0) {
        POINT point{};
        GetCursorPos(&point);
        ScreenToClient(window, &point);
        if (OnKeyDown(static_cast<int>(point.x), static_cast<int>(point.y), key)) return;
    }
    if (parentWindow != nullptr) SendMessageA(parentWindow, message, wParam, lParam);
}

} // namespace Grimworks
