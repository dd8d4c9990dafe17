#include "editor/thudforge/IGwGlobalTransposeKnob.h"

#include "tests/editor/ControlRig.h"

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

double AfterDoubleClick(double value) {
    ControlRig rig;
    auto& knob = rig.Attach<IGwGlobalTransposeKnob>(10, 10, ControlRig::kPlain, rig.strips.Make(40, 40, 3));
    knob.SetValueFromPlug(value);
    rig.graphics.OnMouseDblClick(20, 20, kLeft);
    EXPECT_EQ(rig.Get(ControlRig::kPlain), knob.Value());
    return knob.Value();
}

TEST(IGwGlobalTransposeKnob, DoubleClickGoesToTheNextQuarter) {
    EXPECT_EQ(AfterDoubleClick(0.0), 0.25);
    EXPECT_EQ(AfterDoubleClick(0.2499), 0.25);
    EXPECT_EQ(AfterDoubleClick(0.25), 0.5);
    EXPECT_EQ(AfterDoubleClick(0.6), 0.75);
    EXPECT_EQ(AfterDoubleClick(0.75), 1.0);
    EXPECT_EQ(AfterDoubleClick(0.999), 1.0);
}

TEST(IGwGlobalTransposeKnob, DoubleClickAtExactlyOneGivesZero) {
    EXPECT_EQ(AfterDoubleClick(1.0), 0.0);
}

TEST(IGwGlobalTransposeKnob, DragIsThatOfAKnob) {
    ControlRig rig;
    auto& knob = rig.Attach<IGwGlobalTransposeKnob>(10, 10, ControlRig::kPlain, rig.strips.Make(40, 40, 3));
    knob.SetValueFromPlug(0.5);
    rig.graphics.OnMouseDown(20, 20, kLeft);
    rig.graphics.OnMouseDrag(20, 4, 0, -16, kLeft); // 16 / 40 / 4
    EXPECT_DOUBLE_EQ(knob.Value(), 0.6);
}

} // namespace
} // namespace Grimworks
