#pragma once

#include <string>

namespace Grimworks {

/// How a key becomes a frequency: the standard tuning one octave above the usual one, its neighbours, fixed
/// pitches for kicks, and two small arpeggios.
namespace NoteMode {
inline constexpr int kStandard = 0;
inline constexpr int kMajorArpeggio = 8; ///< this and all later modes arpeggiate
inline constexpr int kMinorArpeggio = 9;
} // namespace NoteMode

inline constexpr int kNoteModes = 10;

/// Mode of a "Note transpose mode" value, 0..1; anything outside the table is the standard mode.
[[nodiscard]] int NoteModeIndex(double value);

/// Frequency in Hz of a key in a mode; a mode outside the table counts as the standard one.
[[nodiscard]] double NoteFrequency(int mode, int note);

/// Display text of a mode. Not for the audio thread, like all texts here.
[[nodiscard]] std::string NoteModeText(int mode);

/// "C5" for note 60; empty outside 0..127.
[[nodiscard]] std::string NoteName(int note);

/// "523.25Hz [C5]": what the note display shows for a frequency in Hz and a key.
[[nodiscard]] std::string NoteFrequencyText(double frequency, int note);

/// Pitch ratio of a coarse pitch knob or the global transpose: 0..1 for an octave down to an octave up, 0.5
/// giving exactly 1.
[[nodiscard]] double PitchRatio(double value);

/// Ratio of a fine-tune knob: 0..1 for a semitone down to a semitone up, straight in the ratio.
[[nodiscard]] double TuneRatio(double value);

/// Semitones of a "Pitch-Bend Range" value 0..1: 0, 2 .. 12.
[[nodiscard]] double PitchBendSemitones(double value);

/// "+/- 2": display text of the range.
[[nodiscard]] std::string PitchBendRangeText(double semitones);

/// Ratio that a number of semitones, whole or not, makes.
[[nodiscard]] double SemitoneRatio(double semitones);

} // namespace Grimworks
