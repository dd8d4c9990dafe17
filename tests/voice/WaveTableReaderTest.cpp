#include "voice/WaveTableReader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Grimworks {
namespace {

/// A ladder whose level i holds i * 10000 + index, with top frequencies 0.001, 0.002, 0.004 and so on.
void Fill(WaveTableSet& set, int levels) {
    set.count = levels;
    for (int i = 0; i < levels; ++i) {
        WaveTableLevel& level = set.levels[static_cast<std::size_t>(i)];
        level.topFrequency = 0.001 * std::pow(2.0, i);
        level.samples = std::make_unique<std::array<double, kWaveSize>>();
        for (std::size_t k = 0; k < kWaveSize; ++k)
            (*level.samples)[k] = 10000.0 * i + static_cast<double>(k);
    }
}

double LevelReadAt(WaveTableReader& reader, double increment) {
    reader.phase = 0.0;
    reader.phaseInc = increment;
    return reader.Tick() / 10000.0;
}

TEST(WaveTableReader, WithoutASetItIsSilentAndMovesOn) {
    WaveTableReader reader;
    reader.phaseInc = 0.375;
    EXPECT_EQ(reader.Tick(), 0.0);
    EXPECT_EQ(reader.phase, 0.375);
    const WaveTableSet empty;
    reader.set = &empty;
    EXPECT_EQ(reader.Tick(), 0.0);
    EXPECT_EQ(reader.Tick(), 0.0);
    EXPECT_EQ(reader.phase, 0.125);
}

TEST(WaveTableReader, InterpolatesBetweenNeighbours) {
    WaveTableSet set;
    Fill(set, 1);
    WaveTableReader reader;
    reader.set = &set;
    reader.phase = 100.25 / kWaveSize;
    EXPECT_EQ(reader.Tick(), 100.25);
    reader.phase = 4095.0 / kWaveSize;
    EXPECT_EQ(reader.Tick(), 4095.0);
}

TEST(WaveTableReader, TheLastSampleRunsIntoTheFirst) {
    WaveTableSet set;
    Fill(set, 1);
    WaveTableReader reader;
    reader.set = &set;
    reader.phase = 4095.5 / kWaveSize;
    EXPECT_EQ(reader.Tick(), 4095.0 / 2.0);
}

TEST(WaveTableReader, ThePhaseWrapsToItsFraction) {
    WaveTableSet set;
    Fill(set, 1);
    WaveTableReader reader;
    reader.set = &set;
    reader.phase = 0.75;
    reader.phaseInc = 0.5;
    EXPECT_EQ(reader.Tick(), 0.75 * kWaveSize);
    EXPECT_EQ(reader.phase, 0.25);
    reader.phaseInc = 2.5;
    reader.Tick();
    EXPECT_EQ(reader.phase, 0.75);
}

TEST(WaveTableReader, TheIncrementChoosesTheLevelOnEachSample) {
    WaveTableSet set;
    Fill(set, 4);
    WaveTableReader reader;
    reader.set = &set;
    EXPECT_EQ(LevelReadAt(reader, 0.0), 0.0);
    EXPECT_EQ(LevelReadAt(reader, std::nextafter(0.001, 0.0)), 0.0);
    EXPECT_EQ(LevelReadAt(reader, 0.001), 1.0); // a level ends at its top frequency
    EXPECT_EQ(LevelReadAt(reader, 0.003), 2.0);
    EXPECT_EQ(LevelReadAt(reader, 0.004), 3.0);
    EXPECT_EQ(LevelReadAt(reader, 0.0005), 0.0);
}

TEST(WaveTableReader, BeyondTheTopTheLastLevelPlays) {
    WaveTableSet set;
    Fill(set, 3);
    WaveTableReader reader;
    reader.set = &set;
    EXPECT_EQ(LevelReadAt(reader, 0.9), 2.0);
}

TEST(WaveTableReader, ABrokenPhaseReadsTheStartOfTheWave) {
    WaveTableSet set;
    Fill(set, 1);
    (*set.levels[0].samples)[0] = 5.0;
    WaveTableReader reader;
    reader.set = &set;
    for (const double phase :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), -0.5, 1.0}) {
        reader.phase = phase;
        EXPECT_EQ(reader.Tick(), 5.0) << phase;
    }
}

TEST(WaveTableReader, ANewRateKeepsTheFrequency) {
    WaveTableReader reader;
    reader.phaseInc = 441.0 / 44100.0;
    reader.SetSampleRate(48000.0);
    EXPECT_DOUBLE_EQ(reader.phaseInc * 48000.0, 441.0);
    reader.SetSampleRate(-1.0);
    EXPECT_EQ(reader.sampleRate, 48000.0);
}

} // namespace
} // namespace Grimworks
