#include "editor/IBitmapControl.h"

#include "tests/editor/ControlRig.h"

#include <gtest/gtest.h>
#include <vector>

namespace Grimworks {
namespace {

int FrameShown(ControlRig& rig, IControl& control, double value) {
    control.SetValueFromPlug(value);
    rig.DrawAll();
    return rig.FrameAt(control.Rect().L, control.Rect().T);
}

TEST(IBitmapControl, RectangleIsOfOneFrame) {
    ControlRig rig;
    const auto& vertical = rig.Attach<IBitmapControl>(5, 6, -1, rig.strips.Make(20, 10, 4));
    const auto& horizontal = rig.Attach<IBitmapControl>(5, 6, -1, rig.strips.Make(20, 10, 4, true));
    EXPECT_EQ(vertical.Rect(), IRECT(5, 6, 25, 16));
    EXPECT_EQ(horizontal.Rect(), IRECT(5, 6, 25, 16));
}

TEST(IBitmapControl, FrameIsTheNearestToTheValue) {
    ControlRig rig;
    auto& control = rig.Attach<IBitmapControl>(5, 6, ControlRig::kPlain, rig.strips.Make(20, 10, 5));
    // The changes lie in the middle between the frames' values 0, 0.25, 0.5, 0.75 and 1.
    EXPECT_EQ(FrameShown(rig, control, 0.0), 1);
    EXPECT_EQ(FrameShown(rig, control, 0.124), 1);
    EXPECT_EQ(FrameShown(rig, control, 0.125), 2);
    EXPECT_EQ(FrameShown(rig, control, 0.374), 2);
    EXPECT_EQ(FrameShown(rig, control, 0.5), 3);
    EXPECT_EQ(FrameShown(rig, control, 0.874), 4);
    EXPECT_EQ(FrameShown(rig, control, 0.875), 5);
    EXPECT_EQ(FrameShown(rig, control, 1.0), 5);
}

TEST(IBitmapControl, HorizontalFramesAreChosenAlike) {
    ControlRig rig;
    auto& control = rig.Attach<IBitmapControl>(5, 6, ControlRig::kPlain, rig.strips.Make(20, 10, 3, true));
    EXPECT_EQ(FrameShown(rig, control, 0.0), 1);
    EXPECT_EQ(FrameShown(rig, control, 0.5), 2);
    EXPECT_EQ(FrameShown(rig, control, 1.0), 3);
    EXPECT_EQ(rig.FrameAt(24, 15), 3);
    EXPECT_EQ(rig.FrameAt(25, 15), 0);
}

TEST(IBitmapControl, SingleFrameIsShownAtEveryValue) {
    ControlRig rig;
    auto& control = rig.Attach<IBitmapControl>(5, 6, ControlRig::kPlain, rig.strips.Make(20, 10, 1));
    EXPECT_EQ(FrameShown(rig, control, 0.0), 1);
    EXPECT_EQ(FrameShown(rig, control, 1.0), 1);
}

TEST(IBitmapControl, FrameOfAnyValueIsOneOfTheStrip) {
    IBitmap strip;
    strip.N = 128;
    EXPECT_EQ(FrameOfValue(strip, -5.0), 1);
    EXPECT_EQ(FrameOfValue(strip, 5.0), 128);
    EXPECT_EQ(FrameOfValue(strip, 0.5), 65); // floor(63.5 + 0.5) + 1
    strip.N = 0;
    EXPECT_EQ(FrameOfValue(strip, 1.0), 1);
}

TEST(IBitmapControl, GrayedPictureIsDrawnWithAQuarter) {
    ControlRig rig;
    auto& control = rig.Attach<IBitmapControl>(5, 6, -1, rig.strips.Make(20, 10, 1));
    control.GrayOut(true);
    rig.DrawAll();
    const LICE_pixel pixel = rig.Pixel(6, 7);
    EXPECT_NEAR(static_cast<int>(pixel & 0xFFU), 50, 1);         // 200 / 4 on black
    EXPECT_NEAR(static_cast<int>((pixel >> 8U) & 0xFFU), 25, 1); // 100 / 4
}

TEST(IBitmapControl, PictureThatIsNotThereDrawsNothing) {
    ControlRig rig;
    rig.Attach<IBitmapControl>(5, 6, -1, IBitmap());
    rig.DrawAll();
    EXPECT_EQ(rig.Pixel(5, 6), LICE_RGBA(0, 0, 0, 255));
}

/// Values after each of some clicks.
std::vector<double> Clicks(ControlRig& rig, const IControl& control, int count) {
    std::vector<double> values;
    for (int i = 0; i < count; ++i) {
        rig.graphics.OnMouseDown(6, 7, kLeft);
        values.push_back(control.Value());
        rig.graphics.OnMouseUp(6, 7, kLeft);
    }
    return values;
}

TEST(ISwitchControl, TwoFramesStepBetweenOffAndOn) {
    ControlRig rig;
    const auto& control = rig.Attach<ISwitchControl>(5, 6, ControlRig::kPlain, rig.strips.Make(20, 10, 2));
    EXPECT_EQ(Clicks(rig, control, 3), (std::vector<double>{1.0, 0.0, 1.0}));
    EXPECT_EQ(rig.Get(ControlRig::kPlain), 1.0);
}

TEST(ISwitchControl, ThreeFramesStepByHalves) {
    ControlRig rig;
    const auto& control = rig.Attach<ISwitchControl>(5, 6, ControlRig::kPlain, rig.strips.Make(20, 10, 3));
    EXPECT_EQ(Clicks(rig, control, 4), (std::vector<double>{0.5, 1.0, 0.0, 0.5}));
}

TEST(ISwitchControl, SummedStepsReachTheLastStateBeforeTheFirst) {
    for (int frames = 2; frames <= 50; ++frames) {
        ControlRig rig;
        auto& control = rig.Attach<ISwitchControl>(5, 6, -1, rig.strips.Make(20, 2, frames));
        const std::vector<double> values = Clicks(rig, control, frames);
        EXPECT_NEAR(values[static_cast<std::size_t>(frames) - 2], 1.0, 1e-9) << frames;
        EXPECT_EQ(values.back(), 0.0) << frames;
    }
}

TEST(ISwitchControl, SingleFrameTogglesTheValue) {
    ControlRig rig;
    const auto& control = rig.Attach<ISwitchControl>(5, 6, ControlRig::kPlain, rig.strips.Make(20, 10, 1));
    EXPECT_EQ(Clicks(rig, control, 3), (std::vector<double>{1.0, 0.0, 1.0}));
}

TEST(ISwitchControl, DoubleClickIsASecondStepAndNoReset) {
    ControlRig rig;
    auto& control = rig.Attach<ISwitchControl>(5, 6, ControlRig::kPlain, rig.strips.Make(20, 10, 3));
    control.SetValueFromPlug(0.0);
    rig.graphics.OnMouseDown(6, 7, kLeft);
    rig.graphics.OnMouseUp(6, 7, kLeft);
    rig.graphics.OnMouseDblClick(6, 7, kLeft);
    rig.graphics.OnMouseUp(6, 7, kLeft);
    EXPECT_EQ(control.Value(), 1.0);
}

TEST(ISwitchControl, EveryStateHasItsFrame) {
    ControlRig rig;
    const auto& control = rig.Attach<ISwitchControl>(5, 6, -1, rig.strips.Make(20, 10, 4));
    std::vector<int> frames;
    for (int i = 0; i < 4; ++i) {
        Clicks(rig, control, 1);
        rig.DrawAll();
        frames.push_back(rig.FrameAt(6, 7));
    }
    EXPECT_EQ(frames, (std::vector<int>{2, 3, 4, 1}));
}

TEST(IContactControl, IsDownWhileTheMouseIs) {
    ControlRig rig;
    const auto& control = rig.Attach<IContactControl>(5, 6, -1, rig.strips.Make(20, 10, 2));
    rig.graphics.OnMouseDown(6, 7, kLeft);
    EXPECT_EQ(control.Value(), 1.0);
    rig.graphics.OnMouseDrag(200, 150, 194, 143, kLeft);
    EXPECT_EQ(control.Value(), 1.0);
    rig.graphics.OnMouseUp(200, 150, kLeft);
    EXPECT_EQ(control.Value(), 0.0);
}

TEST(IContactControl, SecondPressOfADoubleClickIsReleasedWhereverTheMouseIs) {
    ControlRig rig;
    const auto& control = rig.Attach<IContactControl>(5, 6, -1, rig.strips.Make(20, 10, 2));
    rig.graphics.OnMouseDblClick(6, 7, kLeft);
    EXPECT_EQ(control.Value(), 1.0);
    rig.graphics.OnMouseUp(200, 150, kLeft);
    EXPECT_EQ(control.Value(), 0.0);
}

} // namespace
} // namespace Grimworks
