#include "voice/OscFilterUnit.h"

#include "core/Choice.h"

namespace Grimworks {

const OscFilterType& OscFilterTypeOf(double value) {
    static constexpr OscFilterType kUnknown{"Unknown Filter", "Unknown", 0};
    const int index = Choice(value, static_cast<int>(kOscFilterTypes.size()) - 1);
    if (index < 0 || index >= static_cast<int>(kOscFilterTypes.size())) return kUnknown;
    return kOscFilterTypes[static_cast<std::size_t>(index)];
}

void OscFilterUnit::SetLeftType(double value) {
    leftType = value;
    left = OscFilterTypeOf(value).bankEntry;
}

void OscFilterUnit::SetRightType(double value) {
    rightType = value;
    right = OscFilterTypeOf(value).bankEntry;
}

void OscFilterUnit::Reset() {
    for (Bank* bank : {&leftBank, &rightBank}) {
        for (IGwFilter* filter : bank->All())
            filter->Reset();
    }
}

void OscFilterUnit::SetSampleRate(double rate) {
    for (Bank* bank : {&leftBank, &rightBank}) {
        for (IGwFilter* filter : bank->All())
            filter->SetSampleRate(rate);
    }
    AudioProcessingUnit::SetSampleRate(rate);
}

} // namespace Grimworks
