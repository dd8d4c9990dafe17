#include "editor/IFaderControl.h"

#include "tests/editor/ControlRig.h"

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

/// 82 pixels long with a handle of 14 by 14, at 100, 50: the handle's way is 68 pixels.
IFaderControl& AttachFader(ControlRig& rig) {
    return rig.Attach<IFaderControl>(100, 50, 82, ControlRig::kPlain, rig.strips.Make(14, 14, 1));
}

TEST(IFaderControl, RectangleIsTheWayByTheHandlesHeight) {
    ControlRig rig;
    EXPECT_EQ(AttachFader(rig).Rect(), IRECT(100, 50, 182, 64));
}

TEST(IFaderControl, ClickPutsTheHandlesMiddleUnderTheMouse) {
    ControlRig rig;
    const auto& fader = AttachFader(rig);
    rig.graphics.OnMouseDown(141, 55, kLeft); // (141 - 7 - 100) / 68
    EXPECT_DOUBLE_EQ(fader.Value(), 0.5);
    EXPECT_DOUBLE_EQ(rig.Get(ControlRig::kPlain), 0.5);
}

TEST(IFaderControl, DragFollowsTheMouseAndStopsAtTheEnds) {
    ControlRig rig;
    const auto& fader = AttachFader(rig);
    rig.graphics.OnMouseDown(141, 55, kLeft);
    rig.graphics.OnMouseDrag(158, 120, 17, 65, kLeft);
    EXPECT_DOUBLE_EQ(fader.Value(), 0.75);
    rig.graphics.OnMouseDrag(290, 120, 132, 0, kLeft);
    EXPECT_EQ(fader.Value(), 1.0);
    rig.graphics.OnMouseDrag(3, 120, -287, 0, kLeft);
    EXPECT_EQ(fader.Value(), 0.0);
}

TEST(IFaderControl, UprightFaderHasZeroBelow) {
    ControlRig rig;
    auto& fader = AttachFader(rig);
    fader.SetHorizontal(false);
    EXPECT_EQ(fader.Rect(), IRECT(100, 50, 114, 132));
    EXPECT_EQ(fader.TargetRect(), fader.Rect());
    rig.graphics.OnMouseDown(105, 57, kLeft); // 1 - (57 - 7 - 50) / 68
    EXPECT_EQ(fader.Value(), 1.0);
    rig.graphics.OnMouseDrag(105, 74, 0, 17, kLeft);
    EXPECT_DOUBLE_EQ(fader.Value(), 0.75);
    EXPECT_EQ(fader.HandleRect(), IRECT(100, 67, 114, 81)); // floor(68 * 0.25) = 17
    rig.graphics.OnMouseDrag(105, 190, 0, 116, kLeft);
    EXPECT_EQ(fader.Value(), 0.0);
    EXPECT_EQ(fader.HandleRect(), IRECT(100, 118, 114, 132));
}

TEST(IFaderControl, RightButtonAsksForAValueInsteadOfMoving) {
    ControlRig rig;
    auto& fader = AttachFader(rig);
    fader.EnablePrompt(true);
    rig.graphics.OnMouseDown(141, 55, kRight);
    EXPECT_EQ(fader.Value(), 0.0);
    ASSERT_EQ(rig.graphics.entries.size(), 1U);
    EXPECT_EQ(rig.graphics.entries[0].rect, IRECT(121, 49, 161, 65)); // 40 by 16 around 141, 57
}

TEST(IFaderControl, HandleIsDrawnAtTheWholePixelBelowItsPlace) {
    ControlRig rig;
    auto& fader = AttachFader(rig);
    fader.SetValueFromPlug(0.999); // 67.93
    rig.DrawAll();
    EXPECT_EQ(rig.FrameAt(166, 50), 0);
    EXPECT_EQ(rig.FrameAt(167, 50), 1);
    EXPECT_EQ(rig.FrameAt(180, 63), 1);
    EXPECT_EQ(rig.FrameAt(181, 63), 0);
    fader.SetValueFromPlug(0.0);
    rig.DrawAll();
    EXPECT_EQ(rig.FrameAt(100, 50), 1);
    EXPECT_EQ(rig.FrameAt(113, 63), 1);
    EXPECT_EQ(rig.FrameAt(114, 63), 0);
}

TEST(IFaderControl, OnlyTheHandleTakesTheMouseIfToldSo) {
    ControlRig rig;
    auto& fader = AttachFader(rig);
    fader.SetValueFromPlug(0.5); // handle from 134 to 148
    EXPECT_TRUE(fader.IsHit(101, 55));
    fader.SetOnlyHandle(true);
    EXPECT_FALSE(fader.IsHit(101, 55));
    EXPECT_FALSE(fader.IsHit(133, 55));
    EXPECT_TRUE(fader.IsHit(134, 55));
    EXPECT_TRUE(fader.IsHit(147, 63));
    EXPECT_FALSE(fader.IsHit(148, 55));
}

TEST(IFaderControl, WayNoLongerThanTheHandleStaysWhereItIs) {
    ControlRig rig;
    auto& fader = rig.Attach<IFaderControl>(0, 0, 14, ControlRig::kPlain, rig.strips.Make(14, 14, 1));
    fader.SetValueFromPlug(0.5);
    fader.SnapToMouse(10, 5);
    EXPECT_EQ(fader.Value(), 0.5);
}

} // namespace
} // namespace Grimworks
