#pragma once

#include "core/AudioProcessingUnit.h"
#include "core/StereoBuffer.h"

namespace Grimworks {

/// Sample-rate reduction that keeps some samples of a block and holds or joins them. Its grid starts anew
/// with every block, which ties the sound to the host's block size. Switching it acts at once.
class SmpRateConverter : public AudioProcessingUnit {
public:
    /// Makes room for blocks of this many frames.
    void SetBlockSize(int frames) { kept.Grow(frames); }

    /// Knob 0..1; the kept share of samples is its cube, 1 being off. A value that is not finite is ignored.
    void SetReduction(double value);

    /// Whether to draw straight lines between kept samples instead of holding them.
    void SetInterpolate(bool on) { interpolate = on; }

    /// How many samples of a block of this many frames are kept, at least 2.
    [[nodiscard]] int KeptFrames(int frames) const;

    /// In place; frames at most the block size. Audio thread.
    void Process(StereoView io, int frames);

private:
    double factor = 1.0;
    bool interpolate = false;
    StereoBuffer kept;
};

} // namespace Grimworks
