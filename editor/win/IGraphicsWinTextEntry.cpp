#include "editor/win/GdiFont.h"
#include "editor/win/IGraphicsWin.h"
#include "editor/win/WinModule.h"

#include <utility>

namespace Grimworks {

namespace {

constexpr LONG_PTR kEditMark = 0xDEADF00B;
constexpr int kWeightNormal = 0; ///< the system's choice

COLORREF SystemColor(const IColor& color) {
    return RGB(color.R, color.G, color.B);
}

DWORD EditStyle(int align) {
    switch (align) {
    case IText::AlignNear:
        return 0x50000084;
    case IText::AlignFar:
        return 0x50000086;
    default:
        return 0x50000085;
    }
}

} // namespace

void IGraphicsWin::CreateTextEntry(IControl& control, const IText& text, const IRECT& rect,
                                   const std::string& string, const IParam* param) {
    if (window == nullptr || paramEditWindow != nullptr) return;
    paramEditWindow =
        CreateWindowExA(0, "EDIT", SystemOfUtf8(string).c_str(), EditStyle(text.align), rect.L, rect.T,
                        rect.W() + 1, rect.H() + 1, window, nullptr, ThisModule(), nullptr);
    if (paramEditWindow == nullptr) return;
    editControl = &control;
    editParam = param;
    editText = text;
    editRect = {rect.L, rect.T, rect.R + 1, rect.B + 1};
    paramEditState = TextEntryState::None;
    editFont = MakeSystemFont(text, kWeightNormal);
    SendMessageA(paramEditWindow, EM_LIMITTEXT, static_cast<WPARAM>(control.TextEntryLength()), 0);
    SendMessageA(paramEditWindow, WM_SETFONT, reinterpret_cast<WPARAM>(editFont), 0);
    SendMessageA(paramEditWindow, EM_SETSEL, 0, -1);
    SetWindowLongPtrA(paramEditWindow, GWLP_USERDATA, kEditMark);
    editProc = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(paramEditWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&EditProcedure)));
    SetFocus(paramEditWindow);
}

void IGraphicsWin::ForceEndUserEdit() {
    EndEdit();
}

void IGraphicsWin::EndEdit() {
    if (paramEditWindow == nullptr) return;
    HWND ended = std::exchange(paramEditWindow, nullptr);
    if (editProc != nullptr) SetWindowLongPtrA(ended, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(editProc));
    editProc = nullptr;
    editControl = nullptr;
    editParam = nullptr;
    paramEditState = TextEntryState::None;
    DestroyWindow(ended);
    if (editFont != nullptr) DeleteObject(std::exchange(editFont, nullptr));
    const RECT shown{editRect.L, editRect.T, editRect.R, editRect.B};
    if (window != nullptr) InvalidateRect(window, &shown, FALSE);
}

void IGraphicsWin::CommitEdit() {
    std::array<char, kTextEntryMaxLength + 1> entered{};
    SendMessageA(paramEditWindow, WM_GETTEXT, entered.size(), reinterpret_cast<LPARAM>(entered.data()));
    // The control may open a dialog. A tick or the loss of the focus meanwhile must not commit once more.
    paramEditState = TextEntryState::Cancel;
    HWND committed = paramEditWindow;
    CommitTextEntry(*editControl, editParam, Utf8OfSystem(entered.data()));
    if (paramEditWindow == committed) EndEdit();
}

/// Asks the next tick to end the entry. A cancel is not taken back by the loss of the focus that follows it.
void IGraphicsWin::AskEdit(TextEntryState state) {
    if (paramEditState != TextEntryState::Cancel) paramEditState = state;
}

LRESULT IGraphicsWin::EditColors(HDC context) const {
    constexpr int kOpaque = 2;
    constexpr int kColorBrush = 18;
    SetTextColor(context, SystemColor(editText.textEntryFGColor));
    SetBkColor(context, SystemColor(editText.textEntryBGColor));
    SetBkMode(context, kOpaque);
    SetDCBrushColor(context, SystemColor(editText.textEntryBGColor));
    return reinterpret_cast<LRESULT>(GetStockObject(kColorBrush));
}

LRESULT CALLBACK IGraphicsWin::EditProcedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* graphics = reinterpret_cast<IGraphicsWin*>(GetWindowLongPtrA(GetParent(hwnd), GWLP_USERDATA));
    if (graphics == nullptr || graphics->paramEditWindow != hwnd)
        return DefWindowProcA(hwnd, message, wParam, lParam);
    if (const auto result = graphics->OnEditMessage(message, wParam, lParam)) return *result;
    return CallWindowProcA(graphics->editProc, hwnd, message, wParam, lParam);
}

std::optional<LRESULT> IGraphicsWin::OnEditMessage(UINT message, WPARAM wParam, LPARAM /*lParam*/) {
    switch (message) {
    case WM_CHAR:
        // Return and escape are told by their keys; the box would make a line of the one and beep at the
        // other.
        if (wParam == VK_RETURN || wParam == VK_ESCAPE || wParam == VK_TAB || wParam == '\n') return 0;
        if (!TextEntryTakes(editParam, static_cast<char>(wParam))) return 0;
        return std::nullopt;
    case WM_KEYDOWN:
        if (wParam == VK_RETURN) {
            AskEdit(TextEntryState::Commit);
            return 0;
        }
        if (wParam == VK_ESCAPE) {
            AskEdit(TextEntryState::Cancel);
            return 0;
        }
        return std::nullopt;
    case WM_MOUSEWHEEL:
        AskEdit(TextEntryState::Cancel);
        return 0;
    case WM_GETDLGCODE:
        return DLGC_WANTALLKEYS; // hosts that run dialogs would take return and escape away
    case WM_SETFOCUS:
        AskEdit(TextEntryState::Editing);
        return std::nullopt;
    case WM_KILLFOCUS:
        AskEdit(TextEntryState::Commit);
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

} // namespace Grimworks
