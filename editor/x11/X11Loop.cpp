#include "editor/x11/X11Loop.h"

#include "editor/LICE_CachedFont.h"
#include "editor/x11/X11Modal.h"

#include <algorithm>
#include <array>
#include <poll.h>
#include <utility>

namespace Grimworks {

namespace {

using std::chrono::milliseconds;

constexpr int kFontSize = 13;

std::unique_ptr<LICE_IFont> MakeMenuFont(int style) {
    return LICE_MakeFont(IText(kFontSize, IColor(255, 255, 255, 255), IText::AlignNear, style));
}

/// Of two motions in a row with the same buttons and keys only the later one counts.
bool Replaces(const xcb_generic_event_t& later, const xcb_generic_event_t& earlier) {
    if (X11KindOf(later) != XCB_MOTION_NOTIFY || X11KindOf(earlier) != XCB_MOTION_NOTIFY) return false;
    const auto& a = X11As<xcb_motion_notify_event_t>(later);
    const auto& b = X11As<xcb_motion_notify_event_t>(earlier);
    return a.event == b.event && a.state == b.state;
}

} // namespace

xcb_window_t X11WindowOf(const xcb_generic_event_t& event) {
    switch (X11KindOf(event)) {
    case XCB_KEY_PRESS:
    case XCB_KEY_RELEASE:
    case XCB_BUTTON_PRESS:
    case XCB_BUTTON_RELEASE:
    case XCB_MOTION_NOTIFY:
    case XCB_ENTER_NOTIFY:
    case XCB_LEAVE_NOTIFY:
        return X11As<xcb_key_press_event_t>(event).event;
    case XCB_FOCUS_IN:
    case XCB_FOCUS_OUT:
        return X11As<xcb_focus_in_event_t>(event).event;
    case XCB_EXPOSE:
        return X11As<xcb_expose_event_t>(event).window;
    case XCB_DESTROY_NOTIFY:
        return X11As<xcb_destroy_notify_event_t>(event).window;
    case XCB_SELECTION_NOTIFY:
        return X11As<xcb_selection_notify_event_t>(event).requestor;
    case XCB_CLIENT_MESSAGE:
        return X11As<xcb_client_message_event_t>(event).window;
    default:
        return XCB_NONE;
    }
}

X11Loop::X11Loop(std::unique_ptr<X11Connection> itsConnection, X11Jobs& itsJobs)
    : connection(std::move(itsConnection)), jobs(itsJobs) {
    keyboard.Load(*connection);
}

X11Loop::~X11Loop() = default;

bool X11Loop::StillConnected() {
    const X11Reply<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(connection->Get(), xcb_get_input_focus(connection->Get()), nullptr));
    return answer != nullptr && !connection->Lost();
}

LICE_IFont* X11Loop::Font(bool bold) {
    std::unique_ptr<LICE_IFont>& font = bold ? boldFont : plainFont;
    if (font == nullptr) font = MakeMenuFont(bold ? IText::StyleBold : IText::StyleNormal);
    return font.get();
}

void X11Loop::AddTicker(X11Ticker& ticker) {
    ticker.next = X11Ticker::Clock::now() + ticker.Period();
    tickers.push_back(&ticker);
}

void X11Loop::RemoveTicker(X11Ticker& ticker) {
    tickers.erase(std::remove(tickers.begin(), tickers.end(), &ticker), tickers.end());
}

void X11Loop::PopModal(X11Modal& modal) {
    modals.erase(std::remove(modals.begin(), modals.end(), &modal), modals.end());
}

void X11Loop::CancelModalsOf(const void* owner) {
    bool above = false;
    for (X11Modal* const modal : modals) {
        above = above || modal->Owner() == owner;
        if (above) modal->Cancel();
    }
}

bool X11Loop::TopIsCancelled() const {
    return !modals.empty() && modals.back()->IsCancelled();
}

void X11Loop::Step(milliseconds longest) {
    jobs.RunAll();
    if (jobs.Stopped()) {
        for (X11Modal* const modal : modals)
            modal->Cancel();
        return;
    }
    if (TopIsCancelled()) return;
    if (!lost && connection->Lost()) LoseConnection();
    if (TopIsCancelled() || RunTicks()) return;
    if (const auto event = NextEvent()) {
        Dispatch(*event);
        return;
    }
    if (!lost) connection->Flush();
    Wait(longest);
}

void X11Loop::ReadEvents() {
    while (auto event = X11Reply<xcb_generic_event_t>(xcb_poll_for_event(connection->Get()))) {
        if (!events.empty() && Replaces(*event, *events.back())) events.pop_back();
        events.push_back(std::move(event));
    }
}

X11Reply<xcb_generic_event_t> X11Loop::NextEvent() {
    if (lost) return nullptr;
    ReadEvents();
    if (events.empty()) return nullptr;
    auto event = std::move(events.front());
    events.pop_front();
    return event;
}

void X11Loop::Dispatch(const xcb_generic_event_t& event) {
    if (X11KindOf(event) == XCB_MAPPING_NOTIFY) {
        keyboard.Load(*connection);
        return;
    }
    // Errors, of kind 0, are those of requests about a window that its parent took along: nothing to mend.
    const auto sink = sinks.find(X11WindowOf(event));
    if (sink == sinks.end()) return;
    const bool taken = std::any_of(modals.rbegin(), modals.rend(),
                                   [&event](X11Modal* modal) { return modal->TakesEvent(event); });
    if (taken) return;
    // Found again: one of them may have taken the window away.
    const auto stillThere = sinks.find(X11WindowOf(event));
    if (stillThere != sinks.end()) stillThere->second->OnEvent(event);
}

bool X11Loop::RunTicks() {
    const auto now = X11Ticker::Clock::now();
    const auto due = std::find_if(tickers.begin(), tickers.end(),
                                  [now](const X11Ticker* ticker) { return ticker->next <= now; });
    if (due == tickers.end()) return false;
    X11Ticker& ticker = **due;
    ticker.next += ticker.Period();
    ticker.OnTick();
    // Ticks that could not be kept are left out, and between two of them there is time for events.
    if (std::find(tickers.begin(), tickers.end(), &ticker) != tickers.end())
        ticker.next = std::max(ticker.next, X11Ticker::Clock::now() + ticker.Period() / 4);
    return true;
}

void X11Loop::Wait(milliseconds longest) {
    const auto now = X11Ticker::Clock::now();
    auto until = now + longest;
    for (const X11Ticker* const ticker : tickers)
        until = std::min(until, ticker->next);
    const auto left = std::chrono::ceil<milliseconds>(std::max(until - now, X11Ticker::Clock::duration(0)));
    std::array<pollfd, 2> watched{{{jobs.WakeFd(), POLLIN, 0}, {-1, POLLIN, 0}}};
    if (!lost) watched[1].fd = xcb_get_file_descriptor(connection->Get());
    poll(watched.data(), watched.size(), static_cast<int>(left.count()));
    if ((watched[0].revents & POLLIN) != 0) jobs.ClearWake();
}

void X11Loop::LoseConnection() {
    lost = true;
    events.clear();
    for (X11Modal* const modal : modals)
        modal->Cancel();
    const std::vector<X11Ticker*> told = tickers;
    for (X11Ticker* const ticker : told) {
        // One of them may take another one away.
        if (std::find(tickers.begin(), tickers.end(), ticker) != tickers.end()) ticker->OnConnectionLost();
    }
}

} // namespace Grimworks
