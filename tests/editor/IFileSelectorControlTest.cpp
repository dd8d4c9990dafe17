#include "editor/IFileSelectorControl.h"

#include "tests/editor/ControlRig.h"

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

IFileSelectorControl& AttachSelector(ControlRig& rig) {
    return rig.Attach<IFileSelectorControl>(10, 20, -1, rig.strips.Make(30, 15, 2), IGraphics::FileSave,
                                            "/here/");
}

TEST(IFileSelectorControl, AsksForAFileOfItsExtensions) {
    ControlRig rig;
    auto& selector = AttachSelector(rig);
    rig.graphics.chosenFile = "kick.fxp";
    rig.graphics.chosenDir = "/there/";
    rig.graphics.OnMouseDown(15, 25, kLeft);
    ASSERT_EQ(rig.graphics.questions.size(), 1U);
    EXPECT_EQ(rig.graphics.questions[0].dir, "/here/");
    EXPECT_EQ(rig.graphics.questions[0].file, "");
    EXPECT_EQ(rig.graphics.questions[0].action, IGraphics::FileSave);
    EXPECT_EQ(rig.graphics.questions[0].extensions, "gw tgp fxp");
    EXPECT_EQ(selector.File(), "kick.fxp");
    EXPECT_EQ(selector.Dir(), "/there/");
}

TEST(IFileSelectorControl, NextSelectionStartsFromTheLastOne) {
    ControlRig rig;
    AttachSelector(rig);
    rig.graphics.chosenFile = "kick.fxp";
    rig.graphics.chosenDir = "/there/";
    rig.graphics.OnMouseDown(15, 25, kLeft);
    rig.graphics.OnMouseUp(15, 25, kLeft);
    rig.graphics.OnMouseDown(15, 25, kLeft);
    ASSERT_EQ(rig.graphics.questions.size(), 2U);
    EXPECT_EQ(rig.graphics.questions[1].dir, "/there/");
    EXPECT_EQ(rig.graphics.questions[1].file, "kick.fxp");
}

TEST(IFileSelectorControl, IsDrawnOnlyWhileAFileIsBeingSelected) {
    ControlRig rig;
    auto& selector = AttachSelector(rig);
    rig.DrawAll();
    EXPECT_EQ(rig.FrameAt(15, 25), 0);
    int frameMeanwhile = -1;
    int stateMeanwhile = -1;
    rig.graphics.whileAsking = [&] {
        stateMeanwhile = selector.SelectionState();
        rig.DrawAll();
        frameMeanwhile = rig.FrameAt(15, 25);
    };
    rig.graphics.OnMouseDown(15, 25, kLeft);
    EXPECT_EQ(stateMeanwhile, IFileSelectorControl::Selecting);
    EXPECT_EQ(frameMeanwhile, 1);
    rig.DrawAll();
    EXPECT_EQ(rig.FrameAt(15, 25), 0);
}

TEST(IFileSelectorControl, EndOfASelectionGivesOneMoreRedraw) {
    ControlRig rig;
    const auto& selector = AttachSelector(rig);
    rig.graphics.Settle();
    rig.graphics.OnMouseDown(15, 25, kLeft);
    EXPECT_EQ(selector.SelectionState(), IFileSelectorControl::Done);
    EXPECT_EQ(rig.graphics.RunTick(), selector.Rect()); // its value is another one
    EXPECT_EQ(rig.graphics.RunTick(), selector.Rect());
    EXPECT_EQ(selector.SelectionState(), IFileSelectorControl::None);
    EXPECT_TRUE(rig.graphics.RunTick().Empty());
}

TEST(IFileSelectorControl, BeginningOfASelectionAsksForARedraw) {
    ControlRig rig;
    const auto& selector = AttachSelector(rig);
    rig.graphics.Settle();
    IRECT redrawn;
    rig.graphics.whileAsking = [&] { redrawn = rig.graphics.RunTick(); };
    rig.graphics.OnMouseDown(15, 25, kLeft);
    EXPECT_EQ(redrawn, selector.Rect());
}

TEST(IFileSelectorControl, ItsParameterHearsOfTheEnd) {
    ControlRig rig;
    rig.Attach<IFileSelectorControl>(10, 20, ControlRig::kPlain, rig.strips.Make(30, 15, 2),
                                     IGraphics::FileOpen);
    rig.plug.SetParameterFromHost(ControlRig::kPlain, 0.0);
    rig.graphics.Tick();
    double meanwhile = -1.0;
    rig.graphics.whileAsking = [&] { meanwhile = rig.Get(ControlRig::kPlain); };
    rig.graphics.OnMouseDown(15, 25, kLeft);
    EXPECT_EQ(meanwhile, 0.0);
    EXPECT_EQ(rig.Get(ControlRig::kPlain), 1.0);
}

TEST(IFileSelectorControl, ValueGoesBetweenZeroAndOne) {
    ControlRig rig;
    const auto& selector = AttachSelector(rig);
    rig.graphics.OnMouseDown(15, 25, kLeft);
    EXPECT_EQ(selector.Value(), 1.0);
    rig.graphics.OnMouseUp(15, 25, kLeft);
    rig.graphics.OnMouseDown(15, 25, kLeft);
    EXPECT_EQ(selector.Value(), 0.0);
}

TEST(IFileSelectorControl, CancelLeavesNoFile) {
    ControlRig rig;
    const auto& selector = AttachSelector(rig);
    rig.graphics.OnMouseDown(15, 25, kLeft);
    EXPECT_EQ(selector.File(), "");
    EXPECT_EQ(selector.Dir(), "/here/");
}

TEST(IFileSelectorControl, SecondClickDuringASelectionIsIgnored) {
    ControlRig rig;
    auto& selector = AttachSelector(rig);
    rig.graphics.whileAsking = [&] { selector.OnMouseDown(15, 25, kLeft); };
    rig.graphics.OnMouseDown(15, 25, kLeft);
    EXPECT_EQ(rig.graphics.questions.size(), 1U);
}

} // namespace
} // namespace Grimworks
