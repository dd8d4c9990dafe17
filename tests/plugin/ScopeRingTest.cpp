#include "plugin/ScopeRing.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <limits>
#include <vector>

namespace Grimworks {

namespace {

/// A block whose signals tell sample and kind: sample n of kind k is n + k / 10.
class CountingBlock {
public:
    explicit CountingBlock(int frames) : count(frames) {
        const auto size = static_cast<std::size_t>(frames);
        for (auto* signal : {&left, &right, &volume, &filter})
            signal->resize(size);
        lfos.resize(size);
        for (std::size_t n = 0; n < size; ++n) {
            const auto at = static_cast<double>(n);
            left[n] = at;
            right[n] = at + 0.1;
            lfos[n] = {at + 0.2, at + 0.3, at + 0.4, 99.0, 99.0};
            volume[n] = at + 0.5;
            filter[n] = at + 0.6;
        }
    }

    ScopeRing::Block View() {
        return {{left.data(), right.data()}, lfos.data(), volume.data(), filter.data(), count};
    }

private:
    int count;
    std::vector<double> left;
    std::vector<double> right;
    std::vector<double> volume;
    std::vector<double> filter;
    std::vector<ModulationRecord> lfos;
};

/// A rate whose step is one sample an entry at zoom 1.
constexpr double kEverySample = 1000.0;

bool IsBlank(const ScopeRing::Entry& entry) {
    return entry.left == 0.0 && entry.right == 0.0 && entry.lfo1 == 0.0 && entry.lfo2 == 0.0 &&
           entry.lfo3 == 0.0 && entry.volumeEnv == 0.0 && entry.filterEnv == 0.0 && !entry.marker;
}

bool AllBlank(const ScopeRing& ring) {
    for (std::uint32_t i = 0; i < ScopeRing::kSize; ++i) {
        if (!IsBlank(ring.Read(i))) return false;
    }
    return true;
}

} // namespace

TEST(ScopeRing, StartsEmptyAndInMotion) {
    const ScopeRing ring;
    EXPECT_EQ(ring.WritePos(), 0U);
    EXPECT_EQ(ring.Zoom(), 1.0);
    EXPECT_EQ(ring.ZoomPercent(), 100);
    EXPECT_FALSE(ring.IsFrozen());
    EXPECT_TRUE(AllBlank(ring));
}

TEST(ScopeRing, AnEntryHoldsTheMeanOfTwoSamplesAndTheModulationOfTheFirst) {
    ScopeRing ring;
    CountingBlock block(3);
    ring.Feed(block.View(), kEverySample);
    ASSERT_EQ(ring.WritePos(), 3U);
    const ScopeRing::Entry second = ring.Read(1);
    EXPECT_DOUBLE_EQ(second.left, 1.5);
    EXPECT_DOUBLE_EQ(second.right, 1.6);
    EXPECT_DOUBLE_EQ(second.lfo1, 1.2);
    EXPECT_DOUBLE_EQ(second.lfo2, 1.3);
    EXPECT_DOUBLE_EQ(second.lfo3, 1.4);
    EXPECT_DOUBLE_EQ(second.volumeEnv, 1.5);
    EXPECT_DOUBLE_EQ(second.filterEnv, 1.6);
    EXPECT_FALSE(second.marker);
}

TEST(ScopeRing, TheLastSampleOfABlockStandsAlone) {
    ScopeRing ring;
    CountingBlock block(3);
    ring.Feed(block.View(), kEverySample);
    EXPECT_DOUBLE_EQ(ring.Read(2).left, 2.0);
    EXPECT_DOUBLE_EQ(ring.Read(2).right, 2.1);
}

TEST(ScopeRing, OneEntryStandsForAMillisecondAtZoomOne) {
    const ScopeRing ring;
    EXPECT_EQ(ring.Step(44100.0), 44);
    EXPECT_EQ(ring.Step(48000.0), 48);
    EXPECT_EQ(ring.Step(44999.9), 44);
}

TEST(ScopeRing, TheStepIsFourAtTheFinestZoomAndTheUsualRate) {
    ScopeRing ring;
    ring.SetZoom(true, 100);
    EXPECT_EQ(ring.Step(44100.0), 4);
    EXPECT_EQ(ring.Step(10000.0), 1);
}

TEST(ScopeRing, ARateThatIsTooLowForTheZoomFeedsEverySample) {
    ScopeRing ring;
    ring.SetZoom(true, 100);
    EXPECT_EQ(ring.Step(9999.0), 1);
    CountingBlock block(5);
    ring.Feed(block.View(), 1000.0);
    EXPECT_EQ(ring.WritePos(), 5U);
}

TEST(ScopeRing, TheStepRunsOnFromBlockToBlock) {
    ScopeRing ring;
    CountingBlock block(50); // at 20 samples a step: 0, 20, 40, 60, 80
    ring.Feed(block.View(), 20000.0);
    EXPECT_EQ(ring.WritePos(), 3U);
    ring.Feed(block.View(), 20000.0);
    EXPECT_EQ(ring.WritePos(), 5U);
    EXPECT_DOUBLE_EQ(ring.Read(3).left, 10.5);
    EXPECT_DOUBLE_EQ(ring.Read(4).left, 30.5);
}

TEST(ScopeRing, SamplesCountWhileTheScopeIsFrozen) {
    ScopeRing ring;
    CountingBlock block(15);
    ring.SetFrozen(true);
    ring.Feed(block.View(), 20000.0);
    EXPECT_EQ(ring.WritePos(), 0U);
    ring.SetFrozen(false);
    ring.Feed(block.View(), 20000.0); // the next twentieth sample is the sixth of this block
    ASSERT_EQ(ring.WritePos(), 21U);
    EXPECT_DOUBLE_EQ(ring.Read(20).left, 5.5);
}

TEST(ScopeRing, UnfreezingLeavesAGapOfTwentyColumns) {
    ScopeRing ring;
    CountingBlock block(1000);
    ring.Feed(block.View(), kEverySample);
    ASSERT_FALSE(IsBlank(ring.Read(1000)));
    ring.SetFrozen(true);
    EXPECT_EQ(ring.WritePos(), 1000U);
    ring.SetFrozen(false);
    EXPECT_EQ(ring.WritePos(), 1020U);
    for (std::uint32_t i = 1000; i < 1020; ++i)
        EXPECT_TRUE(IsBlank(ring.Read(i))) << i;
    EXPECT_FALSE(IsBlank(ring.Read(999)));
    EXPECT_FALSE(IsBlank(ring.Read(1020)));
}

TEST(ScopeRing, BlankingEmptiesTheRingAndKeepsThePosition) {
    ScopeRing ring;
    CountingBlock block(1500);
    ring.Feed(block.View(), kEverySample);
    ring.SetFrozen(true);
    ring.Blank();
    EXPECT_TRUE(AllBlank(ring));
    EXPECT_EQ(ring.WritePos(), 1500U);
}

TEST(ScopeRing, ClearingSparesAFrozenPicture) {
    ScopeRing ring;
    CountingBlock block(10);
    ring.Feed(block.View(), kEverySample);
    ring.SetFrozen(true);
    ring.Clear();
    EXPECT_FALSE(AllBlank(ring));
    ring.SetFrozen(false);
    ring.Clear();
    EXPECT_TRUE(AllBlank(ring));
}

TEST(ScopeRing, ALaterRoundReplacesTheOldestEntries) {
    ScopeRing ring;
    CountingBlock block(1001);
    ring.Feed(block.View(), kEverySample);
    EXPECT_DOUBLE_EQ(ring.Read(0).lfo1, 1000.2);
    EXPECT_DOUBLE_EQ(ring.Read(1).lfo1, 1.2);
}

TEST(ScopeRing, ZoomingInLowersTheZoomAndRaisesThePercent) {
    ScopeRing ring;
    ring.SetZoom(true, 1);
    EXPECT_DOUBLE_EQ(ring.Zoom(), 0.9);
    EXPECT_EQ(ring.ZoomPercent(), 110);
    ring.SetZoom(false, 4);
    EXPECT_DOUBLE_EQ(ring.Zoom(), 1.3);
    EXPECT_EQ(ring.ZoomPercent(), 70);
}

TEST(ScopeRing, AtItsLimitTheZoomStaysAndThePercentIsStillClamped) {
    ScopeRing ring;
    for (int i = 0; i < 9; ++i)
        ring.SetZoom(true, 1);
    EXPECT_NEAR(ring.Zoom(), 0.1, 1e-12);
    EXPECT_EQ(ring.ZoomPercent(), 190);
    ring.SetZoom(true, 4);
    EXPECT_EQ(ring.Zoom(), 0.1);
    EXPECT_EQ(ring.ZoomPercent(), 230);
    ring.SetZoom(true, 40);
    EXPECT_EQ(ring.Zoom(), 0.1);
    EXPECT_EQ(ring.ZoomPercent(), 400);
    ring.SetZoom(false, 100);
    EXPECT_EQ(ring.Zoom(), 4.0);
    EXPECT_EQ(ring.ZoomPercent(), 10);
}

TEST(ScopeRing, AnyNumberOfStepsEndsAtALimit) {
    ScopeRing ring;
    ring.SetZoom(true, std::numeric_limits<int>::max());
    EXPECT_EQ(ring.Zoom(), 0.1);
    EXPECT_EQ(ring.ZoomPercent(), 400);
    ring.SetZoom(true, std::numeric_limits<int>::min());
    EXPECT_EQ(ring.Zoom(), 4.0);
    EXPECT_EQ(ring.ZoomPercent(), 10);
}

} // namespace Grimworks
