// Plays every factory program and writes what it measures as a table.
//
//     measure_bank docs/factory-bank.md

#include "patches/FactoryBank.h"
#include "tools/ProgramPlayer.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <string>

using namespace Grimworks;

namespace {

constexpr double kClear = 0.75; ///< a sound that repeats itself less has no pitch to speak of

const FactorySection& SectionOf(int number) {
    return *std::find_if(kFactorySections.begin(), kFactorySections.end(),
                         [number](const FactorySection& section) { return number <= section.last; });
}

std::string Text(const char* format, double value) {
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string PitchText(const Sound& sound) {
    const double start = std::min(Length(sound), 1.0) * 0.4;
    const Pitch pitch = FindPitch(sound, static_cast<std::size_t>(start * kSoundRate));
    return pitch.clarity >= kClear ? Text("%.1f", pitch.hz) : "-";
}

void WriteHead(std::ostream& out) {
    out << "# The factory bank\n\n"
           "Measured by `tools/measure_bank.cpp`, which writes this file; build the target `measure_bank` "
           "and run\n"
           "`measure_bank docs/factory-bank.md` after a change of the bank.\n\n"
           "Each program plays one key at velocity 100, held for one second, at 44100 Hz and 120 beats a "
           "minute.\n"
           "Pitch is that of the sound at two fifths of its length (`-` where it is noise, or metal without "
           "a\n"
           "clear pitch). Length runs until the sound has fallen for good to 40 dB below its loudest 10 ms.\n"
           "Loudness is that of the loudest 100 ms after ITU-R BS.1770, in LUFS. The centroid is the centre "
           "of the\n"
           "magnitude spectrum of the whole sound.\n";
}

void WriteSection(const FactorySection& section, std::ostream& out) {
    out << "\n## " << section.title << "\n\nKey " << section.note << ".\n\n"
        << "| No. | Program | Pitch (Hz) | Length (s) | Loudness (LUFS) | Centroid (Hz) |\n"
        << "|---:|---|---:|---:|---:|---:|\n";
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::cerr << "usage: measure_bank FILE\n";
        return 2;
    }
    std::ofstream out(arguments[1]);
    ProgramPlayer player;
    WriteHead(out);
    for (int number = 1; number <= kPrograms; ++number) {
        const FactorySection& section = SectionOf(number);
        if (number == section.first) WriteSection(section, out);
        player.Choose(number - 1);
        const Sound sound = player.Play(section.note);
        out << "| " << number << " | " << player.Plug().PresetName(number - 1) << " | " << PitchText(sound)
            << " | " << Text("%.2f", Length(sound)) << " | " << Text("%.1f", Loudness(sound)) << " | "
            << Text("%.0f", Centroid(sound)) << " |\n";
    }
    out.close();
    if (!out) {
        std::cerr << "measure_bank: " << arguments[1] << ": cannot be written\n";
        return 2;
    }
    return 0;
}
