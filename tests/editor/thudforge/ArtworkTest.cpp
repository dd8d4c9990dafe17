#include "editor/thudforge/Layout.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

struct Row {
    int id;
    std::string file;
    int frames;
};

const std::vector<Row>& Rows() {
    static const std::vector<Row> rows{
#define BITMAP(id, file, frames) {id, file, frames},
#include "resources/Bitmaps.inc"
#undef BITMAP
    };
    return rows;
}

std::filesystem::path Folder() {
    return std::filesystem::path(THUDFORGE_SOURCE_DIR) / "resources/img/grimworks";
}

struct Header {
    int width = 0;
    int height = 0;
};

int BigEndian(const std::vector<unsigned char>& bytes, std::size_t at) {
    return (bytes[at] << 24) | (bytes[at + 1] << 16) | (bytes[at + 2] << 8) | bytes[at + 3];
}

/// Size of a PNG file from its header; zeros for anything else.
Header HeaderOf(const std::filesystem::path& path) {
    constexpr std::array<unsigned char, 8> kSignature{0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
    constexpr std::size_t kStart = 24;
    std::ifstream file(path, std::ios::binary);
    std::vector<unsigned char> bytes(kStart);
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(kStart));
    if (!file || !std::equal(kSignature.begin(), kSignature.end(), bytes.begin())) return {};
    if (std::string(bytes.begin() + 12, bytes.begin() + 16) != "IHDR") return {};
    return {BigEndian(bytes, 16), BigEndian(bytes, 20)};
}

Header HeaderOf(int id) {
    for (const Row& row : Rows()) {
        if (row.id == id) return HeaderOf(Folder() / row.file);
    }
    return {};
}

TEST(Artwork, TheTableHasEveryBitmapOnce) {
    EXPECT_EQ(Rows().size(), 108U);
    std::set<int> ids;
    std::map<std::string, int> files;
    for (const Row& row : Rows()) {
        EXPECT_TRUE(ids.insert(row.id).second) << row.id;
        ++files[row.file];
    }
    EXPECT_EQ(files.size(), 107U);
    EXPECT_EQ(files["knobs/GW_Osc_Pitch_Tune_Knob_30px.png"], 2);
}

TEST(Artwork, EveryRowHasItsFileAndEveryFileItsRow) {
    std::set<std::string> named;
    for (const Row& row : Rows()) {
        named.insert(row.file);
        const Header header = HeaderOf(Folder() / row.file);
        EXPECT_GT(header.width, 0) << row.file;
        EXPECT_GT(header.height, 0) << row.file;
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(Folder())) {
        if (!entry.is_regular_file()) continue;
        const std::string name = std::filesystem::relative(entry.path(), Folder()).generic_string();
        EXPECT_EQ(named.count(name), 1U) << name;
    }
}

TEST(Artwork, TheNumberOfFramesOfEveryStripDividesItsHeight) {
    for (const Row& row : Rows()) {
        const Header header = HeaderOf(Folder() / row.file);
        ASSERT_GT(row.frames, 0) << row.file;
        EXPECT_EQ(header.height % row.frames, 0) << row.file;
    }
}

TEST(Artwork, SizesAreThoseOfTheNames) {
    int checked = 0;
    for (const Row& row : Rows()) {
        const Header header = HeaderOf(Folder() / row.file);
        std::smatch match;
        // "_40px": frames of 40 by 40. "_48x40" and "_48px_40px": the whole strip.
        if (std::regex_search(row.file, match, std::regex("_(\\d+)(?:px_|x)(\\d+)(?:px)?\\.png$"))) {
            EXPECT_EQ(header.width, std::stoi(match[1])) << row.file;
            EXPECT_EQ(header.height, std::stoi(match[2])) << row.file;
            ++checked;
        } else if (std::regex_search(row.file, match, std::regex("_(\\d+)px\\.png$"))) {
            EXPECT_EQ(header.width, std::stoi(match[1])) << row.file;
            EXPECT_EQ(header.height, std::stoi(match[1]) * row.frames) << row.file;
            ++checked;
        }
    }
    EXPECT_GT(checked, 70);
    EXPECT_EQ(HeaderOf(Bitmap::FilterKnob).height, 5120);
    EXPECT_EQ(HeaderOf(Bitmap::FillMode).width, 64);
    EXPECT_EQ(HeaderOf(Bitmap::FillMode).height, 75);
    EXPECT_EQ(HeaderOf(Bitmap::InfoDisplay).width, 810);
    EXPECT_EQ(HeaderOf(Bitmap::InfoDisplay).height, 40);
    EXPECT_EQ(HeaderOf(Bitmap::WaveDisplay).width, 1040);
    EXPECT_EQ(HeaderOf(Bitmap::WaveDisplay).height, 360);
}

TEST(Artwork, TheBackgroundsAreAsLargeAsTheWindow) {
    for (const int id : {Bitmap::Background, Bitmap::ControlsBackground}) {
        EXPECT_EQ(HeaderOf(id).width, kEditorWidth);
        EXPECT_EQ(HeaderOf(id).height, kEditorHeight);
    }
}

TEST(Artwork, FramesAreAsLargeAsTheirPlaceInTheLayout) {
    std::map<int, Row> byId;
    for (const Row& row : Rows())
        byId[row.id] = row;
    for (const Panel& panel : EditorPanels()) {
        for (const PlacedControl& control : panel.controls) {
            if (control.bitmap == Bitmap::None) continue;
            ASSERT_EQ(byId.count(control.bitmap), 1U) << control.bitmap;
            const Row& row = byId[control.bitmap];
            const Header header = HeaderOf(Folder() / row.file);
            const int frameHeight = header.height / row.frames;
            EXPECT_EQ(frameHeight, control.rect.H()) << row.file;
            if (control.kind == ControlKind::Fader) {
                EXPECT_LT(header.width, control.rect.W()) << row.file;
            } else {
                EXPECT_EQ(header.width, control.rect.W()) << row.file;
            }
        }
    }
}

TEST(Artwork, EveryBitmapIsPlacedButTheOneKeptForItsId) {
    std::set<int> placed;
    for (const Panel& panel : EditorPanels()) {
        for (const PlacedControl& control : panel.controls)
            placed.insert(control.bitmap);
    }
    const std::set<int> kept{Bitmap::ClipperMode};
    for (const Row& row : Rows())
        EXPECT_NE(placed.count(row.id), kept.count(row.id)) << row.id << " " << row.file;
}

TEST(Artwork, TheFilesTogetherStayBelowSixMegabytes) {
    std::uintmax_t sum = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(Folder())) {
        if (entry.is_regular_file()) sum += entry.file_size();
    }
    EXPECT_GT(sum, 100000U);
    EXPECT_LT(sum, 6U * 1024U * 1024U);
}

} // namespace
} // namespace Grimworks
