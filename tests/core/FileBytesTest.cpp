#include "core/FileBytes.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace Grimworks {
namespace {

namespace fs = std::filesystem;

class FileBytes : public ::testing::Test {
protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        folder = fs::path(::testing::TempDir()) / (std::string("thudforge-bytes-") + info->name());
        fs::remove_all(folder);
        fs::create_directories(folder);
    }
    void TearDown() override { fs::remove_all(folder); }

    [[nodiscard]] std::string In(const std::string& name) const { return (folder / name).string(); }

    [[nodiscard]] int EntryCount() const {
        return static_cast<int>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }

    fs::path folder;
    std::vector<std::uint8_t> bytes;
};

TEST_F(FileBytes, WhatIsWrittenIsReadBack) {
    const std::vector<std::uint8_t> wanted{0, 1, 255, 10, 13, 26, 0};
    ASSERT_TRUE(WriteFileBytes(In("a.bin"), wanted));
    ASSERT_TRUE(ReadFileBytes(In("a.bin"), bytes));
    EXPECT_EQ(bytes, wanted);
    EXPECT_EQ(EntryCount(), 1) << "the part file is gone";
}

TEST_F(FileBytes, AnEmptyFileIsAFile) {
    ASSERT_TRUE(WriteFileBytes(In("empty"), {}));
    bytes = {1, 2};
    EXPECT_TRUE(ReadFileBytes(In("empty"), bytes));
    EXPECT_TRUE(bytes.empty());
}

TEST_F(FileBytes, ALongerOldFileIsReplacedWhole) {
    ASSERT_TRUE(WriteFileBytes(In("a"), std::vector<std::uint8_t>(1000, 7)));
    ASSERT_TRUE(WriteFileBytes(In("a"), std::vector<std::uint8_t>(3, 9)));
    ASSERT_TRUE(ReadFileBytes(In("a"), bytes));
    EXPECT_EQ(bytes, (std::vector<std::uint8_t>{9, 9, 9}));
}

TEST_F(FileBytes, MissingFileFolderAndEmptyPathAreRefused) {
    bytes = {1};
    EXPECT_FALSE(ReadFileBytes(In("none"), bytes));
    EXPECT_TRUE(bytes.empty());
    EXPECT_FALSE(ReadFileBytes(folder.string(), bytes));
    EXPECT_FALSE(ReadFileBytes("", bytes));
    EXPECT_FALSE(WriteFileBytes("", bytes));
    EXPECT_FALSE(WriteFileBytes(In("no/such/folder/a"), bytes));
    EXPECT_FALSE(WriteFileBytes(folder.string(), bytes));
    EXPECT_TRUE(fs::is_directory(folder));
}

TEST_F(FileBytes, AFileAboveTheLimitIsRefused) {
    ASSERT_TRUE(WriteFileBytes(In("a"), std::vector<std::uint8_t>(11, 1)));
    EXPECT_FALSE(ReadFileBytes(In("a"), bytes, 10));
    EXPECT_TRUE(bytes.empty());
    EXPECT_TRUE(ReadFileBytes(In("a"), bytes, 11));
}

TEST_F(FileBytes, NamesAreUtf8OnEverySystem) {
    const std::string name = folder.string() + "/k\xC3\xAF"
                                               "ck \xE2\x82\xAC";
    ASSERT_TRUE(WriteFileBytes(name, std::vector<std::uint8_t>{1, 2}));
    EXPECT_TRUE(fs::exists(folder / fs::path(u8"k\u00EFck \u20AC")));
    ASSERT_TRUE(ReadFileBytes(name, bytes));
    EXPECT_EQ(bytes, (std::vector<std::uint8_t>{1, 2}));
}

TEST_F(FileBytes, ANameThatIsNoUtf8FindsItsFileAgain) {
    const std::string name = folder.string() + "/k\xEFlck";
    ASSERT_TRUE(WriteFileBytes(name, std::vector<std::uint8_t>{3}));
    ASSERT_TRUE(ReadFileBytes(name, bytes));
    EXPECT_EQ(bytes, std::vector<std::uint8_t>{3});
}

#ifndef _WIN32
TEST_F(FileBytes, ALinkKeepsPointingAtTheFileThatIsReplaced) {
    ASSERT_TRUE(WriteFileBytes(In("real"), std::vector<std::uint8_t>{1}));
    fs::create_symlink(In("real"), In("link"));
    ASSERT_TRUE(WriteFileBytes(In("link"), std::vector<std::uint8_t>{2}));
    EXPECT_TRUE(fs::is_symlink(In("link")));
    ASSERT_TRUE(ReadFileBytes(In("real"), bytes));
    EXPECT_EQ(bytes, std::vector<std::uint8_t>{2});
}

TEST_F(FileBytes, TheOldFilesPermissionsStay) {
    ASSERT_TRUE(WriteFileBytes(In("a"), std::vector<std::uint8_t>{1}));
    const fs::perms mine = fs::perms::owner_read | fs::perms::owner_write;
    fs::permissions(In("a"), mine);
    ASSERT_TRUE(WriteFileBytes(In("a"), std::vector<std::uint8_t>{2}));
    EXPECT_EQ(fs::status(In("a")).permissions(), mine);
}

TEST_F(FileBytes, ADeviceIsNeverReplaced) {
    EXPECT_FALSE(WriteFileBytes("/dev/null", std::vector<std::uint8_t>{1}));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}
#endif

} // namespace
} // namespace Grimworks
