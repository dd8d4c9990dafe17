#include "editor/win/GdiFont.h"

#include "editor/EmbeddedFiles.h"
#include "editor/LICE_SysBitmap.h"
#include "editor/win/WinModule.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace Grimworks {

namespace {

constexpr int kMaxHeight = 512; ///< pixels
constexpr int kWeightBold = 700;
constexpr int kWeightNormal = 400;

/// A context with a font for as long as this lives.
class FontInUse {
public:
    FontInUse(HDC used, HFONT font) : context(used), before(SaveDC(used)) {
        SelectObject(context, font);
        SetBkMode(context, TRANSPARENT);
        SetTextAlign(context, TA_LEFT | TA_TOP);
    }
    ~FontInUse() { RestoreDC(context, before); }
    FontInUse(const FontInUse&) = delete;
    FontInUse& operator=(const FontInUse&) = delete;

private:
    HDC context;
    int before;
};

bool RegisterFont(bool bold) {
    const auto file = EmbeddedFont(bold);
    DWORD count = 0;
    // The system copies the file; it is only read.
    void* bytes = const_cast<std::uint8_t*>(file.data());
    return !file.empty() &&
           AddFontMemResourceEx(bytes, static_cast<DWORD>(file.size()), nullptr, &count) != nullptr;
}

DWORD SystemQuality(int quality) {
    switch (quality) {
    case IText::QualityNonAntiAliased:
        return NONANTIALIASED_QUALITY;
    case IText::QualityAntiAliased:
        return ANTIALIASED_QUALITY;
    case IText::QualityClearType:
        return CLEARTYPE_QUALITY;
    default:
        return DEFAULT_QUALITY;
    }
}

/// The heights of a line as the font's designer meant them, in parts of the em.
struct DesignedLine {
    double ascent = 0.0;
    double height = 0.0; ///< 0 where the font does not tell
};

/// Reads them from the font's horizontal header. The system's own metrics have room for accents on capitals,
/// which would push every text of the editor down.
DesignedLine ReadDesignedLine(HDC context) {
    constexpr DWORD kHeader = 0x61656868; // "hhea"
    constexpr DWORD kFirst = 4;           // ascender, descender, gap: two bytes each, high byte first
    std::array<std::uint8_t, 6> bytes{};
    OUTLINETEXTMETRICA metrics{};
    if (GetFontData(context, kHeader, kFirst, bytes.data(), static_cast<DWORD>(bytes.size())) !=
            bytes.size() ||
        GetOutlineTextMetricsA(context, sizeof(metrics), &metrics) == 0 || metrics.otmEMSquare == 0)
        return {};
    const auto number = [&](std::size_t at) {
        return static_cast<double>(static_cast<std::int16_t>((bytes[at] << 8) | bytes[at + 1]));
    };
    const double em = metrics.otmEMSquare;
    return {number(0) / em, (number(0) - number(2) + number(4)) / em};
}

int Rounded(double pixels) {
    return static_cast<int>(std::floor(pixels + 0.5));
}

/// How much of a pixel is covered where white was drawn on black. The system may draw for each colour's place
/// on the screen of its own; the mean of them is the whole pixel's.
std::uint8_t CoverageOf(LICE_pixel pixel) {
    const LICE_pixel sum = (pixel & 0xFFU) + ((pixel >> 8U) & 0xFFU) + ((pixel >> 16U) & 0xFFU);
    return static_cast<std::uint8_t>((sum + 1U) / 3U);
}

/// The smallest rectangle around all that was drawn.
IRECT DrawnPart(LICE_IBitmap& bitmap) {
    IRECT part;
    for (int y = 0; y < bitmap.getHeight(); ++y) {
        const LICE_pixel* row = bitmap.getBits() + static_cast<std::ptrdiff_t>(y) * bitmap.getRowSpan();
        for (int x = 0; x < bitmap.getWidth(); ++x) {
            if (CoverageOf(row[x]) != 0) part = part.Union({x, y, x + 1, y + 1});
        }
    }
    return part;
}

std::vector<std::wstring> LinesOf(const std::wstring& text) {
    std::vector<std::wstring> lines(1);
    for (const wchar_t unit : text) {
        if (unit == L'\n') {
            lines.emplace_back();
        } else {
            lines.back() += unit;
        }
    }
    return lines;
}

/// Where a bitmap's own pixels begin in the picture of its context: a part of a bitmap has the context of the
/// whole. False if they do not lie there.
bool FindOrigin(HDC context, LICE_IBitmap& bitmap, POINT& origin) {
    DIBSECTION whole{};
    if (GetObjectA(GetCurrentObject(context, OBJ_BITMAP), sizeof(whole), &whole) != sizeof(whole))
        return false;
    const auto* first = static_cast<const LICE_pixel*>(whole.dsBm.bmBits);
    const std::ptrdiff_t offset = bitmap.getBits() - first;
    const std::ptrdiff_t span = whole.dsBm.bmWidth;
    if (first == nullptr || span != bitmap.getRowSpan() || offset < 0 || offset >= span * whole.dsBm.bmHeight)
        return false;
    origin = {static_cast<LONG>(offset % span), static_cast<LONG>(offset / span)};
    return true;
}

} // namespace

bool RunsUnderWine() {
    static const bool found = [] {
        HKEY key = nullptr;
        if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, "Software\\Wine", 0, KEY_READ, &key) != ERROR_SUCCESS)
            return false;
        RegCloseKey(key);
        return true;
    }();
    return found;
}

const char* EditorFontFamily() {
    // The embedded fonts are added for this process only, so that the editor looks the same on every system.
    static const bool embedded = RegisterFont(false) && RegisterFont(true);
    return embedded ? "Roboto Condensed" : "Verdana";
}

HFONT MakeSystemFont(const IText& text, int normalWeight) {
    if (text.size < 1 || text.size > kMaxHeight) return nullptr;
    const int angle = text.orientation * 10;
    // A negative height is that of the em.
    return CreateFontA(-text.size, 0, angle, angle,
                       (text.style & IText::StyleBold) != 0 ? kWeightBold : normalWeight,
                       (text.style & IText::StyleItalic) != 0 ? TRUE : FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                       OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, SystemQuality(text.quality),
                       DEFAULT_PITCH | FF_DONTCARE, EditorFontFamily());
}

GdiGlyphs::GdiGlyphs(const IText& text)
    : font(MakeSystemFont(text, kWeightNormal)), size(text.size), orientation(text.orientation % 360) {
    LICE_SysBitmap scratch(1, 1);
    auto* context = static_cast<HDC>(scratch.getDC());
    if (font == nullptr || context == nullptr) return;
    const FontInUse inUse(context, font);
    TEXTMETRICA metrics{};
    if (GetTextMetricsA(context, &metrics) == FALSE) return;
    lineHeight = static_cast<int>(metrics.tmHeight + metrics.tmExternalLeading);
    const DesignedLine designed = ReadDesignedLine(context);
    if (!(designed.height > 0.0)) return;
    lineHeight = Rounded(designed.height * size);
    lift = static_cast<int>(metrics.tmAscent) - Rounded(designed.ascent * size);
}

GdiGlyphs::~GdiGlyphs() {
    if (font != nullptr) DeleteObject(font);
}

LICE_Vector GdiGlyphs::Turned(int along, int down) const {
    const double angle = orientation * std::numbers::pi / 180.0;
    return {Rounded(along * std::cos(angle) + down * std::sin(angle)),
            Rounded(down * std::cos(angle) - along * std::sin(angle))};
}

LICE_Vector GdiGlyphs::LineStep() const {
    return Turned(0, lineHeight);
}

LICE_Glyph GdiGlyphs::Render(char32_t character) {
    LICE_Glyph glyph;
    const int pen = 2 * size + 8; // room on all sides, for a turned text too
    LICE_SysBitmap scratch(2 * pen, 2 * pen);
    auto* context = static_cast<HDC>(scratch.getDC());
    if (context == nullptr) return glyph;
    const FontInUse inUse(context, font);
    const std::wstring text = WideCharacter(character);
    const int length = static_cast<int>(text.size());
    SIZE extent{};
    GetTextExtentPoint32W(context, text.c_str(), length, &extent);
    SetTextColor(context, RGB(255, 255, 255));
    TextOutW(context, pen, pen, text.c_str(), length);
    GdiFlush();
    const LICE_Vector advance = Turned(static_cast<int>(extent.cx), 0);
    glyph.advanceX = advance.x;
    glyph.advanceY = advance.y;
    const IRECT part = DrawnPart(scratch);
    glyph.width = part.W();
    glyph.height = part.H();
    if (part.Empty()) return glyph;
    const LICE_Vector lifted = Turned(0, lift);
    glyph.left = part.L - pen - lifted.x;
    glyph.top = part.T - pen - lifted.y;
    glyph.coverage.reserve(static_cast<std::size_t>(part.W()) * static_cast<std::size_t>(part.H()));
    for (int y = part.T; y < part.B; ++y) {
        const LICE_pixel* row = scratch.getBits() + static_cast<std::ptrdiff_t>(y) * scratch.getRowSpan();
        std::transform(row + part.L, row + part.R, std::back_inserter(glyph.coverage), CoverageOf);
    }
    return glyph;
}

bool GdiGlyphs::DrawNative(LICE_IBitmap& dest, std::u32string_view text, const IRECT& rect, LICE_pixel color,
                           unsigned flags) {
    return !RunsUnderWine() && DrawInContext(dest, text, rect, color, flags);
}

bool GdiGlyphs::DrawInContext(LICE_IBitmap& dest, std::u32string_view text, const IRECT& rect,
                              LICE_pixel color, unsigned flags) {
    if (orientation != 0 || dest.getBits() == nullptr) return false;
    auto* context = static_cast<HDC>(dest.getDC());
    POINT origin{};
    if (context == nullptr || !FindOrigin(context, dest, origin)) return false;
    std::wstring wide;
    for (const char32_t character : text)
        wide += WideCharacter(character);
    const FontInUse inUse(context, font);
    IntersectClipRect(context, origin.x, origin.y, origin.x + dest.getWidth(), origin.y + dest.getHeight());
    IntersectClipRect(context, origin.x + rect.L, origin.y + rect.T, origin.x + rect.R, origin.y + rect.B);
    RECT place{origin.x + rect.L, origin.y + rect.T - lift, origin.x + rect.R, origin.y + rect.B};
    UINT format = DT_NOPREFIX | DT_NOCLIP;
    if ((flags & LICE_TextCenter) != 0) format |= DT_CENTER;
    if ((flags & LICE_TextRight) != 0) format |= DT_RIGHT;
    SetTextColor(context, RGB((color >> 16U) & 0xFFU, (color >> 8U) & 0xFFU, color & 0xFFU));
    for (const std::wstring& line : LinesOf(wide)) {
        DrawTextW(context, line.c_str(), static_cast<int>(line.size()), &place, format | DT_SINGLELINE);
        place.top += lineHeight;
    }
    GdiFlush();
    return true;
}

std::unique_ptr<LICE_IFont> LICE_MakeFont(const IText& text) {
    auto glyphs = std::make_unique<GdiGlyphs>(text);
    if (!glyphs->IsUsable()) return nullptr;
    return std::make_unique<LICE_CachedFont>(std::move(glyphs));
}

} // namespace Grimworks
