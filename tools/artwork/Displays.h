#pragma once

#include "tools/artwork/Canvas.h"

namespace Artwork {

/// A plain pane of dark glass.
[[nodiscard]] Canvas GlassDisplay(int width, int height, const Color& accent);

/// Glass without its edge, for panes whose edge is part of the background: the editor draws up to their
/// border.
[[nodiscard]] Canvas FlushGridDisplay(int width, int height, const Color& accent, int columns, int rows);

/// A pane with a measuring grid: `columns` by `rows` fields, the middle lines stronger, and a margin around.
[[nodiscard]] Canvas GridDisplay(int width, int height, const Color& accent, int columns, int rows,
                                 int margin);

/// The picture of the equalizer's three bands with their frequencies.
[[nodiscard]] Canvas EqDisplay(int width, int height, const Color& accent);
/// The slopes of the low pass and the high pass.
[[nodiscard]] Canvas DumpExpandDisplay(int width, int height, const Color& accent);
/// The screen of the oscilloscope; the rows below `frameHeight` stay empty.
[[nodiscard]] Canvas ScopeDisplay(int width, int height, int frameHeight);

[[nodiscard]] Canvas SliderGroove(int width, int height);
[[nodiscard]] Canvas SliderHandle(int width, int height);

} // namespace Artwork
