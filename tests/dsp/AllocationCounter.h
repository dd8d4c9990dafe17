#pragma once

namespace DspTest {

/// How often this thread has asked for memory so far. The whole test program counts.
[[nodiscard]] long Allocations();

} // namespace DspTest
