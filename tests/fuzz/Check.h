#pragma once

#include <cstdio>
#include <cstdlib>

namespace Grimworks::Fuzz {

/// Stops the fuzzer with the input that led here when something that must hold does not.
inline void Check(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

} // namespace Grimworks::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, unsigned long size);
