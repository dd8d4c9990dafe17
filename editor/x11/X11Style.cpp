#include "editor/x11/X11Style.h"

#include "editor/LICE_Draw.h"
#include "editor/LICE_IFont.h"

namespace Grimworks::X11Style {

namespace {

constexpr int kWidest = 32000;

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

} // namespace Grimworks::X11Style
