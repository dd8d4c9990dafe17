#include "editor/LICE_CachedFont.h"

#include "editor/LICE_Blend.h"
#include "editor/Utf8.h"

#include <algorithm>

namespace Grimworks {

namespace {

std::vector<std::u32string_view> LinesOf(std::u32string_view text) {
    std::vector<std::u32string_view> lines;
    while (true) {
        const std::size_t end = std::min(text.find(U'\n'), text.size());
        lines.push_back(text.substr(0, end)); // NOLINT(performance-inefficient-vector-operation)
        if (end == text.size()) return lines;
        text.remove_prefix(end + 1);
    }
}

/// Where something of this width starts in a rectangle.
int AlignedLeft(const IRECT& rect, int width, unsigned flags) {
    if ((flags & LICE_TextCenter) != 0) return rect.L + (rect.W() - width) / 2;
    if ((flags & LICE_TextRight) != 0) return rect.R - width;
    return rect.L;
}

/// Puts a colour through a picture of coverages.
void DrawGlyph(const PixelRows& rows, const IRECT& clip, const LICE_Glyph& glyph, int x, int y,
               LICE_pixel color) {
    const IRECT drawn = clip.Intersect(
        {x + glyph.left, y + glyph.top, x + glyph.left + glyph.width, y + glyph.top + glyph.height});
    if (drawn.Empty()) return;
    const unsigned alpha = color >> 24U;
    for (int row = drawn.T; row < drawn.B; ++row) {
        const std::uint8_t* coverage = glyph.coverage.data() +
                                       static_cast<std::ptrdiff_t>(row - y - glyph.top) * glyph.width +
                                       (drawn.L - x - glyph.left);
        LICE_pixel* pixel = rows.At(drawn.L, row);
        for (int i = 0; i < drawn.W(); ++i)
            PutBlended<LICE_Copy>(pixel[i], color | 0xFF000000U, DivideBy255(coverage[i] * alpha));
    }
}

} // namespace

LICE_CachedFont::LICE_CachedFont(std::unique_ptr<LICE_GlyphSource> glyphSource)
    : source(std::move(glyphSource)), lineHeight(source != nullptr ? source->LineHeight() : 0) {}

const LICE_Glyph* LICE_CachedFont::GlyphOf(char32_t character) {
    if (source == nullptr) return nullptr;
    const LICE_Glyph*& place =
        character < kTableSize ? table[static_cast<std::size_t>(character)] : others[character];
    if (place == nullptr) {
        glyphs.push_back(std::make_unique<LICE_Glyph>(source->Render(character)));
        place = glyphs.back().get();
    }
    return place;
}

LICE_Vector LICE_CachedFont::ExtentOf(std::u32string_view line) {
    LICE_Vector extent;
    for (const char32_t character : line) {
        const LICE_Glyph& glyph = *GlyphOf(character);
        extent.x += glyph.advanceX;
        extent.y += glyph.advanceY;
    }
    return extent;
}

IRECT LICE_CachedFont::BoxOf(const std::vector<std::u32string_view>& lines) {
    const LICE_Vector step = source->LineStep();
    IRECT box;
    int startX = 0;
    int startY = 0;
    for (const std::u32string_view line : lines) {
        const LICE_Vector end = ExtentOf(line);
        // The corners of the line: where it starts and ends, and the same one line further.
        for (const int x : {0, end.x, step.x, end.x + step.x}) {
            box.L = std::min(box.L, startX + x);
            box.R = std::max(box.R, startX + x);
        }
        for (const int y : {0, end.y, step.y, end.y + step.y}) {
            box.T = std::min(box.T, startY + y);
            box.B = std::max(box.B, startY + y);
        }
        startX += step.x;
        startY += step.y;
    }
    return box;
}

int LICE_CachedFont::DrawText(LICE_IBitmap* dest, std::string_view text, IRECT& rect, unsigned flags) {
    if (source == nullptr || text.empty()) {
        if ((flags & LICE_TextCalcRect) != 0) rect = {rect.L, rect.T, rect.L, rect.T};
        return 0;
    }
    const std::u32string characters = CharactersOf(text);
    const auto lines = LinesOf(characters);
    const IRECT box = BoxOf(lines);
    if ((flags & LICE_TextCalcRect) != 0) {
        rect.R = rect.L + box.W();
        rect.B = rect.T + box.H();
        return box.H();
    }
    const PixelRows rows(dest);
    const bool native = (flags & (LICE_TextNative | LICE_TextWantAlpha)) == LICE_TextNative;
    if (native && !rows.Empty() && source->DrawNative(*dest, characters, rect, fgColor, flags))
        return box.H();
    if (!rows.Empty()) DrawLines(rows, lines, box, rect, flags);
    return box.H();
}

void LICE_CachedFont::DrawLines(const PixelRows& rows, const std::vector<std::u32string_view>& lines,
                                const IRECT& box, const IRECT& rect, unsigned flags) {
    const IRECT clip = rect.Intersect(rows.Bounds());
    const LICE_Vector step = source->LineStep();
    const bool turned = step.x != 0 || step.y <= 0;
    int y = rect.T - box.T;
    int shift = 0;
    for (const std::u32string_view line : lines) {
        // Lines of a level text are aligned each, a turned text as a whole.
        int penX = turned ? AlignedLeft(rect, box.W(), flags) - box.L + shift
                          : AlignedLeft(rect, ExtentOf(line).x, flags);
        int penY = y;
        for (const char32_t character : line) {
            const LICE_Glyph& glyph = *GlyphOf(character);
            DrawGlyph(rows, clip, glyph, penX, penY, fgColor);
            penX += glyph.advanceX;
            penY += glyph.advanceY;
        }
        shift += step.x;
        y += step.y;
    }
}

} // namespace Grimworks
