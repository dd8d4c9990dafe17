#pragma once

#include "voice/WaveCycle.h"
#include "voice/WaveFft.h"
#include "voice/WaveTableSet.h"

#include <memory>

namespace Grimworks {

/// Turns a wave cycle into its ladder of band-limited levels, each with half as many harmonics as the one
/// before. Construction only: it allocates.
class WaveSetBuilder {
public:
    WaveSetBuilder();

    /// Replaces the levels of `set`. The first level holds every harmonic up to the highest that the cycle
    /// has and peaks at 0.999; the others keep its scale, so that a harmonic has one level throughout the
    /// ladder. The mean is taken out, and the samples stand one place earlier than in the cycle. A cycle
    /// without any harmonic leaves the set empty. Buffers of a set that is built anew are used again.
    void Build(WaveTableSet& set, ConstWaveSpan cycle);

private:
    struct Work {
        WaveCycle spectrumReal;
        WaveCycle spectrumImag;
        WaveCycle real;
        WaveCycle imag;
    };

    int Analyse(ConstWaveSpan cycle);
    void Synthesise(int maxHarmonic);

    WaveFft fft;
    std::unique_ptr<Work> work;
};

} // namespace Grimworks
