#pragma once

// The system's header, without the macros that rename operations of ours. Everything under editor/win/
// includes it through this file.

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#undef DrawText
#undef near
#undef far
