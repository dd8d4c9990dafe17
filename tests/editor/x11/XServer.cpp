#include "tests/editor/x11/XServer.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Grimworks {

namespace {

/// The number that the server writes when it is ready, or nothing.
std::string ReadNumber(int pipe) {
    constexpr int kPatience = 60000;
    std::string text;
    pollfd watched{pipe, POLLIN, 0};
    while (text.find('\n') == std::string::npos && poll(&watched, 1, kPatience) > 0) {
        std::array<char, 16> bytes{};
        const ssize_t got = read(pipe, bytes.data(), bytes.size());
        if (got <= 0) break;
        text.append(bytes.data(), static_cast<std::size_t>(got));
    }
    return text.substr(0, text.find('\n'));
}

} // namespace

XServer::XServer(const std::string& screen, const std::vector<std::string>& options) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) return;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    constexpr int kNumberFd = 9;
    posix_spawn_file_actions_adddup2(&actions, ends[1], kNumberFd);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    // It ends with its last client, so that a test that is killed leaves none behind.
    std::vector<std::string> words = {"Xvfb",      "-displayfd", "9",          "-screen", "0", screen,
                                      "-nolisten", "tcp",        "-terminate", "-dpi",    "96"};
    words.insert(words.end(), options.begin(), options.end());
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    if (posix_spawn(&pid, "/usr/bin/Xvfb", &actions, nullptr, arguments.data(), environ) != 0) pid = -1;
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    const std::string number = ReadNumber(ends[0]);
    close(ends[0]);
    if (number.empty()) {
        Kill();
        return;
    }
    display = ":" + number;
    setenv("DISPLAY", display.c_str(), 1);
}

XServer::~XServer() {
    Kill();
}

void XServer::Kill() {
    if (pid <= 0) return;
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
    pid = -1;
}

} // namespace Grimworks
