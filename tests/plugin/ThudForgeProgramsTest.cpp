#include "plugin/ThudForge.h"

#include "core/Choice.h"
#include "core/FileBytes.h"
#include "core/NumberText.h"
#include "core/ParameterTable.h"
#include "patches/FactoryBank.h"
#include "patches/TextProgram.h"
#include "tests/plugin/Instrument.h"
#include "tests/support/SlowBuild.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <random>
#include <sstream>

namespace Grimworks {
namespace {

namespace fs = std::filesystem;

/// A folder of the test's own that goes with it.
class ThudForgePrograms : public testing::Test {
protected:
    ThudForgePrograms() : folder(MakeFolder()) {}
    ~ThudForgePrograms() override {
        std::error_code error;
        fs::remove_all(folder, error);
    }

    static fs::path MakeFolder() {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        fs::path path = fs::path(testing::TempDir()) / (std::string("thudforge-") + test->name() + "-" +
                                                        std::to_string(std::random_device{}()));
        fs::create_directories(path);
        return path;
    }

    [[nodiscard]] std::string Path(const std::string& name) const { return (folder / name).string(); }

    static std::string Content(const std::string& path) {
        std::vector<std::uint8_t> bytes;
        EXPECT_TRUE(ReadFileBytes(path, bytes)) << path;
        return {bytes.begin(), bytes.end()};
    }

    static void Write(const std::string& path, const std::string& text) {
        ASSERT_TRUE(WriteFileBytes(path, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}));
    }

    fs::path folder;
};

std::vector<double> ValuesOf(const ThudForge& plug) {
    std::vector<double> values(kParameters);
    for (int id = 0; id < kParameters; ++id)
        values[static_cast<std::size_t>(id)] = plug.GetParameterValue(id);
    return values;
}

ByteChunk StateOf(ThudForge& plug) {
    ByteChunk chunk;
    plug.SerializeState(chunk);
    return chunk;
}

bool Same(const ByteChunk& a, const ByteChunk& b) {
    return a.Size() == b.Size() && std::memcmp(a.Data(), b.Data(), static_cast<std::size_t>(a.Size())) == 0;
}

void Scramble(ThudForge& plug, unsigned seed) {
    std::mt19937 random(seed);
    for (int id = 0; id < kParameters; ++id)
        plug.SetParameterFromHost(id, static_cast<double>(random() % 1001U) / 1000.0);
    plug.RequestCurveOperation(CurveOperation::Steps);
}

std::string LineOf(const std::string& text, const std::string& key) {
    const std::size_t start = text.find("\n" + key + " = ");
    if (start == std::string::npos) return {};
    return text.substr(start + 1, text.find('\n', start + 1) - start - 1);
}

TEST_F(ThudForgePrograms, TheBankFillsThePresets) {
    const ThudForge plug(nullptr);
    const std::vector<SynthProgram> bank = MakeFactoryBank();
    ASSERT_EQ(plug.PresetCount(), 128);
    for (int i = 0; i < 128; ++i) {
        const SynthProgram& program = bank[static_cast<std::size_t>(i)];
        const IPlugBase::Preset& preset = *plug.GetPreset(i);
        EXPECT_TRUE(preset.initialized);
        EXPECT_EQ(preset.name, program.name);
        ASSERT_EQ(preset.chunk.Size(), 5372);
        std::int32_t count = 0;
        int position = preset.chunk.Get(count, 0);
        EXPECT_EQ(count, 671);
        position += 4096;
        for (int id = 0; id < kParameters; ++id) {
            double value = -1.0;
            position = preset.chunk.Get(value, position);
            ASSERT_EQ(value, program.GetValue(id)) << i << " " << id;
        }
    }
}

TEST_F(ThudForgePrograms, ANewInstanceStandsOnTheFirstProgram) {
    ThudForge plug(nullptr);
    EXPECT_EQ(plug.CurrentPreset(), 0);
    EXPECT_EQ(plug.PresetName(0), "Basic Bass Drum 1");
    EXPECT_EQ(plug.Values(), SynthProgram().values);
    EXPECT_TRUE(Same(StateOf(plug), plug.GetPreset(0)->chunk));
    for (const ParameterInfo& row : kParameterTable) {
        EXPECT_EQ(plug.GetParameterValue(row.id), row.constructorValue) << row.key;
        if (row.id != Osc(2, OscParam::LfoRate)) {
            EXPECT_EQ(plug.GetParam(row.id)->Default(), row.constructorValue) << row.key;
        }
    }
}

TEST_F(ThudForgePrograms, EachProgramBringsItsStockCurve) {
    ThudForge plug(nullptr);
    RandomGenerator random;
    const DistortionDataProvider curves(random);
    for (int i = 0; i < 128; ++i) {
        ASSERT_TRUE(plug.RestorePreset(i));
        // Whatever was drawn before gives way to the stock curve of the next program.
        const int number = ClampedChoice(plug.GetParameterValue(Param::DistortionType), 41);
        EXPECT_EQ(plug.AudioStage().GetDistortion().Points(), curves.GetCurveData(number)) << i;
        plug.RequestCurveOperation(CurveOperation::Reset);
    }
}

TEST_F(ThudForgePrograms, SteppingOutOfTheBankStaysWhereItIs) {
    ThudForge plug(nullptr);
    ASSERT_TRUE(plug.RestorePreset(124));
    const std::vector<double> before = ValuesOf(plug);
    EXPECT_FALSE(plug.RestorePreset(134));
    EXPECT_FALSE(plug.RestorePreset(-1));
    EXPECT_EQ(plug.CurrentPreset(), 124);
    EXPECT_EQ(ValuesOf(plug), before);
}

TEST_F(ThudForgePrograms, ASectionMarkerIsAProgramLikeAnyOther) {
    Instrument instrument;
    ASSERT_TRUE(instrument.Plug().RestorePreset(14));
    EXPECT_EQ(instrument.Plug().PresetName(14), "#HARDCORE BASS DRUMS#");
    instrument.NoteOn(60);
    EXPECT_GT(instrument.Render(8192).Peak(), 0.1);
}

TEST_F(ThudForgePrograms, RestoringTheCurrentProgramThrowsEditsAway) {
    ThudForge plug(nullptr);
    ASSERT_TRUE(plug.RestorePreset(36));
    const ByteChunk before = StateOf(plug);
    Scramble(plug, 5);
    EXPECT_FALSE(Same(StateOf(plug), before));
    ASSERT_TRUE(plug.RestorePreset(36));
    EXPECT_TRUE(Same(StateOf(plug), before));
}

TEST_F(ThudForgePrograms, ThePathChoosesTheForm) {
    ThudForge plug(nullptr);
    for (const char* name : {"a.fxp", "b.fxp.txt", "a.fxpx"}) {
        ASSERT_TRUE(plug.SaveProgram(Path(name))) << name;
        EXPECT_EQ(Content(Path(name)).substr(0, 4), "CcnK") << name;
        EXPECT_TRUE(plug.LoadProgram(Path(name))) << name;
    }
    for (const char* name : {"a.txt", "b.gw", "c.tgp", "d.FXP", "e.fx"}) {
        ASSERT_TRUE(plug.SaveProgram(Path(name))) << name;
        EXPECT_EQ(Content(Path(name)).substr(0, 6), "Name =") << name;
        EXPECT_TRUE(plug.LoadProgram(Path(name))) << name;
    }
    EXPECT_FALSE(plug.SaveProgram(""));
    EXPECT_FALSE(plug.LoadProgram(""));
}

TEST_F(ThudForgePrograms, ASavedTextHasAllItsLines) {
    ThudForge plug(nullptr);
    ASSERT_TRUE(plug.RestorePreset(5));
    ASSERT_TRUE(plug.SaveProgramAsText(Path("kick.txt")));
    const std::string text = Content(Path("kick.txt"));
    EXPECT_TRUE(text.starts_with("Name = Electronic Kick;\nOsc1OnOff = 1;\nOscWaveform1 = Triangle;\n"));
    EXPECT_EQ(LineOf(text, "DistortionType"), "DistortionType = Hardcore-Fuzz1;");
    EXPECT_EQ(LineOf(text, "NoteTransposeMode"), "NoteTransposeMode = 0.555556;");
    for (int i = 0; i < 19; ++i) {
        const std::string key = ParameterKey(140 + i);
        EXPECT_EQ(LineOf(text, key), key + " = 0;");
    }
    const auto numbers = [&text](const std::string& key) {
        const std::string line = LineOf(text, key);
        return 1 + std::count(line.begin(), line.end(), ',');
    };
    EXPECT_EQ(numbers("DistortionCurveData"), 512);
    EXPECT_EQ(numbers("OscWaveData"), 4096);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1 + 159 + 2);
    EXPECT_TRUE(LineOf(text, "OscWaveData").starts_with("OscWaveData = 0.0000000000,"));
}

TEST_F(ThudForgePrograms, TextKeepsEveryValueAndTheDrawnCurve) {
    ThudForge first(nullptr);
    Scramble(first, 21);
    first.SetParameterFromHost(Osc(0, OscParam::Waveform), 12.0 / 40.0);
    ASSERT_TRUE(first.SaveProgramAsText(Path("p.txt")));
    ThudForge second(nullptr);
    ASSERT_TRUE(second.LoadProgramFromText(Path("p.txt")));
    // An LFO that is locked to a clock that is not there stands at 0 in both, whatever was written.
    const SynthProgram plain;
    for (int id = 0; id < kLiveParameters; ++id) {
        double expected = first.GetParameterValue(id);
        if (id == 133 || id == 137 || id == 138) expected = plain.GetValue(id);
        if (id == 80) expected = std::min(expected, 1.0) * 1.259;
        if (id == 102) expected = std::round(expected * 41.0) / 41.0;
        if (id == 118) expected = std::round(expected * 3.0) / 3.0;
        if (id == 119) expected = std::round(expected * 5.0) / 5.0;
        if (id == 1 || id == 22 || id == 43) {
            const double wave = std::round(expected * 40.0);
            expected = (wave == 9.0 ? 0.0 : wave == 16.0 ? 15.0 : wave) / 40.0;
        }
        EXPECT_NEAR(second.GetParameterValue(id), expected, 1e-6) << ParameterKey(id);
    }
    const CurvePoints& drawn = first.EditorStage().GetDistortion().Points();
    for (const DistortionStage* stage : {&second.EditorStage(), &second.AudioStage()}) {
        for (std::size_t i = 0; i < drawn.size(); ++i)
            ASSERT_NEAR(stage->GetDistortion().Points()[i], drawn[i], 1e-10);
    }
}

TEST_F(ThudForgePrograms, ASubAmountGrowsByItsRangeOnTheWayThroughText) {
    ThudForge plug(nullptr);
    plug.SetParameterFromHost(Param::BassLayerAmount, 0.5 / 1.259);
    ASSERT_DOUBLE_EQ(plug.GetParameterValue(Param::BassLayerAmount), 0.5);
    ASSERT_TRUE(plug.SaveProgramAsText(Path("p.txt")));
    ASSERT_TRUE(plug.LoadProgramFromText(Path("p.txt")));
    EXPECT_DOUBLE_EQ(plug.GetParameterValue(Param::BassLayerAmount), 0.6295);
}

TEST_F(ThudForgePrograms, ALoadBringsLimiterAndVolumeToTheirDefaults) {
    ThudForge plug(nullptr);
    for (const int id : {133, 137, 138})
        plug.SetParameterFromHost(id, 0.25);
    ASSERT_TRUE(plug.SaveProgramAsText(Path("p.txt")));
    EXPECT_EQ(LineOf(Content(Path("p.txt")), "Volume"), "Volume = 0.25;");
    ASSERT_TRUE(plug.LoadProgramFromText(Path("p.txt")));
    EXPECT_EQ(plug.GetParameterValue(133), 1.0);
    EXPECT_EQ(plug.GetParameterValue(137), 0.705);
    EXPECT_EQ(plug.GetParameterValue(138), 0.79);
}

TEST_F(ThudForgePrograms, ALoadBringsReservedIdsToZero) {
    ThudForge plug(nullptr);
    plug.SetParameterFromHost(150, 0.5);
    ASSERT_EQ(plug.GetParameterValue(150), 0.5);
    Write(Path("p.txt"), "Name = x;\nReserved_10 = 0.75;\n");
    ASSERT_TRUE(plug.LoadProgramFromText(Path("p.txt")));
    EXPECT_EQ(plug.GetParameterValue(150), 0.0);
}

TEST_F(ThudForgePrograms, ThePresetKeepsTheSoundFromBeforeTheLoadUnderTheNewName) {
    ThudForge plug(nullptr);
    ASSERT_TRUE(plug.RestorePreset(3));
    plug.SetParameterFromHost(Param::Gate, 0.625);
    const ByteChunk before = StateOf(plug);
    Write(Path("p.txt"), "Name = Other;\nGate = 0.125;\n");
    ASSERT_TRUE(plug.LoadProgramFromText(Path("p.txt")));
    EXPECT_EQ(plug.CurrentPreset(), 3);
    EXPECT_EQ(plug.PresetName(3), "Other");
    EXPECT_EQ(plug.GetParameterValue(Param::Gate), 0.125);
    EXPECT_TRUE(Same(plug.GetPreset(3)->chunk, before));
    ASSERT_TRUE(plug.RestorePreset(3));
    EXPECT_TRUE(Same(StateOf(plug), before));
}

TEST_F(ThudForgePrograms, ALoadReachesTheEngine) {
    ThudForge plug(nullptr);
    Write(Path("p.txt"), "Name = x;\nGlobalTranspose = 1;\nDistortionType = Full-Clip;\n");
    ASSERT_TRUE(plug.LoadProgramFromText(Path("p.txt")));
    EXPECT_NEAR(plug.Values().transposeRatio, 2.0, 1e-12);
    EXPECT_EQ(plug.AudioStage().GetDistortion().CurveNumber(), 18);
    EXPECT_EQ(plug.EditorStage().GetDistortion().CurveNumber(), 18);
}

TEST_F(ThudForgePrograms, WithoutACurveLineTheCurvesStayAsTheyWere) {
    ThudForge plug(nullptr);
    const auto load = [&](const std::string& text) {
        Write(Path("p.txt"), text);
        ASSERT_TRUE(plug.LoadProgramFromText(Path("p.txt")));
    };
    load("Name = x;\nDistortionType = Full-Clip;\n");
    plug.RequestCurveOperation(CurveOperation::Steps);
    const CurvePoints edited = plug.AudioStage().GetDistortion().Points();
    // Away and back: the type is set, and the edited curve of that type is as it was left.
    load("Name = x;\nDistortionType = Limiter;\n");
    EXPECT_EQ(plug.AudioStage().GetDistortion().CurveNumber(), 3);
    load("Name = x;\nDistortionType = Full-Clip;\n");
    EXPECT_EQ(plug.AudioStage().GetDistortion().Points(), edited);
    EXPECT_EQ(plug.EditorStage().GetDistortion().Points(), edited);
}

TEST_F(ThudForgePrograms, ACurveOfTooFewPointsIsLeftOut) {
    ThudForge plug(nullptr);
    const CurvePoints before = plug.AudioStage().GetDistortion().Points();
    std::string numbers = "0.5";
    for (int i = 1; i < 511; ++i)
        numbers += ",0.5";
    Write(Path("p.txt"), "Name = x;\nDistortionCurveData = " + numbers + ";\n");
    ASSERT_TRUE(plug.LoadProgramFromText(Path("p.txt")));
    EXPECT_EQ(plug.AudioStage().GetDistortion().Points(), before);
    Write(Path("p.txt"), "Name = x;\nDistortionCurveData = " + numbers + ",0.5,7;\n");
    ASSERT_TRUE(plug.LoadProgramFromText(Path("p.txt")));
    for (const double point : plug.AudioStage().GetDistortion().Points())
        ASSERT_EQ(point, 0.5);
}

TEST_F(ThudForgePrograms, NoiseWavesSaveDifferentWaveLinesThatLoadTheSame) {
    ThudForge plug(nullptr);
    plug.SetParameterFromHost(Osc(0, OscParam::Waveform), 8.0 / 40.0);
    ASSERT_TRUE(plug.SaveProgramAsText(Path("a.txt")));
    ASSERT_TRUE(plug.SaveProgramAsText(Path("b.txt")));
    const std::string a = Content(Path("a.txt"));
    const std::string b = Content(Path("b.txt"));
    EXPECT_NE(LineOf(a, "OscWaveData"), LineOf(b, "OscWaveData"));
    EXPECT_EQ(a.substr(0, a.find("OscWaveData")), b.substr(0, b.find("OscWaveData")));
    ThudForge first(nullptr);
    ThudForge second(nullptr);
    ASSERT_TRUE(first.LoadProgramFromText(Path("a.txt")));
    ASSERT_TRUE(second.LoadProgramFromText(Path("b.txt")));
    EXPECT_TRUE(Same(StateOf(first), StateOf(second)));
}

TEST_F(ThudForgePrograms, AFailedLoadChangesNothing) {
    ThudForge plug(nullptr);
    Scramble(plug, 8);
    const ByteChunk before = StateOf(plug);
    const std::string name = plug.PresetName(0);
    EXPECT_FALSE(plug.LoadProgramFromText(Path("missing.txt")));
    EXPECT_FALSE(plug.LoadProgramFromText(folder.string()));
    EXPECT_FALSE(plug.LoadProgram(Path("missing.fxp")));
    Write(Path("text.fxp"), "Name = x;\nGate = 0.5;\n");
    EXPECT_FALSE(plug.LoadProgram(Path("text.fxp")));
    EXPECT_TRUE(Same(StateOf(plug), before));
    EXPECT_EQ(plug.PresetName(0), name);
}

TEST_F(ThudForgePrograms, AFailedSaveLeavesTheOldFileAndNothingBesideIt) {
    ThudForge plug(nullptr);
    EXPECT_FALSE(plug.SaveProgramAsText(Path("no/such/folder.txt")));
    EXPECT_FALSE(plug.SaveProgramAsText(folder.string()));
    Write(Path("old.txt"), "old");
    ASSERT_TRUE(plug.SaveProgramAsText(Path("old.txt")));
    EXPECT_TRUE(Content(Path("old.txt")).starts_with("Name = "));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
}

TEST_F(ThudForgePrograms, EveryTruncatedFileLoadsItsWholeLines) {
    ThudForge plug(nullptr);
    ASSERT_TRUE(plug.RestorePreset(104));
    ASSERT_TRUE(plug.SaveProgramAsText(Path("whole.txt")));
    const std::string text = Content(Path("whole.txt"));
    const std::size_t curveEnd = text.find(";\nOscWaveData") + 1;
    const CurvePoints curve = plug.AudioStage().GetDistortion().Points();
    const std::size_t step = kSlowBuild ? 997 : 41;
    for (std::size_t length = 0; length < text.size(); length += step) {
        Write(Path("cut.txt"), text.substr(0, length));
        ASSERT_TRUE(plug.RestorePreset(36));
        const CurvePoints before = plug.AudioStage().GetDistortion().Points();
        ASSERT_TRUE(plug.LoadProgramFromText(Path("cut.txt")));
        SynthProgram expected;
        std::string curveText;
        ReadTextProgram(text.substr(0, length), expected, curveText);
        for (const int id : {3, 24, 65, 112, 131})
            ASSERT_EQ(plug.GetParameterValue(id), expected.GetValue(id)) << length << " " << id;
        ASSERT_EQ(!curveText.empty(), length >= curveEnd) << length;
        if (length >= curveEnd) {
            ASSERT_NEAR(plug.AudioStage().GetDistortion().Points()[77], curve[77], 1e-10);
        }
        // Without it the curve is the one that the loaded type had last.
        if (length < curveEnd && plug.AudioStage().GetDistortion().CurveNumber() == 7) {
            ASSERT_EQ(plug.AudioStage().GetDistortion().Points(), before);
        }
    }
}

TEST_F(ThudForgePrograms, MutatedFilesNeverUpsetTheInstrument) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    ASSERT_TRUE(plug.SaveProgramAsText(Path("whole.txt")));
    std::string text = Content(Path("whole.txt"));
    text.resize(text.find("OscWaveData"));
    std::mt19937 random(17);
    const int files = kSlowBuild ? 40 : 400;
    for (int i = 0; i < files; ++i) {
        std::string mutated = text;
        for (int k = 0; k < 20; ++k) {
            const std::size_t at = random() % mutated.size();
            mutated[at] = "0123456789.,;=\n-einfa\0"[random() % 22];
            if (k % 5 == 0) mutated.erase(random() % (mutated.size() / 2), random() % 30);
        }
        Write(Path("m.txt"), mutated);
        ASSERT_TRUE(plug.LoadProgramFromText(Path("m.txt")));
        for (int id = 0; id < kParameters; ++id) {
            ASSERT_TRUE(std::isfinite(plug.GetParameterValue(id))) << i << " " << id;
            ASSERT_LE(plug.GetParameterValue(id), 1.26);
        }
        instrument.NoteOn(40 + i % 40);
        const Instrument::Audio audio = instrument.Render(128);
        instrument.NoteOff(40 + i % 40);
        ASSERT_LE(audio.Peak(), 3.1622777);
    }
}

TEST_F(ThudForgePrograms, HostsLoadAndSaveByTheInstrumentsOwnRequests) {
    Instrument instrument;
    AEffect* effect = instrument.Effect();
    const auto ask = [effect](std::int32_t index, std::string path) {
        return effect->dispatcher(effect, PlugOp::VendorSpecific, index, 0, path.data(), 0.0F);
    };
    instrument.Set(Param::Gate, 0.375);
    EXPECT_EQ(ask(OwnOp::SaveProgramFile, Path("p.txt")), 1);
    EXPECT_EQ(ask(OwnOp::SaveProgramFile, Path("p.fxp")), 1);
    for (const char* name : {"p.txt", "p.fxp"}) {
        instrument.Set(Param::Gate, 0.0);
        EXPECT_EQ(ask(OwnOp::LoadProgramFile, Path(name)), 1);
        EXPECT_EQ(instrument.Get(Param::Gate), 0.375);
    }
    EXPECT_EQ(ask(OwnOp::LoadProgramFile, Path("none.txt")), 0);
    EXPECT_EQ(ask(OwnOp::SaveProgramFile, Path("no/folder.txt")), 0);
    EXPECT_EQ(ask(OwnOp::SaveProgramFile, ""), 0);
    EXPECT_EQ(ask(12345, Path("p.txt")), 0);
    EXPECT_EQ(effect->dispatcher(effect, PlugOp::VendorSpecific, OwnOp::LoadProgramFile, 0, nullptr, 0.0F),
              0);
    EXPECT_EQ(effect->dispatcher(effect, PlugOp::VendorSpecific, OwnOp::SaveProgramFile, 0, nullptr, 0.0F),
              0);
}

TEST_F(ThudForgePrograms, AProgramGoesThroughBothFormsUnchanged) {
    ThudForge plug(nullptr);
    for (const int program : {5, 36, 72, 104, 126}) {
        ASSERT_TRUE(plug.RestorePreset(program));
        ASSERT_TRUE(plug.SaveProgram(Path("p.fxp")));
        const ByteChunk before = StateOf(plug);
        ASSERT_TRUE(plug.RestorePreset(0));
        ASSERT_TRUE(plug.LoadProgram(Path("p.fxp")));
        EXPECT_TRUE(Same(StateOf(plug), before));
    }
}

} // namespace
} // namespace Grimworks
