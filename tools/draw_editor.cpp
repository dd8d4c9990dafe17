// Draws the pages of the editor without a window, each into a PNG file of a folder:
//
//     build/release/tools/draw_editor out [PROGRAM]
//
// PROGRAM counts from 1. A note is played before, so that scope and levels have something to show.

#include "editor/IGraphics.h"
#include "editor/LICE_Png.h"
#include "editor/thudforge/Layout.h"
#include "editor/thudforge/ThudForgeEditor.h"
#include "plugin/ThudForge.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace Grimworks {
namespace {

/// Graphics that nobody looks at and nobody answers.
class PaperGraphics final : public IGraphics {
public:
    using IGraphics::IGraphics;

    void ForceEndUserEdit() override {}
    void DrawScreen(const IRECT& /*rect*/) override {}
    int ShowMessageBox(const std::string&, const std::string&, int) override { return 2; }
    IPopupMenu* CreateIPopupMenu(IPopupMenu&, const IRECT&) override { return nullptr; }
    void CreateTextEntry(IControl&, const IText&, const IRECT&, const std::string&, const IParam*) override {}
    std::string HostPath() override { return {}; }
    std::string PluginPath() override { return {}; }
    std::string DesktopPath() override { return {}; }
    std::string AppSupportPath(bool) override { return {}; }
    void PromptForFile(std::string& file, std::string&, int, const std::string&) override { file.clear(); }
    bool PromptForColor(IColor&, const std::string&) override { return false; }
    bool OpenURL(const std::string&) override { return false; }
    bool OpenWindow(void*) override { return false; }
    void CloseWindow() override {}
    void* GetWindow() override { return nullptr; }
    bool WindowIsOpen() override { return false; }
    void HideMouseCursor() override {}
    void ShowMouseCursor() override {}
};

constexpr int kNote = 36;

/// Plays a second of one note.
void Play(ThudForge& instrument) {
    constexpr int kFrames = 512;
    constexpr int kBlocks = 90;
    std::array<double, kFrames> left{};
    std::array<double, kFrames> right{};
    std::array<double*, 2> outputs{left.data(), right.data()};
    instrument.playRequest.Post(kNote, 2);
    for (int block = 0; block < kBlocks; ++block) {
        const PlugLockGuard guard(instrument.Lock());
        instrument.ProcessDoubleReplacing(nullptr, outputs.data(), kFrames);
    }
}

bool Save(LICE_IBitmap& bitmap, const std::filesystem::path& path) {
    std::vector<std::uint8_t> file;
    if (!SavePngToMemory(bitmap, file)) return false;
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(file.data()), static_cast<std::streamsize>(file.size()));
    return out.good();
}

int DrawPages(const std::filesystem::path& folder, int program) {
    ThudForge instrument(nullptr);
    PaperGraphics graphics(instrument, kEditorWidth, kEditorHeight);
    const ThudForgeEditor editor(instrument, graphics);
    instrument.AttachGraphics(&graphics);
    instrument.Reset();
    instrument.RestorePreset(program - 1);
    instrument.RedrawParamControls();
    std::filesystem::create_directories(folder);
    constexpr std::array<const char*, 3> kNames{"synth.png", "scope.png", "about.png"};
    for (int page = 0; page < 3; ++page) {
        instrument.SelectPage(page);
        Play(instrument);
        graphics.Tick();
        graphics.SetAllControlsDirty();
        graphics.Draw(IRECT(0, 0, kEditorWidth, kEditorHeight));
        const std::filesystem::path path = folder / kNames.at(static_cast<std::size_t>(page));
        if (!Save(graphics.DrawBuffer(), path)) {
            std::fprintf(stderr, "cannot write %s\n", path.c_str());
            return 1;
        }
        std::printf("%s\n", path.c_str());
    }
    instrument.AttachGraphics(nullptr);
    return 0;
}

} // namespace
} // namespace Grimworks

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3) {
        std::fprintf(stderr, "usage: %s FOLDER [PROGRAM]\n", argv[0]);
        return 2;
    }
    return Grimworks::DrawPages(argv[1], argc > 2 ? std::atoi(argv[2]) : 1);
}
