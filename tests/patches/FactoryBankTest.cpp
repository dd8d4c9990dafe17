#include "patches/FactoryBank.h"

#include "core/Choice.h"
#include "core/ParameterTable.h"
#include "core/TempoSync.h"
#include "patches/Ingredients.h"
#include "patches/TextProgram.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>

namespace Grimworks {
namespace {

const std::vector<SynthProgram>& Bank() {
    static const std::vector<SynthProgram> bank = MakeFactoryBank();
    return bank;
}

const SynthProgram& Program(const std::string& name) {
    for (const SynthProgram& program : Bank()) {
        if (program.name == name) return program;
    }
    ADD_FAILURE() << name;
    return Bank().front();
}

constexpr const char* kNames[] = {
    "Basic Bass Drum 1",
    "Basic Bass Drum 2 (soft)",
    "Basic Bass Drum 3 (click)",
    "Basic Kick Drum 1",
    "Basic Kick Drum 2",
    "Electronic Kick",
    "Tight Kick by Marl-404",
    "Laser Kick",
    "Pulse Beat",
    "Oldschool Bass Drum 1",
    "Oldschool Bass Drum 2",
    "Oldschool Bass Drum 3",
    "Oldschool Bass Drum 4",
    "Oldschool Bass Drum 5",
    "#HARDCORE BASS DRUMS#",
    "Mainstream Bass Drum 1",
    "Mainstream Bass Drum 2",
    "Mainstream Bass Drum 3",
    "Next-Millenium Kick",
    "Darkcore Bass Drum 1",
    "Darkcore Bass Drum 2",
    "Rawstyle Kick",
    "QRX Bass Drum",
    "QRX Kick Drum",
    "Plexi-Drum",
    "Industrial Bass Drum",
    "Low Q Bass Drum 1",
    "Low Q Bass Drum 2",
    "Re-Born",
    "Mova Doomcore-Kick",
    "Deep-Underground-Beat",
    "Bass-Megastructure",
    "Terrorcore Beat 1",
    "Terrorcore Beat 2",
    "Killer Beat",
    "Dirty Beat",
    "Frenchcore Kick",
    "Speedcore Kick 1",
    "Speedcore Kick 2",
    "Bounce Kick 1",
    "Bounce Kick 2",
    "NoiseCore Kick",
    "Amiga 8-bit Powerkick 1",
    "Amiga 8-bit Powerkick 2",
    "Wolski Kick Drum 1",
    "Wolski Kick Drum 2",
    "Omar Kick Drum 1",
    "Omar Kick Drum 2",
    "Da Thud Pusher",
    "Gabber Kick 1",
    "Gabber Kick 2",
    "High Performance Beat",
    "GrimWorks Kick Drum 1",
    "GrimWorks Kick Drum 2",
    "GrimWorks Kick Drum 3",
    "GrimWorks Kick Drum 4",
    "Thud-Forge Kick",
    "Dark Matter Detector",
    "Industrial Crunch",
    "T.Ember Bass Drum 1",
    "T.Ember Bass Drum 2",
    "#DRUM AND FX SECTION#",
    "Drum Body by Marl-404",
    "Ride Cymbal by Pim_Later",
    "Closed Hihat by Ludo",
    "Open Hihat by Marl-404",
    "Snare-Drum",
    "A Coder Ate My Pigeon",
    "Silver Submarine",
    "Laser FX",
    "Ocean-Waves by Sorrel",
    "#BASS SECTION#",
    "Raw Bassground",
    "The shadow out of bass",
    "Underground Dub Bass",
    "The Sorcery of D&B Bass",
    "Deadly Spell D&B Bass",
    "The Holy Thud",
    "Fusion Bass 1",
    "Fusion Bass 2",
    "Acid Tube Bass by Marl-404",
    "#STRING INSTRUMENTS#",
    "Guitar by Sorrel",
    "Orrin Vale's Violin",
    "Virtual Cello",
    "Virtual Banjo",
    "#WIND INSTRUMENTS#",
    "Chinese Flute by Quenby",
    "Virtual Horn",
    "Virtual Harmonica",
    "Harmonica by Sorrel",
    "Dark Organ by Tobin Ashgrove",
    "#PAD SECTION#",
    "Synth Choir by Marl-404",
    "Relic Pad",
    "Raw Structured Pad",
    "Space-Cut Pad",
    "Prophecy Pad",
    "Delirium Pad",
    "#SYNTH SOUNDS#",
    "Alpha Saw",
    "PhaseRunner Saw",
    "Liquid Saw Motion",
    "HyperSaw Nova",
    "Classic Hardcore Lead",
    "Cyber Realizm",
    "Exothermic Hardstyle Lead",
    "Endothermic Hardcore Lead",
    "SquareCore Lead",
    "TwinPulse Lead",
    "Chip-Tune-Forge D-16",
    "Chip-Tune-Forge M-16",
    "8-bit Retro (major)",
    "8-bit Retro (minor)",
    "1980 Game-Nation",
    "Ronnie's Happy Chord",
    "Positive Dub Madness",
    "High above the sky",
    "Dark Phuture Lead",
    "Event Horizon Lead (phased)",
    "Hard-D&B-Lead 1",
    "Filter Synth",
    "T.Ember A-Y-Synth",
    "Big Pitcher",
    "Vibes 1",
    "Vibes 2",
    "Tubular Bells",
    "Basic Sine wave",
};

bool Sounds(const SynthProgram& program, int oscillator) {
    return program.GetValue(Osc(oscillator, OscParam::OnOff)) > 0.5 &&
           program.GetValue(Osc(oscillator, OscParam::Volume)) > 0.0;
}

/// Compares a program with the reset values under a list of exceptions, by key and to the digit.
void ExpectProgram(const std::string& name, const std::map<std::string, double>& differences) {
    ValueBlock expected;
    ResetValues(expected);
    const SynthProgram& program = Program(name);
    for (const auto& [key, value] : differences) {
        const int id = program.IdOfKey(key);
        ASSERT_LT(id, kLiveParameters) << key;
        expected[id] = value;
    }
    for (int id = 0; id < kLiveParameters; ++id)
        EXPECT_EQ(program.GetValue(id), expected[id]) << name << " " << program.KeyOfId(id);
}

TEST(FactoryBank, HasItsProgramsInTheOrderOfTheMenu) {
    ASSERT_EQ(Bank().size(), 128U);
    ASSERT_EQ(std::size(kNames), 128U);
    for (std::size_t i = 0; i < 128; ++i)
        EXPECT_EQ(Bank()[i].name, kNames[i]) << i + 1;
}

TEST(FactoryBank, SectionsAreHeadedByTheirMarkers) {
    std::set<int> markers;
    for (int i = 0; i < 128; ++i) {
        const std::string& name = Bank()[static_cast<std::size_t>(i)].name;
        if (name.starts_with('#') && name.ends_with('#')) markers.insert(i + 1);
    }
    EXPECT_EQ(markers, (std::set<int>{15, 62, 72, 82, 87, 93, 100}));
    int next = 1;
    for (const FactorySection& section : kFactorySections) {
        EXPECT_EQ(section.first, next);
        EXPECT_TRUE(section.first == 1 || markers.contains(section.first));
        next = section.last + 1;
    }
    EXPECT_EQ(next, 129);
}

TEST(FactoryBank, TheFirstProgramIsWhatARecordIsBornWith) {
    EXPECT_EQ(Bank().front().values, SynthProgram().values);
}

TEST(FactoryBank, ElectronicKickIsAsWritten) {
    ExpectProgram("Electronic Kick", {{"OscWaveform1", 0.125},
                                      {"OscVolume1", 0.75},
                                      {"Osc1LfoTempoSync", 0.555556},
                                      {"Osc2LfoTempoSync", 0.555556},
                                      {"Osc3LfoTempoSync", 0.555556},
                                      {"EnvAttack", 0.0},
                                      {"EnvDecay", 1.0},
                                      {"EnvSustain", 0.0},
                                      {"EnvRelease", 0.025},
                                      {"FilterAttack", 0.0},
                                      {"FilterDecay", 0.25},
                                      {"FilterSustain", 0.05},
                                      {"FilterRelease", 0.025},
                                      {"AdsrShape", 0.8},
                                      {"BassLayerAmount", 0.25},
                                      {"BassLayerClick", 0.2},
                                      {"NoteTransposeMode", 0.555556},
                                      {"PitchAmount", 0.4},
                                      {"PitchDuration", 0.24},
                                      {"PitchPower", 1.0},
                                      {"DistortionType", 0.487805}});
}

TEST(FactoryBank, RawBassgroundIsAsWritten) {
    ExpectProgram("Raw Bassground", {{"OscModFrequency1", 0.25},
                                     {"OscWaveform2", 0.125},
                                     {"OscVolume2", 0.0},
                                     {"OscModFrequency2", 0.25},
                                     {"OscFreqModAmount2", 0.125},
                                     {"EnvDecay", 0.25},
                                     {"EnvSustain", 0.75},
                                     {"EnvRelease", 0.1},
                                     {"EnvDuration", 0.1},
                                     {"FilterDecay", 0.25},
                                     {"FilterSustain", 0.75},
                                     {"FilterRelease", 0.1},
                                     {"FilterDuration", 0.1},
                                     {"NoteTransposeMode", 0.111111},
                                     {"PitchBendRange", 1.0},
                                     {"PitchDuration", 0.5},
                                     {"FmAmount", 0.4},
                                     {"DistortionOnOff", 0.0},
                                     {"Distortion", 0.5},
                                     {"DistortionType", 0.390244},
                                     {"DistortionLoudness", 0.0},
                                     {"FilterType", 1.0},
                                     {"FilterCutoff", 0.0},
                                     {"LimiterMode", 0.0},
                                     {"LimiterLevel", 1.0}});
}

TEST(FactoryBank, ClassicHardcoreLeadIsAsWritten) {
    ExpectProgram("Classic Hardcore Lead", {{"OscWaveform1", 0.15},
                                            {"OscVolume1", 0.5},
                                            {"OscPitch1", 0.0},
                                            {"Osc1LfoTempoSync", 0.666667},
                                            {"OscFreqModAmount1", 0.1},
                                            {"Osc2OnOff", 1.0},
                                            {"OscWaveform2", 0.025},
                                            {"OscFreq2", 0.65},
                                            {"OscVolume2", 0.5},
                                            {"OscPan2", 0.6},
                                            {"Osc2LfoTempoSync", 0.666667},
                                            {"OscFreqModAmount2", 0.2},
                                            {"Osc3OnOff", 1.0},
                                            {"OscWaveform3", 0.025},
                                            {"OscFreq3", 0.35},
                                            {"OscVolume3", 0.5},
                                            {"OscPan3", 0.4},
                                            {"Osc3LfoTempoSync", 0.777778},
                                            {"OscFreqModAmount3", 0.4},
                                            {"EnvAttack", 0.0},
                                            {"EnvDecay", 0.75},
                                            {"EnvSustain", 1.0},
                                            {"EnvRelease", 0.1},
                                            {"EnvDuration", 0.25},
                                            {"FilterAttack", 0.0},
                                            {"FilterDecay", 0.75},
                                            {"FilterSustain", 1.0},
                                            {"FilterRelease", 0.2},
                                            {"FilterDuration", 0.25},
                                            {"NoteTransposeMode", 0.0},
                                            {"PitchOnOff", 0.0},
                                            {"UnisonDetune", 0.44},
                                            {"DistortionOnOff", 0.0},
                                            {"RingModulationFrequency", 0.1},
                                            {"PhaserFeedback", 0.5},
                                            {"PhaserRate", 0.5},
                                            {"TempoDelayAmount", 0.075},
                                            {"TempoDelayFeedback", 0.5},
                                            {"TempoDelaySpread", 0.625},
                                            {"LimiterMode", 0.0},
                                            {"LimiterLevel", 1.0}});
}

TEST(FactoryBank, TheHardcoreMarkerIsElectronicKickWithTwoValuesOfItsOwn) {
    const SynthProgram& kick = Program("Electronic Kick");
    const SynthProgram& marker = Program("#HARDCORE BASS DRUMS#");
    int differences = 0;
    for (int id = 0; id < kLiveParameters; ++id)
        differences += kick.GetValue(id) != marker.GetValue(id) ? 1 : 0;
    EXPECT_EQ(differences, 2);
}

TEST(FactoryBank, EveryBaseIsAProgramOfTheBank) {
    const Recipes recipes = FactoryRecipes();
    std::set<std::string_view> names;
    for (const Recipe& recipe : recipes)
        names.insert(recipe.name);
    for (const Recipe& recipe : recipes)
        EXPECT_TRUE(recipe.base == Reset || names.contains(recipe.base)) << recipe.name;
}

TEST(FactoryBank, AProgramIsItsBaseWithItsOwnSettings) {
    const Recipes recipes = FactoryRecipes();
    for (const Recipe& recipe : recipes) {
        if (recipe.name == "Basic Bass Drum 1") continue;
        ValueBlock expected;
        ResetValues(expected);
        if (recipe.base != Reset) expected = Program(std::string(recipe.base)).values;
        for (const Setting& setting : recipe.settings.All()) {
            ASSERT_GE(setting.id, 0);
            ASSERT_LT(setting.id, kLiveParameters);
            expected[setting.id] = setting.value;
        }
        EXPECT_EQ(Program(std::string(recipe.name)).values, expected) << recipe.name;
    }
}

TEST(FactoryBank, ValuesLieInTheirRangeAndHaveSixDecimals) {
    for (const SynthProgram& program : Bank()) {
        for (int id = 0; id < kLiveParameters; ++id) {
            const double value = program.GetValue(id);
            EXPECT_GE(value, 0.0) << program.name << " " << program.KeyOfId(id);
            EXPECT_LE(value, 1.0) << program.name << " " << program.KeyOfId(id);
            EXPECT_NEAR(value * 1e6, std::round(value * 1e6), 1e-6)
                << program.name << " " << program.KeyOfId(id);
        }
    }
}

TEST(FactoryBank, NoTwoProgramsHaveTheSameValues) {
    for (std::size_t i = 0; i < Bank().size(); ++i) {
        for (std::size_t k = 0; k < i; ++k)
            EXPECT_NE(Bank()[i].values, Bank()[k].values) << Bank()[i].name << ", " << Bank()[k].name;
    }
}

TEST(FactoryBank, SurvivesTheTextForm) {
    for (const SynthProgram& program : Bank()) {
        SynthProgram back;
        std::string curve;
        ReadTextProgram(WriteTextProgram(program, "", ""), back, curve);
        EXPECT_EQ(back.name, program.name.substr(0, 32));
        for (int id = 0; id < kLiveParameters; ++id) {
            if (id == 133 || id == 137 || id == 138) continue;
            const bool isWave = id == 1 || id == 22 || id == 43;
            const int wave = isWave ? WaveformIndex(program.GetValue(id)) : 0;
            if (wave == 9 || wave == 16) continue; // these two names do not come back
            EXPECT_NEAR(back.GetValue(id), program.GetValue(id), 6e-7)
                << program.name << " " << program.KeyOfId(id);
        }
    }
}

TEST(FactoryBank, KicksPlayOnePitchAndEndByThemselves) {
    // The very first program is the default of all parameters and holds its note.
    for (int number = 2; number <= 61; ++number) {
        const SynthProgram& program = Bank()[static_cast<std::size_t>(number - 1)];
        const int mode = Choice(program.GetValue(Param::NoteTransposeMode), 9);
        EXPECT_GE(mode, 3) << program.name;
        EXPECT_LE(mode, 7) << program.name;
        EXPECT_EQ(program.GetValue(Param::EnvSustain), 0.0) << program.name;
    }
}

TEST(FactoryBank, MelodicProgramsFollowTheKey) {
    for (int number = 72; number <= 128; ++number) {
        const SynthProgram& program = Bank()[static_cast<std::size_t>(number - 1)];
        const int mode = Choice(program.GetValue(Param::NoteTransposeMode), 9);
        EXPECT_TRUE(mode <= 2 || mode >= 8) << program.name;
    }
}

/// Numbers of a choice that some program in the bank uses.
template <typename Uses>
std::set<int> Used(Uses uses) {
    std::set<int> found;
    for (const SynthProgram& program : Bank())
        uses(program, found);
    return found;
}

std::set<int> UpTo(int last) {
    std::set<int> all;
    for (int i = 0; i <= last; ++i)
        all.insert(i);
    return all;
}

std::set<int> UsedByOscillators(OscParam parameter, int last) {
    return Used([=](const SynthProgram& program, std::set<int>& found) {
        for (int o = 0; o < kOscillators; ++o) {
            if (Sounds(program, o)) found.insert(Choice(program.GetValue(Osc(o, parameter)), last));
        }
    });
}

std::set<int> UsedWith(int id, int last, int onId, int amountId) {
    return Used([=](const SynthProgram& program, std::set<int>& found) {
        if (program.GetValue(onId) != 0.0 && program.GetValue(amountId) > 0.0) {
            found.insert(Choice(program.GetValue(id), last));
        }
    });
}

TEST(FactoryBank, UsesAllWavesAndCurves) {
    EXPECT_EQ(UsedByOscillators(OscParam::Waveform, 40), UpTo(40));
    const std::set<int> curves = UsedWith(102, 41, 100, 101);
    std::set<int> expected = UpTo(41);
    expected.erase(41); // plays the same curve as number 12
    EXPECT_EQ(curves, expected);
}

TEST(FactoryBank, UsesAllFilters) {
    std::set<int> types = Used([](const SynthProgram& program, std::set<int>& found) {
        for (int o = 0; o < kOscillators; ++o) {
            const double balance = program.GetValue(Osc(o, OscParam::FilterBalance));
            if (!Sounds(program, o)) continue;
            if (balance < 1.0) found.insert(Choice(program.GetValue(Osc(o, OscParam::FilterTypeLeft)), 4));
            if (balance > 0.0) found.insert(Choice(program.GetValue(Osc(o, OscParam::FilterTypeRight)), 4));
        }
    });
    EXPECT_EQ(types, UpTo(4));
    const auto unit = [](int id, int last, bool second) {
        return Used([=](const SynthProgram& program, std::set<int>& found) {
            const double balance = program.GetValue(Param::FilterType);
            if (second ? balance > 0.0 : balance < 1.0) found.insert(Choice(program.GetValue(id), last));
        });
    };
    EXPECT_EQ(unit(Param::FilterMode1, 3, false), UpTo(3));
    EXPECT_EQ(unit(Param::FilterMode2, 5, true), UpTo(5));
}

TEST(FactoryBank, UsesAllModulators) {
    EXPECT_EQ(UsedByOscillators(OscParam::LfoMode, 4), UpTo(4));
    EXPECT_EQ(UsedByOscillators(OscParam::LfoTempoSync, 9), UpTo(9));
    EXPECT_EQ(UsedWith(124, 4, 121, 122), UpTo(4));
    EXPECT_EQ(UsedWith(107, 2, 100, 105), UpTo(2));
    EXPECT_EQ(UsedWith(108, 3, 100, 105), UpTo(3));
    EXPECT_EQ(UsedWith(109, 2, 100, 105), UpTo(2));
    EXPECT_EQ(UsedWith(103, 2, 100, 101), UpTo(2));
    EXPECT_EQ(Used([](const SynthProgram& program, std::set<int>& found) {
                  found.insert(Choice(program.GetValue(Param::NoteTransposeMode), 9));
              }),
              UpTo(9));
}

TEST(FactoryBank, UsesEveryUnit) {
    for (const int id :
         {int{Param::FmAmount}, int{Param::BassLayerAmount}, int{Param::BassLayerClick},
          int{Param::BassLayerToFilter}, int{Param::BassLayerToFm}, int{Param::PhaserDepth},
          int{Param::TempoDelayAmount}, int{Param::Gate}, int{Param::FilterInputDrive},
          int{Param::Saturation}, int{Param::UnisonVoices}, int{Param::PitchDown},
          int{Param::FilterEnvToDynShaper}, int{Param::DynShaperInvert}, int{Param::PhaserTempoSync}}) {
        const std::set<int> used = Used([id](const SynthProgram& program, std::set<int>& found) {
            if (program.GetValue(id) > 0.0) found.insert(1);
        });
        EXPECT_TRUE(used.contains(1)) << ParameterKey(id);
    }
    for (const int id : {int{Param::Quantization}, int{Param::SampleRate}}) {
        const std::set<int> used = Used([id](const SynthProgram& program, std::set<int>& found) {
            if (program.GetValue(id) < 1.0) found.insert(1);
        });
        EXPECT_TRUE(used.contains(1)) << ParameterKey(id);
    }
}

TEST(Ingredients, SpeakInMusicalNumbers) {
    using namespace ProgramKey;
    EXPECT_EQ(Semitones(12.0), 1.0);
    EXPECT_EQ(Semitones(-12.0), 0.0);
    EXPECT_EQ(Cents(0.0), 0.5);
    EXPECT_NEAR(Cents(100.0), 1.0, 1e-6);
    EXPECT_NEAR(Cents(-100.0), 0.0, 1e-6);
    EXPECT_NEAR(10.0 * std::pow(2204.0, FilterHz(1000.0)), 1000.0, 0.01);
    EXPECT_EQ(LfoHz(5.0), 0.25);
    EXPECT_EQ(Curve("Full-Clip"), 18);
    EXPECT_EQ(UserWave(16), 1.0);
}

TEST(Ingredients, EnvelopesTakeSeconds) {
    SynthProgram program;
    const Settings settings = Envelopes(0.4, {0.02, 1.0, 0.5, 0.25}, {0.1, 2.0, 0.3, 4.0});
    for (const Setting& setting : settings.All())
        program.values[setting.id] = setting.value;
    const double longest = 5.0 * program.GetValue(Param::EnvDuration);
    EXPECT_NEAR(program.GetValue(Param::EnvAttack) * longest, 0.02, 1e-6);
    EXPECT_NEAR(program.GetValue(Param::EnvDecay) * longest, 1.0, 1e-6);
    EXPECT_NEAR(program.GetValue(Param::EnvRelease) * longest, 0.25, 1e-6);
    EXPECT_EQ(program.GetValue(Param::EnvSustain), 0.5);
    EXPECT_NEAR(program.GetValue(Param::FilterAttack) * 2.0, 0.1, 1e-6);
    EXPECT_EQ(program.GetValue(Param::FilterDecay), 1.0);
    EXPECT_EQ(program.GetValue(Param::FilterRelease), 1.0) << "stages are no longer than the longest";
}

} // namespace
} // namespace Grimworks
