#pragma once

#include "editor/x11/X11PixelFormat.h"

#include <array>
#include <memory>
#include <optional>
#include <unordered_map>
#include <xcb/xcb.h>

namespace Grimworks {

/// Names that the display server keeps as numbers.
enum class X11Atom : int {
    XEmbed,
    XEmbedInfo,
    Clipboard,
    Utf8String,
    NetWmWindowType,
    TypePopup,
    Paste,
    Count
};

/// The editor's own connection to the display server. It shares nothing with the host's: no error of ours
/// reaches the host's handlers, and none of the host's locks is ever taken. A lost connection is a state, not
/// an error: requests do nothing from then on. Editor thread only.
class X11Connection {
public:
    /// Connects to the display that the environment names; null if there is none.
    [[nodiscard]] static std::unique_ptr<X11Connection> Open();

    /// Takes over an open connection that has this screen.
    X11Connection(xcb_connection_t* opened, xcb_screen_t* itsScreen);
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    [[nodiscard]] xcb_connection_t* Get() const { return connection; }
    [[nodiscard]] const xcb_screen_t& Screen() const { return *screen; }
    [[nodiscard]] bool Lost() const { return xcb_connection_has_error(connection) != 0; }
    void Flush() { xcb_flush(connection); }

    [[nodiscard]] xcb_atom_t Atom(X11Atom which) const { return atoms[static_cast<std::size_t>(which)]; }

    /// Whether server and editor may share memory for pictures.
    [[nodiscard]] bool SharesMemory() const { return sharesMemory; }
    void StopSharingMemory() { sharesMemory = false; }

    /// The form of a visual's pixels; none if the visual is unknown or not made of plain colours.
    [[nodiscard]] std::optional<X11PixelFormat> FormatOf(xcb_visualid_t visual) const;

    /// The form that a child of `window` gets: that of the window where we can draw in it, else the screen's.
    /// None if the window does not exist.
    [[nodiscard]] std::optional<X11PixelFormat> FormatForChildOf(xcb_window_t window) const;

    /// A colour map for windows of a visual.
    [[nodiscard]] xcb_colormap_t ColorMapOf(xcb_visualid_t visual);

private:
    void FindAtoms();
    void FindSharedMemory();

    xcb_connection_t* connection;
    xcb_screen_t* screen;
    std::array<xcb_atom_t, static_cast<std::size_t>(X11Atom::Count)> atoms{};
    std::unordered_map<xcb_visualid_t, xcb_colormap_t> colorMaps;
    bool sharesMemory = false;
};

} // namespace Grimworks
