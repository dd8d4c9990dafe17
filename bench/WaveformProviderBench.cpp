#include "voice/WaveformProvider.h"

#include "voice/WaveFft.h"
#include "voice/WaveSetBuilder.h"

#include <benchmark/benchmark.h>

#include <array>
#include <memory>
#include <string>

namespace {

using namespace Grimworks;

/// All waves of one instrument, without user files: the largest part of its start-up.
void WaveformProviderStartUp(benchmark::State& state) {
    for (auto _ : state) {
        RandomGenerator random;
        WaveformProvider waves(random, "/no/such/folder");
        waves.GenerateWaves();
        waves.BuildSets();
        benchmark::DoNotOptimize(waves.Set(0).count);
    }
}
BENCHMARK(WaveformProviderStartUp)->Unit(benchmark::kMillisecond);

void WaveformProviderGenerateWaves(benchmark::State& state) {
    RandomGenerator random;
    WaveformProvider waves(random, "/no/such/folder");
    for (auto _ : state)
        waves.GenerateWaves();
}
BENCHMARK(WaveformProviderGenerateWaves)->Unit(benchmark::kMillisecond);

/// One ladder of a full spectrum: twelve transforms.
void WaveSetBuild(benchmark::State& state) {
    RandomGenerator random;
    const auto cycle = std::make_unique<WaveCycle>();
    for (double& v : *cycle)
        v = random.Next() - 16384.0;
    WaveTableSet set;
    WaveSetBuilder builder;
    for (auto _ : state)
        builder.Build(set, *cycle);
}
BENCHMARK(WaveSetBuild)->Unit(benchmark::kMicrosecond);

void WaveFftTransform(benchmark::State& state) {
    const auto re = std::make_unique<WaveCycle>();
    const auto im = std::make_unique<WaveCycle>();
    re->fill(0.0);
    im->fill(0.0);
    (*im)[1] = 1e-300; // stays finite through many rounds
    const WaveFft fft;
    for (auto _ : state) {
        fft.Transform(*re, *im);
        (*im)[1] = 1e-300;
        re->fill(0.0);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(WaveFftTransform)->Unit(benchmark::kMicrosecond);

void WavePreview(benchmark::State& state) {
    static RandomGenerator random;
    static WaveformProvider waves(random, "/no/such/folder");
    if (waves.Set(0).count == 0) {
        waves.GenerateWaves();
        waves.BuildSets();
    }
    RandomGenerator editorRandom;
    std::array<double, kWavePreviewPoints> points{};
    const double value = static_cast<double>(state.range(0)) / 40.0;
    for (auto _ : state) {
        waves.PreviewWave(value, 0.1, points, editorRandom);
        benchmark::DoNotOptimize(points);
    }
}
BENCHMARK(WavePreview)->Arg(1)->Arg(8)->Arg(20)->Unit(benchmark::kMicrosecond);

} // namespace
