#pragma once

#include "patches/SynthProgram.h"

#include <string>
#include <string_view>

namespace Grimworks {

/// The text form of a program: one line "Key = value;" for the name, for each parameter from 0 to 158, for
/// the drawn distortion curve and for one cycle of the first oscillator's wave. Curve type, filter types and
/// waves stand by name, everything else as a number in the "C" format.
[[nodiscard]] std::string WriteTextProgram(const SynthProgram& program, const std::string& curveText,
                                           const std::string& waveText);

/// Reads a text program into a record. The first line is the name, whatever its key, cut to 32 characters;
/// lines without "Key = value;" and unknown keys are skipped. `curveText` becomes the text of the last curve
/// line and stays as it is without one; the wave line is for readers of the file only.
void ReadTextProgram(std::string_view text, SynthProgram& program, std::string& curveText);

/// The same from a file. False, and nothing changed, if the path is empty or the file cannot be read. Paths
/// are UTF-8. Blocking file access.
[[nodiscard]] bool LoadFromTextFile(const std::string& path, SynthProgram& program, std::string& curveText);

} // namespace Grimworks
