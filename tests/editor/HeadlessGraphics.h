#pragma once

#include "editor/IGraphics.h"
#include "editor/IPopupMenu.h"
#include "editor/LICE_Draw.h"

#include <functional>
#include <string>
#include <vector>

namespace Grimworks {

/// An editor without a window: what would be on the screen stands in `screen`, and menus, dialogs and text
/// entries are answered by the test.
class HeadlessGraphics : public IGraphics {
public:
    explicit HeadlessGraphics(IPlugBase& plugBase, int windowWidth = 1220, int windowHeight = 835)
        : IGraphics(plugBase, windowWidth, windowHeight), screen(windowWidth, windowHeight) {}

    /// One tick of the clock with the redraw that follows it. Gives what was redrawn, empty for nothing.
    IRECT RunTick() {
        const IRECT dirty = Tick();
        if (!dirty.Empty()) Draw(dirty);
        return dirty;
    }

    /// Ticks until nothing is left to be redrawn, as when a window stands open for a while.
    void Settle() {
        constexpr int kEnough = 100;
        for (int i = 0; i < kEnough && !RunTick().Empty(); ++i) {
        }
    }

    /// Attaches a control and gives it.
    template <typename Control, typename... Arguments>
    Control& Attach(Arguments&&... arguments) {
        auto control = std::make_unique<Control>(std::forward<Arguments>(arguments)...);
        Control& attached = *control;
        AttachControl(std::move(control));
        return attached;
    }

    [[nodiscard]] LICE_pixel ScreenPixel(int x, int y) { return LICE_GetPixel(&screen, x, y); }
    [[nodiscard]] LICE_pixel Pixel(int x, int y) { return LICE_GetPixel(&DrawBuffer(), x, y); }

    void ForceEndUserEdit() override { ++forcedEnds; }
    void DrawScreen(const IRECT& rect) override {
        shown.push_back(rect);
        LICE_Blit(&screen, &DrawBuffer(), rect.L, rect.T, rect, 1.0F, LICE_Copy);
    }
    int ShowMessageBox(const std::string& message, const std::string& caption, int type) override {
        messages.push_back(caption + ": " + message);
        return onMessageBox ? onMessageBox(type) : 1;
    }
    IPopupMenu* CreateIPopupMenu(IPopupMenu& menu, const IRECT& rect) override {
        ReleaseMouseCapture();
        menu.ClearChoice();
        menuRect = rect;
        ++menusShown;
        return onMenu ? onMenu(menu) : nullptr;
    }
    void CreateTextEntry(IControl& control, const IText&, const IRECT& rect, const std::string& string,
                         const IParam* param) override {
        entries.push_back({&control, rect, string, param});
    }
    std::string HostPath() override { return "/host/"; }
    std::string PluginPath() override { return "/plugin/"; }
    std::string DesktopPath() override { return "/desktop/"; }
    std::string AppSupportPath(bool allUsers) override { return allUsers ? "/all/" : "/user/"; }
    void PromptForFile(std::string& file, std::string& dir, int action,
                       const std::string& extensions) override {
        file.clear();
        if (onFile) onFile(file, dir, action, extensions);
    }
    bool PromptForColor(IColor& color, const std::string& prompt) override {
        return onColor && onColor(color, prompt);
    }
    bool OpenURL(const std::string& url) override {
        urls.push_back(url);
        return true;
    }
    bool OpenWindow(void*) override {
        SetAllControlsDirty();
        return true;
    }
    void CloseWindow() override {}
    void* GetWindow() override { return nullptr; }
    bool WindowIsOpen() override { return false; }
    void HideMouseCursor() override { cursorHidden = true; }
    void ShowMouseCursor() override { cursorHidden = false; }

    /// A text entry that was opened.
    struct Entry {
        IControl* control;
        IRECT rect;
        std::string string;
        const IParam* param;
    };

    LICE_MemBitmap screen;
    std::vector<IRECT> shown; ///< rectangles given to DrawScreen
    std::vector<std::string> messages;
    std::vector<std::string> urls;
    std::vector<Entry> entries;
    IRECT menuRect;
    int menusShown = 0;
    int forcedEnds = 0;
    bool cursorHidden = false;
    /// Answers; null for a user who cancels. `onMenu` gives the menu whose row it has chosen.
    std::function<IPopupMenu*(IPopupMenu&)> onMenu;
    std::function<int(int)> onMessageBox;
    std::function<void(std::string& file, std::string& dir, int action, const std::string& extensions)>
        onFile;
    std::function<bool(IColor&, const std::string&)> onColor;
};

/// An answer for HeadlessGraphics::onMenu: chooses a row of the menu itself.
inline std::function<IPopupMenu*(IPopupMenu&)> ChooseRow(int row) {
    return [row](IPopupMenu& menu) {
        menu.SetChosenItem(row);
        return &menu;
    };
}

} // namespace Grimworks
