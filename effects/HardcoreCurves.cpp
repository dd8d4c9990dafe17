#include "effects/CurveShapes.h"

#include "core/Normalise.h"

#include <array>

namespace Grimworks {

namespace {

using Half = std::array<double, kCurveHalf>;
using Halves = std::array<Half, 8>;

/// The raw shapes. Their position runs over i/256, not over the input that the entry stands for.
Halves DrawHalves() {
    Halves h{};
    double tooth = -1.0;
    for (int i = 0; i < kCurveHalf; ++i) {
        const auto k = static_cast<std::size_t>(i);
        const double t = i / 256.0;
        const double s = std::sin(kPi * t);
        if (i % 42 == 0) tooth = -tooth;
        const double m = (i % 42) / 42.0 * tooth * 1.5 * (1.0 - t);
        const double n = (i & 63) / 64.0 * 1.75 * (1.0 - t);
        h[0][k] = t + 0.2 * s + 0.1 * std::fabs(std::sin(4.0 * kPi * t));
        h[1][k] = t + 0.25 * s + 0.15 * std::fabs(std::sin(6.0 * kPi * t));
        h[2][k] = t + 0.25 * s + 0.15 * std::fabs(std::sin(10.0 * kPi * t));
        h[3][k] = t + 0.2 * s + 0.25 * std::fabs(std::sin(8.0 * kPi * t));
        h[4][k] = t - 0.2 * s + m;
        h[5][k] = t - 0.1 * s + m;
        h[6][k] = t + 0.1 * std::sin(2.0 * kPi * t) + n;
        h[7][k] = t + 0.2 * std::sin(2.0 * kPi * t) + n;
    }
    return h;
}

/// Writes `value` into entries first to last.
void Hold(Half& half, std::size_t first, std::size_t last, double value) {
    for (std::size_t j = first; j <= last; ++j)
        half[j] = value;
}

/// Multiplies entries first to last.
void Scale(Half& half, std::size_t first, std::size_t last, double factor) {
    for (std::size_t j = first; j <= last; ++j)
        half[j] = half[j] * factor;
}

/// Plateaus and holes cut by hand. The order matters where they overlap.
void Carve(Halves& h) {
    for (std::size_t m = 0; m < 100; ++m) {
        h[0][55 + m] = h[0][74];
        // Entry 74 itself is rewritten on the way, so the ramp starts anew from it.
        h[2][55 + m] = h[2][74] + 0.01 * static_cast<double>(m);
    }
    for (std::size_t m = 0; m < 50; ++m) {
        h[2][25 + m] = 0.01 * static_cast<double>(m);
        h[0][5 + m] = 0.0;
    }
    Hold(h[0], 100, 116, 1.0);
    Hold(h[0], 200, 216, 1.0);
    Hold(h[1], 200, 216, 0.0);
    Hold(h[1], 180, 196, 0.0);
    Hold(h[3], 150, 199, 0.0);
    Hold(h[1], 150, 199, 1.0);
    Hold(h[1], 7, 43, 0.0);
    Hold(h[0], 7, 43, 1.0);
    Scale(h[2], 17, 53, 0.1);
    Hold(h[3], 17, 53, 1.0);
}

void Join(CurvePoints& curve, const Half& positive, const Half& negative) {
    DrawUneven(
        curve, [&positive](int i, double) { return positive[static_cast<std::size_t>(i)]; },
        [&negative](int i, double) { return -negative[static_cast<std::size_t>(i)]; });
}

/// A ramp with two bouncing offsets of growing speed, one for each half, and four quiet stretches.
void DrawIndustrial(CurvePoints& curve) {
    Half positive{};
    Half negative{};
    double offset = 0.0;
    double step = 0.0108025;
    double mirrorOffset = 0.0;
    double mirrorStep = 0.00025;
    for (int i = 0; i < kCurveHalf; ++i) {
        const double x = CurveInput(i);
        if (std::fabs(offset) > 0.2) step = -step;
        if (std::fabs(mirrorOffset) > 0.2) mirrorStep = -mirrorStep;
        offset = offset + step;
        step = step - 0.00525;
        mirrorOffset = mirrorOffset - mirrorStep;
        mirrorStep = mirrorStep - 0.0005;
        positive[static_cast<std::size_t>(i)] = x + offset;
        negative[static_cast<std::size_t>(i)] = x + mirrorOffset;
    }
    Scale(positive, 75, 174, 0.25);
    Scale(negative, 25, 74, 0.1);
    Scale(positive, 100, 116, 0.25);
    Scale(negative, 200, 216, 0.25);
    Join(curve, positive, negative);
}

} // namespace

void DrawHardcoreCurves(std::vector<CurvePoints>& tables) {
    Halves h = DrawHalves();
    Carve(h);
    Join(tables[45], h[0], h[1]);
    Join(tables[46], h[2], h[3]);
    Join(tables[47], h[4], h[5]);
    Join(tables[48], h[6], h[7]);
    DrawIndustrial(tables[49]);

    ClampCurve(tables[45]);
    ClampCurve(tables[46]);
    Normalise(tables[47], 1.0);
    Normalise(tables[48], 1.0);
    SmoothCurve(tables[48]);
    ClampCurve(tables[49]);
}

} // namespace Grimworks
