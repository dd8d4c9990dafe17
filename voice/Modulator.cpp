#include "voice/Modulator.h"

#include "core/Choice.h"

#include <algorithm>

namespace Grimworks {

const LfoWave& LfoWaveOf(int index) {
    static constexpr LfoWave kUnknown{"Unknown", "Unknown", 1.0};
    if (index < 0 || index >= static_cast<int>(kLfoWaves.size())) return kUnknown;
    return kLfoWaves[static_cast<std::size_t>(index)];
}

void Modulator::SetSampleRate(double newRate) {
    if (!(newRate > 0.0)) return;
    AudioProcessingUnit::SetSampleRate(newRate);
    frequency = rate * maxRate;
    phaseInc = frequency / newRate;
}

void Modulator::SetRate(double value) {
    if (std::isnan(value)) return;
    rate = value;
    frequency = rate * maxRate;
    phaseInc = frequency / sampleRate;
}

void Modulator::SetFrequency(double hz) {
    if (std::isnan(hz)) return;
    frequency = hz;
    rate = frequency / maxRate;
    phaseInc = frequency / sampleRate;
}

void Modulator::SetMode(double value) {
    mode = ClampedChoice(value, static_cast<int>(kLfoWaves.size()) - 1);
    polarity = LfoWaveOf(mode).polarity;
}

void Modulator::Render(double* values, int frames) {
    if (frames <= 0) return;
    if (IsOff()) {
        std::fill_n(values, frames, 0.0);
        return;
    }
    double runningPhase = phase;
    for (int i = 0; i < frames; ++i) {
        values[i] = runningPhase;
        runningPhase = WrappedPhase(runningPhase + phaseInc);
    }
    phase = runningPhase;
    for (int i = 0; i < frames; ++i)
        values[i] = SineOfPhase(values[i]) * amplitude * polarity;
    for (int i = 0; i < frames; ++i)
        values[i] = Shaped(values[i]);
    output = values[frames - 1];
}

} // namespace Grimworks
