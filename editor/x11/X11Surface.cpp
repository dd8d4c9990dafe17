#include "editor/x11/X11Surface.h"

#include <array>

namespace Grimworks {

X11Surface::~X11Surface() {
    Destroy();
}

bool X11Surface::Create(const Making& making) {
    X11Connection& connection = loop.Connection();
    const bool popup = making.parent == XCB_NONE;
    const xcb_screen_t& screen = connection.Screen();
    const auto found =
        popup ? connection.FormatOf(screen.root_visual) : connection.FormatForChildOf(making.parent);
    if (!found || making.place.W() <= 0 || making.place.H() <= 0) return false;
    format = *found;
    surfaceWidth = making.place.W();
    surfaceHeight = making.place.H();
    const xcb_window_t made = xcb_generate_id(Display());
    const std::array<std::uint32_t, 4> values = {screen.black_pixel, popup ? 1U : 0U, making.events,
                                                 connection.ColorMapOf(format.visual)};
    const std::uint32_t mask =
        XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP;
    const X11Reply<xcb_generic_error_t> refused(xcb_request_check(
        Display(),
        xcb_create_window_checked(
            Display(), static_cast<std::uint8_t>(format.depth), made, popup ? screen.root : making.parent,
            static_cast<std::int16_t>(making.place.L), static_cast<std::int16_t>(making.place.T),
            static_cast<std::uint16_t>(surfaceWidth), static_cast<std::uint16_t>(surfaceHeight), 0,
            XCB_WINDOW_CLASS_INPUT_OUTPUT, format.visual, mask, values.data())));
    if (refused != nullptr || connection.Lost()) return false;
    window = made;
    context = xcb_generate_id(Display());
    const std::uint32_t noExposures = 0;
    xcb_create_gc(Display(), context, window, XCB_GC_GRAPHICS_EXPOSURES, &noExposures);
    image.emplace(connection, format, surfaceWidth, surfaceHeight);
    loop.AddSink(window, *this);
    return true;
}

void X11Surface::Destroy() {
    if (window == XCB_NONE) return;
    GiveFocusBack();
    const xcb_window_t gone = window;
    Forget();
    xcb_destroy_window(Display(), gone);
    loop.Connection().Flush();
}

void X11Surface::Forget() {
    if (window == XCB_NONE) return;
    loop.RemoveSink(window);
    image.reset();
    xcb_free_gc(Display(), context);
    window = XCB_NONE;
    context = XCB_NONE;
    hasFocus = false;
}

void X11Surface::Show() {
    if (window != XCB_NONE) xcb_map_window(Display(), window);
}

void X11Surface::Raise() {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    if (window != XCB_NONE) xcb_configure_window(Display(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
}

void X11Surface::Resize(int newWidth, int newHeight) {
    if (window == XCB_NONE || newWidth <= 0 || newHeight <= 0) return;
    if (newWidth == surfaceWidth && newHeight == surfaceHeight) return;
    surfaceWidth = newWidth;
    surfaceHeight = newHeight;
    const std::array<std::uint32_t, 2> size = {static_cast<std::uint32_t>(surfaceWidth),
                                               static_cast<std::uint32_t>(surfaceHeight)};
    xcb_configure_window(Display(), window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size.data());
    image.emplace(loop.Connection(), format, surfaceWidth, surfaceHeight);
}

void X11Surface::Put(LICE_IBitmap& bitmap, const IRECT& part) {
    if (window != XCB_NONE) image->Put(bitmap, part, window, context);
}

std::optional<IRECT> X11Surface::OnScreen(const IRECT& rect) {
    if (window == XCB_NONE) return std::nullopt;
    const auto asked =
        xcb_translate_coordinates(Display(), window, loop.Connection().Screen().root,
                                  static_cast<std::int16_t>(rect.L), static_cast<std::int16_t>(rect.T));
    const X11Reply<xcb_translate_coordinates_reply_t> reply(
        xcb_translate_coordinates_reply(Display(), asked, nullptr));
    if (reply == nullptr) return std::nullopt;
    return IRECT(reply->dst_x, reply->dst_y, reply->dst_x + rect.W(), reply->dst_y + rect.H());
}

void X11Surface::TakeFocus() {
    if (window == XCB_NONE || hasFocus) return;
    const X11Reply<xcb_get_input_focus_reply_t> before(
        xcb_get_input_focus_reply(Display(), xcb_get_input_focus(Display()), nullptr));
    focusBefore = before != nullptr ? before->focus : xcb_window_t{XCB_INPUT_FOCUS_POINTER_ROOT};
    xcb_set_input_focus(Display(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    hasFocus = true;
}

void X11Surface::GiveFocusBack() {
    if (window == XCB_NONE || !hasFocus) return;
    hasFocus = false;
    const X11Reply<xcb_get_input_focus_reply_t> now(
        xcb_get_input_focus_reply(Display(), xcb_get_input_focus(Display()), nullptr));
    // Whoever took it meanwhile keeps it.
    if (now == nullptr || now->focus != window) return;
    xcb_set_input_focus(Display(), XCB_INPUT_FOCUS_PARENT, focusBefore, XCB_CURRENT_TIME);
}

} // namespace Grimworks
