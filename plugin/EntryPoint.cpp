#include "plugin/ThudForge.h"

#include <memory>
#include <mutex>

using namespace Grimworks;

#if defined(_WIN32)
#define THUDFORGE_EXPORT extern "C" __declspec(dllexport)
#else
#define THUDFORGE_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace {

/// Hosts may create instances from several threads at once.
std::mutex& CreationLock() {
    static std::mutex lock;
    return lock;
}

AEffect* CreateInstance(audioMasterCallback host) noexcept {
    try {
        const std::lock_guard guard(CreationLock());
        auto instance = std::make_unique<ThudForge>(host);
        instance->FillUnusedPresets("Empty");
        // The host owns the instance from here on and gives it back with the close opcode.
        return instance.release()->Effect();
    } catch (...) {
        return nullptr;
    }
}

} // namespace

THUDFORGE_EXPORT AEffect* VSTPluginMain(audioMasterCallback host);
THUDFORGE_EXPORT AEffect* VSTPluginMain(audioMasterCallback host) {
    return CreateInstance(host);
}

/// Hosts from before the interface's last revision look for this name.
THUDFORGE_EXPORT AEffect* ThudForgeOldEntryPoint(audioMasterCallback host) __asm__("main");
THUDFORGE_EXPORT AEffect* ThudForgeOldEntryPoint(audioMasterCallback host) {
    return VSTPluginMain(host);
}
