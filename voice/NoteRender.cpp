// The second pass of a voice: modulation, filters, envelopes and the mix.

#include "core/Maths.h"
#include "voice/Note.h"
#include "voice/Saturate.h"

#include <algorithm>

namespace Grimworks {

namespace {

/// The first samples of a note, against the click of a wave that does not start at phase 0.
constexpr std::array<double, 16> kStartFade{0.0,   0.125, 0.241666666666667, 0.35,  0.45,  0.541666666666667,
                                            0.625, 0.7,   0.766666666666667, 0.825, 0.875, 0.916666666666667,
                                            0.95,  0.975, 0.991666666666667, 1.0};

/// Steps a smoother through a stretch with a fixed target. Once it has come to rest no step changes a bit.
void Glide(SmoothedValue& smoother, double target, double* states, std::size_t count) {
    const double before = smoother.state;
    if (smoother.Step(target) == before) {
        std::fill_n(states, count, before);
        return;
    }
    states[0] = smoother.state;
    for (std::size_t i = 1; i < count; ++i)
        states[i] = smoother.Step(target);
}

} // namespace

/// What a stretch of the second pass shares between its stages.
struct Note::MixStretch {
    Stretch gain;   ///< volume envelope with amount and velocity
    Stretch cutoff; ///< filter envelope with amount and velocity
    Stretch fade;   ///< start fade
    Stretch left;
    Stretch right;
    std::array<Stretch, kOscillators> lfo;
};

void Note::Render(const VoiceOutput& output, int frames) {
    if (!ready || frames <= 0) return;
    startOffset = 0;
    frames = std::min(frames, blockSize);
    for (int from = 0; from < frames; from += kVoiceStretch)
        RenderStretch(output, from, std::min(kVoiceStretch, frames - from));
    blockPos = 0;
}

void Note::RenderStretch(const VoiceOutput& output, int from, int count) {
    MixStretch mix;
    FillEnvelopes(mix, count);
    std::fill_n(mix.left.begin(), count, 0.0);
    std::fill_n(mix.right.begin(), count, 0.0);
    for (int i = 0; i < kOscillators; ++i) {
        if (IsOn(i)) {
            RenderOscillator(i, mix, from, count);
        } else {
            std::fill_n(mix.lfo[static_cast<std::size_t>(i)].begin(), count, 0.0);
        }
    }
    Finish(mix, output, from, count);
}

void Note::FillEnvelopes(MixStretch& mix, int count) {
    const auto size = static_cast<std::size_t>(count);
    const double volume = velocity * Value(Param::EnvVelocity);
    const double volumeAmount = Value(Param::EnvAmount);
    const double filter = velocity * Value(Param::FilterEnvVelocity);
    const double filterAmount = Value(Param::FilterEnvAmount);
    for (std::size_t i = 0; i < size; ++i) {
        mix.gain[i] = volumeEnvelope.Output();
        mix.cutoff[i] = filterEnvelope.Output();
        volumeEnvelope.Tick();
        filterEnvelope.Tick();
    }
    for (std::size_t i = 0; i < size; ++i) {
        mix.gain[i] = volume * (volumeAmount * mix.gain[i]);
        mix.cutoff[i] = filter * (filterAmount * mix.cutoff[i]);
    }
    for (std::size_t i = 0; i < size; ++i)
        mix.fade[i] = fadeIndex < kStartFade.size() ? kStartFade[fadeIndex++] : 1.0;
}

void Note::RenderOscillator(int index, MixStretch& mix, int from, int count) {
    VoiceOscillator& oscillator = Oscillator(index);
    Stretch& lfo = mix.lfo[static_cast<std::size_t>(index)];
    double* const samples = oscillator.buffer.data() + from;
    oscillator.lfo.Render(lfo.data(), count);
    SaturateOscillator(index, samples, count);
    FilterOscillator(index, mix, samples, count);
    PanOscillator(index, mix, samples, count);
}

void Note::SaturateOscillator(int index, double* samples, int count) {
    const auto size = static_cast<std::size_t>(count);
    Stretch amount;
    Glide(Oscillator(index).saturationSm, Value(index, OscParam::Saturation), amount.data(), size);
    if (amount[0] == 0.0 && amount[size - 1] == 0.0) return;
    for (std::size_t i = 0; i < size; ++i)
        samples[i] = Saturate(samples[i], amount[i]);
}

void Note::FilterOscillator(int index, const MixStretch& mix, double* samples, int count) {
    const Stretch& lfo = mix.lfo[static_cast<std::size_t>(index)];
    const double knob = Value(index, OscParam::FilterCutoff);
    const double cutoffAmount = Value(index, OscParam::LfoToFilter);
    const double volumeAmount = Value(index, OscParam::LfoToVolume);
    Stretch cutoff;
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
        const double cut = knob * mix.cutoff[i];
        cutoff[i] = Clamp(cut * lfo[i] * cutoffAmount + cut, 0.0, 1.0);
        samples[i] = samples[i] * lfo[i] * volumeAmount + samples[i];
    }
    OscFilterUnit& filter = Oscillator(index).filter;
    filter.balance = Value(index, OscParam::FilterBalance);
    filter.Process(samples, cutoff.data(), Value(index, OscParam::FilterResonance), count);
}

void Note::PanOscillator(int index, MixStretch& mix, double* samples, int count) {
    const auto size = static_cast<std::size_t>(count);
    const Stretch& lfo = mix.lfo[static_cast<std::size_t>(index)];
    const double amount = Value(index, OscParam::LfoToPan);
    const double centre = Value(index, OscParam::Pan);
    VoiceOscillator& oscillator = Oscillator(index);
    Stretch volume;
    Stretch pan;
    Glide(oscillator.volumeSm, Value(index, OscParam::Volume), volume.data(), size);
    for (std::size_t i = 0; i < size; ++i)
        pan[i] = oscillator.panSm.Step(lfo[i] * amount * 0.5 + centre);
    // A wave that starts at phase 0 needs no fade.
    if (Value(index, OscParam::Phase) != 0.5) {
        for (std::size_t i = 0; i < size; ++i)
            volume[i] *= mix.fade[i];
    }
    for (std::size_t i = 0; i < size; ++i) {
        const double y = samples[i] * volume[i];
        const double p = pan[i];
        const double fromRight = 2.0 * p * y;
        const double fromLeft = (1.0 - 2.0 * (p - 0.5)) * y;
        samples[i] = y;
        mix.right[i] += p < 0.5 ? fromRight : y;
        mix.left[i] += p < 0.5 ? y : fromLeft;
    }
}

void Note::Finish(const MixStretch& mix, const VoiceOutput& output, int from, int count) const {
    const auto size = static_cast<std::size_t>(count);
    const auto offset = static_cast<std::size_t>(from);
    for (std::size_t i = 0; i < size; ++i) {
        const std::size_t n = offset + i;
        const double g = velocity * mix.gain[i]; // velocity acts twice, which gives the squared law
        const double click = g * clickBuffer[n];
        output.sum.left[n] += mix.left[i] * g + click;
        output.sum.right[n] += mix.right[i] * g + click;
        output.subSum[n] += g * subBuffer[n];
    }
    for (std::size_t i = 0; i < size; ++i) {
        const std::size_t n = offset + i;
        if (output.volEnvSum != nullptr) output.volEnvSum[n] += mix.gain[i];
        if (output.filterEnvSum != nullptr) output.filterEnvSum[n] += mix.cutoff[i];
        if (output.modRecords == nullptr) continue;
        for (std::size_t k = 0; k < kOscillators; ++k)
            output.modRecords[n][k] = mix.lfo[k][i];
    }
}

} // namespace Grimworks
