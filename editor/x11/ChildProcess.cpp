#include "editor/x11/ChildProcess.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace Grimworks {

namespace {

constexpr std::size_t kMostOutput = std::size_t{1} << 20U;

/// How the program starts: nothing of the host's files and signals goes along.
class SpawnSettings {
public:
    explicit SpawnSettings(int outputEnd) {
        posix_spawn_file_actions_init(&actions);
        if (outputEnd >= 0) {
            posix_spawn_file_actions_adddup2(&actions, outputEnd, STDOUT_FILENO);
        } else {
            posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        }
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
        posix_spawnattr_init(&attributes);
        sigset_t none;
        sigemptyset(&none);
        posix_spawnattr_setsigmask(&attributes, &none);
        sigset_t usual;
        sigemptyset(&usual);
        sigaddset(&usual, SIGPIPE);
        sigaddset(&usual, SIGCHLD);
        sigaddset(&usual, SIGTERM);
        posix_spawnattr_setsigdefault(&attributes, &usual);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnSettings() {
        posix_spawnattr_destroy(&attributes);
        posix_spawn_file_actions_destroy(&actions);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    posix_spawn_file_actions_t actions{};
    posix_spawnattr_t attributes{};
};

/// Texts as the system wants them: pointers, the last one null.
std::vector<char*> PointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> EnvironmentWith(const std::vector<std::string>& variables) {
    std::vector<std::string> all = variables;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view text = *entry;
        const std::string_view name = text.substr(0, std::min(text.find('=') + 1, text.size()));
        bool replaced = false;
        for (const std::string& variable : variables)
            replaced = replaced || variable.starts_with(name);
        if (!replaced) all.emplace_back(text);
    }
    return all;
}

} // namespace

ChildProcess::~ChildProcess() {
    Terminate();
}

std::string ChildProcess::Find(std::string_view program) {
    const char* const variable = std::getenv("PATH");
    std::string_view folders = variable != nullptr ? variable : "/usr/bin:/bin";
    while (!folders.empty()) {
        const std::size_t end = std::min(folders.find(':'), folders.size());
        std::string path = std::string(folders.substr(0, end)) + "/" + std::string(program);
        if (path.front() == '/' && access(path.c_str(), X_OK) == 0) return path;
        folders.remove_prefix(std::min(end + 1, folders.size()));
    }
    return {};
}

bool ChildProcess::Start(const std::vector<std::string>& words, const std::vector<std::string>& variables) {
    Terminate();
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) return false;
    fcntl(ends[0], F_SETFL, O_NONBLOCK);
    const bool started = Spawn(words, variables, ends[1]);
    close(ends[1]);
    if (started) {
        pipe = ends[0];
    } else {
        close(ends[0]);
    }
    return started;
}

bool ChildProcess::StartUnheard(const std::vector<std::string>& words) {
    Terminate();
    return Spawn(words, {}, -1);
}

bool ChildProcess::Spawn(std::vector<std::string> words, const std::vector<std::string>& variables,
                         int outputEnd) {
    output.clear();
    exitStatus = -1;
    if (words.empty() || words.front().empty()) return false;
    std::vector<std::string> environment = EnvironmentWith(variables);
    const auto argumentPointers = PointersTo(words);
    const auto environmentPointers = PointersTo(environment);
    const SpawnSettings settings(outputEnd);
    const int failed = posix_spawn(&pid, words.front().c_str(), &settings.actions, &settings.attributes,
                                   argumentPointers.data(), environmentPointers.data());
    if (failed != 0) pid = -1;
    return failed == 0;
}

void ChildProcess::Read() {
    std::array<char, 4096> bytes{};
    ssize_t got = 0;
    while (pipe >= 0 && (got = read(pipe, bytes.data(), bytes.size())) > 0) {
        if (output.size() < kMostOutput) output.append(bytes.data(), static_cast<std::size_t>(got));
    }
}

bool ChildProcess::HasEnded() {
    if (pid < 0) return true;
    Read();
    int status = 0;
    const pid_t ended = waitpid(pid, &status, WNOHANG);
    if (ended == 0 || (ended < 0 && errno == EINTR)) return false;
    Read();
    // A host that wants to know nothing of children has the system forget how they ended.
    if (ended < 0) {
        exitStatus = output.empty() ? -1 : 0;
    } else {
        Reap(status);
    }
    pid = -1;
    if (pipe >= 0) close(pipe);
    pipe = -1;
    return true;
}

void ChildProcess::Reap(int status) {
    exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

bool ChildProcess::WaitForEnd(int milliseconds) {
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    while (!HasEnded()) {
        if (std::chrono::steady_clock::now() >= until) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

void ChildProcess::Terminate() {
    constexpr int kPolitely = 500;
    constexpr int kForce = 5000;
    if (pid < 0) return;
    kill(pid, SIGTERM);
    if (WaitForEnd(kPolitely)) return;
    kill(pid, SIGKILL);
    WaitForEnd(kForce);
}

} // namespace Grimworks
