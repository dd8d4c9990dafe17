#include "host/NoteName.h"

#include <gtest/gtest.h>

using namespace Grimworks;

TEST(NoteName, OctavesCountFromNoteZero) {
    EXPECT_EQ(NoteFromText("C0"), 0);
    EXPECT_EQ(NoteFromText("C2"), 24);
    EXPECT_EQ(NoteFromText("C5"), 60);
    EXPECT_EQ(NoteFromText("A5"), 69);
    EXPECT_EQ(NoteFromText("G10"), 127);
}

TEST(NoteName, SharpsFlatsAndSmallLettersAreUnderstood) {
    EXPECT_EQ(NoteFromText("f#4"), 54);
    EXPECT_EQ(NoteFromText("Gb4"), 54);
    EXPECT_EQ(NoteFromText("bb3"), 46);
    EXPECT_EQ(NoteFromText("Cb1"), 11);
}

TEST(NoteName, NumbersAreTakenAsTheyAre) {
    EXPECT_EQ(NoteFromText("0"), 0);
    EXPECT_EQ(NoteFromText("127"), 127);
}

TEST(NoteName, AnythingElseIsNoNote) {
    for (const char* text : {"", "C", "H2", "C-1", "-1", "128", "G#10", "Cb0", "C2x", "C##2", "2C", "C 2",
                             "C+2", "C99999999999", "99999999999"}) {
        EXPECT_EQ(NoteFromText(text), std::nullopt) << text;
    }
}

TEST(NoteName, EveryNoteReadsBackFromItsName) {
    EXPECT_EQ(NoteText(60), "C5");
    EXPECT_EQ(NoteText(1), "C#0");
    for (int note = 0; note < 128; ++note)
        EXPECT_EQ(NoteFromText(NoteText(note)), note);
}
