#include "host/Edit.h"

#include "host/EditWindow.h"
#include "host/HostError.h"
#include "host/PngFile.h"

#include <algorithm>
#include <chrono>

namespace Grimworks {

namespace {

constexpr const char* kTitle = "ThudForge";
constexpr int kLargestSide = 8192;
constexpr int kTick = 40; // milliseconds
// An editor is looked at so long after it has drawn anything, so that all of it stands and moves.
constexpr double kSettling = 1.0;
constexpr double kPatience = 20.0;

/// Opens the editor inside a window for as long as it lives.
class OpenEditor {
public:
    OpenEditor(PluginHost& pluginHost, const EditWindow& window) : host(pluginHost) {
        if (host.Dispatch(PlugOp::EditOpen, 0, 0, window.Parent()) == 0)
            throw HostError(host.ModuleName() + ": the editor does not open");
    }
    ~OpenEditor() { host.Dispatch(PlugOp::EditClose); }
    OpenEditor(const OpenEditor&) = delete;
    OpenEditor& operator=(const OpenEditor&) = delete;

private:
    PluginHost& host;
};

bool ShowsSomething(const Picture& picture) {
    constexpr std::ptrdiff_t kPixel = 3;
    const auto& bytes = picture.pixels;
    // The same bytes moved by one pixel are the same only if all pixels are.
    return bytes.size() > kPixel && !std::equal(bytes.begin() + kPixel, bytes.end(), bytes.begin());
}

class Clock {
public:
    [[nodiscard]] double Seconds() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }

private:
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
};

/// Tells when an editor may be photographed.
class Photographer {
public:
    explicit Photographer(const EditJob& editJob) : job(editJob) {}

    [[nodiscard]] bool IsReady(EditWindow& window, double seconds) {
        if (drawn < 0.0 && ShowsSomething(window.Grab())) drawn = seconds;
        const bool isLate = seconds > job.seconds.value_or(0.0) + kPatience;
        if (drawn < 0.0) {
            if (isLate) throw HostError("the editor has drawn nothing, so there is no picture of it");
            return false;
        }
        if (seconds < job.seconds.value_or(drawn + kSettling)) return false;
        // A copy has holes where something else lies over the window, be it for a moment only.
        const bool covered = window.IsCovered();
        if (covered && isLate)
            throw HostError("another window lies over the editor, so there is no picture of it");
        return !covered;
    }

private:
    const EditJob& job;
    double drawn = -1.0;
};

EditEnd Watch(EditWindow& window, const EditJob& job, const std::function<bool()>& goOn) {
    const Clock clock;
    Photographer photographer(job);
    while (window.Wait(kTick)) {
        if (!goOn()) return EditEnd::Interrupted;
        const double seconds = clock.Seconds();
        if (job.screenshot.empty()) {
            if (job.seconds && seconds >= *job.seconds) break;
        } else if (photographer.IsReady(window, seconds)) {
            SavePng(window.Grab(), job.screenshot);
            return EditEnd::Photographed;
        }
    }
    return EditEnd::Closed;
}

void SelectPage(PluginHost& host, EditPage page) {
    if (host.Dispatch(PlugOp::VendorSpecific, OwnOp::SelectPage, static_cast<std::intptr_t>(page)) != 1)
        throw HostError(host.ModuleName() + ": the editor has no such page");
}

} // namespace

EditorSize SizeOfEditor(PluginHost& host) {
    ERect* rectangle = nullptr;
    const bool claimed = (host.Record().flags & EffectFlag::HasEditor) != 0;
    if (!claimed || host.Dispatch(PlugOp::EditGetRect, 0, 0, &rectangle) == 0 || rectangle == nullptr)
        throw HostError(host.ModuleName() + ": the instrument has no editor");
    const EditorSize size{rectangle->right - rectangle->left, rectangle->bottom - rectangle->top};
    if (size.width < 1 || size.width > kLargestSide || size.height < 1 || size.height > kLargestSide)
        throw HostError(host.ModuleName() + ": the editor has a size that cannot be");
    return size;
}

EditEnd ShowEditor(PluginHost& host, const EditJob& job, const std::function<bool()>& goOn) {
    const EditorSize size = SizeOfEditor(host);
    if (job.page) SelectPage(host, *job.page);
    EditWindow window(kTitle, size.width, size.height);
    std::optional<LiveAudio> audio;
    if (job.audio) audio.emplace(host, job.key);
    const OpenEditor editor(host, window);
    return Watch(window, job, goOn);
}

} // namespace Grimworks
