#pragma once

#include "editor/Types.h"

#include <cstdint>
#include <xcb/xcb.h>

namespace Grimworks {

/// What the mouse's buttons are doing: which are held, and which presses make a double click. Plain values.
class X11Pointer {
public:
    static constexpr int kLeft = 1;
    static constexpr int kMiddle = 2;
    static constexpr int kRight = 3;
    static constexpr int kWheelUp = 4;
    static constexpr int kWheelDown = 5;

    /// Milliseconds and pixels within which a second press makes a double click.
    static constexpr std::uint32_t kDoubleClickTime = 400;
    static constexpr int kDoubleClickDistance = 4;

    /// A button goes down. True if that is a double click; the press after one is a first one again.
    bool Press(int button, int x, int y, std::uint32_t time);
    void Release(int button);

    /// Forgets buttons that an event's `state` tells to be up: their release went elsewhere. True if any was.
    bool ForgetReleased(std::uint16_t state);

    /// Nothing is held any more, and the next press is a first one.
    void Clear() {
        held = 0;
        lastButton = 0;
    }

    [[nodiscard]] bool Holds(int button) const { return button < 32 && (held & BitOf(button)) != 0; }
    [[nodiscard]] bool AnyHeld() const { return held != 0; }

    /// Buttons and keys as controls get them; `state` is that of an event.
    [[nodiscard]] IMouseMod Mod(std::uint16_t state) const;

private:
    [[nodiscard]] static unsigned BitOf(int button) { return 1U << static_cast<unsigned>(button); }

    unsigned held = 0;
    int lastButton = 0;
    int lastX = 0;
    int lastY = 0;
    std::uint32_t lastTime = 0;
};

} // namespace Grimworks
