#pragma once

#include "core/Limits.h"
#include "voice/EnvelopeGenerator.h"
#include "voice/Note.h"
#include "voice/VoiceContext.h"

#include <array>
#include <atomic>
#include <cstdint>

namespace Grimworks {

/// An event that waits for its sample.
struct DeferredEvent {
    static constexpr int kPitchBend = 14; ///< the status nibble of the pitch wheel

    bool idle = true;
    std::int32_t delay = 0; ///< samples still to wait
    std::int32_t type = kPitchBend;
    double value = 0.0;
};

/// The 64 voices: finds a free one for a note on, releases those of a note off, smooths the pitch bend that
/// all of them read, and hands parameters to all of them, sounding or not.
///
/// The first pass of the voices is put off: Tick only notes that a sample has gone by, and the voices catch
/// up in stretches when something changes for them. That gives the samples that stepping every voice at every
/// Tick would give, at a fraction of the cost. Audio thread; setters under the plug-in lock, between blocks.
class VoiceBank {
public:
    explicit VoiceBank(const VoiceContext& context = {});

    /// What the voices read. The pitch bend is the bank's own; the one given here is not looked at.
    void SetContext(const VoiceContext& context);

    /// Starts the first voice whose envelopes are both off; with all 64 in use the note is dropped. The sound
    /// begins `offset` samples into the block.
    void NoteOn(int note, int velocity, int offset);

    /// Releases all voices that play this key. The velocity has no effect.
    void NoteOff(int note, int velocity);

    /// A wheel position of -1..1, in force after `offset` further samples; lost when eight are waiting.
    void PitchBend(int offset, double value);

    /// Controllers are understood by nobody.
    void ControlChange(int /*offset*/, int /*controller*/, double /*value*/) {}

    /// One sample: deferred events, the first pass of the active voices, the pitch bend. Always 0.
    double Tick();

    /// The second pass of the active voices, in order, after the ticks of a block.
    void Render(const VoiceOutput& output, int frames);

    /// Forgets waiting events.
    void ResetDeferredEvents();

    void SetSampleRate(double rate); ///< Hz; not above 0 is ignored
    void SetBlockSize(int frames);

    // Oscillators, 0..2, take parameter values of 0..1; other indexes are ignored.
    void SetWaveform(int oscillator, double value);
    void SetOscPitch(int oscillator, double value); ///< coarse, an octave each way
    void SetOscTune(int oscillator, double value);  ///< fine, a semitone each way
    void SetFilterTypeLeft(int oscillator, double value);
    void SetFilterTypeRight(int oscillator, double value);
    void SetLfoRate(int oscillator, double value); ///< 0..1 for 0..20 Hz
    void SetLfoMode(int oscillator, double value);

    /// One setter on the volume or the filter envelope of all voices.
    void SetVolumeEnvelope(EnvelopeSetter setter, double value);
    void SetFilterEnvelope(EnvelopeSetter setter, double value);

    /// The shape knob: curves of the volume envelopes, but the duration of the filter envelopes.
    void SetShape(double value);

    void SetUnisonVoices(double value);    ///< two generators an oscillator from 0.5 on, else one
    void SetUnisonDetune(double value);    ///< 0..1 for up to a semitone below
    void SetFmAmount(double value);        ///< 0..1
    void SetGlobalTranspose(double ratio); ///< frequency ratio; sounding notes move at once
    void SetBendRange(double semitones) { bendRange = semitones; }

    [[nodiscard]] double BendRange() const { return bendRange; }       ///< semitones
    [[nodiscard]] double PitchBendFactor() const { return bendState; } ///< smoothed frequency multiplier
    [[nodiscard]] int ActiveVoices() const;
    [[nodiscard]] const Note& Voice(int index) const { return notes[static_cast<std::size_t>(index)]; }
    [[nodiscard]] const std::array<DeferredEvent, kDeferredEvents>& DeferredEvents() const {
        return deferred;
    }

    /// Key of the last note that found a voice, -1 before the first, and its frequency in Hz. Any thread.
    [[nodiscard]] int LastNote() const { return lastNote.load(std::memory_order_relaxed); }
    [[nodiscard]] double LastFrequency() const { return lastFrequency.load(std::memory_order_relaxed); }

private:
    void RunDeferredEvents();
    void CatchUp();
    template <class Change>
    void ForAll(Change change);
    template <class Change>
    void ForAll(int oscillator, Change change);
    template <class Visit>
    void ForActive(Visit visit);

    std::array<Note, kVoices> notes;
    std::uint64_t active = 0; ///< a bit for each voice in use
    std::array<DeferredEvent, kDeferredEvents> deferred;
    double bendRange = 2.0; ///< semitones
    double bendTarget = 1.0;
    double bendState = 1.0;
    std::array<double, kVoiceStretch> bends{}; ///< pitch bend of the samples that the voices have yet to run
    int pending = 0;
    std::atomic<int> lastNote{-1};
    std::atomic<double> lastFrequency{0.0};
};

} // namespace Grimworks
