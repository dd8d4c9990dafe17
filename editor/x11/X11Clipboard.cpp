#include "editor/x11/X11Clipboard.h"

#include "editor/x11/X11Reply.h"

namespace Grimworks::X11Clipboard {

namespace {

constexpr std::uint32_t kMostWords = 1024;

} // namespace

void Ask(X11Surface& surface) {
    X11Connection& connection = surface.Loop().Connection();
    xcb_convert_selection(connection.Get(), surface.Id(), connection.Atom(X11Atom::Clipboard),
                          connection.Atom(X11Atom::Utf8String), connection.Atom(X11Atom::Paste),
                          XCB_CURRENT_TIME);
}

std::string Take(X11Surface& surface, const xcb_selection_notify_event_t& event) {
    X11Connection& connection = surface.Loop().Connection();
    if (event.property == XCB_NONE) return {};
    const auto asked = xcb_get_property(connection.Get(), 1, surface.Id(), event.property,
                                        connection.Atom(X11Atom::Utf8String), 0, kMostWords);
    const X11Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection.Get(), asked, nullptr));
    if (reply == nullptr || reply->format != 8) return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

} // namespace Grimworks::X11Clipboard
