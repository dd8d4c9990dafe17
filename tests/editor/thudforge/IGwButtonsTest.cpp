#include "editor/thudforge/IGwButtons.h"

#include "core/ParameterIds.h"
#include "editor/IKnobControl.h"
#include "editor/thudforge/IGwChoiceMenus.h"
#include "tests/editor/thudforge/InstrumentRig.h"

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

TEST(IGwPlayButton, PlaysTheTestNoteAndStopsItWithTheRightButton) {
    InstrumentRig rig;
    const auto& button = rig.Attach<IGwPlayButton>(10, 10, rig.strips.Make(48, 20, 2));
    rig.Click(button);
    PlayRequest::Request request = rig.plug.playRequest.Take();
    EXPECT_EQ(request.note, 48);
    EXPECT_EQ(request.mode, 2);
    rig.Click(button, kRight);
    request = rig.plug.playRequest.Take();
    EXPECT_EQ(request.note, 48);
    EXPECT_EQ(request.mode, 1);
}

TEST(IGwPlayButton, ReleaseAsksForNothing) {
    InstrumentRig rig;
    const auto& button = rig.Attach<IGwPlayButton>(10, 10, rig.strips.Make(48, 20, 2));
    rig.graphics.OnMouseDown(20, 20, kLeft);
    EXPECT_EQ(button.Value(), 1.0);
    static_cast<void>(rig.plug.playRequest.Take());
    rig.graphics.OnMouseUp(20, 20, kLeft);
    EXPECT_EQ(button.Value(), 0.0);
    EXPECT_EQ(rig.plug.playRequest.Take().note, 0);
}

TEST(IGwPlayButton, IsDrawnDownWhileItIsHeld) {
    InstrumentRig rig;
    const auto& button = rig.Attach<IGwPlayButton>(10, 10, rig.strips.Make(48, 20, 2));
    const auto frame = [&rig] { return static_cast<int>((rig.graphics.ScreenPixel(20, 20) >> 16U) & 0xFFU); };
    rig.graphics.Settle();
    EXPECT_EQ(frame(), 1);
    rig.graphics.OnMouseDown(20, 20, kLeft);
    EXPECT_EQ(rig.graphics.RunTick(), button.Rect());
    EXPECT_EQ(frame(), 2);
    rig.graphics.OnMouseUp(200, 150, kLeft);
    rig.graphics.RunTick();
    EXPECT_EQ(frame(), 1);
}

/// Five values of an envelope, and others behind them that no copy may touch.
void SetEnvelope(InstrumentRig& rig, int attack, double first) {
    for (int i = 0; i < 5; ++i)
        rig.Set(attack + i, first + 0.1 * i);
    rig.Set(attack + 5, first / 2.0);
    rig.Set(attack + 6, first / 4.0);
}

TEST(IGwArrowActionButton, CopiesTheVolumeEnvelopeToTheFilters) {
    InstrumentRig rig;
    const auto& button = rig.Attach<IGwArrowActionButton>(10, 10, rig.strips.Make(48, 40, 2),
                                                          IGwArrowActionButton::VolumeToFilter);
    SetEnvelope(rig, 63, 0.1);
    SetEnvelope(rig, 70, 0.5);
    rig.Click(button);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(rig.Get(70 + i), 0.1 + 0.1 * i);
        EXPECT_EQ(rig.Get(63 + i), 0.1 + 0.1 * i);
    }
    EXPECT_EQ(rig.Get(75), 0.25);
    EXPECT_EQ(rig.Get(76), 0.125);
}

TEST(IGwArrowActionButton, CopiesTheFilterEnvelopeToTheVolumes) {
    InstrumentRig rig;
    const auto& button = rig.Attach<IGwArrowActionButton>(10, 10, rig.strips.Make(48, 40, 2),
                                                          IGwArrowActionButton::FilterToVolume);
    auto& sustain = rig.Attach<IKnobMultiControl>(100, 10, 65, rig.strips.Make(30, 30, 2));
    SetEnvelope(rig, 63, 0.1);
    SetEnvelope(rig, 70, 0.5);
    rig.graphics.Tick();
    rig.Click(button);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(rig.Get(63 + i), 0.5 + 0.1 * i);
    EXPECT_EQ(rig.Get(68), 0.05);
    EXPECT_EQ(rig.Get(69), 0.025);
    rig.graphics.Tick();
    EXPECT_EQ(sustain.Value(), 0.5 + 0.1 * 2);
}

TEST(IGwSyncButton, EachClickDoublesTheCyclesOfABeat) {
    InstrumentRig rig;
    rig.time.tempo = 120.0;
    rig.time.flags = TimeFlag::TempoValid;
    const auto& button =
        rig.Attach<IGwSyncButton>(10, 10, rig.strips.Make(48, 40, 2), IGwSyncButton::kPhaser);
    // Two cycles a second at factor 1, of 20 for the whole range; above 10 the range ends.
    for (const double rate : {0.1, 0.2, 0.4, 0.8, 1.0, 1.0, 0.1, 0.2}) {
        rig.Click(button);
        EXPECT_DOUBLE_EQ(rig.Get(127), rate);
    }
}

TEST(IGwSyncButton, OfAnLfoMovesItsRate) {
    InstrumentRig rig;
    rig.time.tempo = 90.0;
    rig.time.flags = TimeFlag::TempoValid;
    const auto& button = rig.Attach<IGwSyncButton>(10, 10, rig.strips.Make(48, 40, 2), 1);
    const double others[] = {rig.Get(13), rig.Get(55)};
    rig.Set(35, 0.0);
    rig.Click(button);
    EXPECT_DOUBLE_EQ(rig.Get(34), 1.5 / 20.0);
    EXPECT_EQ(rig.Get(13), others[0]);
    EXPECT_EQ(rig.Get(55), others[1]);
}

TEST(IGwUrlButton, OpensTheFirstAddress) {
    InstrumentRig rig;
    const auto& button =
        rig.Attach<IGwUrlButton>(10, 10, rig.strips.Make(48, 40, 1), "https://first", "https://second");
    rig.Click(button);
    EXPECT_EQ(rig.graphics.urls, std::vector<std::string>{"https://first"});
    EXPECT_EQ(button.Value(), 0.0);
}

TEST(IGwUrlButton, TriesTheSecondAddressWhenTheFirstFails) {
    InstrumentRig rig;
    rig.graphics.failingUrl = "https://first";
    const auto& button =
        rig.Attach<IGwUrlButton>(10, 10, rig.strips.Make(48, 40, 1), "https://first", "https://second");
    rig.Click(button);
    EXPECT_EQ(rig.graphics.urls, (std::vector<std::string>{"https://first", "https://second"}));
}

/// A switch over the four interpolations of the curve.
constexpr int kFourStates = Param::DistortionInterpMode;

IGwModeSwitch& AttachSwitch(InstrumentRig& rig, int direction, bool wrap, int parameter = kFourStates,
                            int steps = 4) {
    return rig.Attach<IGwModeSwitch>(10, 10, rig.strips.Make(20, 20, 2), parameter, steps, direction, wrap);
}

TEST(IGwModeSwitch, NextGoesThroughTheListAndStopsAtItsEnd) {
    InstrumentRig rig;
    const auto& button = AttachSwitch(rig, IGwModeSwitch::Next, false);
    rig.Set(kFourStates, 0.0);
    for (const double value : {1.0 / 3.0, 2.0 / 3.0, 1.0, 1.0}) {
        rig.Click(button);
        EXPECT_DOUBLE_EQ(rig.Get(kFourStates), value);
    }
}

TEST(IGwModeSwitch, PreviousGoesBackAndStopsAtTheStart) {
    InstrumentRig rig;
    const auto& button = AttachSwitch(rig, IGwModeSwitch::Previous, false);
    rig.Set(kFourStates, 1.0);
    for (const double value : {2.0 / 3.0, 1.0 / 3.0, 0.0, 0.0}) {
        rig.Click(button);
        EXPECT_DOUBLE_EQ(rig.Get(kFourStates), value);
    }
}

TEST(IGwModeSwitch, WrapLeadsFromOneEndToTheOther) {
    InstrumentRig rig;
    const auto& next = AttachSwitch(rig, IGwModeSwitch::Next, true);
    rig.Set(kFourStates, 1.0);
    rig.Click(next);
    EXPECT_EQ(rig.Get(kFourStates), 0.0);
    auto& previous = rig.Attach<IGwModeSwitch>(100, 100, rig.strips.Make(20, 20, 2), kFourStates, 4,
                                               IGwModeSwitch::Previous, true);
    rig.Click(previous);
    EXPECT_EQ(rig.Get(kFourStates), 1.0);
}

TEST(IGwModeSwitch, ValueBetweenTwoChoicesCountsAsTheNearest) {
    InstrumentRig rig;
    const auto& button = AttachSwitch(rig, IGwModeSwitch::Next, false);
    rig.Set(kFourStates, 0.16); // floor(3 * 0.16 + 0.5) = 0
    rig.Click(button);
    EXPECT_DOUBLE_EQ(rig.Get(kFourStates), 1.0 / 3.0);
    rig.Set(kFourStates, 0.17); // 1
    rig.Click(button);
    EXPECT_DOUBLE_EQ(rig.Get(kFourStates), 2.0 / 3.0);
}

TEST(IGwModeSwitch, NothingIsToldAtTheEndOfTheList) {
    InstrumentRig rig;
    const auto& button = AttachSwitch(rig, IGwModeSwitch::Previous, false);
    rig.Set(kFourStates, 0.1);
    rig.calls.clear();
    rig.Click(button);
    EXPECT_EQ(rig.Get(kFourStates), 0.1);
    EXPECT_EQ(rig.Count(HostOp::Automate), 0);
}

TEST(IGwModeSwitch, RightButtonGoesByTenAndStopsAtTheEndsAlsoWithWrap) {
    InstrumentRig rig;
    const auto& next = AttachSwitch(rig, IGwModeSwitch::Next, true, 1, 41);
    rig.Set(1, 5.0 / 40.0);
    for (const int index : {15, 25, 35, 40, 40}) {
        rig.Click(next, kRight);
        EXPECT_DOUBLE_EQ(rig.plug.GetParameterValue(1), index / 40.0);
    }
    auto& previous =
        rig.Attach<IGwModeSwitch>(100, 100, rig.strips.Make(20, 20, 2), 1, 41, IGwModeSwitch::Previous, true);
    rig.Set(1, 12.0 / 40.0);
    for (const int index : {2, 0, 0}) {
        rig.Click(previous, kRight);
        EXPECT_DOUBLE_EQ(rig.plug.GetParameterValue(1), index / 40.0);
    }
}

TEST(IGwModeSwitch, HostHearsAWholeGesture) {
    InstrumentRig rig;
    const auto& button = AttachSwitch(rig, IGwModeSwitch::Next, false);
    rig.Set(kFourStates, 0.0);
    rig.calls.clear();
    rig.Click(button);
    std::vector<std::int32_t> opcodes;
    for (const auto& call : rig.calls) {
        if (call.index == kFourStates && call.opcode != HostOp::GetTime) opcodes.push_back(call.opcode);
    }
    EXPECT_EQ(opcodes, (std::vector<std::int32_t>{HostOp::BeginEdit, HostOp::Automate, HostOp::EndEdit}));
}

TEST(IGwModeSwitch, OwnValueIsThatOfAButton) {
    InstrumentRig rig;
    const auto& button = AttachSwitch(rig, IGwModeSwitch::Next, false);
    rig.Set(kFourStates, 0.0);
    rig.graphics.OnMouseDown(20, 20, kLeft);
    EXPECT_EQ(button.Value(), 1.0);
    rig.graphics.OnMouseUp(20, 20, kLeft);
    EXPECT_EQ(button.Value(), 0.0);
    EXPECT_DOUBLE_EQ(rig.Get(kFourStates), 1.0 / 3.0);
}

TEST(IGwModeSwitch, ListOfOneHasNowhereToGo) {
    InstrumentRig rig;
    const auto& button = AttachSwitch(rig, IGwModeSwitch::Next, true, kFourStates, 1);
    rig.Set(kFourStates, 0.5);
    rig.Click(button);
    EXPECT_EQ(rig.Get(kFourStates), 0.5);
}

TEST(IGwModeSwitch, DisplayOfTheParameterFollows) {
    InstrumentRig rig;
    const auto& button = AttachSwitch(rig, IGwModeSwitch::Next, false, 1, 41);
    const auto& menu = rig.Attach<IGwWaveformPresetMenu>(IRECT(100, 10, 200, 26), 1, IText());
    rig.Set(1, 0.0);
    rig.graphics.Tick();
    EXPECT_EQ(menu.String(), "Sine");
    rig.Click(button);
    rig.graphics.Tick();
    EXPECT_EQ(menu.String(), "Sawtooth");
}

} // namespace
} // namespace Grimworks
