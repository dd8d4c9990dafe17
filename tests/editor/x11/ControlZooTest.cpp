#include "editor/IBitmapControl.h"
#include "editor/IFaderControl.h"
#include "editor/IFileSelectorControl.h"
#include "editor/IKnobControl.h"
#include "editor/ITextControl.h"
#include "editor/LICE_Draw.h"
#include "editor/LICE_Png.h"
#include "tests/editor/ControlRig.h"
#include "tests/editor/x11/HostWindow.h"
#include "tests/editor/x11/StandInPrograms.h"
#include "tests/editor/x11/XServer.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Grimworks {
namespace {

/// One of every control in a real window, under a user's mouse and keyboard. They stand where they do in the
/// zoo without a window, so that the same gestures must give the same values.
class WindowZoo : public ::testing::Test {
protected:
    static constexpr int kSwitch = 0;
    static constexpr int kKnob = 4;
    static constexpr int kSideKnob = 5;
    static constexpr int kFader = 6;
    static constexpr int kTallFader = 7;
    static constexpr int kCaptioned = 63;
    static constexpr int kGround = 200; ///< frame number that the background shows
    static constexpr int kLeftEdge = 200;
    static constexpr int kTopEdge = 150;
    static constexpr int kWidth = ControlRig::kWidth;
    static constexpr int kHeight = ControlRig::kHeight;

    void SetUp() override {
        ASSERT_TRUE(server.Runs());
        ASSERT_TRUE(host.Works());
        ASSERT_FALSE(programs.Folder().empty());
        tallFader.SetHorizontal(false);
        caption.EnablePrompt(true);
        knob.SetValueDisplayControl(&knobText);
        plug.AttachGraphics(graphics.get());
        plug.RedrawParamControls();
    }

    void TearDown() override {
        graphics->CloseWindow();
        plug.AttachGraphics(nullptr);
    }

    template <class Control, class... Arguments>
    Control& Attach(Arguments&&... arguments) {
        auto control = std::make_unique<Control>(&plug, std::forward<Arguments>(arguments)...);
        Control& attached = *control;
        graphics->AttachControl(std::move(control));
        return attached;
    }

    /// Opens the window and waits until the knob stands where the plug-in has it.
    [[nodiscard]] bool Open() {
        const auto frame = static_cast<int>(std::floor(Get(kKnob) * 100.0 + 0.5)) + 1;
        return graphics->OpenWindow(host.Parent()) && Shows(81, 6, frame);
    }

    /// Moves the mouse to a point of the editor and does something there.
    [[nodiscard]] static bool UserAt(int x, int y, const std::vector<std::string>& does) {
        return User(MoveTo(kLeftEdge + x, kTopEdge + y)) && User(does);
    }
    [[nodiscard]] static bool ClickAt(int x, int y) { return UserAt(x, y, {"click", "1"}); }
    [[nodiscard]] static bool DragFrom(int x, int y, int toX, int toY) {
        return UserAt(x, y, {"mousedown", "1"}) && UserAt(toX, toY, {"mouseup", "1"});
    }

    /// Waits until the window shows a frame at a point.
    [[nodiscard]] bool Shows(int x, int y, int frame) {
        LICE_MemBitmap seen;
        return Eventually([&] {
            host.Grab(host.Editors().front(), seen);
            return (LICE_GetPixel(&seen, x, y) & 0xFFFFFFU) == (LICE_RGBA(frame, 100, 200, 0) & 0xFFFFFFU);
        });
    }

    /// Waits until the window shows a text, as it is drawn without a window.
    [[nodiscard]] bool ShowsText(const IRECT& rect, const std::string& text) {
        ControlRig rig;
        rig.Attach<IBitmapControl>(0, 0, -1, rig.strips.Make(kWidth, kHeight, 1, false, kGround));
        rig.Attach<ITextControl>(rect, IText(), text);
        rig.graphics.Settle();
        LICE_MemBitmap seen;
        return Eventually([&] {
            host.Grab(host.Editors().front(), seen);
            for (int y = rect.T; y < rect.B; ++y) {
                for (int x = rect.L; x < rect.R; ++x) {
                    const LICE_pixel other = LICE_GetPixel(&seen, x, y) ^ rig.graphics.ScreenPixel(x, y);
                    if ((other & 0xFFFFFFU) != 0) return false;
                }
            }
            return true;
        });
    }

    [[nodiscard]] double Get(int id) const { return plug.GetParameterNormalized(id); }
    [[nodiscard]] bool Has(int id, double value) const {
        return Eventually([&] { return std::abs(Get(id) - value) < 1e-12; });
    }

    [[nodiscard]] bool EntryHasTheKeyboard() {
        return Eventually([&] {
            const auto children = host.ChildrenOf(host.Editors().front());
            return children.size() == 1 && host.Focus() == children.front();
        });
    }

    [[nodiscard]] bool TypeIntoCaption(const std::string& text) {
        return ClickAt(20, 95) && EntryHasTheKeyboard() && User({"type", "--delay", "0", text}) &&
               User({"key", "Return"});
    }

    /// Leaves the picture of the window beside the program of the tests.
    void Save(const std::string& name) {
        const auto file = std::filesystem::read_symlink("/proc/self/exe").parent_path() / name;
        LICE_MemBitmap seen;
        host.Grab(host.Editors().front(), seen);
        std::vector<std::uint8_t> bytes;
        ASSERT_TRUE(SavePngToMemory(seen, bytes));
        std::ofstream out(file, std::ios::binary);
        out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        EXPECT_TRUE(out.good());
    }

    XServer server;
    StandInPrograms programs;
    FakePlug plug;
    TestStrips strips;
    HostWindow host{kLeftEdge, kTopEdge, kWidth + 100, kHeight + 100};
    std::unique_ptr<IGraphics> graphics = MakeGraphics(plug, kWidth, kHeight);
    IBitmapControl& background =
        Attach<IBitmapControl>(0, 0, -1, strips.Make(kWidth, kHeight, 1, false, kGround));
    IBitmapControl& picture = Attach<IBitmapControl>(5, 5, -1, strips.Make(20, 20, 3));
    ISwitchControl& button = Attach<ISwitchControl>(30, 5, kSwitch, strips.Make(20, 20, 3));
    IContactControl& contact = Attach<IContactControl>(55, 5, -1, strips.Make(20, 20, 2));
    IKnobMultiControl& knob = Attach<IKnobMultiControl>(80, 5, kKnob, strips.Make(40, 40, 101));
    IKnobMultiControl& sideKnob =
        Attach<IKnobMultiControl>(125, 5, kSideKnob, strips.Make(40, 40, 101), IKnobControl::Horizontal);
    IFaderControl& fader = Attach<IFaderControl>(5, 60, 110, kFader, strips.Make(10, 10, 1));
    IFaderControl& tallFader = Attach<IFaderControl>(200, 60, 110, kTallFader, strips.Make(10, 10, 1));
    ITextControl& knobText = Attach<ITextControl>(IRECT(80, 45, 120, 58), IText());
    ICaptionControl& caption = Attach<ICaptionControl>(IRECT(5, 90, 65, 106), kCaptioned, IText(), true);
    IFileSelectorControl& selector =
        Attach<IFileSelectorControl>(80, 90, -1, strips.Make(20, 20, 2), IGraphics::FileOpen);
};

TEST_F(WindowZoo, OpensWithTheValuesOfThePlug) {
    ASSERT_TRUE(Open());
    EXPECT_TRUE(Shows(6, 6, 1));
    EXPECT_TRUE(Shows(299, 199, kGround));
    graphics->CloseWindow();
    for (const auto* control : {static_cast<IControl*>(&button), static_cast<IControl*>(&knob),
                                static_cast<IControl*>(&sideKnob), static_cast<IControl*>(&fader),
                                static_cast<IControl*>(&tallFader), static_cast<IControl*>(&caption)}) {
        EXPECT_EQ(control->Value(), Get(control->ParamIdx()));
        EXPECT_EQ(control->DefaultValue(), control->Value());
    }
}

TEST_F(WindowZoo, SwitchShowsEachState) {
    plug.SetParameterFromHost(kSwitch, 0.0);
    ASSERT_TRUE(Open());
    ASSERT_TRUE(Shows(31, 6, 1));
    // The second of two quick clicks is a double click, and a step as well.
    for (const int frame : {2, 3, 1}) {
        ASSERT_TRUE(ClickAt(40, 10));
        EXPECT_TRUE(Has(kSwitch, (frame - 1) / 2.0));
        EXPECT_TRUE(Shows(31, 6, frame));
    }
}

TEST_F(WindowZoo, ContactIsDrawnDownWhileItIsHeld) {
    ASSERT_TRUE(Open());
    EXPECT_TRUE(Shows(60, 10, 1));
    ASSERT_TRUE(UserAt(60, 10, {"mousedown", "1"}));
    EXPECT_TRUE(Shows(60, 10, 2));
    ASSERT_TRUE(UserAt(290, 190, {"mouseup", "1"}));
    EXPECT_TRUE(Shows(60, 10, 1));
}

TEST_F(WindowZoo, KnobIsDraggedWheeledAndBroughtBack) {
    const double opened = Get(kKnob);
    ASSERT_NE(opened, 0.5);
    ASSERT_TRUE(Open());
    plug.SetParameterFromHost(kKnob, 0.5);
    ASSERT_TRUE(Shows(81, 6, 51));
    ASSERT_TRUE(DragFrom(100, 25, 100, 9)); // 16 / 40 / 4
    EXPECT_TRUE(Has(kKnob, 0.6));
    EXPECT_TRUE(Shows(81, 6, 61));
    ASSERT_TRUE(UserAt(100, 25, {"click", "--repeat", "5", "--delay", "2", "5"}));
    EXPECT_TRUE(Has(kKnob, 0.55));
    EXPECT_TRUE(Shows(81, 6, 56));
    ASSERT_TRUE(UserAt(100, 25, {"keydown", "ctrl", "click", "4", "keyup", "ctrl"}));
    EXPECT_TRUE(Has(kKnob, 0.551));
    graphics->CloseWindow();
    EXPECT_EQ(knobText.String(), "0.551 ");
    ASSERT_TRUE(Open());
    ASSERT_TRUE(UserAt(100, 25, {"click", "--repeat", "2", "--delay", "10", "1"}));
    EXPECT_TRUE(Has(kKnob, opened));
}

TEST_F(WindowZoo, SideKnobTakesSidewaysDragsOnly) {
    plug.SetParameterFromHost(kSideKnob, 0.25);
    ASSERT_TRUE(Open());
    ASSERT_TRUE(Shows(126, 6, 26));
    ASSERT_TRUE(DragFrom(140, 20, 172, 5)); // 32 / 40 / 4
    EXPECT_TRUE(Has(kSideKnob, 0.45));
    EXPECT_TRUE(Shows(126, 6, 46));
}

TEST_F(WindowZoo, FaderHandlesStandWhereTheMouseWas) {
    ASSERT_TRUE(Open());
    ASSERT_TRUE(ClickAt(60, 65)); // (60 - 5 - 5) / 100
    EXPECT_TRUE(Has(kFader, 0.5));
    EXPECT_TRUE(Shows(55, 60, 1));
    EXPECT_TRUE(Shows(64, 69, 1));
    EXPECT_TRUE(Shows(54, 60, kGround));
    EXPECT_TRUE(Shows(65, 69, kGround));
    ASSERT_TRUE(DragFrom(205, 160, 205, 90)); // 1 - (90 - 5 - 60) / 100
    EXPECT_TRUE(Has(kTallFader, 0.75));
    EXPECT_TRUE(Shows(200, 85, 1));
    EXPECT_TRUE(Shows(209, 94, 1));
    EXPECT_TRUE(Shows(200, 84, kGround));
    EXPECT_TRUE(Shows(209, 95, kGround));
    // Far past the end, with the mouse outside of the window.
    ASSERT_TRUE(DragFrom(205, 90, 205, -60));
    EXPECT_TRUE(Has(kTallFader, 1.0));
}

TEST_F(WindowZoo, CaptionTakesATypedValue) {
    plug.SetParameterFromHost(kCaptioned, 0.5);
    ASSERT_TRUE(Open());
    ASSERT_TRUE(TypeIntoCaption("0.125"));
    EXPECT_TRUE(Has(kCaptioned, 0.125));
    EXPECT_TRUE(ShowsText(caption.Rect(), "0.125 s"));
    graphics->CloseWindow();
    EXPECT_EQ(caption.Value(), 0.125);
}

TEST_F(WindowZoo, SelectorIsSeenWhileItsDialogIsOpen) {
    const auto go = programs.Folder() / "go";
    programs.Make("zenity", "while [ ! -e " + go.string() + " ]; do sleep 0.02; done; echo /songs/kick.fxp");
    ASSERT_TRUE(Open());
    ASSERT_TRUE(Shows(85, 95, kGround));
    ASSERT_TRUE(ClickAt(85, 95));
    EXPECT_TRUE(Shows(85, 95, 1));
    std::ofstream(go).put('.');
    EXPECT_TRUE(Shows(85, 95, kGround));
    graphics->CloseWindow();
    EXPECT_EQ(selector.Dir() + selector.File(), "/songs/kick.fxp");
    EXPECT_EQ(selector.Value(), 1.0);
}

TEST_F(WindowZoo, HiddenAndGrayedControlsTakeNoMouse) {
    plug.SetParameterFromHost(kSwitch, 0.5);
    plug.SetParameterFromHost(kSideKnob, 0.25);
    button.Hide(true);
    sideKnob.GrayOut(true);
    ASSERT_TRUE(Open());
    EXPECT_TRUE(Shows(31, 6, kGround));
    ASSERT_TRUE(ClickAt(31, 6));
    ASSERT_TRUE(UserAt(140, 20, {"click", "4"}));
    ASSERT_TRUE(DragFrom(140, 20, 172, 20));
    ASSERT_TRUE(ClickAt(60, 65));
    ASSERT_TRUE(Has(kFader, 0.5)); // what comes last
    EXPECT_EQ(Get(kSwitch), 0.5);
    EXPECT_EQ(Get(kSideKnob), 0.25);
}

TEST_F(WindowZoo, ShowsAllThatTheUserMovedTogether) {
    plug.SetParameterFromHost(kSwitch, 0.0);
    plug.SetParameterFromHost(kKnob, 0.5);
    plug.SetParameterFromHost(kSideKnob, 0.25);
    ASSERT_TRUE(Open());
    ASSERT_TRUE(ClickAt(40, 10));
    ASSERT_TRUE(DragFrom(100, 25, 100, 9));
    ASSERT_TRUE(DragFrom(140, 20, 172, 5));
    ASSERT_TRUE(ClickAt(60, 65));
    ASSERT_TRUE(ClickAt(205, 90));
    ASSERT_TRUE(TypeIntoCaption("0.125"));
    ASSERT_TRUE(Has(kCaptioned, 0.125));
    const std::vector<std::pair<IRECT, int>> frames = {
        {{6, 6, 0, 0}, 1},    {{31, 6, 0, 0}, 2},  {{60, 10, 0, 0}, 1},  {{81, 6, 0, 0}, 61},
        {{126, 6, 0, 0}, 46}, {{60, 65, 0, 0}, 1}, {{205, 90, 0, 0}, 1}, {{85, 95, 0, 0}, kGround},
    };
    for (const auto& [point, frame] : frames)
        EXPECT_TRUE(Shows(point.L, point.T, frame)) << point.L << ", " << point.T;
    EXPECT_TRUE(ShowsText(knobText.Rect(), "0.600 "));
    EXPECT_TRUE(ShowsText(caption.Rect(), "0.125 s"));
    Save("control-zoo.png");
}

} // namespace
} // namespace Grimworks
