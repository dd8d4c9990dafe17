#pragma once

#include "host/Picture.h"

#include <memory>
#include <string>

namespace Grimworks {

/// A top-level window of fixed size that a plug-in's editor is put into. Everything is called from the thread
/// that made it.
class EditWindow {
public:
    /// Makes the window and shows it; `width` and `height` are those of its inside in pixels. Throws
    /// HostError when there is no display to show it on.
    EditWindow(const std::string& title, int width, int height);

    /// Takes the window away.
    ~EditWindow();
    EditWindow(const EditWindow&) = delete;
    EditWindow& operator=(const EditWindow&) = delete;

    /// The system's own name of the window, as a plug-in expects it.
    [[nodiscard]] void* Parent() const;

    /// Lets the window live for so many milliseconds. False, and at once, when the user has closed it or the
    /// display is gone.
    [[nodiscard]] bool Wait(int milliseconds);

    /// True while another window, or the edge of the screen, hides a part of it from being copied.
    [[nodiscard]] bool IsCovered() const;

    /// What the window shows at the moment, the editor in it included. Throws HostError when the display does
    /// not tell.
    [[nodiscard]] Picture Grab();

private:
    class System;
    std::unique_ptr<System> system;
};

} // namespace Grimworks
