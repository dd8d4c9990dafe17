#pragma once

#include "editor/LICE_IBitmap.h"

#include <cstdint>
#include <vector>

namespace Grimworks {

/// One way in which a PNG file can hold a picture.
struct PngKind {
    int colorType;
    int bitDepth;
    bool interlaced = false;
    bool transparency = false; ///< with a tRNS chunk
};

/// All combinations that the format allows.
[[nodiscard]] std::vector<PngKind> AllPngKinds();

/// A file of this kind. Its samples are the numbers of PngSample.
[[nodiscard]] std::vector<std::uint8_t> MakePng(const PngKind& kind, int width, int height);

/// The sample of a channel at x, y in 0..2^bitDepth - 1; a palette's index for that kind.
[[nodiscard]] int PngSample(const PngKind& kind, int x, int y, int channel);

/// The pixel at x, y as it must be decoded.
[[nodiscard]] LICE_pixel PngPixel(const PngKind& kind, int x, int y);

} // namespace Grimworks
