#pragma once

#include <string>

namespace Grimworks {

/// Folders of this system, each with the separator at the end; empty where the system tells none.
namespace UserFolders {

[[nodiscard]] std::string Home();
[[nodiscard]] std::string Desktop();
/// Where programs keep what belongs to them, of this user or of all.
[[nodiscard]] std::string AppSupport(bool allUsers);
/// Of the program that this process runs.
[[nodiscard]] std::string Program();
/// Of the file that this code was loaded from.
[[nodiscard]] std::string Module();

} // namespace UserFolders

} // namespace Grimworks
