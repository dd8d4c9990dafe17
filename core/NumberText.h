#pragma once

#include <string>
#include <string_view>

namespace Grimworks {

/// Reads the number at the start of a text as atof does in the "C" locale, whatever the process's locale is:
/// leading white space, an optional sign, decimal or hexadecimal notation, "inf" and "nan". What follows the
/// number is ignored; 0 when there is none. Out of range gives an infinity or 0. Any thread.
[[nodiscard]] double ParseNumber(std::string_view text);

/// Appends a number in fixed notation with so many decimals, "C" format. Allocates.
void AppendFixed(std::string& text, double value, int decimals);

/// A number in fixed notation, filled up with blanks on its left to so many characters, "C" format.
/// Allocates.
[[nodiscard]] std::string FixedText(double value, int width, int decimals);

/// Appends a number with up to six significant digits, in fixed or scientific notation, whichever suits its
/// size, without trailing zeros ("%g"), "C" format. Allocates.
void AppendGeneral(std::string& text, double value);

} // namespace Grimworks
