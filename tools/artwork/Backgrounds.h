#pragma once

#include "tools/artwork/Canvas.h"

namespace Artwork {

/// The chassis, behind all pages.
[[nodiscard]] Canvas Chassis();

/// The panels of the synth page with their titles and engravings, clear elsewhere.
[[nodiscard]] Canvas ControlsPlate();

} // namespace Artwork
