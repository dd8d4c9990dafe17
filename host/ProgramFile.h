#pragma once

#include "host/PluginHost.h"

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

namespace Grimworks {

/// Loads a program file of the plug-in interface (".fxp"): either a stored state, which goes to the plug-in
/// as it is, or a list of parameter values. The file is checked as a whole before anything is changed. Throws
/// HostError with one line that names the file and the fault.
void LoadProgramFile(PluginHost& host, const std::filesystem::path& path);

/// Loads a text program: the instrument reads it, once the file has proved to be text with at least one line
/// "KEY = VALUE;". Throws HostError like the other.
void LoadTextProgram(PluginHost& host, const std::filesystem::path& path);

/// Saves the current program, in the form that the path chooses. Throws HostError if the instrument cannot.
void SaveProgramFile(PluginHost& host, const std::filesystem::path& path);

/// As LoadProgramFile for a file that is already in memory; `name` stands for it in messages.
void ApplyProgramFile(PluginHost& host, std::span<const std::uint8_t> bytes, const std::string& name);

} // namespace Grimworks
