#include "effects/DistortionStage.h"

namespace Grimworks {

void DistortionStage::SetSampleRate(double rate) {
    if (!(rate > 0.0)) return;
    sampleRate = rate;
    shaper.SetSampleRate(rate);
    converter.SetSampleRate(rate);
}

void DistortionStage::SetBlockSize(int frames) {
    if (frames <= 0) return;
    blockSize = frames;
    converter.SetBlockSize(frames);
}

void DistortionStage::SetOnOff(double value) {
    const bool off = value == 0.0;
    crusher.SetBypass(off);
    distortion.SetBypass(off);
    shaper.SetBypass(off);
    converter.SetBypass(off);
}

void DistortionStage::Process(StereoView io, int frames, const double* distortionModulation,
                              const double* shaperModulation) {
    converter.Process(io, frames);
    crusher.Process(io, frames);
    gate.Process(io, frames);
    distortion.Process(io, frames, distortionModulation);
    shaper.Process(io, frames, shaperModulation);
}

int DistortionStage::ReducedRate() const {
    const double share = static_cast<double>(converter.KeptFrames(blockSize)) / blockSize;
    return static_cast<int>(Clamp(share * sampleRate, 0.0, 1e9));
}

} // namespace Grimworks
