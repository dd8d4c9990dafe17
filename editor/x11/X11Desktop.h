#pragma once

#include "editor/Types.h"
#include "editor/x11/DesktopDialogs.h"
#include "editor/x11/X11Window.h"

#include <optional>
#include <string>
#include <vector>

namespace Grimworks {

/// The dialogs of the user's desktop, run as programs of their own, and what stands in for them where there
/// are none. All wait for the user; the window goes on living meanwhile. Editor thread only.
namespace X11Desktop {

/// How a program's dialog ended.
struct Answer {
    enum class Kind { Given, Cancelled, Failed };
    Kind kind = Kind::Failed;
    std::string text; ///< without the end of the line
};

/// Runs the first of these programs that is there and works. Failed if there is none.
[[nodiscard]] Answer AskPrograms(X11Window& window, const std::vector<std::vector<std::string>>& programs);

/// The path that the user chose; empty for none.
[[nodiscard]] std::string AskForFile(X11Window& window, const IRECT& size, const FileQuestion& question);

[[nodiscard]] std::optional<IColor> AskForColor(X11Window& window, const IRECT& size, const IColor& color,
                                                const std::string& prompt);

/// Opens a web or mail address in the user's browser. False if that cannot be tried.
[[nodiscard]] bool OpenAddress(const std::string& address);

} // namespace X11Desktop

} // namespace Grimworks
