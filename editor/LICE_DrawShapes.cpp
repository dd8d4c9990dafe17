#include "editor/LICE_Blend.h"
#include "editor/LICE_Draw.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

namespace Grimworks {

namespace {

constexpr int kFarthest = 1 << 29; ///< keeps the products of the line's clipping within 64 bits

std::int64_t Limited(int coordinate) {
    return std::clamp(coordinate, -kFarthest, kFarthest);
}

std::int64_t FloorDivide(std::int64_t a, std::int64_t b) {
    const std::int64_t quotient = a / b;
    return a % b != 0 && (a < 0) != (b < 0) ? quotient - 1 : quotient;
}

std::int64_t CeilDivide(std::int64_t a, std::int64_t b) {
    return -FloorDivide(-a, b);
}

/// The steps of a line that are drawn: first to last, none if last is below first.
struct StepRange {
    std::int64_t first;
    std::int64_t last;

    void Limit(std::int64_t from, std::int64_t to) {
        first = std::max(first, from);
        last = std::min(last, to);
    }
};

/// A line along its longer side: step i of `steps` is i pixels along and (2 i rise + steps) / (2 steps)
/// pixels across, rounded down.
struct LineCourse {
    bool steep;
    std::int64_t along; ///< start on the longer side
    std::int64_t across;
    int alongSign;
    int acrossSign;
    std::int64_t steps;
    std::int64_t rise;

    LineCourse(std::int64_t x1, std::int64_t y1, std::int64_t x2, std::int64_t y2)
        : steep(std::llabs(y2 - y1) > std::llabs(x2 - x1)), along(steep ? y1 : x1), across(steep ? x1 : y1),
          alongSign((steep ? y2 < y1 : x2 < x1) ? -1 : 1), acrossSign((steep ? x2 < x1 : y2 < y1) ? -1 : 1),
          steps(std::max(std::llabs(x2 - x1), std::llabs(y2 - y1))),
          rise(std::min(std::llabs(x2 - x1), std::llabs(y2 - y1))) {}

    /// Distances from `start` in the direction of `sign` at which a coordinate lies in 0..size - 1.
    static std::pair<std::int64_t, std::int64_t> Inside(std::int64_t start, int sign, std::int64_t size) {
        if (sign > 0) return {-start, size - 1 - start};
        return {start - (size - 1), start};
    }

    /// The steps whose pixels lie in a bitmap of this size, `margin` pixels of it on both sides across.
    [[nodiscard]] StepRange Visible(int width, int height, std::int64_t margin) const {
        StepRange range{0, steps};
        const auto [alongFrom, alongTo] = Inside(along, alongSign, steep ? height : width);
        range.Limit(alongFrom, alongTo);
        auto [from, to] = Inside(across, acrossSign, steep ? width : height);
        from -= margin;
        to += margin;
        if (rise == 0) {
            if (from > 0 || to < 0) range.last = -1;
            return range;
        }
        range.Limit(CeilDivide((2 * from - 1) * steps, 2 * rise),
                    CeilDivide((2 * to + 1) * steps, 2 * rise) - 1);
        return range;
    }

    /// Calls put(x, y) for a step, `aside` pixels further across than `distance`.
    template <typename Put>
    void At(std::int64_t step, std::int64_t distance, Put put) const {
        const auto a = static_cast<int>(along + alongSign * step);
        const auto b = static_cast<int>(across + acrossSign * distance);
        steep ? put(b, a) : put(a, b);
    }
};

void DrawSharp(const PixelRows& rows, const LineCourse& line, LICE_pixel color, unsigned alpha, int mode) {
    const StepRange range = line.Visible(rows.Bounds().R, rows.Bounds().B, 0);
    if (range.last < range.first) return;
    const std::int64_t whole = 2 * std::max<std::int64_t>(line.steps, 1);
    const std::int64_t start = 2 * range.first * line.rise + line.steps;
    std::int64_t distance = start / whole;
    std::int64_t rest = start % whole;
    WithOperation(mode, [&]<int Operation>() {
        for (std::int64_t step = range.first; step <= range.last; ++step) {
            line.At(step, distance,
                    [&](int x, int y) { PutBlended<Operation>(*rows.At(x, y), color, alpha); });
            rest += 2 * line.rise;
            if (rest >= whole) {
                rest -= whole;
                ++distance;
            }
        }
    });
}

void DrawSmooth(LICE_IBitmap* dest, const LineCourse& line, LICE_pixel color, float alpha, int mode) {
    const StepRange range = line.Visible(dest->getWidth(), dest->getHeight(), 1);
    for (std::int64_t step = range.first; step <= range.last; ++step) {
        const std::int64_t steps = std::max<std::int64_t>(line.steps, 1);
        const std::int64_t distance = step * line.rise / steps;
        const float part = static_cast<float>(step * line.rise % steps) / static_cast<float>(steps);
        const auto put = [&](std::int64_t at, float weight) {
            line.At(step, at, [&](int x, int y) { LICE_PutPixel(dest, x, y, color, alpha * weight, mode); });
        };
        put(distance, 1.0F - part);
        put(distance + 1, part);
    }
}

/// The leftmost and rightmost pixel of a triangle's row.
struct RowExtent {
    std::int64_t left = INT64_MAX;
    std::int64_t right = INT64_MIN;

    void Add(std::int64_t x) {
        left = std::min(left, x);
        right = std::max(right, x);
    }
};

struct Point {
    std::int64_t x;
    std::int64_t y;
};

/// Adds what an edge has in row y.
void AddEdge(RowExtent& extent, Point a, Point b, std::int64_t y) {
    if (a.y > b.y) std::swap(a, b);
    if (y < a.y || y > b.y) return;
    if (a.y == b.y) {
        extent.Add(a.x);
        extent.Add(b.x);
        return;
    }
    const std::int64_t height = b.y - a.y;
    extent.Add(a.x + FloorDivide(2 * (y - a.y) * (b.x - a.x) + height, 2 * height));
}

} // namespace

void LICE_DrawRect(LICE_IBitmap* dest, int x, int y, int w, int h, LICE_pixel color, float alpha, int mode) {
    if (w <= 0 || h <= 0) return;
    LICE_FillRect(dest, x, y, w, 1, color, alpha, mode);
    if (h > 1) LICE_FillRect(dest, x, y + h - 1, w, 1, color, alpha, mode);
    LICE_FillRect(dest, x, y + 1, 1, h - 2, color, alpha, mode);
    if (w > 1) LICE_FillRect(dest, x + w - 1, y + 1, 1, h - 2, color, alpha, mode);
}

void LICE_Line(LICE_IBitmap* dest, int x1, int y1, int x2, int y2, LICE_pixel color, float alpha, int mode,
               bool aa) {
    const PixelRows rows(dest);
    if (rows.Empty()) return;
    const LineCourse line(Limited(x1), Limited(y1), Limited(x2), Limited(y2));
    if (aa) {
        DrawSmooth(dest, line, color, alpha, mode);
        return;
    }
    const unsigned put = PutAlpha(color, WeightOf(alpha), (mode & LICE_UseAlpha) != 0);
    if (put != 0) DrawSharp(rows, line, color, put, mode);
}

void LICE_FillTriangle(LICE_IBitmap* dest, int x1, int y1, int x2, int y2, int x3, int y3, LICE_pixel color,
                       float alpha, int mode) {
    const PixelRows rows(dest);
    if (rows.Empty()) return;
    const Point a{Limited(x1), Limited(y1)};
    const Point b{Limited(x2), Limited(y2)};
    const Point c{Limited(x3), Limited(y3)};
    const std::int64_t first = std::max<std::int64_t>(std::min({a.y, b.y, c.y}), 0);
    const std::int64_t last = std::min<std::int64_t>(std::max({a.y, b.y, c.y}), rows.Bounds().B - 1);
    for (std::int64_t y = first; y <= last; ++y) {
        RowExtent extent;
        AddEdge(extent, a, b, y);
        AddEdge(extent, b, c, y);
        AddEdge(extent, c, a, y);
        LICE_FillRect(dest, static_cast<int>(extent.left), static_cast<int>(y),
                      static_cast<int>(extent.right - extent.left + 1), 1, color, alpha, mode);
    }
}

} // namespace Grimworks
