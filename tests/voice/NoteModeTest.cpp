#include "voice/NoteMode.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Grimworks {
namespace {

double Tempered(double concertA, int note) {
    return concertA * std::exp2((note - 69) / 12.0);
}

TEST(NoteMode, IndexRoundsToTheNearestOfTen) {
    for (int i = 0; i < kNoteModes; ++i)
        EXPECT_EQ(NoteModeIndex(i / 9.0), i);
    EXPECT_EQ(NoteModeIndex(0.05), 0);
    EXPECT_EQ(NoteModeIndex(0.06), 1);
}

TEST(NoteMode, AnIndexOutsideTheTableIsTheStandardMode) {
    EXPECT_EQ(NoteModeIndex(-3.0), NoteMode::kStandard);
    EXPECT_EQ(NoteModeIndex(2.0), NoteMode::kStandard);
    EXPECT_EQ(NoteModeIndex(std::numeric_limits<double>::quiet_NaN()), NoteMode::kStandard);
    EXPECT_EQ(NoteFrequency(77, 69), 880.0);
}

TEST(NoteMode, KeyedModesAreTemperedAroundTheirConcertPitch) {
    for (int note = 0; note < 128; ++note) {
        EXPECT_NEAR(NoteFrequency(0, note), Tempered(880.0, note), 1e-9);
        EXPECT_NEAR(NoteFrequency(1, note), Tempered(440.0, note), 1e-9);
        EXPECT_NEAR(NoteFrequency(2, note), Tempered(1760.0, note), 1e-9);
        EXPECT_EQ(NoteFrequency(8, note), NoteFrequency(0, note));
        EXPECT_EQ(NoteFrequency(9, note), NoteFrequency(0, note));
    }
}

TEST(NoteMode, DrumModesIgnoreTheKey) {
    for (const int note : {0, 36, 127}) {
        EXPECT_EQ(NoteFrequency(3, note), 43.65);
        EXPECT_EQ(NoteFrequency(4, note), 46.25);
        EXPECT_EQ(NoteFrequency(5, note), 49.0);
        EXPECT_EQ(NoteFrequency(6, note), 51.91);
        EXPECT_EQ(NoteFrequency(7, note), 65.4);
    }
}

TEST(NoteMode, NoteZeroSoundsAtSixteenHertz) {
    EXPECT_NEAR(NoteFrequency(0, 0), 16.3516, 1e-4);
    EXPECT_EQ(NoteName(0), "C0");
}

TEST(NoteMode, TextsNameTheModes) {
    EXPECT_EQ(NoteModeText(0), "Standard MIDI");
    EXPECT_EQ(NoteModeText(1), "Octave Down");
    EXPECT_EQ(NoteModeText(2), "Octave Up");
    EXPECT_EQ(NoteModeText(3), "F1 Kick 43.6Hz"); // 43.65 lies a little below in binary
    EXPECT_EQ(NoteModeText(4), "F#1 Kick 46.2Hz");
    EXPECT_EQ(NoteModeText(5), "G1 Kick 49.0Hz");
    EXPECT_EQ(NoteModeText(6), "G#1 Kick 51.9Hz");
    EXPECT_EQ(NoteModeText(7), "Drum Body 65.4Hz");
    EXPECT_EQ(NoteModeText(8), "Arp. Dur Up 1/16");
    EXPECT_EQ(NoteModeText(9), "Arp. Moll Up 1/16");
    EXPECT_EQ(NoteModeText(10), "Standard MIDI");
    EXPECT_EQ(NoteModeText(-1), "Standard MIDI");
}

TEST(NoteMode, NotesAreNamedFromCZero) {
    EXPECT_EQ(NoteName(60), "C5");
    EXPECT_EQ(NoteName(69), "A5");
    EXPECT_EQ(NoteName(61), "C#5");
    EXPECT_EQ(NoteName(127), "G10");
    EXPECT_EQ(NoteName(128), "");
    EXPECT_EQ(NoteName(-1), "");
}

TEST(NoteMode, TheDisplayShowsFrequencyAndName) {
    EXPECT_EQ(NoteFrequencyText(440.0, 57), "440.00Hz [A4]");
    EXPECT_EQ(NoteFrequencyText(43.654, 200), "43.65Hz []");
}

TEST(NoteMode, ThePitchKnobSpansAnOctaveEachWay) {
    EXPECT_EQ(PitchRatio(0.5), 1.0);
    EXPECT_NEAR(PitchRatio(0.0), 0.5, 1e-12);
    EXPECT_NEAR(PitchRatio(1.0), 2.0, 1e-12);
    EXPECT_NEAR(PitchRatio(0.75), std::sqrt(2.0), 1e-12);
    EXPECT_NEAR(PitchRatio(0.3), std::exp2(-0.4), 1e-12);
}

TEST(NoteMode, TheTuneKnobSpansASemitoneStraightInTheRatio) {
    EXPECT_EQ(TuneRatio(0.5), 1.0);
    EXPECT_NEAR(TuneRatio(1.0), std::exp2(1.0 / 12.0), 1e-12);
    EXPECT_NEAR(TuneRatio(0.0), 1.0 / 1.05946309435929531, 1e-15);
    EXPECT_DOUBLE_EQ(TuneRatio(0.75), 1.0 + 0.05946309435929531 * 0.5);
    EXPECT_DOUBLE_EQ(TuneRatio(0.25), 1.0 / (1.0 + 0.05946309435929531 * 0.5));
}

TEST(NoteMode, TheBendRangeRunsInTwoSemitoneSteps) {
    for (int i = 0; i <= 6; ++i)
        EXPECT_EQ(PitchBendSemitones(i / 6.0), 2.0 * i);
    EXPECT_EQ(PitchBendSemitones(-1.0), 0.0);
    EXPECT_EQ(PitchBendSemitones(3.0), 12.0);
    EXPECT_EQ(PitchBendRangeText(12.0), "+/- 12");
}

TEST(NoteMode, TwelveSemitonesMakeAnOctave) {
    EXPECT_NEAR(SemitoneRatio(12.0), 2.0, 1e-12);
    EXPECT_EQ(SemitoneRatio(0.0), 1.0);
}

} // namespace
} // namespace Grimworks
