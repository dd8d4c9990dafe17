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

} // namespace Grimworks
