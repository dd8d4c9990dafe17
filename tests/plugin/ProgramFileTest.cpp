#include "plugin/IPlugBase.h"

#include "core/FileBytes.h"
#include "tests/plugin/TestPlug.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <limits>
#include <random>

namespace Grimworks {
namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;

std::uint32_t BigAt(const Bytes& b, std::size_t at) {
    return static_cast<std::uint32_t>(b[at]) << 24U | static_cast<std::uint32_t>(b[at + 1]) << 16U |
           static_cast<std::uint32_t>(b[at + 2]) << 8U | static_cast<std::uint32_t>(b[at + 3]);
}

void SetBig(Bytes& b, std::size_t at, std::uint32_t number) {
    for (std::size_t i = 0; i < 4; ++i)
        b[at + i] = static_cast<std::uint8_t>(number >> (24U - 8U * i));
}

std::string TextAt(const Bytes& b, std::size_t at, std::size_t length) {
    return {reinterpret_cast<const char*>(b.data()) + at, length};
}

Bytes FileOf(TestPlug& plug) {
    ByteChunk file;
    plug.MakeProgramFile(file);
    return {file.Bytes().begin(), file.Bytes().end()};
}

bool Take(TestPlug& plug, const Bytes& bytes) {
    ByteChunk file;
    file.Assign(bytes);
    return plug.TakeProgramFile(file);
}

void Scramble(TestPlug& plug, unsigned seed) {
    std::mt19937 random(seed);
    for (int id = 0; id < plug.ParameterCount(); ++id)
        plug.SetParameterFromHost(id, static_cast<double>(random() % 4097U) / 4096.0);
    for (double& x : plug.payload)
        x = static_cast<double>(random()) / 4294967296.0;
    plug.changes.clear();
}

/// A program file of the other form, written here from its layout.
Bytes ParameterFile(const std::vector<float>& values, std::uint32_t count = 159) {
    Bytes b(56 + 4 * values.size());
    SetBig(b, 0, 0x43636E4B);
    SetBig(b, 8, 0x4678436B);
    SetBig(b, 12, 1);
    SetBig(b, 16, 0x6172746F);
    SetBig(b, 20, 10803);
    SetBig(b, 24, count);
    std::memcpy(&b[28], "From afar", 9);
    for (std::size_t i = 0; i < values.size(); ++i) {
        std::uint32_t bits = 0;
        std::memcpy(&bits, &values[i], 4);
        SetBig(b, 56 + 4 * i, bits);
    }
    return b;
}

TEST(ProgramFile, StandsFieldByField) {
    PlugAndHost both;
    both.plug.FillUnusedPresets("A Kick");
    Scramble(both.plug, 1);
    const Bytes b = FileOf(both.plug);
    ASSERT_EQ(b.size(), 5440U);
    EXPECT_EQ(TextAt(b, 0, 4), "CcnK");
    EXPECT_EQ(BigAt(b, 4), 5440U);
    EXPECT_EQ(TextAt(b, 8, 4), "FPCh");
    EXPECT_EQ(BigAt(b, 12), 1U);
    EXPECT_EQ(TextAt(b, 16, 4), "arto");
    EXPECT_EQ(BigAt(b, 20), 10803U);
    EXPECT_EQ(BigAt(b, 24), 159U);
    EXPECT_EQ(TextAt(b, 28, 28), std::string("A Kick") + std::string(22, '\0'));
    EXPECT_EQ(BigAt(b, 56), 5380U);
    EXPECT_EQ(TextAt(b, 60, 4), "tffp");
    EXPECT_EQ(TextAt(b, 64, 4), std::string("\0\0\1\0", 4)) << "little-endian inside the chunk";
    ByteChunk state;
    both.plug.SerializeState(state);
    EXPECT_EQ(std::memcmp(&b[68], state.Data(), 5372), 0);
}

TEST(ProgramFile, NamesAreCutTo27Characters) {
    PlugAndHost both;
    both.plug.FillUnusedPresets(std::string(40, 'n'));
    const Bytes b = FileOf(both.plug);
    EXPECT_EQ(TextAt(b, 28, 28), std::string(27, 'n') + std::string(1, '\0'));
}

TEST(ProgramFile, AChunkFileBringsStateAndNameIntoTheCurrentPreset) {
    PlugAndHost a;
    a.plug.FillUnusedPresets("Sent");
    Scramble(a.plug, 2);
    const Bytes file = FileOf(a.plug);
    PlugAndHost b;
    b.plug.FillUnusedPresets("Empty");
    b.plug.RestorePreset(9);
    EXPECT_TRUE(Take(b.plug, file));
    EXPECT_EQ(b.Chunk(false), a.Chunk(false));
    EXPECT_EQ(b.plug.PresetName(9), "Sent");
    EXPECT_EQ(b.plug.PresetName(8), "Empty");
    ByteChunk state;
    a.plug.SerializeState(state);
    EXPECT_TRUE(b.plug.GetPreset(9)->chunk == state);
}

TEST(ProgramFile, ANameOf28CharactersIsReadWhole) {
    PlugAndHost both;
    both.plug.FillUnusedPresets("Empty");
    Bytes file = FileOf(both.plug);
    std::memset(&file[28], 'q', 28);
    EXPECT_TRUE(Take(both.plug, file));
    EXPECT_EQ(both.plug.PresetName(0), std::string(28, 'q'));
}

TEST(ProgramFile, AnEmptyNameKeepsThePresetsName) {
    PlugAndHost both;
    both.plug.FillUnusedPresets("Empty");
    Bytes file = FileOf(both.plug);
    std::memset(&file[28], 0, 28);
    EXPECT_TRUE(Take(both.plug, file));
    EXPECT_EQ(both.plug.PresetName(0), "Empty");
}

TEST(ProgramFile, ForeignFilesAreRefusedAndChangeNothing) {
    PlugAndHost a;
    Scramble(a.plug, 3);
    const Bytes good = FileOf(a.plug);
    const Bytes goodParameters = ParameterFile(std::vector<float>(159, 0.25F));
    PlugAndHost b;
    b.plug.FillUnusedPresets("Empty");
    const Bytes before = b.Chunk(true);
    for (const Bytes& file : {good, goodParameters}) {
        for (const std::size_t field : {0U, 8U, 12U, 16U, 24U}) {
            Bytes foreign = file;
            foreign[field + 3] = static_cast<std::uint8_t>(foreign[field + 3] - 1);
            EXPECT_FALSE(Take(b.plug, foreign)) << field;
        }
        Bytes littleEndian = file;
        std::swap(littleEndian[12], littleEndian[15]);
        EXPECT_FALSE(Take(b.plug, littleEndian));
    }
    EXPECT_TRUE(b.plug.changes.empty());
    EXPECT_EQ(b.Chunk(true), before);
    EXPECT_TRUE(Take(b.plug, good));
    EXPECT_TRUE(Take(b.plug, goodParameters));
}

TEST(ProgramFile, ACountOf158IsRefusedInBothForms) {
    PlugAndHost both;
    Bytes chunkFile = FileOf(both.plug);
    SetBig(chunkFile, 24, 158);
    EXPECT_FALSE(Take(both.plug, chunkFile));
    EXPECT_FALSE(Take(both.plug, ParameterFile(std::vector<float>(159, 0.5F), 158)));
}

TEST(ProgramFile, SizePlugInVersionAndChunkLengthAreNotLookedAt) {
    PlugAndHost a;
    Scramble(a.plug, 4);
    Bytes file = FileOf(a.plug);
    SetBig(file, 4, 0xFFFFFFFF);
    SetBig(file, 20, 1);
    SetBig(file, 56, 7);
    PlugAndHost b;
    EXPECT_TRUE(Take(b.plug, file));
    EXPECT_EQ(b.Chunk(false), a.Chunk(false));
}

TEST(ProgramFile, AChunkWithoutTheFrameworkHeaderLoads) {
    PlugAndHost a;
    Scramble(a.plug, 5);
    Bytes file = FileOf(a.plug);
    file.erase(file.begin() + 60, file.begin() + 68);
    ASSERT_EQ(file[60], 671 % 256);
    PlugAndHost b;
    EXPECT_TRUE(Take(b.plug, file));
    EXPECT_EQ(b.Chunk(false), a.Chunk(false));
}

TEST(ProgramFile, EveryTruncationOfAChunkFileIsRefusedOrLoadsAsFarAsItGoes) {
    PlugAndHost a;
    Scramble(a.plug, 6);
    const Bytes file = FileOf(a.plug);
    PlugAndHost b;
    b.plug.keepsRecords = false;
    b.plug.FillUnusedPresets("Empty");
    for (std::size_t length = 0; length <= file.size(); ++length) {
        Scramble(b.plug, 7);
        const double old = b.plug.GetParameterValue(158);
        const Bytes cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length));
        const bool complete = length >= 60;
        ASSERT_EQ(Take(b.plug, cut), complete) << length;
        const std::size_t read = length < 68 + 4100 ? 0 : (length - 68 - 4100) / 8;
        if (read > 0) {
            ASSERT_EQ(b.plug.GetParameterValue(0), a.plug.GetParameterValue(0));
        }
        ASSERT_EQ(b.plug.GetParameterValue(158), read == 159 ? a.plug.GetParameterValue(158) : old);
    }
}

TEST(ProgramFile, AParameterFileSetsNormalisedValues) {
    std::vector<float> values(159);
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = static_cast<float>(i) / 256.0F;
    values[3] = 2.5F;
    values[4] = std::numeric_limits<float>::quiet_NaN();
    PlugAndHost both;
    both.plug.FillUnusedPresets("Empty");
    const double four = both.plug.GetParameterValue(4);
    EXPECT_TRUE(Take(both.plug, ParameterFile(values)));
    EXPECT_EQ(both.plug.GetParameterValue(0), 0.0);
    EXPECT_EQ(both.plug.GetParameterValue(3), 1.0);
    EXPECT_EQ(both.plug.GetParameterValue(4), four);
    EXPECT_EQ(both.plug.GetParameterValue(80), 80.0 / 256.0 * 1.259);
    EXPECT_EQ(both.plug.GetParameterValue(158), 158.0 / 256.0);
    EXPECT_EQ(both.plug.PresetName(0), "From afar");
    EXPECT_EQ(both.plug.changes.size(), 159U) << "each goes through the engine once";
}

TEST(ProgramFile, MissingValuesRepeatTheLastOneAndNoneAtAllChangesNothing) {
    PlugAndHost both;
    both.plug.FillUnusedPresets("Empty");
    Scramble(both.plug, 8);
    const Bytes before = both.Chunk(false);
    EXPECT_TRUE(Take(both.plug, ParameterFile({})));
    EXPECT_EQ(both.Chunk(false), before);
    EXPECT_EQ(both.plug.PresetName(0), "From afar");

    Bytes file = ParameterFile({0.25F, 0.75F});
    file.push_back(0xFF); // the rest of a value
    EXPECT_TRUE(Take(both.plug, file));
    EXPECT_EQ(both.plug.GetParameterValue(0), 0.25);
    EXPECT_EQ(both.plug.GetParameterValue(1), 0.75);
    EXPECT_EQ(both.plug.GetParameterValue(158), 0.75);
}

TEST(ProgramFile, APlugInWithoutChunksWritesTheParameterForm) {
    PlugIdentity identity;
    identity.stateChunks = false;
    PlugAndHost a(identity);
    a.plug.FillUnusedPresets("Plain");
    Scramble(a.plug, 9);
    a.plug.SetParameterFromHost(0, 0.5);
    const Bytes b = FileOf(a.plug);
    ASSERT_EQ(b.size(), 56U + 4U * 159U);
    EXPECT_EQ(BigAt(b, 4), 0U);
    EXPECT_EQ(TextAt(b, 8, 4), "FxCk");
    EXPECT_EQ(BigAt(b, 24), 159U);
    EXPECT_EQ(BigAt(b, 56), 0x3F000000U) << "0.5 as a big-endian float";
    PlugAndHost back(identity);
    EXPECT_TRUE(Take(back.plug, b));
    for (int id = 0; id < 159; ++id)
        EXPECT_NEAR(back.plug.GetParameterValue(id), a.plug.GetParameterValue(id), 1e-6);
    PlugAndHost chunks;
    EXPECT_FALSE(Take(a.plug, FileOf(chunks.plug))) << "it has no chunk form";
}

TEST(ProgramFile, MutatedFilesNeverHarm) {
    PlugIdentity small;
    small.parameters = 6;
    small.programs = 2;
    PlugAndHost both(small);
    both.plug.keepsRecords = false;
    both.plug.FillUnusedPresets("Empty");
    Bytes forms[2] = {FileOf(both.plug), ParameterFile(std::vector<float>(6, 0.5F), 6)};
    std::mt19937 random(123);
    int taken = 0;
    for (int round = 0; round < 20000; ++round) {
        Bytes file = forms[round % 2];
        file[random() % file.size()] = static_cast<std::uint8_t>(random());
        file[random() % 80] = static_cast<std::uint8_t>(random());
        if (round % 3 == 0) file.resize(random() % (file.size() + 1));
        taken += Take(both.plug, file) ? 1 : 0;
        for (int id = 0; id < 6; ++id)
            ASSERT_LE(both.plug.GetParameterValue(id), 1.0);
    }
    EXPECT_GT(taken, 1000) << "some mutations hit fields that may be anything";
    EXPECT_LT(taken, 19000);
}

TEST(ProgramFile, ThePathIsRecognisedByItsText) {
    EXPECT_TRUE(IPlugBase::IsProgramFilePath("a.fxp"));
    EXPECT_TRUE(IPlugBase::IsProgramFilePath("/home/x/a.fxp.txt"));
    EXPECT_TRUE(IPlugBase::IsProgramFilePath(".fxp"));
    EXPECT_FALSE(IPlugBase::IsProgramFilePath("a.FXP"));
    EXPECT_FALSE(IPlugBase::IsProgramFilePath("fxp"));
    EXPECT_FALSE(IPlugBase::IsProgramFilePath(""));
    EXPECT_FALSE(IPlugBase::IsProgramFilePath("a.gw"));
}

class ProgramFileOnDisk : public ::testing::Test {
protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        folder = fs::path(::testing::TempDir()) / (std::string("thudforge-fxp-") + info->name());
        fs::remove_all(folder);
        fs::create_directories(folder);
    }
    void TearDown() override { fs::remove_all(folder); }

    fs::path folder;
};

TEST_F(ProgramFileOnDisk, SavesAndLoadsAndTellsTheHost) {
    const std::string path = (folder / "mine.fxp").string();
    PlugAndHost a;
    a.plug.FillUnusedPresets("Mine");
    Scramble(a.plug, 10);
    ASSERT_TRUE(a.plug.SaveProgramAsFXP(path));
    EXPECT_EQ(fs::file_size(path), 5440U);
    PlugAndHost b;
    b.plug.FillUnusedPresets("Empty");
    ASSERT_TRUE(b.plug.LoadProgramFromFXP(path));
    EXPECT_EQ(b.Chunk(false), a.Chunk(false));
    EXPECT_EQ(b.plug.PresetName(0), "Mine");
    EXPECT_EQ(b.host.Count(HostOp::UpdateDisplay), 1);
}

TEST_F(ProgramFileOnDisk, AFailedSaveLeavesTheOldFileWhole) {
    PlugAndHost both;
    EXPECT_FALSE(both.plug.SaveProgramAsFXP(""));
    EXPECT_FALSE(both.plug.SaveProgramAsFXP((folder / "no" / "folder.fxp").string()));
    fs::create_directory(folder / "taken.fxp");
    EXPECT_FALSE(both.plug.SaveProgramAsFXP((folder / "taken.fxp").string()));
    EXPECT_TRUE(fs::is_directory(folder / "taken.fxp"));
}

TEST_F(ProgramFileOnDisk, ABadFileIsRefusedSilently) {
    PlugAndHost both;
    const Bytes before = both.Chunk(false);
    EXPECT_FALSE(both.plug.LoadProgramFromFXP((folder / "none.fxp").string()));
    EXPECT_FALSE(both.plug.LoadProgramFromFXP(folder.string()));
    const std::string path = (folder / "text.fxp").string();
    ASSERT_TRUE(WriteFileBytes(path, Bytes(5440, 'x')));
    EXPECT_FALSE(both.plug.LoadProgramFromFXP(path));
    EXPECT_EQ(both.Chunk(false), before);
    EXPECT_EQ(both.host.Count(HostOp::UpdateDisplay), 0);
}

} // namespace
} // namespace Grimworks
