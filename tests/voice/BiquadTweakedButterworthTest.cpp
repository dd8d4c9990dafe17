#include "voice/BiquadTweakedButterworth.h"

#include "tests/voice/OscFilterResponses.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace Grimworks {
namespace {

using HighPass = BiquadTweakedButterworthHP<double>;
using LowPass = BiquadTweakedButterworthLP<double>;

template <class Filter>
std::vector<double> ImpulseResponse(Filter& filter, double cutoff, double resonance, int length) {
    std::vector<double> response(static_cast<std::size_t>(length), 0.0);
    response[0] = 1.0;
    for (double& sample : response)
        sample = filter.Process(sample, cutoff, resonance);
    return response;
}

Complex At(const std::vector<double>& response, double f) {
    Complex sum = 0.0;
    for (std::size_t n = 0; n < response.size(); ++n)
        sum += response[n] * std::polar(1.0, -2.0 * kPi * f * static_cast<double>(n));
    return sum;
}

template <class Filter>
void ExpectResponses(bool highPass) {
    for (const double cutoff : {0.02, 0.1, 0.5, 0.53, 0.9, 1.0}) {
        for (const double resonance : {0.0, 0.5, 0.9}) {
            Filter filter;
            const std::vector<double> response = ImpulseResponse(filter, cutoff, resonance, 12000);
            for (const double f : {0.0, 0.001, 0.0096, 0.05, 0.24, 0.4, 0.5}) {
                const Complex wanted = Responses::Butterworth(highPass, cutoff, resonance, f);
                ASSERT_LT(std::abs(At(response, f) - wanted), 1e-9) << cutoff << " " << resonance << " " << f;
            }
        }
    }
}

TEST(BiquadTweakedButterworth, ImpulseResponsesFollowTheRecursion) {
    ExpectResponses<HighPass>(true);
    ExpectResponses<LowPass>(false);
}

TEST(BiquadTweakedButterworth, WithoutResonanceTheyAreTheAnalogueCurve) {
    for (const double cutoff : {0.1, 0.5, 0.9}) {
        HighPass high;
        LowPass low;
        const std::vector<double> highResponse = ImpulseResponse(high, cutoff, 0.0, 4000);
        const std::vector<double> lowResponse = ImpulseResponse(low, cutoff, 0.0, 4000);
        for (const double f : {0.01, 0.1, cutoff * 0.4785, 0.45}) {
            const double ratio = std::tan(kPi * f) / std::tan(kPi * cutoff * 0.4785);
            EXPECT_NEAR(std::norm(At(lowResponse, f)), 1.0 / (1.0 + std::pow(ratio, 4.0)), 1e-9);
            EXPECT_NEAR(std::norm(At(highResponse, f)), 1.0 / (1.0 + std::pow(ratio, -4.0)), 1e-9);
        }
    }
}

/// Peak of the answer to an impulse early on, and again after `wait` samples.
template <class Filter>
std::pair<double, double> EarlyAndLate(double cutoff, double resonance, int window, int wait) {
    Filter filter;
    double early = std::fabs(filter.Process(1.0, cutoff, resonance));
    for (int n = 0; n < window; ++n)
        early = std::max(early, std::fabs(filter.Process(0.0, cutoff, resonance)));
    for (int n = 0; n < wait; ++n)
        filter.Process(0.0, cutoff, resonance);
    double late = 0.0;
    for (int n = 0; n < window; ++n)
        late = std::max(late, std::fabs(filter.Process(0.0, cutoff, resonance)));
    return {early, late};
}

TEST(BiquadTweakedButterworth, IsStableOverTheWholeCutoffRangeBelowFullResonance) {
    for (int c = 0; c <= 20; ++c) {
        for (const double resonance : {0.0, 0.25, 0.5, 0.75, 0.9, 0.99}) {
            // At the lowest cutoff one swing takes 10000 samples.
            const int window = c == 0 ? 10000 : 500;
            const int wait = c == 0 ? 200000 : 20000;
            const auto [highEarly, highLate] = EarlyAndLate<HighPass>(c / 20.0, resonance, window, wait);
            const auto [lowEarly, lowLate] = EarlyAndLate<LowPass>(c / 20.0, resonance, window, wait);
            ASSERT_LT(highLate, 0.5 * highEarly) << c << " " << resonance;
            ASSERT_LT(lowLate, 0.5 * lowEarly) << c << " " << resonance;
            ASSERT_LT(highEarly, 2.0);
            ASSERT_LT(lowEarly, 2.0);
        }
    }
}

TEST(BiquadTweakedButterworth, AtFullResonanceTheHighPassRingsOnAndTheLowPassDecays) {
    const auto [highEarly, highLate] = EarlyAndLate<HighPass>(0.3, 1.0, 500, 20000);
    EXPECT_NEAR(highLate / highEarly, 1.0, 0.3);
    EXPECT_GT(highLate, 0.1);
    const auto [lowEarly, lowLate] = EarlyAndLate<LowPass>(0.3, 1.0, 500, 20000);
    EXPECT_LT(lowLate, 1e-6 * lowEarly);
}

TEST(BiquadTweakedButterworth, CutoffZeroIsATenThousandthOfTheRate) {
    LowPass atZero;
    LowPass atLimit;
    for (int n = 0; n < 1000; ++n)
        EXPECT_EQ(atZero.Process(1.0, 0.0, 0.0), atLimit.Process(1.0, 0.0002, 0.0));
    LowPass filter;
    const Complex measured =
        MeasuredBySine([&](double x) { return filter.Process(x, 0.0, 0.0); }, 0.0001, 30000, 1);
    EXPECT_NEAR(std::abs(measured), std::sqrt(0.5), 1e-4);
}

TEST(BiquadTweakedButterworth, KeepsItsShareOfTheSampleRate) {
    // -3 dB at 0.4785 of the rate times the cutoff, in Hz, at any rate.
    for (const double rate : {44100.0, 96000.0}) {
        LowPass filter;
        filter.SetSampleRate(rate);
        const std::vector<double> response = ImpulseResponse(filter, 0.25, 0.0, 3000);
        const double corner = 0.25 * 0.4785 * rate;
        EXPECT_NEAR(std::norm(At(response, corner / rate)), 0.5, 1e-9);
    }
}

TEST(BiquadTweakedButterworth, AModeChangesNothing) {
    HighPass plain;
    HighPass other;
    other.SetMode(2);
    for (int n = 0; n < 100; ++n)
        EXPECT_EQ(plain.Process(n % 7 - 3.0, 0.3, 0.5), other.Process(n % 7 - 3.0, 0.3, 0.5));
}

TEST(BiquadTweakedButterworth, ResetEmptiesIt) {
    LowPass filter;
    const double first = filter.Process(1.0, 0.4, 0.5);
    filter.Process(-3.0, 0.4, 0.5);
    filter.Reset();
    EXPECT_EQ(filter.Process(1.0, 0.4, 0.5), first);
}

TEST(BiquadTweakedButterworth, AReturningCutoffGivesTheSameCoefficients) {
    // Two filters meet the same inputs; one of them sees every other cutoff before.
    LowPass filter;
    filter.Process(0.0, 0.9, 0.1);
    filter.Process(0.0, 0.4, 0.5);
    LowPass fresh;
    for (int n = 0; n < 10; ++n)
        EXPECT_EQ(filter.Process(1.0, 0.4, 0.5), fresh.Process(1.0, 0.4, 0.5));
}

} // namespace
} // namespace Grimworks
