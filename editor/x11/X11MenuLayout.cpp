#include "editor/x11/X11MenuLayout.h"

#include <algorithm>
#include <cstdlib>

namespace Grimworks {

namespace {

constexpr int kBesideText = 50; ///< check mark on the left, arrow on the right
constexpr int kLeastWidth = 90;

IRECT OnScreen(int left, int top, int width, int height, int screenWidth, int screenHeight) {
    const int x = std::clamp(left, 0, std::max(0, screenWidth - width));
    const int y = std::clamp(top, 0, std::max(0, screenHeight - height));
    return {x, y, x + width, y + height};
}

} // namespace

X11MenuLayout::X11MenuLayout(const std::vector<Need>& rows, int screenWidth, int screenHeight) {
    const int room = std::max(kRowHeight, screenHeight - 2 * kFrame);
    int widest = kLeastWidth - kBesideText;
    int column = 0;
    int top = 0;
    int highest = 0;
    places.reserve(rows.size());
    for (const Need& row : rows) {
        const int rowHeight = row.separator ? kSeparatorHeight : kRowHeight;
        if (top + rowHeight > room) {
            ++column;
            top = 0;
        }
        places.push_back({column, top, rowHeight});
        top += rowHeight;
        highest = std::max(highest, top);
        widest = std::max(widest, row.textWidth);
    }
    columns = column + 1;
    columnWidth = std::max(1, std::min(widest + kBesideText, screenWidth - 2 * kFrame));
    shownColumns = std::clamp((screenWidth - 2 * kFrame) / columnWidth, 1, columns);
    width = shownColumns * columnWidth + 2 * kFrame;
    height = std::max(highest, kSeparatorHeight) + 2 * kFrame;
}

IRECT X11MenuLayout::RectOf(int row, int first) const {
    if (row < 0 || row >= static_cast<int>(places.size())) return {};
    const Place& place = places[static_cast<std::size_t>(row)];
    const int shown = place.column - first;
    if (shown < 0 || shown >= shownColumns) return {};
    const int left = kFrame + shown * columnWidth;
    const int top = kFrame + place.top;
    return {left, top, left + columnWidth, top + place.height};
}

int X11MenuLayout::RowAt(int x, int y, int first) const {
    for (int row = 0; row < static_cast<int>(places.size()); ++row) {
        if (RectOf(row, first).Contains(x, y)) return row;
    }
    return -1;
}

int X11MenuLayout::RowBeside(int row, int columnStep) const {
    if (row < 0 || row >= static_cast<int>(places.size())) return -1;
    const Place& from = places[static_cast<std::size_t>(row)];
    int best = -1;
    int distance = 0;
    for (int other = 0; other < static_cast<int>(places.size()); ++other) {
        const Place& place = places[static_cast<std::size_t>(other)];
        if (place.column != from.column + columnStep) continue;
        const int there = std::abs(place.top - from.top);
        if (best >= 0 && there >= distance) continue;
        best = other;
        distance = there;
    }
    return best;
}

IRECT X11MenuBelow(const IRECT& rect, int width, int height, int screenWidth, int screenHeight) {
    const bool fitsBelow = rect.B + height <= screenHeight;
    const bool fitsAbove = rect.T - height >= 0;
    const int top = !fitsBelow && fitsAbove ? rect.T - height : rect.B;
    return OnScreen(rect.L, top, width, height, screenWidth, screenHeight);
}

IRECT X11MenuBeside(const IRECT& row, int width, int height, int screenWidth, int screenHeight) {
    const bool fitsRight = row.R + width <= screenWidth;
    const bool fitsLeft = row.L - width >= 0;
    const int left = !fitsRight && fitsLeft ? row.L - width : row.R;
    return OnScreen(left, row.T - X11MenuLayout::kFrame, width, height, screenWidth, screenHeight);
}

} // namespace Grimworks
