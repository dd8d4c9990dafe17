#include "host/Interrupt.h"

#include <csignal>

namespace Grimworks {

namespace {

// A signal handler can reach nothing but a word like this.
volatile std::sig_atomic_t requested = 0;

void Remember(int signal) {
    // A second request ends the program at once.
    static_cast<void>(std::signal(signal, SIG_DFL));
    requested = 1;
}

} // namespace

void CatchInterrupts() {
    static_cast<void>(std::signal(SIGINT, Remember));
    static_cast<void>(std::signal(SIGTERM, Remember));
}

bool InterruptRequested() {
    return requested != 0;
}

} // namespace Grimworks
