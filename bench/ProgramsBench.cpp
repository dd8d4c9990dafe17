#include "patches/FactoryBank.h"
#include "plugin/ThudForge.h"

#include <benchmark/benchmark.h>

namespace Grimworks {
namespace {

/// One program after the other, as a host's set-program call takes them: under 2 ms each.
void PresetChange(benchmark::State& state) {
    ThudForge plug(nullptr);
    AEffect* effect = plug.Effect();
    int program = 0;
    for (auto _ : state) {
        program = (program + 1) % kPrograms;
        benchmark::DoNotOptimize(effect->dispatcher(effect, PlugOp::SetProgram, 0, program, nullptr, 0.0F));
    }
}
BENCHMARK(PresetChange)->Unit(benchmark::kMillisecond);

/// A bank chunk, as a host's project brings it: each of the 128 states passes through the engine. Under
/// 300 ms.
void BankChunkLoad(benchmark::State& state) {
    ThudForge plug(nullptr);
    AEffect* effect = plug.Effect();
    void* data = nullptr;
    const std::intptr_t size = effect->dispatcher(effect, PlugOp::GetChunk, 0, 0, &data, 0.0F);
    const auto* bytes = static_cast<const char*>(data);
    std::vector<char> chunk(bytes, bytes + size);
    for (auto _ : state)
        benchmark::DoNotOptimize(effect->dispatcher(effect, PlugOp::SetChunk, 0, size, chunk.data(), 0.0F));
}
BENCHMARK(BankChunkLoad)->Unit(benchmark::kMillisecond);

/// The factory programs from their recipes, part of the construction of every instance.
void FactoryBank(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(MakeFactoryBank());
}
BENCHMARK(FactoryBank)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace Grimworks
