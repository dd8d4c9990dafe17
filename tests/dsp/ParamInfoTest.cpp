#include "dsp/ParamInfo.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using namespace Dsp;

TEST(ParamInfo, DescribesEveryParameter) {
    EXPECT_EQ(kSampleRateInfo.id, 0);
    EXPECT_STREQ(kSampleRateInfo.slug, "Fs");
    EXPECT_STREQ(kSampleRateInfo.name, "Sample Rate");
    EXPECT_EQ(kSampleRateInfo.min, 11025.0);
    EXPECT_EQ(kSampleRateInfo.max, 192000.0);
    EXPECT_EQ(kSampleRateInfo.defaultValue, 44100.0);

    EXPECT_EQ(kCutoffInfo.id, 1);
    EXPECT_EQ(kCentreInfo.id, 1);
    EXPECT_STREQ(kCutoffInfo.name, "Cutoff Frequency");
    EXPECT_STREQ(kCentreInfo.name, "Center Frequency");
    EXPECT_EQ(kCutoffInfo.defaultValue, 2000.0);

    EXPECT_EQ(kResonanceInfo.id, 2);
    EXPECT_STREQ(kResonanceInfo.name, "Resonance");
    EXPECT_EQ(kBandwidthInfo.id, 3);
    EXPECT_STREQ(kBandwidthInfo.name, "Bandwidth (Octaves)");
    EXPECT_EQ(kBandwidthHzInfo.id, 4);
    EXPECT_STREQ(kBandwidthHzInfo.name, "Bandwidth (Hz)");
    EXPECT_EQ(kBandwidthHzInfo.defaultValue, 1720.0);
    EXPECT_EQ(kGainInfo.id, 5);
    EXPECT_EQ(kGainInfo.defaultValue, -6.0);
    EXPECT_EQ(OrderInfo(4).id, 7);
    EXPECT_EQ(OrderInfo(4).max, 4.0);
    EXPECT_EQ(OrderInfo(4).defaultValue, 2.0);
    EXPECT_EQ(kRippleInfo.id, 8);
    EXPECT_STREQ(kRippleInfo.name, "Ripple dB");
    EXPECT_EQ(kRippleInfo.defaultValue, 0.01);
}

TEST(ParamInfo, FrequenciesFollowEqualRatios) {
    for (int i = 0; i <= 100; ++i) {
        const double v = i / 100.0;
        const double expected = 10.0 * std::pow(2204.0, v);
        EXPECT_NEAR(kCutoffInfo.toNativeValue(v), expected, 1e-11 * expected);
        EXPECT_NEAR(kBandwidthHzInfo.toNativeValue(v), expected, 1e-11 * expected);
        EXPECT_NEAR(kCutoffInfo.toControlValue(expected), v, 1e-12);
    }
}

TEST(ParamInfo, ResonanceFollowsPowersOfTwo) {
    EXPECT_EQ(kResonanceInfo.toNativeValue(0.0), 1.0 / 16.0);
    EXPECT_EQ(kResonanceInfo.toNativeValue(0.5), 1.0);
    EXPECT_EQ(kResonanceInfo.toNativeValue(1.0), 16.0);
    EXPECT_EQ(kBandwidthInfo.toNativeValue(0.625), 2.0);
    EXPECT_EQ(kResonanceInfo.toControlValue(16.0), 1.0);
    EXPECT_EQ(kResonanceInfo.toControlValue(0.25), 0.25);
}

TEST(ParamInfo, LinearParametersFollowAStraightLine) {
    EXPECT_EQ(kGainInfo.toNativeValue(0.5), 0.0);
    EXPECT_EQ(kGainInfo.toNativeValue(0.0), -24.0);
    EXPECT_EQ(kGainInfo.toNativeValue(1.0), 24.0);
    EXPECT_EQ(kGainInfo.toControlValue(12.0), 0.75);
    EXPECT_EQ(kRippleInfo.toNativeValue(0.0), 0.001);
    EXPECT_DOUBLE_EQ(kRippleInfo.toNativeValue(0.3), 0.001 + 11.999 * 0.3);
}

TEST(ParamInfo, OrdersAreWholeNumbers) {
    const ParamInfo order = OrderInfo(4);
    EXPECT_EQ(order.toNativeValue(0.0), 1.0);
    EXPECT_EQ(order.toNativeValue(0.49), 2.0);
    EXPECT_EQ(order.toNativeValue(0.51), 3.0);
    EXPECT_EQ(order.toNativeValue(1.0), 4.0);
    EXPECT_EQ(order.toControlValue(4.0), 1.0);
}

TEST(ParamInfo, TextsBearTheUnit) {
    EXPECT_EQ(OrderInfo(4).toString(4.0), "4");
    EXPECT_EQ(kCutoffInfo.toString(2000.0), "2000 Hz");
    EXPECT_EQ(kSampleRateInfo.toString(44100.0), "44100 Hz");
    EXPECT_EQ(kBandwidthHzInfo.toString(1720.0), "1720 Hz");
    EXPECT_EQ(kGainInfo.toString(-6.0), "-6.000 dB");
    EXPECT_EQ(kResonanceInfo.toString(0.5), "0.500");
}
