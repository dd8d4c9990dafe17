#include "tests/dsp/AllocationCounter.h"

#include <cstdlib>
#include <new>

namespace {

thread_local long allocations = 0;

} // namespace

namespace DspTest {

long Allocations() {
    return allocations;
}

} // namespace DspTest

void* operator new(std::size_t size) {
    ++allocations;
    void* memory = std::malloc(size != 0 ? size : 1);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
