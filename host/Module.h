#pragma once

#include "plugin/vst2.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Grimworks {

/// A plug-in module in memory: loads the library, finds its entry point, unloads it at the end.
class Module {
public:
    using EntryPoint = PluginMainFunction;

    /// Loads a module. Throws HostError when the system will not load it or it has no entry point.
    explicit Module(const std::filesystem::path& modulePath);
    ~Module();
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    /// Where an installed or freshly built instrument may lie, seen from the program's own folder.
    [[nodiscard]] static std::vector<std::filesystem::path>
    Candidates(const std::filesystem::path& programFolder);

    /// The first candidate that exists. Throws HostError when there is none.
    [[nodiscard]] static std::filesystem::path Find();

    [[nodiscard]] const std::filesystem::path& Path() const { return path; }
    [[nodiscard]] EntryPoint Entry() const { return entry; }

    /// The entry point of this name, null if the module has none.
    [[nodiscard]] EntryPoint EntryNamed(const char* symbol) const;

private:
    std::filesystem::path path;
    void* library = nullptr;
    EntryPoint entry = nullptr;
};

} // namespace Grimworks
