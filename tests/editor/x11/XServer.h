#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace Grimworks {

/// A display server of the test's own, without a screen, and without a window manager. While it lives the
/// environment names it.
class XServer {
public:
    /// `screen` is width x height x depth, `options` further words for the server.
    explicit XServer(const std::string& screen = "1600x1200x24",
                     const std::vector<std::string>& options = {});
    ~XServer();
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    [[nodiscard]] bool Runs() const { return pid > 0; }
    [[nodiscard]] const std::string& Display() const { return display; }

    /// Ends the server at once, as a crash would.
    void Kill();

private:
    pid_t pid = -1;
    std::string display;
};

} // namespace Grimworks
