#pragma once

namespace Grimworks {

/// From now on the user's request to stop (Ctrl-C, or the system's request to end) does not kill the program
/// but is remembered, so that a half-written file is removed.
void CatchInterrupts();

/// True once such a request came.
[[nodiscard]] bool InterruptRequested();

} // namespace Grimworks
