#pragma once

namespace Grimworks {

/// How many times the calling thread has asked for memory with `new`.
[[nodiscard]] long AllocationCount();

} // namespace Grimworks
