#include "editor/x11/X11MenuPane.h"

#include "editor/LICE_Draw.h"
#include "editor/Utf8.h"
#include "editor/x11/X11Style.h"

#include <algorithm>
#include <array>

namespace Grimworks {

namespace {

constexpr int kTextLeft = 26;
constexpr int kArrowRight = 10;

char32_t Lower(char32_t character) {
    return character >= U'A' && character <= U'Z' ? character + 0x20 : character;
}

char32_t FirstOf(const std::string& text) {
    const std::u32string characters = CharactersOf(text);
    return characters.empty() ? 0 : Lower(characters.front());
}

void DrawCheckMark(LICE_IBitmap& bitmap, const IRECT& row, LICE_pixel color) {
    const int x = row.L + 9;
    const int y = row.MH();
    for (int thick = 0; thick < 2; ++thick) {
        LICE_Line(&bitmap, x, y + thick, x + 3, y + 3 + thick, color);
        LICE_Line(&bitmap, x + 3, y + 3 + thick, x + 9, y - 4 + thick, color);
    }
}

} // namespace

X11MenuLayout X11MenuPane::LayoutOf(X11Loop& loop, const IPopupMenu& menu) {
    std::vector<X11MenuLayout::Need> needs;
    needs.reserve(static_cast<std::size_t>(menu.ItemCount()));
    for (int row = 0; row < menu.ItemCount(); ++row) {
        needs.push_back(
            {X11Style::WidthOf(loop.Font(false), menu.ShownText(row)), menu.Item(row)->IsSeparator()});
    }
    const xcb_screen_t& screen = loop.Connection().Screen();
    return {needs, screen.width_in_pixels, screen.height_in_pixels};
}

X11MenuPane::X11MenuPane(X11Loop& itsLoop, IPopupMenu& shownMenu)
    : X11Surface(itsLoop), menu(shownMenu), layout(LayoutOf(itsLoop, shownMenu)) {}

bool X11MenuPane::Open(const IRECT& rect, bool submenu) {
    constexpr std::uint32_t kEvents = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_BUTTON_PRESS |
                                      XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION |
                                      XCB_EVENT_MASK_KEY_PRESS;
    const xcb_screen_t& screen = Loop().Connection().Screen();
    const auto placing = submenu ? X11MenuBeside : X11MenuBelow;
    place = placing(rect, layout.Width(), layout.Height(), screen.width_in_pixels, screen.height_in_pixels);
    if (!Create({XCB_NONE, place, kEvents}) || !picture.resize(place.W(), place.H())) return false;
    const X11Connection& connection = Loop().Connection();
    const std::array<xcb_atom_t, 1> type = {connection.Atom(X11Atom::TypePopup)};
    xcb_change_property(Display(), XCB_PROP_MODE_REPLACE, Id(), connection.Atom(X11Atom::NetWmWindowType),
                        XCB_ATOM_ATOM, 32, type.size(), type.data());
    Show();
    Redraw();
    return true;
}

void X11MenuPane::OnEvent(const xcb_generic_event_t& event) {
    if (X11KindOf(event) == XCB_EXPOSE) Put(picture, IRECT(0, 0, picture.getWidth(), picture.getHeight()));
}

int X11MenuPane::RowAt(int screenX, int screenY) const {
    return layout.RowAt(screenX - place.L, screenY - place.T, firstColumn);
}

IRECT X11MenuPane::ScreenRectOf(int row) const {
    const IRECT rect = layout.RectOf(row, firstColumn);
    return {rect.L + place.L, rect.T + place.T, rect.R + place.L, rect.B + place.T};
}

bool X11MenuPane::CanHighlight(int row) const {
    const IPopupMenu::Row* const item = menu.Item(row);
    if (item == nullptr) return false;
    const bool off = (item->flags & (IPopupMenu::Grayed | IPopupMenu::Disabled | IPopupMenu::Separator)) != 0;
    return !off;
}

void X11MenuPane::Highlight(int row) {
    const int wanted = CanHighlight(row) ? row : -1;
    if (wanted == highlighted) return;
    highlighted = wanted;
    if (wanted >= 0) {
        const int column = layout.ColumnOf(wanted);
        firstColumn = std::clamp(firstColumn, column - layout.ShownColumns() + 1, column);
    }
    Redraw();
}

void X11MenuPane::Scroll(int columnSteps) {
    const int to = std::clamp(firstColumn + columnSteps, 0, layout.Columns() - layout.ShownColumns());
    if (to == firstColumn) return;
    firstColumn = to;
    Redraw();
}

int X11MenuPane::NextRow(int row, int step) const {
    const int count = menu.ItemCount();
    int at = row < 0 && step < 0 ? count : row;
    for (int tried = 0; tried < count; ++tried) {
        at = (at + step + count) % count;
        if (CanHighlight(at)) return at;
    }
    return -1;
}

int X11MenuPane::NextRowWith(char32_t character) const {
    const char32_t wanted = Lower(character);
    const int count = menu.ItemCount();
    for (int step = 1; step <= count; ++step) {
        const int row = (std::max(highlighted, -1) + step) % count;
        if (CanHighlight(row) && FirstOf(menu.Item(row)->text) == wanted) return row;
    }
    return -1;
}

int X11MenuPane::RowBeside(int columnStep) const {
    const int beside = layout.RowBeside(highlighted, columnStep);
    return CanHighlight(beside) ? beside : -1;
}

void X11MenuPane::Redraw() {
    const IRECT whole(0, 0, picture.getWidth(), picture.getHeight());
    X11Style::DrawBox(picture, whole, X11Style::kBack, X11Style::kBorder);
    for (int row = 0; row < menu.ItemCount(); ++row) {
        const IRECT rect = layout.RectOf(row, firstColumn);
        if (!rect.Empty()) DrawRow(row, rect);
    }
    Put(picture, whole);
}

void X11MenuPane::DrawRow(int row, const IRECT& rect) {
    const IPopupMenu::Row& item = *menu.Item(row);
    if (item.IsSeparator()) {
        LICE_FillRect(&picture, rect.L + 4, rect.MH(), rect.W() - 8, 1, X11Style::kLine);
        return;
    }
    const bool chosen = row == highlighted;
    const bool grayed = (item.flags & IPopupMenu::Grayed) != 0;
    if (chosen) LICE_FillRect(&picture, rect.L, rect.T, rect.W(), rect.H(), X11Style::kChosen);
    const LICE_pixel usual = grayed ? X11Style::kDimText : X11Style::kText;
    const LICE_pixel ink = chosen ? X11Style::kChosenText : usual;
    if (item.IsChecked()) DrawCheckMark(picture, rect, chosen ? ink : X11Style::kMark);
    X11Style::DrawLine(picture, Loop().Font(false), menu.ShownText(row),
                       IRECT(rect.L + kTextLeft, rect.T, rect.R, rect.B), ink);
    if (item.submenu == nullptr) return;
    const int x = rect.R - kArrowRight;
    const int y = rect.MH();
    LICE_FillTriangle(&picture, x - 4, y - 4, x - 4, y + 4, x, y, ink);
}

} // namespace Grimworks
