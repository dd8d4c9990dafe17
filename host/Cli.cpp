#include "host/Cli.h"

#include "host/AllPrograms.h"
#include "host/Edit.h"
#include "host/Files.h"
#include "host/HostError.h"
#include "host/Interrupt.h"
#include "host/MidiFile.h"
#include "host/Module.h"
#include "host/NoteName.h"
#include "host/ProgramFile.h"
#include "host/Progress.h"
#include "host/Render.h"
#include "host/Reports.h"
#include "host/Settings.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <exception>
#include <filesystem>
#include <optional>
#include <system_error>
#include <thread>

namespace Grimworks {

namespace {

constexpr double kMaxSeconds = 3600.0;
constexpr double kShortestNote = 0.001;
// What --all-programs plays without a song: a key between the basses and the leads.
constexpr int kSampleKey = 48;
constexpr double kSampleSeconds = 1.0;

/// Everything that can be said on the command line, with what holds when it is not.
struct Options {
    std::string song;
    std::vector<std::string> notes;
    std::string output;
    std::string folder; ///< of --all-programs
    std::string source; ///< of convert
    std::string module;
    std::string program;
    std::vector<std::string> settings;
    std::string tail = "auto";
    std::string bits = "24";
    int rate = 48000;
    int block = 256;
    int velocity = 100;
    std::string seconds = "2";
    std::string openSeconds; ///< of edit; empty: until it is closed
    std::string screenshot;
    std::string page;
    std::string key;
    bool silent = false;
};

/// What the sound options mean, once they are checked.
struct SoundOptions {
    SampleFormat format;
    std::optional<double> tail; ///< none: until it is quiet
};

double ParseSeconds(const std::string& option, const std::string& text, double least) {
    double seconds = 0.0;
    const char* end = text.data() + text.size();
    const auto [stop, fault] = std::from_chars(text.data(), end, seconds);
    if (fault != std::errc() || stop != end || !(seconds >= least && seconds <= kMaxSeconds)) {
        throw HostError(option + " " + text + ": must be seconds from " + FixedText(least, 3) + " to " +
                        FixedText(kMaxSeconds, 0));
    }
    return seconds;
}

SampleFormat ParseFormat(const std::string& text) {
    if (text == "16") return SampleFormat::Pcm16;
    if (text == "24") return SampleFormat::Pcm24;
    if (text == "32f") return SampleFormat::Float32;
    if (text == "64f") return SampleFormat::Float64;
    throw HostError("--bits " + text + ": must be 16, 24, 32f or 64f");
}

SoundOptions ParseSound(const Options& options) {
    SoundOptions sound{ParseFormat(options.bits), std::nullopt};
    if (options.tail != "auto") sound.tail = ParseSeconds("--tail", options.tail, 0.0);
    return sound;
}

std::vector<int> ParseNotes(const std::vector<std::string>& texts) {
    std::vector<int> notes;
    for (const std::string& text : texts) {
        const auto note = NoteFromText(text);
        if (!note) throw HostError(text + ": is no note; notes go from C0 to G10, or from 0 to 127");
        notes.push_back(*note);
    }
    return notes;
}

/// The instrument that one command works with: the module, and an instance set up by the options.
class LoadedInstrument {
public:
    explicit LoadedInstrument(const Options& commandOptions, bool realTime = false)
        : options(commandOptions),
          module(options.module.empty() ? Module::Find() : PathFromText(options.module)),
          host(module.Entry(), TextFromPath(module.Path()),
               {static_cast<double>(options.rate), options.block, realTime}) {
        if (!options.program.empty()) ChooseProgram(host, options.program);
        for (const std::string& setting : options.settings)
            ApplySetting(host, setting);
    }

    PluginHost& Host() { return host; }
    [[nodiscard]] const std::filesystem::path& ModulePath() const { return module.Path(); }

    int Render(const Song& song, const SoundOptions& sound, std::ostream& out, std::ostream& err) {
        WavWriter wav(PathFromText(options.output), host.ChannelCount(), options.rate, sound.format);
        Progress progress(err, IsTerminal(2));
        const RenderResult result = RenderSong(host, song, sound.tail, wav, sound.format,
                                               [&progress](double seconds, double expected) {
                                                   progress.Show(seconds, expected);
                                                   return !InterruptRequested();
                                               });
        progress.Finish();
        if (result.interrupted) {
            err << "thudforge: " << options.output << ": interrupted, nothing was written\n";
            return kExitInterrupted;
        }
        wav.Commit();
        Summarise(result, sound.format, out);
        return kExitDone;
    }

private:
    void Summarise(const RenderResult& result, SampleFormat format, std::ostream& out) const {
        const bool limited = format == SampleFormat::Pcm16 || format == SampleFormat::Pcm24;
        out << options.output << ": " << FixedText(static_cast<double>(result.frames) / options.rate, 3)
            << " s, " << options.rate << " Hz, channels " << host.ChannelCount() << ", peak "
            << PeakText(result.peak);
        if (limited && result.peak > 1.0) out << " (clipped; --bits 32f keeps it)";
        out << '\n';
    }

    const Options& options;
    Module module;
    PluginHost host;
};

std::filesystem::path MakeFolder(const std::string& text) {
    std::filesystem::path folder = PathFromText(text);
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (!std::filesystem::is_directory(folder, error)) throw HostError(text + ": is no folder");
    return folder;
}

int RunAllPrograms(const Options& options, std::ostream& out, std::ostream& err) {
    const SoundOptions sound = ParseSound(options);
    const Song song = options.song.empty() ? MakeNotes({kSampleKey}, options.velocity, kSampleSeconds)
                                           : MidiFile::Load(PathFromText(options.song));
    const Module module(options.module.empty() ? Module::Find() : PathFromText(options.module));
    AllProgramsJob job;
    job.entry = module.Entry();
    job.moduleName = TextFromPath(module.Path());
    job.setup = {static_cast<double>(options.rate), options.block};
    job.song = &song;
    job.tail = sound.tail;
    job.format = sound.format;
    job.settings = options.settings;
    job.folder = MakeFolder(options.folder);
    job.threads = std::thread::hardware_concurrency();
    Progress progress(err, IsTerminal(2));
    const AllProgramsResult result = RenderAllPrograms(job, [&progress](int done, int total) {
        progress.ShowCount(done, total);
        return !InterruptRequested();
    });
    progress.Finish();
    if (result.interrupted) {
        err << "thudforge: " << options.folder << ": interrupted after " << result.written << " of "
            << result.total << " programs\n";
        return kExitInterrupted;
    }
    out << options.folder << ": " << result.written << " programs\n";
    return kExitDone;
}

int RunRender(const Options& options, std::ostream& out, std::ostream& err) {
    if (!options.folder.empty()) return RunAllPrograms(options, out, err);
    if (options.song.empty()) throw HostError("song is required, or --all-programs");
    if (options.output.empty()) throw HostError("--output is required, or --all-programs");
    const SoundOptions sound = ParseSound(options);
    const Song song = MidiFile::Load(PathFromText(options.song));
    return LoadedInstrument(options).Render(song, sound, out, err);
}

int RunNote(const Options& options, std::ostream& out, std::ostream& err) {
    const SoundOptions sound = ParseSound(options);
    const double seconds = ParseSeconds("--seconds", options.seconds, kShortestNote);
    const Song song = MakeNotes(ParseNotes(options.notes), options.velocity, seconds);
    return LoadedInstrument(options).Render(song, sound, out, err);
}

int RunConvert(const Options& options, std::ostream& out) {
    LoadedInstrument instrument(options);
    ChooseProgram(instrument.Host(), options.source);
    SaveProgramFile(instrument.Host(), PathFromText(options.output));
    out << options.output << ": " << instrument.Host().Text(PlugOp::GetProgramName) << '\n';
    return kExitDone;
}

EditJob ParseEdit(const Options& options) {
    EditJob job;
    if (options.page == "synth") job.page = EditPage::Synth;
    if (options.page == "scope") job.page = EditPage::Scope;
    if (options.page == "about") job.page = EditPage::About;
    job.audio = !options.silent;
    if (!options.key.empty()) job.key = RepeatedKey{ParseNotes({options.key}).front(), options.velocity};
    if (!options.openSeconds.empty()) job.seconds = ParseSeconds("--seconds", options.openSeconds, 0.0);
    job.screenshot = PathFromText(options.screenshot);
    return job;
}

int RunEdit(const Options& options, std::ostream& out, std::ostream& err) {
    const EditJob job = ParseEdit(options);
    LoadedInstrument instrument(options, true);
    const EditEnd end = ShowEditor(instrument.Host(), job, [] { return !InterruptRequested(); });
    if (end == EditEnd::Photographed) {
        out << options.screenshot << ": " << instrument.Host().Text(PlugOp::GetProgramName) << '\n';
        return kExitDone;
    }
    // Whoever closes the window has done what it is there for, unless a picture was asked for.
    if (job.screenshot.empty()) return kExitDone;
    err << "thudforge: " << options.screenshot << ": the window was closed first, nothing was written\n";
    return end == EditEnd::Interrupted ? kExitInterrupted : kExitFault;
}

void AddModule(CLI::App& command, Options& options) {
    command.add_option("--module", options.module,
                       "the module to load instead of the one installed with this program");
}

CLI::Option* AddProgram(CLI::App& command, Options& options) {
    return command.add_option("--program", options.program,
                              "program by number (1 is the first), by name, or an .fxp or text program file");
}

void AddSetup(CLI::App& command, Options& options) {
    AddModule(command, options);
    command
        .add_option("--set", options.settings, "NAME=VALUE or ID=VALUE, value from 0 to 1; may be repeated")
        ->allow_extra_args(false);
    command.add_option("--rate", options.rate, "samples in a second")->check(CLI::Range(8000, 384000));
    command.add_option("--block", options.block, "frames in a block")->check(CLI::Range(1, 65536));
}

void AddVelocity(CLI::App& command, Options& options) {
    command.add_option("--velocity", options.velocity, "1 to 127")->check(CLI::Range(1, 127));
}

void AddEdit(CLI::App& command, Options& options) {
    AddSetup(command, options);
    AddProgram(command, options);
    command.add_option("--page", options.page, "synth, scope or about")
        ->check(CLI::IsMember({"synth", "scope", "about"}));
    command.add_option("--note", options.key, "a key that the displays show, struck every second: C0 to G10");
    AddVelocity(command, options);
    command.add_flag("--no-audio", options.silent, "do not let the instrument play");
    command.add_option("--seconds", options.openSeconds, "close the window by itself after so long");
    command.add_option("--screenshot", options.screenshot,
                       "write a PNG file of what the window shows, and close it");
}

void AddSound(CLI::App& command, Options& options) {
    AddSetup(command, options);
    command.add_option("-o,--output", options.output, "the WAV file to write");
    command.add_option("--bits", options.bits, "16, 24, 32f or 64f");
    command.add_option("--tail", options.tail, "seconds to go on after the end, or auto: until it is quiet");
}

/// The commands and where their arguments go.
struct Commands {
    Commands(CLI::App& app, Options& options)
        : render(app.add_subcommand("render", "Play a MIDI file into a WAV file")),
          note(app.add_subcommand("note", "Play notes, one after the other, into a WAV file")),
          edit(app.add_subcommand("edit", "Show the editor in a window of its own")),
          convert(app.add_subcommand("convert", "Write a program file in the other form")),
          params(app.add_subcommand("params", "List the parameters")),
          programs(app.add_subcommand("programs", "List the programs")),
          check(app.add_subcommand("check", "Load the module and show what a host sees")) {
        render->add_option("song", options.song, "a Standard MIDI file of type 0 or 1");
        AddSound(*render, options);
        render
            ->add_option("--all-programs", options.folder,
                         "a folder for one WAV file per program, of the song or, without one, of a note")
            ->excludes(AddProgram(*render, options))
            ->excludes(render->get_option("--output"));
        note->add_option("notes", options.notes, "C0 to G10 (C5 is 60), or 0 to 127")->required();
        note->add_option("--seconds", options.seconds, "how long each key is held");
        AddVelocity(*note, options);
        AddSound(*note, options);
        AddProgram(*note, options);
        note->get_option("--output")->required();
        AddEdit(*edit, options);
        convert->add_option("in", options.source, "a program file, or a program by number or name")
            ->required();
        convert->add_option("out", options.output, "an .fxp file, or a text program under any other name")
            ->required();
        AddModule(*convert, options);
        AddModule(*params, options);
        AddProgram(*params, options);
        AddModule(*programs, options);
        AddModule(*check, options);
    }

    CLI::App* render;
    CLI::App* note;
    CLI::App* edit;
    CLI::App* convert;
    CLI::App* params;
    CLI::App* programs;
    CLI::App* check;
};

int Run(const Commands& commands, const Options& options, std::ostream& out, std::ostream& err) {
    if (commands.render->parsed()) return RunRender(options, out, err);
    if (commands.note->parsed()) return RunNote(options, out, err);
    if (commands.edit->parsed()) return RunEdit(options, out, err);
    if (commands.convert->parsed()) return RunConvert(options, out);
    LoadedInstrument instrument(options);
    if (commands.params->parsed()) PrintParameters(instrument.Host(), out);
    if (commands.programs->parsed()) PrintPrograms(instrument.Host(), out);
    if (commands.check->parsed()) PrintCheck(instrument.Host(), instrument.ModulePath(), out);
    return kExitDone;
}

/// A word in the place of the command that is none.
bool IsUnknownCommand(const CLI::App& app, const std::vector<std::string>& arguments) {
    if (arguments.empty() || arguments.front().starts_with('-')) return false;
    const auto commands = app.get_subcommands([](const CLI::App*) { return true; });
    return std::none_of(commands.begin(), commands.end(), [&arguments](const CLI::App* command) {
        return command->check_name(arguments.front());
    });
}

int ReportFault(std::string fault, std::ostream& err) {
    std::replace(fault.begin(), fault.end(), '\n', ' ');
    err << "thudforge: " << fault << '\n';
    return kExitFault;
}

} // namespace

int RunCommandLine(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    Options options;
    CLI::App app("ThudForge on the command line: plays the instrument into WAV files and shows its editor",
                 "thudforge");
    app.set_version_flag("--version", "thudforge " THUDFORGE_VERSION);
    // A path may begin with a slash on every system.
    app.allow_windows_style_options(false);
    app.require_subcommand(1);
    const Commands commands(app, options);
    try {
        if (IsUnknownCommand(app, arguments))
            throw HostError(arguments.front() + ": there is no such command");
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        return Run(commands, options, out, err);
    } catch (const CLI::ParseError& fault) {
        if (fault.get_exit_code() == 0) return app.exit(fault, out, err);
        return ReportFault(std::string(fault.what()) + " (thudforge --help tells more)", err);
    } catch (const std::exception& fault) {
        return ReportFault(fault.what(), err);
    }
}

} // namespace Grimworks
