#include "editor/thudforge/IGwCurve.h"

#include "core/Maths.h"
#include "editor/IGraphics.h"
#include "editor/thudforge/CurvePainter.h"

#include <algorithm>
#include <cmath>

namespace Grimworks {

namespace {

const IColor kWhite{255, 255, 255, 255};
constexpr GlowLevels kGradient{100.0, 155.0};

} // namespace

int CurveLine::PixelX(int index) const {
    return rect.L + static_cast<int>(static_cast<double>(index) / pointCount * scaleX);
}

int CurveLine::PixelY(double value) const {
    if (std::isnan(value)) value = 0.0;
    constexpr double kFarAway = 1e6; // keeps wild values within whole pixels
    const double limit = clamp ? 1.0 : kFarAway;
    const double y = rect.T + centerY - Clamp(value, -limit, limit) * scaleY;
    return clamp ? std::min(static_cast<int>(y), rect.B - 1) : static_cast<int>(y);
}

IGwCurve::IGwCurve(IPlugBase* plugBase, const IRECT& rectangle, std::span<const double> shownPoints)
    : IControl(plugBase, rectangle), points(shownPoints) {
    const double half = rectangle.H() / 2.0 - 0.5;
    line = {rectangle, static_cast<double>(rectangle.W()), half, half, static_cast<int>(points.size()), true};
}

bool IGwCurve::Draw(IGraphics& canvas) {
    if (useGradient) {
        DrawGlowingLine(canvas, line, points, kGradient);
    } else {
        DrawPlainLine(canvas, line, points, kWhite);
    }
    if (showFrame) canvas.DrawRect(kWhite, rect);
    return true;
}

} // namespace Grimworks
