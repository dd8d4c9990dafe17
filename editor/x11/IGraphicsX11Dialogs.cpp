#include "editor/x11/IGraphicsX11.h"

namespace Grimworks {

int IGraphicsX11::ShowMessageBox(const std::string&, const std::string&, int) {
    return 2;
}
IPopupMenu* IGraphicsX11::CreateIPopupMenu(IPopupMenu&, const IRECT&) {
    return nullptr;
}
std::string IGraphicsX11::HostPath() {
    return {};
}
std::string IGraphicsX11::PluginPath() {
    return {};
}
std::string IGraphicsX11::DesktopPath() {
    return {};
}
std::string IGraphicsX11::AppSupportPath(bool) {
    return {};
}
void IGraphicsX11::PromptForFile(std::string& file, std::string&, int, const std::string&) {
    file.clear();
}
bool IGraphicsX11::PromptForColor(IColor&, const std::string&) {
    return false;
}
bool IGraphicsX11::OpenURL(const std::string&) {
    return false;
}

} // namespace Grimworks
