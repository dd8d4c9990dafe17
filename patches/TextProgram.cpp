#include "patches/TextProgram.h"

#include "core/Choice.h"
#include "core/FileBytes.h"
#include "core/NumberText.h"
#include "core/ParameterIds.h"
#include "effects/CurveNames.h"
#include "effects/FilterNames.h"
#include "voice/WaveNames.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace Grimworks {

namespace {

constexpr std::string_view kNameKey = "Name";
constexpr std::string_view kCurveKey = "DistortionCurveData";
constexpr std::string_view kWaveKey = "OscWaveData";
constexpr std::size_t kNameLength = 32;
constexpr std::size_t kShortestKey = 3; ///< place of the equals sign in the shortest line that counts

constexpr int kLastFilter1 = static_cast<int>(kFilter1Names.size()) - 1;
constexpr int kLastFilter2 = static_cast<int>(kFilter2Names.size()) - 1;

bool IsWaveform(int id) {
    return id == Osc(0, OscParam::Waveform) || id == Osc(1, OscParam::Waveform) ||
           id == Osc(2, OscParam::Waveform);
}

void AppendLine(std::string& text, std::string_view key, std::string_view value) {
    text.append(key).append(" = ").append(value).append(";\n");
}

std::string ValueText(int id, double value) {
    if (id == Param::DistortionType) return std::string(GetCurveName(ClampedChoice(value, kCurves - 1)));
    if (id == Param::FilterMode1) return std::string(Filter1Name(Choice(value, kLastFilter1)));
    if (id == Param::FilterMode2) return std::string(Filter2Name(Choice(value, kLastFilter2)));
    if (IsWaveform(id)) return std::string(GetWaveName(WaveformIndex(value)));
    std::string text;
    AppendGeneral(text, value);
    return text;
}

double ShareOf(int index, int last) {
    return static_cast<double>(index) / last;
}

void SetFromText(SynthProgram& program, int id, std::string_view value) {
    if (id == Param::DistortionType) {
        program.SetChoice(id, ShareOf(GetCurveNumber(value), kCurves - 1));
    } else if (id == Param::FilterMode1) {
        program.SetChoice(id, ShareOf(Filter1Number(value), kLastFilter1));
    } else if (id == Param::FilterMode2) {
        program.SetChoice(id, ShareOf(Filter2Number(value), kLastFilter2));
    } else if (IsWaveform(id)) {
        program.SetChoice(id, ShareOf(GetWaveIndex(value), kWaveforms - 1));
    } else {
        program.SetValue(id, ParseNumber(value));
    }
}

/// The two sides of a line; both empty when it has not the form "Key = value;".
struct Line {
    explicit Line(std::string_view text) {
        const std::size_t equals = text.find('=');
        const std::size_t semicolon = text.find(';');
        if (equals == std::string_view::npos || semicolon == std::string_view::npos) return;
        if (semicolon <= equals + 2) return;
        value = text.substr(equals + 2, semicolon - (equals + 2));
        if (equals >= kShortestKey) key = text.substr(0, equals - 1);
    }

    std::string_view key;
    std::string_view value;
};

} // namespace

std::string WriteTextProgram(const SynthProgram& program, const std::string& curveText,
                             const std::string& waveText) {
    std::string text;
    AppendLine(text, kNameKey, program.name);
    for (const SynthProgram::KeyEntry& entry : program.keys)
        AppendLine(text, entry.key, ValueText(entry.id, program.GetValue(entry.id)));
    AppendLine(text, kCurveKey, curveText);
    AppendLine(text, kWaveKey, waveText);
    return text;
}

void ReadTextProgram(std::string_view text, SynthProgram& program, std::string& curveText) {
    bool isFirst = true;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view whole = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const Line line(whole);
        if (!isFirst && !line.value.empty() && whole.find(kCurveKey) != std::string_view::npos) {
            curveText = line.value;
        } else if (!line.key.empty() && isFirst) {
            program.name = line.value.substr(0, kNameLength);
        } else if (!line.key.empty()) {
            SetFromText(program, program.IdOfKey(line.key), line.value);
        }
        isFirst = false;
    }
}

bool LoadFromTextFile(const std::string& path, SynthProgram& program, std::string& curveText) {
    std::vector<std::uint8_t> bytes;
    if (path.empty() || !ReadFileBytes(path, bytes)) return false;
    ReadTextProgram({reinterpret_cast<const char*>(bytes.data()), bytes.size()}, program, curveText);
    return true;
}

} // namespace Grimworks
