#pragma once

#if defined(__SSE2__)
#include <immintrin.h>
#endif

namespace Grimworks {

/// Sets flush-to-zero and denormals-are-zero for its lifetime and puts the old modes back. It stands around
/// every process call and is part of the sound: smoothers that fall towards 0 reach it exactly.
class DenormalGuard {
public:
#if defined(__SSE2__)
    DenormalGuard() : saved(_mm_getcsr()) {
        _mm_setcsr(saved | kFlushToZero | kDenormalsAreZero);
    }
    ~DenormalGuard() {
        _mm_setcsr(saved);
    }
#elif defined(__aarch64__)
    DenormalGuard() {
        asm volatile("mrs %0, fpcr" : "=r"(saved));
        asm volatile("msr fpcr, %0" : : "r"(saved | kFlushToZero));
    }
    ~DenormalGuard() {
        asm volatile("msr fpcr, %0" : : "r"(saved));
    }
#else
    DenormalGuard() = default;
    ~DenormalGuard() = default;
#endif
    DenormalGuard(const DenormalGuard&) = delete;
    DenormalGuard& operator=(const DenormalGuard&) = delete;

private:
#if defined(__SSE2__)
    static constexpr unsigned kFlushToZero = 0x8000;
    static constexpr unsigned kDenormalsAreZero = 0x0040;
    unsigned saved;
#elif defined(__aarch64__)
    static constexpr unsigned long kFlushToZero = 1UL << 24;
    unsigned long saved = 0;
#endif
};

} // namespace Grimworks
