#pragma once

#include "editor/Types.h"
#include "editor/x11/X11Gate.h"
#include "editor/x11/X11Pointer.h"
#include "editor/x11/X11Surface.h"
#include "editor/x11/X11TextEntry.h"
#include "editor/x11/X11Tooltip.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <xcb/xcb.h>

namespace Grimworks {

class IControl;
class IGraphics;
class IParam;

/// The editor's window inside the host's: its clock, mouse and keys, its text entry and its tooltip. Editor
/// thread only.
class X11Window final : public X11Surface, public X11Ticker {
public:
    /// How long the mouse rests before a tooltip comes.
    static constexpr std::chrono::milliseconds kHoverTime{500};

    /// `toldNumber` holds the window's number while it exists, else 0.
    X11Window(X11Loop& itsLoop, IGraphics& itsGraphics, std::shared_ptr<X11Gate> itsGate,
              std::atomic<std::uint32_t>& toldNumber);
    ~X11Window() override;

    /// Makes and shows the window. False if the parent does not take one.
    bool Open(xcb_window_t itsParent);

    /// Takes the window away, with everything that waits for it. This object stays.
    void Close();

    void OnEvent(const xcb_generic_event_t& event) override;
    [[nodiscard]] std::chrono::milliseconds Period() const override;
    void OnTick() override;
    void OnConnectionLost() override;

    void HideCursor();
    void ShowCursor();

    /// Opens the text entry unless one is open. What is typed goes to the control at a tick.
    void OpenEntry(IControl& control, const IText& text, const IRECT& rect, const std::string& string,
                   const IParam* param);
    void CancelEntry();
    [[nodiscard]] bool IsEditing() const { return entry != nullptr; }

    /// The pop-up that shows a control's tooltip, if it does.
    [[nodiscard]] bool ShowsTooltip() const { return tooltip != nullptr; }

    /// What a menu or dialog took over: no button is held any more as far as controls are concerned.
    void ForgetButtons();

private:
    void OnExpose(const xcb_expose_event_t& event);
    void OnPress(const xcb_button_press_event_t& event);
    void OnRelease(const xcb_button_release_event_t& event);
    void OnMotion(int x, int y, std::uint16_t state);
    void OnWheel(const xcb_button_press_event_t& event, int notches);
    void OnLeave(const xcb_leave_notify_event_t& event);
    void OnKey(const xcb_key_press_event_t& event);
    void HandToParent(const xcb_key_press_event_t& event);
    void OnMessage(const xcb_client_message_event_t& event);
    void OnGone();
    void TickEntry();
    void CommitEntry();
    void TickTooltip();
    void ShowTooltip(const std::string& text);
    void EndGesture();
    void AnnounceEmbedding();

    IGraphics& graphics;
    std::shared_ptr<X11Gate> gate;
    std::atomic<std::uint32_t>& number;
    xcb_window_t parent = XCB_NONE;
    X11Pointer pointer;
    std::unique_ptr<X11TextEntry> entry;
    std::unique_ptr<X11Tooltip> tooltip;
    bool ticking = false;
    bool mouseInside = false;
    bool mouseMoved = false; ///< since it came in: over a mouse that lies still a window opens without a word
    int mouseX = 0;
    int mouseY = 0;
    Clock::time_point restsSince;
    int tooltipIndex = -1; ///< control whose tooltip was shown while the mouse was over it
    bool cursorHidden = false;
    int hiddenAtX = 0;
    int hiddenAtY = 0;
};

} // namespace Grimworks
