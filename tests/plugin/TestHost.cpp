#include "tests/plugin/TestHost.h"

#include <cstring>

namespace Grimworks {

std::intptr_t TestHost::AudioMaster(AEffect* effect, std::int32_t opcode, std::int32_t index,
                                    std::intptr_t value, void* ptr, float opt) {
    auto* host = static_cast<TestHost*>(effect->user);
    if (host == nullptr) return 0;
    const HostCall call{opcode, index, value, opt};
    if (host->keepsCalls) host->calls.push_back(call);
    if (host->reaction) host->reaction(call);
    return host->Answer(call, ptr);
}

std::intptr_t TestHost::Answer(const HostCall& call, void* ptr) {
    switch (call.opcode) {
    case HostOp::GetTime:
        return hasTime ? reinterpret_cast<std::intptr_t>(&time) : 0;
    case HostOp::GetProcessLevel:
        return processLevel;
    case HostOp::GetProductString:
        if (!answersProduct) return 0;
        std::memcpy(ptr, product.c_str(), product.size() + 1);
        return 1;
    case HostOp::GetVendorVersion:
        return vendorVersion;
    case HostOp::ProcessEvents: {
        const auto* events = static_cast<const VstEvents*>(ptr);
        const VstEvent* event = events->events[0];
        const auto* bytes = reinterpret_cast<const unsigned char*>(event);
        sentEvent.assign(bytes, bytes + event->byteSize);
        return eventsAnswer;
    }
    default:
        return 0;
    }
}

} // namespace Grimworks
