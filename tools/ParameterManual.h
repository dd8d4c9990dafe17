#pragma once

#include "core/ParameterTable.h"
#include "core/TempoSync.h"
#include "effects/CurveNames.h"
#include "effects/FilterNames.h"
#include "voice/Modulator.h"
#include "voice/WaveNames.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// The reference of the parameters for users, made from the tables that the instrument itself reads.
namespace Grimworks {

namespace ParameterManual {

inline std::string Number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

inline std::string Row(const ParameterInfo& row) {
    return "| " + std::to_string(row.id) + " | " + std::string(row.name) + " | `" + std::string(row.key) +
           "` | " + Number(row.max) + " | " + std::string(row.label) + " | " + Number(row.constructorValue) +
           " | " + Number(row.resetValue) + " |\n";
}

/// The parameters by group; groups come in the order of their first parameter.
inline std::string Rows() {
    std::string text;
    std::vector<std::string_view> done;
    for (const ParameterInfo& first : kParameterTable) {
        if (std::find(done.begin(), done.end(), first.group) != done.end()) continue;
        done.push_back(first.group);
        text += "\n## " + std::string(first.group) +
                "\n\n| Id | Name | Key | Top | Unit | Default | Reset |\n|---:|---|---|---:|---|---:|---:|\n";
        for (const ParameterInfo& row : kParameterTable) {
            if (row.group == first.group) text += Row(row);
        }
    }
    return text;
}

/// One table of names by number and value.
inline std::string Choices(std::string_view title, int count, const std::function<std::string(int)>& name) {
    std::string text = "\n### " + std::string(title) + "\n\n| Number | Value | Name |\n|---:|---:|---|\n";
    for (int i = 0; i < count; ++i) {
        text += "| " + std::to_string(i) + " | " + Number(static_cast<double>(i) / (count - 1)) + " | " +
                name(i) + " |\n";
    }
    return text;
}

inline std::string AllChoices() {
    const auto at = [](const auto& table, int i) { return table[static_cast<std::size_t>(i)]; };
    return Choices("Waves of an oscillator", kWaveforms, [](int i) { return std::string(GetWaveName(i)); }) +
           Choices("Waves of an LFO", static_cast<int>(kLfoWaves.size()),
                   [&](int i) { return std::string(at(kLfoWaves, i).name); }) +
           Choices("Tempo sync", static_cast<int>(kTempoDivisions.size()),
                   [&](int i) { return std::string(at(kTempoDivisions, i).name); }) +
           Choices("Distortion types", kCurves, [](int i) { return std::string(GetCurveName(i)); }) +
           Choices("Filter 1 types", static_cast<int>(kFilter1Names.size()),
                   [](int i) { return std::string(Filter1Name(i)); }) +
           Choices("Filter 2 types", static_cast<int>(kFilter2Names.size()),
                   [](int i) { return std::string(Filter2Name(i)); });
}

/// The whole of docs/parameters.md.
inline std::string Text() {
    return "# Parameters\n\n"
           "Written by `tools/list_parameters.cpp` from the instrument's own tables; build the target\n"
           "`list_parameters` and run `list_parameters docs/parameters.md` after a change of them.\n\n"
           "Hosts know a parameter by its id and its name, text programs by its key. Every parameter runs "
           "from 0\n"
           "to its top; hosts set 0 to 1 over that range. The default is the value of the first factory "
           "program,\n"
           "the reset value the one that factory programs start from.\n\nIds " +
           std::to_string(kLiveParameters) + " to " + std::to_string(kParameters - 1) + ", keys `" +
           ReservedKey(kLiveParameters) + "` to `" + ReservedKey(kParameters - 1) +
           "`, are kept for later and change nothing.\n" + Rows() +
           "\n## Choices\n\nA parameter with n choices counts them from 0; the value of a choice is its "
           "number\n"
           "divided by n - 1, and values between go to the nearest one.\n" +
           AllChoices();
}

} // namespace ParameterManual

} // namespace Grimworks
