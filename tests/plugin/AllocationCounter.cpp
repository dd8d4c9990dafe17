#include "tests/plugin/AllocationCounter.h"

#include <cstdlib>
#include <new>

namespace {
thread_local long allocations = 0;
}

#if THUDFORGE_COUNTS_ALLOCATIONS
void* operator new(std::size_t size) {
    ++allocations;
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    ++allocations;
    return std::malloc(size == 0 ? 1 : size);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

#endif

namespace Grimworks {

long AllocationCount() {
    return allocations;
}

} // namespace Grimworks
