#pragma once

#include <stdexcept>

namespace Grimworks {

/// A fault that ends a command. The text is one line that names the file (or option) and what is wrong with
/// it; the program prints it on its error stream and leaves with status 2.
class HostError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace Grimworks
