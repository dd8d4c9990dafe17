#pragma once

#include "editor/IPopupMenu.h"
#include "editor/x11/X11MenuPane.h"
#include "editor/x11/X11Modal.h"

#include <chrono>
#include <memory>
#include <vector>

namespace Grimworks {

/// A pop-up menu on the screen, with its submenus. While it is open it has mouse and keyboard, and a click
/// elsewhere closes it. Editor thread only.
class X11Menu final : public X11Modal {
public:
    X11Menu(X11Loop& itsLoop, const void* waitingFor) : X11Modal(itsLoop, waitingFor) {}
    ~X11Menu() override;

    /// Shows the menu at the lower left of `rect` of the screen until a row is chosen. Gives the menu of that
    /// row, which holds its index; null for none, or when it was cancelled.
    IPopupMenu* Choose(IPopupMenu& menu, const IRECT& rect);

    bool TakesEvent(const xcb_generic_event_t& event) override;
    void OnStep() override;
    [[nodiscard]] std::chrono::milliseconds StepTime() const override {
        return std::chrono::milliseconds(20);
    }

private:
    using Clock = std::chrono::steady_clock;

    void GrabInput();
    void NoteMousePlace();
    void OnMotion(int x, int y);
    void OnPress(int button, int x, int y);
    void OnRelease(int x, int y);
    void OnKey(const X11KeyPress& press);
    void OnSideKey(int columnStep);
    void HighlightAt(int x, int y);

    [[nodiscard]] X11MenuPane& Top() { return *panes.back(); }
    /// Index of the pane at a point of the screen, -1 for none.
    [[nodiscard]] int PaneAt(int x, int y) const;
    /// Closes and opens submenus so that those of the highlighted rows are there, up to this level.
    void FollowHighlight(std::size_t level);
    void OpenSubmenu(bool highlightFirst);
    void CloseAbove(std::size_t level);
    void ChooseRow(X11MenuPane& pane, int row);

    std::vector<std::unique_ptr<X11MenuPane>> panes;
    IPopupMenu* result = nullptr;
    bool hasMouse = false;
    bool hasKeys = false;
    int grabTries = 0;
    bool mayRelease = false; ///< the mouse has done something in the menu since it opened
    int openedAtX = 0;
    int openedAtY = 0;
    std::size_t hoverLevel = 0;
    bool hovers = false;
    Clock::time_point hoversSince;
};

} // namespace Grimworks
