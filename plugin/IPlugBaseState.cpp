#include "plugin/IPlugBase.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Grimworks {

namespace {

constexpr char kHeaderMark[] = {'t', 'f', 'f', 'p'};
constexpr int kMarkSize = sizeof kHeaderMark;
constexpr int kHeaderSize = 8;
constexpr std::string_view kUserPreset = "user preset";

/// A name as presets keep it: what stands before an end mark, at most kPresetNameLength bytes.
std::string KeptName(std::string_view name) {
    name = name.substr(0, std::min(name.find('\0'), name.size()));
    return std::string(name.substr(0, static_cast<std::size_t>(IPlugBase::kPresetNameLength)));
}

} // namespace

bool IPlugBase::SerializeState(ByteChunk& chunk) {
    return SerializeParams(chunk);
}

int IPlugBase::UnserializeState(const ByteChunk& chunk, int position) {
    return UnserializeParams(chunk, position);
}

bool IPlugBase::CompareState(std::span<const std::uint8_t> data, int position) {
    return CompareParams(data, position);
}

bool IPlugBase::SerializeParams(ByteChunk& chunk) const {
    const PlugLockGuard guard(lock);
    for (const IParam& param : parameters)
        chunk.Put(param.Value());
    return !chunk.IsEmpty();
}

int IPlugBase::UnserializeParams(const ByteChunk& chunk, int position) {
    const HostNews guard(*this);
    for (IParam& param : parameters) {
        double value = 0.0;
        position = chunk.Get(value, position);
        if (position < 0) break;
        param.SetValue(value);
    }
    SendAllParameters();
    return position;
}

bool IPlugBase::CompareParams(std::span<const std::uint8_t> data, int position) const {
    const PlugLockGuard guard(lock);
    const std::size_t wanted = parameters.size() * sizeof(double);
    if (position < 0 || data.size() < wanted || static_cast<std::size_t>(position) > data.size() - wanted) {
        return false;
    }
    const std::uint8_t* at = data.data() + position;
    return std::all_of(parameters.begin(), parameters.end(), [&at](const IParam& param) {
        double other = 0.0;
        std::memcpy(&other, at, sizeof other);
        at += sizeof other;
        return std::fabs(static_cast<float>(param.Value()) - static_cast<float>(other)) < 0.00001F;
    });
}

void IPlugBase::PutHeader(ByteChunk& chunk) {
    chunk.PutBytes(kHeaderMark, kMarkSize);
    chunk.Put(kFrameworkVersion);
}

int IPlugBase::SkipHeader(const ByteChunk& chunk, int position, std::int32_t& version) {
    version = 0;
    if (chunk.Skip(kHeaderSize, position) < 0) return position;
    if (std::memcmp(chunk.Data() + position, kHeaderMark, kMarkSize) != 0) return position;
    return chunk.Get(version, position + kMarkSize);
}

int IPlugBase::CurrentPreset() const {
    const PlugLockGuard guard(lock);
    return currentPreset;
}

std::string IPlugBase::PresetName(int index) const {
    const PlugLockGuard guard(lock);
    const Preset* preset = GetPreset(index);
    return preset != nullptr ? preset->name : std::string();
}

const IPlugBase::Preset* IPlugBase::GetPreset(int index) const {
    return index >= 0 && index < PresetCount() ? &presets[static_cast<std::size_t>(index)] : nullptr;
}

int IPlugBase::CountUserPresets() const {
    return static_cast<int>(std::count_if(presets.begin(), presets.end(), [](const Preset& preset) {
        return preset.name.find(kUserPreset) != std::string::npos;
    }));
}

bool IPlugBase::RestorePreset(int index) {
    const HostNews guard(*this);
    if (GetPreset(index) == nullptr) return false;
    Preset& preset = presets[static_cast<std::size_t>(index)];
    if (preset.initialized) {
        if (UnserializeState(preset.chunk, 0) <= 0) return false;
    } else {
        const int number = CountUserPresets() + 1;
        preset.initialized = true;
        preset.name = std::string(kUserPreset) + " " + std::to_string(number);
        preset.chunk.Clear();
        SerializeState(preset.chunk);
    }
    currentPreset = index;
    RedrawParamControls();
    return true;
}

void IPlugBase::ModifyCurrentPreset(std::string_view name) {
    const PlugLockGuard guard(lock);
    if (GetPreset(currentPreset) == nullptr) return;
    Preset& preset = presets[static_cast<std::size_t>(currentPreset)];
    preset.chunk.Clear();
    SerializeState(preset.chunk);
    if (!name.empty()) preset.name = KeptName(name);
}

void IPlugBase::MakePresetFromChunk(std::string_view name, const ByteChunk& chunk) {
    const PlugLockGuard guard(lock);
    const auto unused = std::find_if(presets.begin(), presets.end(),
                                     [](const Preset& preset) { return !preset.initialized; });
    if (unused == presets.end()) return;
    unused->initialized = true;
    unused->name = KeptName(name);
    unused->chunk.PutBytes(chunk.Data(), chunk.Size());
}

void IPlugBase::FillUnusedPresets(std::string_view name) {
    const PlugLockGuard guard(lock);
    for (Preset& preset : presets) {
        if (preset.initialized) continue;
        preset.initialized = true;
        preset.name = KeptName(name);
        SerializeState(preset.chunk);
    }
}

bool IPlugBase::SerializePresets(ByteChunk& chunk) {
    const PlugLockGuard guard(lock);
    for (const Preset& preset : presets) {
        const auto length = static_cast<std::int32_t>(preset.name.size());
        chunk.Put(length);
        chunk.PutBytes(preset.name.data(), length);
        chunk.Put(static_cast<std::uint8_t>(preset.initialized ? 1 : 0));
        if (preset.initialized) chunk.PutBytes(preset.chunk.Data(), preset.chunk.Size());
    }
    return !chunk.IsEmpty();
}

int IPlugBase::UnserializePresets(const ByteChunk& chunk, int position) {
    const HostNews guard(*this);
    for (Preset& preset : presets) {
        if (position < 0) break;
        position = UnserializePreset(preset, chunk, position);
    }
    RestorePreset(currentPreset);
    return position;
}

int IPlugBase::UnserializePreset(Preset& preset, const ByteChunk& chunk, int position) {
    std::int32_t length = 0;
    position = chunk.Get(length, position);
    length = std::max(length, 0);
    const int behindName = chunk.Skip(length, position);
    if (behindName < 0) return -1;
    const auto* first = reinterpret_cast<const char*>(chunk.Data()) + position;
    preset.name = KeptName({first, static_cast<std::size_t>(length)});

    // A preset that the bank leaves out stays as it was but for its name.
    std::uint8_t used = 0;
    position = chunk.Get(used, behindName);
    if (position < 0 || used == 0) return position;
    position = UnserializeState(chunk, position);
    if (position > 0) {
        preset.initialized = true;
        preset.chunk.Clear();
        SerializeState(preset.chunk);
    }
    return position;
}

} // namespace Grimworks
