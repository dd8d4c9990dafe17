/* Libraries that were built for programs reach `stderr` as a variable of their own program. In a module the linker
   leads them here instead (--wrap=stderr). */

#include <stdio.h>

extern FILE* __real_stderr;

__attribute__((visibility("hidden"))) FILE* __wrap_stderr;

__attribute__((constructor(101))) static void TakeStandardError(void) {
    __wrap_stderr = __real_stderr;
}
