#include "tests/plugin/HostileModel.h"

#include "core/FileBytes.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <random>

#ifndef _WIN32
#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace Grimworks::Testing {
namespace {

namespace fs = std::filesystem;

/// A folder with an instrument that has something else to say than the files that lie there.
class HostileWrite : public testing::Test {
protected:
    HostileWrite()
        : folder(fs::path(testing::TempDir()) /
                 ("thudforge-write-" + std::to_string(std::random_device{}()))),
          plug(nullptr) {
        fs::create_directories(folder);
    }
    ~HostileWrite() override {
        std::error_code error;
        fs::remove_all(folder, error);
    }

    [[nodiscard]] std::string Path(const std::string& name) const { return (folder / name).string(); }
    [[nodiscard]] auto FilesInFolder() const {
        return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
    }

    static Bytes Content(const std::string& path) {
        Bytes bytes;
        EXPECT_TRUE(ReadFileBytes(path, bytes)) << path;
        return bytes;
    }

    /// Saves one program and then makes another one the current one.
    Bytes SaveOld(const std::string& path) {
        EXPECT_TRUE(plug.RestorePreset(5));
        EXPECT_TRUE(plug.SaveProgram(path));
        EXPECT_TRUE(plug.RestorePreset(36));
        return Content(path);
    }

    fs::path folder;
    ThudForge plug;
};

TEST_F(HostileWrite, WithoutAFolderNothingIsWritten) {
    const Bytes before = StateOf(plug);
    SaveOld(Path("file.txt"));
    for (const char* name : {"none/p.fxp", "none/p.txt", "file.txt/p.fxp", "file.txt/p.txt"})
        EXPECT_FALSE(plug.SaveProgram(Path(name))) << name;
    EXPECT_EQ(FilesInFolder(), 1);
    ASSERT_TRUE(plug.RestorePreset(0));
    EXPECT_EQ(StateOf(plug), before);
}

TEST_F(HostileWrite, AFolderInThePlaceOfTheFileStays) {
    for (const char* name : {"p.fxp", "p.txt"}) {
        fs::create_directories(folder / name);
        SaveOld(Path(std::string(name) + "/kept"));
        EXPECT_FALSE(plug.SaveProgram(Path(name)));
        EXPECT_TRUE(fs::is_directory(folder / name));
        EXPECT_TRUE(fs::exists(folder / name / "kept"));
    }
    EXPECT_EQ(FilesInFolder(), 2);
}

#ifndef _WIN32

TEST_F(HostileWrite, WithoutRoomForANameBesideItTheOldFileIsWhole) {
    for (const char* ending : {".fxp", ".txt"}) {
        const std::string path = Path(std::string(250, 'n') + ending);
        // Too long for a second name beside it, so the old file comes from elsewhere.
        const Bytes old = SaveOld(Path("short"));
        fs::rename(Path("short"), path);
        EXPECT_FALSE(plug.SaveProgram(path));
        EXPECT_EQ(Content(path), old);
    }
    EXPECT_EQ(FilesInFolder(), 2);
}

/// What a file may grow to; more is as if the device were full, or ends the process in the middle of it.
class FileSizeLimit {
public:
    FileSizeLimit(rlim_t bytes, void (*action)(int)) : handler(std::signal(SIGXFSZ, action)) {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit before{};
    void (*handler)(int);
};

TEST_F(HostileWrite, OnAFullDeviceTheOldFileIsWholeAndNothingIsLeftBeside) {
    for (const char* name : {"p.fxp", "p.txt"}) {
        const Bytes old = SaveOld(Path(name));
        for (const rlim_t room : {0U, 1U, 60U, 4096U, 5439U}) {
            bool saved = true;
            {
                const FileSizeLimit full(room, SIG_IGN);
                saved = plug.SaveProgram(Path(name));
            }
            EXPECT_FALSE(saved) << name << " " << room;
            EXPECT_EQ(Content(Path(name)), old) << name << " " << room;
        }
    }
    EXPECT_EQ(FilesInFolder(), 2);
    ASSERT_TRUE(plug.SaveProgram(Path("p.fxp")));
    EXPECT_EQ(Content(Path("p.fxp")).size(), 5440U) << "and with room again it is written";
}

TEST_F(HostileWrite, WhenTheProcessEndsWhileItWritesTheOldFileIsWhole) {
    for (const char* name : {"p.fxp", "p.txt"}) {
        const Bytes old = SaveOld(Path(name));
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            const rlimit noDump{0, 0};
            setrlimit(RLIMIT_CORE, &noDump);
            const FileSizeLimit sudden(1000, SIG_DFL);
            const bool saved = plug.SaveProgram(Path(name));
            _exit(saved ? 1 : 0);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status)) << name;
        EXPECT_EQ(WTERMSIG(status), SIGXFSZ);
        EXPECT_EQ(Content(Path(name)), old) << name;
        EXPECT_TRUE(plug.LoadProgram(Path(name)));
    }
}

#endif

} // namespace
} // namespace Grimworks::Testing
