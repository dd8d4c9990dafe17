#pragma once

#include "editor/LICE_IFont.h"

#include <array>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

namespace Grimworks {

class PixelRows;

/// A character as a picture: how much of each pixel it covers.
struct LICE_Glyph {
    std::vector<std::uint8_t> coverage; ///< width * height, from top to bottom; empty for a blank
    int width = 0;
    int height = 0;
    int left = 0; ///< from the pen, at the top of the line, to the picture's left side
    int top = 0;
    int advanceX = 0; ///< from this pen position to the next
    int advanceY = 0; ///< 0 for a level text
};

/// A way in pixels, downwards positive.
struct LICE_Vector {
    int x = 0;
    int y = 0;
};

/// Where glyphs come from: a font file or the system.
class LICE_GlyphSource {
public:
    virtual ~LICE_GlyphSource() = default;
    LICE_GlyphSource(const LICE_GlyphSource&) = delete;
    LICE_GlyphSource& operator=(const LICE_GlyphSource&) = delete;

    /// Draws a character; one that the font has not looks like the font's mark for that.
    [[nodiscard]] virtual LICE_Glyph Render(char32_t character) = 0;
    [[nodiscard]] virtual int LineHeight() const = 0;

    /// The way from one line to the next: straight down for a level text.
    [[nodiscard]] virtual LICE_Vector LineStep() const { return {0, LineHeight()}; }

    /// Has the system draw a text itself, in its own way. False, and nothing drawn, where it cannot.
    virtual bool DrawNative(LICE_IBitmap& /*dest*/, std::u32string_view /*text*/, const IRECT& /*rect*/,
                            LICE_pixel /*color*/, unsigned /*flags*/) {
        return false;
    }

protected:
    LICE_GlyphSource() = default;
};

/// A font that draws each character once and keeps the picture.
class LICE_CachedFont final : public LICE_IFont {
public:
    /// Null makes a font that draws nothing.
    explicit LICE_CachedFont(std::unique_ptr<LICE_GlyphSource> glyphSource);

    void SetTextColor(LICE_pixel color) override { fgColor = color; }
    [[nodiscard]] int LineHeight() const override { return lineHeight; }
    int DrawText(LICE_IBitmap* dest, std::string_view text, IRECT& rect, unsigned flags) override;

    /// The kept picture of a character; null in a font without a source.
    [[nodiscard]] const LICE_Glyph* GlyphOf(char32_t character);

    /// Number of pictures kept so far.
    [[nodiscard]] int GlyphCount() const { return static_cast<int>(glyphs.size()); }

private:
    static constexpr int kTableSize = 256;

    /// Sum of the advances of a line.
    [[nodiscard]] LICE_Vector ExtentOf(std::u32string_view line);
    /// The smallest rectangle around the lines, with the first one's start at 0, 0.
    [[nodiscard]] IRECT BoxOf(const std::vector<std::u32string_view>& lines);
    void DrawLines(const PixelRows& rows, const std::vector<std::u32string_view>& lines, const IRECT& box,
                   const IRECT& rect, unsigned flags);

    std::unique_ptr<LICE_GlyphSource> source;
    LICE_pixel fgColor = LICE_RGBA(0, 0, 0, 255);
    int lineHeight = 0;
    std::array<const LICE_Glyph*, kTableSize> table{};
    std::unordered_map<char32_t, const LICE_Glyph*> others;
    std::vector<std::unique_ptr<LICE_Glyph>> glyphs;
};

/// The platform's font for a text's height, style, orientation and face; null if it cannot be made. Every
/// face is the same family where fonts are embedded. Any thread.
[[nodiscard]] std::unique_ptr<LICE_IFont> LICE_MakeFont(const IText& text);

} // namespace Grimworks
