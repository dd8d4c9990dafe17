#pragma once

#include <cstdlib>
#include <memory>

namespace Grimworks {

struct X11Free {
    void operator()(void* memory) const noexcept { std::free(memory); }
};

/// A reply, event or error of the display server, which comes in memory that is to be freed.
template <class Message>
using X11Reply = std::unique_ptr<Message, X11Free>;

} // namespace Grimworks
