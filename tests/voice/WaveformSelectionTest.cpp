#include "voice/WaveformSelection.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Grimworks {
namespace {

TEST(WaveformSelection, LiveWavesAndNoises) {
    struct Row {
        int index;
        bool useBlep;
        std::uint32_t waveform;
        double pulseWidth;
        double offset;
        NoiseKind noise;
    };
    for (const Row& row :
         {Row{0, true, 0, 0.5, 0.0, NoiseKind::None}, Row{1, true, 5, 0.5, 0.0, NoiseKind::None},
          Row{2, true, 4, 0.5, 0.0, NoiseKind::None}, Row{3, true, 4, 0.25, -0.5, NoiseKind::None},
          Row{4, true, 4, 0.125, -0.75, NoiseKind::None}, Row{5, true, 2, 0.5, 0.0, NoiseKind::None},
          Row{8, false, 0, 0.5, 0.0, NoiseKind::White}, Row{9, false, 0, 0.5, 0.0, NoiseKind::Pink}}) {
        const WaveformSelection selection = SelectWaveform(row.index);
        EXPECT_EQ(selection.useBlep, row.useBlep) << row.index;
        EXPECT_EQ(selection.waveform, row.waveform) << row.index;
        EXPECT_EQ(selection.pulseWidth, row.pulseWidth) << row.index;
        EXPECT_EQ(selection.offset, row.offset) << row.index;
        EXPECT_EQ(selection.noiseKind, row.noise) << row.index;
    }
}

TEST(WaveformSelection, EveryOtherIndexReadsItsTable) {
    for (const int index : {-40000, -1, 6, 7, 10, 24, 40, 41, 40000}) {
        const WaveformSelection selection = SelectWaveform(index);
        EXPECT_FALSE(selection.useBlep) << index;
        EXPECT_EQ(selection.noiseKind, NoiseKind::None) << index;
        EXPECT_EQ(selection.offset, 0.0) << index;
    }
}

TEST(WaveformSelection, NarrowPulsesReachOneAndMinusOne) {
    for (const int index : {2, 3, 4}) {
        const WaveformSelection selection = SelectWaveform(index);
        PolyBLEP blep;
        blep.waveform = selection.waveform;
        blep.pulseWidth = selection.pulseWidth;
        blep.offset = selection.offset;
        blep.phaseInc = 0.0001;
        blep.phase = selection.pulseWidth / 2.0;
        EXPECT_EQ(blep.Next(), 1.0) << index;
        blep.phase = 0.8;
        EXPECT_EQ(blep.Next(), -1.0) << index;
    }
}

} // namespace
} // namespace Grimworks
