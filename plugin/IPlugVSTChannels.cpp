#include "plugin/IPlugVST.h"

#include <algorithm>
#include <bit>
#include <string>

namespace Grimworks {

std::intptr_t IPlugVST::DispatchChannels(const Call& call) {
    switch (call.opcode) {
    case PlugOp::GetInputProperties:
        return GivePin(call, true);
    case PlugOp::GetOutputProperties:
        return GivePin(call, false);
    case PlugOp::SetSpeakerArrangement:
        return SetSpeakers(call);
    default:
        return GiveSpeakers(call);
    }
}

std::intptr_t IPlugVST::GivePin(const Call& call, bool input) {
    const int count = static_cast<int>(input ? inputChannels.size() : outputChannels.size());
    if (call.ptr == nullptr || call.index < 0 || call.index >= count) return 0;
    VstPinProperties pin{};
    pin.flags = PinFlag::Active;
    if (call.index < count - 1) pin.flags |= PinFlag::StereoPair;
    const std::string label = (input ? "Input " : "Output ") + std::to_string(call.index + 1);
    std::copy(label.begin(), label.end(), pin.label);
    *static_cast<VstPinProperties*>(call.ptr) = pin;
    return 1;
}

std::intptr_t IPlugVST::SetSpeakers(const Call& call) {
    const auto* wantedInputs = std::bit_cast<const VstSpeakerArrangement*>(call.value);
    const auto* wantedOutputs = static_cast<const VstSpeakerArrangement*>(call.ptr);
    if (wantedInputs == nullptr || wantedOutputs == nullptr) return 0;
    const auto connect = [](std::vector<Channel>& channels, std::int32_t count) {
        for (std::size_t i = 0; i < channels.size(); ++i)
            channels[i].connected = static_cast<std::int64_t>(i) < count;
    };
    connect(inputChannels, wantedInputs->numChannels);
    connect(outputChannels, wantedOutputs->numChannels);
    RefreshSpeakers();
    return 1;
}

std::intptr_t IPlugVST::GiveSpeakers(const Call& call) {
    auto** const inputs = std::bit_cast<VstSpeakerArrangement**>(call.value);
    auto** const outputs = static_cast<VstSpeakerArrangement**>(call.ptr);
    if (inputs == nullptr || outputs == nullptr) return 0;
    *inputs = &inputSpeakers;
    *outputs = &outputSpeakers;
    return 1;
}

} // namespace Grimworks
