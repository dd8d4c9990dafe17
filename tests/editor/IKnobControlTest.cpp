#include "editor/IKnobControl.h"

#include "tests/editor/ControlRig.h"

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

/// A knob of 40 by 50 pixels at 10, 10, so that a vertical drag over its height with gearing 4 is a quarter.
IKnobMultiControl& AttachKnob(ControlRig& rig, int direction = IKnobControl::Vertical, double gearing = 4.0) {
    return rig.Attach<IKnobMultiControl>(10, 10, ControlRig::kPlain, rig.strips.Make(40, 50, 3), direction,
                                         gearing);
}

void Drag(ControlRig& rig, int dX, int dY, const IMouseMod& mod = kLeft) {
    rig.graphics.OnMouseDown(20, 20, mod);
    rig.graphics.OnMouseDrag(20 + dX, 20 + dY, dX, dY, mod);
    rig.graphics.OnMouseUp(20 + dX, 20 + dY, mod);
}

TEST(IKnobControl, DragUpTurnsItUpByTheGearedHeight) {
    ControlRig rig;
    const auto& knob = AttachKnob(rig);
    Drag(rig, 0, -50);
    EXPECT_DOUBLE_EQ(knob.Value(), 0.25);
    EXPECT_DOUBLE_EQ(rig.Get(ControlRig::kPlain), 0.25);
    Drag(rig, 30, 20); // sideways counts for nothing
    EXPECT_DOUBLE_EQ(knob.Value(), 0.15);
}

TEST(IKnobControl, HorizontalKnobGoesByTheWidth) {
    ControlRig rig;
    const auto& knob = AttachKnob(rig, IKnobControl::Horizontal);
    Drag(rig, 16, -50);
    EXPECT_DOUBLE_EQ(knob.Value(), 0.1);
    Drag(rig, -8, 0);
    EXPECT_DOUBLE_EQ(knob.Value(), 0.05);
}

TEST(IKnobControl, ShiftOrControlMakeADragTenTimesFiner) {
    ControlRig rig;
    const auto& knob = AttachKnob(rig);
    Drag(rig, 0, -50, kLeftShift);
    EXPECT_DOUBLE_EQ(knob.Value(), 0.025);
    Drag(rig, 0, -50, kLeftControl);
    EXPECT_DOUBLE_EQ(knob.Value(), 0.05);
}

TEST(IKnobControl, GearingIsTheWayForTheWholeRange) {
    ControlRig rig;
    const auto& knob = AttachKnob(rig, IKnobControl::Vertical, 1.0);
    Drag(rig, 0, -25);
    EXPECT_DOUBLE_EQ(knob.Value(), 0.5);
}

TEST(IKnobControl, DragPastTheEndAndBackMovesBackAtOnce) {
    ControlRig rig;
    auto& knob = AttachKnob(rig);
    knob.SetValueFromPlug(0.9);
    rig.graphics.OnMouseDown(20, 20, kLeft);
    rig.graphics.OnMouseDrag(20, -80, 0, -100, kLeft);
    EXPECT_EQ(knob.Value(), 1.0);
    rig.graphics.OnMouseDrag(20, -60, 0, 20, kLeft);
    EXPECT_DOUBLE_EQ(knob.Value(), 0.9);
    rig.graphics.OnMouseDrag(20, 400, 0, 400, kLeft);
    EXPECT_EQ(knob.Value(), 0.0);
}

TEST(IKnobControl, WheelMovesByAHundredthANotch) {
    ControlRig rig;
    auto& knob = AttachKnob(rig);
    knob.SetValueFromPlug(0.5);
    rig.graphics.OnMouseWheel(20, 20, kNoButton, 3);
    EXPECT_DOUBLE_EQ(knob.Value(), 0.53);
    rig.graphics.OnMouseWheel(20, 20, kNoButton, -1);
    EXPECT_DOUBLE_EQ(knob.Value(), 0.52);
    EXPECT_DOUBLE_EQ(rig.Get(ControlRig::kPlain), 0.52);
}

TEST(IKnobControl, WheelWithControlOrShiftMovesByAThousandth) {
    ControlRig rig;
    auto& knob = AttachKnob(rig);
    knob.SetValueFromPlug(0.5);
    rig.graphics.OnMouseWheel(20, 20, IMouseMod(false, false, false, true), 1);
    EXPECT_DOUBLE_EQ(knob.Value(), 0.501);
    rig.graphics.OnMouseWheel(20, 20, IMouseMod(false, false, true), -2);
    EXPECT_DOUBLE_EQ(knob.Value(), 0.499);
}

TEST(IKnobControl, WheelStopsAtTheEnds) {
    ControlRig rig;
    auto& knob = AttachKnob(rig);
    knob.SetValueFromPlug(0.995);
    rig.graphics.OnMouseWheel(20, 20, kNoButton, 1);
    EXPECT_EQ(knob.Value(), 1.0);
    rig.graphics.OnMouseWheel(20, 20, kNoButton, -1000);
    EXPECT_EQ(knob.Value(), 0.0);
}

TEST(IKnobControl, KnobWithoutSizeOrGearingStaysWhereItIs) {
    ControlRig rig;
    auto& flat = rig.Attach<IKnobMultiControl>(10, 10, ControlRig::kPlain, IBitmap());
    flat.SetValueFromPlug(0.5);
    flat.OnMouseDrag(0, 0, 5, 5, kLeft);
    EXPECT_EQ(flat.Value(), 0.5);
    auto& stuck = AttachKnob(rig, IKnobControl::Vertical, 0.0);
    stuck.SetValueFromPlug(0.5);
    stuck.OnMouseDrag(0, 0, 5, 5, kLeft);
    EXPECT_EQ(stuck.Value(), 0.5);
}

TEST(IKnobMultiControl, StripFollowsTheValue) {
    ControlRig rig;
    auto& knob = rig.Attach<IKnobMultiControl>(10, 10, ControlRig::kPlain, rig.strips.Make(4, 3, 128));
    EXPECT_EQ(knob.Rect(), IRECT(10, 10, 14, 13));
    const auto frameOf = [&](double value) {
        knob.SetValueFromPlug(value);
        rig.DrawAll();
        return rig.FrameAt(10, 10);
    };
    EXPECT_EQ(frameOf(0.0), 1);
    EXPECT_EQ(frameOf(0.5), 65);  // floor(63.5 + 0.5) + 1
    EXPECT_EQ(frameOf(0.25), 33); // floor(31.75 + 0.5) + 1
    EXPECT_EQ(frameOf(1.0), 128);
}

} // namespace
} // namespace Grimworks
