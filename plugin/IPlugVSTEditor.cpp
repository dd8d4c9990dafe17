#include "plugin/IPlugVST.h"

namespace Grimworks {

std::intptr_t IPlugVST::GiveEditorRect(void* ptr) {
    if (ptr == nullptr || editor == nullptr) return 0;
    *static_cast<ERect**>(ptr) = &editorRect;
    return 1;
}

std::intptr_t IPlugVST::OpenEditor(void* parent) {
    PlugEditor* const opened = Editor();
    if (opened == nullptr || parent == nullptr) return 0;
    if (!opened->OpenWindow(parent)) return 0;
    const PlugLockGuard guard(Lock());
    OnEditorOpened();
    return 1;
}

std::intptr_t IPlugVST::CloseEditor() {
    PlugEditor* const closed = Editor();
    if (closed == nullptr) return 0;
    {
        const PlugLockGuard guard(Lock());
        OnEditorClosed();
    }
    closed->CloseWindow();
    return 1;
}

} // namespace Grimworks
