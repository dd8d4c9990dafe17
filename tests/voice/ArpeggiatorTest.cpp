#include "voice/Arpeggiator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace Grimworks {
namespace {

constexpr double kRate = 44100.0;

double Semitones(int count) {
    return std::exp2(count / 12.0);
}

std::vector<double> Ratios(Arpeggiator& arpeggiator, int count) {
    std::vector<double> ratios;
    ratios.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        ratios.push_back(arpeggiator.Step());
    return ratios;
}

TEST(Arpeggiator, RestsAtOneInTheOtherModes) {
    Arpeggiator arpeggiator;
    EXPECT_EQ(arpeggiator.Step(), 1.0);
    arpeggiator.Reset(7, 120.0, kRate);
    EXPECT_FALSE(arpeggiator.IsActive());
    for (const double ratio : Ratios(arpeggiator, 5000))
        ASSERT_EQ(ratio, 1.0);
}

TEST(Arpeggiator, AStepIsASixtyFourthNote) {
    Arpeggiator arpeggiator;
    arpeggiator.Reset(8, 150.0, kRate);
    EXPECT_EQ(arpeggiator.StepSamples(), 1102U); // 60 / 150 / 16 s
}

TEST(Arpeggiator, StepsThroughTheTriadAndRoundAgain) {
    for (const int mode : {8, 9}) {
        const int third = mode == 8 ? 4 : 3;
        Arpeggiator arpeggiator;
        arpeggiator.Reset(mode, 120.0, kRate);
        const auto step = static_cast<int>(arpeggiator.StepSamples()); // 1378
        const std::vector<double> ratios = Ratios(arpeggiator, 6 * step);
        const int semitones[] = {0, third, 7, 0, third};
        for (int i = 0; i < 5; ++i) {
            const int end = (i + 1) * step;
            EXPECT_NEAR(ratios[static_cast<std::size_t>(end)], Semitones(semitones[i]), 1e-9)
                << mode << " " << i;
        }
        // The first value of a step is the one after the counter has passed its end.
        EXPECT_NEAR(ratios[static_cast<std::size_t>(step)], 1.0, 1e-12);
        const double first = 0.557694802 * Semitones(third) + 0.442305198;
        EXPECT_NEAR(ratios[static_cast<std::size_t>(step + 1)], first, 1e-12);
    }
}

TEST(Arpeggiator, ANewNoteGlidesOnFromTheLastRatio) {
    Arpeggiator arpeggiator;
    arpeggiator.Reset(8, 120.0, kRate);
    Ratios(arpeggiator, 2000); // on the third by now
    arpeggiator.Reset(8, 120.0, kRate);
    EXPECT_NEAR(arpeggiator.Step(), 0.557694802 + 0.442305198 * Semitones(4), 1e-12);
}

TEST(Arpeggiator, ATempoThatIsNotAboveZeroCountsAs120) {
    for (const double tempo : {0.0, -10.0, std::numeric_limits<double>::quiet_NaN()}) {
        Arpeggiator arpeggiator;
        arpeggiator.Reset(8, tempo, kRate);
        EXPECT_EQ(arpeggiator.StepSamples(), 1378U) << tempo;
    }
}

TEST(Arpeggiator, ExtremeTemposKeepTheStepWithinItsRange) {
    Arpeggiator arpeggiator;
    arpeggiator.Reset(9, 1e-300, kRate);
    EXPECT_EQ(arpeggiator.StepSamples(), 2147483647U);
    EXPECT_EQ(Ratios(arpeggiator, 100).back(), 1.0);
    arpeggiator.Reset(9, std::numeric_limits<double>::infinity(), kRate);
    EXPECT_EQ(arpeggiator.StepSamples(), 0U);
    for (const double ratio : Ratios(arpeggiator, 1000))
        ASSERT_TRUE(ratio > 0.99 && ratio < 1.5);
    // No length at all: no beat at a rate without end.
    arpeggiator.Reset(9, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity());
    EXPECT_EQ(arpeggiator.StepSamples(), 0U);
}

} // namespace
} // namespace Grimworks
