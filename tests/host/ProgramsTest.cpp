#include "host/AllPrograms.h"
#include "host/Cli.h"
#include "host/Files.h"
#include "host/HostError.h"
#include "host/Module.h"
#include "host/ProgramFile.h"
#include "host/Render.h"
#include "host/Settings.h"
#include "tests/host/FakePlugin.h"
#include "tests/host/TempFolder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>

namespace Grimworks {
namespace {

using Testing::FakePlugin;
using Testing::TempFolder;

const std::string kModule = THUDFORGE_MODULE;

struct Outcome {
    int status = 0;
    std::string out;
    std::string err;
};

Outcome RunHere(const std::vector<std::string>& arguments) {
    std::ostringstream out;
    std::ostringstream err;
    Outcome outcome;
    outcome.status = RunCommandLine(arguments, out, err);
    outcome.out = out.str();
    outcome.err = err.str();
    return outcome;
}

class Programs : public testing::Test {
protected:
    [[nodiscard]] std::string Path(const std::string& name) const { return TextFromPath(folder.Path(name)); }
    [[nodiscard]] std::vector<std::uint8_t> Bytes(const std::string& name) const {
        return ReadFileBytes(folder.Path(name), 1U << 26U);
    }
    [[nodiscard]] std::string Text(const std::string& name) const {
        const std::vector<std::uint8_t> bytes = Bytes(name);
        return {bytes.begin(), bytes.end()};
    }

    void ExpectDone(std::vector<std::string> arguments) const {
        arguments.insert(arguments.end(), {"--module", kModule});
        const Outcome outcome = RunHere(arguments);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_EQ(outcome.err, "");
    }

    void ExpectFault(std::vector<std::string> arguments, const std::string& message) const {
        arguments.insert(arguments.end(), {"--module", kModule});
        const Outcome outcome = RunHere(arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_NE(outcome.err.find(message), std::string::npos) << outcome.err;
    }

    TempFolder folder{"programs"};
};

TEST_F(Programs, AreListedInTheOrderOfTheBank) {
    const Outcome outcome = RunHere({"programs", "--module", kModule});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.out.starts_with("   1  Basic Bass Drum 1\n   2  Basic Bass Drum 2 (soft)\n"))
        << outcome.out;
    EXPECT_TRUE(outcome.out.ends_with(" 128  Basic Sine wave\n")) << outcome.out;
}

TEST_F(Programs, ConvertGoesBetweenBothFormsAndBack) {
    ExpectDone({"convert", "37", Path("a.fxp")});
    EXPECT_EQ(Bytes("a.fxp").size(), 5440U);
    EXPECT_TRUE(Text("a.fxp").starts_with("CcnK"));
    ExpectDone({"convert", Path("a.fxp"), Path("a.txt")});
    EXPECT_TRUE(Text("a.txt").starts_with("Name = Frenchcore Kick;\nOsc1OnOff = 1;\n"));
    ExpectDone({"convert", Path("a.txt"), Path("b.txt")});
    EXPECT_EQ(Text("b.txt").substr(0, Text("b.txt").find("Volume = ")),
              Text("a.txt").substr(0, Text("a.txt").find("Volume = ")));
    ExpectDone({"convert", Path("a.txt"), Path("b.fxp")});
    EXPECT_EQ(Bytes("b.fxp").size(), 5440U);
    EXPECT_EQ(Text("b.fxp").substr(28, 15), "Frenchcore Kick");
    ExpectDone({"convert", Path("b.fxp"), Path("c.fxp")});
    EXPECT_EQ(Bytes("b.fxp"), Bytes("c.fxp"));
}

TEST_F(Programs, ConvertTellsWhatItCannotDo) {
    ExpectFault({"convert", Path("none.fxp"), Path("out.txt")}, "none.fxp");
    ExpectFault({"convert", "Laser Kick", Path("no/out.txt")}, "out.txt: cannot be written");
    ExpectFault({"convert", "Laser Kick"}, "out");
    static_cast<void>(folder.Write("notes.txt", {'h', 'e', 'l', 'l', 'o', '\n'}));
    ExpectFault({"convert", Path("notes.txt"), Path("out.txt")}, "notes.txt: is no program");
    static_cast<void>(folder.Write("zero.txt", {'a', ' ', '=', ' ', 0, ';'}));
    ExpectFault({"convert", Path("zero.txt"), Path("out.txt")}, "zero.txt: is no program");
    EXPECT_FALSE(std::filesystem::exists(folder.Path("out.txt")));
}

/// The samples of a file of 64-bit floats.
std::vector<double> Samples(const std::vector<std::uint8_t>& file) {
    const std::string text(file.begin(), file.end());
    const std::size_t start = text.find("data") + 8;
    std::vector<double> samples((text.size() - start) / sizeof(double));
    std::memcpy(samples.data(), text.data() + start, samples.size() * sizeof(double));
    return samples;
}

TEST_F(Programs, ANumberANameAndBothKindsOfFileSoundTheSame) {
    // This program leaves volume and limiter, which text does not carry, at their defaults.
    ExpectDone({"convert", "Gabber Kick 1", Path("p.fxp")});
    ExpectDone({"convert", "Gabber Kick 1", Path("p.txt")});
    std::vector<std::vector<double>> renders;
    for (const std::string& program :
         {std::string("50"), std::string("gabber kick 1"), Path("p.fxp"), Path("p.txt")}) {
        ExpectDone({"note", "C4", "-o", Path("x.wav"), "--program", program, "--seconds", "0.2", "--tail",
                    "0", "--bits", "64f"});
        renders.push_back(Samples(Bytes("x.wav")));
    }
    ASSERT_EQ(renders[0].size(), 2U * 9600U);
    EXPECT_EQ(renders[0], renders[1]);
    EXPECT_EQ(renders[0], renders[2]);
    // Text keeps ten decimals of the curve.
    ASSERT_EQ(renders[0].size(), renders[3].size());
    for (std::size_t i = 0; i < renders[0].size(); ++i)
        ASSERT_NEAR(renders[0][i], renders[3][i], 1e-8) << i;
}

TEST_F(Programs, AForeignPlugInDoesNotKnowTextPrograms) {
    static_cast<void>(folder.Write("p.txt", {'N', 'a', 'm', 'e', ' ', '=', ' ', 'x', ';'}));
    FakePlugin fake;
    PluginHost host(&FakePlugin::Entry, "fake", {});
    EXPECT_THROW(LoadTextProgram(host, folder.Path("p.txt")), HostError);
    EXPECT_THROW(SaveProgramFile(host, folder.Path("q.txt")), HostError);
}

/// Renders the first few programs and stops.
AllProgramsResult RenderSome(const std::filesystem::path& folder, unsigned threads, int programs) {
    const Module module(PathFromText(kModule));
    const Song song = MakeNotes({48}, 100, 0.05);
    AllProgramsJob job;
    job.entry = module.Entry();
    job.moduleName = kModule;
    job.song = &song;
    job.tail = 0.0;
    job.format = SampleFormat::Float64;
    job.folder = folder;
    job.threads = threads;
    return RenderAllPrograms(job, [programs](int done, int) { return done < programs; });
}

TEST_F(Programs, AllProgramsAreTheSameWhateverTheNumberOfThreads) {
    for (const unsigned threads : {1U, 3U}) {
        const std::filesystem::path place = folder.Path(std::to_string(threads));
        std::filesystem::create_directory(place);
        const AllProgramsResult result = RenderSome(place, threads, 5);
        EXPECT_TRUE(result.interrupted);
        EXPECT_EQ(result.total, 128);
        EXPECT_GE(result.written, 5);
        EXPECT_LT(result.written, 9);
        const auto files = std::distance(std::filesystem::directory_iterator(place), {});
        EXPECT_EQ(files, result.written) << "what was not finished leaves nothing behind";
    }
    EXPECT_EQ(Bytes("1/001 Basic Bass Drum 1.wav"), Bytes("3/001 Basic Bass Drum 1.wav"));
    EXPECT_EQ(Bytes("1/002 Basic Bass Drum 2 (soft).wav"), Bytes("3/002 Basic Bass Drum 2 (soft).wav"));
}

TEST_F(Programs, OfAllProgramsEachIsWhatItIsAlone) {
    RenderSome(folder.Path("."), 1, 2);
    ExpectDone({"note", "48", "-o", Path("alone.wav"), "--program", "2", "--seconds", "0.05", "--tail", "0",
                "--bits", "64f"});
    EXPECT_EQ(Bytes("alone.wav"), Bytes("002 Basic Bass Drum 2 (soft).wav"));
}

TEST_F(Programs, AllProgramsTellAFault) {
    static_cast<void>(folder.Write("file", {'x'}));
    ExpectFault({"render", "--all-programs", Path("file")}, "file: is no folder");
    ExpectFault({"render", Path("none.mid"), "--all-programs", Path("all")}, "none.mid");
    ExpectFault({"render", "--all-programs", Path("all"), "--set", "No Such Knob=1"}, "No Such Knob");
    ExpectFault({"render", "--all-programs", Path("all"), "-o", Path("x.wav")}, "--all-programs");
    ExpectFault({"render", "--all-programs", Path("all"), "--program", "1"}, "--all-programs");
    ExpectFault({"render", "-o", Path("x.wav")}, "song is required");
    EXPECT_FALSE(std::filesystem::exists(folder.Path("x.wav")));
}

TEST(ProgramFileName, TakesOutWhatFileSystemsForbid) {
    EXPECT_EQ(ProgramFileName(7, "Laser Kick"), "007 Laser Kick.wav");
    EXPECT_EQ(ProgramFileName(15, "#HARDCORE BASS DRUMS#"), "015 #HARDCORE BASS DRUMS#.wav");
    EXPECT_EQ(ProgramFileName(128, "a/b\\c:d*e?f\"g<h>i|j\n"), "128 a_b_c_d_e_f_g_h_i_j_.wav");
    EXPECT_EQ(ProgramFileName(1, ""), "001.wav");
}

} // namespace
} // namespace Grimworks
