// Draws the two stored transfer curves, "Public Enemy by O:MAR" and "QRX Thrashcore", into data/curves.
//
//     draw_curves data/curves
//
// Each curve runs through fixed anchor points with rounded flanks between them and carries teeth that vanish
// at the anchors. Only the four basic operations are used, so the files come out the same everywhere.

#include "core/Limits.h"
#include "core/Maths.h"
#include "tools/RawTable.h"

#include <array>
#include <cstdio>
#include <span>
#include <string>

namespace {

using Grimworks::Clamp;
using Grimworks::kCurvePoints;
using Points = Drawing::Table;

struct Anchor {
    int entry;
    double value;
};

struct Sketch {
    std::span<const Anchor> anchors;
    int teeth;      ///< saw teeth between two anchors
    double depth;   ///< their height
    double rail;    ///< the curve is clipped here
    int quietFirst; ///< the curve is exactly 0 from here ...
    int quietLast;  ///< ... to here; an empty range leaves it
};

constexpr std::array kPublicEnemy{Anchor{0, -0.9777},   Anchor{32, -0.6406},  Anchor{64, -0.354},
                                  Anchor{96, -0.786},   Anchor{128, -0.8486}, Anchor{160, -0.1284},
                                  Anchor{192, 0.1224},  Anchor{224, -0.9828}, Anchor{252, 0.0},
                                  Anchor{259, 0.0},     Anchor{288, -0.7949}, Anchor{320, -0.0146},
                                  Anchor{352, -0.2418}, Anchor{384, 0.4126},  Anchor{416, 0.6402},
                                  Anchor{448, 0.5501},  Anchor{480, 0.6382},  Anchor{511, 0.7108}};

constexpr std::array kThrashcore{
    Anchor{0, -0.7984},  Anchor{32, -0.644},  Anchor{64, -0.4238},  Anchor{96, -0.5214}, Anchor{128, 0.0024},
    Anchor{160, 0.0523}, Anchor{192, -0.245}, Anchor{224, -0.6779}, Anchor{255, -0.036}, Anchor{256, -0.0188},
    Anchor{288, 0.245},  Anchor{320, 0.6738}, Anchor{352, 0.9817},  Anchor{384, 0.9817}, Anchor{416, 0.505},
    Anchor{448, 0.9813}, Anchor{480, 0.3525}, Anchor{511, 0.4176}};

/// Weight of the right anchor at u = 0..1, level at both ends.
double Flank(double u) {
    return u * u * (3.0 - 2.0 * u);
}

/// A row of falling teeth over u = 0..1, faded to 0 at both ends.
double Teeth(double u, int count) {
    const double position = u * count;
    const double tooth = 1.0 - 2.0 * (position - static_cast<int>(position));
    return tooth * (4.0 * u * (1.0 - u));
}

double Between(const Anchor& from, const Anchor& to, int entry, const Sketch& sketch) {
    const double u = static_cast<double>(entry - from.entry) / (to.entry - from.entry);
    const double flank = from.value + (to.value - from.value) * Flank(u);
    return Clamp(flank + sketch.depth * Teeth(u, sketch.teeth), -sketch.rail, sketch.rail);
}

Points Draw(const Sketch& sketch) {
    Points points(kCurvePoints);
    for (std::size_t a = 0; a + 1 < sketch.anchors.size(); ++a) {
        const Anchor& from = sketch.anchors[a];
        const Anchor& to = sketch.anchors[a + 1];
        for (int entry = from.entry; entry < to.entry; ++entry)
            points[static_cast<std::size_t>(entry)] = Between(from, to, entry, sketch);
    }
    points.back() = sketch.anchors.back().value;
    for (int entry = sketch.quietFirst; entry <= sketch.quietLast; ++entry)
        points[static_cast<std::size_t>(entry)] = 0.0;
    return points;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: draw_curves DIRECTORY\n");
        return 2;
    }
    const std::string directory = argv[1];
    // Silence must stay silent under the first: it is flat around the centre.
    const Points enemy = Draw({kPublicEnemy, 3, 0.16, 0.99, 252, 259});
    const Points thrash = Draw({kThrashcore, 5, 0.1, 0.9817, 0, -1});
    const bool written = Drawing::WriteRaw(directory + "/public-enemy.raw", enemy) &&
                         Drawing::WriteRaw(directory + "/thrashcore.raw", thrash);
    return written ? 0 : 1;
}
