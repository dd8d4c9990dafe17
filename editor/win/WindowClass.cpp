#include "editor/win/WindowClass.h"

#include "core/Immortal.h"
#include "editor/win/WinModule.h"

#include <mutex>

namespace Grimworks {

namespace {

/// Windows may open on several threads of the host.
struct OpenWindows {
    std::mutex lock;
    int count = 0;
};

OpenWindows& TheOpenWindows() {
    static Immortal<OpenWindows> windows;
    return *windows;
}

bool Register(WNDPROC procedure) {
    WNDCLASSA record{};
    record.style = CS_DBLCLKS;
    record.lpfnWndProc = procedure;
    record.hInstance = ThisModule();
    record.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512)); // the arrow
    record.lpszClassName = WindowClass::kName;
    if (RegisterClassA(&record) != 0) return true;
    // A window that could not be taken away at its time has kept the class.
    return UnregisterClassA(WindowClass::kName, ThisModule()) != FALSE && RegisterClassA(&record) != 0;
}

} // namespace

bool WindowClass::Acquire(WNDPROC procedure) {
    OpenWindows& windows = TheOpenWindows();
    const std::lock_guard guard(windows.lock);
    if (windows.count == 0 && !Register(procedure)) return false;
    ++windows.count;
    return true;
}

void WindowClass::Release() {
    OpenWindows& windows = TheOpenWindows();
    const std::lock_guard guard(windows.lock);
    if (--windows.count == 0) UnregisterClassA(kName, ThisModule());
}

int WindowClass::WindowCount() {
    OpenWindows& windows = TheOpenWindows();
    const std::lock_guard guard(windows.lock);
    return windows.count;
}

} // namespace Grimworks
