#include "editor/x11/X11Jobs.h"

#include <algorithm>
#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace Grimworks {

X11Jobs::X11Jobs() : wakeFd(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

X11Jobs::~X11Jobs() {
    if (wakeFd >= 0) close(wakeFd);
}

std::shared_ptr<X11Jobs::Job> X11Jobs::Add(Work work) {
    auto job = std::make_shared<Job>();
    job->work = std::move(work);
    {
        const std::lock_guard guard(mutex);
        jobs.push_back(job);
        any = true;
    }
    Wake();
    return job;
}

void X11Jobs::Remove(const std::shared_ptr<Job>& job) {
    jobs.erase(std::remove(jobs.begin(), jobs.end(), job), jobs.end());
    any = !jobs.empty();
}

bool X11Jobs::Call(Work work, std::chrono::milliseconds patience) {
    const auto job = Add(std::move(work));
    std::unique_lock lock(mutex);
    if (changed.wait_for(lock, patience, [&job] { return job->done; })) return true;
    if (!job->begun) Remove(job);
    return false;
}

void X11Jobs::Post(Work work) {
    Add(std::move(work));
}

void X11Jobs::RunAll() {
    if (!any) return;
    std::vector<std::shared_ptr<Job>> now;
    {
        const std::lock_guard guard(mutex);
        now.assign(jobs.begin(), jobs.end());
    }
    for (const auto& job : now)
        Run(job);
}

void X11Jobs::Run(const std::shared_ptr<Job>& job) {
    {
        const std::lock_guard guard(mutex);
        const bool queued = std::find(jobs.begin(), jobs.end(), job) != jobs.end();
        if (!queued || job->running) return;
        job->running = true;
        job->begun = true;
    }
    const bool done = job->work();
    const std::lock_guard guard(mutex);
    job->running = false;
    if (!done) return;
    job->done = true;
    Remove(job);
    changed.notify_all();
}

void X11Jobs::Wake() {
    const std::uint64_t one = 1;
    // A counter that is full wakes as well.
    [[maybe_unused]] const auto written = write(wakeFd, &one, sizeof one);
}

void X11Jobs::ClearWake() {
    std::uint64_t count = 0;
    [[maybe_unused]] const auto got = read(wakeFd, &count, sizeof count);
}

void X11Jobs::Stop() {
    stopped = true;
    Wake();
}

void X11Jobs::TellFinished() {
    const std::lock_guard guard(mutex);
    finished = true;
    changed.notify_all();
}

bool X11Jobs::WaitFinished(std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex);
    return changed.wait_for(lock, patience, [this] { return finished; });
}

} // namespace Grimworks
