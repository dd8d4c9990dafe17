#include "editor/thudforge/IGwButtons.h"
#include "editor/thudforge/IGwPresetButtons.h"
#include "editor/thudforge/IGwPresetMenu.h"
#include "tests/editor/thudforge/EditorRig.h"

#include <filesystem>
#include <string>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

/// All controls of the synth page show what the live parameters are.
void ExpectShownAsLive(EditorRig& rig) {
    for (int i = 0; i < rig.graphics.ControlCount(); ++i) {
        const IControl& control = *rig.graphics.GetControl(i);
        if (control.ParamIdx() < 0) continue;
        EXPECT_NEAR(control.Value(), rig.plug.GetParameterNormalized(control.ParamIdx()), 1e-12) << i;
    }
}

const std::string& ShownName(EditorRig& rig) {
    rig.graphics.Settle();
    return dynamic_cast<IGwPresetMenu&>(*rig.graphics.GetControl(rig.Find<IGwPresetMenu>())).String();
}

TEST(PanelsPrograms, ArrowsStepThroughThemAndEveryControlFollows) {
    EditorRig rig;
    const int previous = rig.Find<IGwPresetSwitch>();
    const int next = rig.Find<IGwPresetSwitch>(previous + 1);
    ASSERT_GE(next, 0);
    EXPECT_EQ(ShownName(rig), "01: Basic Bass Drum 1");
    rig.Click(previous);
    EXPECT_EQ(rig.plug.CurrentPreset(), 0) << "there is none before the first";
    rig.Click(next);
    rig.Click(next);
    EXPECT_EQ(rig.plug.CurrentPreset(), 2);
    EXPECT_EQ(ShownName(rig), "03: Basic Bass Drum 3 (click)");
    ExpectShownAsLive(rig);
    rig.Click(previous);
    EXPECT_EQ(ShownName(rig), "02: Basic Bass Drum 2 (soft)");
    ExpectShownAsLive(rig);
}

TEST(PanelsPrograms, RestoreThrowsChangesAway) {
    EditorRig rig;
    const double before = rig.plug.GetParameterNormalized(Param::Pan);
    rig.Automate(Param::Pan, 0.125);
    rig.Click(rig.Find<IGwRestorePresetButton>());
    EXPECT_DOUBLE_EQ(rig.plug.GetParameterNormalized(Param::Pan), before);
    ExpectShownAsLive(rig);
}

TEST(PanelsPrograms, TheMenuLeadsToAProgramInASection) {
    EditorRig rig;
    rig.graphics.onMenu = [](IPopupMenu& menu) {
        // The first section begins at the fifteenth program; its second row is the seventeenth.
        IPopupMenu* section = menu.Submenu(14);
        if (section != nullptr) section->SetChosenItem(1);
        return section;
    };
    rig.Click(rig.Find<IGwPresetMenu>());
    EXPECT_EQ(ShownName(rig), "17: Mainstream Bass Drum 2");
    ExpectShownAsLive(rig);
}

TEST(PanelsPrograms, PlayStartsTheTestNoteAndTheRightButtonEndsIt) {
    EditorRig rig;
    const int play = rig.Find<IGwPlayButton>();
    rig.Click(play);
    PlayRequest::Request request = rig.plug.playRequest.Take();
    EXPECT_EQ(request.note, 48);
    EXPECT_EQ(request.mode, 2);
    const auto at = rig.Reach(play);
    ASSERT_TRUE(at.has_value());
    rig.graphics.OnMouseDown(at->x, at->y, kRightButton);
    request = rig.plug.playRequest.Take();
    EXPECT_EQ(request.note, 48);
    EXPECT_EQ(request.mode, 1);
}

TEST(PanelsPrograms, FirstChoiceOfAFileStartsInTheFolderOfPresets) {
#ifdef _WIN32
    const std::string expected = "C:\\work\\Grimworks\\_presets";
#else
    const std::string expected; // the window offers the user's own folder
#endif
    EditorRig rig;
    std::vector<std::string> folders;
    rig.graphics.onFile = [&folders](std::string& file, std::string& dir, int, const std::string&) {
        folders.push_back(dir);
        file.clear();
    };
    const int load = rig.Find<IGwFileSelector>();
    rig.Click(load);
    rig.Click(rig.Find<IGwFileSelector>(load + 1));
    EXPECT_EQ(folders, (std::vector<std::string>{expected, expected}));
}

TEST(PanelsPrograms, SaveAndLoadGoThroughAFile) {
    EditorRig rig;
    const auto folder =
        std::filesystem::temp_directory_path() / ("panels-programs-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    for (const char* name : {"kick.fxp", "kick.gw"}) {
        rig.graphics.onFile = [&](std::string& file, std::string& dir, int, const std::string& extensions) {
            EXPECT_EQ(extensions, "gw tgp fxp");
            file = name;
            dir = folder.string() + "/";
        };
        rig.Automate(Param::Pan, 0.375);
        const int load = rig.Find<IGwFileSelector>();
        const int save = rig.Find<IGwFileSelector>(load + 1);
        rig.Click(save);
        ASSERT_TRUE(std::filesystem::exists(folder / name)) << name;
        rig.Automate(Param::Pan, 0.875);
        rig.Click(load);
        EXPECT_DOUBLE_EQ(rig.plug.GetParameterNormalized(Param::Pan), 0.375) << name;
        rig.graphics.Settle();
        ExpectShownAsLive(rig);
    }
    std::filesystem::remove_all(folder);
}

} // namespace
} // namespace Grimworks
