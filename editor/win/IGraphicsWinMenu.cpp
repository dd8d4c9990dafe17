#include "editor/IPopupMenu.h"
#include "editor/win/IGraphicsWin.h"
#include "editor/win/WinModule.h"

#include <memory>
#include <type_traits>

namespace Grimworks {

namespace {

struct MenuDeleter {
    void operator()(HMENU menu) const { DestroyMenu(menu); }
};
using Menu = std::unique_ptr<std::remove_pointer_t<HMENU>, MenuDeleter>;

UINT SystemFlags(const IPopupMenu::Row& row) {
    UINT flags = MF_STRING;
    if ((row.flags & IPopupMenu::Grayed) != 0) flags |= MF_GRAYED;
    if ((row.flags & IPopupMenu::Disabled) != 0) flags |= MF_DISABLED;
    if (row.IsChecked()) flags |= MF_CHECKED;
    if (row.IsSeparator()) flags |= MF_SEPARATOR;
    return flags;
}

/// The text as it is to be read: the system takes an ampersand for the mark of a short key.
std::wstring RowText(const IPopupMenu& menu, int row) {
    std::wstring text;
    for (const wchar_t unit : WideText(menu.ShownText(row))) {
        text += unit;
        if (unit == L'&') text += unit;
    }
    return text;
}

/// The menu as one of the system's. Its rows have the ids from `firstId` on, those of its submenus, each with
/// all that is below it, the ids behind.
Menu MakeMenu(IPopupMenu& menu, int firstId) {
    Menu made(CreatePopupMenu());
    if (made == nullptr) return made;
    int subId = firstId + menu.ItemCount();
    for (int i = 0; i < menu.ItemCount(); ++i) {
        const UINT flags = SystemFlags(*menu.Item(i));
        const std::wstring text = RowText(menu, i);
        IPopupMenu* below = menu.Submenu(i);
        if (below == nullptr) {
            AppendMenuW(made.get(), flags, static_cast<UINT_PTR>(firstId + i), text.c_str());
            continue;
        }
        Menu madeBelow = MakeMenu(*below, subId);
        subId += below->TotalItemCount();
        const auto handle = reinterpret_cast<UINT_PTR>(madeBelow.get());
        if (madeBelow != nullptr && AppendMenuW(made.get(), flags | MF_POPUP, handle, text.c_str()) != FALSE)
            static_cast<void>(madeBelow.release()); // goes with the menu it hangs on
    }
    return made;
}

/// The menu that holds the row of an id, which is stored there; null if there is none.
IPopupMenu* FindRow(IPopupMenu& menu, int id) {
    if (id < 0) return nullptr;
    if (id < menu.ItemCount()) {
        menu.SetChosenItem(id);
        return &menu;
    }
    id -= menu.ItemCount();
    for (int i = 0; i < menu.ItemCount(); ++i) {
        IPopupMenu* below = menu.Submenu(i);
        if (below == nullptr) continue;
        if (id < below->TotalItemCount()) return FindRow(*below, id);
        id -= below->TotalItemCount();
    }
    return nullptr;
}

} // namespace

IPopupMenu* IGraphicsWin::CreateIPopupMenu(IPopupMenu& menu, const IRECT& rect) {
    ReleaseMouseCapture();
    menu.ClearChoice();
    if (window == nullptr) return nullptr;
    ReleaseCapture();
    HideTooltip();
    const Menu made = MakeMenu(menu, 0);
    if (made == nullptr) return nullptr;
    const Waiting now(*this);
    POINT corner{rect.L, rect.B};
    ClientToScreen(window, &corner);
    inMenu = true;
    const BOOL shown = TrackPopupMenu(made.get(), TPM_LEFTALIGN, corner.x, corner.y, 0, window, nullptr);
    inMenu = false;
    if (!now.WindowStands()) return nullptr;
    MSG message{};
    const bool chosen =
        shown != FALSE && PeekMessageA(&message, window, WM_COMMAND, WM_COMMAND, PM_REMOVE) != FALSE;
    InvalidateRect(window, nullptr, FALSE);
    return chosen && HIWORD(message.wParam) == 0 ? FindRow(menu, LOWORD(message.wParam)) : nullptr;
}

/// Ends what waits inside a handler, so that it finds the window gone when it goes on.
void IGraphicsWin::CancelWaiting() {
    if (waiting == 0) return;
    if (inMenu) EndMenu();
    const auto cancel = [](HWND hwnd, LPARAM owner) -> BOOL {
        std::array<char, 8> name{};
        GetClassNameA(hwnd, name.data(), static_cast<int>(name.size()));
        const bool isDialog = std::string_view(name.data()) == "#32770";
        if (!isDialog || ::GetWindow(hwnd, GW_OWNER) != reinterpret_cast<HWND>(owner)) return TRUE;
        PostMessageA(hwnd, WM_COMMAND, IDCANCEL, 0);
        return TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), cancel, reinterpret_cast<LPARAM>(HostWindow()));
}

} // namespace Grimworks
