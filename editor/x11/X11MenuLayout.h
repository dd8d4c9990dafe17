#pragma once

#include "editor/Types.h"

#include <vector>

namespace Grimworks {

/// Where the rows of a menu stand: in one column, or in several where one would be higher than the screen.
/// Plain arithmetic.
class X11MenuLayout {
public:
    static constexpr int kRowHeight = 20;
    static constexpr int kSeparatorHeight = 9;
    static constexpr int kFrame = 4; ///< around all rows

    /// What a row needs.
    struct Need {
        int textWidth = 0;
        bool separator = false;
    };

    /// Lays the rows out for a screen of this size. Columns that find no room are reached by scrolling.
    X11MenuLayout(const std::vector<Need>& rows, int screenWidth, int screenHeight);

    [[nodiscard]] int Width() const { return width; }
    [[nodiscard]] int Height() const { return height; }
    [[nodiscard]] int Columns() const { return columns; }
    [[nodiscard]] int ShownColumns() const { return shownColumns; }
    [[nodiscard]] int ColumnOf(int row) const { return places[static_cast<std::size_t>(row)].column; }

    /// Rectangle of a row with `first` as the leftmost column; empty if its column is not shown.
    [[nodiscard]] IRECT RectOf(int row, int first) const;

    /// The row at a point, -1 for none.
    [[nodiscard]] int RowAt(int x, int y, int first) const;

    /// The row of another column that is nearest in height; -1 for a column that is not there.
    [[nodiscard]] int RowBeside(int row, int columnStep) const;

private:
    struct Place {
        int column;
        int top;
        int height;
    };

    std::vector<Place> places;
    int columnWidth = 0;
    int columns = 1;
    int shownColumns = 1;
    int width = 0;
    int height = 0;
};

/// Where a menu of this size opens: below the lower left corner of `rect`, above it where there is no room,
/// and always on the screen.
[[nodiscard]] IRECT X11MenuBelow(const IRECT& rect, int width, int height, int screenWidth, int screenHeight);

/// Where a submenu opens: right of its row, or left of it where there is no room.
[[nodiscard]] IRECT X11MenuBeside(const IRECT& row, int width, int height, int screenWidth, int screenHeight);

} // namespace Grimworks
