#pragma once

#include "editor/IGraphics.h"
#include "editor/x11/X11Gate.h"
#include "editor/x11/X11Thread.h"
#include "editor/x11/X11Window.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>

namespace Grimworks {

/// The editor in a window of a display server. Open and close calls come from any thread of the host and are
/// handed to the editor thread; all else runs there.
class IGraphicsX11 final : public IGraphics {
public:
    IGraphicsX11(IPlugBase& plugBase, int windowWidth, int windowHeight, int framesPerSecond);
    ~IGraphicsX11() override;

    /// `parent` is the number of the host's window. An open window is closed first.
    bool OpenWindow(void* parent) override;
    void CloseWindow() override;
    bool PrepareToGo() override;

    void ForceEndUserEdit() override;
    void Resize(int newWidth, int newHeight) override;
    void DrawScreen(const IRECT& rect) override;
    int ShowMessageBox(const std::string& message, const std::string& caption, int type) override;
    IPopupMenu* CreateIPopupMenu(IPopupMenu& menu, const IRECT& rect) override;
    void CreateTextEntry(IControl& control, const IText& text, const IRECT& rect, const std::string& string,
                         const IParam* param) override;
    std::string HostPath() override;
    std::string PluginPath() override;
    std::string DesktopPath() override;
    std::string AppSupportPath(bool allUsers) override;
    void PromptForFile(std::string& file, std::string& dir, int action,
                       const std::string& extensions) override;
    bool PromptForColor(IColor& color, const std::string& prompt) override;
    bool OpenURL(const std::string& url) override;
    [[nodiscard]] void* GetWindow() override;
    [[nodiscard]] bool WindowIsOpen() override { return GetWindow() != nullptr; }
    void HideMouseCursor() override;
    void ShowMouseCursor() override;

private:
    bool CloseIfOpen();
    void MakeWindow(X11Loop& loop, xcb_window_t parent);
    bool DropWindow();
    /// Takes the mouse from the controls before something waits for the user; false without a window.
    bool StartWaiting();

    std::mutex hostCalls; ///< one open or close call at a time
    std::shared_ptr<X11Thread> thread;
    std::shared_ptr<X11Gate> gate;
    std::atomic<std::uint32_t> windowId{0};
    std::unique_ptr<X11Window> window; ///< editor thread only
};

} // namespace Grimworks
