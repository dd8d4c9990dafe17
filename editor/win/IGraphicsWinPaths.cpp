#include "editor/win/IGraphicsWin.h"
#include "editor/win/WinModule.h"

#include <shlobj.h>

namespace Grimworks {

namespace {

constexpr int kLocalAppData = 28;
constexpr int kCommonAppData = 35;
constexpr int kDesktop = 16;

/// Folder of a module's file, up to the last backslash.
std::string FolderOf(HMODULE module) {
    std::array<char, 4096> path{};
    const DWORD length = GetModuleFileNameA(module, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0) return {};
    const std::string whole = Utf8OfSystem(path.data());
    return whole.substr(0, whole.rfind('\\') + 1);
}

} // namespace

std::string IGraphicsWin::HostPath() {
    return FolderOf(nullptr);
}

std::string IGraphicsWin::PluginPath() {
    return FolderOf(ThisModule());
}

std::string IGraphicsWin::DesktopPath() {
    std::array<char, MAX_PATH + 1> path{};
    if (SHGetSpecialFolderPathA(window, path.data(), kDesktop, FALSE) == FALSE) return {};
    return Utf8OfSystem(path.data());
}

std::string IGraphicsWin::AppSupportPath(bool allUsers) {
    std::array<char, MAX_PATH + 1> path{};
    const int folder = allUsers ? kCommonAppData : kLocalAppData;
    if (SHGetFolderPathA(window, folder, nullptr, SHGFP_TYPE_CURRENT, path.data()) != S_OK) return {};
    return Utf8OfSystem(path.data());
}

} // namespace Grimworks
