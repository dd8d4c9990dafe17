#include "plugin/IPlugBase.h"

#include "core/FileBytes.h"

#include <algorithm>
#include <array>
#include <bit>
#include <string_view>

namespace Grimworks {

namespace {

// Four-letter marks, as the big-endian numbers that they are in a file.
constexpr std::uint32_t kFileMark = 0x43636E4B;      ///< "CcnK"
constexpr std::uint32_t kChunkForm = 0x46504368;     ///< "FPCh"
constexpr std::uint32_t kParameterForm = 0x4678436B; ///< "FxCk"
constexpr std::uint32_t kFileVersion = 1;
constexpr int kNameField = 28;
constexpr int kSizeBeforeChunk = 60;

constexpr std::uint32_t Reversed(std::uint32_t x) {
    return x >> 24U | (x >> 8U & 0xff00U) | (x << 8U & 0xff0000U) | x << 24U;
}

void PutBigEndian(ByteChunk& file, std::uint32_t number) {
    file.Put(Reversed(number));
}

int GetBigEndian(const ByteChunk& file, std::uint32_t& number, int position) {
    std::uint32_t stored = 0;
    const int next = file.Get(stored, position);
    if (next >= 0) number = Reversed(stored);
    return next;
}

} // namespace

/// What stands before the data in both forms of a program file.
struct IPlugBase::ProgramFileHeader {
    std::uint32_t mark = 0;
    std::uint32_t byteSize = 0; ///< writers disagree on what it counts, so nothing reads it
    std::uint32_t form = 0;
    std::uint32_t version = 0;
    std::uint32_t plugId = 0;
    std::uint32_t plugVersion = 0;
    std::uint32_t parameterCount = 0;
    std::array<char, kNameField> name{};

    /// Gives the position behind the header, -1 if it is not all there.
    int Read(const ByteChunk& file) {
        int position = 0;
        for (std::uint32_t* field :
             {&mark, &byteSize, &form, &version, &plugId, &plugVersion, &parameterCount}) {
            position = GetBigEndian(file, *field, position);
        }
        return file.GetBytes(name.data(), kNameField, position);
    }

    [[nodiscard]] bool IsFor(const IPlugBase& plug) const {
        return mark == kFileMark && version == kFileVersion &&
               plugId == static_cast<std::uint32_t>(plug.Identity().uniqueId) &&
               parameterCount == static_cast<std::uint32_t>(plug.ParameterCount());
    }

    [[nodiscard]] std::string_view Name() const {
        const auto end = std::find(name.begin(), name.end(), '\0');
        return {name.data(), static_cast<std::size_t>(end - name.begin())};
    }
};

bool IPlugBase::IsProgramFilePath(std::string_view path) {
    return path.find(".fxp") != std::string_view::npos;
}

void IPlugBase::PutFileHeader(ByteChunk& file, std::uint32_t form, int byteSize) const {
    PutBigEndian(file, kFileMark);
    PutBigEndian(file, static_cast<std::uint32_t>(byteSize));
    PutBigEndian(file, form);
    PutBigEndian(file, kFileVersion);
    PutBigEndian(file, static_cast<std::uint32_t>(identity.uniqueId));
    PutBigEndian(file, static_cast<std::uint32_t>(identity.VersionNumber()));
    PutBigEndian(file, static_cast<std::uint32_t>(ParameterCount()));
    std::array<char, kNameField> field{};
    const std::string name = PresetName(currentPreset);
    std::copy_n(name.begin(), std::min<std::size_t>(name.size(), kNameField - 1), field.begin());
    file.PutBytes(field.data(), kNameField);
}

void IPlugBase::MakeProgramFile(ByteChunk& file) {
    const PlugLockGuard guard(lock);
    file.Clear();
    if (!identity.stateChunks) {
        PutFileHeader(file, kParameterForm, 0);
        for (const IParam& param : parameters)
            PutBigEndian(file, std::bit_cast<std::uint32_t>(static_cast<float>(param.GetNormalized())));
        return;
    }
    ByteChunk state;
    PutHeader(state);
    SerializeState(state);
    PutFileHeader(file, kChunkForm, state.Size() + kSizeBeforeChunk);
    PutBigEndian(file, static_cast<std::uint32_t>(state.Size()));
    file.PutBytes(state.Data(), state.Size());
}

bool IPlugBase::SaveProgramAsFXP(const std::string& path) {
    if (path.empty()) return false;
    ByteChunk file;
    MakeProgramFile(file);
    return WriteFileBytes(path, file.Bytes());
}

bool IPlugBase::TakeProgramFile(const ByteChunk& file) {
    ProgramFileHeader header;
    int position = header.Read(file);
    if (position < 0 || !header.IsFor(*this)) return false;

    const HostNews guard(*this);
    if (header.form == kChunkForm && identity.stateChunks) {
        std::uint32_t chunkLength = 0;
        position = GetBigEndian(file, chunkLength, position);
        if (position < 0) return false;
        std::int32_t version = 0;
        UnserializeState(file, SkipHeader(file, position, version));
        ModifyCurrentPreset(header.Name());
        return true;
    }
    if (header.form == kParameterForm) {
        TakeFileParameters(file, position);
        ModifyCurrentPreset(header.Name());
        RestorePreset(currentPreset);
        return true;
    }
    return false;
}

void IPlugBase::TakeFileParameters(const ByteChunk& file, int position) {
    std::uint32_t bits = 0;
    bool any = false;
    for (int id = 0; id < ParameterCount(); ++id) {
        position = GetBigEndian(file, bits, position);
        any = any || position >= 0;
        if (any) StoreNormalized(id, static_cast<double>(std::bit_cast<float>(bits)));
    }
}

bool IPlugBase::LoadProgramFromFXP(const std::string& path) {
    std::vector<std::uint8_t> bytes;
    if (!ReadFileBytes(path, bytes)) return false;
    ByteChunk file;
    file.Assign(bytes);
    if (!TakeProgramFile(file)) return false;
    TellProgramChange();
    return true;
}

} // namespace Grimworks
