#include "tests/dsp/FilterTestTools.h"

#include "dsp/Designs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <type_traits>
#include <vector>

using namespace Dsp;
using namespace DspTest;

namespace {

static_assert(std::is_copy_constructible_v<ButterworthBandShelf>);

/// A lively input that needs no generator.
double Excitation(int i) {
    return 0.5 * std::sin(0.05 * i) + 0.3 * std::sin(0.4 * i + 1.0) + (i % 97 == 0 ? 0.2 : 0.0);
}

/// One channel of a filter worked sample by sample from bare sections, direct form II.
struct Reference {
    double w[4][2] = {};
    double vsa = 1e-8;

    template <int N>
    double Tick(const Cascade<N>& cascade, double x) {
        vsa = -vsa;
        for (int k = 0; k < cascade.numStages; ++k) {
            const Stage& s = cascade[k];
            double now = x - s.a1 * w[k][0] - s.a2 * w[k][1];
            if (k == 0) now += vsa;
            x = s.b0 * now + s.b1 * w[k][0] + s.b2 * w[k][1];
            w[k][1] = w[k][0];
            w[k][0] = now;
        }
        return x;
    }
};

template <class F>
std::vector<double> Play(F& filter, int start, int frames) {
    std::vector<double> left(static_cast<std::size_t>(frames));
    for (int i = 0; i < frames; ++i)
        left[static_cast<std::size_t>(i)] = Excitation(start + i);
    std::vector<double> right = left;
    std::array<double*, 2> channels{left.data(), right.data()};
    filter.process(frames, channels.data());
    EXPECT_EQ(left, right);
    return left;
}

/// Sweeps a fresh filter from one set to another in blocks of the given sizes and compares every sample with
/// a design made anew at each point of the straight line.
template <class Design>
void ExpectStraightSweep(const Params& from, const Params& to, int transition,
                         const std::vector<int>& blocks) {
    SmoothedFilterDesign<Design, 2, DirectFormII> filter;
    filter.setTransition(transition);
    filter.setParams(from);
    Design design;
    design.setParams(from);
    Reference reference;
    int position = 0;
    for (const double y : Play(filter, 0, 100))
        ASSERT_EQ(y, reference.Tick(design.cascade, Excitation(position++)));

    filter.setParams(to);
    int remaining = transition;
    Params current = from;
    Design target;
    target.setParams(to);
    for (const int frames : blocks) {
        std::array<double, 4> delta{};
        for (int k = 0; k < 4 && remaining > 0; ++k)
            delta[static_cast<std::size_t>(k)] = (to[k] - current[k]) / remaining;
        for (const double y : Play(filter, position, frames)) {
            const double x = Excitation(position++);
            if (remaining == 0) {
                ASSERT_EQ(y, reference.Tick(target.cascade, x)) << position;
                continue;
            }
            for (int k = 0; k < 4; ++k)
                current[k] += delta[static_cast<std::size_t>(k)];
            design.setParams(current);
            ASSERT_EQ(y, reference.Tick(design.cascade, x)) << position;
            const double done = 1.0 - (remaining - 1.0) / transition;
            for (int k = 0; k < 4; ++k)
                ASSERT_NEAR(current[k], from[k] + done * (to[k] - from[k]), 1e-9 * (1.0 + std::fabs(to[k])));
            --remaining;
        }
    }
    EXPECT_EQ(remaining, 0);
    EXPECT_EQ(filter.getRemainingSamples(), 0);
    EXPECT_EQ(filter.getCurrentParams(), to);
}

} // namespace

TEST(SmoothedFilterDesign, FirstParametersActAtOnce) {
    RbjLowPass filter;
    filter.setParams(Set({48000.0, 500.0, 2.0}));
    EXPECT_EQ(filter.getRemainingSamples(), 0);
    RBJ::LowPass design;
    design.setParams(Set({48000.0, 500.0, 2.0}));
    Reference reference;
    int position = 0;
    for (const double y : Play(filter, 0, 64))
        EXPECT_EQ(y, reference.Tick(design.cascade, Excitation(position++)));
}

TEST(SmoothedFilterDesign, ProcessBeforeAnyParametersUsesTheDefaults) {
    RbjLowPass filter;
    EXPECT_EQ(filter.getRemainingSamples(), -1);
    RBJ::LowPass design;
    design.setParams(Set({44100.0, 2000.0, 1.0}));
    Reference reference;
    int position = 0;
    for (const double y : Play(filter, 0, 64))
        EXPECT_EQ(y, reference.Tick(design.cascade, Excitation(position++)));
    EXPECT_EQ(filter.getRemainingSamples(), -1);
}

TEST(SmoothedFilterDesign, SweepIsTheStraightLineOver512SamplesAcrossBlocks) {
    ExpectStraightSweep<RBJ::LowPass>(Set({44100.0, 200.0, 1.0}), Set({44100.0, 9000.0, 8.0}), 512,
                                      {100, 64, 1, 300, 200, 64});
    ExpectStraightSweep<ChebyshevI::LowPass<4>>(Set({44100.0, 4.0, 8000.0, 0.5}),
                                                Set({44100.0, 4.0, 100.0, 9.0}), 512,
                                                {64, 64, 64, 64, 64, 64, 64, 64, 64});
    ExpectStraightSweep<Butterworth::BandPass<2>>(Set({44100.0, 2.0, 500.0, 200.0}),
                                                  Set({44100.0, 2.0, 12000.0, 3000.0}), 512, {1024});
}

TEST(SmoothedFilterDesign, SweepIsTheStraightLineOver2048SamplesAcrossBlocks) {
    ExpectStraightSweep<RBJ::BandStop>(Set({44100.0, 200.0, 1.0}), Set({44100.0, 9000.0, 8.0}), 2048,
                                       {1000, 37, 1000, 200});
    ExpectStraightSweep<ChebyshevI::HighPass<4>>(
        Set({48000.0, 2.0, 8000.0, 0.5}), Set({44100.0, 2.0, 100.0, 9.0}), 2048, {512, 512, 512, 512, 16});
    ExpectStraightSweep<Butterworth::LowShelf<2>>(Set({44100.0, 2.0, 500.0, -24.0}),
                                                  Set({44100.0, 2.0, 800.0, 24.0}), 2048, {2047, 1, 64});
}

TEST(SmoothedFilterDesign, OrdersInASweepAreTruncated) {
    ExpectStraightSweep<ChebyshevI::LowPass<4>>(Set({44100.0, 2.0, 800.0, 1.0}),
                                                Set({44100.0, 4.0, 800.0, 1.0}), 512, {256, 256, 32});
}

TEST(SmoothedFilterDesign, TheSameParametersAgainChangeNothing) {
    ChebyshevLowPass swept;
    ChebyshevLowPass still;
    const Params params = Set({44100.0, 2.0, 1000.0, 1.0});
    swept.setParams(params);
    still.setParams(params);
    swept.setParams(params);
    EXPECT_EQ(swept.getRemainingSamples(), 512);
    EXPECT_EQ(Play(swept, 0, 600), Play(still, 0, 600));
    EXPECT_EQ(swept.getRemainingSamples(), 0);
}

TEST(SmoothedFilterDesign, ASweepGoesOnInTheNextBlock) {
    RbjHighPass filter;
    filter.setParams(Set({44100.0, 1000.0, 1.0}));
    filter.setParams(Set({44100.0, 2024.0, 1.0}));
    Play(filter, 0, 200);
    EXPECT_EQ(filter.getRemainingSamples(), 312);
    EXPECT_NEAR(filter.getCurrentParams()[1], 1400.0, 1e-9);
    Play(filter, 200, 311);
    EXPECT_EQ(filter.getRemainingSamples(), 1);
    EXPECT_NEAR(filter.getCurrentParams()[1], 2022.0, 1e-9);
    Play(filter, 511, 1);
    EXPECT_EQ(filter.getRemainingSamples(), 0);
    EXPECT_EQ(filter.getCurrentParams()[1], 2024.0);
}

TEST(SmoothedFilterDesign, ANewTargetStartsAFreshCountFromWhereTheSweepStands) {
    RbjHighPass filter;
    filter.setParams(Set({44100.0, 1000.0, 1.0}));
    filter.setParams(Set({44100.0, 2024.0, 1.0}));
    Play(filter, 0, 256);
    const double middle = filter.getCurrentParams()[1];
    EXPECT_NEAR(middle, 1512.0, 1e-9);
    filter.setParams(Set({44100.0, 1000.0, 1.0}));
    EXPECT_EQ(filter.getRemainingSamples(), 512);
    EXPECT_EQ(filter.getCurrentParams()[1], middle);
    Play(filter, 256, 128);
    EXPECT_NEAR(filter.getCurrentParams()[1], middle - 128.0, 1e-9);
}

TEST(SmoothedFilterDesign, TheFifthParameterJumpsAtTheEnd) {
    ButterworthBandShelf filter;
    filter.setParams(Set({44100.0, 2.0, 2000.0, 1500.0, 0.0}));
    filter.setParams(Set({44100.0, 2.0, 2000.0, 1500.0, 12.0}));
    std::vector<double> left(600, 0.25);
    std::vector<double> right(600, 0.25);
    std::array<double*, 2> channels{left.data(), right.data()};
    filter.process(512, channels.data());
    // Flat until the sweep ends, apart from the anti-denormal term.
    for (int i = 0; i < 512; ++i)
        ASSERT_NEAR(left[static_cast<std::size_t>(i)], 0.25, 1e-6);
    EXPECT_EQ(filter.getCurrentParams()[4], 12.0);
    channels = {left.data() + 512, right.data() + 512};
    filter.process(88, channels.data());
    EXPECT_GT(std::fabs(left[513] - 0.25), 1e-3);
}

TEST(SmoothedFilterDesign, AStoredParameterIsHeardFromTheNextSweepOn) {
    RbjLowPass filter;
    filter.setParams(Set({44100.0, 1000.0, 1.0}));
    const auto response = filter.response(0.02);
    filter.setParam(ParamId::kSampleRate, 96000.0);
    Play(filter, 0, 64);
    EXPECT_EQ(filter.response(0.02), response);
    EXPECT_EQ(filter.getCurrentParams()[0], 44100.0);
    filter.setParams(filter.getParams());
    Play(filter, 64, 256);
    EXPECT_NEAR(filter.getCurrentParams()[0], (44100.0 + 96000.0) / 2.0, 1e-6);
}

TEST(SmoothedFilterDesign, TransitionLengthHoldsFromTheNextSweepOn) {
    RbjLowPass filter;
    filter.setParams(filter.getParams());
    filter.setParams(filter.getParams());
    EXPECT_EQ(filter.getRemainingSamples(), 512);
    filter.setTransition(2048);
    EXPECT_EQ(filter.getRemainingSamples(), 512);
    filter.setParams(filter.getParams());
    EXPECT_EQ(filter.getRemainingSamples(), 2048);
}

TEST(SmoothedFilterDesign, NothingIsDoneForNoFrames) {
    RbjLowPass filter;
    filter.setParams(Set({44100.0, 1000.0, 1.0}));
    filter.setParams(Set({44100.0, 3000.0, 1.0}));
    double sample = 0.25;
    std::array<double*, 2> channels{&sample, &sample};
    filter.process(0, channels.data());
    filter.process(-1, channels.data());
    EXPECT_EQ(sample, 0.25);
    EXPECT_EQ(filter.getRemainingSamples(), 512);
    EXPECT_EQ(filter.getCurrentParams()[1], 1000.0);
}

TEST(SmoothedFilterDesign, ASweepKeepsTheStateAndMakesNoClick) {
    ChebyshevLowPass filter;
    filter.setParams(Set({44100.0, 4.0, 8000.0, 1.0}));
    std::vector<double> left(4000);
    for (std::size_t i = 0; i < left.size(); ++i)
        left[i] = std::sin(2.0 * kPi * 200.0 * static_cast<double>(i) / 44100.0);
    std::vector<double> right = left;
    std::array<double*, 2> channels{left.data(), right.data()};
    filter.process(2000, channels.data());
    filter.setParams(Set({44100.0, 4.0, 4000.0, 1.0}));
    channels = {left.data() + 2000, right.data() + 2000};
    filter.process(2000, channels.data());
    // The second difference of a 200 Hz sine of this size is below 1e-3; a step would be a hundred times
    // that.
    for (std::size_t i = 1000; i + 1 < left.size(); ++i)
        ASSERT_LT(std::fabs(left[i + 1] - 2.0 * left[i] + left[i - 1]), 2e-3) << i;
}
