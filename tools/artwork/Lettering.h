#pragma once

#include "tools/artwork/Canvas.h"

namespace Artwork {

/// The name of the instrument, for the header.
[[nodiscard]] Canvas ProductTitle(int width, int height);
[[nodiscard]] Canvas WordSizeBadge(int width, int height);

/// Mask, wave and name of the maker; the eyes are left to the editor.
[[nodiscard]] Canvas MakersLogo(int width, int height);
[[nodiscard]] Canvas FreeVersionText(int width, int height);
[[nodiscard]] Canvas TeamText(int width, int height);
[[nodiscard]] Canvas InterfaceMark(int width, int height);

/// A globe, and a hand with its thumb up.
[[nodiscard]] Canvas GlobeIcon(int size);
[[nodiscard]] Canvas LikeIcon(int size);

} // namespace Artwork
