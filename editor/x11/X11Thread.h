#pragma once

#include "editor/x11/X11Jobs.h"
#include "editor/x11/X11Loop.h"

#include <chrono>
#include <future>
#include <memory>
#include <thread>

namespace Grimworks {

/// The editor thread: one for all instances in the process, since hosts on this system give a plug-in no
/// event loop. It starts with the first window and ends with the last. Any thread.
class X11Thread {
public:
    /// How long a host's call waits for the editor thread. It can be stuck in a call to the host that waits
    /// for this very thread of the host; then the host's call has to give up.
    static constexpr std::chrono::milliseconds kPatience{5000};

    /// The running thread, or a new one if there is none or it lost its display. Null without a display.
    [[nodiscard]] static std::shared_ptr<X11Thread> Acquire();

    X11Thread();
    ~X11Thread();
    X11Thread(const X11Thread&) = delete;
    X11Thread& operator=(const X11Thread&) = delete;

    /// See X11Jobs.
    bool Call(X11Jobs::Work work, std::chrono::milliseconds patience = kPatience);
    void Post(X11Jobs::Work work);

    [[nodiscard]] bool IsThisThread() const { return thread.get_id() == std::this_thread::get_id(); }

    /// The loop, for what runs on the editor thread.
    [[nodiscard]] X11Loop& Loop() const { return *shared->loop; }

private:
    /// What outlives this object if the thread cannot be waited for.
    struct Shared {
        X11Jobs jobs;
        std::unique_ptr<X11Loop> loop; ///< set before Start gives true
    };

    static void Run(const std::shared_ptr<Shared>& shared, std::promise<bool> connected);
    bool Start();
    bool StillConnected();

    std::shared_ptr<Shared> shared;
    std::thread thread;
};

} // namespace Grimworks
