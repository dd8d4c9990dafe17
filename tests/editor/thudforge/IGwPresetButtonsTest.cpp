#include "editor/thudforge/IGwPresetButtons.h"

#include "core/ParameterIds.h"
#include "editor/IKnobControl.h"
#include "tests/editor/thudforge/InstrumentRig.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace Grimworks {
namespace {

IGwPresetSwitch& AttachSwitch(InstrumentRig& rig, int direction) {
    return rig.Attach<IGwPresetSwitch>(10, 10, rig.strips.Make(20, 20, 2), direction);
}

TEST(IGwPresetSwitch, StepsToTheNextPreset) {
    InstrumentRig rig;
    const auto& next = AttachSwitch(rig, IGwPresetSwitch::Next);
    rig.calls.clear();
    rig.Click(next);
    EXPECT_EQ(rig.plug.CurrentPreset(), 1);
    EXPECT_EQ(rig.Count(HostOp::UpdateDisplay), 1);
    EXPECT_EQ(next.Value(), 0.0);
}

TEST(IGwPresetSwitch, StepsBack) {
    InstrumentRig rig;
    const auto& previous = AttachSwitch(rig, IGwPresetSwitch::Previous);
    ASSERT_TRUE(rig.plug.RestorePreset(5));
    rig.Click(previous);
    EXPECT_EQ(rig.plug.CurrentPreset(), 4);
}

TEST(IGwPresetSwitch, RightButtonStepsByTen) {
    InstrumentRig rig;
    const auto& next = AttachSwitch(rig, IGwPresetSwitch::Next);
    rig.Click(next, kRight);
    EXPECT_EQ(rig.plug.CurrentPreset(), 10);
}

TEST(IGwPresetSwitch, StepBeyondTheListDoesNothing) {
    InstrumentRig rig;
    const auto& next = AttachSwitch(rig, IGwPresetSwitch::Next);
    ASSERT_TRUE(rig.plug.RestorePreset(124)); // row 125
    rig.calls.clear();
    rig.Click(next, kRight);
    EXPECT_EQ(rig.plug.CurrentPreset(), 124);
    EXPECT_EQ(rig.Count(HostOp::UpdateDisplay), 0);
    ASSERT_TRUE(rig.plug.RestorePreset(127));
    rig.Click(next);
    EXPECT_EQ(rig.plug.CurrentPreset(), 127);
}

TEST(IGwPresetSwitch, StepBeforeTheListDoesNothing) {
    InstrumentRig rig;
    const auto& previous = AttachSwitch(rig, IGwPresetSwitch::Previous);
    rig.Click(previous);
    EXPECT_EQ(rig.plug.CurrentPreset(), 0);
    ASSERT_TRUE(rig.plug.RestorePreset(9));
    rig.Click(previous, kRight);
    EXPECT_EQ(rig.plug.CurrentPreset(), 9);
}

TEST(IGwPresetSwitch, SectionPresetCanBeSelected) {
    InstrumentRig rig;
    const auto& next = AttachSwitch(rig, IGwPresetSwitch::Next);
    ASSERT_TRUE(rig.plug.RestorePreset(13));
    rig.Click(next);
    EXPECT_EQ(rig.plug.CurrentPreset(), 14);
    EXPECT_EQ(rig.plug.PresetName(14), "#HARDCORE BASS DRUMS#");
}

TEST(IGwPresetSwitch, ControlsShowThePresetsValues) {
    InstrumentRig rig;
    const auto& next = AttachSwitch(rig, IGwPresetSwitch::Next);
    const auto& knob =
        rig.Attach<IKnobMultiControl>(100, 10, Param::PitchDuration, rig.strips.Make(30, 30, 2));
    rig.Set(Param::PitchDuration, 0.987);
    rig.graphics.Tick();
    ASSERT_EQ(knob.Value(), 0.987);
    rig.Click(next);
    rig.graphics.Tick();
    EXPECT_EQ(knob.Value(), rig.Get(Param::PitchDuration));
    EXPECT_NE(knob.Value(), 0.987);
}

TEST(IGwRestorePresetButton, ThrowsEditsAway) {
    InstrumentRig rig;
    ASSERT_TRUE(rig.plug.RestorePreset(3));
    const auto& restore = rig.Attach<IGwRestorePresetButton>(10, 10, rig.strips.Make(20, 20, 2));
    const double stored = rig.Get(Param::PitchDuration);
    rig.Set(Param::PitchDuration, stored / 2.0 + 0.3);
    rig.calls.clear();
    rig.Click(restore);
    EXPECT_EQ(rig.Get(Param::PitchDuration), stored);
    EXPECT_EQ(rig.plug.CurrentPreset(), 3);
    EXPECT_EQ(rig.Count(HostOp::UpdateDisplay), 1);
}

/// A folder of the test's own.
class SelectorTest : public ::testing::Test {
protected:
    SelectorTest()
        : folder(std::filesystem::temp_directory_path() /
                 ("thudforge-selector-" + std::to_string(std::random_device()()))) {
        std::filesystem::create_directories(folder);
    }
    ~SelectorTest() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    /// The user chooses this file in the dialog of a load or a save button.
    void Choose(int action, const std::string& file) {
        rig.graphics.chosenFile = file;
        rig.graphics.chosenDir = (folder / "").string();
        auto& selector = rig.Attach<IGwFileSelector>(10, 10, rig.strips.Make(48, 40, 2), action);
        rig.Click(selector);
    }

    [[nodiscard]] std::string Content(const std::string& file) const {
        std::ifstream stream(folder / file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::filesystem::path folder;
    InstrumentRig rig;
};

TEST_F(SelectorTest, NameWithFxpIsAProgramFile) {
    Choose(IGraphics::FileSave, "kick.fxp");
    EXPECT_EQ(Content("kick.fxp").size(), 5440U);
    EXPECT_EQ(Content("kick.fxp").substr(0, 4), "CcnK");
}

TEST_F(SelectorTest, FxpCountsWhereverItStands) {
    Choose(IGraphics::FileSave, "a.fxp.txt");
    EXPECT_EQ(Content("a.fxp.txt").substr(0, 4), "CcnK");
}

TEST_F(SelectorTest, AnyOtherNameIsATextProgram) {
    Choose(IGraphics::FileSave, "kick.gw");
    EXPECT_NE(Content("kick.gw").find("PitchDuration"), std::string::npos);
}

TEST_F(SelectorTest, LoadingBringsTheSoundToTheControls) {
    for (const std::string file : {"kick.fxp", "kick.gw"}) {
        rig.Set(Param::PitchDuration, 0.25);
        Choose(IGraphics::FileSave, file);
        rig.Set(Param::PitchDuration, 0.75);
        auto& knob =
            rig.Attach<IKnobMultiControl>(100, 100, Param::PitchDuration, rig.strips.Make(30, 30, 2));
        rig.graphics.Tick();
        Choose(IGraphics::FileOpen, file);
        rig.graphics.Tick();
        EXPECT_EQ(rig.Get(Param::PitchDuration), 0.25) << file;
        EXPECT_EQ(knob.Value(), 0.25) << file;
    }
}

TEST_F(SelectorTest, FileThatIsNoProgramChangesNothing) {
    std::ofstream(folder / "noise.fxp") << "no program";
    rig.Set(Param::PitchDuration, 0.75);
    Choose(IGraphics::FileOpen, "noise.fxp");
    Choose(IGraphics::FileOpen, "nowhere.gw");
    EXPECT_EQ(rig.Get(Param::PitchDuration), 0.75);
}

TEST_F(SelectorTest, CancelWritesNothing) {
    Choose(IGraphics::FileSave, "");
    EXPECT_TRUE(std::filesystem::is_empty(folder));
    const auto& selector = rig.Attach<IGwFileSelector>(100, 10, rig.strips.Make(48, 40, 2),
                                                       IGraphics::FileSave, (folder / "kick.fxp").string());
    rig.Click(selector); // a place that could be written to
    EXPECT_TRUE(std::filesystem::is_empty(folder));
}

TEST_F(SelectorTest, ButtonIsAlwaysThereAndPressedWhileSelecting) {
    auto& selector = rig.Attach<IGwFileSelector>(10, 10, rig.strips.Make(48, 40, 2), IGraphics::FileOpen);
    const auto frame = [this] {
        rig.DrawAll();
        return static_cast<int>((rig.graphics.DrawBuffer().getBits()[20 * 300 + 20] >> 16U) & 0xFFU);
    };
    EXPECT_EQ(frame(), 1);
    int meanwhile = 0;
    rig.graphics.whileAsking = [&] { meanwhile = frame(); };
    rig.Click(selector);
    EXPECT_EQ(meanwhile, 2);
    EXPECT_EQ(frame(), 1);
}

} // namespace
} // namespace Grimworks
