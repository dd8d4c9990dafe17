#pragma once

#include "editor/LICE_IBitmap.h"
#include "editor/Types.h"
#include "editor/x11/X11Connection.h"

#include <cstdint>
#include <vector>
#include <xcb/shm.h>
#include <xcb/xcb.h>

namespace Grimworks {

/// The way of pixels from a bitmap to a window of the display: through memory that the server shares, or,
/// with a display elsewhere, as part of the requests. Editor thread only.
class X11Image {
public:
    X11Image(X11Connection& itsConnection, const X11PixelFormat& pixelFormat, int imageWidth,
             int imageHeight);
    ~X11Image();
    X11Image(const X11Image&) = delete;
    X11Image& operator=(const X11Image&) = delete;

    /// Copies a part of the bitmap to the same place of the drawable; what is outside of either is left out.
    void Put(LICE_IBitmap& bitmap, const IRECT& part, xcb_drawable_t drawable, xcb_gcontext_t context);

    [[nodiscard]] bool IsShared() const { return segment != XCB_NONE; }

private:
    bool Share();
    void WaitUntilRead();
    void PutShared(LICE_IBitmap& bitmap, const IRECT& part, xcb_drawable_t drawable, xcb_gcontext_t context);
    void PutInRequests(LICE_IBitmap& bitmap, const IRECT& part, xcb_drawable_t drawable,
                       xcb_gcontext_t context);

    X11Connection& connection;
    X11PixelFormat format;
    int width;
    int height;
    xcb_shm_seg_t segment = XCB_NONE;
    void* shared = nullptr;
    std::vector<std::uint8_t> rows;
    bool beingRead = false; ///< the server may still read the shared memory
    xcb_get_input_focus_cookie_t readMark{};
};

} // namespace Grimworks
