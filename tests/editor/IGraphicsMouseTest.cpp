#include "editor/IGraphics.h"

#include "plugin/HostIdentity.h"
#include "tests/editor/FakePlug.h"
#include "tests/editor/HeadlessGraphics.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Grimworks {
namespace {

using Log = std::vector<std::string>;

/// Writes down what the mouse and the keys do to it, into the log of the plug-in's host.
class Target final : public IControl {
public:
    Target(FakePlug& fake, const IRECT& rectangle, std::string shortName, int parameter = -1)
        : IControl(&fake, rectangle, parameter), log(fake.log), name(std::move(shortName)) {}

    void OnMouseDown(int x, int y, const IMouseMod& mod) override {
        Write(mod.R ? "right down" : "down", x, y);
        if (onDown) onDown();
    }
    void OnMouseUp(int x, int y, const IMouseMod&) override { Write("up", x, y); }
    void OnMouseDrag(int x, int y, int dX, int dY, const IMouseMod&) override {
        Write("drag " + std::to_string(dX) + "," + std::to_string(dY), x, y);
        if (onDrag) onDrag();
    }
    void OnMouseDblClick(int x, int y, const IMouseMod&) override { Write("double", x, y); }
    void OnMouseWheel(int x, int y, const IMouseMod&, int d) override {
        Write("wheel " + std::to_string(d), x, y);
    }
    void OnMouseOver(int x, int y, const IMouseMod&) override { Write("over", x, y); }
    void OnMouseOut() override { log.push_back(name + " out"); }
    bool OnKeyDown(int x, int y, int key) override {
        Write("key " + std::to_string(key), x, y);
        return usesKeys;
    }
    bool Draw(IGraphics&) override { return true; }

    void TakeDoubleAsSingle() { dblAsSingleClick = true; }

    std::function<void()> onDown;
    std::function<void()> onDrag;
    bool usesKeys = false;

private:
    void Write(const std::string& what, int x, int y) {
        log.push_back(name + " " + what + " at " + std::to_string(x) + "," + std::to_string(y));
    }

    Log& log;
    std::string name;
};

class IGraphicsMouse : public testing::Test {
protected:
    IGraphicsMouse() : graphics(plug, 100, 100) {}

    Target& Attach(const IRECT& rect, const std::string& name, int parameter = -1) {
        return graphics.Attach<Target>(plug, rect, name, parameter);
    }
    Log TakeLog() { return std::exchange(plug.log, {}); }

    const IMouseMod left{true};
    const IMouseMod right{false, true};
    const IMouseMod none;
    FakePlug plug;
    HeadlessGraphics graphics;
};

TEST_F(IGraphicsMouse, TheTopmostControlThatIsHitTakesTheMouse) {
    Attach({0, 0, 50, 50}, "below");
    Attach({10, 10, 20, 20}, "above");
    graphics.OnMouseDown(15, 15, left);
    EXPECT_EQ(graphics.MouseCapture(), 1);
    graphics.OnMouseDown(5, 5, left);
    EXPECT_EQ(graphics.MouseCapture(), 0);
    graphics.OnMouseDown(70, 70, left);
    EXPECT_EQ(graphics.MouseCapture(), -1);
    EXPECT_EQ(TakeLog(), (Log{"above down at 15,15", "below down at 5,5"}));
}

TEST_F(IGraphicsMouse, HiddenAndGrayedControlsAreNotFound) {
    Attach({0, 0, 50, 50}, "below");
    Attach({0, 0, 50, 50}, "gray").GrayOut(true);
    Attach({0, 0, 50, 50}, "hidden").Hide(true);
    graphics.OnMouseDown(5, 5, left);
    graphics.OnMouseUp(5, 5, left);
    graphics.OnMouseDblClick(5, 5, left);
    graphics.OnMouseWheel(5, 5, none, 1);
    graphics.OnKeyDown(5, 5, KeySpace);
    EXPECT_EQ(TakeLog(), (Log{"below down at 5,5", "below up at 5,5", "below double at 5,5",
                              "below wheel 1 at 5,5", "below key 1 at 5,5"}));
}

TEST_F(IGraphicsMouse, GestureOfAParameterBeginsBeforeTheControlAndEndsAfterIt) {
    Attach({0, 0, 50, 50}, "knob", 12);
    graphics.OnMouseDown(5, 6, left);
    graphics.OnMouseDrag(7, 9, 2, 3, left);
    graphics.OnMouseUp(7, 9, left);
    EXPECT_EQ(TakeLog(),
              (Log{"begin 12", "knob down at 5,6", "knob drag 2,3 at 7,9", "knob up at 7,9", "end 12"}));
    EXPECT_EQ(graphics.MouseCapture(), -1);
}

TEST_F(IGraphicsMouse, ControlWithoutAParameterMakesNoGesture) {
    Attach({0, 0, 50, 50}, "button");
    graphics.OnMouseDown(5, 5, left);
    graphics.OnMouseUp(5, 5, left);
    EXPECT_EQ(TakeLog(), (Log{"button down at 5,5", "button up at 5,5"}));
}

TEST_F(IGraphicsMouse, CapturedControlGetsDragWheelAndReleaseWhereverTheMouseIs) {
    Attach({0, 0, 50, 50}, "knob");
    Attach({60, 60, 90, 90}, "other");
    graphics.OnMouseDown(5, 5, left);
    graphics.OnMouseDrag(70, 70, 65, 65, left);
    EXPECT_EQ(graphics.MouseX(), 70);
    EXPECT_EQ(graphics.MouseY(), 70);
    graphics.OnMouseWheel(70, 70, none, -2);
    graphics.OnMouseUp(70, 70, left);
    EXPECT_EQ(TakeLog(), (Log{"knob down at 5,5", "knob drag 65,65 at 70,70", "knob wheel -2 at 70,70",
                              "knob up at 70,70"}));
    graphics.OnMouseWheel(70, 70, none, 1);
    EXPECT_EQ(TakeLog(), Log{"other wheel 1 at 70,70"});
}

TEST_F(IGraphicsMouse, DragWithNoCapturingControlDoesNothing) {
    Attach({0, 0, 50, 50}, "knob");
    graphics.OnMouseDrag(5, 5, 1, 1, left);
    graphics.OnMouseDown(70, 70, left);
    graphics.OnMouseDrag(5, 5, 1, 1, left);
    EXPECT_EQ(TakeLog(), Log{});
    EXPECT_EQ(graphics.MouseX(), 0);
}

TEST_F(IGraphicsMouse, MouseDownIsTheStartOfTheDrag) {
    Attach({0, 0, 50, 50}, "knob");
    graphics.OnMouseDown(7, 8, left);
    EXPECT_EQ(graphics.MouseX(), 7);
    EXPECT_EQ(graphics.MouseY(), 8);
}

TEST_F(IGraphicsMouse, ReleaseWithoutACaptureGoesToTheControlThere) {
    Attach({0, 0, 50, 50}, "knob", 3);
    graphics.OnMouseUp(5, 5, left);
    EXPECT_EQ(TakeLog(), (Log{"knob up at 5,5", "end 3"}));
    graphics.OnMouseUp(70, 70, left);
    EXPECT_EQ(TakeLog(), Log{});
}

TEST_F(IGraphicsMouse, RightButtonOpensTheHostsMenuWhereTheHostHasOne) {
    plug.host = kHostWithParamMenu;
    Attach({0, 0, 50, 50}, "knob", 3);
    graphics.OnMouseDown(5, 5, right);
    EXPECT_EQ(TakeLog(), (Log{"menu 3", "knob right down at 5,5"}));
    EXPECT_EQ(graphics.MouseCapture(), -1);
    graphics.OnMouseDown(5, 5, left);
    EXPECT_EQ(TakeLog(), (Log{"begin 3", "knob down at 5,5"}));
}

TEST_F(IGraphicsMouse, HostsMenuIsForParametersOnly) {
    plug.host = kHostWithParamMenu;
    Attach({0, 0, 50, 50}, "button");
    graphics.OnMouseDown(5, 5, right);
    EXPECT_EQ(TakeLog(), Log{"button right down at 5,5"});
    EXPECT_EQ(graphics.MouseCapture(), 0);
}

TEST_F(IGraphicsMouse, RightButtonIsAnOrdinaryGestureInOtherHosts) {
    plug.host = 28;
    Attach({0, 0, 50, 50}, "knob", 3);
    graphics.OnMouseDown(5, 5, right);
    EXPECT_EQ(TakeLog(), (Log{"begin 3", "knob right down at 5,5"}));
    EXPECT_EQ(graphics.MouseCapture(), 0);
}

TEST_F(IGraphicsMouse, GestureEndsWhenAMenuHasTakenTheMouse) {
    Target& knob = Attach({0, 0, 50, 50}, "knob", 3);
    knob.onDown = [this] {
        IPopupMenu menu;
        graphics.CreateIPopupMenu(menu, {});
    };
    graphics.OnMouseDown(5, 5, left);
    EXPECT_EQ(TakeLog(), (Log{"begin 3", "knob down at 5,5", "end 3"}));
    EXPECT_EQ(graphics.MouseCapture(), -1);
}

TEST_F(IGraphicsMouse, GestureEndsWhenADragHasOpenedAMenu) {
    Target& knob = Attach({0, 0, 50, 50}, "knob", 3);
    knob.onDrag = [this] {
        IPopupMenu menu;
        graphics.CreateIPopupMenu(menu, {});
    };
    graphics.OnMouseDown(5, 5, left);
    graphics.OnMouseDrag(6, 8, 1, 3, left);
    EXPECT_EQ(TakeLog(), (Log{"begin 3", "knob down at 5,5", "knob drag 1,3 at 6,8", "end 3"}));
    graphics.OnMouseDrag(7, 9, 1, 1, left);
    EXPECT_EQ(TakeLog(), Log{});
}

TEST_F(IGraphicsMouse, GestureWhoseReleaseWasLostEndsWithTheNextOne) {
    Attach({0, 0, 50, 50}, "knob", 3);
    Attach({60, 0, 90, 50}, "other", 4);
    graphics.OnMouseDown(5, 5, left);
    graphics.OnMouseDown(65, 5, left);
    graphics.OnMouseUp(65, 5, left);
    EXPECT_EQ(TakeLog(), (Log{"begin 3", "knob down at 5,5", "end 3", "begin 4", "other down at 65,5",
                              "other up at 65,5", "end 4"}));
}

TEST_F(IGraphicsMouse, GestureWhoseReleaseWasLostEndsWithAClickBesideAllControls) {
    Attach({0, 0, 50, 50}, "knob", 3);
    graphics.OnMouseDown(5, 5, left);
    graphics.OnMouseDown(70, 70, left);
    graphics.OnMouseUp(70, 70, left);
    EXPECT_EQ(TakeLog(), (Log{"begin 3", "knob down at 5,5", "end 3"}));
}

TEST_F(IGraphicsMouse, DoubleClickGoesToTheControl) {
    Attach({0, 0, 50, 50}, "knob", 3);
    EXPECT_FALSE(graphics.OnMouseDblClick(5, 5, left));
    EXPECT_EQ(TakeLog(), Log{"knob double at 5,5"});
    EXPECT_EQ(graphics.MouseCapture(), -1);
    EXPECT_FALSE(graphics.OnMouseDblClick(70, 70, left));
    EXPECT_EQ(TakeLog(), Log{});
}

TEST_F(IGraphicsMouse, DoubleClickOfAButtonIsASecondMouseDownWithCapture) {
    Attach({0, 0, 50, 50}, "button", 3).TakeDoubleAsSingle();
    EXPECT_TRUE(graphics.OnMouseDblClick(5, 5, left));
    EXPECT_EQ(graphics.MouseCapture(), 0);
    EXPECT_EQ(graphics.MouseX(), 5);
    graphics.OnMouseUp(60, 60, left);
    EXPECT_EQ(TakeLog(), (Log{"begin 3", "button down at 5,5", "button up at 60,60", "end 3"}));
}

TEST_F(IGraphicsMouse, DoubleClickThatOpensAMenuEndsItsGestureAtOnce) {
    Target& button = Attach({0, 0, 50, 50}, "button", 3);
    button.TakeDoubleAsSingle();
    button.onDown = [this] {
        IPopupMenu menu;
        graphics.CreateIPopupMenu(menu, {});
    };
    EXPECT_FALSE(graphics.OnMouseDblClick(5, 5, left)) << "nothing to capture the mouse for";
    EXPECT_EQ(TakeLog(), (Log{"begin 3", "button down at 5,5", "end 3"}));
}

TEST_F(IGraphicsMouse, DoubleClickClearsCaptureAndMouseOver) {
    Attach({0, 0, 50, 50}, "a");
    graphics.OnMouseDown(5, 5, left);
    graphics.OnMouseOver(5, 5, none);
    graphics.OnMouseDblClick(5, 5, left);
    EXPECT_EQ(graphics.MouseCapture(), -1);
    EXPECT_EQ(graphics.MouseOverIndex(), -1);
}

TEST_F(IGraphicsMouse, OverAndOutFollowTheMouse) {
    Attach({0, 0, 50, 50}, "a");
    Attach({50, 0, 90, 50}, "b");
    graphics.OnMouseOver(5, 5, none);
    EXPECT_EQ(graphics.MouseOverIndex(), 0);
    graphics.OnMouseOver(6, 5, none);
    graphics.OnMouseOver(55, 5, none);
    EXPECT_EQ(graphics.MouseOverIndex(), 1);
    EXPECT_EQ(graphics.MouseX(), 55);
    graphics.OnMouseOver(5, 90, none);
    EXPECT_EQ(graphics.MouseOverIndex(), -1);
    EXPECT_EQ(TakeLog(), (Log{"a over at 5,5", "a over at 6,5", "b over at 55,5", "a out", "b out"}));
}

TEST_F(IGraphicsMouse, GrayedControlIsOnlyFoundByTheMouseOverItIfItWantsTo) {
    Target& gray = Attach({0, 0, 50, 50}, "gray");
    gray.GrayOut(true);
    graphics.OnMouseOver(5, 5, none);
    EXPECT_EQ(graphics.MouseOverIndex(), -1);
    gray.SetMouseOverWhenDisabled(true);
    graphics.OnMouseOver(5, 5, none);
    EXPECT_EQ(graphics.MouseOverIndex(), 0);
    gray.Hide(true);
    graphics.OnMouseOver(5, 5, none);
    EXPECT_EQ(graphics.MouseOverIndex(), -1);
    graphics.OnMouseDown(5, 5, left);
    EXPECT_EQ(graphics.MouseCapture(), -1);
}

TEST_F(IGraphicsMouse, MouseOverCanBeSwitchedOff) {
    Attach({0, 0, 50, 50}, "a");
    graphics.HandleMouseOver(false);
    graphics.OnMouseOver(5, 5, none);
    EXPECT_EQ(TakeLog(), Log{});
    EXPECT_EQ(graphics.MouseOverIndex(), -1);
}

TEST_F(IGraphicsMouse, LeavingTheWindowTellsAllControls) {
    Attach({0, 0, 50, 50}, "a");
    Attach({50, 0, 90, 50}, "b");
    graphics.OnMouseOver(5, 5, none);
    TakeLog();
    graphics.OnMouseOut();
    EXPECT_EQ(TakeLog(), (Log{"a out", "b out"}));
    EXPECT_EQ(graphics.MouseOverIndex(), -1);
}

TEST_F(IGraphicsMouse, MouseDownClearsCaptureAndMouseOver) {
    Attach({0, 0, 50, 50}, "a");
    graphics.OnMouseOver(5, 5, none);
    graphics.OnMouseDown(5, 5, left);
    EXPECT_EQ(graphics.MouseOverIndex(), -1);
    graphics.OnMouseDown(90, 90, left);
    EXPECT_EQ(graphics.MouseCapture(), -1);
}

TEST_F(IGraphicsMouse, KeysGoToTheControlUnderTheMouse) {
    Attach({0, 0, 50, 50}, "a");
    Attach({50, 0, 90, 50}, "b").usesKeys = true;
    EXPECT_FALSE(graphics.OnKeyDown(5, 5, KeyUp));
    EXPECT_TRUE(graphics.OnKeyDown(55, 5, KeyLetterA));
    EXPECT_FALSE(graphics.OnKeyDown(5, 90, KeyLetterA));
    EXPECT_EQ(TakeLog(), (Log{"a key 2 at 5,5", "b key 16 at 55,5"}));
}

TEST_F(IGraphicsMouse, WheelNotchesAreRoundedTowardZero) {
    EXPECT_EQ(IGraphics::WheelNotches(120), 1);
    EXPECT_EQ(IGraphics::WheelNotches(-120), -1);
    EXPECT_EQ(IGraphics::WheelNotches(119), 0);
    EXPECT_EQ(IGraphics::WheelNotches(-119), 0);
    EXPECT_EQ(IGraphics::WheelNotches(-360), -3);
}

} // namespace
} // namespace Grimworks
