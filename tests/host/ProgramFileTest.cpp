#include "host/ProgramFile.h"

#include "host/HostError.h"
#include "tests/host/FakePlugin.h"
#include "tests/host/MidiBytes.h"

#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <string>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

struct Header {
    std::string_view magic = "CcnK";
    std::string_view form = "FPCh";
    std::uint32_t version = 1;
    std::string_view plugin = "arto";
    std::uint32_t count = 3;
};

Bytes HeaderBytes(const Header& header) {
    Bytes name = Letters("Deep Thud");
    name.resize(28, 0);
    return Letters(header.magic) + Big(0, 4) + Letters(header.form) + Big(header.version, 4) +
           Letters(header.plugin) + Big(10803, 4) + Big(header.count, 4) + name;
}

const Bytes kState{9, 8, 7, 6, 5};

Bytes ChunkFile(const Header& header = {}) {
    return HeaderBytes(header) + Big(5, 4) + kState;
}

Bytes ParameterFile(float first) {
    Header header;
    header.form = "FxCk";
    return HeaderBytes(header) + Big(std::bit_cast<std::uint32_t>(first), 4) +
           Big(std::bit_cast<std::uint32_t>(0.5F), 4) + Big(std::bit_cast<std::uint32_t>(1.0F), 4);
}

class ProgramFileTest : public testing::Test {
protected:
    std::string FaultOf(const Bytes& bytes) {
        try {
            ApplyProgramFile(host, bytes, "a.fxp");
        } catch (const HostError& fault) {
            return fault.what();
        }
        return {};
    }

    FakePlugin plugin;
    PluginHost host{FakePlugin::Entry, "fake.so", {}};
};

} // namespace

TEST_F(ProgramFileTest, AStoredStateGoesToThePluginAsItIs) {
    EXPECT_EQ(FaultOf(ChunkFile()), "");
    EXPECT_EQ(plugin.chunk, kState);
    EXPECT_EQ(plugin.programName, "Deep Thud");
}

TEST_F(ProgramFileTest, ParameterValuesAreSetOneByOne) {
    EXPECT_EQ(FaultOf(ParameterFile(0.125F)), "");
    EXPECT_EQ(plugin.parameters, (std::array<float, 3>{0.125F, 0.5F, 1.0F}));
}

TEST_F(ProgramFileTest, BytesBehindTheStateAreNotPartOfIt) {
    EXPECT_EQ(FaultOf(ChunkFile() + Bytes{1, 2, 3}), "");
    EXPECT_EQ(plugin.chunk, kState);
}

TEST_F(ProgramFileTest, AStateThatThePluginRefusesIsAFault) {
    plugin.acceptsChunk = false;
    EXPECT_EQ(FaultOf(ChunkFile()), "a.fxp: is refused by the instrument");
}

TEST_F(ProgramFileTest, ForeignFilesAreRefused) {
    EXPECT_EQ(FaultOf(ChunkFile({.magic = "RIFF"})), "a.fxp: is not a program file");
    EXPECT_EQ(FaultOf(ChunkFile({.form = "FBCh"})), "a.fxp: is not a file of one program");
    EXPECT_EQ(FaultOf(ChunkFile({.version = 2})), "a.fxp: has an unknown format version");
    EXPECT_EQ(FaultOf(ChunkFile({.plugin = "otra"})), "a.fxp: belongs to another plug-in");
    EXPECT_EQ(FaultOf(ChunkFile({.count = 2})), "a.fxp: is for another number of parameters than 3");
    EXPECT_TRUE(plugin.chunk.empty());
    EXPECT_EQ(plugin.programName, "");
}

TEST_F(ProgramFileTest, AFileCutOffAnywhereChangesNothing) {
    for (const Bytes& whole : {ChunkFile(), ParameterFile(0.875F)}) {
        for (std::size_t length = 0; length < whole.size(); ++length) {
            const std::string fault =
                FaultOf({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)});
            EXPECT_TRUE(fault.starts_with("a.fxp: ")) << length;
        }
    }
    EXPECT_TRUE(plugin.chunk.empty());
    EXPECT_EQ(plugin.parameters, (std::array<float, 3>{0.25F, 0.5F, 0.75F}));
}

TEST_F(ProgramFileTest, AValueThatIsNoNumberChangesNothing) {
    EXPECT_EQ(FaultOf(ParameterFile(std::numeric_limits<float>::quiet_NaN())),
              "a.fxp: has no number for parameter 0");
    EXPECT_EQ(plugin.parameters[0], 0.25F);
}
