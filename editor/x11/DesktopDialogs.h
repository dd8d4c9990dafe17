#pragma once

#include "editor/Types.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Grimworks {

/// What a file dialog is asked.
struct FileQuestion {
    std::string title;
    std::string dir;  ///< with the separator at the end
    std::string file; ///< without folder; may be empty
    bool save = false;
    std::vector<std::string> extensions; ///< without dots
};

/// The words that start the dialogs of a desktop, the program's name first, and what their answers mean.
namespace DesktopDialogs {

[[nodiscard]] std::vector<std::string> ZenityFile(const FileQuestion& question);
[[nodiscard]] std::vector<std::string> KdialogFile(const FileQuestion& question);
[[nodiscard]] std::vector<std::string> ZenityColor(const IColor& color, const std::string& title);
[[nodiscard]] std::vector<std::string> KdialogColor(const IColor& color, const std::string& title);

/// Whether this is a desktop whose own dialogs are kdialog's.
[[nodiscard]] bool PrefersKdialog();

/// A colour as "#rrggbb", and back from that, "#rrrrggggbbbb", "rgb(r,g,b)" or "rgba(r,g,b,a)". The result
/// is opaque; none if the text is no colour.
[[nodiscard]] std::string TextOfColor(const IColor& color);
[[nodiscard]] std::optional<IColor> ColorOfText(std::string_view text);

/// Parts a path into the folder, with the separator at the end, and the file.
void SplitPath(const std::string& path, std::string& dir, std::string& file);

/// The words of a list with blanks.
[[nodiscard]] std::vector<std::string> WordsOf(std::string_view list);

} // namespace DesktopDialogs

} // namespace Grimworks
