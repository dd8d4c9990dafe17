#include "voice/Sampler.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace Grimworks {
namespace {

Sampler Loaded(std::vector<double> samples, double rate) {
    Sampler sampler;
    sampler.Load(samples, rate);
    return sampler;
}

TEST(Sampler, InterpolatesByTime) {
    const Sampler sampler = Loaded({0.0, 1.0, -1.0, 0.5}, 4.0);
    EXPECT_EQ(sampler.Duration(), 1.0);
    EXPECT_EQ(sampler.Value(0.0), 0.0);
    EXPECT_EQ(sampler.Value(0.25), 1.0);
    EXPECT_EQ(sampler.Value(0.125), 0.5);
    EXPECT_EQ(sampler.Value(0.3125), 0.5);
    EXPECT_EQ(sampler.Value(0.75), 0.5);
}

TEST(Sampler, TheLastSampleHoldsUntilTheEnd) {
    const Sampler sampler = Loaded({0.0, 1.0, -1.0, 0.5}, 4.0);
    EXPECT_EQ(sampler.Value(0.9), 0.5);
    EXPECT_EQ(sampler.Value(std::nextafter(1.0, 0.0)), 0.5);
}

TEST(Sampler, IsSilentOutsideItsDuration) {
    const Sampler sampler = Loaded({0.5, 0.5, 0.5, 0.5}, 4.0);
    EXPECT_EQ(sampler.Value(1.0), 0.0);
    EXPECT_EQ(sampler.Value(100.0), 0.0);
    EXPECT_EQ(sampler.Value(-1e-9), 0.0);
    EXPECT_EQ(sampler.Value(std::numeric_limits<double>::infinity()), 0.0);
    EXPECT_EQ(sampler.Value(std::numeric_limits<double>::quiet_NaN()), 0.0);
}

TEST(Sampler, IsSilentBeforeItIsLoaded) {
    const Sampler sampler;
    EXPECT_EQ(sampler.Value(0.0), 0.0);
    EXPECT_EQ(Loaded({}, 44100.0).Value(0.0), 0.0);
}

TEST(Sampler, TheHostsRateDoesNotChangeItsTime) {
    Sampler sampler = Loaded({0.0, 1.0, 0.0, 0.0}, 44100.0);
    const double before = sampler.Value(0.7 / 44100.0);
    sampler.SetSampleRate(96000.0);
    EXPECT_EQ(sampler.SampleRate(), 96000.0);
    EXPECT_EQ(sampler.Value(0.7 / 44100.0), before);
    EXPECT_NEAR(before, 0.7, 1e-12);
}

TEST(Sampler, APositionRoundedUpToTheLengthReadsTheLastSample) {
    // Every time just below the end, over many lengths and rates: some of these products round up.
    int roundedUp = 0;
    for (int length = 1; length < 3000; ++length) {
        for (const double rate : {44100.0, 48000.0, 44099.0}) {
            const std::vector<double> ones(static_cast<std::size_t>(length), 1.0);
            const Sampler sampler = Loaded(ones, rate);
            const double justBefore = std::nextafter(length / rate, 0.0);
            if (justBefore * rate >= length) ++roundedUp;
            ASSERT_NEAR(sampler.Value(justBefore), 1.0, 1e-9) << length << " at " << rate;
        }
    }
    EXPECT_GT(roundedUp, 0);
}

TEST(Sampler, ARateThatIsNotPositiveChangesNothing) {
    Sampler sampler = Loaded({1.0, 1.0}, 2.0);
    const std::array<double, 1> other{0.25};
    sampler.Load(other, 0.0);
    EXPECT_EQ(sampler.Value(0.0), 1.0);
    EXPECT_EQ(sampler.Duration(), 1.0);
}

} // namespace
} // namespace Grimworks
