#include "effects/CurveShapes.h"

namespace Grimworks {

namespace {

double Draw(RandomGenerator& random) {
    return static_cast<double>(random.Next()) / RandomGenerator::kMax;
}

/// Three curves out of two slowly wandering states and fresh noise; each half comes from another source.
void DrawVoxCurves(CurvePoints& first, CurvePoints& second, CurvePoints& third, RandomGenerator& random) {
    double a = 0.0;
    double b = 0.0;
    for (int i = 0; i < kCurveHalf; ++i) {
        const double x = CurveInput(i);
        if ((i & 3) == 0) a = 2.0 * Draw(random) - 1.0;
        if ((i & 1) == 0) b = 2.0 * Draw(random) - 1.0;
        const double c = Draw(random);
        // Another curve of the family took a draw of its own here; the sequence counts on it.
        Draw(random);
        b = 0.6 * b + x;
        a = 0.5 * a + x;
        if (i < 25) a = a + 0.5 * std::sin(3.0 * kPi * i / 25.0);
        if (i < 32) {
            const double bump = std::sin(2.0 * kPi * i / 32.0);
            b = b + 0.5 * (bump * bump);
        }
        b = b * (1.0 - x);
        const double e = 0.5 * (1.0 - x) * std::sin(10.0 * kPi * x) + 0.7 * (2.0 * c - 1.0) + x;
        SetCurveStep(first, i, a, -b);
        SetCurveStep(second, i, b, -e);
        SetCurveStep(third, i, e, -a);
    }
}

/// Two odd curves with grit on a sine.
void DrawBigDrives(CurvePoints& bad, CurvePoints& fat, RandomGenerator& random) {
    double g = 0.0;
    for (int i = 0; i < kCurveHalf; ++i) {
        const double x = CurveInput(i);
        const double r = Draw(random);
        if ((i & 1) != 0) g = (2.0 * Draw(random) - 1.0) * x;
        g = 0.777 * g;
        const double s = std::sin(2.0 * kPi * x);
        const double t = std::sin(4.0 * kPi * x);
        const double grit = 0.44 * (2.0 * r - 1.0);
        const double u = s <= 0.0 ? 0.0 : 1.25 * (s * s) * (1.0 - x) + grit;
        double v = 0.75 * x;
        if (t > 0.0) v = v + t * (1.0 - x);
        const double fatValue =
            0.25 * std::cos(10.0 * kPi * x) + v + u - 0.4 * (1.0 - x) * std::sin(12.0 * kPi * x) + g;
        const double badValue = 0.25 * std::sin(8.0 * kPi * x) + grit + x + t;
        SetCurveStep(fat, i, fatValue, -fatValue);
        SetCurveStep(bad, i, badValue, -badValue);
    }
}

} // namespace

void DrawNoiseCurves(std::vector<CurvePoints>& tables, RandomGenerator& random) {
    DrawVoxCurves(tables[23], tables[24], tables[25], random);
    DrawBigDrives(tables[27], tables[28], random);
    for (const std::size_t table : {23U, 24U, 25U, 27U, 28U}) {
        ClampCurve(tables[table]);
        SmoothCurve(tables[table]);
    }
}

} // namespace Grimworks
