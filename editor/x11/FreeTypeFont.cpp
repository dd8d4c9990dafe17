#include "core/Immortal.h"
#include "editor/EmbeddedFiles.h"
#include "editor/LICE_CachedFont.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <cmath>
#include <mutex>
#include <numbers>

namespace Grimworks {

namespace {

constexpr int kMaxHeight = 512; ///< pixels

/// The one FreeType library of the process. Its faces may be used by one thread each, but making and
/// destroying them takes the lock.
struct FontLibrary {
    FontLibrary() {
        if (FT_Init_FreeType(&library) != 0) library = nullptr;
    }

    std::mutex lock;
    FT_Library library = nullptr;
};

FontLibrary& TheFontLibrary() {
    static Immortal<FontLibrary> library;
    return *library;
}

/// A face of one of the embedded fonts; empty if it cannot be had.
class Face {
public:
    explicit Face(bool bold) {
        FontLibrary& shared = TheFontLibrary();
        const std::lock_guard guard(shared.lock);
        const auto file = EmbeddedFont(bold);
        if (shared.library == nullptr) return;
        if (FT_New_Memory_Face(shared.library, file.data(), static_cast<FT_Long>(file.size()), 0, &face) != 0)
            face = nullptr;
    }
    ~Face() {
        const std::lock_guard guard(TheFontLibrary().lock);
        if (face != nullptr) FT_Done_Face(face);
    }
    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;

    [[nodiscard]] FT_Face Get() const { return face; }

private:
    FT_Face face = nullptr;
};

int RoundedPixels(double pixels) {
    return static_cast<int>(std::floor(pixels + 0.5));
}

FT_Fixed Fixed(double x) {
    return static_cast<FT_Fixed>(std::lround(x * 65536.0));
}

/// Draws glyphs of the embedded family. The outlines carry no hints, so that light hinting keeps the widths
/// and sharpens level strokes; italic is a slant, and a turned text loses the hinting.
class FreeTypeGlyphs final : public LICE_GlyphSource {
public:
    explicit FreeTypeGlyphs(const IText& text)
        : face((text.style & IText::StyleBold) != 0), slanted((text.style & IText::StyleItalic) != 0),
          level(text.orientation % 360 == 0), sine(std::sin(Radians(text.orientation))),
          cosine(std::cos(Radians(text.orientation))) {
        if (face.Get() == nullptr || text.size < 1 || text.size > kMaxHeight) return;
        if (FT_Set_Pixel_Sizes(face.Get(), 0, static_cast<FT_UInt>(text.size)) != 0) return;
        const double scale = static_cast<double>(text.size) / face.Get()->units_per_EM;
        ascent = RoundedPixels(face.Get()->ascender * scale);
        lineHeight = RoundedPixels(face.Get()->height * scale);
        if (!slanted && level) return;
        constexpr double kSlant = 0.2;
        FT_Matrix matrix{Fixed(cosine), Fixed(-sine), Fixed(sine), Fixed(cosine)};
        if (slanted) {
            matrix.xy = Fixed(kSlant * cosine - sine);
            matrix.yy = Fixed(kSlant * sine + cosine);
        }
        FT_Set_Transform(face.Get(), &matrix, nullptr);
    }

    /// False if this source has no font.
    [[nodiscard]] bool IsUsable() const { return lineHeight > 0; }

    [[nodiscard]] int LineHeight() const override { return lineHeight; }
    [[nodiscard]] LICE_Vector LineStep() const override { return Turned(0, lineHeight); }

    [[nodiscard]] LICE_Glyph Render(char32_t character) override {
        LICE_Glyph glyph;
        const FT_Int32 hinting = level ? FT_LOAD_TARGET_LIGHT : FT_LOAD_NO_HINTING;
        if (FT_Load_Char(face.Get(), character, FT_LOAD_RENDER | FT_LOAD_NO_BITMAP | hinting) != 0)
            return glyph;
        const FT_GlyphSlot slot = face.Get()->glyph;
        const LICE_Vector advance =
            Turned(RoundedPixels(static_cast<double>(slot->linearHoriAdvance) / 65536.0), 0);
        const LICE_Vector baseline = Turned(0, ascent);
        glyph.advanceX = advance.x;
        glyph.advanceY = advance.y;
        glyph.left = baseline.x + slot->bitmap_left;
        glyph.top = baseline.y - slot->bitmap_top;
        CopyCoverage(slot->bitmap, glyph);
        return glyph;
    }

private:
    static double Radians(int degrees) { return degrees * std::numbers::pi / 180.0; }

    /// A way along and down a level line as it is on the screen.
    [[nodiscard]] LICE_Vector Turned(int along, int down) const {
        return {RoundedPixels(along * cosine + down * sine), RoundedPixels(down * cosine - along * sine)};
    }

    static void CopyCoverage(const FT_Bitmap& bitmap, LICE_Glyph& glyph) {
        if (bitmap.pixel_mode != FT_PIXEL_MODE_GRAY) return;
        glyph.width = static_cast<int>(bitmap.width);
        glyph.height = static_cast<int>(bitmap.rows);
        glyph.coverage.reserve(std::size_t{bitmap.width} * bitmap.rows);
        for (int row = 0; row < glyph.height; ++row) {
            const unsigned char* from = bitmap.buffer + static_cast<std::ptrdiff_t>(row) * bitmap.pitch;
            glyph.coverage.insert(glyph.coverage.end(), from, from + glyph.width);
        }
    }

    Face face;
    bool slanted;
    bool level;
    double sine;
    double cosine;
    int ascent = 0;
    int lineHeight = 0;
};

} // namespace

std::unique_ptr<LICE_IFont> LICE_MakeFont(const IText& text) {
    auto glyphs = std::make_unique<FreeTypeGlyphs>(text);
    if (!glyphs->IsUsable()) return nullptr;
    return std::make_unique<LICE_CachedFont>(std::move(glyphs));
}

} // namespace Grimworks
