#pragma once

#include "host/Files.h"

#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <system_error>
#include <vector>

namespace Grimworks::Testing {

/// A fresh folder that goes away with the test.
class TempFolder {
public:
    explicit TempFolder(const std::string& name)
        : folder(std::filesystem::temp_directory_path() /
                 ("thudforge-" + std::to_string(ProcessNumber()) + "-" + name)) {
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder);
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    [[nodiscard]] std::filesystem::path Path(const std::string& name) const { return folder / name; }

    [[nodiscard]] std::filesystem::path Write(const std::string& name,
                                              const std::vector<std::uint8_t>& bytes) const {
        std::ofstream file(Path(name), std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        return Path(name);
    }

    /// The names of everything that lies in the folder.
    [[nodiscard]] std::set<std::string> Names() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            names.insert(TextFromPath(entry.path().filename()));
        }
        return names;
    }

private:
    std::filesystem::path folder;
};

} // namespace Grimworks::Testing
