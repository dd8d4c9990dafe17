#pragma once

#include "effects/DistortionCurve.h"

namespace Grimworks {

/// The points of the two curves that are shipped as data, as their files hold them. Read-only; any thread.
[[nodiscard]] const CurvePoints& StoredPublicEnemy();
[[nodiscard]] const CurvePoints& StoredThrashcore();

} // namespace Grimworks
