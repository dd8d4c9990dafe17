#include "editor/x11/X11Style.h"

#include "editor/LICE_Draw.h"
#include "editor/LICE_IFont.h"

#include <algorithm>

namespace Grimworks::X11Style {

namespace {

constexpr int kWidest = 32000;

bool IsInsideCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// Bytes of the longest beginning that fits in the width; at least one character.
std::size_t FittingPart(LICE_IFont* font, std::string_view line, int width) {
    std::size_t fits = 0;
    std::size_t blank = 0;
    while (fits < line.size()) {
        std::size_t next = fits + 1;
        while (next < line.size() && IsInsideCharacter(line[next]))
            ++next;
        if (fits > 0 && WidthOf(font, line.substr(0, next)) > width) return blank > 0 ? blank : fits;
        if (line[fits] == ' ') blank = next;
        fits = next;
    }
    return fits;
}

} // namespace

void DrawBox(LICE_IBitmap& bitmap, const IRECT& rect, LICE_pixel fill, LICE_pixel border) {
    LICE_FillRect(&bitmap, rect.L, rect.T, rect.W(), rect.H(), fill);
    LICE_DrawRect(&bitmap, rect.L, rect.T, rect.W(), rect.H(), border);
}

void DrawLine(LICE_IBitmap& bitmap, LICE_IFont* font, std::string_view text, const IRECT& rect,
              LICE_pixel color, unsigned flags) {
    if (font == nullptr || text.empty()) return;
    IRECT line = rect;
    line.T += (rect.H() - font->LineHeight()) / 2;
    font->SetTextColor(color);
    font->DrawText(&bitmap, text, line, flags);
}

int WidthOf(LICE_IFont* font, std::string_view text) {
    if (font == nullptr || text.empty()) return 0;
    IRECT measured(0, 0, kWidest, font->LineHeight());
    font->DrawText(nullptr, text, measured, LICE_TextCalcRect);
    return measured.W();
}

std::vector<std::string> Wrap(LICE_IFont* font, std::string_view text, int width) {
    std::vector<std::string> lines;
    while (true) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        do {
            const std::size_t part = FittingPart(font, line, width);
            lines.emplace_back(line.substr(0, part)); // NOLINT(performance-inefficient-vector-operation)
            line.remove_prefix(part);
        } while (!line.empty());
        if (end == text.size()) return lines;
        text.remove_prefix(end + 1);
    }
}

} // namespace Grimworks::X11Style
