#include "tests/dsp/FilterTestTools.h"

#include "dsp/Butterworth.h"

using namespace Dsp;
using namespace DspTest;

namespace {

constexpr double kRate = 48000.0;

double BandPassMagnitude(double analog) {
    return 1.0 / std::sqrt(1.0 + std::pow(analog, 4.0));
}

/// |H|^2 = (W^4 + g^4) / (W^4 + g^-4) of a second-order shelf with g^4 the gain.
double ShelfMagnitude(double analog, double decibels) {
    const double g4 = std::pow(10.0, decibels / 20.0);
    const double w4 = std::pow(analog, 4.0);
    return std::sqrt((w4 + g4) / (w4 + 1.0 / g4));
}

/// u (z^2 - 2 alpha z + 1)^2 + v (z^2 - 2 alpha z + 1)(z^2 - 1) + w (z^2 - 1)^2, highest power first.
std::vector<double> BandPolynomial(double u, double v, double w, double alpha) {
    const std::vector<double> centre{1.0, -2.0 * alpha, 1.0};
    const std::vector<double> ends{1.0, 0.0, -1.0};
    const auto a = Multiply(centre, centre);
    const auto b = Multiply(centre, ends);
    const auto c = Multiply(ends, ends);
    std::vector<double> sum(5);
    for (std::size_t i = 0; i < 5; ++i)
        sum[i] = u * a[i] + v * b[i] + w * c[i];
    return sum;
}

std::vector<double> DividedBy(std::vector<double> values, double divisor) {
    for (double& v : values)
        v /= divisor;
    return values;
}

template <class Check>
void OverTheBandGrid(Check check) {
    for (const double rate : kRates) {
        for (int i = 0; i <= 24; ++i) {
            for (int k = 0; k <= 24; ++k)
                check(rate, i, k);
        }
    }
}

/// Where the widest band meets a cutoff at the end of its range a pair of poles comes to lie on the circle,
/// beneath a pair of zeros.
bool IsKnownCorner(double rate, double f, double bandwidth) {
    const double b = 1.0 / std::tan(kPi * Share(bandwidth, rate));
    const double fc = Share(f, rate);
    const double gap = b * std::min(1.0 - std::cos(2.0 * kPi * fc), 1.0 + std::cos(2.0 * kPi * fc));
    return gap < 1e-7;
}

} // namespace

TEST(Butterworth, BandPassHasTheClosedForm) {
    Butterworth::BandPass<2> design;
    for (const double rate : kRates) {
        for (const double f : {50.0, 800.0, 4000.0, 9000.0}) {
            for (const double bandwidth : {100.0, 1720.0, 9000.0}) {
                design.setParams(Set({rate, 2.0, f, bandwidth}));
                const double b = 1.0 / std::tan(kPi * bandwidth / rate);
                const double alpha = std::cos(2.0 * kPi * f / rate);
                const double lead = b * b + std::numbers::sqrt2 * b + 1.0;
                ASSERT_EQ(design.cascade.numStages, 2);
                ExpectPolynomial(Denominator(design.cascade),
                                 DividedBy(BandPolynomial(b * b, std::numbers::sqrt2 * b, 1.0, alpha), lead),
                                 1e-9);
                ExpectPolynomial(Numerator(design.cascade),
                                 DividedBy(BandPolynomial(0.0, 0.0, 1.0, alpha), lead), 1e-9);
            }
        }
    }
}

TEST(Butterworth, BandStopHasTheClosedForm) {
    Butterworth::BandStop<2> design;
    for (const double rate : kRates) {
        for (const double f : {50.0, 800.0, 4000.0, 9000.0}) {
            for (const double bandwidth : {100.0, 1720.0, 9000.0}) {
                design.setParams(Set({rate, 2.0, f, bandwidth}));
                const double b = 1.0 / std::tan(kPi * bandwidth / rate);
                const double alpha = std::cos(2.0 * kPi * f / rate);
                const double lead = b * b + std::numbers::sqrt2 * b + 1.0;
                ExpectPolynomial(Denominator(design.cascade),
                                 DividedBy(BandPolynomial(b * b, std::numbers::sqrt2 * b, 1.0, alpha), lead),
                                 1e-9);
                ExpectPolynomial(Numerator(design.cascade),
                                 DividedBy(BandPolynomial(b * b, 0.0, 0.0, alpha), lead), 1e-9);
            }
        }
    }
}

TEST(Butterworth, SectionsGoFromTheLowerEdgeToTheUpper) {
    Butterworth::BandPass<2> pass;
    Butterworth::BandStop<2> stop;
    for (int i = 1; i < 24; ++i) {
        for (int k = 1; k < 24; ++k) {
            const Params params = Set({44100.0, 2.0, CutoffAt(i / 24.0), CutoffAt(k / 24.0)});
            pass.setParams(params);
            stop.setParams(params);
            const auto cosine = [](const Stage& s) { return -s.a1 / (2.0 * std::sqrt(s.a2)); };
            EXPECT_GE(cosine(pass.cascade[0]), cosine(pass.cascade[1]));
            EXPECT_GE(cosine(stop.cascade[0]), cosine(stop.cascade[1]));
            // Zeros at +1, +1 below and at -1, -1 above.
            EXPECT_EQ(pass.cascade[0].b1, -2.0 * pass.cascade[0].b0);
            EXPECT_EQ(pass.cascade[0].b2, pass.cascade[0].b0);
            EXPECT_EQ(pass.cascade[1].b1, 2.0);
            EXPECT_EQ(pass.cascade[1].b2, 1.0);
        }
    }
}

TEST(Butterworth, BandFiltersFollowTheDefiningMagnitude) {
    Butterworth::BandPass<2> pass;
    Butterworth::BandStop<2> stop;
    for (const double fc : {0.05, 0.2, 0.24, 0.26, 0.4}) {
        for (const double bw : {0.01, 0.1, 0.3}) {
            pass.setParams(Set({kRate, 2.0, fc * kRate, bw * kRate}));
            stop.setParams(Set({kRate, 2.0, fc * kRate, bw * kRate}));
            for (int i = 1; i < 100; ++i) {
                const double f = i / 200.0;
                const double analog = BandAnalog(f, fc, bw);
                EXPECT_NEAR(Gain(pass.cascade, f), BandPassMagnitude(analog), 1e-9);
                const double inverse = std::pow(analog, 4.0) / (1.0 + std::pow(analog, 4.0));
                EXPECT_NEAR(Gain(stop.cascade, f), std::sqrt(inverse), 1e-8);
            }
            EXPECT_NEAR(Gain(pass.cascade, fc), 1.0, 1e-9);
            EXPECT_NEAR(Gain(stop.cascade, fc), 0.0, 1e-9);
            EXPECT_NEAR(Gain(stop.cascade, 0.0), 1.0, 1e-9);
            EXPECT_NEAR(Gain(stop.cascade, 0.5), 1.0, 1e-9);
        }
    }
}

TEST(Butterworth, BandEdgesAreAtMinusThreeDecibelsOneBandwidthApart) {
    Butterworth::BandPass<2> pass;
    const double fc = 0.1;
    const double bw = 0.05;
    pass.setParams(Set({kRate, 2.0, fc * kRate, bw * kRate}));
    // b (alpha - cos w) = -+ sin w, solved by bisection on each side of the centre.
    const auto edge = [&](double low, double high, double target) {
        for (int i = 0; i < 200; ++i) {
            const double middle = 0.5 * (low + high);
            (BandAnalog(middle, fc, bw) < target ? low : high) = middle;
        }
        return low;
    };
    const double lower = edge(1e-6, fc, -1.0);
    const double upper = edge(fc, 0.4999, 1.0);
    EXPECT_NEAR(upper - lower, bw, 1e-12);
    EXPECT_NEAR(Gain(pass.cascade, lower), std::sqrt(0.5), 1e-9);
    EXPECT_NEAR(Gain(pass.cascade, upper), std::sqrt(0.5), 1e-9);
}

TEST(Butterworth, ShelvesFollowTheDefiningMagnitude) {
    Butterworth::LowShelf<2> low;
    Butterworth::HighShelf<2> high;
    Butterworth::BandShelf<2> band;
    for (const double decibels : {-24.0, -6.0, -0.1, 0.1, 3.0, 24.0}) {
        for (const double fc : {0.01, 0.09, 0.24, 0.26, 0.4}) {
            low.setParams(Set({kRate, 2.0, fc * kRate, decibels}));
            high.setParams(Set({kRate, 2.0, fc * kRate, decibels}));
            band.setParams(Set({kRate, 2.0, fc * kRate, 0.05 * kRate, decibels}));
            for (int i = 1; i < 100; ++i) {
                const double f = i / 200.0;
                const double analog = LowPassAnalog(f, fc);
                EXPECT_NEAR(Gain(low.cascade, f), ShelfMagnitude(analog, decibels), 1e-9);
                EXPECT_NEAR(Gain(high.cascade, f), ShelfMagnitude(1.0 / analog, decibels), 1e-9);
                EXPECT_NEAR(Gain(band.cascade, f), ShelfMagnitude(BandAnalog(f, fc, 0.05), decibels), 1e-9);
            }
        }
    }
}

TEST(Butterworth, ShelfGainsAtTheEndsAndTheCorner) {
    for (const double decibels : {-24.0, -11.0, 0.0, 5.0, 24.0}) {
        const double gain = std::pow(10.0, decibels / 20.0);
        Butterworth::LowShelf<2> low;
        low.setParams(Set({44100.0, 2.0, 400.0, decibels}));
        EXPECT_NEAR(Gain(low.cascade, 0.0), gain, 1e-9);
        EXPECT_NEAR(Gain(low.cascade, 0.5), 1.0, 1e-9);
        EXPECT_NEAR(Gain(low.cascade, 400.0 / 44100.0), std::sqrt(gain), 1e-9);
        Butterworth::HighShelf<2> high;
        high.setParams(Set({44100.0, 2.0, 4000.0, decibels}));
        EXPECT_NEAR(Gain(high.cascade, 0.5), gain, 1e-9);
        EXPECT_NEAR(Gain(high.cascade, 0.0), 1.0, 1e-9);
        EXPECT_NEAR(Gain(high.cascade, 4000.0 / 44100.0), std::sqrt(gain), 1e-9);
        for (const double centre : {2000.0, 15000.0}) {
            Butterworth::BandShelf<2> band;
            band.setParams(Set({44100.0, 2.0, centre, 1500.0, decibels}));
            EXPECT_NEAR(Gain(band.cascade, centre / 44100.0), gain, 1e-9);
            EXPECT_NEAR(Gain(band.cascade, 0.0), 1.0, 1e-9);
            EXPECT_NEAR(Gain(band.cascade, 0.5), 1.0, 1e-9);
        }
    }
}

TEST(Butterworth, ShelvesOfNoDecibelsAreFlat) {
    Butterworth::LowShelf<2> low;
    Butterworth::BandShelf<2> band;
    low.setParams(Set({44100.0, 2.0, 400.0, 0.0}));
    band.setParams(Set({44100.0, 2.0, 2000.0, 1500.0, 0.0}));
    EXPECT_EQ(low.cascade[0].b0, 1.0);
    EXPECT_EQ(low.cascade[0].b1, low.cascade[0].a1);
    EXPECT_EQ(low.cascade[0].b2, low.cascade[0].a2);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(band.cascade[i].b1, band.cascade[i].a1);
        EXPECT_EQ(band.cascade[i].b2, band.cascade[i].a2);
    }
}

TEST(Butterworth, FirstOrderHasTheClosedForm) {
    Butterworth::BandPass<2> pass;
    Butterworth::BandStop<2> stop;
    Butterworth::LowShelf<2> shelf;
    for (const double fc : {0.01, 0.1, 0.3}) {
        for (const double bw : {0.02, 0.2, 0.45}) {
            pass.setParams(Set({kRate, 1.0, fc * kRate, bw * kRate}));
            stop.setParams(Set({kRate, 1.0, fc * kRate, bw * kRate}));
            ASSERT_EQ(pass.cascade.numStages, 1);
            const double b = 1.0 / std::tan(kPi * bw);
            const double alpha = std::cos(2.0 * kPi * fc);
            const std::vector<double> poles{1.0, -2.0 * alpha * b / (b + 1.0), (b - 1.0) / (b + 1.0)};
            ExpectPolynomial(Denominator(pass.cascade), poles, 1e-9);
            ExpectPolynomial(Denominator(stop.cascade), poles, 1e-9);
            ExpectPolynomial(Numerator(pass.cascade), DividedBy({1.0, 0.0, -1.0}, b + 1.0), 1e-9);
            ExpectPolynomial(Numerator(stop.cascade), DividedBy({b, -2.0 * alpha * b, b}, b + 1.0), 1e-9);
        }
        shelf.setParams(Set({kRate, 1.0, fc * kRate, 12.0}));
        const double g = std::pow(10.0, 12.0 / 40.0);
        const double k = std::tan(kPi * fc);
        const double lead = 1.0 + k / g;
        ExpectPolynomial(Denominator(shelf.cascade), {1.0, (k / g - 1.0) / lead, 0.0}, 1e-9);
        ExpectPolynomial(Numerator(shelf.cascade), {(1.0 + k * g) / lead, (k * g - 1.0) / lead, 0.0}, 1e-9);
    }
}

TEST(Butterworth, PolesStayInsideTheUnitCircleOverTheGrid) {
    Butterworth::BandPass<2> pass;
    Butterworth::BandStop<2> stop;
    int corners = 0;
    int checked = 0;
    OverTheBandGrid([&](double rate, int i, int k) {
        const double f = CutoffAt(i / 24.0);
        const double bandwidth = CutoffAt(k / 24.0);
        if (IsKnownCorner(rate, f, bandwidth)) {
            ++corners;
            return;
        }
        ++checked;
        pass.setParams(Set({rate, 2.0, f, bandwidth}));
        stop.setParams(Set({rate, 2.0, f, bandwidth}));
        EXPECT_TRUE(IsStable(pass.cascade)) << rate << " " << f << " " << bandwidth;
        EXPECT_TRUE(IsStable(stop.cascade)) << rate << " " << f << " " << bandwidth;
    });
    EXPECT_GT(checked, 50 * corners);
}

TEST(Butterworth, ShelfPolesStayInsideTheUnitCircleOverTheGrid) {
    Butterworth::LowShelf<2> low;
    Butterworth::HighShelf<2> high;
    Butterworth::BandShelf<2> band;
    for (const double rate : kRates) {
        for (int i = 0; i <= 24; ++i) {
            for (int k = 0; k <= 16; ++k) {
                const double f = CutoffAt(i / 24.0);
                const double decibels = 48.0 * k / 16.0 - 24.0;
                low.setParams(Set({rate, 2.0, f, decibels}));
                high.setParams(Set({rate, 2.0, f, decibels}));
                band.setParams(Set({rate, 2.0, f, 1500.0, decibels}));
                EXPECT_TRUE(IsStable(low.cascade)) << rate << " " << f << " " << decibels;
                EXPECT_TRUE(IsStable(high.cascade)) << rate << " " << f << " " << decibels;
                EXPECT_TRUE(IsStable(band.cascade)) << rate << " " << f << " " << decibels;
            }
        }
    }
}
