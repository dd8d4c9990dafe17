#include "host/ProgramFile.h"

#include "host/Files.h"
#include "host/HostError.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <string_view>
#include <vector>

namespace Grimworks {

namespace {

constexpr std::size_t kMaxFileBytes = 16U << 20U;
constexpr std::size_t kFormAt = 8;
constexpr std::size_t kFormatVersionAt = 12;
constexpr std::size_t kPluginIdAt = 16;
constexpr std::size_t kCountAt = 24;
constexpr std::size_t kNameAt = 28;
constexpr std::size_t kNameBytes = 28;
constexpr std::size_t kBodyAt = 56;
constexpr std::uint32_t kFileMagic = 0x43636E4B;     // "CcnK"
constexpr std::uint32_t kChunkForm = 0x46504368;     // "FPCh"
constexpr std::uint32_t kParameterForm = 0x4678436B; // "FxCk"

std::uint32_t BigEndian(std::span<const std::uint8_t> bytes, std::size_t at) {
    return static_cast<std::uint32_t>(bytes[at]) << 24U | static_cast<std::uint32_t>(bytes[at + 1]) << 16U |
           static_cast<std::uint32_t>(bytes[at + 2]) << 8U | static_cast<std::uint32_t>(bytes[at + 3]);
}

std::string StoredName(std::span<const std::uint8_t> bytes) {
    std::string name;
    for (const std::uint8_t byte : bytes.subspan(kNameAt, kNameBytes)) {
        if (byte == 0) break;
        name.push_back(static_cast<char>(byte));
    }
    return name;
}

void CheckHeader(const PluginHost& host, std::span<const std::uint8_t> bytes, const std::string& name) {
    if (bytes.size() < 4 || BigEndian(bytes, 0) != kFileMagic)
        throw HostError(name + ": is not a program file");
    if (bytes.size() < kBodyAt) throw HostError(name + ": is truncated");
    if (BigEndian(bytes, kFormatVersionAt) != 1) throw HostError(name + ": has an unknown format version");
    if (BigEndian(bytes, kPluginIdAt) != std::bit_cast<std::uint32_t>(host.Record().uniqueID)) {
        throw HostError(name + ": belongs to another plug-in");
    }
    if (BigEndian(bytes, kCountAt) != static_cast<std::uint32_t>(host.ParameterCount())) {
        throw HostError(name + ": is for another number of parameters than " +
                        std::to_string(host.ParameterCount()));
    }
}

void ApplyChunk(PluginHost& host, std::span<const std::uint8_t> bytes, const std::string& name) {
    if (bytes.size() < kBodyAt + 4) throw HostError(name + ": is truncated");
    const std::uint32_t length = BigEndian(bytes, kBodyAt);
    const auto chunk = bytes.subspan(kBodyAt + 4);
    if (length > chunk.size()) throw HostError(name + ": is truncated");
    if (!host.SetProgramChunk(chunk.first(length))) throw HostError(name + ": is refused by the instrument");
}

void ApplyParameters(PluginHost& host, std::span<const std::uint8_t> bytes, const std::string& name) {
    const auto count = static_cast<std::size_t>(host.ParameterCount());
    if (bytes.size() < kBodyAt + 4 * count) throw HostError(name + ": is truncated");
    std::vector<float> values(count);
    for (std::size_t id = 0; id < count; ++id) {
        values[id] = std::bit_cast<float>(BigEndian(bytes, kBodyAt + 4 * id));
        if (!std::isfinite(values[id])) {
            throw HostError(name + ": has no number for parameter " + std::to_string(id));
        }
    }
    for (std::size_t id = 0; id < count; ++id)
        host.SetParameter(static_cast<int>(id), values[id]);
}

bool IsTextProgram(std::string_view text) {
    if (text.find('\0') != std::string_view::npos) return false;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        const std::size_t equals = line.find(" = ");
        if (equals != std::string_view::npos && line.find(';', equals) != std::string_view::npos) return true;
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    return false;
}

} // namespace

void LoadTextProgram(PluginHost& host, const std::filesystem::path& path) {
    const std::vector<std::uint8_t> bytes = ReadFileBytes(path, kMaxFileBytes);
    const std::string name = TextFromPath(path);
    if (!IsTextProgram({reinterpret_cast<const char*>(bytes.data()), bytes.size()})) {
        throw HostError(name + ": is no program");
    }
    if (!host.LoadProgram(name)) throw HostError(name + ": the instrument does not take this program");
}

void SaveProgramFile(PluginHost& host, const std::filesystem::path& path) {
    const std::string name = TextFromPath(path);
    if (!host.SaveProgram(name)) throw HostError(name + ": cannot be written");
}

void LoadProgramFile(PluginHost& host, const std::filesystem::path& path) {
    ApplyProgramFile(host, ReadFileBytes(path, kMaxFileBytes), TextFromPath(path));
}

void ApplyProgramFile(PluginHost& host, std::span<const std::uint8_t> bytes, const std::string& name) {
    CheckHeader(host, bytes, name);
    switch (BigEndian(bytes, kFormAt)) {
    case kChunkForm:
        ApplyChunk(host, bytes, name);
        break;
    case kParameterForm:
        ApplyParameters(host, bytes, name);
        break;
    default:
        throw HostError(name + ": is not a file of one program");
    }
    std::string programName = StoredName(bytes);
    host.Dispatch(PlugOp::SetProgramName, 0, 0, programName.data());
}

} // namespace Grimworks
