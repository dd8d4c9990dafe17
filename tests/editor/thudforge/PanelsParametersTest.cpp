#include "core/Limits.h"
#include "core/ParameterIds.h"
#include "editor/IKnobControl.h"
#include "editor/ITextControl.h"
#include "editor/thudforge/IGwButtons.h"
#include "editor/thudforge/IGwPresetButtons.h"
#include "editor/thudforge/IGwPresetMenu.h"
#include "editor/thudforge/IGwTabButton.h"
#include "tests/editor/thudforge/EditorRig.h"
#include "tests/editor/thudforge/ExpectedCaptions.h"

#include <array>
#include <map>
#include <set>
#include <vector>

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

constexpr std::array<double, 5> kQuarters{0.0, 0.25, 0.5, 0.75, 1.0};

using Values = std::array<double, kLiveParameters>;

bool IsSync(int id) {
    return id == Param::PhaserTempoSync || (id < Param::EnvAttack && id % kOscParams == 15);
}

bool IsLink(int id) {
    return id < Param::EnvAttack && id % kOscParams == 14;
}

/// The rate that a tempo lock sets as well.
int RateOf(int sync) {
    return sync == Param::PhaserTempoSync ? static_cast<int>(Param::PhaserRate) : sync - 2;
}

/// In the middle of everything, so that every gesture moves something; nothing linked or locked.
double RestingValue(int id) {
    return IsSync(id) || IsLink(id) ? 0.0 : 0.5;
}

/// Buttons that move several parameters at once, or the same ones as a knob of their own, or turn the page:
/// not ways to set one parameter.
bool IsNoWayToSetOne(const IControl& control) {
    return dynamic_cast<const IGwTabButton*>(&control) != nullptr ||
           dynamic_cast<const IGwArrowActionButton*>(&control) != nullptr ||
           dynamic_cast<const IGwSyncButton*>(&control) != nullptr ||
           dynamic_cast<const IGwPresetMenu*>(&control) != nullptr ||
           dynamic_cast<const IGwPresetSwitch*>(&control) != nullptr ||
           dynamic_cast<const IGwRestorePresetButton*>(&control) != nullptr ||
           dynamic_cast<const IGwFileSelector*>(&control) != nullptr;
}

/// Chooses the first row, of this menu or of the ones below, that is not the present choice.
IPopupMenu* ChooseAnotherRow(IPopupMenu& menu) {
    for (int i = 0; i < menu.ItemCount(); ++i) {
        if (IPopupMenu* submenu = menu.Submenu(i)) {
            if (IPopupMenu* chosen = ChooseAnotherRow(*submenu)) return chosen;
        } else if (menu.Item(i)->CanBeChosen() && !menu.Item(i)->IsChecked()) {
            menu.SetChosenItem(i);
            return &menu;
        }
    }
    return nullptr;
}

class PanelsParameters : public testing::Test {
protected:
    PanelsParameters() { rig.graphics.onMenu = ChooseAnotherRow; }

    Values Read() {
        Values values{};
        for (int id = 0; id < kLiveParameters; ++id)
            values.at(static_cast<std::size_t>(id)) = rig.plug.GetParameterNormalized(id);
        return values;
    }

    void Rest() {
        for (int id = 0; id < kLiveParameters; ++id)
            rig.plug.SetParameterFromHost(id, RestingValue(id));
        rig.graphics.Tick();
    }

    /// Presses the left button on a control, drags it up, and lets go.
    void Gesture(int index) {
        const auto at = rig.Reach(index);
        if (!at) return;
        constexpr int kWay = 10;
        rig.graphics.OnMouseDown(at->x, at->y, kLeftButton);
        rig.graphics.OnMouseDrag(at->x + kWay, at->y - kWay, kWay, -kWay, kLeftButton);
        rig.graphics.OnMouseUp(at->x + kWay, at->y - kWay, {});
        rig.graphics.Tick();
    }

    /// The parameters that a gesture on a control moves; what follows from them is left out.
    std::set<int> Moves(int index) {
        Rest();
        const Values before = Read();
        Gesture(index);
        const Values after = Read();
        std::set<int> moved;
        for (int id = 0; id < kLiveParameters; ++id) {
            const auto i = static_cast<std::size_t>(id);
            if (before.at(i) != after.at(i)) moved.insert(id);
        }
        for (const int id : std::set<int>(moved))
            if (IsSync(id)) moved.erase(RateOf(id));
        return moved;
    }

    ICaptionControl* CaptionOf(int id) {
        ICaptionControl* found = nullptr;
        for (int i = 0; i < rig.graphics.ControlCount(); ++i) {
            auto* caption = dynamic_cast<ICaptionControl*>(rig.graphics.GetControl(i));
            if (caption == nullptr || caption->ParamIdx() != id) continue;
            EXPECT_EQ(found, nullptr) << "two captions of parameter " << id;
            found = caption;
        }
        return found;
    }

    CaptionSetting Setting() {
        CaptionSetting setting;
        setting.volumeDuration = rig.plug.GetParameterNormalized(Param::EnvDuration);
        setting.filterDuration = rig.plug.GetParameterNormalized(Param::FilterDuration);
        setting.phaserRate = rig.plug.GetParameterNormalized(Param::PhaserRate);
        for (int oscillator = 0; oscillator < kOscillators; ++oscillator) {
            setting.oscillatorRates[oscillator] =
                rig.plug.GetParameterNormalized(Osc(oscillator, OscParam::LfoRate));
        }
        return setting;
    }

    EditorRig rig;
};

TEST_F(PanelsParameters, EachLiveOneIsMovedByOneControlOrByAMenuWithItsArrows) {
    std::map<int, int> controls;
    std::map<int, int> arrows;
    for (int i = 0; i < rig.graphics.ControlCount(); ++i) {
        const IControl& control = *rig.graphics.GetControl(i);
        if (control.IsHidden() || IsNoWayToSetOne(control)) continue;
        const std::set<int> moved = Moves(i);
        ASSERT_LE(moved.size(), 1U) << "control " << i;
        if (moved.empty()) continue;
        const bool isArrow = dynamic_cast<const IGwModeSwitch*>(&control) != nullptr;
        ++(isArrow ? arrows : controls)[*moved.begin()];
        if (!isArrow) {
            EXPECT_EQ(control.ParamIdx(), *moved.begin()) << "control " << i;
        }
    }
    const std::map<int, int> arrowsOf{{1, 2},  {22, 2}, {43, 2},  {11, 1},  {12, 1},  {32, 1},  {33, 1},
                                      {53, 1}, {54, 1}, {102, 2}, {104, 1}, {108, 1}, {118, 1}, {119, 1}};
    EXPECT_EQ(arrows, arrowsOf);
    for (int id = 0; id < kLiveParameters; ++id) {
        const bool stepsOnly = id == Param::DistortionInterpMode || id == Param::DynShaperMode;
        EXPECT_EQ(controls[id], stepsOnly ? 0 : 1) << "parameter " << id;
    }
}

TEST_F(PanelsParameters, ControlsFollowAutomationToEveryQuarter) {
    Rest();
    for (int id = 0; id < kLiveParameters; ++id) {
        for (const double v : kQuarters) {
            rig.Automate(id, v);
            int shown = 0;
            for (int i = 0; i < rig.graphics.ControlCount(); ++i) {
                const IControl& control = *rig.graphics.GetControl(i);
                if (control.ParamIdx() != id) continue;
                ++shown;
                EXPECT_NEAR(control.Value(), v, 1e-12) << "parameter " << id << " control " << i;
            }
            EXPECT_GE(shown, 1) << "parameter " << id;
        }
        rig.Automate(id, RestingValue(id));
    }
}

TEST_F(PanelsParameters, CaptionsTellEveryQuarterInTheFormatOfTheirParameter) {
    for (int id = 0; id < kLiveParameters; ++id) {
        Rest();
        ICaptionControl* const caption = CaptionOf(id);
        const std::string any = ExpectedCaption(id, 0.5, Setting());
        ASSERT_EQ(caption != nullptr, !any.empty()) << "parameter " << id;
        if (caption == nullptr) continue;
        for (const double v : kQuarters) {
            rig.Automate(id, v);
            caption->Draw(rig.graphics);
            EXPECT_EQ(caption->String(), ExpectedCaption(id, v, Setting()))
                << "parameter " << id << " at " << v;
        }
    }
}

TEST_F(PanelsParameters, ADoubleClickOnAKnobGoesBackToWhatTheFirstProgramHas) {
    const double first = rig.plug.GetParameterNormalized(Param::PitchAmount);
    const int knob = [this] {
        for (int i = 0; i < rig.graphics.ControlCount(); ++i) {
            const auto* control = dynamic_cast<IKnobMultiControl*>(rig.graphics.GetControl(i));
            if (control != nullptr && control->ParamIdx() == Param::PitchAmount) return i;
        }
        return -1;
    }();
    ASSERT_GE(knob, 0);
    rig.Automate(Param::PitchAmount, first > 0.5 ? 0.1 : 0.9);
    const auto at = rig.Reach(knob);
    ASSERT_TRUE(at.has_value());
    rig.graphics.OnMouseDblClick(at->x, at->y, kLeftButton);
    EXPECT_DOUBLE_EQ(rig.plug.GetParameterNormalized(Param::PitchAmount), first);
}

TEST_F(PanelsParameters, ACaptionAsksForAnotherValueWhenClicked) {
    ICaptionControl* const caption = CaptionOf(Param::UnisonDetune);
    ASSERT_NE(caption, nullptr);
    rig.Automate(Param::UnisonDetune, 0.25);
    const IRECT& at = caption->TargetRect();
    rig.graphics.OnMouseDown(at.MW(), at.MH(), kLeftButton);
    ASSERT_EQ(rig.graphics.entries.size(), 1U);
    EXPECT_EQ(rig.graphics.entries.front().control, caption);
    EXPECT_EQ(rig.graphics.entries.front().string, "0.250");
    IGraphics::CommitTextEntry(*caption, rig.graphics.entries.front().param, "0.75");
    EXPECT_DOUBLE_EQ(rig.plug.GetParameterNormalized(Param::UnisonDetune), 0.75);
}

TEST_F(PanelsParameters, AnEnvelopeIsCopiedToTheOtherByItsArrow) {
    Rest();
    const std::array<double, 5> shape{0.1, 0.2, 0.3, 0.4, 0.6};
    for (int i = 0; i < 5; ++i)
        rig.Automate(Param::EnvAttack + i, shape.at(static_cast<std::size_t>(i)));
    const int toFilter = rig.Find<IGwArrowActionButton>();
    ASSERT_GE(toFilter, 0);
    rig.Click(toFilter);
    for (int i = 0; i < 5; ++i) {
        EXPECT_DOUBLE_EQ(rig.plug.GetParameterNormalized(Param::FilterAttack + i),
                         shape.at(static_cast<std::size_t>(i)));
    }
    for (int i = 0; i < 5; ++i)
        rig.Automate(Param::FilterAttack + i, 0.9);
    const int toVolume = rig.Find<IGwArrowActionButton>(toFilter + 1);
    ASSERT_GE(toVolume, 0);
    rig.Click(toVolume);
    for (int i = 0; i < 5; ++i)
        EXPECT_DOUBLE_EQ(rig.plug.GetParameterNormalized(Param::EnvAttack + i), 0.9);
}

} // namespace
} // namespace Grimworks
