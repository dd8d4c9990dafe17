#pragma once

#include <array>
#include <vector>

namespace Grimworks {

class IPlugBase;

/// Holds the plug-in lock as PlugLockGuard does, and keeps what the host is to be told of parameters and
/// programs until the lock is free again: a host that is told something may wait for a thread of its own that
/// waits for the plug-in. Of several on one stack the outermost tells, parameters in the order in which
/// things happened and then the programs; a host that throws hears no more. Allocates only for more news than
/// any one change of a parameter makes.
class HostNews {
public:
    explicit HostNews(IPlugBase& plugBase);
    ~HostNews();
    HostNews(const HostNews&) = delete;
    HostNews& operator=(const HostNews&) = delete;

    /// A parameter's new value on 0..1. Called on the outermost one, under the lock.
    void Add(int id, double normalized);

    /// Programs or many parameters changed; told once. Called on the outermost one, under the lock.
    void AddPrograms() { programs = true; }

private:
    struct Item {
        int id;
        double normalized;
    };
    static constexpr std::size_t kWithoutAllocation = 16;

    void Tell();

    IPlugBase& plug;
    bool isOutermost;
    bool programs = false;
    std::size_t fewCount = 0;
    std::array<Item, kWithoutAllocation> few;
    std::vector<Item> more;
};

} // namespace Grimworks
