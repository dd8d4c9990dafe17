#pragma once

#include <chrono>
#include <xcb/xcb.h>

namespace Grimworks {

class X11Loop;

/// Something that a handler waits for while all windows go on living. It ends by itself, or is cancelled when
/// its owner's window closes. Editor thread only.
class X11Modal {
public:
    /// `waitingFor` is whose handler waits.
    X11Modal(X11Loop& itsLoop, const void* waitingFor);
    virtual ~X11Modal();
    X11Modal(const X11Modal&) = delete;
    X11Modal& operator=(const X11Modal&) = delete;

    /// Runs the loop until End or Cancel; false after Cancel.
    bool Run();

    void End() { ended = true; }
    void Cancel() { cancelled = true; }
    [[nodiscard]] bool IsCancelled() const { return cancelled; }
    [[nodiscard]] const void* Owner() const { return owner; }

    /// Whether the event, of a window of ours, must not reach that window.
    virtual bool TakesEvent(const xcb_generic_event_t& /*event*/) { return false; }

    /// Called at least every so often while waiting.
    virtual void OnStep() {}
    [[nodiscard]] virtual std::chrono::milliseconds StepTime() const { return std::chrono::milliseconds(50); }

protected:
    [[nodiscard]] X11Loop& Loop() { return loop; }

private:
    X11Loop& loop;
    const void* owner;
    bool ended = false;
    bool cancelled = false;
};

} // namespace Grimworks
