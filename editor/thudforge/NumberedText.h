#pragma once

#include <string>
#include <string_view>

namespace Grimworks {

/// "01: Name" for index 0: how the rows of long lists are numbered, with two digits at least.
[[nodiscard]] inline std::string NumberedText(int index, std::string_view name) {
    std::string text = std::to_string(index + 1);
    if (text.size() < 2) text.insert(0, 1, '0');
    return text.append(": ").append(name);
}

} // namespace Grimworks
