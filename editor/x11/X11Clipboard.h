#pragma once

#include "editor/x11/X11Surface.h"

#include <string>

namespace Grimworks {

/// Texts from the clipboard, for windows that are typed into. Editor thread only.
namespace X11Clipboard {

/// Asks the clipboard's owner for its text; the answer comes as an event of the window.
void Ask(X11Surface& surface);

/// The text that the event brings, in UTF-8 and at most a few thousand bytes; empty if there is none.
[[nodiscard]] std::string Take(X11Surface& surface, const xcb_selection_notify_event_t& event);

} // namespace X11Clipboard

} // namespace Grimworks
