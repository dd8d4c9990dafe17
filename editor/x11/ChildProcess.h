#pragma once

#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace Grimworks {

/// A program that is started for a dialog or the like: its words go to it as they are, without a shell, and
/// what it writes is collected. It never outlives this object, and leaves nothing for the host to clean up.
/// One thread at a time.
class ChildProcess {
public:
    ChildProcess() = default;
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// The path of a program in the folders of PATH; empty if there is none.
    [[nodiscard]] static std::string Find(std::string_view program);

    /// Starts a program: its path, then what it is told. `variables` ("NAME=value") are added to the
    /// environment. False if it could not be started.
    bool Start(const std::vector<std::string>& words, const std::vector<std::string>& variables = {});

    /// The same, but what it writes is lost: for a program whose own programs may write for hours.
    bool StartUnheard(const std::vector<std::string>& words);

    /// Takes what the program has written; true when it has ended. Does not wait.
    bool HasEnded();

    /// Waits for the end, at most so many milliseconds; false if it took longer.
    bool WaitForEnd(int milliseconds);

    /// 0..255, or -1 if it was killed, is unknown or did not start.
    [[nodiscard]] int ExitStatus() const { return exitStatus; }

    /// What it wrote to its standard output, at most a megabyte.
    [[nodiscard]] const std::string& Output() const { return output; }

private:
    bool Spawn(std::vector<std::string> words, const std::vector<std::string>& variables, int outputEnd);
    void Read();
    void Reap(int status);
    void Terminate();

    pid_t pid = -1;
    int pipe = -1;
    int exitStatus = -1;
    std::string output;
};

} // namespace Grimworks
