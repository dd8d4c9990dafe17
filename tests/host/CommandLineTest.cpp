#include "host/Cli.h"
#include "host/Files.h"
#include "tests/host/MidiBytes.h"
#include "tests/host/TempFolder.h"

#include <gtest/gtest.h>
#include <sndfile.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#ifndef _WIN32
#include <dlfcn.h>
#include <gnu/libc-version.h>
#include <sys/wait.h>
#endif

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
};

std::string Quoted(const std::string& text) {
    return "\"" + text + "\"";
}

/// A path as the system's own shell wants it.
std::string Native(std::filesystem::path path) {
    return TextFromPath(path.make_preferred());
}

std::string Contents(const std::filesystem::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::ptrdiff_t Lines(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
}

/// Runs the built program with arguments that need no quoting but quotes around each.
Outcome RunProgram(const std::vector<std::string>& arguments) {
    const TempFolder folder("spawn");
    const auto out = folder.Path("out");
    const auto err = folder.Path("err");
    std::string command = Quoted(Native(THUDFORGE_PROGRAM));
    for (const std::string& argument : arguments)
        command += " " + Quoted(argument);
    command += " > " + Quoted(Native(out)) + " 2> " + Quoted(Native(err));
    Outcome outcome;
#ifdef _WIN32
    // This shell takes the outermost quotes off a whole line.
    outcome.status = std::system(Quoted(command).c_str());
#else
    const int status = std::system(command.c_str());
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
#endif
    outcome.out = Contents(out);
    outcome.err = Contents(err);
    return outcome;
}

/// Carries out a command line within the test itself.
Outcome RunHere(const std::vector<std::string>& arguments) {
    std::ostringstream out;
    std::ostringstream err;
    Outcome outcome;
    outcome.status = RunCommandLine(arguments, out, err);
    outcome.out = out.str();
    outcome.err = err.str();
    return outcome;
}

/// A fault is status 2, nothing on the output, and one line on the error stream that starts with the program
/// and names what is at fault.
void ExpectFault(const Outcome& outcome, const std::string& culprit) {
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(Lines(outcome.err), 1) << outcome.err;
    EXPECT_TRUE(outcome.err.starts_with("thudforge: ")) << outcome.err;
    EXPECT_NE(outcome.err.find(culprit), std::string::npos) << outcome.err;
}

const std::string kModule = THUDFORGE_MODULE;

#ifndef _WIN32
/// The file of the C library.
std::string SystemLibrary() {
    Dl_info info{};
    EXPECT_NE(dladdr(reinterpret_cast<void*>(&gnu_get_libc_version), &info), 0);
    return info.dli_fname;
}
#endif

/// The good files that the bad ones are made from.
class CommandLine : public testing::Test {
protected:
    CommandLine() {
        static_cast<void>(folder.Write("song.mid", song));
        static_cast<void>(folder.Write("text.mid", Letters("this is no song")));
        static_cast<void>(folder.Write("cut.mid", {song.begin(), song.end() - 3}));
        before = folder.Names();
    }

    [[nodiscard]] std::string Path(const std::string& name) const { return Native(folder.Path(name)); }
    [[nodiscard]] std::string Out() const { return Path("out.wav"); }

    /// No file came or went.
    void ExpectNothingLeft() const { EXPECT_EQ(folder.Names(), before); }

    TempFolder folder{"cli"};
    Bytes song = MidiBytes(0, 96, {Bytes{0x00, 0x90, 24, 100, 0x30, 0x80, 24, 0} + kEndOfTrack});
    std::set<std::string> before;
};

} // namespace

TEST_F(CommandLine, TheProgramRendersASong) {
    const Outcome outcome = RunProgram(
        {"render", Path("song.mid"), "-o", Out(), "--module", kModule, "--tail", "0.5", "--bits", "64f"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(Lines(outcome.out), 1);
    EXPECT_NE(outcome.out.find("0.750 s, 48000 Hz"), std::string::npos) << outcome.out;
    SF_INFO info{};
    SNDFILE* file = sf_open(TextFromPath(folder.Path("out.wav")).c_str(), SFM_READ, &info);
    ASSERT_NE(file, nullptr);
    sf_close(file);
    EXPECT_EQ(info.frames, 36000);
    EXPECT_EQ(info.channels, 2);
    EXPECT_EQ(info.format, SF_FORMAT_WAV | SF_FORMAT_DOUBLE);
}

TEST_F(CommandLine, TheProgramFindsTheModuleOfItsOwnBuild) {
    const Outcome outcome = RunProgram({"note", "C2", "-o", Out(), "--seconds", "0.1", "--tail", "0"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_TRUE(std::filesystem::exists(folder.Path("out.wav")));
}

TEST_F(CommandLine, TheProgramTellsAFaultInOneLine) {
    ExpectFault(RunProgram({"render", Path("none.mid"), "-o", Out(), "--module", kModule}), "none.mid");
    ExpectFault(RunProgram({"render", Path("cut.mid"), "-o", Out(), "--module", kModule}),
                "cut.mid: is truncated");
    ExpectFault(RunProgram({"note", "C2", "-o", Path("no/out.wav"), "--module", kModule}), "out.wav");
    ExpectFault(RunProgram({"note", "C2", "-o", Out(), "--module", kModule, "--set", "Wobble=1"}), "Wobble");
    ExpectFault(RunProgram({"note", "C2", "-o", Out(), "--module", Path("none.so")}), "none.so");
    ExpectFault(RunProgram({}), "subcommand");
    ExpectNothingLeft();
}

TEST_F(CommandLine, FilesThatAreNoSongsAreFaults) {
    const auto fault = [this](const std::string& name, const std::string& what) {
        ExpectFault(RunHere({"render", Path(name), "-o", Out(), "--module", kModule}), name + what);
    };
    fault("none.mid", ": cannot be opened");
    fault("text.mid", ": is not a Standard MIDI file");
    fault("cut.mid", ": is truncated");
    ExpectFault(RunHere({"render", "/no/song.mid", "-o", Out(), "--module", kModule}),
                "/no/song.mid: cannot be opened");
    ExpectNothingLeft();
}

TEST_F(CommandLine, OutputsThatCannotBeWrittenAreFaults) {
    const std::string missing = Path("no/out.wav");
    ExpectFault(RunHere({"note", "C2", "-o", missing, "--module", kModule}), missing);
    ExpectFault(RunHere({"note", "C2", "-o", Path("."), "--module", kModule}), "is a directory");
    ExpectNothingLeft();
}

TEST_F(CommandLine, UnknownNamesAreFaults) {
    const auto note = [this](const std::vector<std::string>& more) {
        std::vector<std::string> arguments{"note", "C2", "-o", Out(), "--module", kModule};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return RunHere(arguments);
    };
    ExpectFault(note({"--program", "129"}), "129: programs are numbered from 1 to 128");
    ExpectFault(note({"--program", "0"}), "0: ");
    ExpectFault(note({"--program", "No Such Kick"}), "No Such Kick");
    ExpectFault(note({"--program", Path("none.fxp")}), "none.fxp");
    ExpectFault(note({"--program", Path("song.mid")}), "song.mid");
    ExpectFault(note({"--set", "No Such Knob=1"}), "No Such Knob");
    ExpectFault(note({"--set", "159=1"}), "159");
    ExpectFault(note({"--set", "0=2"}), "0=2");
    ExpectFault(note({"--bits", "12"}), "--bits 12");
    ExpectFault(note({"--rate", "5"}), "--rate");
    ExpectFault(note({"--block", "0"}), "--block");
    ExpectFault(note({"--tail", "long"}), "--tail long");
    ExpectFault(note({"--seconds", "nan"}), "--seconds nan");
    ExpectFault(note({"--velocity", "0"}), "--velocity");
    ExpectFault(note({"--wobble"}), "--wobble");
    ExpectFault(RunHere({"note", "H2", "-o", Out(), "--module", kModule}), "H2");
    ExpectFault(RunHere({"wobble"}), "wobble: there is no such command");
    ExpectFault(RunHere({"render"}), "song");
    ExpectNothingLeft();
}

TEST_F(CommandLine, ModulesThatAreNoneAreFaults) {
    const auto check = [](const std::string& module) { return RunHere({"check", "--module", module}); };
    ExpectFault(check(Path("none.so")), "none.so: there is no such module");
    ExpectFault(check(Path("text.mid")), "text.mid: cannot be loaded");
    // A library that every program of the system has loaded, and no instrument.
#ifdef _WIN32
    ExpectFault(check("C:\\windows\\system32\\kernel32.dll"),
                "kernel32.dll: has no entry point VSTPluginMain");
#else
    ExpectFault(check(SystemLibrary()), "has no entry point VSTPluginMain");
#endif
    ExpectNothingLeft();
}

TEST_F(CommandLine, TheSameCommandGivesTheSameBytes) {
    for (const char* name : {"a.wav", "b.wav"}) {
        const Outcome outcome =
            RunHere({"render", Path("song.mid"), "-o", Path(name), "--module", kModule, "--tail", "0.2"});
        ASSERT_EQ(outcome.status, 0) << outcome.err;
    }
    EXPECT_EQ(ReadFileBytes(folder.Path("a.wav"), 1U << 24U), ReadFileBytes(folder.Path("b.wav"), 1U << 24U));
}

TEST_F(CommandLine, SettingsMayBeRepeatedAndStandAnywhere) {
    const Outcome outcome = RunHere({"note", "--set", "0=1", "--set", "1=0.5", "C2", "c3", "-o", Out(),
                                     "--module", kModule, "--seconds", "0.05", "--tail", "0"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_NE(outcome.out.find("0.100 s"), std::string::npos) << outcome.out;
}

TEST_F(CommandLine, ParametersProgramsAndCheckAreListed) {
    const Outcome params = RunHere({"params", "--module", kModule});
    EXPECT_EQ(params.status, 0);
    EXPECT_EQ(Lines(params.out), 160) << "a heading and 159 parameters";
    const Outcome programs = RunHere({"programs", "--module", kModule});
    EXPECT_EQ(programs.status, 0);
    EXPECT_EQ(Lines(programs.out), 128);
    EXPECT_TRUE(programs.out.starts_with("   1"));
    const Outcome check = RunHere({"check", "--module", kModule});
    EXPECT_EQ(check.status, 0);
    for (const char* fact : {"ThudForge 1.8.3 FREE", "GrimWorks", "10803", "\"otra\"", "159", "instrument"}) {
        EXPECT_NE(check.out.find(fact), std::string::npos) << fact;
    }
}

TEST_F(CommandLine, HelpAndVersionAreNoFaults) {
    EXPECT_EQ(RunHere({"--version"}).out, "thudforge " THUDFORGE_VERSION "\n");
    const Outcome help = RunHere({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.out.find("render"), std::string::npos);
    EXPECT_EQ(RunHere({"render", "--help"}).status, 0);
}
