#include "tests/fuzz/Player.h"

#include "tests/fuzz/Check.h"

#include <array>
#include <cmath>

namespace Grimworks::Fuzz {

namespace {

constexpr int kFrames = 64;
constexpr double kCeiling = 3.1622777; ///< +10 dB, where the output is cut

} // namespace

Player::Player() : plug(nullptr) {
    Dispatch(PlugOp::Open);
    Dispatch(PlugOp::SetSampleRate, 0, 0, nullptr, 44100.0F);
    Dispatch(PlugOp::SetBlockSize, 0, kFrames);
    Dispatch(PlugOp::MainsChanged, 0, 1);
}

std::intptr_t Player::Dispatch(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr,
                               float opt) {
    return Effect()->dispatcher(Effect(), opcode, index, value, ptr, opt);
}

void Player::CheckHealth() {
    for (int id = 0; id < kParameters; ++id) {
        const double value = plug.GetParameterNormalized(id);
        Check(value >= 0.0 && value <= 1.0, "a parameter is a number from 0 to 1");
    }
    Dispatch(PlugOp::SetSampleRate, 0, 0, nullptr, 44100.0F);
    Dispatch(PlugOp::SetBlockSize, 0, kFrames);
    VstMidiEvent note{};
    note.type = kMidiEvent;
    note.byteSize = sizeof(note);
    note.midiData[0] = static_cast<char>(0x90);
    note.midiData[1] = 36;
    note.midiData[2] = 100;
    VstEvents events{1, 0, {reinterpret_cast<VstEvent*>(&note), nullptr}};
    Dispatch(PlugOp::ProcessEvents, 0, 0, &events);
    std::array<double, kFrames> left{};
    std::array<double, kFrames> right{};
    std::array<double*, 2> outputs{left.data(), right.data()};
    Effect()->processDoubleReplacing(Effect(), nullptr, outputs.data(), kFrames);
    for (const std::array<double, kFrames>& channel : {left, right}) {
        for (const double sample : channel) {
            Check(!(std::fabs(sample) > kCeiling), "the output keeps its ceiling");
        }
    }
}

Player& SharedPlayer() {
    static Player player;
    return player;
}

} // namespace Grimworks::Fuzz
