#include "editor/x11/X11Pointer.h"

#include <cstdlib>

namespace Grimworks {

bool X11Pointer::Press(int button, int x, int y, std::uint32_t time) {
    held |= BitOf(button);
    // The display's clock wraps around after 49 days, and the difference with it.
    const bool isDouble = button == lastButton && time - lastTime <= kDoubleClickTime &&
                          std::abs(x - lastX) <= kDoubleClickDistance &&
                          std::abs(y - lastY) <= kDoubleClickDistance;
    lastButton = isDouble ? 0 : button;
    lastX = x;
    lastY = y;
    lastTime = time;
    return isDouble;
}

void X11Pointer::Release(int button) {
    held &= ~BitOf(button);
}

bool X11Pointer::ForgetReleased(std::uint16_t state) {
    constexpr unsigned kFirstButton = 7; // button 1 is bit 8
    const unsigned before = held;
    held &= static_cast<unsigned>(state) >> kFirstButton;
    return held != before;
}

IMouseMod X11Pointer::Mod(std::uint16_t state) const {
    return IMouseMod((held & BitOf(kLeft)) != 0, (held & BitOf(kRight)) != 0,
                     (state & XCB_MOD_MASK_SHIFT) != 0, (state & XCB_MOD_MASK_CONTROL) != 0,
                     (state & XCB_MOD_MASK_1) != 0);
}

} // namespace Grimworks
