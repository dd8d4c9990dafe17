#pragma once

#include "tools/artwork/Canvas.h"

namespace Artwork {

/// Where the value arc starts.
enum class ArcFrom { Left, Middle };

/// A strip of frames from top to bottom of a knob that turns evenly over 270 degrees, with a lit arc.
[[nodiscard]] Canvas KnobStrip(int size, int frames, const Color& accent, ArcFrom from);

/// A strip of a knob with one detent for each frame.
[[nodiscard]] Canvas SteppedKnobStrip(int size, int frames, const Color& accent);

} // namespace Artwork
