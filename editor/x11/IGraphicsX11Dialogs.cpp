#include "editor/x11/IGraphicsX11.h"

#include "editor/IPopupMenu.h"
#include "editor/x11/DesktopDialogs.h"
#include "editor/x11/UserFolders.h"
#include "editor/x11/X11Desktop.h"
#include "editor/x11/X11Dialog.h"
#include "editor/x11/X11Menu.h"

namespace Grimworks {

namespace {

/// Numbers of the published interface of message boxes.
enum MessageBox : int { OkOnly = 0, OkCancel = 1, YesNoCancel = 3, YesNo = 4 };
enum MessageBoxResult : int { IdOk = 1, IdCancel = 2, IdYes = 6, IdNo = 7 };

void SetButtons(X11Question& question, int type) {
    switch (type) {
    case OkCancel:
        question.buttons = {{"OK", IdOk}, {"Cancel", IdCancel}};
        question.cancelled = IdCancel;
        break;
    case YesNoCancel:
        question.buttons = {{"Yes", IdYes}, {"No", IdNo}, {"Cancel", IdCancel}};
        question.cancelled = IdCancel;
        break;
    case YesNo:
        question.buttons = {{"Yes", IdYes}, {"No", IdNo}};
        question.cancelled = IdNo;
        break;
    default:
        question.buttons = {{"OK", IdOk}};
        question.cancelled = IdOk;
        break;
    }
}

} // namespace

bool IGraphicsX11::StartWaiting() {
    ReleaseMouseCapture();
    if (window == nullptr || !window->Exists()) return false;
    window->ForgetButtons();
    OnMouseOut();
    return true;
}

int IGraphicsX11::ShowMessageBox(const std::string& message, const std::string& caption, int type) {
    X11Question question;
    question.title = caption;
    question.message = message;
    SetButtons(question, type);
    if (!StartWaiting()) return question.cancelled;
    X11Dialog dialog(window->Loop(), window.get(), window->Id(), IRECT(0, 0, Width(), Height()));
    return dialog.Ask(question);
}

IPopupMenu* IGraphicsX11::CreateIPopupMenu(IPopupMenu& menu, const IRECT& rect) {
    menu.ClearChoice();
    if (!StartWaiting()) return nullptr;
    const auto onScreen = window->OnScreen(rect);
    return onScreen ? X11Menu(window->Loop(), window.get()).Choose(menu, *onScreen) : nullptr;
}

void IGraphicsX11::PromptForFile(std::string& file, std::string& dir, int action,
                                 const std::string& extensions) {
    FileQuestion question;
    question.save = action == FileSave;
    question.title = question.save ? "Save" : "Open";
    question.dir = dir.empty() ? UserFolders::Home() : dir;
    if (!question.dir.empty() && question.dir.back() != '/') question.dir.push_back('/');
    question.file = file;
    question.extensions = DesktopDialogs::WordsOf(extensions);
    file.clear();
    if (!StartWaiting()) return;
    const std::string path = X11Desktop::AskForFile(*window, IRECT(0, 0, Width(), Height()), question);
    if (!path.empty()) DesktopDialogs::SplitPath(path, dir, file);
}

bool IGraphicsX11::PromptForColor(IColor& color, const std::string& prompt) {
    if (!StartWaiting()) return false;
    const auto chosen = X11Desktop::AskForColor(*window, IRECT(0, 0, Width(), Height()), color, prompt);
    if (chosen) color = *chosen;
    return chosen.has_value();
}

bool IGraphicsX11::OpenURL(const std::string& url) {
    return X11Desktop::OpenAddress(url);
}

std::string IGraphicsX11::HostPath() {
    return UserFolders::Program();
}

std::string IGraphicsX11::PluginPath() {
    return UserFolders::Module();
}

std::string IGraphicsX11::DesktopPath() {
    return UserFolders::Desktop();
}

std::string IGraphicsX11::AppSupportPath(bool allUsers) {
    return UserFolders::AppSupport(allUsers);
}

} // namespace Grimworks
