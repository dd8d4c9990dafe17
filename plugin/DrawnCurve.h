#pragma once

#include "effects/DistortionCurve.h"

#include <cstddef>
#include <vector>

namespace Grimworks {

/// The distortion curve as the user draws it: one value a pixel of the drawing area, -1 at its top and +1 at
/// its bottom, the opposite sign of the curve that sound goes through. All under the plug-in lock.
class DrawnCurve {
public:
    static constexpr int kDefaultWidth = 128;

    /// The straight line, rising to the right on the screen.
    explicit DrawnCurve(int width = kDefaultWidth);

    /// The mouse goes down at pixel x with the value v. Outside the area nothing is drawn, and yet this
    /// counts as a stroke.
    void Press(int x, double v);

    /// The mouse moves to x. The neighbours are pulled along; what lies ahead of a fast move becomes flat, to
    /// the left without the first pixel. Nothing at all happens outside the area.
    void Drag(int x, double v, int dX);

    /// Writes the drawing into the points of a curve, with the sign of sound, and forgets the stroke.
    void WriteTo(CurvePoints& points);

    /// Takes the picture from the points of a curve and forgets a stroke.
    void ReadFrom(const CurvePoints& points);

    /// Whether a stroke waits for WriteTo.
    [[nodiscard]] bool HasStroke() const { return changed; }

    [[nodiscard]] const std::vector<double>& Values() const { return values; }

private:
    [[nodiscard]] bool Has(int x) const { return x >= 0 && x < static_cast<int>(values.size()); }
    [[nodiscard]] double& At(int x) { return values[static_cast<std::size_t>(x)]; }
    [[nodiscard]] double PointAt(int index) const;
    void Pull(int x, double v);

    std::vector<double> values;
    bool changed = false;
};

} // namespace Grimworks
