#include "effects/DistortionStage.h"
#include "effects/OutputLimiter.h"
#include "effects/Phaser.h"
#include "effects/RingModulator.h"
#include "effects/TempoDelay.h"

#include "core/DenormalGuard.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <vector>

// Every unit over blocks of 256 frames of loud noise. Items are frames: items per second over
// 44100 is how many times faster than real time a unit is.

namespace {

using namespace Grimworks;

constexpr int kFrames = 256;

/// A block of noise, copied afresh for each round so that no unit works on its own output.
class NoiseBlock {
public:
    NoiseBlock() : source(kFrames), work(kFrames), modulation(kFrames) {
        RandomGenerator random(1);
        for (int i = 0; i < kFrames; ++i) {
            source.Left()[i] = random.Next() / 16384.0 - 1.0;
            source.Right()[i] = random.Next() / 16384.0 - 1.0;
            modulation[static_cast<std::size_t>(i)] = std::fabs(source.Left()[i]);
        }
    }

    StereoView Next() {
        work.CopyFrom(source.View(), kFrames);
        return work.View();
    }

    [[nodiscard]] const double* Modulation() const { return modulation.data(); }

private:
    StereoBuffer source;
    StereoBuffer work;
    std::vector<double> modulation;
};

/// Times process(view, modulation).
template <class Process>
void Measure(benchmark::State& state, Process process) {
    NoiseBlock noise;
    const DenormalGuard guard;
    for (auto round : state) {
        const StereoView view = noise.Next();
        process(view, noise.Modulation());
        benchmark::DoNotOptimize(view.left[0]);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kFrames);
}

const DistortionDataProvider& Provider() {
    static const DistortionDataProvider provider = [] {
        RandomGenerator random;
        return DistortionDataProvider(random);
    }();
    return provider;
}

void SmpRateReduction(benchmark::State& state) {
    SmpRateConverter converter;
    converter.SetReduction(0.7);
    Measure(state, [&](StereoView io, const double*) { converter.Process(io, kFrames); });
}
BENCHMARK(SmpRateReduction);

void BitCrush(benchmark::State& state) {
    BitCrusher crusher;
    crusher.SetQuantization(0.4);
    Measure(state, [&](StereoView io, const double*) { crusher.Process(io, kFrames); });
}
BENCHMARK(BitCrush);

void Gate(benchmark::State& state) {
    GateCrack gate;
    gate.SetGate(0.5);
    Measure(state, [&](StereoView io, const double*) { gate.Process(io, kFrames); });
}
BENCHMARK(Gate);

/// First argument the interpolation, second the mode.
void Waveshaper(benchmark::State& state) {
    Distortion distortion(Provider());
    distortion.SetType(24.0 / 41.0);
    distortion.SetAmount(0.8);
    distortion.SetInterpolation(static_cast<double>(state.range(0)) / 3.0);
    distortion.SetMode(static_cast<double>(state.range(1)) / 2.0);
    Measure(state,
            [&](StereoView io, const double* modulation) { distortion.Process(io, kFrames, modulation); });
}
BENCHMARK(Waveshaper)->Args({0, 1})->Args({1, 1})->Args({2, 1})->Args({3, 1})->Args({3, 2});

void Shaper(benchmark::State& state) {
    DynShaper shaper;
    shaper.SetAmount(0.8);
    shaper.SetMode(1.0);
    Measure(state, [&](StereoView io, const double* modulation) { shaper.Process(io, kFrames, modulation); });
}
BENCHMARK(Shaper);

void WholeDistortionStage(benchmark::State& state) {
    DistortionStage stage(Provider());
    stage.SetAmount(0.8);
    stage.SetType(24.0 / 41.0);
    stage.SetMode(1.0);
    stage.SetQuantization(0.4);
    stage.SetSampleRateReduction(0.7);
    stage.SetGate(0.3);
    stage.SetShaperAmount(0.8);
    Measure(state, [&](StereoView io, const double* modulation) {
        stage.Process(io, kFrames, modulation, modulation);
    });
}
BENCHMARK(WholeDistortionStage);

void IdleDistortionStage(benchmark::State& state) {
    DistortionStage stage(Provider());
    Measure(state, [&](StereoView io, const double*) { stage.Process(io, kFrames, nullptr, nullptr); });
}
BENCHMARK(IdleDistortionStage);

/// Argument: the waveform number.
void RingModulation(benchmark::State& state) {
    RingModulator ring;
    ring.SetAmount(0.8);
    ring.SetFrequency(0.3);
    ring.SetWaveform(static_cast<double>(state.range(0)) / 4.0);
    Measure(state, [&](StereoView io, const double*) { ring.Process(io, kFrames); });
}
BENCHMARK(RingModulation)->DenseRange(0, 4);

void PhaserSweep(benchmark::State& state) {
    Phaser phaser;
    phaser.SetDepth(0.8);
    Measure(state, [&](StereoView io, const double*) { phaser.Process(io, kFrames); });
}
BENCHMARK(PhaserSweep);

void BeatDelay(benchmark::State& state) {
    TempoDelay delay;
    delay.SetSampleRate(kDefaultSampleRate);
    delay.SetAmount(0.5);
    delay.SetFeedback(0.6);
    Measure(state, [&](StereoView io, const double*) { delay.Process(io, kFrames); });
}
BENCHMARK(BeatDelay);

void Limiter(benchmark::State& state) {
    OutputLimiter limiter;
    Measure(state, [&](StereoView io, const double*) { limiter.Process(io, kFrames); });
}
BENCHMARK(Limiter);

/// Start-up and editor work.
void DrawAllCurves(benchmark::State& state) {
    for (auto round : state) {
        RandomGenerator random;
        const DistortionDataProvider provider(random);
        benchmark::DoNotOptimize(provider.GetTable(0).data());
    }
}
BENCHMARK(DrawAllCurves)->Unit(benchmark::kMicrosecond);

void CurvePreview(benchmark::State& state) {
    Distortion distortion(Provider());
    distortion.SetAmount(0.8);
    std::array<double, kCurvePreviewPoints> curve{};
    std::array<double, kSignalPreviewPoints> signal{};
    for (auto round : state) {
        distortion.RenderPreview(curve, signal);
        benchmark::DoNotOptimize(signal.data());
    }
}
BENCHMARK(CurvePreview)->Unit(benchmark::kMicrosecond);

} // namespace
