#include "voice/WaveNames.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>

using namespace Grimworks;

namespace {

constexpr std::array<const char*, 41> kNames{
    "Sine",          "Sawtooth",      "Pulse",      "QuadPulse",   "OctPulse",  "Triangle",
    "Trapez",        "X-Trapez",      "WhiteNoize", "PinkNoize",   "Noize",     "Low-Q Noise 1",
    "Low-Q Noise 2", "Low-Q Noise 3", "Wave-Scape", "Wave-Garden", "Wave-Vibe", "S-Receptor",
    "D-Receptor",    "Pyrokinesis",   "Shikoku",    "KIC 8462852", "Synapsis",  "Brick-Breaker",
    "Geo-Chirp",     "User1",         "User2",      "User3",       "User4",     "User5",
    "User6",         "User7",         "User8",      "User9",       "User10",    "User11",
    "User12",        "User13",        "User14",     "User15",      "User16"};

} // namespace

TEST(WaveNames, EveryIndexHasItsName) {
    for (int i = 0; i < 41; ++i)
        EXPECT_EQ(GetWaveName(i), kNames[static_cast<std::size_t>(i)]);
}

TEST(WaveNames, UnknownIndexIsCalledSine) {
    EXPECT_EQ(GetWaveName(-1), "Sine");
    EXPECT_EQ(GetWaveName(41), "Sine");
    EXPECT_EQ(GetWaveName(1000000), "Sine");
}

TEST(WaveNames, NamesReadBackAsTheirIndexButForTwo) {
    for (int i = 0; i < 41; ++i) {
        const int expected = i == 9 ? 0 : i == 16 ? 15 : i;
        EXPECT_EQ(GetWaveIndex(kNames[static_cast<std::size_t>(i)]), expected)
            << kNames[static_cast<std::size_t>(i)];
    }
}

TEST(WaveNames, PinkNoizeReadsAsTheSine) {
    EXPECT_EQ(GetWaveIndex("PinkNoize"), 0);
}

TEST(WaveNames, WaveVibeReadsAsWaveGarden) {
    EXPECT_EQ(GetWaveIndex("Wave-Vibe"), 15);
}

TEST(WaveNames, OlderSpellingsAreAccepted) {
    EXPECT_EQ(GetWaveIndex("LQ Noize 1"), 11);
    EXPECT_EQ(GetWaveIndex("LQ Noize 2"), 12);
    EXPECT_EQ(GetWaveIndex("LQ Noize 3"), 13);
    EXPECT_EQ(GetWaveIndex("Wavescape"), 14);
}

TEST(WaveNames, AnythingElseReadsAsTheSine) {
    for (const char* name :
         {"", " ", "sine", "SINE", "Saw", "Sawtooth ", " Sawtooth", "User", "User17", "User01"})
        EXPECT_EQ(GetWaveIndex(name), 0) << name;
}

TEST(WaveNames, ParameterValuesSelectByRounding) {
    for (int i = 0; i < 41; ++i) {
        EXPECT_EQ(WaveformIndex(i / 40.0), i);
        EXPECT_EQ(WaveformIndex((i + 0.49) / 40.0), i);
        EXPECT_EQ(WaveformIndex((i - 0.49) / 40.0), i);
    }
    EXPECT_EQ(WaveformIndex(std::nan("")), 0);
    EXPECT_LT(WaveformIndex(-1.0), 0);
    EXPECT_GT(WaveformIndex(2.0), 40);
}
