#pragma once

#include "editor/IGraphics.h"
#include "editor/win/WinApi.h"

#include <array>
#include <memory>
#include <optional>
#include <string>

namespace Grimworks {

/// The editor in a child window of the host's. The host's window thread opens and closes it and brings every
/// message. Menus and dialogs run message loops of their own inside the call; whatever the host does
/// meanwhile, closing the editor included, ends them first.
class IGraphicsWin final : public IGraphics {
public:
    static constexpr const char* kTitle = "IPlug";
    static constexpr UINT_PTR kTimer = 2;

    using IGraphics::IGraphics;
    ~IGraphicsWin() override;

    /// `parent` is the HWND of the host's. An open window is closed first.
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
    [[nodiscard]] void* GetWindow() override { return window; }
    [[nodiscard]] bool WindowIsOpen() override { return window != nullptr; }
    void HideMouseCursor() override;
    void ShowMouseCursor() override;

private:
    /// A menu or dialog that waits in a loop of its own. Safe to look at when the editor is closed meanwhile.
    class Waiting {
    public:
        explicit Waiting(IGraphicsWin& forEditor);
        ~Waiting();
        Waiting(const Waiting&) = delete;
        Waiting& operator=(const Waiting&) = delete;

        /// Whether the window that it started from is still there.
        [[nodiscard]] bool WindowStands() const {
            return graphics.window != nullptr && graphics.window == from;
        }

    private:
        IGraphicsWin& graphics;
        HWND from;
    };

    static LRESULT CALLBACK WindowProcedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK EditProcedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);

    // Messages; empty where the system's own way is to be taken.

    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> OnMouseMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnCreate(HWND created);
    void OnGone();
    void EndDrag(int handlers);
    void OnTimer();
    void OnPaint();
    void OnButtonDown(WPARAM wParam, LPARAM lParam);
    void OnButtonUp(WPARAM wParam, LPARAM lParam);
    void OnDoubleClick(WPARAM wParam, LPARAM lParam);
    void OnMove(WPARAM wParam, LPARAM lParam);
    void OnWheel(WPARAM wParam, LPARAM lParam);
    void OnCaptureLost();
    void OnKey(UINT message, WPARAM wParam, LPARAM lParam);

    // Tooltip.

    void MakeTooltip();
    void ShowTooltip();
    void HideTooltip();

    // Text entry.

    std::optional<LRESULT> OnEditMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void EndEdit();
    void CommitEdit();
    void AskEdit(TextEntryState state);
    [[nodiscard]] LRESULT EditColors(HDC context) const;

    // Menus and dialogs.

    void CancelWaiting();
    [[nodiscard]] HWND HostWindow() const;

    void GiveClassBack();

    HWND window = nullptr;
    bool holdsClass = false; ///< this window counts as one of the class
    HWND parentWindow = nullptr;
    HWND tooltipWindow = nullptr;
    HWND paramEditWindow = nullptr;
    IControl* editControl = nullptr;
    const IParam* editParam = nullptr;
    WNDPROC editProc = nullptr; ///< the old window procedure of the edit box
    HFONT editFont = nullptr;
    IText editText;
    IRECT editRect;
    TextEntryState paramEditState = TextEntryState::None;
    bool showingTooltip = false;
    int tooltipIndex = -1;
    bool cursorHidden = false;
    POINT hiddenCursor{};
    std::array<COLORREF, 16> customColors{};
    int waiting = 0; ///< menus and dialogs on top of each other
    int inside = 0;  ///< messages being worked on, one within the other
    bool inMenu = false;
};

} // namespace Grimworks
