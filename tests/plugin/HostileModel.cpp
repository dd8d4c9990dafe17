#include "tests/plugin/HostileModel.h"

#include "core/ParameterTable.h"
#include "effects/CurveNames.h"
#include "effects/FilterNames.h"
#include "voice/WaveNames.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <span>
#include <sstream>

namespace Grimworks::Testing {

namespace {

constexpr std::size_t kNumber = sizeof(double);

double MaxOf(std::size_t id) {
    return id == Param::BassLayerAmount ? 1.259 : 1.0;
}

/// What a text means as a number. A NaN in a text may carry digits of its own, which mean nothing.
double PlainNumber(const std::string& text) {
    const double number = std::strtod(text.c_str(), nullptr);
    return std::isnan(number) ? std::copysign(std::numeric_limits<double>::quiet_NaN(), number) : number;
}

template <typename T>
void Append(Bytes& bytes, T number) {
    std::uint8_t raw[sizeof number];
    std::memcpy(raw, &number, sizeof number);
    bytes.insert(bytes.end(), raw, raw + sizeof number);
}

void AppendBig(Bytes& bytes, std::uint32_t number) {
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<std::uint8_t>(number >> static_cast<unsigned>(shift)));
}

std::int32_t LittleAt(const Bytes& bytes, std::size_t at) {
    std::int32_t number = 0;
    std::memcpy(&number, bytes.data() + at, sizeof number);
    return number;
}

std::uint32_t BigAt(const Bytes& bytes, std::size_t at) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i)
        number = number << 8U | bytes[at + i];
    return number;
}

bool HasMark(const Bytes& bytes, std::size_t at) {
    return bytes.size() >= at + 8 && std::memcmp(bytes.data() + at, "tffp", 4) == 0;
}

std::string UpToEndMark(const Bytes& bytes, std::size_t at, std::size_t length, std::size_t limit) {
    const std::string name(bytes.begin() + static_cast<std::ptrdiff_t>(at),
                           bytes.begin() + static_cast<std::ptrdiff_t>(at + length));
    return name.substr(0, std::min(name.find('\0'), limit));
}

std::vector<std::string> Fields(const std::string& text) {
    std::vector<std::string> fields;
    std::istringstream stream(text);
    for (std::string field; std::getline(stream, field, ',');)
        fields.push_back(field);
    return fields;
}

void AppendFileHeader(Bytes& file, const char* form, std::uint32_t size, const std::string& name) {
    const auto mark = [&file](const char* text) { file.insert(file.end(), text, text + 4); };
    mark("CcnK");
    AppendBig(file, size);
    mark(form);
    AppendBig(file, 1);
    mark("arto");
    AppendBig(file, 10803);
    AppendBig(file, kParameters);
    for (std::size_t i = 0; i < 28; ++i)
        file.push_back(i < name.size() ? static_cast<std::uint8_t>(name[i]) : 0);
}

} // namespace

Sound Sound::Random(unsigned seed) {
    std::mt19937 random(seed);
    const auto next = [&random] { return static_cast<double>(random()) / 4294967296.0; };
    Sound sound;
    for (double& point : sound.curve)
        point = 2.0 * next() - 1.0;
    for (double& value : sound.values)
        value = next();
    for (int i = 0; i < kOscillators; ++i) {
        sound.values[static_cast<std::size_t>(Osc(i, OscParam::LfoLinkAll))] = 0.0;
        sound.values[static_cast<std::size_t>(Osc(i, OscParam::LfoTempoSync))] = 0.0;
    }
    sound.values[Param::PhaserTempoSync] = 0.0;
    return sound;
}

Bytes Sound::Chunk() const {
    Bytes bytes;
    Append(bytes, std::int32_t{kCurvePoints + kParameters});
    for (const double point : curve)
        Append(bytes, point);
    for (const double value : values)
        Append(bytes, value);
    return bytes;
}

std::optional<std::size_t> Sound::Read(const Bytes& bytes, std::size_t at) {
    at += 4;
    if (at > bytes.size()) return {};
    const std::size_t points = std::min(curve.size(), (bytes.size() - at) / kNumber);
    std::memcpy(curve.data(), bytes.data() + at, points * kNumber);
    if (points > 0) {
        for (std::size_t i = points; i < curve.size(); ++i)
            curve[i] = curve[points - 1];
    }
    if (points < curve.size()) return {};
    at += points * kNumber;
    const std::size_t count = std::min(values.size(), (bytes.size() - at) / kNumber);
    for (std::size_t id = 0; id < count; ++id) {
        double value = 0.0;
        std::memcpy(&value, bytes.data() + at + id * kNumber, kNumber);
        if (!std::isnan(value)) values[id] = std::clamp(value, 0.0, MaxOf(id));
    }
    if (count < values.size()) return {};
    return at + count * kNumber;
}

bool Sound::IsUnlocked() const {
    for (int i = 0; i < kOscillators; ++i) {
        for (const OscParam lock : {OscParam::LfoLinkAll, OscParam::LfoTempoSync}) {
            if (values[static_cast<std::size_t>(Osc(i, lock))] != 0.0) return false;
        }
    }
    return values[Param::PhaserTempoSync] == 0.0;
}

void Sound::TakeMovable(const Sound& other) {
    for (int i = 0; i < kOscillators; ++i) {
        for (const OscParam parameter : {OscParam::LfoRate, OscParam::LfoLinkAll}) {
            const auto id = static_cast<std::size_t>(Osc(i, parameter));
            values[id] = other.values[id];
        }
    }
    values[Param::PhaserRate] = other.values[Param::PhaserRate];
}

bool Sound::HasTameCurve() const {
    return std::all_of(curve.begin(), curve.end(), [](double point) { return std::fabs(point) <= 10.0; });
}

HostileModel::HostileModel(ThudForge& instrument)
    : plug(&instrument), current(static_cast<std::size_t>(instrument.CurrentPreset())) {
    live.Read(StateOf(*plug), 0);
    moved = !live.IsUnlocked();
    for (int i = 0; i < plug->PresetCount(); ++i) {
        const auto& preset = *plug->GetPreset(i);
        presets.push_back({preset.name, {preset.chunk.Bytes().begin(), preset.chunk.Bytes().end()}});
    }
}

bool HostileModel::TakeChunk(bool bank, const Bytes& bytes) {
    if (bytes.empty()) return false;
    const std::size_t at = HasMark(bytes, 0) ? 8 : 0;
    if (bank && at == 8 && LittleAt(bytes, 4) >= 0x10000) return TakeBank(bytes, at);
    moved = moved || !live.IsUnlocked();
    const bool whole = live.Read(bytes, at).has_value();
    moved = moved || !live.IsUnlocked();
    Store({});
    return whole;
}

bool HostileModel::TakeBank(const Bytes& bytes, std::size_t at) {
    bool isWhole = true;
    for (Preset& preset : presets) {
        isWhole = false;
        if (bytes.size() - at < 4) break;
        const auto length = static_cast<std::size_t>(std::max(LittleAt(bytes, at), 0));
        at += 4;
        if (bytes.size() - at < length) break;
        preset.name = UpToEndMark(bytes, at, length, 255);
        at += length;
        if (bytes.size() - at < 1) break;
        isWhole = true;
        if (bytes[at++] == 0) continue;
        const auto behind = live.Read(bytes, at);
        moved = moved || !live.IsUnlocked();
        isWhole = behind.has_value();
        if (!isWhole) break;
        preset.chunk = live.Chunk();
        at = *behind;
    }
    Restore();
    return isWhole;
}

void HostileModel::Restore() {
    live.Read(presets[current].chunk, 0);
    moved = moved || !live.IsUnlocked();
}

void HostileModel::Store(const std::string& name) {
    presets[current].chunk = live.Chunk();
    if (!name.empty()) presets[current].name = name;
}

bool HostileModel::TakeFile(const Bytes& bytes) {
    if (bytes.size() < 56 || BigAt(bytes, 0) != 0x43636E4B || BigAt(bytes, 12) != 1 ||
        BigAt(bytes, 16) != 0x6172746F || BigAt(bytes, 24) != kParameters) {
        return false;
    }
    const std::string name = UpToEndMark(bytes, 28, 28, 28);
    const std::string form(bytes.begin() + 8, bytes.begin() + 12);
    moved = moved || !live.IsUnlocked();
    if (form == "FPCh") {
        if (bytes.size() < 60) return false;
        live.Read(bytes, HasMark(bytes, 60) ? 68 : 60);
        moved = moved || !live.IsUnlocked();
        Store(name);
        return true;
    }
    if (form != "FxCk") return false;
    TakeFileValues(bytes);
    Store(name);
    Restore();
    return true;
}

void HostileModel::TakeFileValues(const Bytes& bytes) {
    const std::size_t count = (bytes.size() - 56) / 4;
    for (std::size_t id = 0; id < live.values.size() && count > 0; ++id) {
        const std::uint32_t bits = BigAt(bytes, 56 + 4 * std::min(id, count - 1));
        float number = 0.0F;
        std::memcpy(&number, &bits, sizeof number);
        const double value = std::min(static_cast<double>(number) * MaxOf(id) + 0.0, MaxOf(id));
        if (!std::isnan(number) && value > -HUGE_VAL) live.values[id] = value;
    }
    moved = moved || !live.IsUnlocked();
}

void HostileModel::TakeText(const std::string& text) {
    ValueBlock record;
    ConstructorValues(record);
    std::string name = "Basic Bass Drum";
    std::string curveText;
    std::istringstream lines(text);
    bool first = true;
    for (std::string line; std::getline(lines, line); first = false) {
        const std::size_t equals = line.find('=');
        const std::size_t end = line.find(';');
        if (equals == std::string::npos || end == std::string::npos || end <= equals + 2) continue;
        const std::string value = line.substr(equals + 2, end - equals - 2);
        if (!first && line.find("DistortionCurveData") != std::string::npos) {
            curveText = value;
            continue;
        }
        if (equals < 3) continue;
        if (first) {
            name = value.substr(0, std::min<std::size_t>(value.find('\0'), 32));
            continue;
        }
        int id = 0;
        while (id < kParameters && ParameterKey(id) != line.substr(0, equals - 1))
            ++id;
        if (id >= kLiveParameters || id == 133 || id == 137 || id == 138) continue;
        const double number = std::strtod(value.c_str(), nullptr);
        if (id == Param::DistortionType) {
            record[id] = GetCurveNumber(value) / 41.0;
        } else if (id == Param::FilterMode1) {
            record[id] = Filter1Number(value) / 3.0;
        } else if (id == Param::FilterMode2) {
            record[id] = Filter2Number(value) / 5.0;
        } else if (id == 1 || id == 22 || id == 43) {
            record[id] = GetWaveIndex(value) / 40.0;
        } else if (!std::isnan(number)) {
            record[id] = std::clamp(number, 0.0, 1.0);
        }
    }
    Store(name);
    Apply(record, curveText);
}

void HostileModel::Apply(const ValueBlock& record, const std::string& curveText) {
    moved = moved || !live.IsUnlocked();
    const auto type = [this] { return std::floor(live.values[Param::DistortionType] * 41.0 + 0.5); };
    const double typeBefore = type();
    for (std::size_t id = 0; id < live.values.size(); ++id)
        live.values[id] = record.GetValue(static_cast<int>(id)) * MaxOf(id) + 0.0;
    moved = moved || !live.IsUnlocked();
    const std::vector<std::string> fields = Fields(curveText);
    if (fields.size() < live.curve.size()) {
        curveUnknown = curveUnknown || type() != typeBefore;
        return;
    }
    curveUnknown = false;
    for (std::size_t i = 0; i < live.curve.size(); ++i)
        live.curve[i] = PlainNumber(fields[i]);
}

std::string HostileModel::RangeFault() const {
    for (int id = 0; id < kParameters; ++id) {
        const double value = plug->GetParameterValue(id);
        if (!(value >= 0.0 && value <= MaxOf(static_cast<std::size_t>(id)))) {
            return "value " + std::to_string(id) + " is " + std::to_string(value);
        }
    }
    return {};
}

std::string HostileModel::PresetFault(bool whole) const {
    if (static_cast<std::size_t>(plug->CurrentPreset()) != current) return "another preset is current";
    for (std::size_t i = 0; i < presets.size(); ++i) {
        const auto& preset = *plug->GetPreset(static_cast<int>(i));
        if (preset.name != presets[i].name) {
            return "name " + std::to_string(i) + " is \"" + preset.name + "\", not \"" + presets[i].name +
                   "\"";
        }
        if (!whole && i != current) continue;
        const auto bytes = preset.chunk.Bytes();
        if (!std::equal(bytes.begin(), bytes.end(), presets[i].chunk.begin(), presets[i].chunk.end())) {
            return "preset " + std::to_string(i) + " has another sound";
        }
    }
    return {};
}

std::string HostileModel::Difference(bool whole) {
    std::string fault = RangeFault();
    if (!fault.empty()) return fault;
    const bool isExact = !moved && !curveUnknown;
    Sound held;
    held.Read(StateOf(*plug), 0);
    if (curveUnknown) live.curve = held.curve;
    if (moved) live.TakeMovable(held);
    const Bytes state = held.Chunk();
    const Bytes expected = live.Chunk();
    if (state != expected) {
        const auto at = std::mismatch(state.begin(), state.end(), expected.begin(), expected.end()).first;
        return "the state differs from byte " + std::to_string(at - state.begin());
    }
    const CurvePoints& heard = plug->AudioStage().GetDistortion().Points();
    if (!std::ranges::equal(std::as_bytes(std::span(heard)), std::as_bytes(std::span(live.curve)))) {
        return "the audio has another curve";
    }
    if (isExact) {
        ++exact;
        return PresetFault(whole);
    }
    if (static_cast<std::size_t>(plug->CurrentPreset()) != current) return "another preset is current";
    const int count = exact;
    *this = HostileModel(*plug);
    exact = count;
    return {};
}

Bytes WithHeader(const Bytes& chunk) {
    Bytes bytes{'t', 'f', 'f', 'p', 0, 0, 1, 0};
    bytes.insert(bytes.end(), chunk.begin(), chunk.end());
    return bytes;
}

Bytes ChunkFile(const std::string& name, const Bytes& chunk) {
    Bytes file;
    AppendFileHeader(file, "FPCh", static_cast<std::uint32_t>(chunk.size() + 60), name);
    AppendBig(file, static_cast<std::uint32_t>(chunk.size()));
    file.insert(file.end(), chunk.begin(), chunk.end());
    return file;
}

Bytes ParameterFile(const std::string& name, const std::vector<float>& values) {
    Bytes file;
    AppendFileHeader(file, "FxCk", 0, name);
    for (const float value : values) {
        std::uint32_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        AppendBig(file, bits);
    }
    return file;
}

Bytes BankChunk(const std::vector<std::string>& names, const std::vector<std::optional<Sound>>& sounds) {
    Bytes bytes;
    for (std::size_t i = 0; i < names.size(); ++i) {
        Append(bytes, static_cast<std::int32_t>(names[i].size()));
        bytes.insert(bytes.end(), names[i].begin(), names[i].end());
        bytes.push_back(sounds[i].has_value() ? 1 : 0);
        if (!sounds[i].has_value()) continue;
        const Bytes state = sounds[i]->Chunk();
        bytes.insert(bytes.end(), state.begin(), state.end());
    }
    return bytes;
}

Bytes StateOf(ThudForge& plug) {
    ByteChunk chunk;
    plug.SerializeState(chunk);
    return {chunk.Bytes().begin(), chunk.Bytes().end()};
}

bool SetChunk(ThudForge& plug, bool bank, Bytes bytes) {
    AEffect* effect = plug.Effect();
    return effect->dispatcher(effect, PlugOp::SetChunk, bank ? 0 : 1,
                              static_cast<std::intptr_t>(bytes.size()), bytes.data(), 0.0F) != 0;
}

bool TakeProgramFile(ThudForge& plug, const Bytes& bytes) {
    ByteChunk file;
    file.Assign(bytes);
    return plug.TakeProgramFile(file);
}

} // namespace Grimworks::Testing
