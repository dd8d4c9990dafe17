#include "tests/editor/thudforge/FontWidths.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>

namespace {

constexpr std::size_t kNone = 0;
constexpr std::size_t kDirectory = 12;
constexpr std::size_t kDirectoryEntry = 16;

} // namespace

FontWidths::FontWidths(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    bytes.assign(std::istreambuf_iterator<char>(file), {});
    const std::size_t head = Table("head");
    const std::size_t hhea = Table("hhea");
    hmtx = Table("hmtx");
    const std::size_t maps = Table("cmap");
    if (head == kNone || hhea == kNone || hmtx == kNone || maps == kNone) return;
    for (int i = 0; i < At16(maps + 2); ++i) {
        const std::size_t record = maps + 4 + 8 * static_cast<std::size_t>(i);
        const std::size_t map = maps + static_cast<std::size_t>(At16(record + 4)) * 65536U +
                                static_cast<std::size_t>(At16(record + 6));
        if (At16(map) == 4) cmap = map;
    }
    if (cmap == kNone) return;
    unitsPerEm = At16(head + 18);
    ascender = static_cast<std::int16_t>(At16(hhea + 4));
    descender = static_cast<std::int16_t>(At16(hhea + 6));
    metrics = At16(hhea + 34);
}

int FontWidths::At8(std::size_t position) const {
    return position < bytes.size() ? bytes[position] : 0;
}

int FontWidths::At16(std::size_t position) const {
    return At8(position) * 256 + At8(position + 1);
}

std::size_t FontWidths::Table(std::string_view tag) const {
    for (int i = 0; i < At16(4); ++i) {
        const std::size_t entry = kDirectory + kDirectoryEntry * static_cast<std::size_t>(i);
        bool same = entry + kDirectoryEntry <= bytes.size();
        for (std::size_t k = 0; k < tag.size(); ++k) {
            same = same && At8(entry + k) == static_cast<unsigned char>(tag[k]);
        }
        if (same) {
            return static_cast<std::size_t>(At16(entry + 8)) * 65536U +
                   static_cast<std::size_t>(At16(entry + 10));
        }
    }
    return kNone;
}

int FontWidths::GlyphOf(int character) const {
    const auto segments = static_cast<std::size_t>(At16(cmap + 6) / 2);
    const std::size_t ends = cmap + 14;
    const std::size_t starts = ends + 2 * segments + 2;
    const std::size_t deltas = starts + 2 * segments;
    const std::size_t offsets = deltas + 2 * segments;
    for (std::size_t i = 0; i < segments; ++i) {
        if (character > At16(ends + 2 * i)) continue;
        const int start = At16(starts + 2 * i);
        if (character < start) return 0;
        const int offset = At16(offsets + 2 * i);
        const int delta = At16(deltas + 2 * i);
        if (offset == 0) return (character + delta) % 65536;
        const int glyph = At16(offsets + 2 * i + static_cast<std::size_t>(offset) +
                               2 * static_cast<std::size_t>(character - start));
        return glyph == 0 ? 0 : (glyph + delta) % 65536;
    }
    return 0;
}

int FontWidths::Width(std::string_view text, int size) const {
    double sum = 0.0;
    for (const char character : text) {
        const int glyph = std::min(GlyphOf(static_cast<unsigned char>(character)), metrics - 1);
        const int advance = At16(hmtx + 4 * static_cast<std::size_t>(glyph));
        sum += std::floor(static_cast<double>(advance) * size / unitsPerEm + 0.5);
    }
    return static_cast<int>(sum);
}

int FontWidths::Ascent(int size) const {
    return static_cast<int>(std::floor(static_cast<double>(ascender) * size / unitsPerEm + 0.5));
}

int FontWidths::LineHeight(int size) const {
    return static_cast<int>(std::ceil(static_cast<double>(ascender - descender) * size / unitsPerEm));
}
