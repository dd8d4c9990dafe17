/// Draws the editor's bitmaps.
///
///     draw_artwork PROJECT-FOLDER             draws all files below resources/img/grimworks/
///     draw_artwork PROJECT-FOLDER ID...       only these
///     draw_artwork PROJECT-FOLDER --mock OUT  draws the pages with sample values into OUT-synth.png and so
///     on

#include "tools/artwork/Catalog.h"
#include "tools/artwork/Mock.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace {

void DrawAll(const std::string& root, const std::set<int>& only) {
    std::set<std::string> done; // two ids may share a file
    for (const Artwork::BitmapRow& row : Artwork::BitmapRows()) {
        if (!only.empty() && only.count(row.id) == 0) continue;
        if (!done.insert(row.file).second) continue;
        const std::filesystem::path path = root + "/resources/img/grimworks/" + row.file;
        std::filesystem::create_directories(path.parent_path());
        const Artwork::Canvas canvas = Artwork::DrawBitmap(row.id);
        if (!Artwork::WritePng(canvas, path.string()))
            throw std::runtime_error("cannot write " + path.string());
        std::printf("%5d %-50s %5d x %5d %8ju bytes\n", row.id, row.file.c_str(), canvas.Width(),
                    canvas.Height(), static_cast<std::uintmax_t>(std::filesystem::file_size(path)));
        std::fflush(stdout);
    }
}

void DrawMocks(const std::string& name) {
    using Grimworks::Page;
    Artwork::WritePng(Artwork::MockPage(Page::Synth, false), name + "-synth.png");
    Artwork::WritePng(Artwork::MockPage(Page::Synth, true), name + "-extreme.png");
    Artwork::WritePng(Artwork::MockPage(Page::Scope, false), name + "-scope.png");
    Artwork::WritePng(Artwork::MockPage(Page::About, false), name + "-about.png");
}

int Run(const std::vector<std::string>& arguments) {
    if (arguments.empty()) {
        std::fputs("usage: draw_artwork PROJECT-FOLDER [ID... | --mock OUT]\n", stderr);
        return 2;
    }
    Artwork::LoadFonts(arguments[0] + "/resources/fonts");
    if (arguments.size() == 3 && arguments[1] == "--mock") {
        DrawMocks(arguments[2]);
        return 0;
    }
    std::set<int> only;
    for (std::size_t i = 1; i < arguments.size(); ++i)
        only.insert(std::stoi(arguments[i]));
    DrawAll(arguments[0], only);
    return 0;
}

} // namespace

int main(int count, char** arguments) {
    try {
        return Run({arguments + 1, arguments + count});
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
