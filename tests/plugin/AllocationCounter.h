#pragma once

#if defined(__SANITIZE_THREAD__)
#define THUDFORGE_COUNTS_ALLOCATIONS 0
#elif defined(__has_feature)
#define THUDFORGE_COUNTS_ALLOCATIONS (!__has_feature(thread_sanitizer))
#else
#define THUDFORGE_COUNTS_ALLOCATIONS 1
#endif

namespace Grimworks {

/// False where the thread sanitizer keeps `new` for itself; the count is then always 0.
inline constexpr bool kCountsAllocations = THUDFORGE_COUNTS_ALLOCATIONS != 0;

/// How many times the calling thread has asked for memory with `new`.
[[nodiscard]] long AllocationCount();

} // namespace Grimworks
