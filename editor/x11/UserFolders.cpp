#include "editor/x11/UserFolders.h"

#include <climits>
#include <cstdlib>
#include <dlfcn.h>
#include <fstream>
#include <string_view>
#include <unistd.h>

namespace Grimworks::UserFolders {

namespace {

std::string WithSeparator(std::string folder) {
    if (!folder.empty() && folder.back() != '/') folder.push_back('/');
    return folder;
}

/// An absolute path from the environment, or empty.
std::string Variable(const char* name) {
    const char* const text = std::getenv(name);
    return text != nullptr && *text == '/' ? WithSeparator(text) : std::string();
}

std::string FolderOf(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? std::string() : std::string(path.substr(0, slash + 1));
}

std::string UserConfig() {
    std::string named = Variable("XDG_CONFIG_HOME");
    if (!named.empty()) return named;
    const std::string home = Home();
    return home.empty() ? home : home + ".config/";
}

/// What the user calls the desktop: the line XDG_DESKTOP_DIR="$HOME/..." of the user's list of folders.
std::string NamedDesktop() {
    constexpr std::string_view kName = "XDG_DESKTOP_DIR=\"";
    constexpr std::string_view kHome = "$HOME/";
    std::ifstream list(UserConfig() + "user-dirs.dirs");
    std::string line;
    while (std::getline(list, line)) {
        if (!line.starts_with(kName) || line.back() != '"') continue;
        std::string folder = line.substr(kName.size(), line.size() - kName.size() - 1);
        if (folder.starts_with(kHome)) folder = Home() + folder.substr(kHome.size());
        if (folder.starts_with("/")) return WithSeparator(folder);
    }
    return {};
}

} // namespace

std::string Home() {
    return Variable("HOME");
}

std::string Desktop() {
    std::string named = NamedDesktop();
    if (!named.empty()) return named;
    const std::string home = Home();
    return home.empty() ? home : home + "Desktop/";
}

std::string AppSupport(bool allUsers) {
    if (!allUsers) return UserConfig();
    const std::string first = Variable("XDG_CONFIG_DIRS");
    const std::size_t end = first.find(':');
    if (first.empty()) return "/etc/xdg/";
    return WithSeparator(first.substr(0, end));
}

std::string Program() {
    std::string path(PATH_MAX, '\0');
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    return length > 0 ? FolderOf(std::string_view(path.data(), static_cast<std::size_t>(length)))
                      : std::string();
}

std::string Module() {
    Dl_info info{};
    const bool known = dladdr(reinterpret_cast<const void*>(&Module), &info) != 0;
    return known && info.dli_fname != nullptr ? FolderOf(info.dli_fname) : std::string();
}

} // namespace Grimworks::UserFolders
