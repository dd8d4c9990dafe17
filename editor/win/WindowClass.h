#pragma once

#include "editor/win/WinApi.h"

namespace Grimworks {

/// The window class of the editor, one for all instances of the process: registered for the first window and
/// taken back with the last. Any thread.
class WindowClass {
public:
    static constexpr const char* kName = "IPlugWndClass";

    /// Counts a window more. False, and not counted, if the class cannot be had.
    [[nodiscard]] static bool Acquire(WNDPROC procedure);

    /// Counts a window less.
    static void Release();

    [[nodiscard]] static int WindowCount();
};

} // namespace Grimworks
