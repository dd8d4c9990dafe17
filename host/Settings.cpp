#include "host/Settings.h"

#include "host/Files.h"
#include "host/HostError.h"
#include "host/ProgramFile.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>

namespace Grimworks {

namespace {

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string LowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), Lower);
    return text;
}

std::string Trimmed(std::string_view text) {
    while (text.starts_with(' '))
        text.remove_prefix(1);
    while (text.ends_with(' '))
        text.remove_suffix(1);
    return std::string(text);
}

template <typename Number>
std::optional<Number> ParseNumber(const std::string& text) {
    Number number{};
    const char* end = text.data() + text.size();
    const auto [stop, fault] = std::from_chars(text.data(), end, number);
    if (text.empty() || fault != std::errc() || stop != end) return std::nullopt;
    return number;
}

void SelectByIndex(PluginHost& host, int index, const std::string& text) {
    if (!host.SelectProgram(index)) throw HostError(text + ": the instrument does not take this program");
}

std::optional<int> FindProgram(PluginHost& host, const std::string& name) {
    const std::string wanted = LowerCase(name);
    for (int i = 0; i < host.ProgramCount(); ++i) {
        if (LowerCase(host.ProgramName(i)) == wanted) return i;
    }
    return std::nullopt;
}

} // namespace

int FindParameter(PluginHost& host, const std::string& text) {
    if (const auto id = ParseNumber<int>(text)) {
        if (*id >= 0 && *id < host.ParameterCount()) return *id;
        throw HostError(text + ": there is no parameter of this id");
    }
    const std::string wanted = LowerCase(text);
    int found = -1;
    for (int id = 0; id < host.ParameterCount(); ++id) {
        if (LowerCase(host.ParameterName(id)) != wanted) continue;
        if (found >= 0) {
            throw HostError(text + ": is the name of parameters " + std::to_string(found) + " and " +
                            std::to_string(id) + "; give the id");
        }
        found = id;
    }
    if (found < 0 || wanted.empty()) throw HostError(text + ": there is no parameter of this name");
    return found;
}

void ApplySetting(PluginHost& host, const std::string& text) {
    const std::size_t equals = text.rfind('=');
    if (equals == std::string::npos) throw HostError(text + ": a setting has the form NAME=VALUE");
    const int id = FindParameter(host, Trimmed(std::string_view(text).substr(0, equals)));
    const auto value = ParseNumber<float>(Trimmed(std::string_view(text).substr(equals + 1)));
    if (!value || !(*value >= 0.0F && *value <= 1.0F)) {
        throw HostError(text + ": the value must be a number from 0 to 1");
    }
    host.SetParameter(id, *value);
}

void ChooseProgram(PluginHost& host, const std::string& text) {
    if (const auto number = ParseNumber<int>(text)) {
        if (*number < 1 || *number > host.ProgramCount()) {
            throw HostError(text + ": programs are numbered from 1 to " +
                            std::to_string(host.ProgramCount()));
        }
        SelectByIndex(host, *number - 1, text);
        return;
    }
    if (const auto index = text.empty() ? std::nullopt : FindProgram(host, text)) {
        SelectByIndex(host, *index, text);
        return;
    }
    const auto path = PathFromText(text);
    const std::string extension = LowerCase(TextFromPath(path.extension()));
    if (extension == ".fxp" || text.find(".fxp") != std::string::npos) {
        LoadProgramFile(host, path);
        return;
    }
    std::error_code error;
    const bool looksLikeFile = !extension.empty() || path.has_parent_path();
    if (!std::filesystem::exists(path, error) && !looksLikeFile) {
        throw HostError(text + ": there is no program of this name");
    }
    LoadTextProgram(host, path);
}

} // namespace Grimworks
