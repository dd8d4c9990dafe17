#include "editor/win/IGraphicsWin.h"
#include "editor/win/WinModule.h"

#include <algorithm>
#include <commdlg.h>
#include <shellapi.h>
#include <wininet.h>

namespace Grimworks {

namespace {

constexpr std::size_t kPathLength = 4096;

/// Joins a folder, which ends with its separator, and a file's name.
std::string Joined(const std::string& dir, const std::string& file) {
    std::array<char, kPathLength> path{};
    std::snprintf(path.data(), path.size(), "%s%s", dir.c_str(), file.c_str());
    return path.data();
}

/// The dialog's list of kinds of files from extensions such as "gw tgp fxp": each text ends with a zero.
std::string FilterOf(const std::string& extensions) {
    std::string patterns;
    std::size_t start = 0;
    while (start < extensions.size()) {
        const std::size_t end = std::min(extensions.find(' ', start), extensions.size());
        if (end > start) {
            if (!patterns.empty()) patterns += ';';
            patterns += "*." + extensions.substr(start, end - start);
        }
        start = end + 1;
    }
    if (patterns.empty()) patterns = "*.*";
    return patterns + '\0' + patterns + '\0';
}

std::string FirstOf(const std::string& extensions) {
    return extensions.substr(0, extensions.find(' '));
}

/// The dialog takes no name with characters that files cannot have.
bool CanBeAFileName(const std::string& name) {
    return name.size() < MAX_PATH && name.find_first_of("<>\"|?*/:") == std::string::npos;
}

/// The first window of this process that could be the host's main one.
HWND FindMainWindow() {
    HWND found = nullptr;
    const auto look = [](HWND hwnd, LPARAM result) -> BOOL {
        DWORD process = 0;
        GetWindowThreadProcessId(hwnd, &process);
        const bool isMain = process == GetCurrentProcessId() && IsWindowVisible(hwnd) != FALSE &&
                            ::GetWindow(hwnd, GW_OWNER) == nullptr;
        if (isMain) *reinterpret_cast<HWND*>(result) = hwnd;
        return isMain ? FALSE : TRUE;
    };
    EnumWindows(look, reinterpret_cast<LPARAM>(&found));
    return found;
}

} // namespace

HWND IGraphicsWin::HostWindow() const {
    return parentWindow != nullptr ? GetAncestor(parentWindow, GA_ROOT) : FindMainWindow();
}

int IGraphicsWin::ShowMessageBox(const std::string& message, const std::string& caption, int type) {
    ReleaseCapture();
    ReleaseMouseCapture();
    const Waiting now(*this);
    return MessageBoxA(HostWindow(), SystemOfUtf8(message).c_str(), SystemOfUtf8(caption).c_str(),
                       static_cast<UINT>(type));
}

void IGraphicsWin::PromptForFile(std::string& file, std::string& dir, int action,
                                 const std::string& extensions) {
    if (window == nullptr) {
        file.clear();
        return;
    }
    ReleaseCapture();
    ReleaseMouseCapture();
    std::array<char, kPathLength> path{};
    const std::string offered = SystemOfUtf8(file);
    const std::string folder = SystemOfUtf8(dir);
    if (CanBeAFileName(offered)) Joined(folder, offered).copy(path.data(), path.size() - 1);
    const std::string filter = FilterOf(extensions);
    const std::string extension = FirstOf(extensions);
    OPENFILENAMEA dialog{};
    dialog.lStructSize = sizeof(dialog);
    dialog.hwndOwner = HostWindow();
    dialog.lpstrFilter = filter.c_str();
    dialog.lpstrFile = path.data();
    dialog.nMaxFile = static_cast<DWORD>(path.size());
    dialog.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
    dialog.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();
    dialog.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST;
    const Waiting now(*this);
    const BOOL chosen = [&] {
        if (action == FileSave) {
            dialog.Flags |= OFN_OVERWRITEPROMPT;
            return GetSaveFileNameA(&dialog);
        }
        dialog.Flags |= OFN_FILEMUSTEXIST;
        return GetOpenFileNameA(&dialog);
    }();
    file.clear();
    if (chosen == FALSE || !now.WindowStands()) return;
    const std::string whole = Utf8OfSystem(path.data());          // as all paths inside the module
    const std::size_t nameStart = whole.find_last_of("\\/:") + 1; // 0 where there is none
    dir = whole.substr(0, nameStart);
    file = whole.substr(nameStart);
}

bool IGraphicsWin::PromptForColor(IColor& color, const std::string& /*prompt*/) {
    if (window == nullptr) return false;
    ReleaseCapture();
    ReleaseMouseCapture();
    CHOOSECOLORA dialog{};
    dialog.lStructSize = sizeof(dialog);
    dialog.hwndOwner = HostWindow();
    dialog.rgbResult = RGB(color.R, color.G, color.B);
    dialog.lpCustColors = customColors.data();
    dialog.Flags = CC_RGBINIT | CC_ANYCOLOR | CC_FULLOPEN;
    const Waiting now(*this);
    if (ChooseColorA(&dialog) == FALSE || !now.WindowStands()) return false;
    color.R = GetRValue(dialog.rgbResult);
    color.G = GetGValue(dialog.rgbResult);
    color.B = GetBValue(dialog.rgbResult);
    return true;
}

bool IGraphicsWin::OpenURL(const std::string& url) {
    constexpr INT_PTR kLargestError = 32;
    DWORD flags = 0;
    if (InternetGetConnectedState(&flags, 0) == FALSE) return false;
    const HINSTANCE result = ShellExecuteA(window, "open", url.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(result) > kLargestError;
}

} // namespace Grimworks
