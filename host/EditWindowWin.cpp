#include "host/EditWindow.h"

#include "host/HostError.h"

namespace Grimworks {

class EditWindow::System {};

EditWindow::EditWindow(const std::string& title, int, int) {
    throw HostError(title +
                    ": this program has no window for the editor on Windows yet; load the module in a host");
}

EditWindow::~EditWindow() = default;

void* EditWindow::Parent() const {
    return nullptr;
}

bool EditWindow::Wait(int) {
    return false;
}

Picture EditWindow::Grab() {
    return {};
}

} // namespace Grimworks
