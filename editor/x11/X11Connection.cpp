#include "editor/x11/X11Connection.h"

#include "editor/x11/X11Reply.h"

#include <string_view>
#include <xcb/shm.h>

namespace Grimworks {

namespace {

constexpr std::array<std::string_view, static_cast<std::size_t>(X11Atom::Count)> kAtomNames = {
    "_XEMBED",         "_XEMBED_INFO",        "CLIPBOARD",
    "UTF8_STRING",     "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_POPUP_MENU",
    "_THUDFORGE_PASTE"};

xcb_screen_t* ScreenOf(xcb_connection_t* connection, int number) {
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screens.rem > 1 && number > 0; --number)
        xcb_screen_next(&screens);
    return screens.rem > 0 ? screens.data : nullptr;
}

} // namespace

std::unique_ptr<X11Connection> X11Connection::Open() {
    int number = 0;
    xcb_connection_t* const opened = xcb_connect(nullptr, &number);
    xcb_screen_t* const screen = xcb_connection_has_error(opened) == 0 ? ScreenOf(opened, number) : nullptr;
    if (screen == nullptr) {
        xcb_disconnect(opened);
        return nullptr;
    }
    return std::make_unique<X11Connection>(opened, screen);
}

X11Connection::X11Connection(xcb_connection_t* opened, xcb_screen_t* itsScreen)
    : connection(opened), screen(itsScreen) {
    FindAtoms();
    FindSharedMemory();
}

X11Connection::~X11Connection() {
    xcb_disconnect(connection);
}

void X11Connection::FindAtoms() {
    std::array<xcb_intern_atom_cookie_t, kAtomNames.size()> asked{};
    for (std::size_t i = 0; i < asked.size(); ++i) {
        const std::string_view name = kAtomNames[i];
        asked[i] = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    }
    for (std::size_t i = 0; i < asked.size(); ++i) {
        const X11Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, asked[i], nullptr));
        if (reply != nullptr) atoms[i] = reply->atom;
    }
}

void X11Connection::FindSharedMemory() {
    const auto* extension = xcb_get_extension_data(connection, &xcb_shm_id);
    if (extension == nullptr || extension->present == 0) return;
    const X11Reply<xcb_shm_query_version_reply_t> reply(
        xcb_shm_query_version_reply(connection, xcb_shm_query_version(connection), nullptr));
    sharesMemory = reply != nullptr;
}

std::optional<X11PixelFormat> X11Connection::FormatOf(xcb_visualid_t visual) const {
    X11PixelFormat found;
    auto depths = xcb_screen_allowed_depths_iterator(screen);
    for (; depths.rem > 0 && found.depth == 0; xcb_depth_next(&depths)) {
        auto visuals = xcb_depth_visuals_iterator(depths.data);
        for (; visuals.rem > 0; xcb_visualtype_next(&visuals)) {
            const xcb_visualtype_t& type = *visuals.data;
            const bool plain =
                type._class == XCB_VISUAL_CLASS_TRUE_COLOR || type._class == XCB_VISUAL_CLASS_DIRECT_COLOR;
            if (type.visual_id != visual || !plain) continue;
            found.visual = visual;
            found.depth = depths.data->depth;
            found.redMask = type.red_mask;
            found.greenMask = type.green_mask;
            found.blueMask = type.blue_mask;
        }
    }
    const xcb_setup_t* const setup = xcb_get_setup(connection);
    found.msbFirst = setup->image_byte_order == XCB_IMAGE_ORDER_MSB_FIRST;
    auto formats = xcb_setup_pixmap_formats_iterator(setup);
    for (; formats.rem > 0; xcb_format_next(&formats)) {
        if (formats.data->depth != found.depth) continue;
        found.bitsPerPixel = formats.data->bits_per_pixel;
        found.scanlinePad = formats.data->scanline_pad;
    }
    if (found.depth == 0 || !found.IsUsable()) return std::nullopt;
    return found;
}

std::optional<X11PixelFormat> X11Connection::FormatForChildOf(xcb_window_t window) const {
    const X11Reply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(connection, xcb_get_window_attributes(connection, window), nullptr));
    if (attributes == nullptr || attributes->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT) return std::nullopt;
    const auto same = FormatOf(attributes->visual);
    return same ? same : FormatOf(screen->root_visual);
}

xcb_colormap_t X11Connection::ColorMapOf(xcb_visualid_t visual) {
    if (visual == screen->root_visual) return screen->default_colormap;
    const auto known = colorMaps.find(visual);
    if (known != colorMaps.end()) return known->second;
    const xcb_colormap_t made = xcb_generate_id(connection);
    xcb_create_colormap(connection, XCB_COLORMAP_ALLOC_NONE, made, screen->root, visual);
    colorMaps.emplace(visual, made);
    return made;
}

} // namespace Grimworks
