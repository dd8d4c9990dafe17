#include "editor/IPopupMenu.h"
#include "tests/editor/x11/EditorWindow.h"
#include "tests/editor/x11/StandInPrograms.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <tuple>
#include <unistd.h>
#include <utility>
#include <vector>

namespace Grimworks {

namespace {

namespace fs = std::filesystem;

/// An editor whose press runs something that waits for the user, on a desktop of stand-ins.
class DesktopWindow : public EditorWindow {
protected:
    void SetUp() override {
        EditorWindow::SetUp();
        ASSERT_FALSE(folder.empty());
    }

    void MakeProgram(const std::string& name, const std::string& lines) const { programs.Make(name, lines); }
    [[nodiscard]] fs::path Words(const std::string& program) const { return programs.Words(program); }
    [[nodiscard]] std::string WordsOf(const std::string& program) const { return programs.WordsOf(program); }

    /// Presses the control, which runs `asking` on the editor thread.
    [[nodiscard]] bool Press(const std::function<void()>& asking) {
        control->onDown = [asking](RecordingControl&) { asking(); };
        return Open() && PointAt(150, 150) && User({"click", "1"});
    }

    [[nodiscard]] bool PressForFile(int action) {
        return Press([this, action] {
            std::string file = "old.fxp";
            std::string dir = "/songs/";
            graphics->PromptForFile(file, dir, action, "gw tgp fxp");
            record.Add("file " + file + " in " + dir);
        });
    }

    [[nodiscard]] bool DialogIsOpen() {
        return Eventually([&] {
            const auto children = host.ChildrenOf(host.Editors().front());
            return children.size() == 1 && host.Focus() == children.front();
        });
    }

    /// A point of the dialog, from its right and bottom.
    [[nodiscard]] bool ClickFromCorner(int fromRight, int fromBottom) {
        const IRECT place = host.PlaceOf(host.ChildrenOf(host.Editors().front()).front());
        return User(MoveTo(place.R - fromRight, place.B - fromBottom)) && User({"click", "1"});
    }

private:
    StandInPrograms programs;

protected:
    const fs::path& folder = programs.Folder();
};

} // namespace

TEST_F(DesktopWindow, AFileIsChosenThroughTheDesktopsDialog) {
    MakeProgram("zenity", "echo '/music/kicks/hard one.fxp'");
    ASSERT_TRUE(PressForFile(IGraphics::FileOpen));
    EXPECT_TRUE(Recorded("file hard one.fxp in /music/kicks/"));
    const std::string words = WordsOf("zenity");
    EXPECT_NE(words.find("--file-selection\n"), std::string::npos) << words;
    EXPECT_NE(words.find("--filename=/songs/old.fxp\n"), std::string::npos) << words;
    EXPECT_NE(words.find("--file-filter=*.gw *.tgp *.fxp | *.gw *.tgp *.fxp\n"), std::string::npos) << words;
    EXPECT_EQ(words.find("--save"), std::string::npos) << words;
}

TEST_F(DesktopWindow, SavingAsksBeforeAFileIsReplaced) {
    MakeProgram("zenity", "echo /music/new.txt");
    ASSERT_TRUE(PressForFile(IGraphics::FileSave));
    EXPECT_TRUE(Recorded("file new.txt in /music/"));
    const std::string words = WordsOf("zenity");
    EXPECT_NE(words.find("--save\n"), std::string::npos) << words;
    EXPECT_NE(words.find("--confirm-overwrite\n"), std::string::npos) << words;
}

TEST_F(DesktopWindow, ACancelledFileDialogGivesNoFile) {
    MakeProgram("zenity", "exit 1");
    MakeProgram("kdialog", "echo /not/this");
    ASSERT_TRUE(PressForFile(IGraphics::FileOpen));
    EXPECT_TRUE(Recorded("file  in /songs/"));
    EXPECT_FALSE(fs::exists(Words("kdialog")));
}

TEST_F(DesktopWindow, AnOtherDialogIsTriedWhenOneDoesNotWork) {
    MakeProgram("zenity", "exit 255");
    MakeProgram("kdialog", "echo /music/other.fxp");
    ASSERT_TRUE(PressForFile(IGraphics::FileOpen));
    EXPECT_TRUE(Recorded("file other.fxp in /music/"));
    EXPECT_NE(WordsOf("kdialog").find("--getopenfilename\n/songs/old.fxp\n"), std::string::npos);
}

TEST_F(DesktopWindow, ADesktopThatHasItsOwnDialogGetsThat) {
    setenv("XDG_CURRENT_DESKTOP", "KDE", 1);
    MakeProgram("zenity", "echo /not/this");
    MakeProgram("kdialog", "echo /music/other.fxp");
    ASSERT_TRUE(PressForFile(IGraphics::FileOpen));
    EXPECT_TRUE(Recorded("file other.fxp in /music/"));
    EXPECT_FALSE(fs::exists(Words("zenity")));
}

TEST_F(DesktopWindow, WithoutDialogProgramsThePathIsTyped) {
    ASSERT_TRUE(PressForFile(IGraphics::FileOpen));
    ASSERT_TRUE(DialogIsOpen());
    ASSERT_TRUE(User({"type", "--delay", "0", "/drums/typed.gw"}));
    ASSERT_TRUE(User({"key", "Return"}));
    EXPECT_TRUE(Recorded("file typed.gw in /drums/"));
}

TEST_F(DesktopWindow, ATypedPathMayBeWithoutFolderOrFromHome) {
    ASSERT_TRUE(PressForFile(IGraphics::FileOpen));
    ASSERT_TRUE(DialogIsOpen());
    ASSERT_TRUE(User({"type", "--delay", "0", "bare.gw"}));
    ASSERT_TRUE(User({"key", "Return"}));
    EXPECT_TRUE(Recorded("file bare.gw in /songs/"));
    ASSERT_TRUE(PressForFile(IGraphics::FileOpen));
    ASSERT_TRUE(DialogIsOpen());
    ASSERT_TRUE(User({"type", "--delay", "0", "~/mine/own.gw"}));
    ASSERT_TRUE(User({"key", "Return"}));
    EXPECT_TRUE(Recorded("file own.gw in " + folder.string() + "/mine/"));
}

TEST_F(DesktopWindow, ATypedPathCanBeCancelled) {
    ASSERT_TRUE(PressForFile(IGraphics::FileOpen));
    ASSERT_TRUE(DialogIsOpen());
    ASSERT_TRUE(User({"type", "--delay", "0", "/drums/typed.gw"}));
    ASSERT_TRUE(User({"key", "Escape"}));
    EXPECT_TRUE(Recorded("file  in /songs/"));
}

TEST_F(DesktopWindow, SavingToATypedPathAsksBeforeAFileIsReplaced) {
    const fs::path there = folder / "there.fxp";
    std::ofstream(there) << "something";
    ASSERT_TRUE(PressForFile(IGraphics::FileSave));
    ASSERT_TRUE(DialogIsOpen());
    const auto asking = host.ChildrenOf(host.Editors().front()).front();
    ASSERT_TRUE(User({"type", "--delay", "0", there.string()}));
    ASSERT_TRUE(User({"key", "Return"}));
    ASSERT_TRUE(Eventually([&] {
        const auto children = host.ChildrenOf(host.Editors().front());
        return children.size() == 1 && children.front() != asking && host.Focus() == children.front();
    }));
    ASSERT_TRUE(User({"key", "Return"}));
    EXPECT_TRUE(Recorded("file there.fxp in " + folder.string() + "/"));
}

TEST_F(DesktopWindow, TheEditorTicksWhileADialogIsOpen) {
    MakeProgram("zenity",
                "while [ ! -e " + (folder / "go").string() + " ]; do sleep 0.01; done; echo /a/b.gw");
    ASSERT_TRUE(PressForFile(IGraphics::FileOpen));
    ASSERT_TRUE(Eventually([&] { return fs::exists(Words("zenity")); }));
    EXPECT_TRUE(Ticks(3));
    const int downs = record.CountOf("down");
    ASSERT_TRUE(User({"click", "1"}));
    EXPECT_TRUE(Ticks(3));
    EXPECT_EQ(record.CountOf("down"), downs);
    std::ofstream(folder / "go") << "go";
    EXPECT_TRUE(Recorded("file b.gw in /a/"));
}

TEST_F(DesktopWindow, ClosingTheEditorEndsTheDialogsProgram) {
    MakeProgram("zenity", "echo $$ > " + (folder / "pid").string() + "; while true; do sleep 0.01; done");
    ASSERT_TRUE(PressForFile(IGraphics::FileOpen));
    int pid = 0;
    ASSERT_TRUE(Eventually([&] { return static_cast<bool>(std::ifstream(folder / "pid") >> pid); }));
    graphics->CloseWindow();
    EXPECT_TRUE(record.Has("file  in /songs/"));
    EXPECT_FALSE(fs::exists("/proc/" + std::to_string(pid)));
}

TEST_F(DesktopWindow, ADialogsProgramGetsNoFileOfTheHost) {
    const int ofHost = open("/dev/null", O_RDONLY); // NOLINT(android-cloexec-open): a host that does not care
    ASSERT_GT(ofHost, 2);
    const fs::path list = folder / "open";
    MakeProgram("zenity",
                "found=; for n in $(seq 3 200); do [ -e /proc/$$/fd/$n ] && found=\"$found $n\"; done\n"
                "echo \"found:$found\" > " +
                    list.string() + "; exit 1");
    ASSERT_TRUE(PressForFile(IGraphics::FileOpen));
    EXPECT_TRUE(Recorded("file  in /songs/"));
    close(ofHost);
    std::ifstream file(list);
    std::string line;
    EXPECT_TRUE(std::getline(file, line));
    EXPECT_EQ(line, "found:");
}

TEST_F(DesktopWindow, OfTwoEditorsThatWaitEachCanBeClosedFirst) {
    MakeProgram("zenity", "while true; do sleep 0.01; done");
    Record above;
    IPopupMenu menu;
    menu.AddItem("Row");
    auto other = MakeGraphics(plug, kWidth, kHeight);
    auto opener = std::make_unique<RecordingControl>(&plug, IRECT(0, 0, kWidth, kHeight), above);
    opener->onDown = [&](RecordingControl&) {
        const bool chosen = other->CreateIPopupMenu(menu, IRECT(0, 0, 10, 10)) != nullptr;
        above.Add(chosen ? "something" : "nothing");
    };
    other->AttachControl(std::move(opener));
    HostWindow otherHost(800, 600, kWidth, kHeight);
    const auto openMenu = [&] {
        above.Clear();
        return other->OpenWindow(otherHost.Parent()) && User(MoveTo(900, 700)) && User({"click", "1"}) &&
               Eventually([&] { return host.Popups().size() == 1; });
    };
    ASSERT_TRUE(PressForFile(IGraphics::FileOpen));
    ASSERT_TRUE(Eventually([&] { return fs::exists(Words("zenity")); }));
    // The one that waits on top.
    ASSERT_TRUE(openMenu());
    other->CloseWindow();
    EXPECT_TRUE(above.Has("nothing"));
    EXPECT_TRUE(Ticks(2));
    EXPECT_EQ(record.CountOf("file"), 0);
    // The one below, which cannot go on before the menu on top has ended.
    ASSERT_TRUE(openMenu());
    graphics->CloseWindow();
    EXPECT_TRUE(above.Has("nothing"));
    EXPECT_TRUE(record.Has("file  in /songs/"));
    EXPECT_TRUE(host.Popups().empty());
    above.Clear();
    EXPECT_TRUE(Eventually([&] { return above.CountOf("tick") >= 2; }));
    other->CloseWindow();
}

TEST_F(DesktopWindow, AColorIsChosenThroughTheDesktopsDialog) {
    MakeProgram("zenity", "echo 'rgb(12,200,255)'");
    ASSERT_TRUE(Press([this] {
        IColor color(255, 1, 2, 3);
        const bool chosen = graphics->PromptForColor(color, "Colour of the wave");
        record.Add("colour " + std::to_string(chosen) + " " + std::to_string(color.R) + " " +
                   std::to_string(color.G) + " " + std::to_string(color.B));
    }));
    EXPECT_TRUE(Recorded("colour 1 12 200 255"));
    EXPECT_NE(WordsOf("zenity").find("--color=#010203\n"), std::string::npos);
}

TEST_F(DesktopWindow, WithoutDialogProgramsAColorIsTyped) {
    ASSERT_TRUE(Press([this] {
        IColor color(255, 1, 2, 3);
        const bool chosen = graphics->PromptForColor(color, "Colour of the wave");
        record.Add("colour " + std::to_string(chosen) + " " + std::to_string(color.R) + " " +
                   std::to_string(color.G) + " " + std::to_string(color.B));
    }));
    ASSERT_TRUE(DialogIsOpen());
    ASSERT_TRUE(User({"type", "--delay", "0", "#ff8000"}));
    ASSERT_TRUE(User({"key", "Return"}));
    EXPECT_TRUE(Recorded("colour 1 255 128 0"));
}

TEST_F(DesktopWindow, AddressesAreOpenedByTheDesktop) {
    MakeProgram("xdg-open", "");
    fs::create_symlink("/usr/bin/setsid", folder / "setsid");
    ASSERT_TRUE(Press([this] {
        record.Add("opened " + std::to_string(graphics->OpenURL("https://example.org/a?b=c&d='e'")));
    }));
    EXPECT_TRUE(Recorded("opened 1"));
    EXPECT_TRUE(Eventually([&] { return WordsOf("xdg-open") == "https://example.org/a?b=c&d='e'\n"; }));
}

TEST_F(DesktopWindow, AnOpenerMayWriteForAsLongAsItRuns) {
    const fs::path after = folder / "after";
    MakeProgram("xdg-open", "sleep 0.2; echo still here; echo > " + after.string());
    fs::create_symlink("/usr/bin/setsid", folder / "setsid");
    EXPECT_TRUE(graphics->OpenURL("https://example.org/"));
    EXPECT_TRUE(Eventually([&] { return fs::exists(after); }));
}

TEST_F(DesktopWindow, WhatIsNoAddressOrCannotBeOpenedIsRefused) {
    EXPECT_FALSE(graphics->OpenURL("https://example.org/"));
    MakeProgram("xdg-open", "");
    fs::create_symlink("/usr/bin/setsid", folder / "setsid");
    EXPECT_FALSE(graphics->OpenURL(""));
    EXPECT_FALSE(graphics->OpenURL("--help"));
    EXPECT_FALSE(graphics->OpenURL("file:///etc/passwd"));
    EXPECT_FALSE(graphics->OpenURL("https://example.org/\nsecond"));
    EXPECT_FALSE(fs::exists(Words("xdg-open")));
}

TEST_F(DesktopWindow, AMessageBoxIsAnsweredByKeys) {
    const auto ask = [this](int type) {
        return Press([this, type] {
            record.Clear();
            record.Add("answer " + std::to_string(graphics->ShowMessageBox("Really?", "Question", type)));
        });
    };
    const std::array<std::tuple<int, std::vector<std::string>, int>, 8> cases = {{
        {0, {"key", "Return"}, 1},
        {0, {"key", "Escape"}, 1},
        {1, {"key", "Tab", "Return"}, 2},
        {1, {"key", "Escape"}, 2},
        {3, {"key", "Right", "Return"}, 7},
        {3, {"key", "Left", "space"}, 2},
        {4, {"key", "Return"}, 6},
        {4, {"key", "Escape"}, 7},
    }};
    for (const auto& [type, keys, answer] : cases) {
        ASSERT_TRUE(ask(type));
        ASSERT_TRUE(DialogIsOpen());
        ASSERT_TRUE(User(keys));
        EXPECT_TRUE(Recorded("answer " + std::to_string(answer))) << type;
    }
}

TEST_F(DesktopWindow, AMessageBoxIsAnsweredByTheMouse) {
    ASSERT_TRUE(Press([this] {
        record.Add("answer " + std::to_string(graphics->ShowMessageBox("Really?", "Question", 4)));
    }));
    ASSERT_TRUE(DialogIsOpen());
    // Of the two buttons the right one is "No".
    ASSERT_TRUE(ClickFromCorner(16 + 40, 16 + 13));
    EXPECT_TRUE(Recorded("answer 7"));
}

TEST_F(DesktopWindow, ClosingTheEditorAnswersAMessageBox) {
    ASSERT_TRUE(Press([this] {
        record.Add("answer " + std::to_string(graphics->ShowMessageBox("Really?", "Question", 3)));
    }));
    ASSERT_TRUE(DialogIsOpen());
    graphics->CloseWindow();
    EXPECT_TRUE(record.Has("answer 2"));
}

TEST_F(DesktopWindow, WithoutAWindowNothingIsAskedAndNothingWaits) {
    EXPECT_EQ(graphics->ShowMessageBox("Really?", "Question", 4), 7);
    std::string file = "a.fxp";
    std::string dir = "/songs/";
    graphics->PromptForFile(file, dir, IGraphics::FileOpen, "fxp");
    EXPECT_EQ(file, "");
    IColor color(255, 1, 2, 3);
    EXPECT_FALSE(graphics->PromptForColor(color, "Colour"));
    IPopupMenu menu;
    menu.AddItem("Row");
    EXPECT_EQ(graphics->CreateIPopupMenu(menu, IRECT(0, 0, 10, 10)), nullptr);
    EXPECT_EQ(color, IColor(255, 1, 2, 3));
}

TEST_F(DesktopWindow, FoldersEndWithASeparator) {
    EXPECT_EQ(graphics->DesktopPath(), folder.string() + "/Desktop/");
    EXPECT_EQ(graphics->AppSupportPath(false), folder.string() + "/.config/");
    fs::create_directory(folder / ".config");
    std::ofstream(folder / ".config/user-dirs.dirs") << "# mine\nXDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n";
    EXPECT_EQ(graphics->DesktopPath(), folder.string() + "/Schreibtisch/");
    setenv("XDG_CONFIG_HOME", "/elsewhere", 1);
    EXPECT_EQ(graphics->AppSupportPath(false), "/elsewhere/");
    setenv("XDG_CONFIG_DIRS", "/first:/second", 1);
    EXPECT_EQ(graphics->AppSupportPath(true), "/first/");
    unsetenv("XDG_CONFIG_DIRS");
    EXPECT_EQ(graphics->AppSupportPath(true), "/etc/xdg/");
    const std::string program = fs::read_symlink("/proc/self/exe").parent_path().string() + "/";
    EXPECT_EQ(graphics->HostPath(), program);
    EXPECT_EQ(fs::canonical(graphics->PluginPath() + ".").string() + "/", program);
}

} // namespace Grimworks
