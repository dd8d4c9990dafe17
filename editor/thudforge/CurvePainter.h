#pragma once

#include "editor/thudforge/IGwCurve.h"

#include <span>

namespace Grimworks {

/// Gray levels along a line that glows towards its middle: base at the ends, base + height in the middle,
/// wrapping like any byte.
struct GlowLevels {
    double base;
    double height;

    /// The gray at `position` 0..1 along the line.
    [[nodiscard]] IColor At(double position) const;
};

/// Draws the points as a line from each to the next; no more of them than the width stands for.
void DrawPlainLine(IGraphics& canvas, const CurveLine& line, std::span<const double> points,
                   const IColor& color);

/// The same with each piece in the gray of its start.
void DrawGlowingLine(IGraphics& canvas, const CurveLine& line, std::span<const double> points,
                     const GlowLevels& levels);

} // namespace Grimworks
