#pragma once

#include <type_traits>
#include <vector>

namespace Grimworks {

/// A list of object and function pairs that are all called, in the order of their connection. Connecting may
/// allocate and belongs to construction; calling never does. Objects must outlive the signal's calls.
template <typename... Args>
class Signal {
public:
    /// Adds a member function of an object: `signal.Connect<&VoiceBank::NoteOn>(&bank)`. A pair that is
    /// already there is not added again.
    template <auto Member, typename Object>
    void Connect(Object* object) {
        static_assert(std::is_invocable_v<decltype(Member), Object*, Args...>);
        const Slot slot{object,
                        [](void* target, Args... args) { (static_cast<Object*>(target)->*Member)(args...); }};
        for (const Slot& present : slots) {
            if (present.object == slot.object && present.function == slot.function) return;
        }
        slots.push_back(slot);
    }

    void operator()(Args... args) const {
        for (const Slot& slot : slots)
            slot.function(slot.object, args...);
    }

    [[nodiscard]] int SlotCount() const { return static_cast<int>(slots.size()); }

private:
    struct Slot {
        void* object;
        void (*function)(void*, Args...);
    };

    std::vector<Slot> slots;
};

} // namespace Grimworks
