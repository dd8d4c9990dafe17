#include "effects/DistortionDataProvider.h"

#include "effects/CurveShapes.h"

namespace Grimworks {

namespace {

constexpr std::uint32_t kSeed = 1600;

} // namespace

DistortionDataProvider::DistortionDataProvider(RandomGenerator& random) : tables(kTables, CurvePoints{}) {
    random.Seed(kSeed);
    DrawPlainCurves(tables);
    DrawFuzzCurves(tables);
    DrawHardcoreCurves(tables);
    DrawNoiseCurves(tables, random);
    DrawStoredCurves(tables);
}

const CurvePoints& DistortionDataProvider::GetTable(int table) const {
    return tables[table < 0 || table >= kTables ? 0 : static_cast<std::size_t>(table)];
}

const CurvePoints& DistortionDataProvider::GetCurveData(int number) const {
    if (number < 1 || number >= kCurves) return GetTable(0);
    return GetTable(kCurveInfos[static_cast<std::size_t>(number)].table);
}

} // namespace Grimworks
