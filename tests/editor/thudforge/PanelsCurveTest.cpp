#include "core/ParameterIds.h"
#include "editor/thudforge/IGwButtons.h"
#include "editor/thudforge/IGwChoiceMenus.h"
#include "editor/thudforge/IGwCurve2.h"
#include "tests/editor/thudforge/EditorRig.h"

#include <cstddef>

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

/// Where the curve is drawn and where its preview stands.
const IRECT kArea(837, 391, 965, 519);
const IRECT kPreview(653, 390, 773, 426);

class PanelsCurve : public testing::Test {
protected:
    PanelsCurve() {
        rig.graphics.Settle();
        draw = rig.Find<IGwCurve2>();
        preview = rig.Find<IGwCurve2>(draw + 1);
    }

    /// A point of the curve that sound takes, and of the editor's own copy.
    double Heard(int point) {
        return rig.plug.AudioStage().GetDistortion().Points().at(static_cast<std::size_t>(point));
    }
    double Kept(int point) {
        return rig.plug.EditorStage().GetDistortion().Points().at(static_cast<std::size_t>(point));
    }

    /// The step button of the curve list: 0 the previous one, 1 the next one.
    int Arrow(int direction) {
        int index = rig.Find<IGwModeSwitch>();
        for (; index >= 0; index = rig.Find<IGwModeSwitch>(index + 1)) {
            const std::string& tip = rig.graphics.GetControl(index)->Tooltip();
            if (tip == (direction == 0 ? "Select Previous Curve" : "Select Next Curve")) break;
        }
        return index;
    }

    EditorRig rig;
    int draw = -1;
    int preview = -1;
};

TEST_F(PanelsCurve, IsDrawnOnItsAreaAndPreviewedBesideIt) {
    ASSERT_GE(draw, 0);
    ASSERT_GE(preview, 0);
    EXPECT_EQ(rig.graphics.GetControl(draw)->Rect(), kArea);
    EXPECT_EQ(rig.graphics.GetControl(preview)->Rect(), kPreview);
}

TEST_F(PanelsCurve, AStrokeGoesToBothStagesAndRedrawsBothDisplays) {
    // A quarter below the top: half way up from the middle. Pixel 20 stands for point 80.
    rig.graphics.OnMouseDown(kArea.L + 20, kArea.T + 32, kLeftButton);
    const IRECT drawn = rig.graphics.RunTick();
    EXPECT_EQ(drawn.Union(kArea.Union(kPreview)), drawn);
    EXPECT_DOUBLE_EQ(Heard(80), 0.5);
    EXPECT_DOUBLE_EQ(Kept(80), 0.5);
    rig.graphics.OnMouseDrag(kArea.L + 21, kArea.T + 96, 1, 64, kLeftButton);
    rig.graphics.OnMouseUp(kArea.L + 21, kArea.T + 96, {});
    rig.graphics.RunTick();
    EXPECT_DOUBLE_EQ(Heard(84), -0.5);
    EXPECT_DOUBLE_EQ(Heard(80), -0.5 * 0.7 + 0.5 * 0.3) << "the neighbour is pulled along";
}

TEST_F(PanelsCurve, TheRightButtonOpensTheMenuAndDrawsNothing) {
    const double before = Heard(80);
    int rows = 0;
    rig.graphics.onMenu = [&rows](IPopupMenu& menu) -> IPopupMenu* {
        rows = menu.ItemCount();
        return nullptr;
    };
    rig.graphics.OnMouseDown(kArea.L + 20, kArea.T + 32, kRightButton);
    rig.graphics.OnMouseUp(kArea.L + 20, kArea.T + 32, {});
    rig.graphics.RunTick();
    EXPECT_EQ(rows, 8);
    EXPECT_EQ(Heard(80), before);
}

TEST_F(PanelsCurve, RestoreBringsTheStockCurveBack) {
    const double before = Heard(80);
    rig.graphics.OnMouseDown(kArea.L + 20, kArea.T + 2, kLeftButton);
    rig.graphics.OnMouseUp(kArea.L + 20, kArea.T + 2, {});
    rig.graphics.RunTick();
    ASSERT_NE(Heard(80), before);
    rig.Click(rig.Find<IGwRestoreCurveButton>());
    EXPECT_EQ(Heard(80), before);
    EXPECT_EQ(Kept(80), before);
}

TEST_F(PanelsCurve, ArrowsStepThroughTheListAndStopAtItsEnds) {
    const int menu = rig.Find<IGwDistoPresetMenu>();
    ASSERT_GE(menu, 0);
    const auto& name = dynamic_cast<IGwDistoPresetMenu&>(*rig.graphics.GetControl(menu));
    rig.Automate(Param::DistortionType, 0.0);
    EXPECT_EQ(name.String().substr(0, 4), "01: ");
    rig.Click(Arrow(0));
    EXPECT_EQ(name.String().substr(0, 4), "01: ");
    rig.Click(Arrow(1));
    EXPECT_EQ(name.String().substr(0, 4), "02: ");
    EXPECT_DOUBLE_EQ(rig.plug.GetParameterNormalized(Param::DistortionType), 1.0 / 41.0);
    rig.Automate(Param::DistortionType, 1.0);
    rig.Click(Arrow(1));
    EXPECT_EQ(name.String().substr(0, 4), "42: ");
}

} // namespace
} // namespace Grimworks
