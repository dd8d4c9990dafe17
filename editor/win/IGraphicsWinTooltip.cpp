#include "editor/win/IGraphicsWin.h"
#include "editor/win/WinModule.h"

#include <commctrl.h>

namespace Grimworks {

namespace {

/// The one tool of the tooltip window: the whole editor, with a text that is set when it is shown.
TTTOOLINFOW ToolOf(HWND window) {
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V2_SIZE; // older versions of the system's controls know no larger one
    tool.uFlags = TTF_IDISHWND | TTF_TRACK | TTF_ABSOLUTE;
    tool.hwnd = window;
    tool.uId = reinterpret_cast<UINT_PTR>(window);
    return tool;
}

LPARAM Address(TTTOOLINFOW& tool) {
    return reinterpret_cast<LPARAM>(&tool);
}

} // namespace

void IGraphicsWin::MakeTooltip() {
    INITCOMMONCONTROLSEX wanted{sizeof(wanted), ICC_TAB_CLASSES};
    if (InitCommonControlsEx(&wanted) != FALSE) {
        tooltipWindow = CreateWindowExA(WS_EX_TOPMOST, "tooltips_class32", nullptr,
                                        WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT, CW_USEDEFAULT,
                                        CW_USEDEFAULT, CW_USEDEFAULT, window, nullptr, ThisModule(), nullptr);
    }
    if (tooltipWindow == nullptr) return EnableTooltips(false);
    TTTOOLINFOW tool = ToolOf(window);
    std::wstring nothing;
    tool.lpszText = nothing.data();
    SendMessageW(tooltipWindow, TTM_ADDTOOLW, 0, Address(tool));
}

void IGraphicsWin::ShowTooltip() {
    const int index = MouseOverIndex();
    if (tooltipWindow == nullptr || paramEditWindow != nullptr || GetCapture() == window) return;
    if (showingTooltip || index < 0 || index == tooltipIndex) return;
    std::wstring text = WideText(TooltipText(index));
    if (text.empty()) return;
    tooltipIndex = index;
    TTTOOLINFOW tool = ToolOf(window);
    tool.lpszText = text.data();
    SendMessageW(tooltipWindow, TTM_UPDATETIPTEXTW, 0, Address(tool));
    constexpr int kBelowCursor = 20;
    POINT point{};
    GetCursorPos(&point);
    SendMessageW(tooltipWindow, TTM_TRACKPOSITION, 0, MAKELPARAM(point.x, point.y + kBelowCursor));
    SendMessageW(tooltipWindow, TTM_TRACKACTIVATE, TRUE, Address(tool));
    showingTooltip = true;
}

void IGraphicsWin::HideTooltip() {
    tooltipIndex = -1;
    if (!showingTooltip) return;
    showingTooltip = false;
    if (tooltipWindow == nullptr) return;
    TTTOOLINFOW tool = ToolOf(window);
    SendMessageW(tooltipWindow, TTM_TRACKACTIVATE, FALSE, Address(tool));
}

} // namespace Grimworks
