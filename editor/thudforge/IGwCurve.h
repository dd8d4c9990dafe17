#pragma once

#include "editor/IControl.h"

#include <span>

namespace Grimworks {

class IGraphics;

/// A run of values as a line across a rectangle, as the curve displays draw it: a value of 1 lies at the top
/// and -1 at the bottom.
struct CurveLine {
    IRECT rect;
    double scaleX = 0.0;  ///< pixels from the first point to behind the last one
    double scaleY = 0.0;  ///< pixels of a value of 1
    double centerY = 0.0; ///< pixels from the top to a value of 0
    int pointCount = 0;   ///< points that the width stands for
    bool clamp = true;    ///< values stay within -1..1

    /// The pixel of a point. A value that is not a number lies in the middle.
    [[nodiscard]] int PixelX(int index) const;
    [[nodiscard]] int PixelY(double value) const;
};

/// A line through a list of points: the picture of a wave or an envelope. Takes no mouse.
class IGwCurve final : public IControl {
public:
    /// The points belong to somebody else and must outlive the control's use. Whoever changes them calls
    /// SetDirty(false).
    IGwCurve(IPlugBase* plugBase, const IRECT& rectangle, std::span<const double> shownPoints);

    bool Draw(IGraphics& canvas) override;

    /// A white line around the control.
    void ShowFrame(bool on) { showFrame = on; }
    /// A line that is brightest in its middle instead of a white one.
    void UseGradient(bool on) { useGradient = on; }
    void ClampValues(bool on) { line.clamp = on; }

private:
    bool showFrame = false;
    bool useGradient = false;
    std::span<const double> points;
    CurveLine line;
};

} // namespace Grimworks
