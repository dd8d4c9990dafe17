#pragma once

#include "editor/LICE_MemBitmap.h"
#include "editor/x11/X11Surface.h"

#include <string>

namespace Grimworks {

/// A line of text near the mouse. Editor thread only.
class X11Tooltip final : public X11Surface {
public:
    explicit X11Tooltip(X11Loop& itsLoop) : X11Surface(itsLoop) {}

    /// Shows the text below a point of the screen, or above where there is no room. False without a window.
    bool Open(const std::string& text, int screenX, int screenY);

    void OnEvent(const xcb_generic_event_t& event) override;

private:
    LICE_MemBitmap picture;
};

} // namespace Grimworks
