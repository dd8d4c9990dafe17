#pragma once

#include "core/Limits.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Grimworks {

/// A pair of channel pointers that a unit works on in place. Not owning.
struct StereoView {
    double* left;
    double* right;
};

/// Two channels of doubles that grow and never shrink. Grow allocates and belongs to the host's thread; all
/// else is for the audio thread.
class StereoBuffer {
public:
    explicit StereoBuffer(int frames = kDefaultBlockSize) { Grow(frames); }

    /// Makes room for this many frames. A buffer that had to grow is cleared.
    void Grow(int frames) {
        if (frames <= Size()) return;
        left.assign(static_cast<std::size_t>(frames), 0.0);
        right.assign(static_cast<std::size_t>(frames), 0.0);
    }

    /// Silences the whole allocated length.
    void Clear() {
        std::fill(left.begin(), left.end(), 0.0);
        std::fill(right.begin(), right.end(), 0.0);
    }

    /// Takes the first `frames` samples of both channels; frames must not exceed Size().
    void CopyFrom(StereoView source, int frames) {
        std::copy_n(source.left, frames, left.begin());
        std::copy_n(source.right, frames, right.begin());
    }

    [[nodiscard]] int Size() const { return static_cast<int>(left.size()); }
    [[nodiscard]] double* Left() { return left.data(); }
    [[nodiscard]] double* Right() { return right.data(); }
    [[nodiscard]] StereoView View() { return {left.data(), right.data()}; }

private:
    std::vector<double> left;
    std::vector<double> right;
};

} // namespace Grimworks
