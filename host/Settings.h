#pragma once

#include "host/PluginHost.h"

#include <string>

namespace Grimworks {

/// The id of a parameter that is given by number or by the name that hosts see, in capital or small letters.
/// Throws HostError when there is none, or when several parameters bear the name.
[[nodiscard]] int FindParameter(PluginHost& host, const std::string& text);

/// Carries out "NAME=VALUE" or "ID=VALUE" with a value from 0 to 1. Throws HostError for anything else.
void ApplySetting(PluginHost& host, const std::string& text);

/// Makes the program current that is given by number (1 is the first), by name, or by the path of a program
/// file: ".fxp", or text under any other name. Throws HostError when there is none.
void ChooseProgram(PluginHost& host, const std::string& text);

} // namespace Grimworks
