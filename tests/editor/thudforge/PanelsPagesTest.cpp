#include "editor/EmbeddedFiles.h"
#include "editor/IBitmapControl.h"
#include "editor/thudforge/IGwTabButton.h"
#include "tests/editor/thudforge/EditorRig.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

std::array<double, 3> TabValues(const EditorRig& rig) {
    std::array<double, 3> values{-1.0, -1.0, -1.0};
    for (int i = 0; i < rig.graphics.ControlCount(); ++i) {
        const auto* tab = dynamic_cast<const IGwTabButton*>(rig.graphics.GetControl(i));
        if (tab != nullptr) values.at(static_cast<std::size_t>(tab->Page())) = tab->Value();
    }
    return values;
}

/// Controls that stand on no page of their own: they show on all.
std::set<int> SharedControls(const EditorRig& rig) {
    std::set<int> shared;
    for (int i = 0; i < rig.graphics.ControlCount(); ++i)
        shared.insert(i);
    for (int page = 0; page < ThudForgeEditor::kPages; ++page) {
        for (const int index : rig.editor.PageControls(page))
            shared.erase(index);
    }
    return shared;
}

TEST(PanelsPages, TheWindowOpensOnTheSynthPageWithItsTabDown) {
    const EditorRig rig;
    EXPECT_EQ(rig.plug.CurrentPage(), ThudForge::SynthPage);
    EXPECT_EQ(rig.editor.ShownPage(), 0);
    EXPECT_EQ(TabValues(rig), (std::array<double, 3>{1.0, 0.0, 0.0}));
    for (const int index : rig.editor.PageControls(0))
        EXPECT_FALSE(rig.graphics.GetControl(index)->IsHidden()) << index;
    for (const int page : {1, 2}) {
        for (const int index : rig.editor.PageControls(page))
            EXPECT_TRUE(rig.graphics.GetControl(index)->IsHidden()) << index;
    }
}

TEST(PanelsPages, EveryControlIsOnOnePageButForBackgroundsTitleAndTabs) {
    const EditorRig rig;
    std::set<int> seen;
    for (int page = 0; page < ThudForgeEditor::kPages; ++page) {
        const std::vector<int>& indices = rig.editor.PageControls(page);
        EXPECT_FALSE(indices.empty()) << page;
        EXPECT_TRUE(std::is_sorted(indices.begin(), indices.end())) << page;
        for (const int index : indices)
            EXPECT_TRUE(seen.insert(index).second) << index;
    }
    // The background, the title, the word beside it and three tabs. The plate with the panels is second.
    EXPECT_EQ(SharedControls(rig), (std::set<int>{0, 2, 3, 4, 5, 6}));
    EXPECT_EQ(rig.editor.PageControls(0).front(), 1);
}

TEST(PanelsPages, AllIsAttachedInTheOrderInWhichItIsDrawn) {
    EditorRig rig;
    const std::array<int, 7> header{Bitmap::Background, Bitmap::ControlsBackground, Bitmap::Title,
                                    Bitmap::X64,        Bitmap::TabSynth,           Bitmap::TabScope,
                                    Bitmap::TabAbout};
    for (std::size_t i = 0; i < header.size(); ++i) {
        const auto* control = dynamic_cast<IBitmapControl*>(rig.graphics.GetControl(static_cast<int>(i)));
        ASSERT_NE(control, nullptr) << i;
        const BitmapInfo* info = FindBitmap(header.at(i));
        const IBitmap expected = rig.graphics.LoadIBitmap(info->id, info->file, info->frames);
        EXPECT_EQ(control->Bitmap().data, expected.data) << i;
    }
    EXPECT_EQ(rig.graphics.GetControl(0)->Rect(), IRECT(0, 0, 1220, 835));
    // One parameter of each panel, by panel: they come in this order.
    const std::array<int, 18> order{89, 7,  28,  49,  63,  70, 94,  95,  86,
                                    80, 87, 114, 122, 101, 96, 128, 136, 132};
    int last = -1;
    for (const int id : order) {
        int first = -1;
        for (int i = 0; i < rig.graphics.ControlCount() && first < 0; ++i)
            if (rig.graphics.GetControl(i)->ParamIdx() == id) first = i;
        EXPECT_GT(first, last) << "parameter " << id;
        last = first;
    }
    // The about page comes before the scope page.
    EXPECT_LT(last, rig.editor.PageControls(2).front());
    EXPECT_LT(rig.editor.PageControls(2).back(), rig.editor.PageControls(1).front());
}

TEST(PanelsPages, OnlyTheControlsOfTheCurrentPageTakeTheMouse) {
    EditorRig rig;
    const std::set<int> shared = SharedControls(rig);
    for (const int page : {1, 2, 0}) {
        rig.ShowPage(page);
        ASSERT_EQ(rig.editor.ShownPage(), page);
        std::set<int> met;
        for (int y = 0; y < kEditorHeight; y += 3) {
            for (int x = 0; x < kEditorWidth; x += 3) {
                rig.graphics.OnMouseOver(x, y, {});
                met.insert(rig.graphics.MouseOverIndex());
            }
        }
        met.erase(-1);
        const std::vector<int>& own = rig.editor.PageControls(page);
        int ownMet = 0;
        for (const int index : met) {
            const bool isOwn = std::find(own.begin(), own.end(), index) != own.end();
            EXPECT_TRUE(isOwn || shared.count(index) == 1) << "page " << page << " control " << index;
            ownMet += isOwn ? 1 : 0;
        }
        EXPECT_GE(ownMet, 2) << "page " << page;
    }
}

TEST(PanelsPages, ATabShowsItsPageAndReleasesTheOthers) {
    EditorRig rig;
    rig.ShowPage(1);
    EXPECT_EQ(rig.plug.CurrentPage(), ThudForge::ScopePage);
    EXPECT_EQ(TabValues(rig), (std::array<double, 3>{0.0, 1.0, 0.0}));
    rig.ShowPage(2);
    EXPECT_EQ(rig.plug.CurrentPage(), ThudForge::AboutPage);
    EXPECT_EQ(TabValues(rig), (std::array<double, 3>{0.0, 0.0, 1.0}));
    rig.ShowPage(2);
    EXPECT_EQ(TabValues(rig), (std::array<double, 3>{0.0, 0.0, 1.0})) << "a second click changes nothing";
    rig.plug.SelectPage(0);
    rig.graphics.Tick();
    EXPECT_EQ(TabValues(rig), (std::array<double, 3>{1.0, 0.0, 0.0}));
    EXPECT_EQ(rig.editor.ShownPage(), 0);
}

TEST(PanelsPages, WhatIsOnAnHiddenPageStillFollowsItsParameter) {
    EditorRig rig;
    rig.ShowPage(2);
    rig.Automate(Param::Volume, 0.125);
    rig.ShowPage(0);
    for (int i = 0; i < rig.graphics.ControlCount(); ++i) {
        const IControl& control = *rig.graphics.GetControl(i);
        if (control.ParamIdx() == Param::Volume) {
            EXPECT_DOUBLE_EQ(control.Value(), 0.125);
        }
    }
}

TEST(PanelsPages, TheFramesOfEveryStripDivideItsHeight) {
    EditorRig rig;
    for (const BitmapInfo& info : BitmapTable()) {
        const IBitmap bitmap = rig.graphics.LoadIBitmap(info.id, info.file, info.frames);
        ASSERT_NE(bitmap.data, nullptr) << info.file;
        EXPECT_EQ(bitmap.H % info.frames, 0) << info.file;
        EXPECT_GT(bitmap.H, 0) << info.file;
        EXPECT_EQ(bitmap.N, info.frames) << info.file;
    }
}

TEST(PanelsPages, ControlsAreAsLargeAsTheirPlace) {
    EditorRig rig;
    for (const Panel& panel : EditorPanels()) {
        for (const PlacedControl& placed : panel.controls) {
            if (placed.bitmap == Bitmap::None) continue;
            const BitmapInfo* info = FindBitmap(placed.bitmap);
            ASSERT_NE(info, nullptr) << placed.bitmap;
            const IBitmap bitmap = rig.graphics.LoadIBitmap(info->id, info->file, info->frames);
            EXPECT_EQ(bitmap.FrameHeight(), placed.rect.H()) << info->file;
            // A fader's bitmap is its handle.
            if (placed.kind != ControlKind::Fader) {
                EXPECT_EQ(bitmap.FrameWidth(), placed.rect.W()) << info->file;
            }
        }
    }
}

TEST(PanelsPages, EveryBitmapIsShownSomewhereOrKeptForItsNumber) {
    std::set<int> shown;
    for (const Panel& panel : EditorPanels()) {
        for (const PlacedControl& placed : panel.controls)
            shown.insert(placed.bitmap);
    }
    shown.erase(Bitmap::None);
    // The button of a clipper that the limiter's button took the place of.
    const std::set<int> kept{Bitmap::ClipperMode};
    for (const BitmapInfo& info : BitmapTable())
        EXPECT_EQ(shown.erase(info.id) + kept.count(info.id), 1U) << info.id << " " << info.file;
    EXPECT_TRUE(shown.empty());
}

TEST(PanelsPages, TooltipsTellWhatButtonsDoAndParametersTheirName) {
    const EditorRig rig;
    std::multiset<std::string> texts;
    for (int i = 0; i < rig.graphics.ControlCount(); ++i) {
        const IControl& control = *rig.graphics.GetControl(i);
        if (!control.TargetRect().Empty()) texts.insert(rig.graphics.TooltipText(i));
    }
    for (const char* text :
         {"Waveform Selection", "Select Previous Waveform", "Select Next Waveform",
          "LFO Signal Mode Selection", "Left Filter Type Selection", "Right Filter Type Selection"})
        EXPECT_EQ(texts.count(text), 3U) << text;
    EXPECT_EQ(texts.count("Select Next Filter"), 8U);
    for (const char* text :
         {"Distortion Curve Selection", "Distortion Curve Draw Area", "Distortion Curve Signal Preview",
          "Restore Original Curve", "Program Load Button", "Program Save Button", "Factory Preset Selection",
          "Reset Max Signal Level"})
        EXPECT_EQ(texts.count(text), 1U) << text;
    EXPECT_GE(texts.count("Distortion Curve Interpolation"), 1U);
    EXPECT_GE(texts.count("Output Volume"), 1U);
    EXPECT_GE(texts.count("Osc3 LFO3 to Pan"), 1U);
}

} // namespace
} // namespace Grimworks
