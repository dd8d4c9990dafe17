#include "voice/GwFilterPaulKellett.h"

#include "tests/voice/OscFilterResponses.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace Grimworks {
namespace {

TEST(GwFilterPaulKellett, ResponsesFollowTheRecursion) {
    for (const int mode : {0, 1, 2}) {
        for (const double cutoff : {0.0, 0.05, 0.3, 0.7, 1.0}) {
            for (const double resonance : {0.0, 0.5, 0.9}) {
                for (const double f : {1.0 / 400, 1.0 / 100, 1.0 / 20, 1.0 / 8, 0.4}) {
                    GwFilterPaulKellett filter(mode);
                    const Complex measured = MeasuredBySine(
                        [&](double x) { return filter.Process(x, cutoff, resonance); }, f, 30000, 4);
                    const Complex wanted = Responses::PaulKellett(mode, cutoff, resonance, f);
                    ASSERT_LT(std::abs(measured - wanted), 1e-6)
                        << mode << " " << cutoff << " " << resonance << " " << f;
                }
            }
        }
    }
}

TEST(GwFilterPaulKellett, IsStableOverTheWholeCutoffRangeBelowFullResonance) {
    for (const int mode : {0, 1, 2}) {
        for (int c = 0; c <= 20; ++c) {
            for (const double resonance : {0.0, 0.25, 0.5, 0.75, 0.9, 0.99}) {
                GwFilterPaulKellett filter(mode);
                // An input too small to matter keeps the filter from freezing.
                double early = std::fabs(filter.Process(1.0, c / 20.0, resonance));
                double late = 0.0;
                for (int n = 0; n < 1000; ++n)
                    early = std::max(early, std::fabs(filter.Process(1e-30, c / 20.0, resonance)));
                for (int n = 0; n < 60000; ++n)
                    filter.Process(1e-30, c / 20.0, resonance);
                for (int n = 0; n < 1000; ++n)
                    late = std::max(late, std::fabs(filter.Process(1e-30, c / 20.0, resonance)));
                ASSERT_LT(late, 0.02 * early) << mode << " " << c << " " << resonance;
                ASSERT_LT(early, 100.0);
            }
        }
    }
}

TEST(GwFilterPaulKellett, AboveFullResonanceItGrows) {
    GwFilterPaulKellett filter(GwFilterPaulKellett::kLowPass);
    double peak = 0.0;
    for (int n = 0; n < 5000; ++n)
        peak = std::max(peak, std::fabs(filter.Process(n == 0 ? 1.0 : 1e-30, 0.5, 1.1)));
    EXPECT_GT(peak, 1000.0);
}

TEST(GwFilterPaulKellett, CutoffZeroIsLowButNotClosed) {
    GwFilterPaulKellett filter(GwFilterPaulKellett::kLowPass);
    EXPECT_NEAR(filter.Process(1.0, 0.0, 0.0), 1e-8, 1e-20); // 0.01 to the fourth
    double y = 0.0;
    for (int n = 0; n < 5000; ++n)
        y = filter.Process(1.0, 0.0, 0.0);
    EXPECT_NEAR(y, 1.0, 1e-12);
}

TEST(GwFilterPaulKellett, CutoffOneIsNearlyOpen) {
    GwFilterPaulKellett filter(GwFilterPaulKellett::kLowPass);
    EXPECT_NEAR(filter.Process(1.0, 1.0, 0.0), std::pow(0.99, 4.0), 1e-15);
}

TEST(GwFilterPaulKellett, ZeroInputFreezesIt) {
    for (const int mode : {0, 1, 2}) {
        GwFilterPaulKellett filter(mode);
        GwFilterPaulKellett twin(mode);
        for (int n = 0; n < 50; ++n)
            EXPECT_EQ(filter.Process(0.5, 0.2, 0.6), twin.Process(0.5, 0.2, 0.6));
        for (int n = 0; n < 50; ++n) {
            EXPECT_EQ(filter.Process(0.0, 0.2, 0.6), 0.0);
            EXPECT_EQ(filter.Process(-0.0, 0.9, 0.1), 0.0);
        }
        EXPECT_EQ(filter.Process(0.25, 0.2, 0.6), twin.Process(0.25, 0.2, 0.6));
    }
}

TEST(GwFilterPaulKellett, HighPassPassesZeroAsZeroWhileFull) {
    GwFilterPaulKellett filter(GwFilterPaulKellett::kHighPass);
    for (int n = 0; n < 500; ++n)
        filter.Process(1.0, 0.2, 0.0);
    EXPECT_NEAR(filter.Process(1e-12, 0.2, 0.0), -1.0, 0.1);
    EXPECT_EQ(filter.Process(0.0, 0.2, 0.0), 0.0);
}

TEST(GwFilterPaulKellett, AnUnknownModeIsSilent) {
    GwFilterPaulKellett filter;
    for (const int mode : {3, 100, -1}) {
        filter.SetMode(mode);
        EXPECT_EQ(filter.Process(1.0, 0.5, 0.0), 0.0);
    }
    filter.SetMode(GwFilterPaulKellett::kLowPass);
    EXPECT_NE(filter.Process(1.0, 0.5, 0.0), 0.0);
}

TEST(GwFilterPaulKellett, ResetEmptiesIt) {
    GwFilterPaulKellett filter;
    const double first = filter.Process(1.0, 0.5, 0.4);
    filter.Process(-3.0, 0.5, 0.4);
    filter.Reset();
    EXPECT_EQ(filter.Process(1.0, 0.5, 0.4), first);
}

TEST(GwFilterPaulKellett, ItsCornerMovesWithTheSampleRate) {
    // Sample by sample nothing depends on the rate, so a sound of fixed frequency meets another response.
    const auto levelAt1kHz = [](double rate) {
        GwFilterPaulKellett filter;
        filter.SetSampleRate(rate);
        return std::abs(
            MeasuredBySine([&](double x) { return filter.Process(x, 0.2, 0.0); }, 1000.0 / rate, 2000, 100));
    };
    EXPECT_NEAR(levelAt1kHz(44100.0), std::abs(Responses::PaulKellett(0, 0.2, 0.0, 1000.0 / 44100.0)), 1e-3);
    EXPECT_GT(levelAt1kHz(96000.0), 1.2 * levelAt1kHz(44100.0));
}

} // namespace
} // namespace Grimworks
