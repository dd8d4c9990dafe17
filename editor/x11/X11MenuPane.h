#pragma once

#include "editor/IPopupMenu.h"
#include "editor/LICE_MemBitmap.h"
#include "editor/x11/X11MenuLayout.h"
#include "editor/x11/X11Surface.h"

namespace Grimworks {

/// The window of one level of an open menu: draws its rows, one of them highlighted. What the mouse and the
/// keys do is up to X11Menu. Editor thread only.
class X11MenuPane final : public X11Surface {
public:
    /// `shownMenu` must stay while the pane lives.
    X11MenuPane(X11Loop& itsLoop, IPopupMenu& shownMenu);

    /// Opens below `rect` of the screen, or beside it for a submenu. False without a window.
    bool Open(const IRECT& rect, bool submenu);

    void OnEvent(const xcb_generic_event_t& event) override;

    [[nodiscard]] IPopupMenu& Menu() { return menu; }
    [[nodiscard]] bool Contains(int screenX, int screenY) const { return place.Contains(screenX, screenY); }

    /// The row at a point of the screen, -1 for none.
    [[nodiscard]] int RowAt(int screenX, int screenY) const;

    /// Rectangle of a row on the screen.
    [[nodiscard]] IRECT ScreenRectOf(int row) const;

    [[nodiscard]] int Highlighted() const { return highlighted; }
    /// -1 for none. Scrolls to the row if needed.
    void Highlight(int row);

    /// The next row, from `row` on in steps, that can be highlighted; goes around at the ends, which are
    /// where `row` is -1. -1 if there is none.
    [[nodiscard]] int NextRow(int row, int step) const;

    /// The next row behind the highlighted one whose text begins with a character; -1 for none.
    [[nodiscard]] int NextRowWith(char32_t character) const;

    /// The row beside the highlighted one, -1 for none.
    [[nodiscard]] int RowBeside(int columnStep) const;

    /// Shows other columns, if there are more than the screen takes.
    void Scroll(int columnSteps);

private:
    [[nodiscard]] static X11MenuLayout LayoutOf(X11Loop& loop, const IPopupMenu& menu);
    [[nodiscard]] bool CanHighlight(int row) const;
    void Redraw();
    void DrawRow(int row, const IRECT& rect);

    IPopupMenu& menu;
    X11MenuLayout layout;
    LICE_MemBitmap picture;
    IRECT place;
    int highlighted = -1;
    int firstColumn = 0;
};

} // namespace Grimworks
