#include "editor/x11/X11Tooltip.h"

#include "editor/LICE_IFont.h"
#include "editor/x11/X11Style.h"

#include <algorithm>

namespace Grimworks {

namespace {

constexpr int kMarginX = 7;
constexpr int kMarginY = 4;
constexpr int kBelowMouse = 20;
constexpr int kAboveMouse = 8;

} // namespace

bool X11Tooltip::Open(const std::string& text, int screenX, int screenY) {
    LICE_IFont* const font = Loop().Font(false);
    if (font == nullptr) return false;
    const int width = X11Style::WidthOf(font, text) + 2 * kMarginX;
    const int height = font->LineHeight() + 2 * kMarginY;
    const xcb_screen_t& screen = Loop().Connection().Screen();
    const int left = std::clamp(screenX, 0, std::max(0, screen.width_in_pixels - width));
    int top = screenY + kBelowMouse;
    if (top + height > screen.height_in_pixels) top = std::max(0, screenY - kAboveMouse - height);
    if (!Create({XCB_NONE, {left, top, left + width, top + height}, XCB_EVENT_MASK_EXPOSURE})) return false;
    const IRECT whole(0, 0, width, height);
    if (!picture.resize(width, height)) return false;
    X11Style::DrawBox(picture, whole, X11Style::kRaised, X11Style::kBorder);
    X11Style::DrawLine(picture, font, text, whole, X11Style::kText, LICE_TextCenter);
    Show();
    return true;
}

void X11Tooltip::OnEvent(const xcb_generic_event_t& event) {
    if (X11KindOf(event) != XCB_EXPOSE) return;
    Put(picture, IRECT(0, 0, picture.getWidth(), picture.getHeight()));
}

} // namespace Grimworks
