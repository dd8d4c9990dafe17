#include "patches/TextProgram.h"

#include "core/FileBytes.h"
#include "core/ParameterIds.h"
#include "core/ParameterTable.h"
#include "tests/support/SlowBuild.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <sstream>

namespace Grimworks {
namespace {

std::string Formatted(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

SynthProgram Read(const std::string& text, std::string* curve = nullptr) {
    SynthProgram program;
    std::string curveText;
    ReadTextProgram(text, program, curveText);
    if (curve != nullptr) *curve = curveText;
    return program;
}

/// A program in which every parameter has a value of its own.
SynthProgram Scrambled(unsigned seed) {
    std::mt19937 random(seed);
    SynthProgram program;
    for (int id = 0; id < kLiveParameters; ++id)
        program.values[id] = static_cast<double>(random() % 1001U) / 1000.0;
    program.name = "A name";
    return program;
}

bool IsChoice(int id) {
    return id == 1 || id == 22 || id == 43 || id == 102 || id == 118 || id == 119;
}

TEST(TextProgram, HasALineForTheNameEachParameterTheCurveAndTheWave) {
    SynthProgram program = Scrambled(1);
    program.values[Param::BassLayerAmount] = 1.259;
    const std::vector<std::string> lines = LinesOf(WriteTextProgram(program, "1,2,3", "4,5"));
    ASSERT_EQ(lines.size(), 1U + 159U + 2U);
    EXPECT_EQ(lines[0], "Name = A name;");
    for (int id = 0; id < 159; ++id) {
        if (IsChoice(id)) continue;
        EXPECT_EQ(lines[static_cast<std::size_t>(id) + 1],
                  ParameterKey(id) + " = " + Formatted(program.GetValue(id)) + ";");
    }
    EXPECT_EQ(lines[1 + 80], "BassLayerAmount = 1.259;");
    EXPECT_EQ(lines[1 + 140], "Reserved_00 = 0;");
    EXPECT_EQ(lines[1 + 158], "Reserved_18 = 0;");
    EXPECT_EQ(lines[160], "DistortionCurveData = 1,2,3;");
    EXPECT_EQ(lines[161], "OscWaveData = 4,5;");
    EXPECT_TRUE(WriteTextProgram(program, "", "").ends_with(";\n"));
}

TEST(TextProgram, WritesChoicesByName) {
    SynthProgram program;
    program.values[1] = 0.125;
    program.values[22] = 0.0;
    program.values[43] = 1.0;
    program.values[102] = 0.487805;
    program.values[118] = 2.0 / 3.0;
    program.values[119] = 0.8;
    const std::vector<std::string> lines = LinesOf(WriteTextProgram(program, "", ""));
    EXPECT_EQ(lines[1 + 1], "OscWaveform1 = Triangle;");
    EXPECT_EQ(lines[1 + 22], "OscWaveform2 = Sine;");
    EXPECT_EQ(lines[1 + 43], "OscWaveform3 = User16;");
    EXPECT_EQ(lines[1 + 102], "DistortionType = Hardcore-Fuzz1;");
    EXPECT_EQ(lines[1 + 118], "FilterMode1 = RBJ BandPass 1;");
    EXPECT_EQ(lines[1 + 119], "FilterMode2 = Butterworth BandPass 12dB;");
}

TEST(TextProgram, AChoiceBeyondItsTableHasAnEmptyNameOrTheNearestCurve) {
    SynthProgram program;
    program.values[102] = 7.0;
    program.values[118] = 1.5;
    program.values[119] = -1.0;
    const std::vector<std::string> lines = LinesOf(WriteTextProgram(program, "", ""));
    EXPECT_EQ(lines[1 + 102], "DistortionType = More in PRO version;");
    EXPECT_EQ(lines[1 + 118], "FilterMode1 = ;");
    EXPECT_EQ(lines[1 + 119], "FilterMode2 = ;");
}

TEST(TextProgram, ComesBackAsItWas) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        const SynthProgram program = Scrambled(seed);
        std::string curve;
        const SynthProgram back = Read(WriteTextProgram(program, "0.5,-0.5", "0"), &curve);
        EXPECT_EQ(back.name, "A name");
        EXPECT_EQ(curve, "0.5,-0.5");
        for (int id = 0; id < kLiveParameters; ++id) {
            if (IsChoice(id) || id == 133 || id == 137 || id == 138) continue;
            EXPECT_EQ(back.GetValue(id), program.GetValue(id)) << id;
        }
    }
}

TEST(TextProgram, EveryChoiceComesBackByNameButForTheTwoThatDoNot) {
    for (int wave = 0; wave <= 40; ++wave) {
        SynthProgram program;
        program.values[43] = wave / 40.0;
        const int expected = wave == 9 ? 0 : wave == 16 ? 15 : wave;
        EXPECT_DOUBLE_EQ(Read(WriteTextProgram(program, "", "")).GetValue(43), expected / 40.0) << wave;
    }
    for (int curve = 0; curve <= 41; ++curve) {
        SynthProgram program;
        program.values[102] = curve / 41.0;
        EXPECT_DOUBLE_EQ(Read(WriteTextProgram(program, "", "")).GetValue(102), curve / 41.0) << curve;
    }
    for (int filter = 0; filter <= 5; ++filter) {
        SynthProgram program;
        program.values[118] = std::min(filter, 3) / 3.0;
        program.values[119] = filter / 5.0;
        const SynthProgram back = Read(WriteTextProgram(program, "", ""));
        EXPECT_DOUBLE_EQ(back.GetValue(118), std::min(filter, 3) / 3.0);
        EXPECT_DOUBLE_EQ(back.GetValue(119), filter / 5.0);
    }
}

TEST(TextProgram, OldNamesAndUnknownNamesOfChoicesAreRead) {
    const auto value = [](const std::string& line, int id) {
        return Read("Name = x;\n" + line).GetValue(id);
    };
    EXPECT_DOUBLE_EQ(value("FilterMode1 = RBJ-BP;", 118), 2.0 / 3.0);
    EXPECT_DOUBLE_EQ(value("FilterMode1 = RBJ-BP1;", 118), 2.0 / 3.0);
    EXPECT_DOUBLE_EQ(value("FilterMode1 = RBJ-HP;", 118), 1.0 / 3.0);
    EXPECT_DOUBLE_EQ(value("FilterMode1 = RBJ-BS;", 118), 1.0);
    EXPECT_DOUBLE_EQ(value("FilterMode1 = rbj-bs;", 118), 0.0);
    EXPECT_DOUBLE_EQ(value("FilterMode2 = HP 24dB;", 119), 0.2);
    EXPECT_DOUBLE_EQ(value("FilterMode2 = LP 12dB;", 119), 0.4);
    EXPECT_DOUBLE_EQ(value("FilterMode2 = LP 24dB;", 119), 0.6);
    EXPECT_DOUBLE_EQ(value("FilterMode2 = BP 12dB;", 119), 0.8);
    EXPECT_DOUBLE_EQ(value("FilterMode2 = BS 12dB;", 119), 1.0);
    EXPECT_DOUBLE_EQ(value("FilterMode2 = CH-HP24;", 119), 0.0);
    EXPECT_DOUBLE_EQ(value("DistortionType = Fuzz-Drive;", 102), 19.0 / 41.0);
    EXPECT_DOUBLE_EQ(value("DistortionType = 0.5;", 102), 0.0);
    EXPECT_DOUBLE_EQ(value("OscWaveform2 = LQ Noize 2;", 22), 12.0 / 40.0);
    EXPECT_DOUBLE_EQ(value("OscWaveform2 = Wavescape;", 22), 14.0 / 40.0);
    EXPECT_DOUBLE_EQ(value("OscWaveform2 = 0.125;", 22), 0.0);
}

TEST(TextProgram, AFirstLineWithoutAnEqualsSignLeavesTheNameAndIsNoParameter) {
    const SynthProgram program = Read("Pan 0.25;\nGate = 0.5;\n");
    EXPECT_EQ(program.name, "Basic Bass Drum");
    EXPECT_EQ(program.GetValue(Param::Pan), 0.5);
    EXPECT_EQ(program.GetValue(Param::Gate), 0.5);
}

TEST(TextProgram, TheFirstLineIsTheNameWhateverItsKey) {
    const SynthProgram program = Read("Pan = 0.25;\nPan = 0.75;");
    EXPECT_EQ(program.name, "0.25");
    EXPECT_EQ(program.GetValue(Param::Pan), 0.75);
    EXPECT_EQ(Read("DistortionCurveData = abc;\n").name, "abc");
}

TEST(TextProgram, ALongNameIsCutTo32Characters) {
    const std::string longName(100, 'n');
    EXPECT_EQ(Read("Name = " + longName + ";\n").name, std::string(32, 'n'));
    EXPECT_EQ(Read("Name = " + longName.substr(0, 32) + ";\n").name, std::string(32, 'n'));
}

TEST(TextProgram, ASemicolonInANameCutsIt) {
    SynthProgram program;
    program.name = "one;two";
    EXPECT_EQ(Read(WriteTextProgram(program, "", "")).name, "one");
}

TEST(TextProgram, AnEmptyNameReadsAsTheDefaultName) {
    SynthProgram program;
    program.name = "";
    EXPECT_EQ(Read(WriteTextProgram(program, "", "")).name, "Basic Bass Drum");
}

TEST(TextProgram, LinesOfAnotherFormAreSkippedButCounted) {
    // The skipped first line still was the first: the second one is a parameter, not the name.
    EXPECT_EQ(Read("\nGate = 0.5;\n").GetValue(Param::Gate), 0.5);
    EXPECT_EQ(Read("\nGate = 0.5;\n").name, "Basic Bass Drum");
    const std::string head = "Name = x;\n";
    const double plain = SynthProgram().GetValue(Param::Gate);
    for (const char* line : {"Gate = 0.5", "Gate 0.5;", "Gate =;", "Gate = ;", "Gate =0;", "Gate= 0.5;",
                             "G = 1;", ";Gate = 0.5;", "gate = 0.5;", " Gate = 0.5;", "Gate  = 0.5;"}) {
        EXPECT_EQ(Read(head + line + "\n").GetValue(Param::Gate), plain) << line;
    }
    // Only the places of the two signs count, not the blanks beside them.
    EXPECT_EQ(Read(head + "Gate_=_0.5;").GetValue(Param::Gate), 0.5);
    EXPECT_EQ(Read(head + "Gate = 0.5; more").GetValue(Param::Gate), 0.5);
    EXPECT_EQ(Read(head + "Gate = 0.5;\r\n").GetValue(Param::Gate), 0.5);
}

TEST(TextProgram, NumbersAreReadAsFarAsTheyGo) {
    const auto gate = [](const std::string& text) {
        return Read("Name = x;\nGate = " + text + ";").GetValue(Param::Gate);
    };
    EXPECT_EQ(gate("0.5abc"), 0.5);
    EXPECT_EQ(gate("  0.25"), 0.25);
    EXPECT_EQ(gate("nonsense"), 0.0);
    EXPECT_EQ(gate("1e-1"), 0.1);
    EXPECT_EQ(gate("-2"), 0.0);
    EXPECT_EQ(gate("17"), 1.0);
    EXPECT_EQ(gate("inf"), 1.0);
    EXPECT_EQ(gate("0,5"), 0.0);
    EXPECT_EQ(gate("nan"), SynthProgram().GetValue(Param::Gate));
}

TEST(TextProgram, LimiterAndVolumeLinesChangeNothing) {
    const SynthProgram program = Read("Name = x;\nLimiterMode = 0;\nVolume = 0.1;\nLimiterLevel = 0.1;\n");
    EXPECT_EQ(program.GetValue(133), 1.0);
    EXPECT_EQ(program.GetValue(137), 0.705);
    EXPECT_EQ(program.GetValue(138), 0.79);
}

TEST(TextProgram, TheCurveLineCountsFromTheSecondLineOnAndMayStandAnywhereInIt) {
    std::string curve = "untouched";
    SynthProgram program;
    ReadTextProgram("Name = x;\nGate = 0.5;\n", program, curve);
    EXPECT_EQ(curve, "untouched");
    ReadTextProgram("Name = x;\nMy DistortionCurveData here = 1,2;\n", program, curve);
    EXPECT_EQ(curve, "1,2");
    ReadTextProgram("Name = x;\nDistortionCurveData = ;\nDistortionCurveData 1;\n", program, curve);
    EXPECT_EQ(curve, "1,2");
    // Even the shortest line with the word in its value.
    ReadTextProgram("Name = x;\nA = DistortionCurveData;\n", program, curve);
    EXPECT_EQ(curve, "DistortionCurveData");
}

TEST(TextProgram, AValueMayBeAsLongAsTheFile) {
    const std::string numbers(1U << 20U, '7');
    std::string curve;
    const SynthProgram program =
        Read("Name = x;\nDistortionCurveData = " + numbers + ";\nGate = 0.5;\n", &curve);
    EXPECT_EQ(curve, numbers);
    EXPECT_EQ(program.GetValue(Param::Gate), 0.5);
}

/// The record that the first `length` bytes of a written file hold: what stands behind the last semicolon is
/// not read.
void ExpectPrefix(const std::string& text, std::size_t length, const SynthProgram& whole) {
    std::string curve;
    const SynthProgram read = Read(text.substr(0, length), &curve);
    const SynthProgram plain;
    std::size_t lineStart = 0;
    for (int line = 0; line < 161; ++line) {
        const std::size_t end = text.find(';', lineStart);
        const bool complete = end < length;
        if (line == 0) {
            ASSERT_EQ(read.name, complete ? "A name" : plain.name) << length;
        } else if (line <= 159) {
            const SynthProgram& expected = complete ? whole : plain;
            ASSERT_EQ(read.GetValue(line - 1), expected.GetValue(line - 1)) << length << " " << line;
        } else {
            ASSERT_EQ(curve, complete ? "0.1,0.2" : "") << length;
        }
        lineStart = end + 2;
    }
}

TEST(TextProgram, EveryTruncatedFileGivesTheLinesThatAreWhole) {
    const std::string text = WriteTextProgram(Scrambled(7), "0.1,0.2", "0.5,0.25");
    const SynthProgram whole = Read(text);
    for (std::size_t length = 0; length <= text.size(); ++length)
        ExpectPrefix(text, length, whole);
}

TEST(TextProgram, MutatedFilesNeverGiveValuesOutsideTheirRange) {
    const std::string text = WriteTextProgram(Scrambled(3), "0.1,0.2,0.3", "0.5");
    std::mt19937 random(11);
    constexpr int kFiles = kSlowBuild ? 20000 : 100000;
    for (int i = 0; i < kFiles; ++i) {
        std::string mutated = text;
        const int changes = 1 + static_cast<int>(random() % 12);
        for (int k = 0; k < changes; ++k) {
            const std::size_t at = random() % mutated.size();
            switch (random() % 4) {
            case 0:
                mutated[at] = static_cast<char>(random() % 256U);
                break;
            case 1:
                mutated.erase(at, random() % 40);
                break;
            case 2:
                mutated.insert(at, 1 + random() % 3, "=;\n \0,e-"[random() % 8]);
                break;
            default:
                mutated.insert(at, mutated.substr(random() % mutated.size(), random() % 60));
                break;
            }
            if (mutated.empty()) mutated = "x";
        }
        const SynthProgram read = Read(mutated);
        ASSERT_LE(read.name.size(), 32U);
        for (int id = 0; id < kLiveParameters; ++id) {
            ASSERT_GE(read.GetValue(id), 0.0) << i << " " << id;
            ASSERT_LE(read.GetValue(id), 1.0) << i << " " << id;
        }
    }
}

TEST(TextProgram, AFileThatCannotBeReadChangesNothing) {
    SynthProgram program = Scrambled(2);
    const ValueBlock before = program.values;
    std::string curve = "untouched";
    EXPECT_FALSE(LoadFromTextFile("", program, curve));
    EXPECT_FALSE(LoadFromTextFile("/no/such/folder/file.txt", program, curve));
    EXPECT_FALSE(LoadFromTextFile(testing::TempDir(), program, curve));
    EXPECT_EQ(program.values, before);
    EXPECT_EQ(program.name, "A name");
    EXPECT_EQ(curve, "untouched");
}

TEST(TextProgram, AnEmptyFileIsAFileOfNoLines) {
    const std::string path = testing::TempDir() + "thudforge-empty-program.txt";
    ASSERT_TRUE(WriteFileBytes(path, {}));
    SynthProgram program;
    std::string curve;
    EXPECT_TRUE(LoadFromTextFile(path, program, curve));
    EXPECT_EQ(program.values, SynthProgram().values);
    EXPECT_EQ(program.name, "Basic Bass Drum");
    std::filesystem::remove(path);
}

} // namespace
} // namespace Grimworks
