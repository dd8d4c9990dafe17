#include "editor/x11/X11Window.h"

#include "editor/IGraphics.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

namespace Grimworks {

namespace {

constexpr std::uint32_t kEvents =
    XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
    XCB_EVENT_MASK_POINTER_MOTION | XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW |
    XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;

/// Pixels that a resting mouse may tremble.
constexpr int kRestDistance = 4;

} // namespace

X11Window::X11Window(X11Loop& itsLoop, IGraphics& itsGraphics, std::shared_ptr<X11Gate> itsGate,
                     std::atomic<std::uint32_t>& toldNumber)
    : X11Surface(itsLoop), graphics(itsGraphics), gate(std::move(itsGate)), number(toldNumber) {}

X11Window::~X11Window() {
    Close();
}

bool X11Window::Open(xcb_window_t itsParent) {
    const X11Gate::Visit visit(*gate);
    if (!visit) return false;
    parent = itsParent;
    if (!Create({parent, {0, 0, graphics.Width(), graphics.Height()}, kEvents})) return false;
    number = Id();
    AnnounceEmbedding();
    Show();
    Loop().AddTicker(*this);
    ticking = true;
    graphics.SetAllControlsDirty();
    graphics.Draw(IRECT(0, 0, graphics.Width(), graphics.Height()));
    Loop().Connection().Flush();
    return Exists();
}

void X11Window::AnnounceEmbedding() {
    constexpr std::array<std::uint32_t, 2> kVersionAndMapped = {0, 1};
    const xcb_atom_t info = Loop().Connection().Atom(X11Atom::XEmbedInfo);
    xcb_change_property(Display(), XCB_PROP_MODE_REPLACE, Id(), info, info, 32, kVersionAndMapped.size(),
                        kVersionAndMapped.data());
    constexpr std::string_view kTitle = "IPlug";
    xcb_change_property(Display(), XCB_PROP_MODE_REPLACE, Id(), XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                        kTitle.size(), kTitle.data());
}

void X11Window::Close() {
    if (!ticking) return;
    EndGesture();
    OnGone();
    Destroy();
}

void X11Window::OnGone() {
    if (ticking) Loop().RemoveTicker(*this);
    ticking = false;
    number = 0;
    Loop().CancelModalsOf(this);
    entry.reset();
    tooltip.reset();
    pointer.Clear();
}

void X11Window::EndGesture() {
    const X11Gate::Visit visit(*gate);
    if (!visit) return;
    if (gate->Inside() > 1) {
        // The handler that is at work ends its own gesture, as there is nothing left that holds the mouse.
        graphics.ReleaseMouseCapture();
        return;
    }
    if (!pointer.AnyHeld() || graphics.MouseCapture() < 0) return;
    pointer.Clear();
    graphics.OnMouseUp(mouseX, mouseY, IMouseMod());
}

void X11Window::OnConnectionLost() {
    EndGesture();
    OnGone();
    Forget();
}

std::chrono::milliseconds X11Window::Period() const {
    return std::chrono::milliseconds(1000 / std::clamp(graphics.Fps(), 1, 1000));
}

void X11Window::OnEvent(const xcb_generic_event_t& event) {
    if (X11KindOf(event) == XCB_DESTROY_NOTIFY) EndGesture(); // a host may take its window away in a drag
    const X11Gate::Visit visit(*gate);
    if (!visit) return;
    switch (X11KindOf(event)) {
    case XCB_EXPOSE:
        OnExpose(X11As<xcb_expose_event_t>(event));
        break;
    case XCB_BUTTON_PRESS:
        OnPress(X11As<xcb_button_press_event_t>(event));
        break;
    case XCB_BUTTON_RELEASE:
        OnRelease(X11As<xcb_button_release_event_t>(event));
        break;
    case XCB_MOTION_NOTIFY: {
        const auto& motion = X11As<xcb_motion_notify_event_t>(event);
        mouseMoved = true;
        OnMotion(motion.event_x, motion.event_y, motion.state);
        break;
    }
    case XCB_ENTER_NOTIFY: {
        const auto& enter = X11As<xcb_enter_notify_event_t>(event);
        OnMotion(enter.event_x, enter.event_y, enter.state);
        break;
    }
    case XCB_LEAVE_NOTIFY:
        OnLeave(X11As<xcb_leave_notify_event_t>(event));
        break;
    case XCB_KEY_PRESS:
        OnKey(X11As<xcb_key_press_event_t>(event));
        break;
    case XCB_KEY_RELEASE:
        HandToParent(X11As<xcb_key_press_event_t>(event));
        break;
    case XCB_CLIENT_MESSAGE:
        OnMessage(X11As<xcb_client_message_event_t>(event));
        break;
    case XCB_DESTROY_NOTIFY:
        OnGone();
        Forget();
        break;
    default:
        break;
    }
}

void X11Window::OnExpose(const xcb_expose_event_t& event) {
    // The back buffer always holds the whole picture.
    graphics.DrawScreen(IRECT(event.x, event.y, event.x + event.width, event.y + event.height));
}

void X11Window::OnMessage(const xcb_client_message_event_t& event) {
    constexpr std::uint32_t kEmbedded = 0;
    if (event.type != Loop().Connection().Atom(X11Atom::XEmbed)) return;
    if (event.data.data32[1] == kEmbedded) Show();
}

void X11Window::OnPress(const xcb_button_press_event_t& event) {
    tooltip.reset();
    restsSince = Clock::now();
    if (event.detail == X11Pointer::kWheelUp) return OnWheel(event, 1);
    if (event.detail == X11Pointer::kWheelDown) return OnWheel(event, -1);
    if (event.detail > X11Pointer::kRight) return;
    if (entry != nullptr) {
        entry->Commit();
        return;
    }
    mouseX = event.event_x;
    mouseY = event.event_y;
    const bool isDouble = pointer.Press(event.detail, mouseX, mouseY, event.time);
    const IMouseMod mod = pointer.Mod(event.state);
    if (isDouble && event.detail == X11Pointer::kLeft) {
        graphics.OnMouseDblClick(mouseX, mouseY, mod);
    } else {
        graphics.OnMouseDown(mouseX, mouseY, mod);
    }
}

void X11Window::OnRelease(const xcb_button_release_event_t& event) {
    if (!pointer.Holds(event.detail)) return;
    pointer.Release(event.detail);
    mouseX = event.event_x;
    mouseY = event.event_y;
    graphics.OnMouseUp(mouseX, mouseY, pointer.Mod(event.state));
    const IRECT inside(0, 0, graphics.Width(), graphics.Height());
    if (pointer.AnyHeld() || inside.Contains(mouseX, mouseY)) return;
    mouseInside = false;
    graphics.OnMouseOut();
}

void X11Window::OnMotion(int x, int y, std::uint16_t state) {
    if (std::abs(x - mouseX) > kRestDistance || std::abs(y - mouseY) > kRestDistance || !mouseInside)
        restsSince = Clock::now();
    mouseInside = true;
    mouseX = x;
    mouseY = y;
    // A window that is hidden during a drag hears nothing of its end.
    if (pointer.ForgetReleased(state)) graphics.OnMouseUp(x, y, pointer.Mod(state));
    if (pointer.AnyHeld() && entry == nullptr) {
        graphics.OnMouseDrag(x, y, x - graphics.MouseX(), y - graphics.MouseY(), pointer.Mod(state));
        return;
    }
    graphics.OnMouseOver(x, y, pointer.Mod(state));
    if (graphics.MouseOverIndex() == tooltipIndex) return;
    tooltipIndex = -1;
    tooltip.reset();
    restsSince = Clock::now();
}

void X11Window::OnWheel(const xcb_button_press_event_t& event, int notches) {
    if (entry != nullptr) {
        entry->Cancel();
        return;
    }
    graphics.OnMouseWheel(event.event_x, event.event_y, pointer.Mod(event.state), notches);
}

void X11Window::OnLeave(const xcb_leave_notify_event_t& event) {
    // A mouse that a menu of the host takes has left as well; when it is let go over the editor, it enters.
    if (event.detail == XCB_NOTIFY_DETAIL_INFERIOR || pointer.AnyHeld()) return;
    mouseInside = false;
    mouseMoved = false;
    tooltip.reset();
    tooltipIndex = -1;
    graphics.OnMouseOut();
}

void X11Window::OnKey(const xcb_key_press_event_t& event) {
    const X11KeyPress press = Loop().Keyboard().Read(event.detail, event.state);
    if (entry != nullptr) {
        // Some hosts keep the focus for themselves; then the keys come to where the mouse is.
        entry->OnKey(press);
        return;
    }
    const int code = X11Keyboard::KeyCodeOf(press.plainSymbol);
    if (code != 0 && graphics.OnKeyDown(event.event_x, event.event_y, code)) return;
    HandToParent(event);
}

void X11Window::HandToParent(const xcb_key_press_event_t& event) {
    if (!Exists() || entry != nullptr) return;
    xcb_key_press_event_t sent = event;
    sent.response_type = static_cast<std::uint8_t>(event.response_type & 0x7F);
    sent.event = parent;
    sent.child = Id();
    const std::uint32_t mask =
        sent.response_type == XCB_KEY_PRESS ? XCB_EVENT_MASK_KEY_PRESS : XCB_EVENT_MASK_KEY_RELEASE;
    xcb_send_event(Display(), 1, parent, mask, reinterpret_cast<const char*>(&sent));
}

void X11Window::OnTick() {
    const X11Gate::Visit visit(*gate);
    if (!visit || !Exists()) return;
    if (entry != nullptr) {
        TickEntry();
        return;
    }
    const IRECT changed = graphics.Tick();
    if (!changed.Empty()) graphics.Draw(changed);
    TickTooltip();
}

void X11Window::OpenEntry(IControl& control, const IText& text, const IRECT& rect, const std::string& string,
                          const IParam* param) {
    if (entry != nullptr || !Exists()) return;
    tooltip.reset();
    pointer.Clear();
    auto opened = std::make_unique<X11TextEntry>(Loop(), control, text, param);
    if (opened->Open(Id(), rect, string)) entry = std::move(opened);
}

void X11Window::CancelEntry() {
    entry.reset();
}

void X11Window::TickEntry() {
    switch (entry->State()) {
    case TextEntryState::Cancel:
        entry.reset();
        break;
    case TextEntryState::Commit:
        CommitEntry();
        break;
    default:
        entry->Tick();
        break;
    }
}

void X11Window::CommitEntry() {
    // Gone before its text is used: that may call the host, open something else, or close the window.
    const auto ended = std::move(entry);
    ended->Destroy();
    IGraphics::CommitTextEntry(ended->Control(), ended->Param(), ended->EnteredText());
}

void X11Window::TickTooltip() {
    if (!graphics.TooltipsEnabled() || !mouseMoved || pointer.AnyHeld() || !Exists()) return;
    const int index = graphics.MouseOverIndex();
    if (index < 0 || index == tooltipIndex || Clock::now() - restsSince < kHoverTime) return;
    tooltipIndex = index;
    const std::string text = graphics.TooltipText(index);
    if (!text.empty()) ShowTooltip(text);
}

void X11Window::ShowTooltip(const std::string& text) {
    const auto at = OnScreen(IRECT(mouseX, mouseY, mouseX + 1, mouseY + 1));
    if (!at) return;
    auto shown = std::make_unique<X11Tooltip>(Loop());
    if (shown->Open(text, at->L, at->T)) tooltip = std::move(shown);
}

void X11Window::ForgetButtons() {
    pointer.Clear();
    tooltip.reset();
}

void X11Window::HideCursor() {
    if (cursorHidden || !Exists()) return;
    hiddenAtX = mouseX;
    hiddenAtY = mouseY;
    const xcb_pixmap_t blank = xcb_generate_id(Display());
    const xcb_cursor_t cursor = xcb_generate_id(Display());
    xcb_create_pixmap(Display(), 1, blank, Id(), 1, 1);
    const xcb_gcontext_t clear = xcb_generate_id(Display());
    const std::uint32_t zero = 0;
    xcb_create_gc(Display(), clear, blank, XCB_GC_FOREGROUND, &zero);
    constexpr xcb_rectangle_t kPixel = {0, 0, 1, 1};
    xcb_poly_fill_rectangle(Display(), blank, clear, 1, &kPixel);
    xcb_create_cursor(Display(), cursor, blank, blank, 0, 0, 0, 0, 0, 0, 0, 0);
    xcb_change_window_attributes(Display(), Id(), XCB_CW_CURSOR, &cursor);
    xcb_free_gc(Display(), clear);
    xcb_free_pixmap(Display(), blank);
    xcb_free_cursor(Display(), cursor);
    cursorHidden = true;
}

void X11Window::ShowCursor() {
    if (!cursorHidden || !Exists()) return;
    cursorHidden = false;
    const xcb_cursor_t ofParent = XCB_NONE;
    xcb_change_window_attributes(Display(), Id(), XCB_CW_CURSOR, &ofParent);
    xcb_warp_pointer(Display(), XCB_NONE, Id(), 0, 0, 0, 0, static_cast<std::int16_t>(hiddenAtX),
                     static_cast<std::int16_t>(hiddenAtY));
}

} // namespace Grimworks
