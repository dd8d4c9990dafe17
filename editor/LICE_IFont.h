#pragma once

#include "editor/LICE_IBitmap.h"
#include "editor/Types.h"

#include <string_view>

namespace Grimworks {

/// Flags of LICE_IFont::DrawText.
enum LICE_TextFlag : unsigned {
    LICE_TextLeft = 0,
    LICE_TextCenter = 0x1,
    LICE_TextRight = 0x2,
    LICE_TextCalcRect = 0x400,   ///< only update the rectangle
    LICE_TextNative = 0x10000,   ///< let the system draw where it can
    LICE_TextWantAlpha = 0x20000 ///< blended drawing: the colour's alpha is below 255
};

/// A font in one size and style. Texts are bytes; UTF-8 of characters above 127 is understood, bytes that are
/// none are taken as Latin-1. Editor thread.
class LICE_IFont {
public:
    virtual ~LICE_IFont() = default;
    LICE_IFont(const LICE_IFont&) = delete;
    LICE_IFont& operator=(const LICE_IFont&) = delete;

    virtual void SetTextColor(LICE_pixel color) = 0;
    [[nodiscard]] virtual int LineHeight() const = 0;

    /// Draws into the bitmap, clipped by `rect` and the bitmap; vertically the text starts at the rectangle's
    /// top. With LICE_TextCalcRect nothing is drawn and rect.R and rect.B become L + width and T + height.
    /// Gives the height of the text, 0 for a font without glyphs.
    virtual int DrawText(LICE_IBitmap* dest, std::string_view text, IRECT& rect, unsigned flags) = 0;

protected:
    LICE_IFont() = default;
};

} // namespace Grimworks
