#include "editor/thudforge/CurvePainter.h"

#include "editor/IGraphics.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace Grimworks {

namespace {

constexpr double kHalfTurn = 3.14159;

template <typename ColorOf>
void DrawLines(IGraphics& canvas, const CurveLine& line, std::span<const double> points, ColorOf colorOf) {
    const int count = std::min(line.pointCount, static_cast<int>(points.size()));
    for (int i = 1; i < count; ++i) {
        const double from = points[static_cast<std::size_t>(i - 1)];
        const double to = points[static_cast<std::size_t>(i)];
        canvas.DrawLine(colorOf(i - 1), line.PixelX(i - 1), line.PixelY(from), line.PixelX(i),
                        line.PixelY(to));
    }
}

} // namespace

IColor GlowLevels::At(double position) const {
    const double level = base + std::floor(std::sin(position * kHalfTurn) * height);
    const auto gray = static_cast<std::uint8_t>(static_cast<int>(level));
    return {255, gray, gray, gray};
}

void DrawPlainLine(IGraphics& canvas, const CurveLine& line, std::span<const double> points,
                   const IColor& color) {
    DrawLines(canvas, line, points, [&color](int) { return color; });
}

void DrawGlowingLine(IGraphics& canvas, const CurveLine& line, std::span<const double> points,
                     const GlowLevels& levels) {
    DrawLines(canvas, line, points, [&line, &levels](int start) {
        return levels.At(static_cast<double>(start) / line.pointCount);
    });
}

} // namespace Grimworks
