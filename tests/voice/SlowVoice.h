#pragma once

#include "core/Limits.h"
#include "core/ParameterIds.h"
#include "core/RandomGenerator.h"
#include "core/ValueBlock.h"
#include "tests/voice/VoiceRig.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace Grimworks::Testing {

/// One voice computed the plain way: sample by sample, one formula after the other, with the C library's
/// functions. It shares the generators, envelopes and filters with the real one and nothing of the rest, and
/// takes its program from a value block. No frame of it is fast.
class SlowVoice {
public:
    SlowVoice(const ValueBlock& program, double rate, double hostTempo, RandomGenerator& noise)
        : values(program), sampleRate(rate), tempo(hostTempo), random(noise) {
        for (int i = 0; i < kOscillators; ++i)
            SetUp(i);
        volume.SetSampleRate(rate);
        filter.SetSampleRate(rate);
        SetUpEnvelope(volume, Param::EnvAttack);
        SetUpEnvelope(filter, Param::FilterAttack);
        volume.SetShape(values[Param::AdsrShape]);
        filter.SetDuration(values[Param::AdsrShape]);
    }

    /// What one sample of the block leaves behind.
    struct Frame {
        double left = 0.0, right = 0.0, sub = 0.0, gain = 0.0, cutoff = 0.0;
        std::array<double, kOscillators> lfo{};
    };

    [[nodiscard]] bool IsActive() const { return !volume.IsOff() || !filter.IsOff(); }

    void Start(int note, int velocityByte, double bend) {
        mode = static_cast<int>(std::floor(values[Param::NoteTransposeMode] * 9.0 + 0.5));
        const double fixed[] = {0, 0, 0, 43.65, 46.25, 49.0, 51.91, 65.4, 0, 0};
        const double concertA = mode == 1 ? 440.0 : mode == 2 ? 1760.0 : 880.0;
        noteFrequency = fixed[mode] > 0.0 ? fixed[mode] : concertA * std::pow(2.0, (note - 69) / 12.0);
        base = noteFrequency / sampleRate;
        frequency = noteFrequency * values.transposeRatio;
        for (int i = 0; i < kOscillators; ++i) {
            const double d = At(i, OscParam::Phase) - 0.5;
            const double phase = d >= 0.0 ? d - std::trunc(d) : 1.0 - std::trunc(d) + d;
            for (int u = 0; u < 2; ++u) {
                oscillators[Index(i)].blep[Index(u)].phase = phase;
                oscillators[Index(i)].wave[Index(u)].phase = phase;
            }
        }
        arpCounter = 0;
        arpIndex = 0;
        arpTarget = 1.0;
        arpStep = arpNext = static_cast<unsigned>(60.0 / tempo * 0.0625 * sampleRate);
        volume.Start();
        filter.Start();
        count = fade = 0;
        sub = 0.0;
        UpdatePitch(1.0, bend);
        fmPhase = 0.0;
        for (Oscillator& o : oscillators) {
            o.lfoPhase = o.lfoOutput = 0.0;
            o.filter.Reset();
            std::fill(o.buffer.begin(), o.buffer.end(), 0.0);
        }
        std::fill(subBuffer.begin(), subBuffer.end(), 0.0);
        std::fill(clickBuffer.begin(), clickBuffer.end(), 0.0);
        velocity = velocityByte / 127.0;
    }

    void Release() {
        volume.Release();
        filter.Release();
    }

    /// First pass: raw samples of buffer place i.
    void Tick(std::size_t i, double bend) {
        for (int k = 0; k < kOscillators; ++k) {
            Oscillator& o = oscillators[Index(k)];
            if (At(k, OscParam::Volume) > 0.0 && At(k, OscParam::OnOff) > 0.5) o.buffer[i] = Source(o);
        }
        const double seconds = count / sampleRate;
        if (values[Param::BassLayerAmount] > 0.0) subBuffer[i] = std::sin(sub * 2.0 * kPi);
        if (values[Param::BassLayerClick] > 0.0)
            clickBuffer[i] = SharedClicks().Value(seconds, values[Param::BassLayerClick]);
        UpdatePitch(Sweep(seconds), bend);
        ++count;
    }

    /// Second pass: the same place.
    Frame Render(std::size_t i) {
        static const double kFade[] = {0.0,   0.125, 0.241666666666667, 0.35,  0.45,  0.541666666666667,
                                       0.625, 0.7,   0.766666666666667, 0.825, 0.875, 0.916666666666667,
                                       0.95,  0.975, 0.991666666666667, 1.0};
        Frame out;
        const double fadeNow = fade < 16 ? kFade[fade++] : 1.0;
        out.gain = velocity * values[Param::EnvVelocity] * (values[Param::EnvAmount] * volume.Output());
        out.cutoff =
            velocity * values[Param::FilterEnvVelocity] * (values[Param::FilterEnvAmount] * filter.Output());
        for (int k = 0; k < kOscillators; ++k) {
            if (At(k, OscParam::OnOff) > 0.5) RenderOscillator(k, i, fadeNow, out);
        }
        const double g = velocity * out.gain;
        out.left = out.left * g + g * clickBuffer[i];
        out.right = out.right * g + g * clickBuffer[i];
        out.sub = g * subBuffer[i];
        volume.Tick();
        filter.Tick();
        return out;
    }

private:
    struct Oscillator {
        std::array<PolyBLEP, 2> blep;
        std::array<WaveTableReader, 2> wave;
        WaveformSelection selection;
        PinkNoise pink;
        OscFilterUnit filter;
        double pitch = 1.0, tune = 1.0;
        double lfoPhase = 0.0, lfoOutput = 0.0;
        double volumeState = 0.0, saturationState = 0.0, panState = 0.0;
        std::vector<double> buffer = std::vector<double>(1024);
    };

    static std::size_t Index(int i) { return static_cast<std::size_t>(i); }
    [[nodiscard]] double At(int oscillator, OscParam parameter) const {
        return values[Osc(oscillator, parameter)];
    }

    void SetUp(int k) {
        Oscillator& o = oscillators[Index(k)];
        const int index = static_cast<int>(std::floor(At(k, OscParam::Waveform) * 40.0 + 0.5));
        o.selection = SelectWaveform(index);
        for (PolyBLEP& generator : o.blep) {
            generator.sampleRate = sampleRate;
            generator.waveform = o.selection.waveform;
            generator.pulseWidth = o.selection.pulseWidth;
            generator.offset = o.selection.offset;
        }
        for (WaveTableReader& generator : o.wave) {
            generator.sampleRate = sampleRate;
            generator.set = &SharedWaves().Set(index);
        }
        o.pitch = std::pow(2.0, 2.0 * At(k, OscParam::Pitch) - 1.0);
        const double t = 2.0 * At(k, OscParam::Tune) - 1.0;
        o.tune = t >= 0.0 ? 1.0 + kSemitoneStep * t : 1.0 / (1.0 - kSemitoneStep * t);
        o.filter.SetLeftType(At(k, OscParam::FilterTypeLeft));
        o.filter.SetRightType(At(k, OscParam::FilterTypeRight));
    }

    void SetUpEnvelope(EnvelopeGenerator& envelope, int first) {
        envelope.SetAttack(values[first]);
        envelope.SetDecay(values[first + 1]);
        envelope.SetSustain(values[first + 2]);
        envelope.SetRelease(values[first + 3]);
        envelope.SetDuration(values[first + 4]);
    }

    double Source(Oscillator& o) {
        if (o.selection.noiseKind == NoiseKind::White) return 2.0 * random.Next() / 32767.0 - 1.0;
        if (o.selection.noiseKind == NoiseKind::Pink) return o.pink.Tick(random);
        const int voices = values[Param::UnisonVoices] >= 0.5 ? 2 : 1;
        double sum = 0.0;
        for (int u = 0; u < voices; ++u)
            sum += o.selection.useBlep ? o.blep[Index(u)].Next() : o.wave[Index(u)].Tick();
        return sum / voices;
    }

    [[nodiscard]] double Sweep(double t) const {
        if (values[Param::PitchOnOff] == 0.0) return 1.0;
        const double a = 0.001;
        const double d = values[Param::PitchDuration] * 2.0;
        const double peak = 20.0 * values[Param::PitchAmount];
        const double down = values[Param::PitchDown];
        double f = 1.0;
        if (t < a) {
            f = 1.0 + peak * t / a;
        } else if (t < a + d) {
            f = 1.0 + peak * std::pow(1.0 - (t - a) / d, 20.0 * std::max(values[Param::PitchPower], 0.002));
        }
        return t < a + d ? f - down * t / (a + d) : f - down;
    }

    double Arpeggio() {
        if (mode < 8) return 1.0;
        const double third = std::pow(kSemitone, mode == 9 ? 3.0 : 4.0);
        const double table[] = {1.0, third, std::pow(kSemitone, 7.0)};
        if (arpCounter++ > arpNext) {
            arpNext += arpStep;
            arpIndex = (arpIndex + 1) % 3;
            arpTarget = table[arpIndex];
        }
        arpRatio = 0.557694802 * arpTarget + 0.442305198 * arpRatio;
        return arpRatio;
    }

    double Fm() {
        const double amount = values[Param::FmAmount];
        if (amount == 0.0) return 0.0;
        const double value = std::sin(fmPhase * 2.0 * kPi) * amount;
        fmPhase += frequency / sampleRate;
        fmPhase -= std::trunc(fmPhase);
        return value;
    }

    void UpdatePitch(double p, double bend) {
        const double f = 1.0 + Fm() * 0.7135571323115437;
        const double g = p * values.transposeRatio * bend * Arpeggio() * f;
        for (int k = 0; k < kOscillators; ++k) {
            Oscillator& o = oscillators[Index(k)];
            const double m = At(k, OscParam::LfoToTune) * o.lfoOutput;
            const double swing = m >= 0.0 ? 1.0 + m * kSemitoneStep : 1.0 / (1.0 - m * kSemitoneStep);
            const double h = frequency * o.pitch * o.tune * swing * g;
            const double h2 = h / (1.0 + kSemitoneStep * values[Param::UnisonDetune]);
            o.blep[0].phaseInc = o.wave[0].phaseInc = h / sampleRate;
            o.blep[1].phaseInc = o.wave[1].phaseInc = h2 / sampleRate;
        }
        sub += values[Param::BassLayerToFm] == 0.0 ? p * values.transposeRatio * bend * base : base * g;
        sub -= std::trunc(sub);
    }

    double Lfo(int k) {
        Oscillator& o = oscillators[Index(k)];
        const double rate = At(k, OscParam::LfoRate);
        if (rate == 0.0) return 0.0;
        const int shape = static_cast<int>(std::floor(At(k, OscParam::LfoMode) * 4.0 + 0.5));
        double value = std::sin(o.lfoPhase * 2.0 * kPi);
        if (shape == 1) value = std::max(value, 0.0);
        if (shape == 2) value = std::min(value, 0.0);
        if (shape == 3) value = std::fabs(value);
        if (shape == 4) value = -value;
        o.lfoPhase += rate * 20.0 / sampleRate;
        o.lfoPhase -= std::trunc(o.lfoPhase);
        return o.lfoOutput = value;
    }

    void RenderOscillator(int k, std::size_t i, double fadeNow, Frame& out) {
        Oscillator& o = oscillators[Index(k)];
        const double l = Lfo(k);
        out.lfo[Index(k)] = l;
        o.volumeState = 0.9777 * o.volumeState + 0.0223 * At(k, OscParam::Volume);
        o.saturationState = 0.9777 * o.saturationState + 0.0223 * At(k, OscParam::Saturation);
        const double panTarget = l * At(k, OscParam::LfoToPan) * 0.5 + At(k, OscParam::Pan);
        o.panState = 0.9777 * o.panState + 0.0223 * panTarget;
        double x = o.buffer[i];
        if (o.saturationState > 0.0) {
            const double drive = std::max(o.saturationState, 0.1287001287001287);
            x = std::clamp(std::atan(x) / std::atan(1.0) * drive * 7.77, -1.0, 1.0);
        }
        double cut = At(k, OscParam::FilterCutoff) * out.cutoff;
        cut = std::clamp(cut * l * At(k, OscParam::LfoToFilter) + cut, 0.0, 1.0);
        const double in = x * l * At(k, OscParam::LfoToVolume) + x;
        o.filter.balance = At(k, OscParam::FilterBalance);
        double y = o.filter.Tick(in, cut, At(k, OscParam::FilterResonance));
        y *= At(k, OscParam::Phase) == 0.5 ? o.volumeState : o.volumeState * fadeNow;
        o.buffer[i] = y;
        const double p = o.panState;
        out.right += p < 0.5 ? 2.0 * p * y : y;
        out.left += p < 0.5 ? y : (1.0 - 2.0 * (p - 0.5)) * y;
    }

    const ValueBlock& values;
    double sampleRate;
    double tempo;
    RandomGenerator& random;
    std::array<Oscillator, kOscillators> oscillators;
    EnvelopeGenerator volume;
    EnvelopeGenerator filter;
    std::vector<double> subBuffer = std::vector<double>(1024);
    std::vector<double> clickBuffer = std::vector<double>(1024);
    int mode = 0;
    double noteFrequency = 0.0, frequency = 0.0, base = 0.0, velocity = 1.0;
    double sub = 0.0, fmPhase = 0.0;
    unsigned count = 0, fade = 0;
    unsigned arpCounter = 0, arpNext = 0, arpStep = 0, arpIndex = 0;
    double arpTarget = 1.0, arpRatio = 1.0;
};

} // namespace Grimworks::Testing
