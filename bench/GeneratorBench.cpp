#include "voice/FmModulator.h"
#include "voice/MultiSampler.h"
#include "voice/Noise.h"
#include "voice/WaveTableReader.h"
#include "voice/WaveformSelection.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <span>
#include <vector>

// Nanoseconds a sample of each source of a voice, at a note of 110 Hz.
namespace Grimworks {
namespace {

constexpr double kIncrement = 110.0 / 44100.0;

void LiveWave(benchmark::State& state) {
    const WaveformSelection selection = SelectWaveform(static_cast<int>(state.range(0)));
    PolyBLEP blep;
    blep.waveform = selection.waveform;
    blep.pulseWidth = selection.pulseWidth;
    blep.offset = selection.offset;
    blep.phaseInc = kIncrement;
    double sum = 0.0;
    for (auto _ : state)
        sum += blep.Next();
    benchmark::DoNotOptimize(sum);
}
BENCHMARK(LiveWave)->ArgName("waveform")->Arg(0)->Arg(1)->Arg(2)->Arg(3)->Arg(5);

void TableWave(benchmark::State& state) {
    WaveTableSet set;
    set.count = 11;
    for (int i = 0; i < set.count; ++i) {
        WaveTableLevel& level = set.levels[static_cast<std::size_t>(i)];
        level.topFrequency = 2.0 / 3.0 / std::pow(2.0, 11 - i);
        level.samples = std::make_unique<std::array<double, kWaveSize>>();
        for (std::size_t k = 0; k < kWaveSize; ++k)
            (*level.samples)[k] = std::sin(static_cast<double>(k) * 2.0 * kPi / kWaveSize);
    }
    WaveTableReader reader;
    reader.set = &set;
    reader.phaseInc = static_cast<double>(state.range(0)) / 44100.0;
    double sum = 0.0;
    for (auto _ : state)
        sum += reader.Tick();
    benchmark::DoNotOptimize(sum);
}
BENCHMARK(TableWave)->ArgName("Hz")->Arg(55)->Arg(880)->Arg(7040);

void White(benchmark::State& state) {
    RandomGenerator random(1800);
    double sum = 0.0;
    for (auto _ : state)
        sum += WhiteNoise(random);
    benchmark::DoNotOptimize(sum);
}
BENCHMARK(White);

void Pink(benchmark::State& state) {
    RandomGenerator random(1800);
    PinkNoise pink;
    double sum = 0.0;
    for (auto _ : state)
        sum += pink.Tick(random);
    benchmark::DoNotOptimize(sum);
}
BENCHMARK(Pink);

void Click(benchmark::State& state) {
    const std::vector<double> data(8224, 0.5);
    const std::vector<std::span<const double>> spans(9, data);
    const MultiSampler clicks = MakeClickSamples(spans);
    double sum = 0.0;
    double count = 0.0;
    for (auto _ : state) {
        sum += clicks.Value(count / 44100.0, 0.37);
        count = count < 8000.0 ? count + 1.0 : 0.0;
    }
    benchmark::DoNotOptimize(sum);
}
BENCHMARK(Click);

void LfoTick(benchmark::State& state) {
    Modulator lfo;
    lfo.SetRate(0.3);
    lfo.SetMode(static_cast<double>(state.range(0)) / 4.0);
    double sum = 0.0;
    for (auto _ : state)
        sum += lfo.Tick();
    benchmark::DoNotOptimize(sum);
}
BENCHMARK(LfoTick)->ArgName("mode")->DenseRange(0, 4, 2);

/// items_per_second is samples a second.
void LfoRender(benchmark::State& state) {
    Modulator lfo;
    lfo.SetRate(0.3);
    lfo.SetMode(static_cast<double>(state.range(0)) / 4.0);
    std::vector<double> values(64);
    for (auto _ : state) {
        lfo.Render(values.data(), 64);
        benchmark::DoNotOptimize(values.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * 64);
}
BENCHMARK(LfoRender)->ArgName("mode")->DenseRange(0, 4, 2);

} // namespace
} // namespace Grimworks
