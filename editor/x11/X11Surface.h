#pragma once

#include "editor/LICE_IBitmap.h"
#include "editor/Types.h"
#include "editor/x11/X11Image.h"
#include "editor/x11/X11Loop.h"

#include <cstdint>
#include <optional>
#include <xcb/xcb.h>

namespace Grimworks {

/// A window of the display with a way to bring pixels to it. What becomes of its events is told by the class
/// above it. Editor thread only.
class X11Surface : public X11Sink {
public:
    /// What a window is made from. Without a parent it is a pop-up of the screen, which no window manager
    /// touches.
    struct Making {
        xcb_window_t parent = XCB_NONE;
        IRECT place;
        std::uint32_t events = 0;
    };

    explicit X11Surface(X11Loop& itsLoop) : loop(itsLoop) {}
    ~X11Surface() override;

    /// Makes the window, not shown yet. False if it cannot be had.
    bool Create(const Making& making);

    /// Takes the window away; harmless without one.
    void Destroy();

    /// The display took the window away, or is gone.
    void Forget();

    void Show();

    /// Brings it in front of its siblings.
    void Raise();
    void Resize(int newWidth, int newHeight);

    /// Copies a part of the bitmap to the window.
    void Put(LICE_IBitmap& bitmap, const IRECT& part);

    [[nodiscard]] xcb_window_t Id() const { return window; }
    [[nodiscard]] bool Exists() const { return window != XCB_NONE; }
    [[nodiscard]] X11Loop& Loop() { return loop; }
    [[nodiscard]] xcb_connection_t* Display() { return loop.Connection().Get(); }

    /// Where a point of this window is on the screen; none if the display does not tell.
    [[nodiscard]] std::optional<IRECT> OnScreen(const IRECT& rect);

    /// Takes the keyboard's focus, and gives it back to whoever had it before.
    void TakeFocus();
    void GiveFocusBack();

private:
    X11Loop& loop;
    X11PixelFormat format;
    std::optional<X11Image> image;
    xcb_window_t window = XCB_NONE;
    xcb_gcontext_t context = XCB_NONE;
    int surfaceWidth = 0;
    int surfaceHeight = 0;
    bool hasFocus = false;
    xcb_window_t focusBefore = XCB_NONE;
};

} // namespace Grimworks
