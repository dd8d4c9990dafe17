#include "effects/CurveShapes.h"

#include "core/Normalise.h"

namespace Grimworks {

namespace {

double Sigmoid1(double x) {
    return Clamp(x + 0.4 * std::sin(2.0 * kPi * x) + 0.1 * (1.0 - x) * std::sin(7.77 * kPi * x) +
                     0.2 * (1.0 - x) * std::cos(21.0 * kPi * x),
                 0.0, 1.0);
}

double Sigmoid2(double x) {
    return x + 0.3777 * std::sin(2.0 * kPi * x - 1.0084512418023237) +
           0.3 * (1.0 - x) * std::cos(7.0 * kPi * x) - 0.15 * (1.0 - x) * std::sin(17.0 * kPi * x);
}

double Typhoon(int i, double x) {
    double v = x - 0.4777 * std::sin(2.5 * kPi * x) + 0.144 * std::sin(25.0 * kPi * x) -
               0.1777 * std::cos(77.7 * kPi * x);
    if (i < 25) {
        const double bump = std::sin(i * kPi / 25.0);
        v = v + bump * bump;
    }
    return Clamp(v, 0.0, 1.0);
}

double Mova(int i, double x) {
    return ((i % 179) / 179.0 - 0.288) * (1.0 - x) + x;
}

double Qrx(double x) {
    return x + 0.35777 * std::sin(4.0 * kPi * x);
}

double Viper(int i, double x) {
    return ((i & 31) - 15.5) / 31.0 * (1.0 - x) + x;
}

void DrawSigmoids(CurvePoints& first, CurvePoints& second, CurvePoints& mixed) {
    DrawOdd(first, [](int, double x) { return Sigmoid1(x); });
    DrawOdd(second, [](int, double x) { return Sigmoid2(x); });
    DrawUneven(
        mixed, [](int, double x) { return Sigmoid1(x); }, [](int, double x) { return -Sigmoid2(x); });
    for (CurvePoints* curve : {&first, &second, &mixed}) {
        SmoothCurve(*curve);
        Normalise(*curve, 1.0);
    }
}

/// A saw-toothed ramp with an offset on the positive side; the tooth flips after every 32nd step.
void DrawKicking(CurvePoints& curve) {
    double tooth = 0.5;
    for (int i = 0; i < kCurveHalf; ++i) {
        const double x = CurveInput(i);
        const double g = (1.0 - x) * tooth;
        SetCurveStep(curve, i, x + 0.2 + g, -(x + g));
        if ((i & 31) == 0) tooth = -tooth;
    }
    Normalise(curve, 1.0);
}

/// Stripes of 25 steps, up and down in turn. The first stripe is one step only: the flip after step 25 is
/// taken back, which shifts the pattern.
void DrawTiger(CurvePoints& curve) {
    double stripe = 1.0;
    for (int i = 0; i < kCurveHalf; ++i) {
        const double x = CurveInput(i);
        const double g = (1.0 - x) * (1.0 - x) * stripe;
        SetCurveStep(curve, i, std::sin(x * kPi / 2.0) + g, -(x + g));
        if (i == 25) {
            stripe = 1.0;
        } else if (i % 25 == 0) {
            stripe = -stripe;
        }
    }
    Normalise(curve, 1.0);
}

void DrawDrives(std::vector<CurvePoints>& tables) {
    DrawOdd(tables[41], [](int, double x) {
        return (0.5 * std::cos(8.0 * kPi * x) + 0.5 * std::sin(16.0 * kPi * x)) * (1.0 - x) + x;
    });
    DrawOdd(tables[42], [](int, double x) {
        return (0.5 * std::cos(6.0 * kPi * x) + 0.5 * std::sin(12.0 * kPi * x) +
                0.5 * std::cos(24.0 * kPi * x)) *
                   (1.0 - x) +
               x;
    });
    DrawOdd(tables[43], [](int, double x) {
        return 0.5 * (std::sin(15.0 * kPi * x) + std::cos(5.0 * kPi * x) + std::sin(25.0 * kPi * x)) *
                   ((1.0 - x) * (1.0 - x)) +
               x;
    });
    DrawOdd(tables[44], [](int, double x) {
        return 0.5 *
                   (std::sin(12.0 * kPi * x) + std::cos(4.0 * kPi * x) + std::cos(16.0 * kPi * x) +
                    std::cos(20.0 * kPi * x)) *
                   ((1.0 - x) * (1.0 - x)) +
               x;
    });
    for (std::size_t table = 41; table <= 44; ++table)
        Normalise(tables[table], 1.0);
}

} // namespace

void DrawFuzzCurves(std::vector<CurvePoints>& tables) {
    DrawOdd(tables[13], Mova);
    DrawOdd(tables[14], Typhoon);
    DrawOdd(tables[15], [](int, double x) { return Qrx(x); });
    DrawUneven(
        tables[16], [](int, double x) { return Qrx(x); },
        [](int, double x) { return -(Qrx(x) - 0.1777 * std::cos(3.0 * kPi * x)); });
    for (std::size_t table = 13; table <= 16; ++table)
        SmoothCurve(tables[table]);
    DrawSigmoids(tables[19], tables[20], tables[21]);

    DrawOdd(tables[29], Viper);
    Normalise(tables[29], 1.0);
    DrawKicking(tables[30]);
    DrawTiger(tables[31]);
    DrawUneven(
        tables[32], [](int, double x) { return 1.25 * std::sin(4.0 * kPi * x) * (1.0 - x) + x; },
        [](int, double x) { return -(1.5 * std::sin(8.0 * kPi * x) * ((1.0 - x) * (1.0 - x)) + x); });
    ClampCurve(tables[32]);
    DrawDrives(tables);
}

} // namespace Grimworks
