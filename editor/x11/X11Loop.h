#pragma once

#include "editor/LICE_IFont.h"
#include "editor/x11/X11Connection.h"
#include "editor/x11/X11Jobs.h"
#include "editor/x11/X11Keyboard.h"
#include "editor/x11/X11Reply.h"

#include <chrono>
#include <deque>
#include <memory>
#include <unordered_map>
#include <vector>
#include <xcb/xcb.h>

namespace Grimworks {

class X11Loop;
class X11Modal;

/// Takes the events of one window of the display.
class X11Sink {
public:
    virtual ~X11Sink() = default;
    X11Sink(const X11Sink&) = delete;
    X11Sink& operator=(const X11Sink&) = delete;
    virtual void OnEvent(const xcb_generic_event_t& event) = 0;

protected:
    X11Sink() = default;
};

/// Something with a clock, and with a connection that can be lost.
class X11Ticker {
public:
    using Clock = std::chrono::steady_clock;

    virtual ~X11Ticker() = default;
    X11Ticker(const X11Ticker&) = delete;
    X11Ticker& operator=(const X11Ticker&) = delete;
    [[nodiscard]] virtual std::chrono::milliseconds Period() const = 0;
    virtual void OnTick() = 0;
    /// The display is gone, and all windows with it.
    virtual void OnConnectionLost() = 0;

protected:
    X11Ticker() = default;

private:
    friend class X11Loop;
    Clock::time_point next;
};

/// The editor thread's loop: events of the display, ticks, and work that others hand over. It can be run
/// from inside a handler, which is how menus and dialogs wait while everything else goes on. Editor thread
/// only.
class X11Loop {
public:
    X11Loop(std::unique_ptr<X11Connection> itsConnection, X11Jobs& itsJobs);
    ~X11Loop();
    X11Loop(const X11Loop&) = delete;
    X11Loop& operator=(const X11Loop&) = delete;

    /// Does what is due, or waits for something, at most until the next tick and so long.
    void Step(std::chrono::milliseconds longest = std::chrono::milliseconds(1000));

    [[nodiscard]] X11Connection& Connection() { return *connection; }
    [[nodiscard]] X11Keyboard& Keyboard() { return keyboard; }
    [[nodiscard]] X11Jobs& Jobs() { return jobs; }

    /// Asks the display for a sign of life; false if the connection is lost.
    bool StillConnected();

    /// The font of menus, dialogs and tooltips, null if there is none.
    [[nodiscard]] LICE_IFont* Font(bool bold);

    void AddSink(xcb_window_t window, X11Sink& sink) { sinks[window] = &sink; }
    void RemoveSink(xcb_window_t window) { sinks.erase(window); }
    void AddTicker(X11Ticker& ticker);
    void RemoveTicker(X11Ticker& ticker);

    /// Menus and dialogs that wait on top of each other, the last one on top.
    void PushModal(X11Modal& modal) { modals.push_back(&modal); }
    void PopModal(X11Modal& modal);

    /// Cancels what waits on behalf of `owner`, and everything that waits on top of that.
    void CancelModalsOf(const void* owner);

private:
    [[nodiscard]] X11Reply<xcb_generic_event_t> NextEvent();
    void ReadEvents();
    void Dispatch(const xcb_generic_event_t& event);
    bool TopIsCancelled() const;
    bool RunTicks();
    void Wait(std::chrono::milliseconds longest);
    void LoseConnection();

    std::unique_ptr<X11Connection> connection;
    X11Jobs& jobs;
    X11Keyboard keyboard;
    std::unique_ptr<LICE_IFont> plainFont;
    std::unique_ptr<LICE_IFont> boldFont;
    std::unordered_map<xcb_window_t, X11Sink*> sinks;
    std::vector<X11Ticker*> tickers;
    std::vector<X11Modal*> modals;
    std::deque<X11Reply<xcb_generic_event_t>> events;
    bool lost = false;
};

/// The window that an event is about, XCB_NONE for those of the whole display.
[[nodiscard]] xcb_window_t X11WindowOf(const xcb_generic_event_t& event);

/// Kind of an event, without the mark of those that other programs sent.
[[nodiscard]] inline int X11KindOf(const xcb_generic_event_t& event) {
    return event.response_type & 0x7F;
}

/// The event as what it is, once its kind is known.
template <class Event>
[[nodiscard]] const Event& X11As(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

} // namespace Grimworks
