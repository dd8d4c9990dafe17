#include "editor/IControl.h"

#include "editor/IKnobControl.h"
#include "editor/ITextControl.h"
#include "tests/editor/ControlRig.h"

#include <gtest/gtest.h>
#include <limits>

namespace Grimworks {
namespace {

/// The plain rules of every control, with nothing to draw.
class BareControl final : public IControl {
public:
    using IControl::IControl;
    bool Draw(IGraphics& /*canvas*/) override { return true; }
    void Put(double newValue) { value = newValue; }
};

const IRECT kPlace(10, 20, 50, 60);

TEST(IControl, FirstValueFromThePlugIsValueAndDefault) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace, ControlRig::kPlain);
    EXPECT_LT(control.DefaultValue(), 0.0);
    control.SetValueFromPlug(0.3);
    control.SetValueFromPlug(0.7);
    EXPECT_EQ(control.Value(), 0.7);
    EXPECT_EQ(control.DefaultValue(), 0.3);
}

TEST(IControl, DoubleClickOnAKnobBringsBackTheFirstValueThatThePlugSent) {
    ControlRig rig;
    auto& knob = rig.Attach<IKnobMultiControl>(10, 20, ControlRig::kPlain, rig.strips.Make(40, 40, 2));
    knob.SetValueFromPlug(0.25);
    knob.SetValueFromPlug(0.75);
    rig.graphics.OnMouseDblClick(20, 30, kLeft);
    EXPECT_EQ(knob.Value(), 0.25);
    EXPECT_EQ(rig.Get(ControlRig::kPlain), 0.25);
}

TEST(IControl, DoubleClickWithoutADefaultDoesNothing) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace, ControlRig::kPlain);
    const double before = rig.Get(ControlRig::kPlain);
    control.SetValueFromUserInput(before / 2.0);
    control.OnMouseDblClick(20, 30, kLeft);
    EXPECT_EQ(control.Value(), before / 2.0);
}

TEST(IControl, TheSameValueFromThePlugAsksForNoRedraw) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace, ControlRig::kPlain);
    control.SetValueFromPlug(0.5);
    control.SetClean();
    control.SetClean();
    ASSERT_FALSE(control.IsDirty());
    control.SetValueFromPlug(0.5);
    EXPECT_FALSE(control.IsDirty());
    control.SetValueFromPlug(0.6);
    EXPECT_TRUE(control.IsDirty());
}

TEST(IControl, ValueFromThePlugDoesNotGoBackToIt) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace, ControlRig::kPlain);
    rig.plug.SetParameterFromHost(ControlRig::kPlain, 0.125);
    control.SetValueFromPlug(0.875);
    EXPECT_EQ(rig.Get(ControlRig::kPlain), 0.125);
}

TEST(IControl, ValueFromTheUserGoesToThePlug) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace, ControlRig::kPlain);
    control.SetValueFromUserInput(0.625);
    EXPECT_EQ(rig.Get(ControlRig::kPlain), 0.625);
    EXPECT_TRUE(control.IsDirty());
}

TEST(IControl, TheSameValueFromTheUserIsNotToldAgain) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace, ControlRig::kPlain);
    control.SetValueFromUserInput(0.625);
    ASSERT_EQ(rig.plug.automated.size(), 1U);
    control.SetValueFromUserInput(0.625);
    EXPECT_EQ(rig.plug.automated.size(), 1U);
}

TEST(IControl, ValuesAreLimitedToTheControlsOwnRange) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace, ControlRig::kPlain);
    control.Clamp(0.25, 0.75);
    control.SetValueFromUserInput(0.9);
    EXPECT_EQ(control.Value(), 0.75);
    EXPECT_EQ(rig.Get(ControlRig::kPlain), 0.75);
    control.SetValueFromPlug(0.1);
    EXPECT_EQ(control.Value(), 0.25);
}

TEST(IControl, NotANumberIsNeverAValue) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace, ControlRig::kPlain);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    control.SetValueFromPlug(0.5);
    control.SetValueFromPlug(nan);
    control.SetValueFromUserInput(nan);
    EXPECT_EQ(control.Value(), 0.5);
    control.Put(nan);
    control.SetDirty(true);
    EXPECT_EQ(control.Value(), 0.0);
}

TEST(IControl, ChangeDuringADrawStaysDirtyForTheNextOne) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace, ControlRig::kPlain);
    control.SetClean();
    ASSERT_FALSE(control.IsDirty());
    control.SetValueFromPlug(0.5);
    control.SetClean();
    EXPECT_TRUE(control.IsDirty());
    control.SetClean();
    EXPECT_FALSE(control.IsDirty());
}

/// Whether a control asks for a second redraw after the first one.
bool AsksTwice(IControl& control) {
    const bool first = control.IsDirty();
    control.SetClean();
    const bool second = control.IsDirty();
    control.SetClean();
    return first && second && !control.IsDirty();
}

TEST(IControl, ChangesAreDrawnOnceMoreSoThatNoneIsLostInADraw) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace, ControlRig::kPlain);
    control.AddAuxParam(ControlRig::kWithLabel);
    control.EnablePrompt(true);
    control.SetClean();
    control.SetValueFromPlug(0.5);
    EXPECT_TRUE(AsksTwice(control));
    control.SetValueFromUserInput(0.25);
    EXPECT_TRUE(AsksTwice(control));
    control.SetAuxParamValueFromPlug(0, 0.75);
    EXPECT_TRUE(AsksTwice(control));
    control.Hide(true);
    EXPECT_TRUE(AsksTwice(control));
    control.PromptUserInput();
    control.SetClean();
    EXPECT_TRUE(control.IsDirty());
}

TEST(IControl, HidingAndShowingAskForARedraw) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace);
    control.SetClean();
    control.Hide(true);
    EXPECT_TRUE(control.IsHidden());
    EXPECT_TRUE(control.IsDirty());
    control.SetClean();
    control.SetClean();
    control.Hide(false);
    EXPECT_FALSE(control.IsHidden());
    EXPECT_TRUE(control.IsDirty());
}

TEST(IControl, GrayedControlHasAQuarterOfItsWeight) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace);
    control.SetClean();
    control.GrayOut(true);
    EXPECT_TRUE(control.IsGrayed());
    EXPECT_EQ(control.Blend().weight, 0.25F);
    EXPECT_TRUE(control.IsDirty());
    control.GrayOut(false);
    EXPECT_EQ(control.Blend().weight, 1.0F);
}

TEST(IControl, HitIsAPointOfTheTargetRectangle) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace);
    EXPECT_TRUE(control.IsHit(10, 20));
    EXPECT_TRUE(control.IsHit(49, 59));
    EXPECT_FALSE(control.IsHit(50, 30));
    EXPECT_FALSE(control.IsHit(30, 60));
    EXPECT_FALSE(control.IsHit(9, 30));
    control.SetTargetRect(IRECT(100, 100, 110, 110));
    EXPECT_FALSE(control.IsHit(10, 20));
    EXPECT_TRUE(control.IsHit(105, 105));
    EXPECT_EQ(control.Rect(), kPlace);
}

TEST(IControl, EmptyRectangleIsNotHitEvenAtZeroZero) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(IRECT());
    EXPECT_FALSE(control.IsHit(0, 0));
}

TEST(IControl, DefaultsOfANewControl) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace);
    EXPECT_EQ(control.ParamIdx(), -1);
    EXPECT_EQ(control.Value(), 0.0);
    EXPECT_EQ(control.TextEntryLength(), 7);
    EXPECT_EQ(control.TargetRect(), kPlace);
    EXPECT_EQ(control.Tooltip(), "");
    EXPECT_TRUE(control.IsDirty());
    EXPECT_FALSE(control.IsHidden());
    EXPECT_FALSE(control.IsGrayed());
    EXPECT_FALSE(control.DblAsSingleClick());
    EXPECT_FALSE(control.MouseOverWhenDisabled());
    EXPECT_FALSE(control.OnKeyDown(0, 0, KeySpace));
}

TEST(IControl, ControlWithoutAParameterTellsNobody) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace);
    auto& text = rig.Attach<ITextControl>(IRECT(0, 0, 9, 9), IText(), "before");
    control.SetValueDisplayControl(&text);
    control.SetValueFromUserInput(0.5);
    EXPECT_EQ(control.Value(), 0.5);
    EXPECT_EQ(text.String(), "before");
}

TEST(IControl, DisplaysFollowTheValue) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace, ControlRig::kWithLabel);
    auto& shown = rig.Attach<ITextControl>(IRECT(100, 0, 160, 16), IText());
    auto& name = rig.Attach<ITextControl>(IRECT(100, 20, 160, 36), IText());
    control.SetValueDisplayControl(&shown);
    control.SetNameDisplayControl(&name);
    control.SetValueFromUserInput(0.25);
    EXPECT_EQ(shown.String(), "0.250 s");
    EXPECT_EQ(name.String(), "Volume Envelope Attack");
    control.SetValueFromPlug(0.5);
    EXPECT_EQ(shown.String(), "0.500 s");
}

TEST(IControl, DisplayOfAParameterWithoutAUnitEndsInABlank) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace, ControlRig::kPlain);
    auto& shown = rig.Attach<ITextControl>(IRECT(100, 0, 160, 16), IText());
    control.SetValueDisplayControl(&shown);
    control.SetValueFromUserInput(1.0);
    EXPECT_EQ(shown.String(), "1.000 ");
}

TEST(IControl, DisplayIsOnlyReplacedWhenItsTextDiffers) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace, ControlRig::kPlain);
    auto& shown = rig.Attach<ITextControl>(IRECT(100, 0, 160, 16), IText());
    control.SetValueDisplayControl(&shown);
    control.SetValueFromUserInput(0.5);
    shown.SetClean();
    shown.SetClean();
    control.SetValueFromUserInput(0.5001); // the same with three decimals
    EXPECT_FALSE(shown.IsDirty());
    control.SetValueFromUserInput(0.51);
    EXPECT_TRUE(shown.IsDirty());
}

TEST(IControl, PlainValueAboveOneIsShownAsSuch) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace, 80); // reaches 1.259
    auto& shown = rig.Attach<ITextControl>(IRECT(100, 0, 160, 16), IText());
    control.SetValueDisplayControl(&shown);
    control.SetValueFromUserInput(1.0);
    EXPECT_EQ(shown.String(), "1.259 ");
}

TEST(IControl, PromptStaysAwayUnlessItIsEnabled) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace, ControlRig::kPlain);
    rig.graphics.OnMouseDown(20, 30, kRight);
    rig.graphics.OnMouseUp(20, 30, kRight);
    EXPECT_TRUE(rig.graphics.entries.empty());
    control.EnablePrompt(true);
    rig.graphics.OnMouseDown(20, 30, kLeft);
    rig.graphics.OnMouseUp(20, 30, kLeft);
    EXPECT_TRUE(rig.graphics.entries.empty());
    rig.graphics.OnMouseDown(20, 30, kRight);
    EXPECT_EQ(rig.graphics.entries.size(), 1U);
}

TEST(IControl, PromptNeedsAParameter) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace);
    control.EnablePrompt(true);
    control.PromptUserInput();
    EXPECT_TRUE(rig.graphics.entries.empty());
}

TEST(IControl, PromptForANumberIsASmallFieldInTheMiddle) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace, ControlRig::kPlain); // its middle is 30, 40
    control.EnablePrompt(true);
    control.PromptUserInput();
    ASSERT_EQ(rig.graphics.entries.size(), 1U);
    EXPECT_EQ(rig.graphics.entries[0].rect, IRECT(10, 32, 50, 48));
    EXPECT_EQ(rig.graphics.entries[0].control, &control);
    EXPECT_EQ(rig.graphics.entries[0].param, rig.plug.GetParam(ControlRig::kPlain));
}

TEST(IControl, PromptForAParameterWithTextsTakesTheWholeControl) {
    ControlRig rig;
    rig.plug.GetParam(ControlRig::kPlain)->SetDisplayText(0, "Off");
    auto& control = rig.Attach<BareControl>(kPlace, ControlRig::kPlain);
    control.EnablePrompt(true);
    control.PromptUserInput();
    ASSERT_EQ(rig.graphics.entries.size(), 1U);
    EXPECT_EQ(rig.graphics.entries[0].rect, kPlace);
}

TEST(IControl, EnteredNumberMovesTheControlAndItsParameter) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace, ControlRig::kPlain);
    IGraphics::CommitTextEntry(control, rig.plug.GetParam(ControlRig::kPlain), "0.75");
    EXPECT_EQ(control.Value(), 0.75);
    EXPECT_EQ(rig.Get(ControlRig::kPlain), 0.75);
    IGraphics::CommitTextEntry(control, rig.plug.GetParam(ControlRig::kPlain), "17");
    EXPECT_EQ(control.Value(), 1.0);
}

TEST(IControl, AuxiliaryValuesAreKeptApartFromTheValue) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace, ControlRig::kPlain);
    control.AddAuxParam(10);
    control.AddAuxParam(11);
    control.SetClean();
    control.SetAuxParamValueFromPlug(1, 0.75);
    EXPECT_EQ(control.AuxParams()[1].value, 0.75);
    EXPECT_EQ(control.AuxParams()[0].value, 0.0);
    EXPECT_EQ(control.Value(), 0.0);
    EXPECT_TRUE(control.IsDirty());
    control.SetClean();
    control.SetClean();
    control.SetAuxParamValueFromPlug(1, 0.75);
    EXPECT_FALSE(control.IsDirty());
}

TEST(IControl, AuxiliaryPlaceThatIsNotThereDoesNothing) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace);
    control.AddAuxParam(10);
    control.SetClean();
    control.SetAuxParamValueFromPlug(-1, 0.5);
    control.SetAuxParamValueFromPlug(1, 0.5);
    EXPECT_FALSE(control.IsDirty());
    EXPECT_EQ(control.AuxParams()[0].value, 0.0);
}

TEST(IControl, ControlsOfOneParameterFollowEachOther) {
    ControlRig rig;
    auto& moved = rig.Attach<BareControl>(kPlace, ControlRig::kPlain);
    auto& other = rig.Attach<BareControl>(IRECT(60, 20, 100, 60), ControlRig::kPlain);
    auto& stranger = rig.Attach<BareControl>(IRECT(110, 20, 150, 60), ControlRig::kWithLabel);
    rig.graphics.Tick();
    moved.SetValueFromUserInput(0.375);
    rig.graphics.Tick();
    EXPECT_EQ(other.Value(), 0.375);
    EXPECT_EQ(moved.Value(), 0.375);
    EXPECT_EQ(stranger.Value(), 0.0);
}

TEST(IControl, AutomationReachesTheControlAtTheNextTick) {
    ControlRig rig;
    auto& control = rig.Attach<BareControl>(kPlace, ControlRig::kPlain);
    rig.graphics.Tick();
    rig.plug.SetParameterFromHost(ControlRig::kPlain, 0.875);
    EXPECT_NE(control.Value(), 0.875);
    rig.graphics.Tick();
    EXPECT_EQ(control.Value(), 0.875);
}

} // namespace
} // namespace Grimworks
