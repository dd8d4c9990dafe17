#include "effects/DumpExpand.h"
#include "effects/EnvFollower.h"
#include "effects/Equalizer.h"
#include "effects/FilterUnit.h"
#include "effects/Saturator.h"

#include "core/DenormalGuard.h"
#include "core/RandomGenerator.h"

#include <benchmark/benchmark.h>

// The filtering units of the chain over blocks of 256 frames of noise; items are frames. In a sweep every
// frame of every filter has a design of its own.

namespace {

using namespace Grimworks;

constexpr int kFrames = 256;

/// Runs `process` over fresh copies of the same noise, and `touch` before each of them.
template <class Touch, class Process>
void Measure(benchmark::State& state, Touch touch, Process process) {
    StereoBuffer source(kFrames);
    StereoBuffer work(kFrames);
    RandomGenerator random(1);
    for (int i = 0; i < kFrames; ++i) {
        source.Left()[i] = random.Next() / 16384.0 - 1.0;
        source.Right()[i] = random.Next() / 16384.0 - 1.0;
    }
    const DenormalGuard guard;
    double knob = 0.4;
    for (auto _ : state) {
        knob = 1.0 - knob;
        touch(knob);
        work.CopyFrom(source.View(), kFrames);
        process(work.View());
        benchmark::DoNotOptimize(work.Left());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kFrames);
}

void Untouched(double /*knob*/) {}

/// Arguments: number of filter 2, whether cutoff and resonance move.
void FilterUnitBlock(benchmark::State& state) {
    RandomGenerator random;
    const DistortionDataProvider curves(random);
    FilterUnit unit;
    unit.Initialise(curves);
    unit.SetDrive(0.5);
    unit.SetFilter2Type(static_cast<double>(state.range(0)) / 5.0);
    unit.SetBalance(0.5);
    const bool sweep = state.range(1) != 0;
    Measure(
        state,
        [&](double knob) {
            if (!sweep) return;
            unit.SetCutoff(knob);
            unit.SetResonance(knob);
        },
        [&](StereoView io) { unit.Process(io, kFrames); });
}

/// Argument: whether the three knobs move.
void EqualizerBlock(benchmark::State& state) {
    Equalizer unit;
    const bool sweep = state.range(0) != 0;
    Measure(
        state,
        [&](double knob) {
            if (!sweep) return;
            unit.SetBass(knob);
            unit.SetMid(knob);
            unit.SetHigh(knob);
        },
        [&](StereoView io) { unit.Process(io, kFrames); });
}

/// Argument: whether the knob moves.
void DumpExpandBlock(benchmark::State& state) {
    DumpExpand unit;
    const bool sweep = state.range(0) != 0;
    Measure(
        state,
        [&](double knob) {
            if (sweep) unit.SetValue(knob);
        },
        [&](StereoView io) { unit.Process(io, kFrames); });
}

void SaturatorBlock(benchmark::State& state) {
    RandomGenerator random;
    const DistortionDataProvider curves(random);
    Saturator unit;
    unit.Initialise(curves, 0);
    unit.SetAmount(0.8);
    Measure(state, Untouched, [&](StereoView io) { unit.Process(io, kFrames); });
}

void EnvFollowerBlock(benchmark::State& state) {
    EnvFollower unit;
    Measure(state, Untouched, [&](StereoView io) { unit.Process(io, kFrames); });
}

} // namespace

BENCHMARK(FilterUnitBlock)->Name("FilterUnit")->ArgsProduct({{0, 3, 4}, {0, 1}});
BENCHMARK(EqualizerBlock)->Name("Equalizer")->Arg(0)->Arg(1);
BENCHMARK(DumpExpandBlock)->Name("DumpExpand")->Arg(0)->Arg(1);
BENCHMARK(SaturatorBlock)->Name("Saturator");
BENCHMARK(EnvFollowerBlock)->Name("EnvFollower");
