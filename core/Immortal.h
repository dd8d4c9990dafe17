#pragma once

namespace Grimworks {

/// Holds an object that is never destroyed: for process-wide caches, which a thread may still use while the
/// process ends. To be used as a static in a function.
template <typename T>
class Immortal {
public:
    Immortal() : value() {}
    ~Immortal() {} // NOLINT(modernize-use-equals-default): the union member stays alive
    Immortal(const Immortal&) = delete;
    Immortal& operator=(const Immortal&) = delete;

    T& operator*() { return value; }
    T* operator->() { return &value; }

private:
    union {
        T value;
    };
};

} // namespace Grimworks
