#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace Grimworks {

/// Work that other threads hand to the editor thread. Any thread, unless said otherwise.
class X11Jobs {
public:
    /// True when done. False means that something has to end first; the job is asked again later.
    using Work = std::function<bool()>;

    X11Jobs();
    ~X11Jobs();
    X11Jobs(const X11Jobs&) = delete;
    X11Jobs& operator=(const X11Jobs&) = delete;

    /// Hands over work and waits until it is done, at most so long; not from the editor thread. False if it
    /// was too long. Work that has not begun by then is dropped; work that has begun, or that was put off,
    /// goes on, so it must own what it uses.
    bool Call(Work work, std::chrono::milliseconds patience);

    /// Hands over work without waiting.
    void Post(Work work);

    /// Runs what is there, each job once. Editor thread; may be called within a job.
    void RunAll();

    /// Becomes readable when there is something to do.
    [[nodiscard]] int WakeFd() const { return wakeFd; }
    void ClearWake();

    /// Tells the editor thread to end.
    void Stop();
    [[nodiscard]] bool Stopped() const { return stopped.load(); }

    /// The editor thread tells that it has ended, and others wait for that, at most so long.
    void TellFinished();
    bool WaitFinished(std::chrono::milliseconds patience);

private:
    struct Job {
        Work work;
        bool running = false;
        bool begun = false;
        bool done = false;
    };

    std::shared_ptr<Job> Add(Work work);
    void Remove(const std::shared_ptr<Job>& job);
    void Wake();
    void Run(const std::shared_ptr<Job>& job);

    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::shared_ptr<Job>> jobs;
    std::atomic<bool> any{false};
    std::atomic<bool> stopped{false};
    bool finished = false;
    int wakeFd;
};

} // namespace Grimworks
