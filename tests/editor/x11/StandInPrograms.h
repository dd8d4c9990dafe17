#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace Grimworks {

/// A folder that takes the place of PATH and HOME while this lives, for programs that stand in for those of a
/// desktop. Each writes down its words.
class StandInPrograms {
public:
    StandInPrograms() {
        std::string name = (std::filesystem::temp_directory_path() / "thudforge-desktop-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) return;
        folder = name;
        const char* const path = std::getenv("PATH");
        pathBefore = path != nullptr ? path : "";
        setenv("PATH", folder.c_str(), 1);
        setenv("HOME", folder.c_str(), 1);
        unsetenv("XDG_CURRENT_DESKTOP");
        unsetenv("XDG_CONFIG_HOME");
    }
    ~StandInPrograms() {
        if (folder.empty()) return;
        setenv("PATH", pathBefore.c_str(), 1);
        std::filesystem::remove_all(folder);
    }
    StandInPrograms(const StandInPrograms&) = delete;
    StandInPrograms& operator=(const StandInPrograms&) = delete;

    /// Empty if it could not be made.
    [[nodiscard]] const std::filesystem::path& Folder() const { return folder; }

    /// Makes a program of lines for the shell.
    void Make(const std::string& name, const std::string& lines) const {
        std::ofstream file(folder / name);
        file << "#!/bin/bash\nPATH=/usr/bin:/bin\nprintf '%s\\n' \"$@\" > " << Words(name).string() << "\n"
             << lines << "\n";
        file.close();
        std::filesystem::permissions(folder / name, std::filesystem::perms::owner_all);
    }

    /// Where a program writes down its words, and what stands there.
    [[nodiscard]] std::filesystem::path Words(const std::string& program) const {
        return folder / (program + ".words");
    }
    [[nodiscard]] std::string WordsOf(const std::string& program) const {
        std::ifstream file(Words(program));
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::filesystem::path folder;
    std::string pathBefore;
};

} // namespace Grimworks
