#include "editor/thudforge/IGwCurve2.h"

#include "tests/editor/thudforge/DisplayRig.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <vector>

namespace Grimworks {

namespace {

const IRECT kArea{837, 391, 965, 519};
const IRECT kPreview{653, 390, 773, 426};

/// The two displays of the panel over an instrument whose curve is the straight line.
struct CurveRig : DisplayRig {
    CurveRig() {
        Set(Param::DistortionInterpMode, 1.0 / 3.0); // linear: points lie exactly on the line
        plug.RequestCurveOperation(CurveOperation::Reset);
        area.SetLinkedCurve(&preview);
        Refresh();
    }

    void Refresh() {
        while (plug.RefreshCurveDisplay()) {
        }
    }

    [[nodiscard]] const std::vector<double>& Values() const { return plug.Drawing().Values(); }
    [[nodiscard]] const CurvePoints& Curve() const { return plug.AudioStage().GetDistortion().Points(); }

    IGwCurve2& area =
        graphics.Attach<IGwCurve2>(&plug, kArea, 128, static_cast<int>(IGwCurve2::CurveInFront), true);
    IGwCurve2& preview =
        graphics.Attach<IGwCurve2>(&plug, kPreview, 120, static_cast<int>(IGwCurve2::SignalInFront), false);
};

int Bright(int start, int points) {
    return 92 + static_cast<int>(std::floor(std::sin(start / static_cast<double>(points) * 3.14159) * 163.0));
}

int Dark(int start, int points) {
    return static_cast<int>(std::floor(std::sin(start / static_cast<double>(points) * 3.14159) * 78.0));
}

/// The row of the area that a value lies on; the lowest one is the last of the area.
int AreaRow(double value) {
    return std::min(static_cast<int>(391.0 + 64.0 - value * 64.0), 518);
}

int PreviewRow(double value) {
    return std::min(static_cast<int>(390.0 + 18.0 - value * 18.0), 425);
}

bool IsStraight(const CurvePoints& points) {
    for (std::size_t k = 0; k < points.size(); ++k) {
        if (std::fabs(points[k] - (2.0 * static_cast<double>(k) / 511.0 - 1.0)) > 1e-12) return false;
    }
    return true;
}

} // namespace

TEST(IGwCurve2, TheCurveGlowsInFrontOfTheSignal) {
    CurveRig rig;
    rig.DrawAll();
    int darkPixels = 0;
    for (int k = 0; k < 127; ++k) {
        const int row = AreaRow(2.0 * k / 127.0 - 1.0);
        EXPECT_EQ(rig.Color(837 + k, row), Gray(Bright(k, 128))) << k;
        if (k >= 119) continue;
        const int signalRow = AreaRow(rig.plug.Preview().signal[static_cast<std::size_t>(k)]);
        if (std::abs(signalRow - row) < 3) continue;
        EXPECT_EQ(rig.Color(837 + k, signalRow), Gray(Dark(k, 128))) << k;
        ++darkPixels;
    }
    EXPECT_GT(darkPixels, 50);
}

TEST(IGwCurve2, ThePreviewHasTheSignalInFront) {
    CurveRig rig;
    rig.DrawAll();
    int darkPixels = 0;
    for (int k = 0; k < 119; ++k) {
        const int row = PreviewRow(rig.plug.Preview().signal[static_cast<std::size_t>(k)]);
        EXPECT_EQ(rig.Color(653 + k, row), Gray(Bright(k, 120))) << k;
        const int curveRow = PreviewRow(2.0 * k / 127.0 - 1.0);
        if (std::abs(curveRow - row) < 4) continue;
        EXPECT_EQ(rig.Color(653 + k, curveRow), Gray(Dark(k, 120))) << k;
        ++darkPixels;
    }
    EXPECT_GT(darkPixels, 30);
}

TEST(IGwCurve2, AnyOtherModeShowsBothDark) {
    CurveRig rig;
    rig.area.SetDisplayMode(2);
    rig.DrawAll();
    for (int k = 40; k < 120; ++k)
        EXPECT_EQ(rig.Color(837 + k, AreaRow(2.0 * k / 127.0 - 1.0)), Gray(Dark(k, 128))) << k;
}

TEST(IGwCurve2, GraysAtTheEndsAndInTheMiddleAreThoseOfTheDisplay) {
    EXPECT_EQ(Bright(0, 128), 92);
    EXPECT_EQ(Bright(32, 128), 207);
    EXPECT_EQ(Bright(64, 128), 254);
    EXPECT_EQ(Dark(0, 128), 0);
    EXPECT_EQ(Dark(64, 128), 77);
    CurveRig rig;
    rig.DrawAll();
    EXPECT_EQ(rig.Color(837, 518), Gray(92));
    EXPECT_EQ(rig.Color(837 + 64, AreaRow(1.0 / 127.0)), Gray(254));
}

TEST(IGwCurve2, ItsFrameIsBlue) {
    CurveRig rig;
    rig.area.ShowFrame(true);
    rig.DrawAll();
    EXPECT_EQ(rig.Color(837, 391), Rgb(0, 0, 255));
    EXPECT_EQ(rig.Color(964, 450), Rgb(0, 0, 255));
}

TEST(IGwCurve2, NothingIsDrawnBelowTheControl) {
    CurveRig rig;
    rig.DrawAll();
    for (int x = 830; x < 970; ++x)
        ASSERT_EQ(rig.Color(x, 519), kBlack) << x;
}

TEST(IGwCurve2, APressSetsTheValueOfThePixel) {
    CurveRig rig;
    rig.area.SetDisplayMode(1);
    rig.graphics.OnMouseDown(837 + 40, 391 + 32, kLeftDown);
    EXPECT_EQ(rig.Values()[40], -0.5);
    EXPECT_EQ(rig.Values()[41], -rig.Curve()[164]); // as it was
    EXPECT_TRUE(rig.plug.Drawing().HasStroke());
    EXPECT_EQ(rig.area.GetDisplayMode(), 0);
}

TEST(IGwCurve2, AStrokeRedrawsBothDisplays) {
    CurveRig rig;
    rig.graphics.Settle();
    ASSERT_FALSE(rig.area.IsDirty());
    ASSERT_FALSE(rig.preview.IsDirty());
    rig.graphics.OnMouseDown(900, 450, kLeftDown);
    EXPECT_TRUE(rig.area.IsDirty());
    EXPECT_TRUE(rig.preview.IsDirty());
    rig.graphics.Settle();
    rig.graphics.OnMouseDrag(905, 455, 5, 5, kLeftDown);
    EXPECT_TRUE(rig.area.IsDirty());
    EXPECT_TRUE(rig.preview.IsDirty());
}

TEST(IGwCurve2, ADragDrawsAndFillsAhead) {
    CurveRig rig;
    rig.graphics.OnMouseDown(837 + 10, 391 + 64, kLeftDown);
    rig.graphics.OnMouseDrag(837 + 20, 391 + 96, 10, 32, kLeftDown);
    for (std::size_t x = 20; x <= 30; ++x)
        EXPECT_EQ(rig.Values()[x], 0.5) << x;
    EXPECT_EQ(rig.Values()[10], 0.0);
    EXPECT_NE(rig.Values()[15], 0.5);
}

TEST(IGwCurve2, AStrokeThatStartsWithASecondClickIsDrawnLikeAnyOther) {
    CurveRig rig;
    rig.graphics.OnMouseDown(837 + 10, 391 + 64, kLeftDown);
    rig.graphics.OnMouseUp(837 + 10, 391 + 64, kLeftDown);
    rig.graphics.OnMouseDblClick(837 + 10, 391 + 32, kLeftDown);
    EXPECT_EQ(rig.Values()[10], -0.5);
    rig.graphics.OnMouseDrag(837 + 20, 391 + 96, 10, 64, kLeftDown);
    EXPECT_EQ(rig.Values()[20], 0.5);
}

TEST(IGwCurve2, ADragBeyondTheEdgeLeavesTheDrawingAlone) {
    CurveRig rig;
    rig.graphics.OnMouseDown(960, 450, kLeftDown);
    rig.graphics.Settle();
    const std::vector<double> before = rig.Values();
    rig.graphics.OnMouseDrag(965, 400, 5, -50, kLeftDown);
    rig.graphics.OnMouseDrag(800, 400, -165, 0, kLeftDown);
    EXPECT_EQ(rig.Values(), before);
    EXPECT_FALSE(rig.area.IsDirty());
}

TEST(IGwCurve2, APressBeyondTheRightEdgeChangesNothingAndStillCounts) {
    CurveRig rig;
    rig.graphics.Settle();
    const std::vector<double> before = rig.Values();
    rig.area.OnMouseDown(965, 450, kLeftDown);
    EXPECT_EQ(rig.Values(), before);
    EXPECT_TRUE(rig.area.IsDirty());
    EXPECT_TRUE(rig.plug.Drawing().HasStroke());
}

TEST(IGwCurve2, AStrokeIsAppliedByTheDrawingOfTheControlWhileTheAudioStandsStill) {
    CurveRig rig;
    rig.graphics.OnMouseDown(837 + 100, 391 + 16, kLeftDown);
    EXPECT_NE(rig.Curve()[400], 0.75);
    rig.graphics.RunTick();
    EXPECT_EQ(rig.Curve()[400], 0.75);
    EXPECT_FALSE(rig.plug.Drawing().HasStroke());
    // What was drawn is what is shown.
    rig.DrawAll();
    EXPECT_NEAR(rig.plug.Preview().curve[99], 0.75, 0.1);
}

TEST(IGwCurve2, AStrokeIsAppliedByTheCallbackWhileTheAudioRuns) {
    CurveRig rig;
    rig.plug.OnActivate(true);
    rig.graphics.OnMouseDown(837 + 100, 391 + 16, kLeftDown);
    rig.graphics.RunTick();
    EXPECT_NE(rig.Curve()[400], 0.75);
    rig.Play(1);
    EXPECT_EQ(rig.Curve()[400], 0.75);
}

TEST(IGwCurve2, TheRightButtonNeverDraws) {
    CurveRig rig;
    const std::vector<double> before = rig.Values();
    rig.graphics.OnMouseDown(900, 400, kRightDown);
    rig.graphics.OnMouseDrag(910, 410, 10, 10, kRightDown);
    rig.graphics.OnMouseUp(910, 410, kRightDown);
    EXPECT_EQ(rig.Values(), before);
    EXPECT_FALSE(rig.plug.Drawing().HasStroke());
    EXPECT_EQ(rig.graphics.menusShown, 1);
    EXPECT_EQ(rig.graphics.menuRect, kArea);
}

TEST(IGwCurve2, TheMenuHasItsEightRows) {
    CurveRig rig;
    std::vector<std::string> rows;
    bool separatorIsSixth = false;
    rig.graphics.onMenu = [&](IPopupMenu& menu) -> IPopupMenu* {
        for (int i = 0; i < menu.ItemCount(); ++i)
            rows.push_back(menu.Item(i)->text);
        separatorIsSixth = menu.ItemCount() == 8 && menu.Item(5)->IsSeparator();
        return nullptr;
    };
    const CurvePoints before = rig.Curve();
    rig.graphics.OnMouseDown(900, 400, kRightDown);
    ASSERT_TRUE(separatorIsSixth);
    rows.erase(rows.begin() + 5);
    EXPECT_EQ(rows, (std::vector<std::string>{"Restore Curve", "Smooth Curve", "Add Noise",
                                              "Smooth Zero-Crossing", "Reset (Restore Linear)",
                                              "Import Curve from CSV", "Export Curve to CSV"}));
    EXPECT_EQ(rig.Curve(), before);
}

TEST(IGwCurve2, ARowAsksForTheOperationOfItsPlace) {
    CurveRig rig;
    const auto choose = [&rig](int row) {
        rig.graphics.onMenu = ChooseRow(row);
        rig.graphics.OnMouseDown(900, 400, kRightDown);
    };
    rig.Set(Param::DistortionType, 20.0 / 41.0);
    const CurvePoints stock = rig.Curve();
    choose(7); // the second file row
    EXPECT_TRUE(IsStraight(rig.Curve()));
    choose(4); // named as a reset
    EXPECT_FALSE(IsStraight(rig.Curve()));
    EXPECT_NE(rig.Curve(), stock);
    choose(0);
    EXPECT_EQ(rig.Curve(), stock);
    choose(3);
    EXPECT_EQ(rig.Curve()[255], 0.0);
    EXPECT_EQ(rig.Curve()[256], 0.0);
    EXPECT_EQ(rig.Curve()[100], stock[100]);
    const CurvePoints crossed = rig.Curve();
    choose(6); // the first file row
    EXPECT_EQ(rig.Curve(), crossed);
}

TEST(IGwCurve2, TheFileRowsOpenNoDialog) {
    CurveRig rig;
    int dialogs = 0;
    rig.graphics.onFile = [&dialogs](std::string&, std::string&, int, const std::string&) { ++dialogs; };
    for (const int row : {6, 7}) {
        rig.graphics.onMenu = ChooseRow(row);
        rig.graphics.OnMouseDown(900, 400, kRightDown);
    }
    EXPECT_EQ(rig.graphics.menusShown, 2);
    EXPECT_EQ(dialogs, 0);
}

TEST(IGwCurve2, AnOperationWaitsForTheCallbackWhileTheAudioRuns) {
    CurveRig rig;
    rig.Set(Param::DistortionType, 20.0 / 41.0);
    rig.plug.OnActivate(true);
    rig.graphics.onMenu = ChooseRow(7);
    rig.graphics.OnMouseDown(900, 400, kRightDown);
    EXPECT_FALSE(IsStraight(rig.Curve()));
    rig.Play(1);
    EXPECT_TRUE(IsStraight(rig.Curve()));
}

TEST(IGwCurve2, ThePreviewIsNotDrawnOn) {
    CurveRig rig;
    const std::vector<double> before = rig.Values();
    rig.graphics.OnMouseDown(700, 400, kLeftDown);
    rig.graphics.OnMouseDrag(710, 410, 10, 10, kLeftDown);
    EXPECT_EQ(rig.Values(), before);
    EXPECT_FALSE(rig.plug.Drawing().HasStroke());
    EXPECT_EQ(rig.preview.GetDisplayMode(), IGwCurve2::SignalInFront);
}

TEST(IGwRestoreCurveButton, BringsTheStockCurveBack) {
    CurveRig rig;
    rig.Set(Param::DistortionType, 20.0 / 41.0);
    const CurvePoints stock = rig.Curve();
    rig.plug.RequestCurveOperation(CurveOperation::Reset);
    ASSERT_NE(rig.Curve(), stock);
    auto& button = rig.graphics.Attach<IGwRestoreCurveButton>(&rig.plug, 10, 10, IBitmap{nullptr, 48, 40, 2});
    rig.graphics.OnMouseDown(20, 15, kLeftDown);
    EXPECT_EQ(rig.Curve(), stock);
    EXPECT_EQ(button.Value(), 1.0);
    rig.graphics.OnMouseUp(20, 15, kLeftDown);
    EXPECT_EQ(button.Value(), 0.0);
}

} // namespace Grimworks
