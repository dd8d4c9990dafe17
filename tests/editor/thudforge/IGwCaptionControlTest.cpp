#include "editor/thudforge/IGwCaptionControl.h"

#include "tests/editor/ControlRig.h"

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

using Mode = IGwCaptionControl::DisplayMode;

/// What a caption of a mode shows for a value; scaled modes with v * 20 + 1 and "Hz".
std::string Shown(int mode, double value, bool withLabel = false) {
    ControlRig rig;
    auto& caption = rig.Attach<IGwCaptionControl>(IRECT(10, 10, 70, 26), ControlRig::kWithLabel, IText(),
                                                  mode, withLabel);
    caption.SetScale(20.0, 1.0, "Hz");
    caption.SetValueFromPlug(value);
    rig.DrawAll();
    return rig.graphics.texts.empty() ? "" : rig.graphics.texts.back().string;
}

TEST(IGwCaptionControl, ModeZeroIsTheParametersText) {
    EXPECT_EQ(Shown(Mode::ParameterText, 0.25), "0.250");
    EXPECT_EQ(Shown(Mode::ParameterText, 0.25, true), "0.250 s");
}

TEST(IGwCaptionControl, ModeOneIsDecibels) {
    EXPECT_EQ(Shown(Mode::Decibels, 1.0), "0.0dB");
    EXPECT_EQ(Shown(Mode::Decibels, 0.5), "-6.0dB");
    EXPECT_EQ(Shown(Mode::Decibels, 0.01), "-40.0dB");
    EXPECT_EQ(Shown(Mode::Decibels, 0.0), "-oodB");
}

TEST(IGwCaptionControl, ModeTwoIsPercent) {
    EXPECT_EQ(Shown(Mode::Percent, 0.0), "0.0%");
    EXPECT_EQ(Shown(Mode::Percent, 0.1234), "12.3%");
    EXPECT_EQ(Shown(Mode::Percent, 1.0), "100.0%");
}

TEST(IGwCaptionControl, ModeThreeIsTwelveEachWay) {
    EXPECT_EQ(Shown(Mode::Semitones, 0.0), "-12.000");
    EXPECT_EQ(Shown(Mode::Semitones, 0.5), "0.000");
    EXPECT_EQ(Shown(Mode::Semitones, 0.75), "6.000");
}

TEST(IGwCaptionControl, ModeFourIsOneEachWay) {
    EXPECT_EQ(Shown(Mode::Bipolar, 0.0), "-1.000");
    EXPECT_EQ(Shown(Mode::Bipolar, 0.25), "-0.500");
    EXPECT_EQ(Shown(Mode::Bipolar, 1.0), "1.000");
}

TEST(IGwCaptionControl, ModeFiveIsAHalfEachWay) {
    EXPECT_EQ(Shown(Mode::Centred, 0.0), "-0.500");
    EXPECT_EQ(Shown(Mode::Centred, 0.625), "0.125");
    EXPECT_EQ(Shown(Mode::Centred, 1.0), "0.500");
}

TEST(IGwCaptionControl, ModeSixIsScaledWithThreeDecimals) {
    EXPECT_EQ(Shown(Mode::ScaledFine, 0.0), "1.000Hz");
    EXPECT_EQ(Shown(Mode::ScaledFine, 0.5), "11.000Hz");
}

TEST(IGwCaptionControl, ModeSevenIsScaledWithOneDecimalInFourPlaces) {
    EXPECT_EQ(Shown(Mode::Scaled, 0.0), " 1.0Hz");
    EXPECT_EQ(Shown(Mode::Scaled, 0.5), "11.0Hz");
}

TEST(IGwCaptionControl, AnyOtherModeIsTheParametersText) {
    EXPECT_EQ(Shown(8, 0.25), "0.250");
    EXPECT_EQ(Shown(-1, 0.25), "0.250");
}

} // namespace
} // namespace Grimworks
