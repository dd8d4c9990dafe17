#ifndef _WIN32

#include "host/Edit.h"

#include "host/HostError.h"
#include "tests/editor/x11/XServer.h"
#include "tests/host/FakePlugin.h"
#include "tests/host/PngPicture.h"
#include "tests/host/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <iterator>
#include <memory>
#include <optional>
#include <set>
#include <spawn.h>
#include <thread>
#include <unistd.h>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

constexpr int kWidth = 1220;
constexpr int kHeight = 835;

bool Eventually(const std::function<bool()>& isSo) {
    for (int i = 0; i < 6000; ++i) {
        if (isSo()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

std::string Contents(const std::filesystem::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The built program showing the editor, in a process group of its own.
class EditRun {
public:
    explicit EditRun(const std::vector<std::string>& arguments) {
        std::vector<std::string> words{THUDFORGE_PROGRAM, "edit"};
        words.insert(words.end(), arguments.begin(), arguments.end());
        std::vector<char*> pointers;
        pointers.reserve(words.size() + 1);
        for (std::string& word : words)
            pointers.push_back(word.data());
        pointers.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        constexpr int kFlags = O_WRONLY | O_CREAT;
        posix_spawn_file_actions_addopen(&actions, 1, folder.Path("out").c_str(), kFlags, 0600);
        posix_spawn_file_actions_addopen(&actions, 2, folder.Path("err").c_str(), kFlags, 0600);
        posix_spawnattr_t attributes;
        posix_spawnattr_init(&attributes);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
        posix_spawn(&process, words[0].c_str(), &actions, &attributes, pointers.data(), environ);
        posix_spawnattr_destroy(&attributes);
        posix_spawn_file_actions_destroy(&actions);
    }
    ~EditRun() {
        if (process <= 0 || waited) return;
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }
    EditRun(const EditRun&) = delete;
    EditRun& operator=(const EditRun&) = delete;

    void Signal(int signal) const { kill(process, signal); }

    /// The exit status once it has ended by itself, -1 if a signal ended it or nothing does.
    int Status() {
        int status = 0;
        waited = Eventually([&] { return waitpid(process, &status, WNOHANG) == process; });
        return waited && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    /// True if a process that it started is still there.
    [[nodiscard]] bool LeavesProcesses() const { return kill(-process, 0) == 0; }

    [[nodiscard]] std::string Out() const { return Contents(folder.Path("out")); }
    [[nodiscard]] std::string Err() const { return Contents(folder.Path("err")); }

private:
    TempFolder folder{"edit-run"};
    pid_t process = -1;
    bool waited = false;
};

/// One line on the error stream that names what is at fault, and nothing else.
void ExpectFault(EditRun& run, const std::string& culprit) {
    EXPECT_EQ(run.Status(), 2);
    const std::string err = run.Err();
    EXPECT_EQ(run.Out(), "");
    EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << err;
    EXPECT_TRUE(err.starts_with("thudforge: ")) << err;
    EXPECT_NE(err.find(culprit), std::string::npos) << err;
}

/// Somebody else on the same display, such as a window manager.
class Onlooker {
public:
    Onlooker() : connection(xcb_connect(nullptr, nullptr), xcb_disconnect) {
        if (xcb_connection_has_error(connection.get()) == 0)
            screen = xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data;
    }

    /// Waits for the editor's window, in which the editor itself is.
    xcb_window_t EditorWindow() {
        xcb_window_t found = XCB_NONE;
        if (screen == nullptr) return found;
        static_cast<void>(Eventually([&] {
            for (const xcb_window_t window : Children(screen->root)) {
                if (Text(window, XCB_ATOM_WM_NAME) == "ThudForge" && !Children(window).empty())
                    found = window;
            }
            return found != XCB_NONE;
        }));
        return found;
    }

    std::vector<xcb_window_t> Children(xcb_window_t parent) {
        const auto cookie = xcb_query_tree(connection.get(), parent);
        xcb_query_tree_reply_t* reply = xcb_query_tree_reply(connection.get(), cookie, nullptr);
        if (reply == nullptr) return {};
        const xcb_window_t* first = xcb_query_tree_children(reply);
        std::vector<xcb_window_t> children(first, first + xcb_query_tree_children_length(reply));
        std::free(reply);
        return children;
    }

    std::string Text(xcb_window_t window, xcb_atom_t property) {
        const auto cookie = xcb_get_property(connection.get(), 0, window, property, XCB_ATOM_ANY, 0, 64);
        xcb_get_property_reply_t* reply = xcb_get_property_reply(connection.get(), cookie, nullptr);
        if (reply == nullptr) return {};
        std::string text(static_cast<const char*>(xcb_get_property_value(reply)),
                         static_cast<std::size_t>(xcb_get_property_value_length(reply)));
        std::free(reply);
        return text;
    }

    /// Width and height.
    std::array<int, 2> Size(xcb_window_t window) {
        const auto cookie = xcb_get_geometry(connection.get(), window);
        xcb_get_geometry_reply_t* reply = xcb_get_geometry_reply(connection.get(), cookie, nullptr);
        if (reply == nullptr) return {};
        const std::array<int, 2> size{reply->width, reply->height};
        std::free(reply);
        return size;
    }

    /// What the button in a window's frame does.
    void AskToClose(xcb_window_t window) {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = window;
        message.type = Atom("WM_PROTOCOLS");
        message.data.data32[0] = Atom("WM_DELETE_WINDOW");
        xcb_send_event(connection.get(), 0, window, 0, reinterpret_cast<const char*>(&message));
        xcb_flush(connection.get());
    }

    /// Opens a window over a part of the screen, as tooltips and panels of a desktop do.
    xcb_window_t Cover(std::int16_t left, std::int16_t top) {
        const xcb_window_t window = xcb_generate_id(connection.get());
        const std::array<std::uint32_t, 2> values{screen->white_pixel, 1};
        xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, window, screen->root, left, top, 300, 100,
                          0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual,
                          XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values.data());
        xcb_map_window(connection.get(), window);
        xcb_flush(connection.get());
        return window;
    }

    void Destroy(xcb_window_t window) {
        xcb_destroy_window(connection.get(), window);
        xcb_flush(connection.get());
    }

private:
    xcb_atom_t Atom(const std::string& name) {
        const auto length = static_cast<std::uint16_t>(name.size());
        const auto cookie = xcb_intern_atom(connection.get(), 0, length, name.c_str());
        xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(connection.get(), cookie, nullptr);
        const xcb_atom_t atom = reply == nullptr ? xcb_atom_t{XCB_NONE} : reply->atom;
        std::free(reply);
        return atom;
    }

    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection;
    xcb_screen_t* screen = nullptr;
};

class Edit : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(server.Runs());
        // The display ends with its last client: between two runs this one stays.
        audience.emplace();
    }

    /// The picture that a run of the program leaves.
    Picture Photograph(std::vector<std::string> arguments) {
        const auto path = folder.Path("shot.png");
        arguments.insert(arguments.end(), {"--screenshot", path.string()});
        EditRun run(arguments);
        EXPECT_EQ(run.Status(), 0) << run.Err();
        EXPECT_EQ(run.Err(), "");
        EXPECT_TRUE(run.Out().starts_with(path.string() + ": ")) << run.Out();
        return LoadPicture(path);
    }

    XServer server;
    std::optional<Onlooker> audience;
    TempFolder folder{"edit"};
};

std::size_t Colours(const Picture& picture) {
    std::set<std::array<std::uint8_t, 3>> colours;
    for (std::size_t i = 0; i + 2 < picture.pixels.size(); i += 3)
        colours.insert({picture.pixels[i], picture.pixels[i + 1], picture.pixels[i + 2]});
    return colours.size();
}

std::string FaultOf(FakePlugin& plugin, const EditJob& job = {}) {
    try {
        PluginHost host(FakePlugin::Entry, "fake.so", {});
        plugin.calls.clear();
        static_cast<void>(ShowEditor(host, job, [] { return true; }));
    } catch (const HostError& fault) {
        return fault.what();
    }
    return {};
}

} // namespace

TEST_F(Edit, AScreenshotShowsTheWholeEditor) {
    const Picture picture = Photograph({"--no-audio"});
    EXPECT_EQ(picture.width, kWidth);
    EXPECT_EQ(picture.height, kHeight);
    EXPECT_GT(Colours(picture), 500U);
}

TEST_F(Edit, AScreenshotWaitsUntilNothingLiesOverTheEditor) {
    Onlooker onlooker;
    const Picture whole = Photograph({"--no-audio"});
    const auto path = folder.Path("late.png");
    EditRun run({"--no-audio", "--screenshot", path.string()});
    ASSERT_NE(onlooker.EditorWindow(), XCB_NONE);
    const xcb_window_t cover = onlooker.Cover(100, 100);
    // Long enough for any picture of an editor that nobody hides.
    std::this_thread::sleep_for(std::chrono::seconds(4));
    EXPECT_FALSE(std::filesystem::exists(path));
    onlooker.Destroy(cover);
    EXPECT_EQ(run.Status(), 0) << run.Err();
    EXPECT_EQ(LoadPicture(path).pixels, whole.pixels);
}

TEST_F(Edit, ItsPagesDiffer) {
    const Picture synth = Photograph({"--no-audio", "--page", "synth"});
    const Picture scope = Photograph({"--no-audio", "--page", "scope"});
    const Picture about = Photograph({"--no-audio", "--page", "about"});
    EXPECT_NE(synth.pixels, scope.pixels);
    EXPECT_NE(synth.pixels, about.pixels);
    EXPECT_NE(scope.pixels, about.pixels);
    // Without sound nothing moves on the page that opens first.
    EXPECT_EQ(synth.pixels, Photograph({"--no-audio"}).pixels);
}

TEST_F(Edit, ProgramsAndSettingsAreSeen) {
    const Picture plain = Photograph({"--no-audio"});
    EXPECT_NE(plain.pixels, Photograph({"--no-audio", "--program", "5"}).pixels);
    EXPECT_NE(plain.pixels, Photograph({"--no-audio", "--set", "Osc1 Volume=0.9"}).pixels);
}

TEST_F(Edit, AKeyIsSeenOnTheScope) {
    const Picture silent = Photograph({"--page", "scope"});
    const Picture sounding = Photograph({"--page", "scope", "--note", "C2"});
    EXPECT_NE(silent.pixels, sounding.pixels);
}

TEST_F(Edit, ThreadsOfSoundAndEditorAgreeOnEveryPage) {
    for (const char* page : {"synth", "scope", "about"}) {
        const Picture picture = Photograph({"--page", page, "--note", "C2", "--seconds", "1.5"});
        EXPECT_EQ(picture.width, kWidth) << page;
    }
}

TEST_F(Edit, ItsWindowHasATitleAndTheEditorsSize) {
    EditRun run({});
    Onlooker onlooker;
    const xcb_window_t window = onlooker.EditorWindow();
    ASSERT_NE(window, XCB_NONE);
    EXPECT_EQ(onlooker.Size(window), (std::array<int, 2>{kWidth, kHeight}));
    EXPECT_EQ(onlooker.Text(window, XCB_ATOM_WM_CLASS), std::string("thudforge\0ThudForge\0", 20));
    // Window managers take a fixed size from the hints: flags, then at 5 to 8 the least and the greatest
    // size.
    const std::string hints = onlooker.Text(window, XCB_ATOM_WM_NORMAL_HINTS);
    std::array<std::int32_t, 18> numbers{};
    ASSERT_EQ(hints.size(), sizeof numbers);
    std::memcpy(numbers.data(), hints.data(), sizeof numbers);
    EXPECT_EQ(numbers[0], 16 | 32);
    EXPECT_EQ(numbers[5], kWidth);
    EXPECT_EQ(numbers[6], kHeight);
    EXPECT_EQ(numbers[7], kWidth);
    EXPECT_EQ(numbers[8], kHeight);
}

TEST_F(Edit, ClosesWhenItsFrameIsClosed) {
    EditRun run({"--note", "C2"});
    Onlooker onlooker;
    const xcb_window_t window = onlooker.EditorWindow();
    ASSERT_NE(window, XCB_NONE);
    onlooker.AskToClose(window);
    EXPECT_EQ(run.Status(), 0);
    EXPECT_EQ(run.Err(), "");
    EXPECT_FALSE(run.LeavesProcesses());
}

TEST_F(Edit, EndsWhenItsWindowIsDestroyed) {
    EditRun run({});
    Onlooker onlooker;
    const xcb_window_t window = onlooker.EditorWindow();
    ASSERT_NE(window, XCB_NONE);
    onlooker.Destroy(window);
    EXPECT_EQ(run.Status(), 0);
    EXPECT_FALSE(run.LeavesProcesses());
}

TEST_F(Edit, EndsWhenTheDisplayGoes) {
    EditRun run({});
    ASSERT_NE(Onlooker().EditorWindow(), XCB_NONE);
    server.Kill();
    EXPECT_EQ(run.Status(), 0);
    EXPECT_FALSE(run.LeavesProcesses());
}

TEST_F(Edit, EndsCleanlyOnAnInterrupt) {
    for (const int signal : {SIGINT, SIGTERM}) {
        EditRun run({});
        ASSERT_NE(Onlooker().EditorWindow(), XCB_NONE);
        run.Signal(signal);
        EXPECT_EQ(run.Status(), 0);
        EXPECT_EQ(run.Err(), "");
        EXPECT_FALSE(run.LeavesProcesses());
    }
}

TEST_F(Edit, AnInterruptBeforeThePictureIsReported) {
    const auto path = folder.Path("shot.png");
    EditRun run({"--seconds", "60", "--screenshot", path.string()});
    ASSERT_NE(Onlooker().EditorWindow(), XCB_NONE);
    run.Signal(SIGINT);
    EXPECT_EQ(run.Status(), 130);
    EXPECT_NE(run.Err().find("nothing was written"), std::string::npos) << run.Err();
    EXPECT_TRUE(folder.Names().empty());
}

TEST_F(Edit, TwentyRunsLeaveNoProcessBehind) {
    for (int round = 0; round < 20; ++round) {
        EditRun run({"--seconds", "0.1"});
        ASSERT_EQ(run.Status(), 0) << run.Err();
        ASSERT_FALSE(run.LeavesProcesses()) << round;
    }
}

TEST_F(Edit, AScreenshotThatCannotBeWrittenIsOneLine) {
    EditRun run({"--no-audio", "--screenshot", (folder.Path("none") / "shot.png").string()});
    ExpectFault(run, "shot.png: cannot be written");
    EXPECT_FALSE(run.LeavesProcesses());
}

TEST_F(Edit, WithoutADisplayOneLineSaysSo) {
    unsetenv("DISPLAY");
    EditRun none({});
    ExpectFault(none, "DISPLAY is not set");
    setenv("DISPLAY", ":9999", 1);
    EditRun unknown({});
    ExpectFault(unknown, "the display :9999 cannot be opened");
}

TEST_F(Edit, UnknownPagesAndNotesAreRefused) {
    EditRun page({"--page", "mixer"});
    ExpectFault(page, "mixer");
    EditRun note({"--note", "H2"});
    ExpectFault(note, "H2");
}

TEST_F(Edit, AModuleWithoutAnEditorIsRefusedByName) {
    FakePlugin without;
    EXPECT_EQ(FaultOf(without), "fake.so: the instrument has no editor");
    FakePlugin silent;
    silent.record.flags |= EffectFlag::HasEditor;
    silent.tellsEditorSize = false;
    EXPECT_EQ(FaultOf(silent), "fake.so: the instrument has no editor");
    EXPECT_EQ(without.editorParent, nullptr);
}

TEST_F(Edit, AnEditorOfASizeThatCannotBeIsRefused) {
    for (const ERect wrong :
         {ERect{0, 0, 0, 80}, ERect{0, 0, 60, 0}, ERect{10, 10, 5, 5}, ERect{0, 0, 60, 32767}}) {
        FakePlugin plugin;
        plugin.record.flags |= EffectFlag::HasEditor;
        plugin.editorRect = wrong;
        EXPECT_EQ(FaultOf(plugin), "fake.so: the editor has a size that cannot be");
    }
}

TEST_F(Edit, AnEditorThatDoesNotOpenIsAFault) {
    FakePlugin plugin;
    plugin.record.flags |= EffectFlag::HasEditor;
    plugin.opensEditor = false;
    EXPECT_EQ(FaultOf(plugin), "fake.so: the editor does not open");
    EXPECT_NE(plugin.editorParent, nullptr);
}

TEST_F(Edit, APageThatTheEditorDoesNotHaveIsAFault) {
    FakePlugin plugin;
    plugin.record.flags |= EffectFlag::HasEditor;
    EditJob job;
    job.page = EditPage::About;
    EXPECT_EQ(FaultOf(plugin, job), "fake.so: the editor has no such page");
}

TEST_F(Edit, TheEditorClosesBeforeThePluginIsSwitchedOff) {
    FakePlugin plugin;
    plugin.record.flags |= EffectFlag::HasEditor;
    PluginHost host(FakePlugin::Entry, "fake.so", {});
    plugin.calls.clear();
    EditJob job;
    job.page = EditPage::Scope;
    job.seconds = 0.0;
    EXPECT_EQ(ShowEditor(host, job, [] { return true; }), EditEnd::Closed);
    std::vector<std::int32_t> opcodes;
    for (const auto& call : plugin.calls)
        opcodes.push_back(call.opcode);
    EXPECT_EQ(opcodes,
              (std::vector<std::int32_t>{PlugOp::EditGetRect, PlugOp::VendorSpecific, PlugOp::MainsChanged,
                                         PlugOp::EditOpen, PlugOp::EditClose, PlugOp::MainsChanged}));
}

TEST_F(Edit, WithoutAudioNothingIsPlayed) {
    FakePlugin plugin;
    plugin.record.flags |= EffectFlag::HasEditor;
    PluginHost host(FakePlugin::Entry, "fake.so", {});
    EditJob job;
    job.audio = false;
    job.seconds = 0.1;
    EXPECT_EQ(ShowEditor(host, job, [] { return true; }), EditEnd::Closed);
    EXPECT_TRUE(plugin.blockSizes.empty());
}

TEST_F(Edit, WhoeverSaysStopIsHeard) {
    FakePlugin plugin;
    plugin.record.flags |= EffectFlag::HasEditor;
    PluginHost host(FakePlugin::Entry, "fake.so", {});
    EXPECT_EQ(ShowEditor(host, {}, [] { return false; }), EditEnd::Interrupted);
}

#endif
