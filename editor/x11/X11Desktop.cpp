#include "editor/x11/X11Desktop.h"

#include "editor/x11/ChildProcess.h"
#include "editor/x11/UserFolders.h"
#include "editor/x11/X11Dialog.h"
#include "editor/x11/X11Modal.h"

#include <algorithm>
#include <unistd.h>

namespace Grimworks::X11Desktop {

namespace {

constexpr int kOk = 1;
constexpr int kCancel = 0;
/// What dialog programs end with when the user cancels; all else but 0 is a program that does not work.
constexpr int kCancelledStatus = 1;

/// Waits for a program's dialog. The window takes mouse and keys meanwhile only to drop them.
class ProgramModal final : public X11Modal {
public:
    ProgramModal(X11Window& itsWindow, ChildProcess& itsChild)
        : X11Modal(itsWindow.Loop(), &itsWindow), window(itsWindow.Id()), child(itsChild) {}

    bool TakesEvent(const xcb_generic_event_t& event) override {
        const int kind = X11KindOf(event);
        return X11WindowOf(event) == window && kind >= XCB_KEY_PRESS && kind <= XCB_LEAVE_NOTIFY;
    }

    void OnStep() override {
        if (child.HasEnded()) End();
    }

    [[nodiscard]] std::chrono::milliseconds StepTime() const override {
        return std::chrono::milliseconds(20);
    }

private:
    xcb_window_t window;
    ChildProcess& child;
};

Answer AskProgram(X11Window& window, std::vector<std::string> words) {
    words.front() = ChildProcess::Find(words.front());
    ChildProcess child;
    if (words.front().empty() || !child.Start(words, {"WINDOWID=" + std::to_string(window.Id())})) return {};
    if (!ProgramModal(window, child).Run()) return {Answer::Kind::Cancelled, {}};
    if (child.ExitStatus() == kCancelledStatus) return {Answer::Kind::Cancelled, {}};
    if (child.ExitStatus() != 0) return {};
    std::string text = child.Output();
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    return {text.empty() ? Answer::Kind::Cancelled : Answer::Kind::Given, text};
}

std::vector<std::vector<std::string>> InOrder(std::vector<std::string> zenity,
                                              std::vector<std::string> kdialog) {
    if (DesktopDialogs::PrefersKdialog()) return {std::move(kdialog), std::move(zenity)};
    return {std::move(zenity), std::move(kdialog)};
}

/// Asks for a text in the editor's own window; empty for none.
std::string AskForText(X11Window& window, const IRECT& size, const std::string& title,
                       const std::string& message, const std::string& text) {
    X11Question question;
    question.title = title;
    question.message = message;
    question.buttons = {{"OK", kOk}, {"Cancel", kCancel}};
    question.cancelled = kCancel;
    question.hasField = true;
    question.fieldText = text;
    X11Dialog dialog(window.Loop(), &window, window.Id(), size);
    return dialog.Ask(question) == kOk ? dialog.FieldText() : std::string();
}

bool MayOverwrite(X11Window& window, const IRECT& size, const std::string& path) {
    X11Question question;
    question.title = "Save";
    question.message = path + "\nThis file exists. Replace it?";
    question.buttons = {{"Replace", kOk}, {"Cancel", kCancel}};
    question.cancelled = kCancel;
    return X11Dialog(window.Loop(), &window, window.Id(), size).Ask(question) == kOk;
}

/// A path as the user types it.
std::string FullPath(const std::string& typed, const std::string& dir) {
    if (typed.starts_with("~/")) return UserFolders::Home() + typed.substr(2);
    return typed.starts_with("/") ? typed : dir + typed;
}

} // namespace

Answer AskPrograms(X11Window& window, const std::vector<std::vector<std::string>>& programs) {
    for (const std::vector<std::string>& words : programs) {
        Answer answer = AskProgram(window, words);
        if (answer.kind != Answer::Kind::Failed) return answer;
    }
    return {};
}

std::string AskForFile(X11Window& window, const IRECT& size, const FileQuestion& question) {
    const auto programs =
        InOrder(DesktopDialogs::ZenityFile(question), DesktopDialogs::KdialogFile(question));
    const Answer answer = AskPrograms(window, programs);
    if (answer.kind != Answer::Kind::Failed) return answer.text;
    std::string text = question.dir + question.file;
    while (window.Exists()) {
        text = AskForText(window, size, question.title, "Path of the file:", text);
        if (text.empty()) return {};
        std::string path = FullPath(text, question.dir);
        const bool exists = access(path.c_str(), F_OK) == 0;
        if (!question.save || !exists || MayOverwrite(window, size, path)) return path;
    }
    return {};
}

std::optional<IColor> AskForColor(X11Window& window, const IRECT& size, const IColor& color,
                                  const std::string& prompt) {
    const auto programs =
        InOrder(DesktopDialogs::ZenityColor(color, prompt), DesktopDialogs::KdialogColor(color, prompt));
    const Answer answer = AskPrograms(window, programs);
    if (answer.kind != Answer::Kind::Failed) return DesktopDialogs::ColorOfText(answer.text);
    return DesktopDialogs::ColorOfText(
        AskForText(window, size, prompt, "Colour as #rrggbb:", DesktopDialogs::TextOfColor(color)));
}

bool OpenAddress(const std::string& address) {
    constexpr int kPatience = 5000;
    const bool plain =
        std::all_of(address.begin(), address.end(), [](char c) { return c > ' ' && c != 0x7F; });
    const bool known =
        address.starts_with("http://") || address.starts_with("https://") || address.starts_with("mailto:");
    const std::string opener = ChildProcess::Find("xdg-open");
    const std::string session = ChildProcess::Find("setsid");
    if (!plain || !known || opener.empty() || session.empty()) return false;
    // The opener may become the browser itself and run for hours: setsid starts it on its own and ends.
    // Nobody reads then what it writes.
    ChildProcess child;
    return child.StartUnheard({session, "--fork", opener, address}) && child.WaitForEnd(kPatience) &&
           child.ExitStatus() == 0;
}

} // namespace Grimworks::X11Desktop
