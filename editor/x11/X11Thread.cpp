#include "editor/x11/X11Thread.h"

#include "core/Immortal.h"

#include <csignal>
#include <future>
#include <mutex>
#include <pthread.h>
#include <utility>

namespace Grimworks {

namespace {

/// The process's editor thread, for whoever opens the next window.
struct TheThread {
    std::mutex mutex;
    std::weak_ptr<X11Thread> current;
};

TheThread& Process() {
    static Immortal<TheThread> process;
    return *process;
}

/// Signals belong to the host: none of its handlers may run on this thread. A display that goes away while
/// it is written to must be an error, not a signal.
void BlockSignals() {
    sigset_t all;
    sigfillset(&all);
    for (const int ours : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGABRT})
        sigdelset(&all, ours);
    pthread_sigmask(SIG_BLOCK, &all, nullptr);
}

} // namespace

std::shared_ptr<X11Thread> X11Thread::Acquire() {
    TheThread& process = Process();
    const std::lock_guard guard(process.mutex);
    auto running = process.current.lock();
    if (running != nullptr && running->StillConnected()) return running;
    auto started = std::make_shared<X11Thread>();
    if (!started->Start()) return nullptr;
    process.current = started;
    return started;
}

X11Thread::X11Thread() : shared(std::make_shared<Shared>()) {}

bool X11Thread::Start() {
    std::promise<bool> connected;
    auto answer = connected.get_future();
    thread = std::thread(Run, shared, std::move(connected));
    return answer.wait_for(kPatience) == std::future_status::ready && answer.get();
}

X11Thread::~X11Thread() {
    if (!thread.joinable()) return;
    shared->jobs.Stop();
    if (!IsThisThread() && shared->jobs.WaitFinished(kPatience)) {
        thread.join();
        return;
    }
    thread.detach(); // the module stays loaded as long as the process lives
}

void X11Thread::Run(const std::shared_ptr<Shared>& shared, std::promise<bool> connected) {
    BlockSignals();
    pthread_setname_np(pthread_self(), "thudforge-gui");
    auto connection = X11Connection::Open();
    if (connection != nullptr) {
        shared->loop = std::make_unique<X11Loop>(std::move(connection), shared->jobs);
        connected.set_value(true);
        while (!shared->jobs.Stopped())
            shared->loop->Step();
        shared->loop.reset();
    } else {
        connected.set_value(false);
    }
    shared->jobs.TellFinished();
}

bool X11Thread::StillConnected() {
    if (IsThisThread()) return true;
    const auto answer = std::make_shared<bool>(false);
    const bool done = Call([answer, kept = shared.get()] {
        *answer = kept->loop->StillConnected();
        return true;
    });
    return done && *answer;
}

bool X11Thread::Call(X11Jobs::Work work, std::chrono::milliseconds patience) {
    return shared->jobs.Call(std::move(work), patience);
}

void X11Thread::Post(X11Jobs::Work work) {
    shared->jobs.Post(std::move(work));
}

} // namespace Grimworks
