#include "plugin/PlugLock.h"

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#endif

namespace Grimworks {

#ifdef _WIN32

namespace {
CRITICAL_SECTION* Section(unsigned char* storage) {
    return reinterpret_cast<CRITICAL_SECTION*>(storage);
}
} // namespace

PlugLock::PlugLock() {
    static_assert(sizeof section == sizeof(CRITICAL_SECTION));
    static_assert(alignof(CRITICAL_SECTION) <= 8);
    InitializeCriticalSection(Section(section));
}

PlugLock::~PlugLock() {
    DeleteCriticalSection(Section(section));
}

void PlugLock::Enter() {
    EnterCriticalSection(Section(section));
}

void PlugLock::Leave() {
    LeaveCriticalSection(Section(section));
}

bool PlugLock::TryEnter() {
    return TryEnterCriticalSection(Section(section)) != 0;
}

#else

PlugLock::PlugLock() {
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutexattr_setprotocol(&attributes, PTHREAD_PRIO_INHERIT);
    if (pthread_mutex_init(&mutex, &attributes) != 0) {
        // A kernel without priority inheritance still gives mutual exclusion.
        pthread_mutexattr_setprotocol(&attributes, PTHREAD_PRIO_NONE);
        pthread_mutex_init(&mutex, &attributes);
    }
    pthread_mutexattr_destroy(&attributes);
}

PlugLock::~PlugLock() {
    pthread_mutex_destroy(&mutex);
}

void PlugLock::Enter() {
    pthread_mutex_lock(&mutex);
}

void PlugLock::Leave() {
    pthread_mutex_unlock(&mutex);
}

bool PlugLock::TryEnter() {
    return pthread_mutex_trylock(&mutex) == 0;
}

#endif

} // namespace Grimworks
