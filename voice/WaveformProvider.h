#pragma once

#include "core/Limits.h"
#include "core/RandomGenerator.h"
#include "voice/UserWaves.h"
#include "voice/WaveCycle.h"
#include "voice/WaveTableSet.h"

#include <array>
#include <span>
#include <string>
#include <vector>

namespace Grimworks {

inline constexpr int kWavePreviewPoints = 105;

/// All wave material of the oscillators: the cycles of the 41 waveforms and the ladder of band-limited tables
/// of each. Waves 1, 4, 8 and 9 are computed live and have no ladder.
///
/// The constructor allocates only. The instrument then calls GenerateWaves and BuildSets once, in this order,
/// after everything else that draws from the generator at construction, because live noise goes on from where
/// the noise waves leave it. Afterwards voices and editor read without a lock.
class WaveformProvider {
public:
    /// The generator must outlive the provider. The base folder is where the user wave folder stands; it may
    /// be changed until GenerateWaves.
    explicit WaveformProvider(RandomGenerator& generator, std::string base = UserWaveBaseFolder());

    WaveformProvider(const WaveformProvider&) = delete;
    WaveformProvider& operator=(const WaveformProvider&) = delete;
    virtual ~WaveformProvider() = default;

    void SetBaseFolder(std::string base) { baseFolder = std::move(base); }

    /// Seeds the generator, draws the computed waves, takes the stored ones, reads the user files from disk
    /// and brings the waves to their peaks. Constructing thread.
    void GenerateWaves();

    /// Builds the 37 ladders from the cycles. Constructing thread.
    void BuildSets();

    /// Builds one ladder anew from a drawn cycle; values that are not finite count as 0. An index outside
    /// 0..40 is ignored. Allocates; under the plug-in lock, as voices may be reading the set.
    void RebuildSet(int index, ConstWaveSpan cycle);

    /// The ladder of a waveform; an empty one for the live waves and outside 0..40. Stays where it is.
    [[nodiscard]] const WaveTableSet& Set(int index) const;

    /// The cycle of a waveform at full resolution, as the ladder is built from it; all 0 for the live waves
    /// and before GenerateWaves. index is 0..40.
    [[nodiscard]] ConstWaveSpan Cycle(int index) const { return cycles[static_cast<std::size_t>(index)]; }

    /// Display points of the wave that a "Waveform" value selects. The phase, in cycles, may be negative.
    /// Noise shows fresh random points, from the editor's own generator; a wave without material shows 0.
    void PreviewWave(double value, double phase, std::span<double, kWavePreviewPoints> points,
                     RandomGenerator& editorRandom) const;

    /// One cycle of the wave as text: 4096 numbers with ten decimals, separated by commas. White noise is
    /// drawn anew; pink noise and waves without material give zeros.
    [[nodiscard]] std::string WaveDumpText(double value, RandomGenerator& editorRandom) const;

private:
    [[nodiscard]] double FirstLevelSample(int index, double phase) const;
    [[nodiscard]] double DumpValue(int index, int sample, RandomGenerator& editorRandom) const;

    RandomGenerator& random;
    std::string baseFolder;
    std::array<WaveTableSet, kWaveforms> sets;
    WaveTableSet silence;
    std::vector<WaveCycle> cycles;
};

} // namespace Grimworks
