#pragma once

#include "core/Limits.h"
#include "core/ParameterIds.h"
#include "core/ValueBlock.h"

#include <array>
#include <string>
#include <string_view>

namespace Grimworks {

/// Everything that is fixed about one parameter. Each runs from 0 to `max`.
struct ParameterInfo {
    int id;
    std::string_view key;   ///< name in text programs
    std::string_view name;  ///< what the host shows
    double step;            ///< display resolution; decides the number of decimals only
    double max;             ///< 1 for all but the sub-oscillator's amount, which may pass unity
    std::string_view label; ///< unit, mostly empty
    std::string_view group;
    double resetValue;       ///< the blank program on which the factory programs are built
    double constructorValue; ///< the first factory program, and so the parameter's default
};

/// The live parameters in id order: host, programs, text files, manual and tests all read this one table.
extern const std::array<ParameterInfo, kLiveParameters> kParameterTable;

/// Key, "Reserved_00" and so on, and host name of a reserved id (140..158).
[[nodiscard]] std::string ReservedKey(int id);
[[nodiscard]] std::string ReservedName(int id);
inline constexpr std::string_view kReservedGroup = "Reserved Group";
inline constexpr double kReservedStep = 0.001;

/// Key and host name of any id from 0 to 158, empty for others.
[[nodiscard]] std::string ParameterKey(int id);
[[nodiscard]] std::string ParameterName(int id);

/// Writes the blank program: one plain oscillator, all effects neutral. The transpose ratio becomes 1.
void ResetValues(ValueBlock& values);

/// Writes the constructor values, those of the first factory program. The transpose ratio becomes 1.
void ConstructorValues(ValueBlock& values);

} // namespace Grimworks
