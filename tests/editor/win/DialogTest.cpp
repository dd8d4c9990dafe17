#include "core/FileBytes.h"
#include "tests/editor/win/EditorWindow.h"

#include <filesystem>
#include <fstream>

namespace Grimworks {

namespace {

constexpr const char* kDialogClass = "#32770";

/// Dialogs that are answered from the editor's ticks, which go on behind them.
class DialogWindow : public EditorWindow {
protected:
    /// What the user does, once, when a dialog is there. `opens` opens it and comes back when it is over.
    void Answer(std::function<void(HWND)> act, const std::function<void()>& opens) {
        bool acted = false;
        int ticks = 0;
        control->onTick = [&, answer = std::move(act)](RecordingControl&) {
            constexpr int kMostTicks = 250;
            HWND dialog = FindShown(kDialogClass);
            if (++ticks == kMostTicks) {
                std::array<char, 200> text{};
                GetDlgItemTextA(dialog, -1, text.data(), static_cast<int>(text.size()));
                std::array<char, 200> title{};
                GetWindowTextA(dialog, title.data(), static_cast<int>(title.size()));
                ADD_FAILURE() << "the dialog stays: " << title.data() << ": " << text.data();
                while ((dialog = FindShown(kDialogClass)) != nullptr)
                    EndDialog(dialog, IDCANCEL);
            }
            if (acted || dialog == nullptr) return;
            acted = true;
            answer(dialog);
        };
        opens();
        EXPECT_TRUE(acted);
        control->onTick = nullptr;
        EXPECT_TRUE(PumpUntil([] { return FindShown(kDialogClass) == nullptr; }));
    }

    static void Press(HWND dialog, int button) {
        PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
    }

    /// The dialog's box for the file's name, filled.
    static void Name(HWND dialog, const std::string& path) {
        constexpr int kNameBox = 0x480;    // an edit box in older dialogs
        constexpr int kNameChoice = 0x47C; // one with a list in newer ones
        HWND box = GetDlgItem(dialog, kNameBox);
        if (box == nullptr) box = GetDlgItem(dialog, kNameChoice);
        ASSERT_NE(box, nullptr);
        SendMessageA(box, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
    }

    std::string file;
    std::string dir;
};

/// A file in the folder for temporary ones, gone at the end.
struct TemporaryFile {
    explicit TemporaryFile(const std::string& name)
        : path(std::filesystem::temp_directory_path().string() + name) {
        std::ofstream(path) << "text";
    }
    ~TemporaryFile() { std::remove(path.c_str()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    std::string path; ///< in the system's code page
};

} // namespace

TEST_F(DialogWindow, AFileIsChosenToOpen) {
    const TemporaryFile there("thudforge-choice.gw");
    Answer(
        [&](HWND dialog) {
            Name(dialog, there.path);
            Press(dialog, IDOK);
        },
        [&] { graphics.PromptForFile(file, dir, IGraphics::FileOpen, "gw tgp fxp"); });
    EXPECT_EQ(file, "thudforge-choice.gw");
    EXPECT_TRUE(dir.ends_with("\\")) << dir;
    EXPECT_TRUE(std::filesystem::equivalent(dir + file, there.path)) << dir;
}

TEST_F(DialogWindow, AFileWithALetterBeyondAsciiIsToldInUtf8) {
    const TemporaryFile there("thudforge-k\xEFlck.gw"); // as the system of these tests has its letters
    Answer(
        [&](HWND dialog) {
            Name(dialog, there.path);
            Press(dialog, IDOK);
        },
        [&] { graphics.PromptForFile(file, dir, IGraphics::FileOpen, "gw"); });
    EXPECT_EQ(file, "thudforge-k\xC3\xAFlck.gw");
    std::vector<std::uint8_t> bytes;
    EXPECT_TRUE(ReadFileBytes(dir + file, bytes));
    EXPECT_EQ(bytes.size(), 4U);
    // Offered again, it is chosen as it stands.
    Answer([&](HWND dialog) { Press(dialog, IDOK); },
           [&] { graphics.PromptForFile(file, dir, IGraphics::FileOpen, "gw"); });
    EXPECT_EQ(file, "thudforge-k\xC3\xAFlck.gw");
}

TEST_F(DialogWindow, ACancelledFileDialogChoosesNothing) {
    file = "preset.fxp";
    Answer([](HWND) { PressKey(VK_ESCAPE); },
           [&] { graphics.PromptForFile(file, dir, IGraphics::FileOpen, "gw tgp fxp"); });
    EXPECT_EQ(file, "");
}

TEST_F(DialogWindow, ASavedFileGetsTheFirstExtension) {
    dir = std::filesystem::temp_directory_path().string();
    file = "a|b?";
    Answer(
        [&](HWND dialog) {
            Name(dialog, dir + "thudforge-new");
            Press(dialog, IDOK);
        },
        [&] { graphics.PromptForFile(file, dir, IGraphics::FileSave, "fxp txt"); });
    EXPECT_EQ(file, "thudforge-new.fxp");
}

TEST_F(DialogWindow, AFileDialogLeavesTheCurrentFolder) {
    const TemporaryFile there("thudforge-choice.gw");
    const auto before = std::filesystem::current_path();
    Answer(
        [&](HWND dialog) {
            Name(dialog, there.path);
            Press(dialog, IDOK);
        },
        [&] { graphics.PromptForFile(file, dir, IGraphics::FileOpen, "gw"); });
    EXPECT_EQ(std::filesystem::current_path(), before);
}

TEST_F(DialogWindow, TheHostMayCloseTheEditorBehindAFileDialog) {
    file = "preset.fxp";
    Answer([&](HWND) { graphics.CloseWindow(); },
           [&] { graphics.PromptForFile(file, dir, IGraphics::FileOpen, "gw"); });
    EXPECT_FALSE(graphics.WindowIsOpen());
    EXPECT_EQ(file, "");
}

TEST_F(DialogWindow, WithoutAWindowNoFileIsChosen) {
    graphics.CloseWindow();
    file = "preset.fxp";
    graphics.PromptForFile(file, dir, IGraphics::FileOpen, "gw");
    EXPECT_EQ(file, "");
}

TEST_F(DialogWindow, AMessageBoxTellsTheAnswer) {
    int answer = 0;
    Answer([](HWND dialog) { Press(dialog, IDNO); },
           [&] { answer = graphics.ShowMessageBox("Overwrite it?", "ThudForge", MB_YESNO); });
    EXPECT_EQ(answer, IDNO);
    Answer(
        [&](HWND dialog) {
            EXPECT_EQ(::GetWindow(dialog, GW_OWNER), host.Window());
            Press(dialog, IDOK);
        },
        [&] { answer = graphics.ShowMessageBox("Done", "ThudForge", MB_OK); });
    EXPECT_EQ(answer, IDOK);
}

TEST_F(DialogWindow, TheHostMayCloseTheEditorBehindAMessageBox) {
    int answer = 0;
    Answer([&](HWND) { graphics.CloseWindow(); },
           [&] { answer = graphics.ShowMessageBox("Overwrite it?", "ThudForge", MB_YESNOCANCEL); });
    EXPECT_EQ(answer, IDCANCEL);
    EXPECT_FALSE(graphics.WindowIsOpen());
}

TEST_F(DialogWindow, AColourIsChosenOrLeft) {
    IColor color{200, 12, 34, 56};
    bool chosen = false;
    Answer([](HWND dialog) { Press(dialog, IDOK); },
           [&] { chosen = graphics.PromptForColor(color, "Colour"); });
    EXPECT_TRUE(chosen);
    EXPECT_EQ(color, IColor(200, 12, 34, 56)) << "the dialog begins with it";
    Answer([](HWND dialog) { Press(dialog, IDCANCEL); },
           [&] { chosen = graphics.PromptForColor(color, "Colour"); });
    EXPECT_FALSE(chosen);
}

} // namespace Grimworks
