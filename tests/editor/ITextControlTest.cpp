#include "editor/ITextControl.h"

#include "tests/editor/ControlRig.h"

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

const IRECT kPlace(10, 20, 70, 36);

TEST(ITextControl, DrawsItsTextInItsStyle) {
    ControlRig rig;
    const IText style(15, IColor(255, 10, 20, 30), IText::AlignFar, IText::StyleBold);
    rig.Attach<ITextControl>(kPlace, style, "Pitch");
    rig.DrawAll();
    ASSERT_EQ(rig.graphics.texts.size(), 1U);
    EXPECT_EQ(rig.graphics.texts[0].string, "Pitch");
    EXPECT_EQ(rig.graphics.texts[0].rect, kPlace);
    EXPECT_EQ(rig.graphics.texts[0].text.size, 15);
    EXPECT_EQ(rig.graphics.texts[0].text.color, IColor(255, 10, 20, 30));
    EXPECT_EQ(rig.graphics.texts[0].text.align, IText::AlignFar);
    EXPECT_EQ(rig.graphics.texts[0].text.style, IText::StyleBold);
}

TEST(ITextControl, EmptyTextIsDrawnAtOnce) {
    ControlRig rig;
    auto& control = rig.Attach<ITextControl>(kPlace, IText());
    EXPECT_TRUE(control.Draw(rig.graphics));
    EXPECT_TRUE(rig.graphics.texts.empty());
}

TEST(ITextControl, OnlyAnotherTextAsksForARedraw) {
    ControlRig rig;
    auto& control = rig.Attach<ITextControl>(kPlace, IText(), "one");
    control.SetClean();
    control.SetTextFromPlug("one");
    EXPECT_FALSE(control.IsDirty());
    control.SetTextFromPlug("two");
    EXPECT_TRUE(control.IsDirty());
    EXPECT_EQ(control.String(), "two");
    control.SetClean();
    EXPECT_TRUE(control.IsDirty());
    control.SetClean();
    EXPECT_FALSE(control.IsDirty());
}

TEST(ITextControl, GrayedTextIsAQuarterAsStrong) {
    ControlRig rig;
    auto& control = rig.Attach<ITextControl>(kPlace, IText(12, IColor(200, 1, 2, 3)), "Pitch");
    control.GrayOut(true);
    rig.DrawAll();
    ASSERT_EQ(rig.graphics.texts.size(), 1U);
    EXPECT_EQ(rig.graphics.texts[0].text.color, IColor(50, 1, 2, 3));
}

std::string DrawnCaption(ControlRig& rig) {
    rig.DrawAll();
    return rig.graphics.texts.empty() ? "" : rig.graphics.texts.back().string;
}

TEST(ICaptionControl, ShowsTheParametersTextForItsValue) {
    ControlRig rig;
    auto& caption = rig.Attach<ICaptionControl>(kPlace, ControlRig::kWithLabel, IText());
    EXPECT_EQ(caption.ParamIdx(), ControlRig::kWithLabel);
    caption.SetValueFromPlug(0.25);
    EXPECT_EQ(DrawnCaption(rig), "0.250");
}

TEST(ICaptionControl, ShowsTheUnitIfToldSo) {
    ControlRig rig;
    auto& caption = rig.Attach<ICaptionControl>(kPlace, ControlRig::kWithLabel, IText(), true);
    caption.SetValueFromPlug(0.25);
    EXPECT_EQ(DrawnCaption(rig), "0.250 s");
}

TEST(ICaptionControl, TextOfAValueReplacesNumberAndUnit) {
    ControlRig rig;
    rig.plug.GetParam(ControlRig::kWithLabel)->SetDisplayText(0, "Instant");
    auto& caption = rig.Attach<ICaptionControl>(kPlace, ControlRig::kWithLabel, IText(), true);
    caption.SetValueFromPlug(0.25);
    EXPECT_EQ(DrawnCaption(rig), "Instant ");
}

TEST(ICaptionControl, CaptionWithoutAParameterShowsNothing) {
    ControlRig rig;
    rig.Attach<ICaptionControl>(kPlace, -1, IText());
    EXPECT_EQ(DrawnCaption(rig), "");
}

TEST(ICaptionControl, EveryClickOfEitherButtonAsksForAValue) {
    ControlRig rig;
    auto& caption = rig.Attach<ICaptionControl>(kPlace, ControlRig::kPlain, IText());
    caption.EnablePrompt(true);
    caption.OnMouseDown(20, 25, kLeft);
    EXPECT_EQ(rig.graphics.entries.size(), 1U);
    caption.OnMouseDown(20, 25, kRight);
    EXPECT_EQ(rig.graphics.entries.size(), 2U);
    caption.OnMouseDown(20, 25, kNoButton);
    EXPECT_EQ(rig.graphics.entries.size(), 2U);
    caption.SetValueFromPlug(0.25);
    caption.SetValueFromPlug(0.75);
    caption.OnMouseDblClick(20, 25, kLeft);
    EXPECT_EQ(rig.graphics.entries.size(), 3U);
    EXPECT_EQ(caption.Value(), 0.75); // no way back to the default
}

TEST(ICaptionControl, FollowsTheKnobOfItsParameter) {
    ControlRig rig;
    rig.Attach<ICaptionControl>(kPlace, ControlRig::kPlain, IText());
    rig.plug.SetParameterFromHost(ControlRig::kPlain, 0.125);
    rig.graphics.Tick();
    EXPECT_EQ(DrawnCaption(rig), "0.125");
}

} // namespace
} // namespace Grimworks
