// The first pass of a voice: pitch and raw sources.

#include "core/Limits.h"
#include "core/Phase.h"
#include "core/Trigonometry.h"
#include "voice/MultiSampler.h"
#include "voice/Note.h"
#include "voice/PitchEnvelope.h"

#include <algorithm>

namespace Grimworks {

namespace {

constexpr double kFmDepth = 0.7135571323115437; // keeps the factor above 0, so that no phase runs backwards

/// Ratio of an LFO's swing: up to a semitone each way at full amount.
double LfoRatio(double m) {
    return m >= 0.0 ? 1.0 + m * kSemitoneStep : 1.0 / (1.0 - m * kSemitoneStep);
}

/// Phases of a generator over a stretch; each sample's increment takes effect after the sample.
double WritePhases(double phase, double increment, const double* increments, int count, double* phases) {
    for (int i = 0; i < count; ++i) {
        phases[i] = phase;
        phase = WrappedPhase(phase + increment);
        increment = increments[i];
    }
    return phase;
}

/// A live wave. A sine needs no look at the increment, so its samples are worked out several at once.
void ReadGenerator(PolyBLEP& generator, const double* increments, int count, double* samples) {
    if (generator.waveform == PolyBLEP::kSine) {
        generator.phase = WritePhases(generator.phase, generator.phaseInc, increments, count, samples);
        for (int i = 0; i < count; ++i)
            samples[i] = SineOfPhase(samples[i]) * generator.amplitude + generator.offset;
        return;
    }
    PolyBLEP running = generator;
    for (int i = 0; i < count; ++i) {
        samples[i] = running.Next();
        running.phaseInc = increments[i];
    }
    generator.phase = running.phase;
}

void ReadGenerator(WaveTableReader& generator, const double* increments, int count, double* samples) {
    WaveTableReader running = generator;
    for (int i = 0; i < count; ++i) {
        samples[i] = running.Tick();
        running.phaseInc = increments[i];
    }
    generator.phase = running.phase;
}

void SetIncrements(VoiceOscillator& oscillator, std::size_t generator, double increment) {
    oscillator.blep[generator].phaseInc = increment;
    oscillator.wave[generator].phaseInc = increment;
}

} // namespace

/// What the pitch is made of, one value per sample of a stretch.
struct Note::PitchStretch {
    Stretch seconds; ///< note time
    Stretch sweep;   ///< pitch envelope, then that times global transpose and pitch bend
    Stretch factor;  ///< the sweep times arpeggio and frequency modulation
};

std::size_t Note::WriteIndex(int ahead) const {
    int position = blockPos + ahead;
    if (position >= blockSize) position -= blockSize;
    const int index = position + startOffset;
    return index < blockSize ? static_cast<std::size_t>(index) : 0;
}

void Note::Write(std::vector<double>& buffer, const double* samples, int count) const {
    if (blockPos + startOffset + count <= blockSize) {
        std::copy_n(samples, count, buffer.begin() + blockPos + startOffset);
        return;
    }
    for (int i = 0; i < count; ++i)
        buffer[WriteIndex(i)] = samples[i];
}

bool Note::HasNoise() const {
    if (!ready || bypass) return false;
    for (int i = 0; i < kOscillators; ++i) {
        if (Oscillator(i).noiseKind != NoiseKind::None && Sounds(i)) return true;
    }
    return false;
}

void Note::DrawNoise(int ahead) {
    if (!ready || bypass) return;
    for (int i = 0; i < kOscillators; ++i) {
        VoiceOscillator& oscillator = Oscillator(i);
        if (oscillator.noiseKind == NoiseKind::None || !Sounds(i)) continue;
        oscillator.buffer[WriteIndex(ahead)] = oscillator.noiseKind == NoiseKind::White
                                                   ? WhiteNoise(*context.random)
                                                   : oscillator.pink.Tick(*context.random);
    }
}

void Note::Tick() {
    if (!ready || bypass) return;
    DrawNoise(0);
    RunStretch(context.pitchBendFactor, 1);
}

void Note::Run(std::span<const double> bend) {
    if (!ready || bypass) return;
    while (!bend.empty()) {
        const int room = std::min(kVoiceStretch, blockSize - blockPos);
        const int count = std::min(static_cast<int>(bend.size()), room);
        RunStretch(bend.data(), count);
        bend = bend.subspan(static_cast<std::size_t>(count));
    }
}

void Note::RunStretch(const double* bend, int count) {
    PitchStretch pitch;
    FillSweep(pitch, count);
    FillPitch(pitch, bend, count);
    for (int i = 0; i < kOscillators; ++i)
        RunOscillator(i, pitch, count);
    RunSubOscillator(pitch, count);
    if (Value(Param::BassLayerClick) > 0.0) RunClick(pitch, count);
    sampleCount += static_cast<std::uint32_t>(count);
    blockPos += count;
    if (blockPos >= blockSize) blockPos = 0;
}

void Note::StartPitch() {
    PitchStretch pitch;
    pitch.sweep[0] = 1.0;
    FillPitch(pitch, context.pitchBendFactor, 1);
    for (int i = 0; i < kOscillators; ++i)
        TuneOscillator(i, BaseFrequency(i) * pitch.factor[0]);
    Stretch phases;
    AdvanceSubPhase(pitch, 1, phases);
}

void Note::FillSweep(PitchStretch& pitch, int count) const {
    const double start = sampleCount;
    for (int i = 0; i < count; ++i)
        pitch.seconds[static_cast<std::size_t>(i)] = (start + i) / sampleRate;
    const PitchEnvelope& envelope = *context.pitchEnvelope;
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i)
        pitch.sweep[i] = envelope.Factor(pitch.seconds[i]);
}

void Note::FillPitch(PitchStretch& pitch, const double* bend, int count) {
    const auto size = static_cast<std::size_t>(count);
    const double transpose = context.values->transposeRatio;
    Stretch modulator;
    fm.Render(modulator.data(), count);
    for (std::size_t i = 0; i < size; ++i)
        pitch.sweep[i] = pitch.sweep[i] * transpose * bend[i];
    if (arpeggiator.IsActive()) {
        for (std::size_t i = 0; i < size; ++i)
            pitch.factor[i] = pitch.sweep[i] * arpeggiator.Step();
    } else {
        std::copy_n(pitch.sweep.begin(), size, pitch.factor.begin());
    }
    for (std::size_t i = 0; i < size; ++i)
        pitch.factor[i] = pitch.factor[i] * (1.0 + modulator[i] * kFmDepth);
}

double Note::BaseFrequency(int index) const {
    const VoiceOscillator& oscillator = Oscillator(index);
    const double m = Value(index, OscParam::LfoToTune) * oscillator.lfo.Output();
    return frequency * oscillator.pitch * oscillator.tune * LfoRatio(m);
}

void Note::TuneOscillator(int index, double hz) {
    SetIncrements(Oscillator(index), 0, hz / sampleRate);
    SetIncrements(Oscillator(index), 1, hz / DetuneDivisor() / sampleRate);
}

void Note::RunOscillator(int index, const PitchStretch& pitch, int count) {
    const double base = BaseFrequency(index);
    const VoiceOscillator& oscillator = Oscillator(index);
    if (oscillator.noiseKind == NoiseKind::None && Sounds(index)) {
        Stretch samples;
        if (oscillator.useBlep) {
            ReadUnison(Oscillator(index).blep, pitch, base, count, samples);
        } else {
            ReadUnison(Oscillator(index).wave, pitch, base, count, samples);
        }
        Write(Oscillator(index).buffer, samples.data(), count);
    }
    TuneOscillator(index, base * pitch.factor[static_cast<std::size_t>(count - 1)]);
}

template <class Generators>
void Note::ReadUnison(Generators& generators, const PitchStretch& pitch, double base, int count,
                      Stretch& samples) const {
    const auto size = static_cast<std::size_t>(count);
    Stretch increments{};
    for (std::size_t i = 0; i < size; ++i)
        increments[i] = base * pitch.factor[i] / sampleRate;
    ReadGenerator(generators[0], increments.data(), count, samples.data());
    if (unisonVoices < 2) return;

    Stretch other;
    const double divisor = DetuneDivisor();
    for (std::size_t i = 0; i < size; ++i)
        increments[i] = base * pitch.factor[i] / divisor / sampleRate;
    ReadGenerator(generators[1], increments.data(), count, other.data());
    for (std::size_t i = 0; i < size; ++i)
        samples[i] = (samples[i] + other[i]) / 2.0;
}

void Note::AdvanceSubPhase(const PitchStretch& pitch, int count, Stretch& phases) {
    const bool modulated = Value(Param::BassLayerToFm) != 0.0;
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
        phases[i] = subPhase;
        const double increment = modulated ? basePhaseInc * pitch.factor[i] : pitch.sweep[i] * basePhaseInc;
        subPhase = WrappedPhase(subPhase + increment);
    }
}

void Note::RunSubOscillator(const PitchStretch& pitch, int count) {
    Stretch samples;
    AdvanceSubPhase(pitch, count, samples);
    if (!(Value(Param::BassLayerAmount) > 0.0)) return;
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i)
        samples[i] = SineOfPhase(samples[i]);
    Write(subBuffer, samples.data(), count);
}

void Note::RunClick(const PitchStretch& pitch, int count) {
    Stretch samples;
    const double position = Value(Param::BassLayerClick);
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i)
        samples[i] = context.clicks->Value(pitch.seconds[i], position);
    Write(clickBuffer, samples.data(), count);
}

} // namespace Grimworks
