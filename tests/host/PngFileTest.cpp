#include "host/PngFile.h"

#include "host/HostError.h"
#include "tests/host/PngPicture.h"
#include "tests/host/TempFolder.h"

#include <gtest/gtest.h>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

Picture Checkers(int width, int height) {
    Picture picture{width, height, {}};
    for (int i = 0; i < width * height * 3; ++i)
        picture.pixels.push_back(static_cast<std::uint8_t>(i * 37));
    return picture;
}

std::string FaultOf(const std::filesystem::path& path) {
    try {
        SavePng(Checkers(2, 2), path);
    } catch (const HostError& fault) {
        return fault.what();
    }
    return {};
}

} // namespace

TEST(PngFile, EveryPixelComesBack) {
    const TempFolder folder("png");
    const Picture picture = Checkers(13, 7);
    SavePng(picture, folder.Path("a.png"));
    const Picture read = LoadPicture(folder.Path("a.png"));
    EXPECT_EQ(read.width, 13);
    EXPECT_EQ(read.height, 7);
    EXPECT_EQ(read.pixels, picture.pixels);
}

TEST(PngFile, AnOlderFileIsReplacedAndNothingElseIsLeft) {
    const TempFolder folder("png");
    const auto path = folder.Write("a.png", {1, 2, 3});
    SavePng(Checkers(3, 3), path);
    EXPECT_EQ(LoadPicture(path).width, 3);
    EXPECT_EQ(folder.Names(), (std::set<std::string>{"a.png"}));
}

TEST(PngFile, AFileThatCannotBeIsRefusedByName) {
    const TempFolder folder("png");
    EXPECT_NE(FaultOf(folder.Path("none") / "a.png").find("a.png"), std::string::npos);
    std::filesystem::create_directories(folder.Path("dir.png") / "full");
    EXPECT_NE(FaultOf(folder.Path("dir.png")).find("dir.png"), std::string::npos);
    EXPECT_EQ(folder.Names(), (std::set<std::string>{"dir.png"}));
}

TEST(PngFile, NamesInAnyAlphabetAreWritten) {
    const TempFolder folder("png");
    SavePng(Checkers(1, 1), folder.Path("") / PathFromText("\xd0\xba\xd1\x96\xd0\xba.png"));
    EXPECT_EQ(folder.Names(), (std::set<std::string>{"\xd0\xba\xd1\x96\xd0\xba.png"}));
}
