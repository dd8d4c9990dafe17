// A host that calls whatever it likes in whatever order, within the sizes that its buffers have.
#include "tests/fuzz/ByteFeed.h"
#include "tests/fuzz/Check.h"
#include "tests/fuzz/Player.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

using namespace Grimworks;
using namespace Grimworks::Fuzz;

namespace {

constexpr int kMostFrames = 512;
constexpr int kMostCalls = 200;

/// Opcodes that open windows, end the instrument or touch files are not for a fuzzer.
bool IsFit(std::int32_t opcode) {
    return opcode != PlugOp::Close && opcode != PlugOp::EditOpen && opcode != PlugOp::VendorSpecific;
}

void Dispatch(Player& player, ByteFeed& feed) {
    const auto opcode = static_cast<std::int32_t>(feed.Take<std::uint8_t>());
    const auto index = feed.Take<std::int32_t>();
    const auto value = feed.Take<std::int32_t>();
    const auto opt = feed.Take<float>();
    if (!IsFit(opcode)) return;
    // Large enough for every record that a host hands over.
    std::vector<unsigned char> buffer(sizeof(VstSpeakerArrangement), 0);
    const auto filled = feed.TakeSome(feed.Take<std::uint8_t>());
    std::copy(filled.begin(), filled.end(), buffer.begin());
    if (opcode == PlugOp::ProcessEvents) return; // has records of its own, see Play
    if (opcode == PlugOp::SetSpeakerArrangement) {
        player.Dispatch(opcode, 0, reinterpret_cast<std::intptr_t>(buffer.data()), buffer.data());
        return;
    }
    if (opcode == PlugOp::GetSpeakerArrangement) {
        std::array<void*, 2> given{};
        player.Dispatch(opcode, 0, reinterpret_cast<std::intptr_t>(&given[0]), &given[1]);
        return;
    }
    if (opcode == PlugOp::SetChunk) {
        player.Dispatch(opcode, index,
                        std::min<std::intptr_t>(value, static_cast<std::intptr_t>(buffer.size())),
                        buffer.data());
        return;
    }
    buffer.back() = 0;
    player.Dispatch(opcode, index, value, buffer.data(), opt);
}

void Play(Player& player, ByteFeed& feed) {
    std::array<VstMidiEvent, 2> notes{};
    for (VstMidiEvent& note : notes) {
        note.type = feed.Take<std::uint8_t>() < 250 ? kMidiEvent : feed.Take<std::int32_t>() & ~kSysExEvent;
        note.byteSize = sizeof(note);
        note.deltaFrames = feed.Take<std::int16_t>();
        for (int i = 0; i < 3; ++i)
            note.midiData[i] = feed.Take<char>();
    }
    VstEvents events{2, 0, {reinterpret_cast<VstEvent*>(&notes[0]), reinterpret_cast<VstEvent*>(&notes[1])}};
    player.Dispatch(PlugOp::ProcessEvents, 0, 0, &events);
}

void Process(Player& player, ByteFeed& feed) {
    const int frames = feed.Take<std::uint16_t>() % (kMostFrames + 1);
    static std::array<double, kMostFrames> left;
    static std::array<double, kMostFrames> right;
    std::array<double*, 2> outputs{left.data(), right.data()};
    player.Effect()->processDoubleReplacing(player.Effect(), nullptr, outputs.data(), frames);
}

} // namespace

int LLVMFuzzerTestOneInput(const unsigned char* data, unsigned long size) {
    Player& player = SharedPlayer();
    ByteFeed feed(data, size);
    for (int call = 0; call < kMostCalls && !feed.Empty(); ++call) {
        switch (feed.Take<std::uint8_t>() % 4) {
        case 0:
            Dispatch(player, feed);
            break;
        case 1:
            Play(player, feed);
            break;
        case 2:
            Process(player, feed);
            break;
        default:
            player.Effect()->setParameter(player.Effect(), feed.Take<std::int16_t>(), feed.Take<float>());
            (void)player.Effect()->getParameter(player.Effect(), feed.Take<std::int32_t>());
            break;
        }
    }
    player.Dispatch(PlugOp::MainsChanged, 0, 1);
    player.CheckHealth();
    return 0;
}
