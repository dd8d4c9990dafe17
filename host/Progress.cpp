#include "host/Progress.h"

#include "host/Reports.h"

#include <algorithm>

namespace Grimworks {

namespace {

constexpr std::chrono::milliseconds kPatience{500};
constexpr std::chrono::milliseconds kStep{100};

} // namespace

Progress::Progress(std::ostream& stream, bool isTerminal)
    : out(stream), terminal(isTerminal), next(Clock::now() + kPatience) {}

Progress::~Progress() {
    Finish();
}

void Progress::Show(double seconds, double expected) {
    if (!terminal || Clock::now() < next) return;
    next = Clock::now() + kStep;
    shown = true;
    out << "\rrendering " << FixedText(seconds, 1) << " of " << FixedText(std::max(seconds, expected), 1)
        << " s " << std::flush;
}

void Progress::Finish() {
    if (shown) out << "\r                                        \r" << std::flush;
    shown = false;
}

} // namespace Grimworks
