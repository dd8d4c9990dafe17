#include "voice/WaveformProvider.h"

#include "core/Maths.h"
#include "core/NumberText.h"
#include "voice/Noise.h"
#include "voice/StoredWaves.h"
#include "voice/WaveGenerator.h"
#include "voice/WaveSetBuilder.h"
#include "voice/WaveformSelection.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace Grimworks {
namespace {

constexpr int kDumpDecimals = 10;

/// The live wave of a selection, running at this many samples a cycle.
PolyBLEP LiveWave(const WaveformSelection& selection, int samplesPerCycle) {
    PolyBLEP blep;
    blep.waveform = selection.waveform;
    blep.pulseWidth = selection.pulseWidth;
    blep.offset = selection.offset;
    blep.sampleRate = samplesPerCycle;
    blep.phaseInc = 1.0 / samplesPerCycle;
    return blep;
}

/// Phase of a display point, wrapped into 0 up to 1 from both sides.
double DisplayPhase(int point, double phase) {
    double wrapped = Fraction(static_cast<double>(point) / kWavePreviewPoints + phase);
    if (wrapped < 0.0) wrapped += 1.0;
    return wrapped >= 0.0 && wrapped < 1.0 ? wrapped : 0.0;
}

} // namespace

WaveformProvider::WaveformProvider(RandomGenerator& generator, std::string base)
    : random(generator), baseFolder(std::move(base)), cycles(kWaveforms) {}

void WaveformProvider::GenerateWaves() {
    const std::span<WaveCycle, kWaveforms> all(cycles);
    for (int index = 0; index < kWaveforms; ++index) {
        const std::span<const double> stored = StoredWave(index);
        std::copy(stored.begin(), stored.end(), all[static_cast<std::size_t>(index)].begin());
    }
    WriteGeneratedWaves(random, all);
    LoadUserWaves(baseFolder, all);
    NormaliseGeneratedWaves(all);
}

void WaveformProvider::BuildSets() {
    WaveSetBuilder builder;
    for (std::size_t i = 0; i < cycles.size(); ++i)
        builder.Build(sets[i], cycles[i]);
}

void WaveformProvider::RebuildSet(int index, ConstWaveSpan cycle) {
    if (index < 0 || index >= kWaveforms) return;
    WaveCycle finite;
    std::transform(cycle.begin(), cycle.end(), finite.begin(),
                   [](double v) { return std::isfinite(v) ? v : 0.0; });
    WaveSetBuilder().Build(sets[static_cast<std::size_t>(index)], finite);
}

const WaveTableSet& WaveformProvider::Set(int index) const {
    return index >= 0 && index < kWaveforms ? sets[static_cast<std::size_t>(index)] : silence;
}

/// The richest level without interpolation; the phase is 0 up to 1.
double WaveformProvider::FirstLevelSample(int index, double phase) const {
    const WaveTableSet& set = Set(index);
    if (set.count == 0) return 0.0;
    return (*set.levels[0].samples)[static_cast<std::size_t>(kWaveSize * phase)];
}

void WaveformProvider::PreviewWave(double value, double phase, std::span<double, kWavePreviewPoints> points,
                                   RandomGenerator& editorRandom) const {
    const int index = WaveformIndex(value);
    const WaveformSelection selection = SelectWaveform(index);
    PolyBLEP live = LiveWave(selection, kWavePreviewPoints);
    for (int n = 0; n < kWavePreviewPoints; ++n) {
        double& point = points[static_cast<std::size_t>(n)];
        if (selection.noiseKind != NoiseKind::None) {
            point = WhiteNoise(editorRandom);
            if (selection.noiseKind == NoiseKind::Pink) point *= 0.5;
            continue;
        }
        live.phase = DisplayPhase(n, phase);
        point = selection.useBlep ? live.Get() + live.offset : FirstLevelSample(index, live.phase);
    }
}

std::string WaveformProvider::WaveDumpText(double value, RandomGenerator& editorRandom) const {
    const int index = WaveformIndex(value);
    const WaveformSelection selection = SelectWaveform(index);
    PolyBLEP live = LiveWave(selection, kWaveSize);
    std::string text;
    text.reserve(std::size_t{16} * kWaveSize);
    for (int i = 0; i < kWaveSize; ++i) {
        if (i > 0) text += ',';
        AppendFixed(text, selection.useBlep ? live.Next() : DumpValue(index, i, editorRandom), kDumpDecimals);
    }
    return text;
}

double WaveformProvider::DumpValue(int index, int sample, RandomGenerator& editorRandom) const {
    if (index == Waveform::WhiteNoize) return (editorRandom.Next() % 17000 - 8500) / 8500.0;
    return FirstLevelSample(index, static_cast<double>(sample) / kWaveSize);
}

} // namespace Grimworks
