#include "voice/MultiSampler.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <span>
#include <vector>

namespace Grimworks {
namespace {

/// Nine constant clicks: entry i holds i + 1 and lasts i + 1 hundredths of a second.
class ClickSamples : public ::testing::Test {
protected:
    void SetUp() override {
        std::vector<std::span<const double>> spans;
        for (std::size_t i = 0; i < data.size(); ++i) {
            data[i].assign(441 * (i + 1), static_cast<double>(i + 1));
            spans.emplace_back(data[i]);
        }
        clicks = MakeClickSamples(spans);
    }

    std::array<std::vector<double>, 9> data;
    MultiSampler clicks;
};

TEST_F(ClickSamples, HaveASilentEntryInFrontOfTheNineClicks) {
    EXPECT_EQ(clicks.Count(), 10U);
    EXPECT_EQ(clicks.Value(0.0, 0.0), 0.0);
}

TEST_F(ClickSamples, AtOneTheLastClickPlaysAlone) {
    EXPECT_EQ(clicks.Value(0.0, 1.0), 9.0);
    EXPECT_EQ(clicks.Value(0.0899, 1.0), 9.0);
}

TEST_F(ClickSamples, BetweenTwoEntriesTheyCrossFade) {
    EXPECT_NEAR(clicks.Value(0.0, 1.0 / 9.0), 1.0, 1e-12);
    EXPECT_NEAR(clicks.Value(0.0, 0.5 / 9.0), 0.5, 1e-12); // half silence, half the first click
    EXPECT_NEAR(clicks.Value(0.0, 4.25 / 9.0), 4.0 * 0.75 + 5.0 * 0.25, 1e-12);
}

TEST_F(ClickSamples, ANoteThatOutlastsAClickReadsSilenceFromIt) {
    EXPECT_NEAR(clicks.Value(0.015, 1.0 / 9.0), 0.0, 1e-12);
    EXPECT_NEAR(clicks.Value(0.015, 1.5 / 9.0), 1.0, 1e-12); // only the second click is left
    EXPECT_EQ(clicks.Value(0.09, 1.0), 0.0);
    EXPECT_EQ(clicks.Value(60.0, 0.7), 0.0);
}

TEST_F(ClickSamples, APositionOutsideIsLimited) {
    EXPECT_EQ(clicks.Value(0.0, -3.0), 0.0);
    EXPECT_EQ(clicks.Value(0.0, 7.0), 9.0);
    EXPECT_EQ(clicks.Value(0.0, std::numeric_limits<double>::quiet_NaN()), 0.0);
}

TEST_F(ClickSamples, KeepTheirPitchAtAnyHostRate) {
    const double before = clicks.Value(0.0123, 0.6);
    clicks.SetSampleRate(192000.0);
    EXPECT_EQ(clicks.Value(0.0123, 0.6), before);
    EXPECT_GT(before, 0.0);
}

TEST(MultiSampler, AnEmptyListIsSilent) {
    EXPECT_EQ(MultiSampler().Value(0.0, 0.5), 0.0);
}

} // namespace
} // namespace Grimworks
