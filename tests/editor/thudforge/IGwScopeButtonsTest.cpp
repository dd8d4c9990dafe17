#include "editor/thudforge/IGwScopeButtons.h"

#include "editor/thudforge/IGwWaveDrawer.h"
#include "tests/editor/thudforge/DisplayRig.h"

#include <gtest/gtest.h>

#include <array>

namespace Grimworks {

namespace {

IBitmap Strip(int frames) {
    return {nullptr, 25, 25 * frames, frames};
}

} // namespace

TEST(IGwZoomSwitch, ZoomsByOneStepOrByFour) {
    DisplayRig rig;
    auto& in = rig.graphics.Attach<IGwZoomSwitch>(&rig.plug, 10, 10, Strip(2), true);
    rig.graphics.Attach<IGwZoomSwitch>(&rig.plug, 50, 10, Strip(2), false);
    rig.graphics.OnMouseDown(15, 15, kLeftDown);
    EXPECT_EQ(in.Value(), 1.0);
    EXPECT_EQ(rig.plug.Scope().ZoomPercent(), 110);
    rig.graphics.OnMouseUp(15, 15, kLeftDown);
    EXPECT_EQ(in.Value(), 0.0);
    rig.graphics.OnMouseDown(15, 15, kRightDown);
    EXPECT_EQ(rig.plug.Scope().ZoomPercent(), 150);
    rig.graphics.OnMouseDown(55, 15, kRightDown);
    EXPECT_EQ(rig.plug.Scope().ZoomPercent(), 110);
    rig.graphics.OnMouseDown(55, 15, kLeftDown);
    EXPECT_EQ(rig.plug.Scope().ZoomPercent(), 100);
    EXPECT_DOUBLE_EQ(rig.plug.Scope().Zoom(), 1.0);
}

TEST(IGwFreezeButton, HoldsThePictureAndLetsItGoOn) {
    DisplayRig rig;
    auto& button = rig.graphics.Attach<IGwFreezeButton>(&rig.plug, 10, 10, Strip(2));
    rig.graphics.OnMouseDown(15, 15, kLeftDown);
    EXPECT_TRUE(rig.plug.Scope().IsFrozen());
    EXPECT_EQ(button.Value(), 1.0);
    rig.graphics.OnMouseUp(15, 15, kLeftDown);
    EXPECT_TRUE(rig.plug.Scope().IsFrozen());
    rig.graphics.OnMouseDown(15, 15, kLeftDown);
    EXPECT_FALSE(rig.plug.Scope().IsFrozen());
    EXPECT_EQ(button.Value(), 0.0);
    EXPECT_EQ(rig.plug.Scope().WritePos(), 20U);
}

TEST(IGwScopeWaveSelectionButton, TogglesTheWaveOfItsNumber) {
    DisplayRig rig;
    auto& drawer = rig.graphics.Attach<IGwWaveDrawer>(&rig.plug, IRECT(109, 110, 1109, 430));
    constexpr std::array<int, 6> kWaves{IGwWaveDrawer::Lfo1,      IGwWaveDrawer::Lfo2,
                                        IGwWaveDrawer::Lfo3,      IGwWaveDrawer::VolumeEnv,
                                        IGwWaveDrawer::FilterEnv, IGwWaveDrawer::Output};
    for (int number = 1; number <= 6; ++number) {
        const int wave = kWaves.at(static_cast<std::size_t>(number - 1));
        auto& button = rig.graphics.Attach<IGwScopeWaveSelectionButton>(&rig.plug, 30 * number, 10, Strip(2),
                                                                        drawer, number);
        const bool before = drawer.Shows(wave);
        EXPECT_EQ(button.Value(), before ? 1.0 : 0.0);
        rig.graphics.OnMouseDown(30 * number + 5, 15, kLeftDown);
        EXPECT_EQ(drawer.Shows(wave), !before) << number;
        EXPECT_EQ(button.Value(), before ? 0.0 : 1.0);
        rig.graphics.OnMouseDown(30 * number + 5, 15, kLeftDown);
        EXPECT_EQ(drawer.Shows(wave), before) << number;
    }
}

TEST(IGwScopeHollowFilledSelectionButton, GoesThroughTheFillModes) {
    DisplayRig rig;
    auto& drawer = rig.graphics.Attach<IGwWaveDrawer>(&rig.plug, IRECT(109, 110, 1109, 430));
    auto& button =
        rig.graphics.Attach<IGwScopeHollowFilledSelectionButton>(&rig.plug, 10, 10, Strip(3), drawer);
    EXPECT_EQ(button.Value(), 0.5);
    for (const int mode : {2, 0, 1}) {
        rig.graphics.OnMouseDown(15, 15, kLeftDown);
        EXPECT_EQ(drawer.GetFillMode(), mode);
        EXPECT_EQ(button.Value(), mode * 0.5);
    }
}

TEST(IZoomTextControl, ShowsThePercentAndZoomsByTheWheel) {
    DisplayRig rig;
    auto& text = rig.graphics.Attach<IZoomTextControl>(&rig.plug, IRECT(10, 10, 80, 30), IText(), "100 %");
    rig.graphics.Settle();
    EXPECT_EQ(text.String(), "100 %");
    EXPECT_FALSE(text.IsDirty());
    rig.graphics.OnMouseWheel(20, 20, IMouseMod(), 1);
    text.OnGUIIdle();
    EXPECT_EQ(text.String(), "110 %");
    EXPECT_TRUE(text.IsDirty());
    rig.graphics.OnMouseWheel(20, 20, IMouseMod(), -40);
    rig.graphics.RunTick();
    EXPECT_EQ(text.String(), "10 %");
    rig.graphics.OnMouseWheel(20, 20, IMouseMod(), 400);
    rig.graphics.RunTick();
    EXPECT_EQ(text.String(), "400 %");
}

} // namespace Grimworks
