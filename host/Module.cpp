#include "host/Module.h"

#include "host/Files.h"
#include "host/HostError.h"

#include <algorithm>
#include <bit>
#include <system_error>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace Grimworks {

namespace {

constexpr const char* kEntryPoint = "VSTPluginMain";
constexpr const char* kOldEntryPoint = "main";

#ifdef _WIN32

constexpr const char* kModuleName = "ThudForge.dll";

void* LoadLibraryFile(const std::filesystem::path& path, std::string& fault) {
    // Without this a broken library opens a message box and waits for somebody to click it away.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    HMODULE library = LoadLibraryW(std::filesystem::absolute(path).make_preferred().c_str());
    if (library == nullptr) {
        fault = std::system_category().message(static_cast<int>(GetLastError()));
    }
    return library;
}

void UnloadLibrary(void* library) {
    FreeLibrary(static_cast<HMODULE>(library));
}

Module::EntryPoint FindSymbol(void* library, const char* name) {
    return std::bit_cast<Module::EntryPoint>(GetProcAddress(static_cast<HMODULE>(library), name));
}

#else

constexpr const char* kModuleName = "ThudForge.so";

void* LoadLibraryFile(const std::filesystem::path& path, std::string& fault) {
    // A name without a slash would be looked for in the system's folders.
    void* library = dlopen(std::filesystem::absolute(path).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        const char* text = dlerror();
        fault = text == nullptr ? "unknown error" : text;
    }
    return library;
}

void UnloadLibrary(void* library) {
    dlclose(library);
}

Module::EntryPoint FindSymbol(void* library, const char* name) {
    return std::bit_cast<Module::EntryPoint>(dlsym(library, name));
}

#endif

/// System messages may run over several lines or end in a line break.
std::string OneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    while (text.ends_with(' '))
        text.pop_back();
    return text;
}

} // namespace

Module::Module(const std::filesystem::path& modulePath) : path(modulePath) {
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored))
        throw HostError(TextFromPath(path) + ": there is no such module");
    std::string fault;
    library = LoadLibraryFile(path, fault);
    if (library == nullptr) throw HostError(TextFromPath(path) + ": cannot be loaded: " + OneLine(fault));
    entry = EntryNamed(kEntryPoint);
    if (entry == nullptr) entry = EntryNamed(kOldEntryPoint);
    if (entry == nullptr) {
        UnloadLibrary(library);
        throw HostError(TextFromPath(path) + ": has no entry point " + kEntryPoint);
    }
}

Module::~Module() {
    UnloadLibrary(library);
}

Module::EntryPoint Module::EntryNamed(const char* symbol) const {
    return FindSymbol(library, symbol);
}

std::vector<std::filesystem::path> Module::Candidates(const std::filesystem::path& programFolder) {
    const std::filesystem::path above = programFolder / "..";
    return {programFolder / kModuleName, above / "lib" / "vst" / kModuleName, above / kModuleName};
}

std::filesystem::path Module::Find() {
    const std::filesystem::path folder = ExecutablePath().parent_path();
    for (const auto& candidate : Candidates(folder)) {
        std::error_code ignored;
        if (std::filesystem::is_regular_file(candidate, ignored)) return candidate.lexically_normal();
    }
    throw HostError(std::string(kModuleName) + ": not found from " + TextFromPath(folder) +
                    "; name it with --module");
}

} // namespace Grimworks
