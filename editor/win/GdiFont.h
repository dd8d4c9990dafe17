#pragma once

#include "editor/LICE_CachedFont.h"
#include "editor/Types.h"
#include "editor/win/WinApi.h"

#include <string>

namespace Grimworks {

/// Whether this is Wine, by its key in the registry: asked once, kept for the process. Any thread.
[[nodiscard]] bool RunsUnderWine();

/// Family in which the editor's texts are drawn: the embedded one, which this process alone sees, or one that
/// every Windows has where it cannot be had. Any thread.
[[nodiscard]] const char* EditorFontFamily();

/// The system's font for a text, null if it cannot be made; to be given back with DeleteObject.
/// `normalWeight` is the weight of a text that is not bold.
[[nodiscard]] HFONT MakeSystemFont(const IText& text, int normalWeight);

/// Glyphs that the system draws.
class GdiGlyphs final : public LICE_GlyphSource {
public:
    explicit GdiGlyphs(const IText& text);
    ~GdiGlyphs() override;
    GdiGlyphs(const GdiGlyphs&) = delete;
    GdiGlyphs& operator=(const GdiGlyphs&) = delete;

    /// False if there is no font.
    [[nodiscard]] bool IsUsable() const { return lineHeight > 0; }

    [[nodiscard]] int LineHeight() const override { return lineHeight; }
    [[nodiscard]] LICE_Vector LineStep() const override;
    [[nodiscard]] LICE_Glyph Render(char32_t character) override;
    bool DrawNative(LICE_IBitmap& dest, std::u32string_view text, const IRECT& rect, LICE_pixel color,
                    unsigned flags) override;

    /// What DrawNative does where it is allowed: the system draws a level text into the bitmap's own context.
    /// False, and nothing drawn, for a turned text or a bitmap without a context.
    bool DrawInContext(LICE_IBitmap& dest, std::u32string_view text, const IRECT& rect, LICE_pixel color,
                       unsigned flags);

private:
    [[nodiscard]] LICE_Vector Turned(int along, int down) const;

    HFONT font = nullptr;
    int size;
    int orientation;
    int lineHeight = 0;
    int lift = 0; ///< pixels that a line is to stand higher than where the system puts it
};

} // namespace Grimworks
