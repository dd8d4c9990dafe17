#include "editor/thudforge/ChoiceList.h"

#include "core/Choice.h"
#include "core/ParameterIds.h"
#include "effects/CurveNames.h"
#include "effects/FilterNames.h"
#include "voice/Modulator.h"
#include "voice/NoteMode.h"
#include "voice/OscFilterUnit.h"
#include "voice/WaveNames.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace Grimworks {

namespace {

std::string_view WaveformGroup(int index) {
    if (index < Waveform::WhiteNoize) return "Basic Shapes";
    if (index < Waveform::WaveScape) return "Noise";
    if (index < Waveform::User1) return "Textures";
    return "User Waves";
}

std::string_view NoteModeGroup(int mode) {
    if (mode >= NoteMode::kMajorArpeggio) return "Arpeggios";
    return NoteFrequency(mode, 0) == NoteFrequency(mode, 127) ? "Fixed Pitch" : "Keyboard";
}

/// Of "Chebyshev HighPass 12dB" the designer.
std::string_view FirstWord(std::string_view name) {
    return name.substr(0, name.find(' '));
}

/// Of "Paul Kellett LP" the designer.
std::string_view WithoutLastWord(std::string_view name) {
    return name.substr(0, name.rfind(' '));
}

ChoiceList FilterUnitChoices(std::span<const FilterName> names) {
    ChoiceList list;
    for (const FilterName& name : names)
        list.Add(name.longName, name.shortName, FirstWord(name.longName));
    return list;
}

ChoiceList OscFilterChoices() {
    ChoiceList list;
    for (const OscFilterType& type : kOscFilterTypes)
        list.Add(type.name, type.shortName, WithoutLastWord(type.name));
    return list;
}

} // namespace

void ChoiceList::Add(std::string_view longName, std::string_view shortName, std::string_view group) {
    const auto found = std::find(groups.begin(), groups.end(), group);
    const auto number = static_cast<int>(found - groups.begin());
    if (found == groups.end()) groups.emplace_back(group);
    entries.push_back({std::string(longName), std::string(shortName), number});
}

int ChoiceList::IndexOf(double value) const {
    return entries.empty() ? 0 : ClampedChoice(value, Count() - 1);
}

double ChoiceList::ValueOf(int index) const {
    return Count() < 2 ? 0.0 : static_cast<double>(index) / (Count() - 1);
}

ChoiceList WaveformChoices() {
    ChoiceList list;
    for (int i = 0; i < kWaveforms; ++i)
        list.Add(GetWaveName(i), GetWaveName(i), WaveformGroup(i));
    return list;
}

ChoiceList LfoWaveChoices() {
    ChoiceList list;
    for (const LfoWave& wave : kLfoWaves) {
        const bool whole = &wave == &kLfoWaves.front() || &wave == &kLfoWaves.back();
        list.Add(wave.name, wave.shortName, whole ? "Whole Wave" : "Part of the Wave");
    }
    return list;
}

ChoiceList NoteModeChoices() {
    ChoiceList list;
    for (int mode = 0; mode < kNoteModes; ++mode)
        list.Add(NoteModeText(mode), NoteModeText(mode), NoteModeGroup(mode));
    return list;
}

ChoiceList FilterChoicesOf(int parameter) {
    if (parameter == Param::FilterMode1) return FilterUnitChoices(kFilter1Names);
    if (parameter == Param::FilterMode2) return FilterUnitChoices(kFilter2Names);
    return OscFilterChoices();
}

ChoiceList CurveChoices() {
    ChoiceList list;
    for (const CurveInfo& curve : kCurveInfos)
        list.Add(curve.name, curve.name, {});
    return list;
}

} // namespace Grimworks
