#include "editor/win/IGraphicsWin.h"

#include "editor/win/WinModule.h"
#include "editor/win/WindowClass.h"
#include "plugin/HostIdentity.h"
#include "plugin/IPlugBase.h"

#include <algorithm>
#include <utility>

namespace Grimworks {

namespace {

constexpr DWORD kWindowStyle = 0x50000000; ///< a visible child
constexpr UINT kCloseMessage = WM_APP + 1;
constexpr UINT kPatience = 5000; ///< ms to wait for another thread
constexpr int kHostCubase = 3;

bool IsChildWindow(HWND hwnd) {
    return (GetWindowLongPtrA(hwnd, GWL_STYLE) & WS_CHILD) != 0;
}

/// Makes a window larger by so much, where it is.
void Grow(HWND hwnd, int dX, int dY) {
    RECT rect{};
    GetWindowRect(hwnd, &rect);
    SetWindowPos(hwnd, nullptr, 0, 0, rect.right - rect.left + dX, rect.bottom - rect.top + dY,
                 SWP_NOACTIVATE | SWP_NOZORDER | SWP_NOMOVE);
}

} // namespace

IGraphicsWin::Waiting::Waiting(IGraphicsWin& forEditor) : graphics(forEditor), from(forEditor.window) {
    ++graphics.waiting;
}

IGraphicsWin::Waiting::~Waiting() {
    --graphics.waiting;
}

IGraphicsWin::~IGraphicsWin() {
    IGraphicsWin::CloseWindow();
}

bool IGraphicsWin::OpenWindow(void* parent) {
    CloseWindow();
    if (parent == nullptr || !WindowClass::Acquire(WindowProcedure)) return false;
    holdsClass = true;
    parentWindow = static_cast<HWND>(parent);
    CreateWindowExA(0, WindowClass::kName, kTitle, kWindowStyle, 0, 0, Width(), Height(), parentWindow,
                    nullptr, ThisModule(), this);
    if (window == nullptr) {
        parentWindow = nullptr;
        GiveClassBack();
        return false;
    }
    DeliverParameters(); // the first picture shows them already
    SetAllControlsDirty();
    if (TooltipsEnabled()) MakeTooltip();
    return true;
}

void IGraphicsWin::CloseWindow() {
    if (window != nullptr && GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId()) {
        CancelWaiting();
        DestroyWindow(window);
    } else if (window != nullptr) {
        // Only its own thread can take a window away.
        HWND closing = window;
        DWORD_PTR result = 0;
        if (SendMessageTimeoutA(closing, kCloseMessage, 0, 0, SMTO_NORMAL, kPatience, &result) == 0) {
            SetWindowLongPtrA(closing, GWLP_USERDATA, 0);
            OnGone();
            ReleaseMouseCapture();
        }
    }
    GiveClassBack();
}

/// Not before the window is wholly gone: a class with windows cannot be taken back.
void IGraphicsWin::GiveClassBack() {
    if (std::exchange(holdsClass, false)) WindowClass::Release();
}

bool IGraphicsWin::PrepareToGo() {
    CloseWindow();
    if (inside == 0) return true;
    // A handler on this very stack goes on in the code of this module when the host's call has come back.
    HMODULE kept = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<LPCSTR>(ThisModule()), &kept);
    return false;
}

void IGraphicsWin::OnCreate(HWND created) {
    window = created;
    SetTimer(window, kTimer, static_cast<UINT>(1000 / std::max(Fps(), 1)), nullptr);
    SetFocus(window);
}

/// The window is gone, whoever took it: it may as well have been its parent.
void IGraphicsWin::OnGone() {
    EndEdit();
    ShowMouseCursor();
    if (tooltipWindow != nullptr) DestroyWindow(std::exchange(tooltipWindow, nullptr));
    showingTooltip = false;
    tooltipIndex = -1;
    window = nullptr;
    parentWindow = nullptr;
}

/// The release of the mouse will not be told any more: the host must hear of the end all the same.
/// `handlers` counts the messages being worked on that say so. Where there are more, the gesture ends with
/// them.
void IGraphicsWin::EndDrag(int handlers) {
    if (MouseCapture() >= 0 && inside == handlers) {
        ++inside;
        OnMouseUp(MouseX(), MouseY(), IMouseMod());
        --inside;
    }
    ReleaseMouseCapture();
}

void IGraphicsWin::Resize(int newWidth, int newHeight) {
    const int dX = newWidth - Width();
    const int dY = newHeight - Height();
    if (dX == 0 && dY == 0) return;
    IGraphics::Resize(newWidth, newHeight);
    if (window == nullptr) return;
    Grow(window, dX, dY);
    const int host = Plug().GetHost();
    if (host != kHostWithParamMenu && host != kHostCubase) {
        constexpr int kLevels = 2;
        HWND above = GetParent(window);
        for (int level = 0; level < kLevels && above != nullptr && IsChildWindow(above); ++level) {
            Grow(above, dX, dY);
            above = GetParent(above);
        }
    }
    InvalidateRect(window, nullptr, FALSE);
}

void IGraphicsWin::DrawScreen(const IRECT& rect) {
    auto* source = static_cast<HDC>(DrawBuffer().getDC());
    if (window == nullptr || source == nullptr || rect.Empty()) return;
    HDC context = GetDC(window);
    if (context == nullptr) return;
    // The edit box draws itself.
    if (paramEditWindow != nullptr) ExcludeClipRect(context, editRect.L, editRect.T, editRect.R, editRect.B);
    GdiFlush();
    BitBlt(context, rect.L, rect.T, rect.W(), rect.H(), source, rect.L, rect.T, SRCCOPY);
    ReleaseDC(window, context);
}

void IGraphicsWin::HideMouseCursor() {
    if (cursorHidden) return;
    cursorHidden = true;
    GetCursorPos(&hiddenCursor);
    ShowCursor(FALSE);
}

void IGraphicsWin::ShowMouseCursor() {
    if (!cursorHidden) return;
    cursorHidden = false;
    SetCursorPos(hiddenCursor.x, hiddenCursor.y);
    ShowCursor(TRUE);
}

LRESULT CALLBACK IGraphicsWin::WindowProcedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CREATE) {
        auto* graphics = static_cast<IGraphicsWin*>(reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams);
        SetWindowLongPtrA(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(graphics));
        graphics->OnCreate(hwnd);
        return 0;
    }
    auto* graphics = reinterpret_cast<IGraphicsWin*>(GetWindowLongPtrA(hwnd, GWLP_USERDATA));
    if (graphics != nullptr && graphics->window == hwnd) {
        if (message == WM_NCDESTROY) {
            SetWindowLongPtrA(hwnd, GWLP_USERDATA, 0);
            graphics->OnGone();
            graphics->EndDrag(0);
        } else if (message == kCloseMessage) {
            graphics->CloseWindow();
            return 0;
        } else {
            ++graphics->inside;
            const auto result = graphics->OnMessage(message, wParam, lParam);
            // The host has taken the window away meanwhile, perhaps for a key in the middle of a drag.
            if (--graphics->inside == 0 && graphics->window != hwnd) graphics->EndGesture();
            if (result) return *result;
        }
    }
    return DefWindowProcA(hwnd, message, wParam, lParam);
}

std::unique_ptr<IGraphics> MakeGraphics(IPlugBase& plug, int width, int height, int fps) {
    return std::make_unique<IGraphicsWin>(plug, width, height, fps);
}

} // namespace Grimworks
