#include "host/Progress.h"

#include "host/Reports.h"

#include <algorithm>
#include <string>

namespace Grimworks {

namespace {

constexpr std::chrono::milliseconds kPatience{500};
constexpr std::chrono::milliseconds kStep{100};
constexpr int kBarWidth = 24;

} // namespace

Progress::Progress(std::ostream& stream, bool isTerminal)
    : out(stream), terminal(isTerminal), next(Clock::now() + kPatience) {}

Progress::~Progress() {
    Finish();
}

bool Progress::IsTime() {
    if (!terminal || Clock::now() < next) return false;
    next = Clock::now() + kStep;
    shown = true;
    return true;
}

void Progress::ShowCount(int done, int total) {
    if (total <= 0 || !IsTime()) return;
    std::string bar(static_cast<std::size_t>(kBarWidth), '.');
    std::fill_n(bar.begin(), kBarWidth * done / total, '#');
    out << "\r[" << bar << "] " << done << " of " << total << ' ' << std::flush;
}

void Progress::Show(double seconds, double expected) {
    if (!IsTime()) return;
    out << "\rrendering " << FixedText(seconds, 1) << " of " << FixedText(std::max(seconds, expected), 1)
        << " s " << std::flush;
}

void Progress::Finish() {
    if (shown) out << "\r                                        \r" << std::flush;
    shown = false;
}

} // namespace Grimworks
