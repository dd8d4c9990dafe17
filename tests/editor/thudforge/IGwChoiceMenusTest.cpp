#include "editor/thudforge/IGwChoiceMenus.h"

#include "core/ParameterIds.h"
#include "tests/editor/thudforge/InstrumentRig.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace Grimworks {
namespace {

const IRECT kPlace(90, 27, 195, 43);
using Names = std::vector<std::string>;

constexpr int kWave = Osc(0, OscParam::Waveform);
constexpr int kLfoMode = Osc(1, OscParam::LfoMode);
constexpr int kLeftFilter = Osc(2, OscParam::FilterTypeLeft);

const Names kWaves{
    "Sine",          "Sawtooth",      "Pulse",      "QuadPulse",   "OctPulse",  "Triangle",
    "Trapez",        "X-Trapez",      "WhiteNoize", "PinkNoize",   "Noize",     "Low-Q Noise 1",
    "Low-Q Noise 2", "Low-Q Noise 3", "Wave-Scape", "Wave-Garden", "Wave-Vibe", "S-Receptor",
    "D-Receptor",    "Pyrokinesis",   "Shikoku",    "KIC 8462852", "Synapsis",  "Brick-Breaker",
    "Geo-Chirp",     "User1",         "User2",      "User3",       "User4",     "User5",
    "User6",         "User7",         "User8",      "User9",       "User10",    "User11",
    "User12",        "User13",        "User14",     "User15",      "User16"};
const Names kLfoLong{"Sine", "Sine (Positive Part)", "Sine (Negative Part)", "Sine (Absolute Value)",
                     "Sine (Inverted)"};
const Names kLfoShort{"Sine", "Sine(Pos.)", "Sine(Neg.)", "Sine(Abs.)", "Sine(Inv.)"};
const Names kModes{"Standard MIDI",    "Octave Down",      "Octave Up",       "F1 Kick 43.6Hz",
                   "F#1 Kick 46.2Hz",  "G1 Kick 49.0Hz",   "G#1 Kick 51.9Hz", "Drum Body 65.4Hz",
                   "Arp. Dur Up 1/16", "Arp. Moll Up 1/16"};
const Names kFilter1Long{"RBJ LowPass", "RBJ HighPass", "RBJ BandPass 1", "RBJ BandStop"};
const Names kFilter1Short{"RBJ-LP", "RBJ-HP", "RBJ-BP1", "RBJ-BS"};
const Names kFilter2Long{"Chebyshev HighPass 12dB", "Chebyshev HighPass 24dB",   "Chebyshev LowPass 12dB",
                         "Chebyshev LowPass 24dB",  "Butterworth BandPass 12dB", "Butterworth BandStop 12dB"};
const Names kFilter2Short{"CH-HP12", "CH-HP24", "CH-LP12", "CH-LP24", "BW-BP12", "BW-BS12"};
const Names kOscFilterLong{"Paul Kellett LP", "Paul Kellett HP", "Paul Kellett BP", "Butterworth HP",
                           "Butterworth LP"};
const Names kOscFilterShort{"PK LP", "PK HP", "PK BP", "BW HP", "BW LP"};

/// A menu's rows, those of its submenus in their place, and which of them is checked and how many are.
struct Listed {
    Names rows;
    Names groups;
    std::vector<int> sizes; ///< of the groups
    std::string checked;
    int checks = 0;
};

void List(IPopupMenu& menu, Listed& listed) {
    for (int i = 0; i < menu.ItemCount(); ++i) {
        if (menu.Submenu(i) != nullptr) {
            listed.groups.push_back(menu.Item(i)->text);
            listed.sizes.push_back(menu.Submenu(i)->ItemCount());
            List(*menu.Submenu(i), listed);
            continue;
        }
        listed.rows.push_back(menu.Item(i)->text);
        if (!menu.Item(i)->IsChecked()) continue;
        listed.checked = menu.Item(i)->text;
        ++listed.checks;
    }
}

/// Chooses the row with this text, wherever it stands.
IPopupMenu* ChooseRow(IPopupMenu& menu, const std::string& text) {
    for (int i = 0; i < menu.ItemCount(); ++i) {
        if (menu.Submenu(i) != nullptr) {
            if (IPopupMenu* chosen = ChooseRow(*menu.Submenu(i), text)) return chosen;
        } else if (menu.Item(i)->text == text) {
            menu.SetChosenItem(i);
            return &menu;
        }
    }
    return nullptr;
}

Listed Opened(InstrumentRig& rig, const IControl& display) {
    Listed listed;
    rig.graphics.onMenu = [&](IPopupMenu& menu) -> IPopupMenu* {
        List(menu, listed);
        return nullptr;
    };
    rig.Click(display);
    return listed;
}

/// Every name can be chosen, sets its index as a parameter value, is shown by its short name and is then the
/// one with the check mark.
void ExpectEveryChoice(InstrumentRig& rig, const IGwChoiceMenu& display, const Names& longNames,
                       const Names& shortNames) {
    const int last = static_cast<int>(longNames.size()) - 1;
    for (int index = last; index >= 0; --index) {
        const auto i = static_cast<std::size_t>(index);
        rig.graphics.onMenu = [&](IPopupMenu& menu) { return ChooseRow(menu, longNames[i]); };
        rig.Click(display);
        EXPECT_DOUBLE_EQ(rig.Get(display.ParamIdx()), static_cast<double>(index) / last) << longNames[i];
        EXPECT_EQ(display.String(), shortNames[i]);
        const Listed listed = Opened(rig, display);
        EXPECT_EQ(listed.checked, longNames[i]);
        EXPECT_EQ(listed.checks, 1);
        EXPECT_EQ(listed.rows.size(), longNames.size());
    }
}

TEST(IGwWaveformPresetMenu, OffersAllWavesByKind) {
    InstrumentRig rig;
    const auto& display = rig.Attach<IGwWaveformPresetMenu>(kPlace, kWave, IText());
    const Listed listed = Opened(rig, display);
    EXPECT_EQ(listed.rows, kWaves);
    EXPECT_EQ(listed.sizes, (std::vector<int>{8, 6, 11, 16})); // shapes, noise, textures, the user's own
    ExpectEveryChoice(rig, display, kWaves, kWaves);
}

TEST(IGwLfoSignalTypePresetMenu, ShowsShortNamesAndOffersLongOnes) {
    InstrumentRig rig;
    const auto& display = rig.Attach<IGwLfoSignalTypePresetMenu>(kPlace, kLfoMode, IText());
    EXPECT_EQ(Opened(rig, display).sizes, (std::vector<int>{2, 3})); // whole waves, parts of them
    ExpectEveryChoice(rig, display, kLfoLong, kLfoShort);
}

TEST(IGwNoteModePresetMenu, OffersKeyboardPitchesAndArpeggios) {
    InstrumentRig rig;
    const auto& display = rig.Attach<IGwNoteModePresetMenu>(kPlace, IText());
    EXPECT_EQ(display.ParamIdx(), Param::NoteTransposeMode);
    const Listed listed = Opened(rig, display);
    EXPECT_EQ(listed.rows, kModes);
    EXPECT_EQ(listed.sizes, (std::vector<int>{3, 5, 2}));
    ExpectEveryChoice(rig, display, kModes, kModes);
}

TEST(IGwFilterUnitMenu, FirstFilterIsAFlatListOfOneKind) {
    InstrumentRig rig;
    const auto& display = rig.Attach<IGwFilterUnitMenu>(kPlace, Param::FilterMode1, IText());
    EXPECT_TRUE(Opened(rig, display).groups.empty());
    ExpectEveryChoice(rig, display, kFilter1Long, kFilter1Short);
}

TEST(IGwFilterUnitMenu, SecondFilterIsGroupedByDesign) {
    InstrumentRig rig;
    const auto& display = rig.Attach<IGwFilterUnitMenu>(kPlace, Param::FilterMode2, IText());
    EXPECT_EQ(Opened(rig, display).groups, (Names{"Chebyshev", "Butterworth"}));
    ExpectEveryChoice(rig, display, kFilter2Long, kFilter2Short);
}

TEST(IGwFilterUnitMenu, OscillatorsHaveFiltersOfTheirOwn) {
    InstrumentRig rig;
    const auto& display = rig.Attach<IGwFilterUnitMenu>(kPlace, kLeftFilter, IText());
    EXPECT_EQ(Opened(rig, display).groups, (Names{"Paul Kellett", "Butterworth"}));
    ExpectEveryChoice(rig, display, kOscFilterLong, kOscFilterShort);
}

TEST(IGwDistoPresetMenu, IsAFlatListOfAllCurves) {
    InstrumentRig rig;
    const auto& display = rig.Attach<IGwDistoPresetMenu>(kPlace, IText());
    EXPECT_EQ(display.ParamIdx(), Param::DistortionType);
    rig.Set(Param::DistortionType, 20.0 / 41.0);
    rig.graphics.Tick();
    const Listed listed = Opened(rig, display);
    ASSERT_EQ(listed.rows.size(), 42U);
    EXPECT_TRUE(listed.groups.empty());
    EXPECT_EQ(listed.rows.front(), "Linear");
    EXPECT_EQ(listed.rows.back(), "More in PRO version");
    EXPECT_EQ(listed.checked, "Hardcore-Fuzz1");
    EXPECT_EQ(listed.checks, 1);
}

TEST(IGwDistoPresetMenu, ChosenRowSelectsItsCurve) {
    InstrumentRig rig;
    const auto& display = rig.Attach<IGwDistoPresetMenu>(kPlace, IText());
    for (const int row : {41, 0, 16}) {
        rig.graphics.onMenu = [row](IPopupMenu& menu) -> IPopupMenu* {
            menu.SetChosenItem(row);
            return &menu;
        };
        rig.Click(display);
        EXPECT_DOUBLE_EQ(rig.Get(Param::DistortionType), row / 41.0);
        EXPECT_EQ(rig.plug.EditorStage().GetDistortion().CurveNumber(), row);
    }
    EXPECT_EQ(display.String(), "17: Tube-Distort");
}

TEST(IGwDistoPresetMenu, ShowsNumberAndName) {
    InstrumentRig rig;
    rig.Attach<IGwDistoPresetMenu>(kPlace, IText());
    rig.Set(Param::DistortionType, 0.0);
    rig.graphics.Tick();
    rig.DrawAll();
    ASSERT_EQ(rig.graphics.texts.size(), 1U);
    EXPECT_EQ(rig.graphics.texts[0].string, "01: Linear");
    EXPECT_EQ(rig.graphics.texts[0].rect, kPlace);
}

TEST(IGwChoiceMenu, OpensAtItsPlaceWithTheLeftButtonOnly) {
    InstrumentRig rig;
    const auto& display = rig.Attach<IGwWaveformPresetMenu>(kPlace, kWave, IText());
    rig.Click(display, kRight);
    EXPECT_TRUE(rig.graphics.menuRects.empty());
    rig.Click(display);
    EXPECT_EQ(rig.graphics.menuRects, std::vector<IRECT>{kPlace});
}

TEST(IGwChoiceMenu, ClosingWithoutAChoiceChangesNothing) {
    InstrumentRig rig;
    const auto& display = rig.Attach<IGwWaveformPresetMenu>(kPlace, kWave, IText());
    rig.Set(kWave, 0.31);
    rig.graphics.Tick();
    rig.Click(display);
    EXPECT_EQ(rig.Get(kWave), 0.31);
}

TEST(IGwChoiceMenu, ShowsWhatTheHostSetsAtTheNextTick) {
    InstrumentRig rig;
    auto& display = rig.Attach<IGwWaveformPresetMenu>(kPlace, kWave, IText());
    rig.Set(kWave, 0.0);
    rig.graphics.Tick();
    EXPECT_EQ(display.String(), "Sine");
    display.SetClean();
    display.SetClean();
    rig.Set(kWave, 0.125);
    rig.graphics.Tick();
    EXPECT_TRUE(display.IsDirty());
    EXPECT_EQ(display.String(), "Triangle");
    rig.DrawAll();
    EXPECT_EQ(rig.graphics.texts.back().string, "Triangle");
}

} // namespace
} // namespace Grimworks
