#include "editor/IBitmapControl.h"
#include "editor/IFaderControl.h"
#include "editor/IFileSelectorControl.h"
#include "editor/IKnobControl.h"
#include "editor/ITextControl.h"
#include "tests/editor/ControlRig.h"

#include <gtest/gtest.h>

#include <random>

namespace Grimworks {
namespace {

/// One of every control on one window, each with a parameter of its own where it has one.
class ControlZoo : public ::testing::Test {
protected:
    static constexpr int kSwitch = 0;
    static constexpr int kKnob = 4;
    static constexpr int kSideKnob = 5;
    static constexpr int kFader = 6;
    static constexpr int kTallFader = 7;
    static constexpr int kCaptioned = 63;
    static constexpr int kGround = 200; ///< frame number that the background shows

    ControlZoo() {
        tallFader.SetHorizontal(false);
        caption.EnablePrompt(true);
        knob.SetValueDisplayControl(&knobText);
        rig.plug.RedrawParamControls();
        rig.graphics.Settle();
    }

    void Press(int x, int y, const IMouseMod& mod = kLeft) { rig.graphics.OnMouseDown(x, y, mod); }
    void Release(int x, int y, const IMouseMod& mod = kLeft) { rig.graphics.OnMouseUp(x, y, mod); }
    void DragTo(int x, int y, int dX, int dY) { rig.graphics.OnMouseDrag(x, y, dX, dY, kLeft); }

    /// The frame on the screen after all redraws are done.
    int Seen(int x, int y) {
        rig.graphics.Settle();
        const LICE_pixel pixel = rig.graphics.ScreenPixel(x, y) & 0xFFFFFFU;
        const auto frame = static_cast<int>(pixel >> 16U);
        return pixel == (LICE_RGBA(frame, 100, 200, 0) & 0xFFFFFFU) ? frame : 0;
    }

    ControlRig rig;
    IBitmap ground = rig.strips.Make(ControlRig::kWidth, ControlRig::kHeight, 1, false, kGround);
    IBitmapControl& background = rig.Attach<IBitmapControl>(0, 0, -1, ground);
    IBitmapControl& picture = rig.Attach<IBitmapControl>(5, 5, -1, rig.strips.Make(20, 20, 3));
    ISwitchControl& button = rig.Attach<ISwitchControl>(30, 5, kSwitch, rig.strips.Make(20, 20, 3));
    IContactControl& contact = rig.Attach<IContactControl>(55, 5, -1, rig.strips.Make(20, 20, 2));
    IKnobMultiControl& knob = rig.Attach<IKnobMultiControl>(80, 5, kKnob, rig.strips.Make(40, 40, 101));
    IKnobMultiControl& sideKnob = rig.Attach<IKnobMultiControl>(
        125, 5, kSideKnob, rig.strips.Make(40, 40, 101), IKnobControl::Horizontal);
    IFaderControl& fader = rig.Attach<IFaderControl>(5, 60, 110, kFader, rig.strips.Make(10, 10, 1));
    IFaderControl& tallFader =
        rig.Attach<IFaderControl>(200, 60, 110, kTallFader, rig.strips.Make(10, 10, 1));
    ITextControl& knobText = rig.Attach<ITextControl>(IRECT(80, 45, 120, 58), IText());
    ICaptionControl& caption = rig.Attach<ICaptionControl>(IRECT(5, 90, 65, 106), kCaptioned, IText(), true);
    IFileSelectorControl& selector =
        rig.Attach<IFileSelectorControl>(80, 90, -1, rig.strips.Make(20, 20, 2), IGraphics::FileOpen);
};

TEST_F(ControlZoo, OpensWithTheValuesOfThePlug) {
    for (const auto* control : {static_cast<IControl*>(&button), static_cast<IControl*>(&knob),
                                static_cast<IControl*>(&sideKnob), static_cast<IControl*>(&fader),
                                static_cast<IControl*>(&tallFader), static_cast<IControl*>(&caption)}) {
        EXPECT_EQ(control->Value(), rig.Get(control->ParamIdx()));
        EXPECT_EQ(control->DefaultValue(), control->Value());
    }
    EXPECT_EQ(Seen(6, 6), 1);
    EXPECT_EQ(Seen(299, 199), kGround);
}

TEST_F(ControlZoo, SwitchShowsEachState) {
    rig.plug.SetParameterFromHost(kSwitch, 0.0);
    for (const int frame : {2, 3, 1}) {
        rig.graphics.Settle();
        Press(40, 10);
        Release(40, 10);
        EXPECT_EQ(Seen(31, 6), frame);
        EXPECT_DOUBLE_EQ(rig.Get(kSwitch), (frame - 1) / 2.0);
    }
}

TEST_F(ControlZoo, ContactIsDrawnDownWhileItIsHeld) {
    EXPECT_EQ(Seen(60, 10), 1);
    Press(60, 10);
    EXPECT_EQ(Seen(60, 10), 2);
    Release(290, 190);
    EXPECT_EQ(Seen(60, 10), 1);
}

TEST_F(ControlZoo, KnobIsDraggedWheeledAndBroughtBack) {
    rig.plug.SetParameterFromHost(kKnob, 0.5);
    rig.graphics.Settle();
    Press(100, 25);
    DragTo(100, 9, 0, -16); // 16 / 40 / 4
    Release(100, 9);
    EXPECT_EQ(Seen(81, 6), 61); // 0.6
    EXPECT_EQ(knobText.String(), "0.600 ");
    rig.graphics.OnMouseWheel(100, 25, kNoButton, -5);
    EXPECT_EQ(Seen(81, 6), 56);
    rig.graphics.OnMouseDblClick(100, 25, kLeft);
    EXPECT_EQ(knob.Value(), knob.DefaultValue());
    EXPECT_EQ(rig.Get(kKnob), knob.DefaultValue());
}

TEST_F(ControlZoo, SideKnobTakesSidewaysDragsOnly) {
    rig.plug.SetParameterFromHost(kSideKnob, 0.25);
    rig.graphics.Settle();
    Press(140, 20);
    DragTo(172, 5, 32, -15); // 32 / 40 / 4
    EXPECT_EQ(Seen(126, 6), 46);
}

TEST_F(ControlZoo, FaderHandlesStandWhereTheMouseWas) {
    Press(60, 65); // (60 - 5 - 5) / 100
    Release(60, 65);
    EXPECT_DOUBLE_EQ(rig.Get(kFader), 0.5);
    rig.graphics.Settle();
    EXPECT_EQ(fader.HandleRect(), IRECT(55, 60, 65, 70));
    Press(205, 90); // 1 - (90 - 5 - 60) / 100
    Release(205, 90);
    EXPECT_DOUBLE_EQ(rig.Get(kTallFader), 0.75);
    EXPECT_EQ(tallFader.HandleRect(), IRECT(200, 85, 210, 95));
}

TEST_F(ControlZoo, CaptionFollowsAutomationAndTakesATypedValue) {
    rig.plug.SetParameterFromHost(kCaptioned, 0.5);
    rig.graphics.Settle();
    EXPECT_EQ(caption.String(), "0.500 s");
    Press(20, 95);
    Release(20, 95);
    ASSERT_EQ(rig.graphics.entries.size(), 1U);
    IGraphics::CommitTextEntry(*rig.graphics.entries[0].control, rig.graphics.entries[0].param, "0.125");
    rig.graphics.Settle();
    EXPECT_EQ(rig.Get(kCaptioned), 0.125);
    EXPECT_EQ(caption.String(), "0.125 s");
}

TEST_F(ControlZoo, SelectorIsSeenWhileItsDialogIsOpen) {
    int meanwhile = 0;
    selector.SetClean();
    rig.graphics.whileAsking = [&] { meanwhile = Seen(85, 95); };
    Press(85, 95);
    EXPECT_EQ(meanwhile, 1);
    EXPECT_EQ(rig.graphics.questions.size(), 1U);
    EXPECT_EQ(Seen(85, 95), kGround);
}

TEST_F(ControlZoo, HiddenControlIsNeitherSeenNorHit) {
    rig.plug.SetParameterFromHost(kSwitch, 0.5);
    rig.graphics.Settle();
    ASSERT_EQ(Seen(31, 6), 2);
    button.Hide(true);
    EXPECT_EQ(Seen(31, 6), kGround);
    Press(31, 6);
    Release(31, 6);
    EXPECT_EQ(rig.Get(kSwitch), 0.5);
}

TEST_F(ControlZoo, GrayedControlTakesNoMouse) {
    rig.plug.SetParameterFromHost(kSwitch, 0.5);
    rig.graphics.Settle();
    button.GrayOut(true);
    Press(31, 6);
    Release(31, 6);
    EXPECT_EQ(rig.Get(kSwitch), 0.5);
}

TEST_F(ControlZoo, EveryValueStaysInItsRangeUnderAnyGestures) {
    std::minstd_rand random(20);
    const auto draw = [&random](int range) {
        return static_cast<int>(random() % static_cast<unsigned>(range));
    };
    rig.graphics.chosenFile = "kick.fxp";
    int x = 0;
    int y = 0;
    for (int i = 0; i < 10000; ++i) {
        const IMouseMod mod(draw(2) == 0, draw(4) == 0, draw(3) == 0, draw(5) == 0, draw(7) == 0);
        const int nextX = draw(340) - 20;
        const int nextY = draw(240) - 20;
        switch (draw(7)) {
        case 0:
        case 1:
            rig.graphics.OnMouseDown(nextX, nextY, mod);
            break;
        case 2:
            rig.graphics.OnMouseUp(nextX, nextY, mod);
            break;
        case 3:
            rig.graphics.OnMouseDrag(nextX, nextY, nextX - x, nextY - y, mod);
            break;
        case 4:
            rig.graphics.OnMouseWheel(nextX, nextY, mod, draw(9) - 4);
            break;
        case 5:
            rig.graphics.OnMouseDblClick(nextX, nextY, mod);
            break;
        default:
            rig.graphics.RunTick();
        }
        x = nextX;
        y = nextY;
    }
    rig.graphics.Settle();
    for (int i = 0; i < rig.graphics.ControlCount(); ++i) {
        const IControl& control = *rig.graphics.GetControl(i);
        EXPECT_GE(control.Value(), 0.0);
        EXPECT_LE(control.Value(), 1.0);
        if (control.ParamIdx() < 0) continue;
        EXPECT_DOUBLE_EQ(control.Value(), rig.Get(control.ParamIdx()));
    }
}

} // namespace
} // namespace Grimworks
