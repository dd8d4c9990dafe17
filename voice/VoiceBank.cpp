#include "voice/VoiceBank.h"

#include "core/Choice.h"
#include "voice/NoteMode.h"

#include <bit>
#include <span>

namespace Grimworks {

namespace {

constexpr double kBendPole = 0.9777;
constexpr double kBendInput = 0.0223;

} // namespace

VoiceBank::VoiceBank(const VoiceContext& context) {
    SetContext(context);
}

void VoiceBank::SetContext(const VoiceContext& context) {
    VoiceContext own = context;
    own.pitchBendFactor = &bendState;
    ForAll([&own](Note& note) { note.SetContext(own); });
}

template <class Change>
void VoiceBank::ForAll(Change change) {
    CatchUp();
    for (Note& note : notes)
        change(note);
}

template <class Change>
void VoiceBank::ForAll(int oscillator, Change change) {
    if (oscillator < 0 || oscillator >= kOscillators) return;
    ForAll([oscillator, change](Note& note) { change(note.Oscillator(oscillator)); });
}

template <class Visit>
void VoiceBank::ForActive(Visit visit) {
    for (std::uint64_t left = active; left != 0; left &= left - 1)
        visit(notes[static_cast<std::size_t>(std::countr_zero(left))]);
}

void VoiceBank::NoteOn(int note, int velocity, int offset) {
    const int free = std::countr_one(active);
    if (free >= kVoices) return;
    CatchUp();
    Note& voice = notes[static_cast<std::size_t>(free)];
    voice.SetNote(note);
    voice.Start(velocity, offset);
    active |= std::uint64_t{1} << free;
    lastNote.store(note, std::memory_order_relaxed);
    lastFrequency.store(voice.Frequency(), std::memory_order_relaxed);
}

void VoiceBank::NoteOff(int note, int /*velocity*/) {
    ForActive([note](Note& voice) {
        if (voice.NoteNumber() == note) voice.Release();
    });
}

void VoiceBank::PitchBend(int offset, double value) {
    for (DeferredEvent& event : deferred) {
        if (!event.idle) continue;
        event = {false, offset, DeferredEvent::kPitchBend, value};
        return;
    }
}

double VoiceBank::Tick() {
    RunDeferredEvents();
    bends[static_cast<std::size_t>(pending)] = bendState;
    ++pending;
    if (pending == kVoiceStretch) CatchUp();
    bendState = kBendPole * bendState + kBendInput * bendTarget;
    return 0.0;
}

void VoiceBank::RunDeferredEvents() {
    for (DeferredEvent& event : deferred) {
        if (event.idle) continue;
        if (event.delay > 0) {
            --event.delay;
            continue;
        }
        if (event.type == DeferredEvent::kPitchBend) bendTarget = SemitoneRatio(bendRange * event.value);
        event.idle = true;
        event.value = 0.0;
    }
}

void VoiceBank::CatchUp() {
    if (pending == 0) return;
    const int samples = pending;
    pending = 0;
    std::uint64_t noisy = 0;
    for (int i = 0; i < kVoices; ++i) {
        const std::uint64_t bit = std::uint64_t{1} << i;
        if ((active & bit) != 0 && notes[static_cast<std::size_t>(i)].HasNoise()) noisy |= bit;
    }
    for (int ahead = 0; noisy != 0 && ahead < samples; ++ahead) {
        for (std::uint64_t left = noisy; left != 0; left &= left - 1)
            notes[static_cast<std::size_t>(std::countr_zero(left))].DrawNoise(ahead);
    }
    const std::span<const double> bend(bends.data(), static_cast<std::size_t>(samples));
    ForActive([bend](Note& voice) { voice.Run(bend); });
}

void VoiceBank::Render(const VoiceOutput& output, int frames) {
    CatchUp();
    for (std::uint64_t left = active; left != 0; left &= left - 1) {
        Note& voice = notes[static_cast<std::size_t>(std::countr_zero(left))];
        voice.Render(output, frames);
        if (!voice.IsActive()) active &= ~(left & (~left + 1));
    }
}

void VoiceBank::ResetDeferredEvents() {
    for (DeferredEvent& event : deferred) {
        event.idle = true;
        event.value = 0.0;
    }
}

void VoiceBank::SetSampleRate(double rate) {
    ForAll([rate](Note& note) { note.SetSampleRate(rate); });
}

void VoiceBank::SetBlockSize(int frames) {
    ForAll([frames](Note& note) { note.SetBlockSize(frames); });
}

void VoiceBank::SetWaveform(int oscillator, double value) {
    ForAll([=](Note& note) { note.SetWaveform(oscillator, value); });
}

void VoiceBank::SetOscPitch(int oscillator, double value) {
    const double ratio = PitchRatio(value);
    ForAll(oscillator, [ratio](VoiceOscillator& target) { target.pitch = ratio; });
}

void VoiceBank::SetOscTune(int oscillator, double value) {
    const double ratio = TuneRatio(value);
    ForAll(oscillator, [ratio](VoiceOscillator& target) { target.tune = ratio; });
}

void VoiceBank::SetFilterTypeLeft(int oscillator, double value) {
    ForAll(oscillator, [value](VoiceOscillator& target) { target.filter.SetLeftType(value); });
}

void VoiceBank::SetFilterTypeRight(int oscillator, double value) {
    ForAll(oscillator, [value](VoiceOscillator& target) { target.filter.SetRightType(value); });
}

void VoiceBank::SetLfoRate(int oscillator, double value) {
    ForAll(oscillator, [value](VoiceOscillator& target) { target.lfo.SetRate(value); });
}

void VoiceBank::SetLfoMode(int oscillator, double value) {
    ForAll(oscillator, [value](VoiceOscillator& target) { target.lfo.SetMode(value); });
}

void VoiceBank::SetVolumeEnvelope(EnvelopeSetter setter, double value) {
    ForAll([=](Note& note) { (note.VolumeEnvelope().*setter)(value); });
}

void VoiceBank::SetFilterEnvelope(EnvelopeSetter setter, double value) {
    ForAll([=](Note& note) { (note.FilterEnvelope().*setter)(value); });
}

void VoiceBank::SetShape(double value) {
    ForAll([value](Note& note) {
        note.VolumeEnvelope().SetShape(value);
        note.FilterEnvelope().SetDuration(value);
    });
}

void VoiceBank::SetUnisonVoices(double value) {
    const int count = ClampedChoice(value, 1) + 1;
    ForAll([count](Note& note) { note.SetUnisonVoices(count); });
}

void VoiceBank::SetUnisonDetune(double value) {
    ForAll([value](Note& note) { note.SetUnisonDetune(value); });
}

void VoiceBank::SetFmAmount(double value) {
    ForAll([value](Note& note) { note.SetFmAmount(value); });
}

void VoiceBank::SetGlobalTranspose(double ratio) {
    ForAll([ratio](Note& note) { note.SetGlobalTranspose(ratio); });
}

int VoiceBank::ActiveVoices() const {
    return std::popcount(active);
}

} // namespace Grimworks
