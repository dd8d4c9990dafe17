#pragma once

#include "host/PluginHost.h"

#include <filesystem>
#include <ostream>
#include <string>

namespace Grimworks {

/// Lists all parameters: id, name, value, display and label.
void PrintParameters(PluginHost& host, std::ostream& out);

/// Lists all programs: number from 1, and name.
void PrintPrograms(PluginHost& host, std::ostream& out);

/// Lists what a host sees of the plug-in: texts, ids, counts, flags and answers.
void PrintCheck(PluginHost& host, const std::filesystem::path& modulePath, std::ostream& out);

/// A peak (1 is full scale) as text: "-3.2 dBFS", or "none" for silence.
[[nodiscard]] std::string PeakText(double peak);

/// A number with a fixed count of decimals.
[[nodiscard]] std::string FixedText(double value, int decimals);

} // namespace Grimworks
