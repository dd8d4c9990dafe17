#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace Grimworks {

inline constexpr int kExitDone = 0;
inline constexpr int kExitFault = 2;
inline constexpr int kExitInterrupted = 130;

/// Carries out one command line (UTF-8, without the program's name): `render`, `note`, `edit`,
/// `convert`, `params`, `programs` or `check`. Results go to `out`. Any fault, in the arguments or in the
/// work, is one line on `err` and kExitFault.
[[nodiscard]] int RunCommandLine(const std::vector<std::string>& arguments, std::ostream& out,
                                 std::ostream& err);

} // namespace Grimworks
