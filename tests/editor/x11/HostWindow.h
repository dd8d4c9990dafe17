#pragma once

#include "editor/LICE_MemBitmap.h"
#include "editor/Types.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>
#include <xcb/xcb.h>

namespace Grimworks {

/// The host's side of a window: a top-level window on a connection of its own, into which an editor is
/// opened, and the keyboard and mouse of a user.
class HostWindow {
public:
    HostWindow(int left, int top, int width, int height, std::uint8_t depth = 0);
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    /// What an editor is opened with; null if there is no display.
    [[nodiscard]] void* Parent() const;
    [[nodiscard]] bool Works() const { return window != XCB_NONE; }

    /// The host takes its window away, and all in it.
    void Destroy();

    /// Waits until the server has done all that was asked for so far.
    void Sync();

    /// Children of a window, from back to front.
    [[nodiscard]] std::vector<xcb_window_t> ChildrenOf(xcb_window_t parent);
    [[nodiscard]] std::vector<xcb_window_t> Editors() { return ChildrenOf(window); }
    /// Pop-up windows that are shown on the screen, from back to front.
    [[nodiscard]] std::vector<xcb_window_t> Popups();

    /// Place of a window on the screen; empty if there is none.
    [[nodiscard]] IRECT PlaceOf(xcb_window_t which);

    /// What a window shows.
    void Grab(xcb_window_t which, LICE_MemBitmap& picture);

    /// The first `count` pixels of a window's upper row, as the display numbers its colours, alpha left out.
    [[nodiscard]] std::vector<std::uint32_t> PixelNumbers(xcb_window_t which, int count);

    /// Property of 32-bit numbers.
    [[nodiscard]] std::vector<std::uint32_t> Numbers(xcb_window_t which, const std::string& property);

    /// Key codes of presses (positive) and releases (negative) that reached this window.
    [[nodiscard]] std::vector<int> Keys();

    /// Where the mouse is on the screen: L and T.
    [[nodiscard]] IRECT Mouse();

    /// Gives a key of the display's keyboard another symbol.
    void MapKey(int code, xcb_keysym_t symbol);

    /// Takes the mouse for this window, as a host's menu does, and lets it go again.
    void TakeMouse();
    void LetMouseGo();

    /// Takes the window off the screen with all in it, and brings it back.
    void Hide();
    void ShowAgain();

    [[nodiscard]] xcb_window_t Focus();
    void TakeFocus();

    /// Owns the clipboard with this text until `until` is true.
    void OfferClipboard(const std::string& text, const std::function<bool()>& until);
    /// How often the clipboard was asked for.
    [[nodiscard]] int ClipboardAnswers() const { return clipboardAnswers; }

private:
    xcb_atom_t Atom(const std::string& name);
    void AnswerClipboard(const xcb_selection_request_event_t& request, const std::string& text);

    xcb_connection_t* connection;
    xcb_screen_t* screen = nullptr;
    xcb_window_t window = XCB_NONE;
    std::vector<int> keys;
    int clipboardAnswers = 0;
};

/// Waits until something is so; false if it takes longer than any machine needs.
[[nodiscard]] bool Eventually(const std::function<bool()>& isSo);

/// Runs a program and waits for it; gives its exit status.
int RunProgram(const std::vector<std::string>& words);

/// Lets a user's keyboard and mouse act: words of xdotool.
[[nodiscard]] bool User(const std::vector<std::string>& words);

/// Points of the screen for User.
[[nodiscard]] std::vector<std::string> MoveTo(int x, int y);

} // namespace Grimworks
