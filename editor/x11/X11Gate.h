#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace Grimworks {

/// Stands between the editor thread and an editor that its owner may take away: the thread enters for each
/// visit, and the owner shuts the gate and learns whether somebody is still inside. Any thread.
class X11Gate {
public:
    /// One stay of the editor thread inside; visits may nest.
    class Visit {
    public:
        explicit Visit(X11Gate& visited) : gate(visited), entered(visited.Enter()) {}
        ~Visit() {
            if (entered) gate.Leave();
        }
        Visit(const Visit&) = delete;
        Visit& operator=(const Visit&) = delete;

        /// False if the gate is shut: nothing inside may be touched.
        explicit operator bool() const { return entered; }

    private:
        X11Gate& gate;
        bool entered;
    };

    /// Nobody enters any more. True if nobody is inside after at most so long.
    bool Shut(std::chrono::milliseconds patience) {
        std::unique_lock lock(mutex);
        shut = true;
        return left.wait_for(lock, patience, [this] { return inside == 0; });
    }

    [[nodiscard]] bool IsShut() const {
        const std::lock_guard guard(mutex);
        return shut;
    }

    /// Number of nested visits.
    [[nodiscard]] int Inside() const {
        const std::lock_guard guard(mutex);
        return inside;
    }

private:
    bool Enter() {
        const std::lock_guard guard(mutex);
        // Whoever is inside already may go on to the end, and calls itself on the way.
        if (shut && inside == 0) return false;
        ++inside;
        return true;
    }

    void Leave() {
        const std::lock_guard guard(mutex);
        --inside;
        left.notify_all();
    }

    mutable std::mutex mutex;
    std::condition_variable left;
    int inside = 0;
    bool shut = false;
};

} // namespace Grimworks
