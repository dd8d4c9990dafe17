#include "editor/IGraphics.h"

#include "tests/editor/Canvas.h"
#include "tests/editor/FakePlug.h"
#include "tests/editor/HeadlessGraphics.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>

namespace Grimworks {
namespace {

/// Fills its rectangle with one colour and writes down what is done with it.
class Probe : public IControl {
public:
    Probe(IPlugBase* plugBase, const IRECT& rectangle, int parameter = -1, IColor fill = {255, 200, 0, 0})
        : IControl(plugBase, rectangle, parameter), color(fill) {}

    bool Draw(IGraphics& canvas) override {
        ++draws;
        if (onDraw) onDraw(canvas);
        return canvas.FillIRect(color, rect, blend);
    }
    bool IsDirty() override {
        ++asked;
        return IControl::IsDirty();
    }
    void OnGUIIdle() override {
        ++idles;
        if (onIdle) onIdle();
    }
    void SetValueFromPlug(double newValue) override {
        got.push_back(newValue);
        IControl::SetValueFromPlug(newValue);
    }

    IColor color;
    int draws = 0;
    int asked = 0;
    int idles = 0;
    std::vector<double> got;
    std::function<void(IGraphics&)> onDraw;
    std::function<void()> onIdle;
};

constexpr int kWidth = 40;
constexpr int kHeight = 30;
const IColor kGround(255, 10, 20, 30);

/// A small editor with a background and whatever the test attaches.
class IGraphicsTest : public testing::Test {
protected:
    IGraphicsTest() : graphics(plug, kWidth, kHeight) {
        background = &graphics.Attach<Probe>(&plug, IRECT(0, 0, kWidth, kHeight), -1, kGround);
    }

    Probe& Attach(const IRECT& rect, int parameter = -1, IColor color = {255, 200, 0, 0}) {
        return graphics.Attach<Probe>(&plug, rect, parameter, color);
    }

    /// Draws everything that is to be drawn and forgets about it.
    void Settle() {
        graphics.Settle();
        graphics.shown.clear();
        for (int i = 0; i < graphics.ControlCount(); ++i)
            static_cast<Probe*>(graphics.GetControl(i))->draws = 0;
    }

    FakePlug plug;
    HeadlessGraphics graphics;
    Probe* background;
};

const LICE_pixel kGroundPixel = LICE_RGBA(10, 20, 30, 255);
const LICE_pixel kProbePixel = LICE_RGBA(200, 0, 0, 255);

TEST_F(IGraphicsTest, StartsAsMade) {
    EXPECT_EQ(graphics.Width(), kWidth);
    EXPECT_EQ(graphics.Height(), kHeight);
    EXPECT_EQ(graphics.Fps(), 25);
    EXPECT_EQ(graphics.MouseCapture(), -1);
    EXPECT_EQ(graphics.MouseOverIndex(), -1);
    EXPECT_EQ(graphics.DrawBuffer().getWidth(), kWidth);
    EXPECT_EQ(graphics.TmpBitmap().getHeight(), kHeight);
    EXPECT_EQ(&graphics.Plug(), &plug);
}

TEST_F(IGraphicsTest, ControlsHaveIndexesInAttachOrder) {
    Probe& first = Attach({1, 1, 5, 5});
    Probe& second = Attach({2, 2, 6, 6});
    EXPECT_EQ(graphics.ControlCount(), 3);
    EXPECT_EQ(graphics.GetControl(1), &first);
    EXPECT_EQ(graphics.GetControl(2), &second);
    EXPECT_EQ(first.Graphics(), &graphics);
    EXPECT_EQ(graphics.GetControl(-1), nullptr);
    EXPECT_EQ(graphics.GetControl(3), nullptr);
    graphics.HideControl(99, true);
    graphics.HideControl(1, true);
    EXPECT_TRUE(first.IsHidden());
}

TEST_F(IGraphicsTest, BackgroundGoesToTheFront) {
    graphics.AttachBackground(10010, "resources/img/grimworks/ThudForge_GUI_background_FREE.png");
    EXPECT_EQ(graphics.ControlCount(), 2);
    EXPECT_EQ(graphics.GetControl(1), background);
    EXPECT_EQ(graphics.GetControl(0)->Rect(), IRECT(0, 0, kWidth, kHeight)) << "the whole window";
    EXPECT_EQ(graphics.GetControl(0)->Graphics(), &graphics);
}

TEST_F(IGraphicsTest, LaterControlsLieOnTop) {
    Attach({5, 5, 15, 15});
    Attach({10, 10, 20, 20}, -1, {255, 0, 0, 200});
    graphics.Settle();
    EXPECT_EQ(graphics.ScreenPixel(7, 7), kProbePixel);
    EXPECT_EQ(graphics.ScreenPixel(12, 12), LICE_RGBA(0, 0, 200, 255));
    EXPECT_EQ(graphics.ScreenPixel(30, 25), kGroundPixel);
}

TEST_F(IGraphicsTest, WithoutControlsNothingIsDrawn) {
    HeadlessGraphics empty(plug, kWidth, kHeight);
    EXPECT_EQ(empty.RunTick(), IRECT());
    empty.Draw({0, 0, kWidth, kHeight});
    EXPECT_TRUE(empty.shown.empty());
}

TEST_F(IGraphicsTest, TickGivesTheUnionOfTheDirtyRectangles) {
    Probe& first = Attach({1, 2, 5, 6});
    Probe& second = Attach({20, 10, 30, 12});
    Attach({35, 25, 38, 28});
    Settle();
    EXPECT_EQ(graphics.Tick(), IRECT());
    first.SetDirty(false);
    second.SetDirty(false);
    const IRECT dirty = graphics.Tick();
    EXPECT_EQ(dirty, IRECT(1, 2, 30, 12));
    graphics.Draw(dirty);
    EXPECT_EQ(graphics.Tick(), IRECT());
    EXPECT_EQ(graphics.shown, std::vector<IRECT>{IRECT(1, 2, 30, 12)});
}

TEST_F(IGraphicsTest, OnlyWhatOverlapsTheDirtyControlIsDrawnWithIt) {
    Probe& dirty = Attach({5, 5, 15, 15});
    Probe& over = Attach({10, 10, 20, 20});
    Probe& beside = Attach({15, 5, 20, 9});
    Settle();
    dirty.SetDirty(false);
    graphics.RunTick();
    EXPECT_EQ(background->draws, 1);
    EXPECT_EQ(dirty.draws, 1);
    EXPECT_EQ(over.draws, 1);
    EXPECT_EQ(beside.draws, 0);
}

TEST_F(IGraphicsTest, WhatIsDrawnAgainStaysWithinTheDirtyRectangle) {
    Probe& dirty = Attach({5, 5, 15, 15});
    Probe& over = Attach({10, 10, 20, 20}, -1, {51, 255, 255, 255});
    Settle();
    const LICE_pixel before = graphics.Pixel(18, 18);
    dirty.SetDirty(false);
    graphics.RunTick();
    EXPECT_EQ(over.draws, 1);
    EXPECT_EQ(graphics.Pixel(18, 18), before) << "blended a second time otherwise";
    EXPECT_EQ(graphics.Pixel(12, 12), LICE_RGBA(211, 51, 51, 255)) << "a fifth of white over 200, 0, 0";
}

TEST_F(IGraphicsTest, DirtyBackgroundDrawsAll) {
    Probe& control = Attach({5, 5, 15, 15});
    Probe& other = Attach({20, 20, 25, 25});
    Settle();
    background->SetDirty(false);
    EXPECT_EQ(graphics.RunTick(), IRECT(0, 0, kWidth, kHeight));
    EXPECT_EQ(background->draws, 1);
    EXPECT_EQ(control.draws, 1);
    EXPECT_EQ(other.draws, 1);
    EXPECT_EQ(graphics.RunTick(), IRECT());
}

TEST_F(IGraphicsTest, WholeWindowInvalidatedDrawsAll) {
    Probe& control = Attach({5, 5, 15, 15});
    Settle();
    graphics.Draw({0, 0, kWidth, kHeight});
    EXPECT_EQ(background->draws, 1);
    EXPECT_EQ(control.draws, 1);
}

TEST_F(IGraphicsTest, PartThatWasCoveredIsOnlyCopied) {
    Probe& control = Attach({5, 5, 15, 15});
    Settle();
    graphics.Draw({4, 4, 20, 20});
    EXPECT_EQ(control.draws, 0);
    EXPECT_EQ(graphics.shown, std::vector<IRECT>{IRECT(4, 4, 20, 20)});
}

TEST_F(IGraphicsTest, WhatIsDrawnOutsideTheInvalidRectangleReachesTheScreenToo) {
    Probe& control = Attach({20, 20, 25, 25});
    Settle();
    control.color = {255, 1, 2, 3};
    control.SetDirty(false);
    graphics.Draw({0, 0, 3, 3});
    EXPECT_EQ(graphics.ScreenPixel(22, 22), LICE_RGBA(1, 2, 3, 255));
}

TEST_F(IGraphicsTest, DirtyBackgroundReachesTheWholeScreenWhateverIsInvalid) {
    Settle();
    background->color = {255, 1, 2, 3};
    background->SetDirty(false);
    graphics.Draw({0, 0, 3, 3});
    EXPECT_EQ(graphics.shown, std::vector<IRECT>{IRECT(0, 0, kWidth, kHeight)});
    EXPECT_EQ(graphics.ScreenPixel(kWidth - 1, kHeight - 1), LICE_RGBA(1, 2, 3, 255));
}

TEST_F(IGraphicsTest, BackgroundIsDrawnEvenWhenItIsHidden) {
    Settle();
    background->color = {255, 1, 2, 3};
    background->Hide(true);
    graphics.RunTick();
    EXPECT_EQ(graphics.ScreenPixel(7, 7), LICE_RGBA(1, 2, 3, 255));
}

TEST_F(IGraphicsTest, ControlThatChangesDuringItsDrawStaysDirtyForOneTick) {
    Probe& control = Attach({5, 5, 15, 15});
    Settle();
    bool once = true;
    control.onDraw = [&](IGraphics&) {
        if (once) control.SetValueFromUserInput(0.5);
        once = false;
    };
    control.SetDirty(false);
    EXPECT_EQ(graphics.RunTick(), control.Rect());
    EXPECT_EQ(graphics.RunTick(), control.Rect());
    EXPECT_EQ(graphics.RunTick(), IRECT());
}

TEST_F(IGraphicsTest, AHiddenControlIsDrawnByNothingAndFoundByNoSearchYetIsDirtyIsAsked) {
    Probe& control = Attach({5, 5, 15, 15});
    Settle();
    control.Hide(true);
    control.asked = 0;
    EXPECT_EQ(graphics.RunTick(), control.Rect()) << "what was behind it has to be drawn";
    EXPECT_GE(control.asked, 1);
    EXPECT_EQ(graphics.ScreenPixel(7, 7), kGroundPixel);
    Settle();
    control.asked = 0;
    graphics.RunTick();
    EXPECT_EQ(control.asked, 1);
    graphics.Draw({0, 0, kWidth, kHeight});
    graphics.SetStrictDrawing(true);
    graphics.Draw({0, 0, kWidth, kHeight});
    EXPECT_EQ(control.draws, 0);
    graphics.OnMouseDown(7, 7, IMouseMod(true));
    EXPECT_EQ(graphics.MouseCapture(), 0) << "the background lies behind it";
}

TEST_F(IGraphicsTest, GrayedControlDrawsAtAQuarterAndTakesNoMouse) {
    Probe& control = Attach({5, 5, 15, 15}, -1, {255, 255, 255, 255});
    control.GrayOut(true);
    graphics.Settle();
    // 64 of 255 parts of white over 10, 20, 30.
    EXPECT_EQ(graphics.ScreenPixel(7, 7), LICE_RGBA(71, 79, 86, 255));
    graphics.OnMouseDown(7, 7, IMouseMod(true));
    EXPECT_EQ(graphics.MouseCapture(), 0);
    control.GrayOut(false);
    graphics.Settle();
    EXPECT_EQ(graphics.ScreenPixel(7, 7), kWhite);
    graphics.OnMouseDown(7, 7, IMouseMod(true));
    EXPECT_EQ(graphics.MouseCapture(), 1);
}

TEST_F(IGraphicsTest, StrictDrawingDrawsWhatOverlapsTheRectangleAndCleansAll) {
    Probe& inside = Attach({5, 5, 15, 15});
    Probe& outside = Attach({25, 5, 30, 15});
    Settle();
    graphics.SetStrictDrawing(true);
    inside.SetDirty(false);
    outside.SetDirty(false);
    graphics.Draw({0, 0, 10, 10});
    EXPECT_EQ(background->draws, 1);
    EXPECT_EQ(inside.draws, 1);
    EXPECT_EQ(outside.draws, 0);
    EXPECT_EQ(graphics.Tick(), IRECT()) << "those that were not drawn are clean as well";
}

TEST_F(IGraphicsTest, StrictDrawingStaysWithinTheRectangle) {
    Probe& control = Attach({5, 5, 15, 15});
    Settle();
    graphics.SetStrictDrawing(true);
    control.color = {255, 9, 9, 9};
    graphics.Draw({0, 0, 10, 10});
    EXPECT_EQ(graphics.Pixel(9, 9), LICE_RGBA(9, 9, 9, 255));
    EXPECT_EQ(graphics.Pixel(10, 9), kProbePixel);
    EXPECT_EQ(graphics.Pixel(9, 10), kProbePixel);
}

TEST_F(IGraphicsTest, TickRunsTheHandlerThenIdleWorkThenAsksForDirt) {
    Probe& control = Attach({5, 5, 15, 15});
    Probe& hidden = Attach({20, 5, 25, 15});
    hidden.Hide(true);
    Settle();
    std::string order;
    graphics.SetTickHandler([&] { order += "handler "; });
    control.onIdle = [&] {
        order += "idle ";
        control.SetDirty(false);
    };
    control.idles = hidden.idles = 0;
    EXPECT_EQ(graphics.Tick(), control.Rect()) << "what idle work makes dirty is drawn in the same tick";
    EXPECT_EQ(order, "handler idle ");
    EXPECT_EQ(control.idles, 1);
    EXPECT_EQ(hidden.idles, 1);
}

TEST_F(IGraphicsTest, ControlThatSaidOnceThatItIsDirtyIsDrawn) {
    class Once final : public Probe {
    public:
        using Probe::Probe;
        bool IsDirty() override { return std::exchange(due, false); }
        bool due = true;
    };
    auto& control = graphics.Attach<Once>(&plug, IRECT(5, 5, 15, 15));
    Settle();
    control.due = true;
    EXPECT_EQ(graphics.RunTick(), control.Rect());
    EXPECT_EQ(control.draws, 1);
    EXPECT_EQ(graphics.RunTick(), IRECT());
}

TEST_F(IGraphicsTest, NewSizeRebuildsTheSurfacesAndDrawsAll) {
    Probe& control = Attach({5, 5, 15, 15});
    Settle();
    graphics.Resize(kWidth, kHeight);
    EXPECT_EQ(plug.size, std::pair(0, 0)) << "nothing changed";
    graphics.Resize(60, 50);
    EXPECT_EQ(graphics.Width(), 60);
    EXPECT_EQ(graphics.Height(), 50);
    EXPECT_EQ(graphics.DrawBuffer().getWidth(), 60);
    EXPECT_EQ(graphics.TmpBitmap().getHeight(), 50);
    EXPECT_EQ(plug.size, std::pair(60, 50));
    graphics.RunTick();
    EXPECT_EQ(control.draws, 1);
}

TEST_F(IGraphicsTest, TooltipIsTheControlsOrItsParametersName) {
    Probe& told = Attach({1, 1, 2, 2}, 0);
    told.SetTooltip("Play");
    Attach({1, 1, 2, 2}, 0);
    Attach({1, 1, 2, 2});
    EXPECT_EQ(graphics.TooltipText(1), "Play");
    EXPECT_EQ(graphics.TooltipText(2), plug.GetParam(0)->Name());
    EXPECT_EQ(graphics.TooltipText(3), "");
    EXPECT_EQ(graphics.TooltipText(99), "");
    EXPECT_EQ(graphics.TooltipText(-1), "");
    EXPECT_TRUE(graphics.TooltipsEnabled());
    graphics.EnableTooltips(false);
    EXPECT_FALSE(graphics.TooltipsEnabled());
}

TEST_F(IGraphicsTest, HostsNameComesFromItsNumber) {
    plug.host = 28;
    EXPECT_EQ(graphics.GetHostName(), "Ardour");
}

TEST_F(IGraphicsTest, ValuesReachTheControlsAtTheTick) {
    Probe& first = Attach({1, 1, 2, 2}, 80);
    Probe& second = Attach({1, 1, 2, 2}, 80);
    Probe& other = Attach({1, 1, 2, 2}, 81);
    graphics.SetParameterFromPlug(80, 0.25, true);
    EXPECT_TRUE(first.got.empty());
    graphics.Tick();
    ASSERT_FALSE(first.got.empty());
    EXPECT_EQ(first.Value(), 0.25);
    EXPECT_EQ(second.Value(), 0.25);
    EXPECT_TRUE(other.got.empty());
    first.got.clear();
    graphics.Tick();
    EXPECT_TRUE(first.got.empty()) << "each value once";
}

TEST_F(IGraphicsTest, PlainValuesAreTurnedIntoZeroToOne) {
    Probe& control = Attach({1, 1, 2, 2}, 80);
    graphics.SetParameterFromPlug(80, 1.259 / 2.0, false);
    graphics.Tick();
    EXPECT_DOUBLE_EQ(control.Value(), 0.5);
}

TEST_F(IGraphicsTest, FirstValueBecomesTheDefaultEvenWhenOthersComeBeforeTheTick) {
    Probe& control = Attach({1, 1, 2, 2}, 5);
    graphics.SetParameterFromPlug(5, 0.125, true);
    graphics.SetParameterFromPlug(5, 0.75, true);
    graphics.SetParameterFromPlug(5, 0.5, true);
    graphics.Tick();
    EXPECT_EQ(control.DefaultValue(), 0.125);
    EXPECT_EQ(control.Value(), 0.5);
    graphics.SetParameterFromPlug(5, 0.875, true);
    graphics.Tick();
    EXPECT_EQ(control.DefaultValue(), 0.125);
    EXPECT_EQ(control.Value(), 0.875);
}

TEST_F(IGraphicsTest, AuxiliaryParametersGetTheirValues) {
    Probe& control = Attach({1, 1, 2, 2}, 5);
    control.AddAuxParam(7);
    control.AddAuxParam(8);
    control.AddAuxParam(7);
    graphics.SetParameterFromPlug(7, 0.5, true);
    graphics.Tick();
    EXPECT_EQ(control.AuxParams()[0].value, 0.5);
    EXPECT_EQ(control.AuxParams()[1].value, 0.0);
    EXPECT_EQ(control.AuxParams()[2].value, 0.5);
    EXPECT_TRUE(control.got.empty());
}

TEST_F(IGraphicsTest, BadIdsAndNoNumbersAreIgnored) {
    Probe& control = Attach({1, 1, 2, 2}, 5);
    for (const int bad : {-1, 159, 100000}) {
        graphics.SetParameterFromPlug(bad, 0.5, true);
        graphics.SetParameterFromPlug(bad, 0.5, false);
    }
    graphics.SetParameterFromPlug(5, std::numeric_limits<double>::quiet_NaN(), true);
    graphics.SetParameterFromPlug(5, std::numeric_limits<double>::quiet_NaN(), false);
    graphics.Tick();
    EXPECT_TRUE(control.got.empty());
}

TEST_F(IGraphicsTest, EveryParameterOfThePlugInIsDelivered) {
    std::vector<Probe*> controls;
    controls.reserve(static_cast<std::size_t>(plug.ParameterCount()));
    for (int id = 0; id < plug.ParameterCount(); ++id)
        controls.push_back(&Attach({1, 1, 2, 2}, id));
    for (int id = 0; id < plug.ParameterCount(); ++id)
        graphics.SetParameterFromPlug(id, id / 200.0, true);
    graphics.Tick();
    for (int id = 0; id < plug.ParameterCount(); ++id)
        EXPECT_EQ(controls[static_cast<std::size_t>(id)]->Value(), id / 200.0) << id;
}

} // namespace
} // namespace Grimworks
