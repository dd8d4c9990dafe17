#include "effects/StoredCurves.h"

#include "effects/CurveShapes.h"

#include <bit>

// The files are embedded as they are.
static_assert(std::endian::native == std::endian::little);

// Placed by StoredCurves.S.
extern "C" {
[[gnu::visibility("hidden")]] extern const Grimworks::CurvePoints thudforgeCurvePublicEnemy;
[[gnu::visibility("hidden")]] extern const Grimworks::CurvePoints thudforgeCurveThrashcore;
}

namespace Grimworks {

namespace {

/// Reads a drawn curve at every entry's own input, as the audio path would read it.
void Trace(CurvePoints& curve, const CurvePoints& drawn) {
    for (int k = 0; k < kCurvePoints; ++k) {
        const double x = k * 0.003913894324853229 - 1.0;
        curve[static_cast<std::size_t>(k)] = LookUpCurve(drawn, x, CurveInterpolation::Cubic);
    }
}

} // namespace

const CurvePoints& StoredPublicEnemy() {
    return thudforgeCurvePublicEnemy;
}

const CurvePoints& StoredThrashcore() {
    return thudforgeCurveThrashcore;
}

void DrawStoredCurves(std::vector<CurvePoints>& tables) {
    Trace(tables[60], StoredPublicEnemy());
    Trace(tables[77], StoredThrashcore());
}

} // namespace Grimworks
