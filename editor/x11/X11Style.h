#pragma once

#include "editor/LICE_IBitmap.h"
#include "editor/Types.h"

#include <string>
#include <string_view>
#include <vector>

namespace Grimworks {

class LICE_IFont;

/// Colours and shapes that menus, dialogs and tooltips share: near-black like the panels of the instrument.
namespace X11Style {

inline constexpr LICE_pixel kBack = LICE_RGBA(24, 25, 28, 255);
inline constexpr LICE_pixel kRaised = LICE_RGBA(44, 46, 51, 255);
inline constexpr LICE_pixel kSunken = LICE_RGBA(14, 15, 17, 255);
inline constexpr LICE_pixel kBorder = LICE_RGBA(78, 81, 88, 255);
inline constexpr LICE_pixel kLine = LICE_RGBA(56, 58, 64, 255);
inline constexpr LICE_pixel kText = LICE_RGBA(226, 228, 232, 255);
inline constexpr LICE_pixel kDimText = LICE_RGBA(116, 120, 128, 255);
inline constexpr LICE_pixel kChosen = LICE_RGBA(198, 66, 20, 255);
inline constexpr LICE_pixel kChosenText = LICE_RGBA(255, 255, 255, 255);
inline constexpr LICE_pixel kMark = LICE_RGBA(255, 148, 82, 255);

/// A filled rectangle with a border of one pixel.
void DrawBox(LICE_IBitmap& bitmap, const IRECT& rect, LICE_pixel fill, LICE_pixel border);

/// A text at the middle of the rectangle's height; `flags` are those of LICE_IFont. Nothing without a font.
void DrawLine(LICE_IBitmap& bitmap, LICE_IFont* font, std::string_view text, const IRECT& rect,
              LICE_pixel color, unsigned flags = 0);

/// Pixels that a text takes in a line, 0 without a font.
[[nodiscard]] int WidthOf(LICE_IFont* font, std::string_view text);

/// A text in lines of at most this width, broken at blanks where there are some.
[[nodiscard]] std::vector<std::string> Wrap(LICE_IFont* font, std::string_view text, int width);

} // namespace X11Style

/// The colour as a pixel.
[[nodiscard]] inline LICE_pixel X11PixelOf(const IColor& color) {
    return LICE_RGBA(color.R, color.G, color.B, color.A);
}

} // namespace Grimworks
