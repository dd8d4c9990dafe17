#include "voice/OscFilterUnit.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>

// The filters of one voice: three units with two filters each, on a saw. Types as in the parameter: 0 and 1
// the four-pole low and high pass, 3 and 4 the Butterworth high and low pass.
namespace Grimworks {
namespace {

constexpr int kFrames = 64;

/// The filters and signals of one voice for a block. `moving` sweeps the cutoff, as an envelope does.
struct Rig {
    explicit Rig(const benchmark::State& state) {
        for (OscFilterUnit& unit : units) {
            unit.SetLeftType(static_cast<double>(state.range(0)) / 4.0);
            unit.SetRightType(static_cast<double>(state.range(1)) / 4.0);
        }
        const bool moving = state.range(2) != 0;
        for (std::size_t i = 0; i < kFrames; ++i) {
            saw[i] = 2.0 * std::fmod(static_cast<double>(i) * 0.017 + 0.003, 1.0) - 1.0;
            cutoffs[i] = moving ? 0.3 + 0.002 * static_cast<double>(i) : 0.3;
        }
    }

    std::array<OscFilterUnit, 3> units;
    std::array<double, kFrames> saw{};
    std::array<double, kFrames> cutoffs{};
};

void OscFilterTick(benchmark::State& state) {
    Rig rig(state);
    for (auto _ : state) {
        double sum = 0.0;
        for (std::size_t i = 0; i < kFrames; ++i) {
            for (OscFilterUnit& unit : rig.units)
                sum += unit.Tick(rig.saw[i], rig.cutoffs[i], 0.3);
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * kFrames);
}

void OscFilterRun(benchmark::State& state) {
    Rig rig(state);
    for (auto _ : state) {
        for (OscFilterUnit& unit : rig.units) {
            std::array<double, kFrames> samples = rig.saw;
            unit.Process(samples.data(), rig.cutoffs.data(), 0.3, kFrames);
            benchmark::DoNotOptimize(samples);
        }
    }
    state.SetItemsProcessed(state.iterations() * kFrames);
}

void Types(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"left", "right", "moving"});
    for (const int moving : {0, 1}) {
        for (const auto& [left, right] : {std::pair{0, 0}, std::pair{0, 4}, std::pair{3, 4}})
            bench->Args({left, right, moving});
    }
}
BENCHMARK(OscFilterTick)->Apply(Types);
BENCHMARK(OscFilterRun)->Apply(Types);

} // namespace
} // namespace Grimworks
