#pragma once

#include <dirent.h>

namespace Grimworks {

/// Entries of a folder of this process: open files or threads.
inline int CountEntries(const char* folder) {
    DIR* const opened = opendir(folder);
    if (opened == nullptr) return -1;
    int count = 0;
    while (readdir(opened) != nullptr)
        ++count;
    closedir(opened);
    return count;
}

} // namespace Grimworks
