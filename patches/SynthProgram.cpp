#include "patches/SynthProgram.h"

#include "core/Choice.h"
#include "core/Maths.h"
#include "core/ParameterTable.h"

#include <algorithm>
#include <cmath>

namespace Grimworks {

SynthProgram::SynthProgram() : name("Basic Bass Drum") {
    ConstructorValues(values);
    keys.reserve(kParameters);
    for (int id = 0; id < kParameters; ++id)
        keys.push_back({ParameterKey(id), id});
}

void SynthProgram::SetValue(int id, double value) {
    const bool ofOutput = id == Param::LimiterMode || id == Param::Volume || id == Param::LimiterLevel;
    if (ofOutput || std::isnan(value)) return;
    SetChoice(id, Clamp(value, 0.0, 1.0));
}

void SynthProgram::SetChoice(int id, double value) {
    if (id >= 0 && id < kLiveParameters) values[id] = value;
}

int SynthProgram::IdOfKey(std::string_view key) const {
    const auto entry =
        std::find_if(keys.begin(), keys.end(), [key](const KeyEntry& e) { return e.key == key; });
    return entry != keys.end() ? entry->id : kUnknownId;
}

std::string SynthProgram::KeyOfId(int id) const {
    const auto entry = std::find_if(keys.begin(), keys.end(), [id](const KeyEntry& e) { return e.id == id; });
    return entry != keys.end() ? entry->key : std::string();
}

std::vector<double> SynthProgram::BuildPresetValues(const DistortionDataProvider& curves) const {
    const int curve = ClampedChoice(GetValue(Param::DistortionType), kCurves - 1);
    const CurvePoints& points = curves.GetCurveData(curve);
    std::vector<double> numbers(points.begin(), points.end());
    for (int id = 0; id < kParameters; ++id)
        numbers.push_back(GetValue(id));
    return numbers;
}

} // namespace Grimworks
