// A host hands over bytes as program or bank state: as they are, or written over a state that was saved
// before.
#include "tests/fuzz/ByteFeed.h"
#include "tests/fuzz/Check.h"
#include "tests/fuzz/Player.h"

#include <algorithm>
#include <vector>

using namespace Grimworks;
using namespace Grimworks::Fuzz;

namespace {

constexpr std::int32_t kBank = 0;
constexpr std::int32_t kProgram = 1;

std::vector<std::uint8_t> Save(Player& player, std::int32_t kind) {
    void* state = nullptr;
    const std::intptr_t length = player.Dispatch(PlugOp::GetChunk, kind, 0, &state);
    Check(length > 0 && state != nullptr, "the state can be saved");
    const auto* bytes = static_cast<const std::uint8_t*>(state);
    return {bytes, bytes + length};
}

std::vector<std::uint8_t> MakeChunk(Player& player, std::int32_t kind, ByteFeed& feed, bool overSaved) {
    std::vector<std::uint8_t> chunk;
    std::size_t at = 0;
    if (overSaved) {
        chunk = Save(player, kind);
        at = feed.Take<std::uint32_t>() % chunk.size();
    }
    const auto rest = feed.TakeSome(chunk.size() + 65536);
    chunk.resize(std::max(chunk.size(), at + rest.size()));
    std::copy(rest.begin(), rest.end(), chunk.begin() + static_cast<std::ptrdiff_t>(at));
    return chunk;
}

} // namespace

int LLVMFuzzerTestOneInput(const unsigned char* data, unsigned long size) {
    Player& player = SharedPlayer();
    ByteFeed feed(data, size);
    const auto choice = feed.Take<std::uint8_t>();
    // A whole bank passes every preset through the engine, so it is tried now and then only.
    const std::int32_t kind = choice % 8 == 0 ? kBank : kProgram;
    std::vector<std::uint8_t> chunk = MakeChunk(player, kind, feed, choice >= 64);
    player.Dispatch(PlugOp::SetChunk, kind, static_cast<std::intptr_t>(chunk.size()), chunk.data());
    player.CheckHealth();
    (void)Save(player, kProgram);
    return 0;
}
