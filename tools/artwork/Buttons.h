#pragma once

#include "tools/artwork/Canvas.h"

#include <string_view>

namespace Artwork {

/// Strips of buttons and switches; the frames stand one under the other, the first is off or up.

/// A key with a legend and a lamp, that stays down while on.
[[nodiscard]] Canvas ToggleStrip(int width, int height, std::string_view off, std::string_view on,
                                 const Color& accent);

/// A key that is only down while held.
[[nodiscard]] Canvas MomentaryStrip(int width, int height, std::string_view legend, const Color& accent);

/// One legend for each frame, with a row of lamps of which the frame's own is lit.
[[nodiscard]] Canvas ChoiceStrip(int width, int height, const std::vector<std::string>& legends,
                                 const Color& accent);

/// One legend and a bar of lamps of which 0 to frames - 1 are lit.
[[nodiscard]] Canvas LevelStrip(int width, int height, std::string_view legend, int frames,
                                const Color& accent);

/// A key with an arrow.
[[nodiscard]] Canvas ArrowKeyStrip(int width, int height, bool right, const Color& accent);
/// The small arrows beside names.
[[nodiscard]] Canvas StepStrip(int size, bool right, const Color& accent);
/// Plus and minus of the zoom.
[[nodiscard]] Canvas ZoomStrip(int size, bool plus);
[[nodiscard]] Canvas NextStrip(int width, int height, const Color& accent);
[[nodiscard]] Canvas PlayStrip(int width, int height);
[[nodiscard]] Canvas PowerStrip(int size);
[[nodiscard]] Canvas TabStrip(int width, int height, std::string_view legend);
[[nodiscard]] Canvas PolarityStrip(int width, int height, const Color& accent);
[[nodiscard]] Canvas FillModeStrip(int width, int height, const Color& accent);
[[nodiscard]] Canvas FreezeStrip(int width, int height, int emptyRows);

} // namespace Artwork
