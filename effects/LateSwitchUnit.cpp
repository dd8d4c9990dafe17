#include "effects/LateSwitchUnit.h"

#include <array>

namespace Grimworks {

void LateSwitchUnit::Process(StereoView io, int frames) {
    if (IsFadedOut() || frames > work.Size()) return;
    if (fade == 1.0) {
        const std::array channels{io.left, io.right};
        RunFilters(frames, channels.data());
        return;
    }
    work.CopyFrom(io, frames);
    const std::array channels{work.Left(), work.Right()};
    RunFilters(frames, channels.data());
    for (int i = 0; i < frames; ++i)
        StepFade();
}

} // namespace Grimworks
