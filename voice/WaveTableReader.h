#pragma once

#include "core/Limits.h"
#include "core/Phase.h"
#include "voice/WaveTableSet.h"

namespace Grimworks {

/// Plays a ladder of band-limited tables with linear interpolation. The level follows the increment of each
/// sample, without a cross-fade between levels. Audio thread.
class WaveTableReader {
public:
    const WaveTableSet* set = nullptr; ///< not owned; null or empty reads as 0 with the phase moving on
    double phase = 0.0;                ///< 0 up to 1
    double phaseInc = 0.0;             ///< cycles per sample, not negative
    double sampleRate = kDefaultSampleRate;

    /// The value at the current phase, then one sample on.
    double Tick() {
        const double value = set != nullptr && set->count > 0 ? Read(Level()) : 0.0;
        phase = WrappedPhase(phase + phaseInc);
        return value;
    }

    /// Takes a new rate in Hz and keeps the frequency. A rate that is not above 0 is ignored.
    void SetSampleRate(double rate) {
        if (!(rate > 0.0)) return;
        phaseInc = sampleRate * phaseInc / rate;
        sampleRate = rate;
    }

private:
    /// The richest level that may be played at the present increment; the last one beyond the top.
    [[nodiscard]] const WaveTableLevel& Level() const {
        const WaveTableLevel* level = set->levels.data();
        const WaveTableLevel* const last = level + set->count - 1;
        while (level != last && phaseInc >= level->topFrequency)
            ++level;
        return *level;
    }

    [[nodiscard]] double Read(const WaveTableLevel& level) const {
        const auto& samples = *level.samples;
        const double position = kWaveSize * phase;
        // A phase outside its range (only a broken increment makes one) reads the start of the wave.
        if (!(position >= 0.0 && position < kWaveSize)) return samples[0];
        const int k = static_cast<int>(position);
        const double f = position - k;
        const double a = samples[static_cast<std::size_t>(k)];
        const double b = samples[static_cast<std::size_t>(k + 1 == kWaveSize ? 0 : k + 1)];
        return (b - a) * f + a;
    }
};

} // namespace Grimworks
