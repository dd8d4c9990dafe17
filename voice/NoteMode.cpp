#include "voice/NoteMode.h"

#include "core/Choice.h"
#include "core/Limits.h"
#include "core/Maths.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace Grimworks {

namespace {

/// One mode: its text, its fixed pitch in Hz (0: the key decides) and the pitch of the key A above middle C.
struct NoteModeRow {
    const char* text;
    double fixedFrequency;
    double concertA;
};

constexpr std::array<NoteModeRow, kNoteModes> kNoteModeTable{{{"Standard MIDI", 0.0, 2.0 * 440.0},
                                                              {"Octave Down", 0.0, 440.0},
                                                              {"Octave Up", 0.0, 1760.0},
                                                              {"F1 Kick %3.1fHz", 43.65, 0.0},
                                                              {"F#1 Kick %3.1fHz", 46.25, 0.0},
                                                              {"G1 Kick %3.1fHz", 49.0, 0.0},
                                                              {"G#1 Kick %3.1fHz", 51.91, 0.0},
                                                              {"Drum Body %3.1fHz", 65.4, 0.0},
                                                              {"Arp. Dur Up 1/16", 0.0, 2.0 * 440.0},
                                                              {"Arp. Moll Up 1/16", 0.0, 2.0 * 440.0}}};

constexpr std::array<const char*, 12> kNoteNames{"C%d",  "C#%d", "D%d",  "D#%d", "E%d",  "F%d",
                                                 "F#%d", "G%d",  "G#%d", "A%d",  "A#%d", "B%d"};

const NoteModeRow& RowOf(int mode) {
    return kNoteModeTable[static_cast<std::size_t>(mode >= 0 && mode < kNoteModes ? mode : 0)];
}

template <class... Values>
std::string Formatted(const char* format, Values... values) {
    std::array<char, 400> text{}; // room for the longest double without an exponent
    std::snprintf(text.data(), text.size(), format, values...);
    return text.data();
}

} // namespace

int NoteModeIndex(double value) {
    const int mode = Choice(value, kNoteModes - 1);
    return mode >= 0 && mode < kNoteModes ? mode : NoteMode::kStandard;
}

double NoteFrequency(int mode, int note) {
    const NoteModeRow& row = RowOf(mode);
    if (row.fixedFrequency > 0.0) return row.fixedFrequency;
    return row.concertA * std::pow(2.0, (note - 69) / 12.0);
}

std::string NoteModeText(int mode) {
    const NoteModeRow& row = RowOf(mode);
    return Formatted(row.text, row.fixedFrequency);
}

std::string NoteName(int note) {
    if (note < 0 || note > 127) return {};
    return Formatted(kNoteNames[static_cast<std::size_t>(note % 12)], note / 12);
}

std::string NoteFrequencyText(double frequency, int note) {
    return Formatted("%4.2fHz [%s]", frequency, NoteName(note).c_str());
}

double PitchRatio(double value) {
    if (value == 0.5) return 1.0;
    return SemitoneRatio(12.0 * Bipolar(value));
}

double TuneRatio(double value) {
    const double ratio = 1.0 + kSemitoneStep * std::fabs(2.0 * value - 1.0);
    return value >= 0.5 ? ratio : 1.0 / ratio;
}

double PitchBendSemitones(double value) {
    return 2.0 * ClampedChoice(value, 6);
}

std::string PitchBendRangeText(double semitones) {
    return Formatted("+/- %1.0f", semitones);
}

double SemitoneRatio(double semitones) {
    return std::pow(kSemitone, semitones);
}

} // namespace Grimworks
