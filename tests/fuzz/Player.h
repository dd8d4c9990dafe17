#pragma once

#include "plugin/ThudForge.h"

#include <cstdint>
#include <span>

namespace Grimworks::Fuzz {

/// One instrument for the whole run of a fuzzer: building one takes far longer than most inputs.
class Player {
public:
    Player();

    [[nodiscard]] ThudForge& Plug() { return plug; }
    [[nodiscard]] AEffect* Effect() { return plug.Effect(); }
    std::intptr_t Dispatch(std::int32_t opcode, std::int32_t index = 0, std::intptr_t value = 0,
                           void* ptr = nullptr, float opt = 0.0F);

    /// What must hold whatever came in: every parameter is a number in its range, and after silence a note
    /// renders numbers within the output's ceiling.
    void CheckHealth();

private:
    ThudForge plug;
};

/// The player that all inputs of this process share.
Player& SharedPlayer();

} // namespace Grimworks::Fuzz
