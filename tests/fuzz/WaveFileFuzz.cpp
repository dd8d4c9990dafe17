// Bytes of a user's wave file, raw or RIFF.
#include "tests/fuzz/Check.h"
#include "voice/UserWaves.h"

#include <cmath>
#include <span>

using namespace Grimworks;
using namespace Grimworks::Fuzz;

int LLVMFuzzerTestOneInput(const unsigned char* data, unsigned long size) {
    static WaveCycle cycle;
    const std::span<const std::byte> file = std::as_bytes(std::span(data, size));
    cycle.fill(0.5);
    TakeRawWave(file, cycle);
    for (const double value : cycle)
        Check(std::isfinite(value), "a raw wave is made of numbers");
    cycle.fill(0.5);
    TakeWavWave(file, cycle);
    for (const double value : cycle)
        Check(std::isfinite(value), "a RIFF wave is made of numbers");
    return 0;
}
