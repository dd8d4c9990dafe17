#include "editor/thudforge/IGwPresetMenu.h"

#include "editor/IBitmapControl.h"
#include "tests/editor/thudforge/InstrumentRig.h"

#include <gtest/gtest.h>

#include <future>
#include <thread>

namespace Grimworks {
namespace {

const IRECT kPlace(64, 51, 246, 71);
const IColor kPanel(255, 12, 34, 56);

IGwPresetMenu& AttachMenu(InstrumentRig& rig) {
    return rig.Attach<IGwPresetMenu>(kPlace, IText(), kPanel);
}

/// Rows with a check mark, submenus included, as they are shown.
std::vector<std::string> CheckedRows(IPopupMenu& menu) {
    std::vector<std::string> texts;
    for (int i = 0; i < menu.ItemCount(); ++i) {
        if (menu.Item(i)->IsChecked()) texts.push_back(menu.Item(i)->text);
        if (menu.Submenu(i) == nullptr) continue;
        for (const std::string& text : CheckedRows(*menu.Submenu(i)))
            texts.push_back(text);
    }
    return texts;
}

TEST(PresetMenuRows, NamesWithoutASignMakeAFlatMenu) {
    PresetMenuRows rows;
    rows.Build({"One", "Two", "Three"});
    ASSERT_EQ(rows.Menu().ItemCount(), 3);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(rows.Menu().Submenu(i), nullptr);
    EXPECT_EQ(rows.Menu().Item(0)->text, "01: One");
    EXPECT_EQ(rows.Menu().Item(2)->text, "03: Three");
}

TEST(PresetMenuRows, SectionsBecomeSubmenusWithoutTheirOwnPreset) {
    PresetMenuRows rows;
    rows.Build({"One", "#A#", "Three", "Four", "B #2", "Six"});
    ASSERT_EQ(rows.Menu().ItemCount(), 3);
    EXPECT_EQ(rows.Menu().Item(0)->text, "01: One");
    EXPECT_EQ(rows.Menu().Item(1)->text, "#A#");
    EXPECT_EQ(rows.Menu().Item(2)->text, "B #2");
    ASSERT_EQ(rows.Menu().Submenu(1)->ItemCount(), 2);
    EXPECT_EQ(rows.Menu().Submenu(1)->Item(0)->text, "03: Three");
    EXPECT_EQ(rows.Menu().Submenu(1)->Item(1)->text, "04: Four");
    ASSERT_EQ(rows.Menu().Submenu(2)->ItemCount(), 1);
    EXPECT_EQ(rows.Menu().Submenu(2)->Item(0)->text, "06: Six");
}

TEST(PresetMenuRows, CheckMarkStandsAtOnePresetOnly) {
    PresetMenuRows rows;
    rows.Build({"One", "#A#", "Three", "Four", "#B#", "Six"});
    rows.Check(0);
    EXPECT_EQ(CheckedRows(rows.Menu()), std::vector<std::string>{"01: One"});
    rows.Check(3);
    EXPECT_EQ(CheckedRows(rows.Menu()), std::vector<std::string>{"04: Four"});
    rows.Check(5);
    EXPECT_EQ(CheckedRows(rows.Menu()), std::vector<std::string>{"06: Six"});
    for (const int section : {1, 4}) { // a section's own preset has no row
        rows.Check(section);
        EXPECT_TRUE(CheckedRows(rows.Menu()).empty()) << section;
    }
}

TEST(PresetMenuRows, ChosenRowIsThePresetOfItsNumber) {
    PresetMenuRows rows;
    rows.Build({"One", "#A#", "Three", "Four", "#B#", "Six"});
    EXPECT_EQ(rows.ChosenPreset(), -1);
    rows.Menu().SetChosenItem(0);
    EXPECT_EQ(rows.ChosenPreset(), 0);
    rows.Menu().ClearChoice();
    rows.Menu().Submenu(1)->SetChosenItem(1);
    EXPECT_EQ(rows.ChosenPreset(), 3);
    rows.Menu().ClearChoice();
    rows.Menu().Submenu(2)->SetChosenItem(0);
    EXPECT_EQ(rows.ChosenPreset(), 5);
}

TEST(PresetMenuRows, SectionWithoutPresetsIsAnEmptySubmenu) {
    PresetMenuRows rows;
    rows.Build({"#A#", "#B#", "Three"});
    ASSERT_EQ(rows.Menu().ItemCount(), 2);
    EXPECT_EQ(rows.Menu().Submenu(0)->ItemCount(), 0);
    rows.Check(2);
    EXPECT_EQ(CheckedRows(rows.Menu()), std::vector<std::string>{"03: Three"});
}

TEST(IGwPresetMenu, FactoryBankStandsInSevenSections) {
    InstrumentRig rig;
    const auto& display = AttachMenu(rig);
    bool opened = false;
    rig.graphics.onMenu = [&](IPopupMenu& menu) -> IPopupMenu* {
        opened = true;
        EXPECT_EQ(menu.ItemCount(), 14 + 7);
        EXPECT_EQ(menu.Item(0)->text, "01: Basic Bass Drum 1");
        EXPECT_EQ(menu.Item(13)->text, "14: Oldschool Bass Drum 5");
        const int firstRows[] = {15, 62, 72, 82, 87, 93, 100, 129}; // rows of the sections' own presets
        for (int i = 0; i < 7; ++i) {
            IPopupMenu* section = menu.Submenu(14 + i);
            EXPECT_NE(section, nullptr);
            if (section == nullptr) continue;
            EXPECT_EQ(section->ItemCount(), firstRows[i + 1] - firstRows[i] - 1);
        }
        EXPECT_EQ(menu.Item(14)->text, "#HARDCORE BASS DRUMS#");
        EXPECT_EQ(menu.Submenu(14)->Item(0)->text, "16: Mainstream Bass Drum 1");
        EXPECT_EQ(menu.Submenu(20)->Item(27)->text, "128: Basic Sine wave");
        EXPECT_EQ(CheckedRows(menu), std::vector<std::string>{"01: Basic Bass Drum 1"});
        return nullptr;
    };
    rig.Click(display);
    EXPECT_TRUE(opened);
    EXPECT_EQ(rig.graphics.menuRects, std::vector<IRECT>{kPlace});
    EXPECT_EQ(rig.plug.CurrentPreset(), 0);
}

/// Chooses a row of a submenu, or of the menu itself with submenu -1.
auto Choosing(int submenu, int row) {
    return [submenu, row](IPopupMenu& menu) -> IPopupMenu* {
        IPopupMenu* chosen = submenu < 0 ? &menu : menu.Submenu(submenu);
        chosen->SetChosenItem(row);
        return chosen;
    };
}

TEST(IGwPresetMenu, ChosenRowIsRecalled) {
    InstrumentRig rig;
    const auto& display = AttachMenu(rig);
    rig.graphics.onMenu = Choosing(-1, 6);
    rig.calls.clear();
    rig.Click(display);
    EXPECT_EQ(rig.plug.CurrentPreset(), 6);
    EXPECT_EQ(rig.Count(HostOp::UpdateDisplay), 1);
    rig.graphics.onMenu = Choosing(20, 0);
    rig.Click(display);
    EXPECT_EQ(rig.plug.PresetName(rig.plug.CurrentPreset()), "Alpha Saw");
}

TEST(IGwPresetMenu, LaterOpeningMarksThePresetOfThen) {
    InstrumentRig rig;
    const auto& display = AttachMenu(rig);
    rig.graphics.onMenu = Choosing(-1, 6);
    rig.Click(display);
    std::vector<std::string> checked;
    rig.graphics.onMenu = [&](IPopupMenu& menu) -> IPopupMenu* {
        checked = CheckedRows(menu);
        return nullptr;
    };
    rig.Click(display);
    EXPECT_EQ(checked, std::vector<std::string>{"07: Tight Kick by Marl-404"});
    EXPECT_EQ(rig.plug.CurrentPreset(), 6); // the choice of the first opening is forgotten
}

TEST(IGwPresetMenu, MenuKnowsPresetsByTheirNewNames) {
    InstrumentRig rig;
    auto& display = AttachMenu(rig);
    rig.Click(display);
    display.TextFromTextEntry("Mine");
    std::string first;
    rig.graphics.onMenu = [&](IPopupMenu& menu) -> IPopupMenu* {
        first = menu.Item(0)->text;
        return nullptr;
    };
    rig.Click(display);
    EXPECT_EQ(first, "01: Mine");
}

TEST(IGwPresetMenu, ShowsNumberAndName) {
    InstrumentRig rig;
    AttachMenu(rig);
    rig.graphics.Tick();
    rig.DrawAll();
    ASSERT_EQ(rig.graphics.texts.size(), 1U);
    EXPECT_EQ(rig.graphics.texts[0].string, "01: Basic Bass Drum 1");
    EXPECT_EQ(rig.graphics.texts[0].rect, kPlace);
    const LICE_pixel corner = rig.graphics.DrawBuffer().getBits()[kPlace.T * 300 + kPlace.L];
    EXPECT_EQ(corner & 0xFFFFFFU, LICE_RGBA(12, 34, 56, 0) & 0xFFFFFFU);
}

TEST(IGwPresetMenu, ShownTextIsCutAtThirtyTwoCharacters) {
    InstrumentRig rig;
    AttachMenu(rig);
    const std::string name = "A name that is much longer than the display";
    rig.plug.ModifyCurrentPreset(name);
    rig.DrawAll();
    EXPECT_EQ(rig.graphics.texts.back().string, "01: " + name.substr(0, 28));
    EXPECT_EQ(rig.plug.PresetName(0), name);
}

TEST(IGwPresetMenu, ShownTextEndsInAWholeCharacter) {
    InstrumentRig rig;
    AttachMenu(rig);
    std::string accents;
    for (int i = 0; i < 30; ++i)
        accents += "\xC3\xA9";
    rig.plug.ModifyCurrentPreset("x" + accents);
    rig.DrawAll();
    EXPECT_EQ(rig.graphics.texts.back().string, "01: x" + accents.substr(0, 54)); // 5 characters and 27
}

TEST(IGwPresetMenu, SectionPresetIsShownWithItsSigns) {
    InstrumentRig rig;
    AttachMenu(rig);
    ASSERT_TRUE(rig.plug.RestorePreset(14));
    rig.DrawAll();
    EXPECT_EQ(rig.graphics.texts.back().string, "15: #HARDCORE BASS DRUMS#");
}

TEST(IGwPresetMenu, PresetThatTheHostChoosesIsSeenAtTheNextTick) {
    InstrumentRig rig;
    auto& display = AttachMenu(rig);
    rig.DrawAll();
    display.SetClean();
    display.SetClean();
    ASSERT_FALSE(display.IsDirty());
    ASSERT_TRUE(rig.plug.RestorePreset(2));
    EXPECT_TRUE(display.IsDirty());
    rig.DrawAll();
    EXPECT_EQ(display.String(), "03: Basic Bass Drum 3 (click)");
    EXPECT_FALSE(display.IsDirty());
}

TEST(IGwPresetMenu, HiddenDisplayComesToRestAfterTheHostChoseAPreset) {
    InstrumentRig rig;
    rig.Attach<IBitmapControl>(0, 0, -1, rig.strips.Make(300, 200, 1));
    auto& display = AttachMenu(rig);
    display.Hide(true);
    rig.graphics.Settle();
    ASSERT_TRUE(rig.plug.RestorePreset(2));
    EXPECT_FALSE(rig.graphics.RunTick().Empty());
    rig.graphics.Settle();
    EXPECT_TRUE(rig.graphics.RunTick().Empty());
    display.Hide(false);
    rig.DrawAll();
    EXPECT_EQ(rig.graphics.texts.back().string, "03: Basic Bass Drum 3 (click)");
}

TEST(IGwPresetMenu, RightButtonOpensATextEntryWithTheName) {
    InstrumentRig rig;
    auto& display = AttachMenu(rig);
    rig.Click(display, kRight);
    ASSERT_EQ(rig.graphics.entries.size(), 1U);
    EXPECT_EQ(rig.graphics.entries[0].control, &display);
    EXPECT_EQ(rig.graphics.entries[0].rect, kPlace);
    EXPECT_EQ(rig.graphics.entries[0].string, "Basic Bass Drum 1");
    EXPECT_EQ(rig.graphics.entries[0].param, nullptr);
    EXPECT_TRUE(rig.graphics.menuRects.empty());
    EXPECT_EQ(display.TextEntryLength(), 32);
}

TEST(IGwPresetMenu, EnteredTextRenamesThePresetAndKeepsTheLiveSound) {
    InstrumentRig rig;
    auto& display = AttachMenu(rig);
    rig.Set(90, 0.8125);
    rig.calls.clear();
    IGraphics::CommitTextEntry(display, nullptr, "My Kick");
    EXPECT_EQ(rig.plug.PresetName(0), "My Kick");
    EXPECT_EQ(rig.Count(HostOp::UpdateDisplay), 1);
    EXPECT_TRUE(display.IsDirty());
    rig.DrawAll();
    EXPECT_EQ(display.String(), "01: My Kick");
    ASSERT_TRUE(rig.plug.RestorePreset(1));
    ASSERT_TRUE(rig.plug.RestorePreset(0));
    EXPECT_EQ(rig.Get(90), 0.8125);
}

TEST(IGwPresetMenu, NameTypedForOnePresetIsNotGivenToAnother) {
    InstrumentRig rig;
    auto& display = AttachMenu(rig);
    rig.Click(display, kRight);
    ASSERT_TRUE(rig.plug.RestorePreset(1)); // by the host meanwhile
    IGraphics::CommitTextEntry(display, nullptr, "My Kick");
    EXPECT_EQ(rig.plug.PresetName(0), "Basic Bass Drum 1");
    EXPECT_EQ(rig.plug.PresetName(1), "Basic Bass Drum 2 (soft)");
    rig.Click(display, kRight);
    IGraphics::CommitTextEntry(display, nullptr, "My Kick");
    EXPECT_EQ(rig.plug.PresetName(1), "My Kick");
}

TEST(IGwPresetMenu, LookAtEveryTickDoesNotWaitForTheAudioThread) {
    InstrumentRig rig;
    auto& display = AttachMenu(rig);
    rig.DrawAll();
    display.SetClean();
    display.SetClean();
    std::promise<void> held;
    std::promise<void> looked;
    std::thread block([&] {
        const PlugLockGuard guard(rig.plug.Lock());
        held.set_value();
        looked.get_future().wait();
    });
    held.get_future().wait();
    EXPECT_FALSE(display.IsDirty()); // would never come back if it waited
    looked.set_value();
    block.join();
}

} // namespace
} // namespace Grimworks
