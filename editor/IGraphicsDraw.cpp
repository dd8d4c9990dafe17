#include "core/Immortal.h"
#include "editor/EmbeddedFiles.h"
#include "editor/IGraphics.h"
#include "editor/LICE_CachedFont.h"
#include "editor/LICE_Draw.h"
#include "editor/LICE_Png.h"
#include "editor/LICE_SubBitmap.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <map>

namespace Grimworks {

namespace {

/// Bitmaps of all instances, by id; kept as long as the process lives.
struct BitmapCache {
    std::mutex lock;
    std::map<int, std::unique_ptr<LICE_IBitmap>> bitmaps;
};

BitmapCache& TheBitmapCache() {
    static Immortal<BitmapCache> cache;
    return *cache;
}

/// Fonts of all instances. The lock is also held while one draws, since it may have to draw a new glyph.
struct FontCache {
    std::mutex lock;
    std::map<FontKey, std::unique_ptr<LICE_IFont>> fonts;
};

FontCache& TheFontCache() {
    static Immortal<FontCache> cache;
    return *cache;
}

LICE_pixel PixelOf(const IColor& color) {
    const auto limited = [](int channel) { return std::clamp(channel, 0, 255); };
    return LICE_RGBA(limited(color.R), limited(color.G), limited(color.B), limited(color.A));
}

FontKey KeyOf(const IText& text) {
    constexpr std::size_t kFaceLength = 31;
    return {text.font.substr(0, kFaceLength), text.size, text.style, text.orientation};
}

unsigned FlagsOf(const IText& text) {
    unsigned flags = LICE_TextNative;
    if (text.align == IText::AlignCenter) flags |= LICE_TextCenter;
    if (text.align == IText::AlignFar) flags |= LICE_TextRight;
    if (text.color.A < 255) flags |= LICE_TextWantAlpha;
    return flags;
}

bool IsPngName(std::string_view fileName) {
    const std::string_view suffix = fileName.substr(std::min(fileName.rfind('.'), fileName.size()));
    constexpr std::string_view kPng = ".png";
    return std::equal(suffix.begin(), suffix.end(), kPng.begin(), kPng.end(), [](char a, char b) {
        return std::tolower(static_cast<unsigned char>(a)) == static_cast<unsigned char>(b);
    });
}

} // namespace

IBitmap IGraphics::LoadIBitmap(int id, const std::string& fileName, int nFrames, bool framesAreHorizontal) {
    BitmapCache& cache = TheBitmapCache();
    const std::lock_guard guard(cache.lock);
    std::unique_ptr<LICE_IBitmap>& image = cache.bitmaps[id];
    if (image == nullptr) image = OSLoadBitmap(id, fileName);
    IBitmap bitmap;
    bitmap.data = image.get();
    bitmap.N = std::max(nFrames, 1);
    bitmap.framesAreHorizontal = framesAreHorizontal;
    if (image != nullptr) {
        bitmap.W = image->getWidth();
        bitmap.H = image->getHeight();
    }
    return bitmap;
}

std::unique_ptr<LICE_IBitmap> IGraphics::OSLoadBitmap(int id, const std::string& fileName) {
    if (!IsPngName(fileName)) return nullptr;
    auto image = std::make_unique<LICE_PngBitmap>(EmbeddedBitmap(id));
    if (image->getWidth() == 0) return nullptr;
    return image;
}

bool IGraphics::DrawBitmap(const IBitmap& bitmap, const IRECT& rect, int srcX, int srcY,
                           const IChannelBlend& blend) {
    const IRECT shown = rect.Intersect(drawRect);
    if (shown.Empty() || bitmap.data == nullptr) return false;
    const int fromX = srcX + shown.L - rect.L;
    const int fromY = srcY + shown.T - rect.T;
    LICE_Blit(&drawBitmap, bitmap.data, shown.L, shown.T,
              {fromX, fromY, fromX + shown.W(), fromY + shown.H()}, blend.weight, blend.method);
    return true;
}

bool IGraphics::DrawBitmapFrame(const IBitmap& bitmap, const IRECT& rect, int frame,
                                const IChannelBlend& blend) {
    const auto offset = [&](int size) {
        if (bitmap.N < 2 || frame < 2) return 0;
        return static_cast<int>(std::floor(static_cast<double>(size) * (frame - 1) / bitmap.N + 0.5));
    };
    if (bitmap.framesAreHorizontal) return DrawBitmap(bitmap, rect, offset(bitmap.W), 0, blend);
    return DrawBitmap(bitmap, rect, 0, offset(bitmap.H), blend);
}

bool IGraphics::FillIRect(const IColor& color, const IRECT& rect, const IChannelBlend& blend) {
    const IRECT shown = rect.Intersect(drawRect);
    if (shown.Empty()) return false;
    LICE_FillRect(&drawBitmap, shown.L, shown.T, shown.W(), shown.H(), PixelOf(color), blend.weight,
                  blend.method);
    return true;
}

bool IGraphics::DrawRect(const IColor& color, const IRECT& rect) {
    LICE_SubBitmap shown(drawBitmap, drawRect);
    if (shown.getBits() == nullptr) return false;
    LICE_DrawRect(&shown, rect.L - shown.Left(), rect.T - shown.Top(), rect.W(), rect.H(), PixelOf(color));
    return true;
}

bool IGraphics::DrawLine(const IColor& color, int x1, int y1, int x2, int y2, const IChannelBlend& blend) {
    LICE_SubBitmap shown(drawBitmap, drawRect);
    if (shown.getBits() == nullptr) return false;
    LICE_Line(&shown, x1 - shown.Left(), y1 - shown.Top(), x2 - shown.Left(), y2 - shown.Top(),
              PixelOf(color), blend.weight, blend.method);
    return true;
}

bool IGraphics::FillTriangle(const IColor& color, int x1, int y1, int x2, int y2, int x3, int y3,
                             const IChannelBlend& blend) {
    LICE_SubBitmap shown(drawBitmap, drawRect);
    if (shown.getBits() == nullptr) return false;
    const int left = shown.Left();
    const int top = shown.Top();
    LICE_FillTriangle(&shown, x1 - left, y1 - top, x2 - left, y2 - top, x3 - left, y3 - top, PixelOf(color),
                      blend.weight, blend.method);
    return true;
}

std::unique_ptr<LICE_IFont> IGraphics::MakeFont(const IText& text) {
    return LICE_MakeFont(text);
}

LICE_IFont* IGraphics::FontOf(const IText& text) {
    const FontKey key = KeyOf(text);
    if (text.cached != nullptr && text.cachedKey == key) return text.cached;
    std::unique_ptr<LICE_IFont>& font = TheFontCache().fonts[key];
    if (font == nullptr) font = MakeFont(text);
    text.cached = font.get();
    text.cachedKey = key;
    return text.cached;
}

template <typename Use>
bool IGraphics::WithFont(const IText& text, Use use) {
    const std::lock_guard guard(TheFontCache().lock);
    LICE_IFont* font = FontOf(text);
    if (font == nullptr) return false;
    use(*font);
    return true;
}

bool IGraphics::DrawIText(const IText& text, std::string_view string, const IRECT& rect) {
    if (string.empty()) return true;
    LICE_SubBitmap shown(drawBitmap, drawRect);
    return WithFont(text, [&](LICE_IFont& font) {
        font.SetTextColor(PixelOf(text.color));
        IRECT place(rect.L - shown.Left(), rect.T - shown.Top(), rect.R - shown.Left(), rect.B - shown.Top());
        font.DrawText(&shown, string, place, FlagsOf(text));
    });
}

bool IGraphics::MeasureIText(const IText& text, std::string_view string, IRECT& rect) {
    if (string.empty()) return true;
    return WithFont(text, [&](LICE_IFont& font) {
        IRECT size(0, 0, 0, 0);
        font.DrawText(&drawBitmap, string, size, FlagsOf(text) | LICE_TextCalcRect);
        if (text.align == IText::AlignCenter) rect.L += (rect.W() - size.W()) / 2;
        if (text.align == IText::AlignFar) rect.L = rect.R - size.W();
        rect.R = rect.L + size.W();
        rect.B = rect.T + size.H();
    });
}

} // namespace Grimworks
