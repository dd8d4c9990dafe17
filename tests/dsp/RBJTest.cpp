#include "tests/dsp/FilterTestTools.h"

#include "dsp/RBJ.h"

using namespace Dsp;
using namespace DspTest;

namespace {

/// The cookbook's coefficients, worked out apart: b0, b1, b2, a0, a1, a2.
struct Cookbook {
    double b0, b1, b2, a0, a1, a2;
};

void ExpectSection(const Cascade<1>& cascade, const Cookbook& c) {
    ASSERT_EQ(cascade.numStages, 1);
    EXPECT_NEAR(cascade[0].b0, c.b0 / c.a0, 1e-12);
    EXPECT_NEAR(cascade[0].b1, c.b1 / c.a0, 1e-12);
    EXPECT_NEAR(cascade[0].b2, c.b2 / c.a0, 1e-12);
    EXPECT_NEAR(cascade[0].a1, c.a1 / c.a0, 1e-12);
    EXPECT_NEAR(cascade[0].a2, c.a2 / c.a0, 1e-12);
}

template <class Check>
void OverTheGrid(Check check) {
    for (const double rate : kRates) {
        for (int i = 0; i <= 24; ++i) {
            for (int k = 0; k <= 16; ++k)
                check(rate, CutoffAt(i / 24.0), std::exp2(8.0 * k / 16.0 - 4.0));
        }
    }
}

} // namespace

TEST(RBJ, CoefficientsMatchTheCookbookOverTheGrid) {
    RBJ::LowPass low;
    RBJ::HighPass high;
    RBJ::BandPass1 band;
    RBJ::BandStop stop;
    OverTheGrid([&](double rate, double f, double q) {
        const double w = 2.0 * kPi * Share(f, rate);
        const double c = std::cos(w);
        const double a = std::sin(w) / (2.0 * q);
        const Params params = Set({rate, f, q});
        low.setParams(params);
        high.setParams(params);
        band.setParams(params);
        stop.setParams(params);
        ExpectSection(low.cascade, {(1 - c) / 2, 1 - c, (1 - c) / 2, 1 + a, -2 * c, 1 - a});
        ExpectSection(high.cascade, {(1 + c) / 2, -1 - c, (1 + c) / 2, 1 + a, -2 * c, 1 - a});
        ExpectSection(band.cascade, {a * q, 0, -a * q, 1 + a, -2 * c, 1 - a});
        ExpectSection(stop.cascade, {1, -2 * c, 1, 1 + a, -2 * c, 1 - a});
    });
}

TEST(RBJ, PolesStayInsideTheUnitCircleOverTheGrid) {
    RBJ::LowPass low;
    RBJ::HighPass high;
    RBJ::BandPass1 band;
    RBJ::BandStop stop;
    OverTheGrid([&](double rate, double f, double q) {
        const Params params = Set({rate, f, q});
        low.setParams(params);
        high.setParams(params);
        band.setParams(params);
        stop.setParams(params);
        EXPECT_TRUE(IsStable(low.cascade)) << rate << " " << f << " " << q;
        EXPECT_TRUE(IsStable(high.cascade)) << rate << " " << f << " " << q;
        EXPECT_TRUE(IsStable(band.cascade)) << rate << " " << f << " " << q;
        EXPECT_TRUE(IsStable(stop.cascade)) << rate << " " << f << " " << q;
    });
}

TEST(RBJ, GainsAtTheTellingFrequencies) {
    for (const double q : {1.0 / 16.0, 0.5, 1.0, 4.0, 16.0}) {
        const Params params = Set({44100.0, 3000.0, q});
        const double fc = 3000.0 / 44100.0;
        RBJ::LowPass low;
        low.setParams(params);
        EXPECT_NEAR(Gain(low.cascade, 0.0), 1.0, 1e-9);
        EXPECT_NEAR(Gain(low.cascade, fc), q, 1e-9);
        EXPECT_NEAR(Gain(low.cascade, 0.5), 0.0, 1e-9);
        RBJ::HighPass high;
        high.setParams(params);
        EXPECT_NEAR(Gain(high.cascade, 0.5), 1.0, 1e-9);
        EXPECT_NEAR(Gain(high.cascade, fc), q, 1e-9);
        EXPECT_NEAR(Gain(high.cascade, 0.0), 0.0, 1e-9);
        RBJ::BandPass1 band;
        band.setParams(params);
        EXPECT_NEAR(Gain(band.cascade, fc), q, 1e-9);
        EXPECT_NEAR(Gain(band.cascade, 0.0), 0.0, 1e-9);
        RBJ::BandStop stop;
        stop.setParams(params);
        EXPECT_NEAR(Gain(stop.cascade, fc), 0.0, 1e-9);
        EXPECT_NEAR(Gain(stop.cascade, 0.0), 1.0, 1e-9);
        EXPECT_NEAR(Gain(stop.cascade, 0.5), 1.0, 1e-9);
    }
}

TEST(RBJ, LowestQIsStable) {
    RBJ::LowPass low;
    low.setParams(Set({44100.0, 11025.0, 1.0 / 16.0}));
    // sin(w0) is 1 here, so alpha is 8 and the second pole coefficient -7/9.
    EXPECT_NEAR(low.cascade[0].a2, -7.0 / 9.0, 1e-12);
    EXPECT_TRUE(IsStable(low.cascade));
}

TEST(RBJ, CutoffAtHalfTheRateIsTakenJustBelow) {
    RBJ::LowPass beyond;
    beyond.setParams(Set({22050.0, 22040.0, 1.0}));
    RBJ::LowPass below;
    below.setParams(Set({22050.0, 0.4999 * 22050.0, 1.0}));
    EXPECT_NEAR(beyond.cascade[0].a1, below.cascade[0].a1, 1e-15);
    EXPECT_NEAR(beyond.cascade[0].a2, below.cascade[0].a2, 1e-15);
    RBJ::LowPass exact;
    exact.setParams(Set({44080.0, 22040.0, 1.0}));
    EXPECT_TRUE(IsStable(exact.cascade));
}
