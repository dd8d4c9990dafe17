#include "tests/dsp/FilterTestTools.h"

#include "dsp/Designs.h"

#include <array>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

using namespace Dsp;
using namespace DspTest;

namespace {

void ExpectFilter(const Filter& filter, const std::string& name, Kind kind, int maxOrder,
                  const std::vector<std::string>& names) {
    EXPECT_EQ(filter.getName(), name);
    EXPECT_EQ(filter.getKind(), kind);
    EXPECT_EQ(filter.getMaxOrder(), maxOrder);
    EXPECT_EQ(filter.getNumChannels(), 2);
    ASSERT_EQ(filter.getNumParams(), static_cast<int>(names.size()));
    for (int i = 0; i < filter.getNumParams(); ++i) {
        const ParamInfo info = filter.getParamInfo(i);
        EXPECT_EQ(info.name, names[static_cast<std::size_t>(i)]) << name;
        EXPECT_EQ(filter.getParams()[i], info.defaultValue);
        EXPECT_EQ(filter.findParam(info.id), i);
        if (info.id == ParamId::kOrder) {
            EXPECT_EQ(info.max, maxOrder);
        }
    }
    EXPECT_EQ(filter.getParams(), filter.getDefaultParams());
}

} // namespace

TEST(Filter, TheFifteenDesignsBearTheirNamesAndParameters) {
    const std::vector<std::string> cutoffQ{"Sample Rate", "Cutoff Frequency", "Resonance"};
    const std::vector<std::string> centreQ{"Sample Rate", "Center Frequency", "Bandwidth (Octaves)"};
    const std::vector<std::string> ripple{"Sample Rate", "Order", "Cutoff Frequency", "Ripple dB"};
    const std::vector<std::string> band{"Sample Rate", "Order", "Center Frequency", "Bandwidth (Hz)"};
    const std::vector<std::string> shelf{"Sample Rate", "Order", "Cutoff Frequency", "Gain"};
    const std::vector<std::string> bandShelf{"Sample Rate", "Order", "Center Frequency", "Bandwidth (Hz)",
                                             "Gain"};
    const std::vector<std::string> bessel{"Sample Rate", "Order", "Cutoff Frequency"};
    ExpectFilter(RbjLowPass{}, "RBJ Low Pass", Kind::LowPass, 2, cutoffQ);
    ExpectFilter(RbjHighPass{}, "RBJ High Pass", Kind::HighPass, 2, cutoffQ);
    ExpectFilter(RbjBandPass1{}, "RBJ Band Pass 1", Kind::BandPass, 2, centreQ);
    ExpectFilter(RbjBandStop{}, "RBJ Band Stop", Kind::BandStop, 2, centreQ);
    ExpectFilter(ChebyshevLowPass{}, "Chebyshev I Low Pass", Kind::LowPass, 4, ripple);
    ExpectFilter(ChebyshevHighPass{}, "Chebyshev I High Pass", Kind::HighPass, 4, ripple);
    ExpectFilter(ChebyshevLowPassI{}, "Chebyshev I Low Pass", Kind::LowPass, 4, ripple);
    ExpectFilter(ChebyshevHighPassI{}, "Chebyshev I High Pass", Kind::HighPass, 4, ripple);
    ExpectFilter(ButterworthBandPass{}, "Butterworth Band Pass", Kind::BandPass, 2, band);
    ExpectFilter(ButterworthBandStop{}, "Butterworth Band Stop", Kind::BandStop, 2, band);
    ExpectFilter(ButterworthLowShelf{}, "Butterworth Low Shelf", Kind::LowShelf, 2, shelf);
    ExpectFilter(ButterworthBandShelf{}, "Butterworth Band Shelf", Kind::BandShelf, 2, bandShelf);
    ExpectFilter(ButterworthHighShelf{}, "Butterworth High Shelf", Kind::HighShelf, 2, shelf);
    ExpectFilter(BesselLowPass{}, "Bessel Low Pass", Kind::LowPass, 4, bessel);
    ExpectFilter(BesselHighPass{}, "Bessel High Pass", Kind::HighPass, 4, bessel);
}

TEST(Filter, AnIndexPastTheListIsALogicError) {
    const RbjLowPass filter;
    for (const int index : {-1, 3, 8}) {
        try {
            (void)filter.getParamInfo(index);
            FAIL() << "no error for " << index;
        } catch (const std::logic_error& error) {
            EXPECT_STREQ(error.what(), "invalid usage of ParamInfo");
        }
    }
}

TEST(Filter, AnOrderAboveTheMaximumIsALogicErrorAndChangesNothing) {
    ChebyshevLowPass filter;
    const Params before = filter.getParams();
    EXPECT_THROW(filter.setParams(Set({44100.0, 5.0, 500.0, 1.0})), std::logic_error);
    EXPECT_EQ(filter.getParams(), before);
    EXPECT_EQ(filter.getRemainingSamples(), -1);
    EXPECT_NO_THROW(filter.setParams(Set({44100.0, 4.0, 500.0, 1.0})));
}

TEST(Filter, SetParamWritesWithoutARedesign) {
    FilterDesign<RBJ::LowPass, 1, DirectFormI> filter;
    const Stage before = filter.getCascade()[0];
    filter.setParam(ParamId::kFrequency, 300.0);
    filter.setParam(ParamId::kGain, 12.0);
    EXPECT_EQ(filter.getParams(), Set({44100.0, 300.0, 1.0}));
    EXPECT_EQ(filter.getCascade()[0].a1, before.a1);
    filter.redesign();
    EXPECT_NE(filter.getCascade()[0].a1, before.a1);
}

TEST(Filter, ResponseIsTheProductOfTheSections) {
    FilterDesign<ChebyshevI::LowPass<4>, 1, DirectFormI> filter;
    filter.setParams(Set({44100.0, 4.0, 3000.0, 1.0}));
    for (const double f : {0.0, 0.01, 0.068, 0.3}) {
        std::complex<double> expected = 1.0;
        const std::complex<double> z = std::polar(1.0, 2.0 * kPi * f);
        for (int i = 0; i < 2; ++i) {
            const Stage& s = filter.getCascade()[i];
            expected *= (s.b0 * z * z + s.b1 * z + s.b2) / (z * z + s.a1 * z + s.a2);
        }
        EXPECT_NEAR(std::abs(filter.response(f) - expected), 0.0, 1e-12);
    }
}

TEST(FilterDesign, DirectFormOneRunsTheCascadeWithTheAlternatingTerm) {
    FilterDesign<ChebyshevI::LowPass<4>, 2, DirectFormI> filter;
    filter.setParams(Set({44100.0, 4.0, 3000.0, 1.0}));
    const auto& sections = filter.getCascade();
    std::array<double, 50> left{};
    std::array<double, 50> right{};
    left[0] = 1.0;
    right[3] = -0.5;
    const std::array<double, 50> inputs[2] = {left, right};
    std::array<double*, 2> channels{left.data(), right.data()};
    filter.process(20, channels.data());
    channels = {left.data() + 20, right.data() + 20};
    filter.process(30, channels.data());

    for (int c = 0; c < 2; ++c) {
        double state[2][4] = {};
        double vsa = 1e-8;
        for (std::size_t i = 0; i < 50; ++i) {
            vsa = -vsa;
            double x = inputs[c][i];
            for (int k = 0; k < 2; ++k) {
                const Stage& s = sections[k];
                double* h = state[k];
                double y = s.b0 * x + s.b1 * h[0] + s.b2 * h[1] - s.a1 * h[2] - s.a2 * h[3];
                if (k == 0) y += vsa;
                h[1] = h[0];
                h[0] = x;
                h[3] = h[2];
                h[2] = y;
                x = y;
            }
            EXPECT_EQ((c == 0 ? left : right)[i], x);
        }
    }
}

TEST(FilterDesign, DirectFormTwoRunsTheCascadeWithTheAlternatingTerm) {
    FilterDesign<ChebyshevI::HighPass<4>, 1, DirectFormII> filter;
    filter.setParams(Set({44100.0, 4.0, 300.0, 2.0}));
    std::array<double, 64> signal{};
    signal[1] = 0.7;
    const auto input = signal;
    double* channel = signal.data();
    filter.process(64, &channel);
    double w[2][2] = {};
    double vsa = 1e-8;
    for (std::size_t i = 0; i < 64; ++i) {
        vsa = -vsa;
        double x = input[i];
        for (int k = 0; k < 2; ++k) {
            const Stage& s = filter.getCascade()[k];
            double now = x - s.a1 * w[k][0] - s.a2 * w[k][1];
            if (k == 0) now += vsa;
            x = s.b0 * now + s.b1 * w[k][0] + s.b2 * w[k][1];
            w[k][1] = w[k][0];
            w[k][0] = now;
        }
        EXPECT_EQ(signal[i], x);
    }
}

TEST(FilterDesign, ResetSilencesTheStateButNotTheAlternation) {
    FilterDesign<Butterworth::LowShelf<2>, 1, DirectFormI> filter;
    filter.setParams(Set({44100.0, 2.0, 400.0, 6.0}));
    const Stage before = filter.getCascade()[0];
    double sample = 1.0;
    double* channel = &sample;
    filter.process(1, &channel);
    filter.reset();
    EXPECT_EQ(filter.getCascade()[0].b0, before.b0);
    sample = 0.0;
    filter.process(1, &channel);
    EXPECT_EQ(sample, 1e-8); // the second sample since creation, so the term is positive again
}

TEST(FilterDesign, SilenceHoversAroundTheTermAndIsNeverDenormal) {
    FilterDesign<ChebyshevI::LowPass<4>, 1, DirectFormI> filter;
    filter.setParams(Set({44100.0, 2.0, 21000.0, 0.01}));
    const double atNyquist = 1.0 / std::abs(1.0 - filter.getCascade()[0].a1 + filter.getCascade()[0].a2);
    std::vector<double> signal(20000, 0.0);
    double* channel = signal.data();
    filter.process(static_cast<int>(signal.size()), &channel);
    for (const double y : signal)
        EXPECT_EQ(std::fpclassify(y), FP_NORMAL);
    for (std::size_t i = 10000; i < signal.size(); ++i)
        EXPECT_NEAR(signal[i], (i % 2 == 0 ? -1e-8 : 1e-8) * atNyquist, 1e-12);
}

TEST(FilterDesign, AStateThatIsNotFiniteStartsAnew) {
    FilterDesign<RBJ::LowPass, 2, DirectFormII> filter;
    double left = std::numeric_limits<double>::quiet_NaN();
    double right = 1.0;
    std::array<double*, 2> channels{&left, &right};
    filter.process(1, channels.data());
    left = 0.5;
    filter.process(1, channels.data());
    EXPECT_NEAR(left, 0.5 * filter.getCascade()[0].b0, 1e-8);
    EXPECT_TRUE(std::isfinite(right));
}
