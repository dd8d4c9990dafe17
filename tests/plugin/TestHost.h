#pragma once

#include "plugin/vst2.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Grimworks {

/// A host for tests: answers as it is set up and keeps every call. It hangs on AEffect::user.
struct TestHost {
    struct HostCall {
        std::int32_t opcode;
        std::int32_t index;
        std::intptr_t value;
        float opt;
    };

    std::vector<HostCall> calls;
    bool keepsCalls = true;
    bool hasTime = true;
    VstTimeInfo time{};
    std::string product = "Some Host";
    bool answersProduct = true;
    std::intptr_t vendorVersion = 0;
    std::intptr_t processLevel = 0;
    std::intptr_t eventsAnswer = 1;
    std::vector<unsigned char> sentEvent;
    std::function<void(const HostCall&)> reaction;

    void Attach(AEffect* effect) { effect->user = this; }

    [[nodiscard]] int Count(std::int32_t opcode) const {
        int count = 0;
        for (const HostCall& call : calls)
            count += call.opcode == opcode ? 1 : 0;
        return count;
    }

    [[nodiscard]] const HostCall& Last() const { return calls.back(); }

    static std::intptr_t AudioMaster(AEffect* effect, std::int32_t opcode, std::int32_t index,
                                     std::intptr_t value, void* ptr, float opt);

private:
    std::intptr_t Answer(const HostCall& call, void* ptr);
};

} // namespace Grimworks
