#pragma once

#include "core/RandomGenerator.h"
#include "effects/DistortionCurve.h"

#include <cstddef>
#include <vector>

namespace Grimworks {

/// What the curve generators share. A curve is drawn from its centre: i runs over 0..255, entry 256 + i being
/// the positive side and 255 - i its mirror.
inline constexpr int kCurveHalf = kCurvePoints / 2;

/// The input that step i of the positive side stands for, 1/511 to 1.
[[nodiscard]] inline double CurveInput(int i) {
    return (kCurveHalf + i) * (2.0 / (kCurvePoints - 1)) - 1.0;
}

/// Both entries of step i.
inline void SetCurveStep(CurvePoints& curve, int i, double positive, double negative) {
    constexpr auto kHalf = static_cast<std::size_t>(kCurveHalf);
    const auto step = static_cast<std::size_t>(i);
    curve[kHalf + step] = positive;
    curve[kHalf - 1 - step] = negative;
}

/// Draws an odd curve from shape(i, x).
template <class Shape>
void DrawOdd(CurvePoints& curve, Shape shape) {
    for (int i = 0; i < kCurveHalf; ++i) {
        const double value = shape(i, CurveInput(i));
        SetCurveStep(curve, i, value, -value);
    }
}

/// Draws a curve whose halves differ, from positive(i, x) and negative(i, x) in this order.
template <class Positive, class Negative>
void DrawUneven(CurvePoints& curve, Positive positive, Negative negative) {
    for (int i = 0; i < kCurveHalf; ++i) {
        const double x = CurveInput(i);
        const double value = positive(i, x);
        SetCurveStep(curve, i, value, negative(i, x));
    }
}

/// Limits every entry to -1..+1.
void ClampCurve(CurvePoints& curve);

/// The running average of the fuzz curves. Unlike the user's smoothing each pass starts between the end entry
/// and the rail, which bends the ends outwards.
void SmoothCurve(CurvePoints& curve);

/// The families of curves. Each fills the tables that its comment names; the tables must be there.
void DrawPlainCurves(std::vector<CurvePoints>& tables);    ///< 0 to 9, 17, 18, 34, 38, 79, 81
void DrawFuzzCurves(std::vector<CurvePoints>& tables);     ///< 13 to 16, 19 to 21, 29 to 32, 41 to 44
void DrawHardcoreCurves(std::vector<CurvePoints>& tables); ///< 45 to 49
void DrawNoiseCurves(std::vector<CurvePoints>& tables, RandomGenerator& random); ///< 23 to 25, 27, 28
void DrawStoredCurves(std::vector<CurvePoints>& tables);                         ///< 60, 77

} // namespace Grimworks
