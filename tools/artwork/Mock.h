#pragma once

#include "editor/thudforge/Layout.h"
#include "tools/artwork/Canvas.h"

namespace Artwork {

/// A page of the editor as it comes to look, with sample values and texts, to judge the artwork by. `extreme`
/// shows every caption at its longest text.
[[nodiscard]] Canvas MockPage(Grimworks::Page page, bool extreme);

} // namespace Artwork
