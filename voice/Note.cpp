#include "voice/Note.h"

#include "core/Choice.h"
#include "core/Maths.h"
#include "voice/WaveformProvider.h"

#include <algorithm>
#include <cmath>

namespace Grimworks {

namespace {

/// Phase at which a note starts: the knob's centre is phase 0, both of its ends are phase 0.5.
double StartPhase(double knob) {
    const double d = knob - 0.5;
    const double phase = d >= 0.0 ? Fraction(d) : 1.0 - std::trunc(d) + d;
    return phase >= 1.0 ? 0.0 : phase; // just below the centre the sum rounds up to a whole cycle
}

bool IsOscillator(int oscillator) {
    return oscillator >= 0 && oscillator < kOscillators;
}

} // namespace

Note::Note() {
    for (VoiceOscillator& oscillator : oscillators) {
        for (PolyBLEP& generator : oscillator.blep)
            generator.waveform = PolyBLEP::kSaw;
    }
    SetBlockSize(kDefaultBlockSize);
}

void Note::SetContext(const VoiceContext& newContext) {
    context = newContext;
    ready = context.IsComplete();
}

void Note::SetSampleRate(double rate) {
    if (!(rate > 0.0)) return;
    AudioProcessingUnit::SetSampleRate(rate);
    volumeEnvelope.SetSampleRate(rate);
    filterEnvelope.SetSampleRate(rate);
    fm.SetSampleRate(rate);
    for (VoiceOscillator& oscillator : oscillators) {
        oscillator.lfo.SetSampleRate(rate);
        oscillator.filter.SetSampleRate(rate);
        oscillator.filter.Reset();
        for (PolyBLEP& generator : oscillator.blep)
            generator.SetSampleRate(rate);
        for (WaveTableReader& generator : oscillator.wave)
            generator.SetSampleRate(rate);
    }
}

void Note::SetBlockSize(int n) {
    if (n <= blockSize) return;
    blockSize = n;
    const auto size = static_cast<std::size_t>(n);
    for (VoiceOscillator& oscillator : oscillators)
        oscillator.buffer.assign(size, 0.0);
    subBuffer.assign(size, 0.0);
    clickBuffer.assign(size, 0.0);
}

void Note::SetNote(int note) {
    if (!ready || IsActive()) return;
    noteNumber = note;
    const int mode = NoteModeIndex(Value(Param::NoteTransposeMode));
    noteFrequency = NoteFrequency(mode, note);
    basePhaseInc = noteFrequency / sampleRate;
    frequency = noteFrequency * context.values->transposeRatio;
    fm.SetFrequency(frequency);
    for (int i = 0; i < kOscillators; ++i) {
        const double phase = StartPhase(Value(i, OscParam::Phase));
        for (PolyBLEP& generator : Oscillator(i).blep) {
            generator.phase = phase;
            generator.phaseInc = frequency / generator.sampleRate;
        }
        for (WaveTableReader& generator : Oscillator(i).wave) {
            generator.phase = phase;
            generator.phaseInc = frequency / generator.sampleRate;
        }
    }
    arpeggiator.Reset(mode, context.tempo->GetTempo(), sampleRate);
}

void Note::Start(int velocityByte, int offset) {
    volumeEnvelope.Start();
    filterEnvelope.Start();
    sampleCount = 0;
    fadeIndex = 0;
    blockPos = 0;
    startOffset = std::clamp(offset, 0, blockSize);
    subPhase = 0.0;
    for (VoiceOscillator& oscillator : oscillators)
        std::fill(oscillator.buffer.begin(), oscillator.buffer.end(), 0.0);
    std::fill(subBuffer.begin(), subBuffer.end(), 0.0);
    std::fill(clickBuffer.begin(), clickBuffer.end(), 0.0);
    if (ready) StartPitch();
    fm.Restart();
    for (VoiceOscillator& oscillator : oscillators) {
        oscillator.lfo.Restart();
        oscillator.filter.Reset();
    }
    velocity = velocityByte / 127.0;
}

void Note::Release() {
    volumeEnvelope.Release();
    filterEnvelope.Release();
}

void Note::SetWaveform(int oscillator, double value) {
    if (!IsOscillator(oscillator)) return;
    const int index = Choice(value, kWaveforms - 1);
    const WaveformSelection selection = SelectWaveform(index);
    VoiceOscillator& target = Oscillator(oscillator);
    target.useBlep = selection.useBlep;
    target.noiseKind = selection.noiseKind;
    for (PolyBLEP& generator : target.blep) {
        generator.waveform = selection.waveform;
        generator.pulseWidth = selection.pulseWidth;
        generator.offset = selection.offset;
    }
    for (WaveTableReader& generator : target.wave)
        generator.set = context.waves != nullptr ? &context.waves->Set(index) : nullptr;
}

void Note::SetGlobalTranspose(double ratio) {
    frequency = noteFrequency * ratio;
    fm.SetFrequency(frequency);
}

} // namespace Grimworks
