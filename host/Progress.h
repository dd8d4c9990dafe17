#pragma once

#include <chrono>
#include <ostream>

namespace Grimworks {

/// One line on a terminal that says how far a long render is. Silent for short renders and where there is no
/// terminal.
class Progress {
public:
    Progress(std::ostream& stream, bool isTerminal);

    /// Clears the line.
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// So many seconds of sound stand, of so many that are expected.
    void Show(double seconds, double expected);

    /// So many pieces stand, of so many, as a bar.
    void ShowCount(int done, int total);

    /// Clears the line.
    void Finish();

private:
    [[nodiscard]] bool IsTime();

    using Clock = std::chrono::steady_clock;

    std::ostream& out;
    bool terminal;
    bool shown = false;
    Clock::time_point next;
};

} // namespace Grimworks
