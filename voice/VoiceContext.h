#pragma once

#include "core/RandomGenerator.h"
#include "core/TempoSource.h"
#include "core/ValueBlock.h"

namespace Grimworks {

class MultiSampler;
class PitchEnvelope;
class WaveformProvider;

/// What a voice is given to read. Nothing is owned; all of it must outlive the voices. A voice that lacks any
/// of it stays silent.
struct VoiceContext {
    const ValueBlock* values = nullptr;           ///< the current program
    const double* pitchBendFactor = nullptr;      ///< frequency multiplier of the wheel, 1.0 at rest
    const WaveformProvider* waves = nullptr;      ///< the stored waves
    const PitchEnvelope* pitchEnvelope = nullptr; ///< the one sweep that all voices share
    const MultiSampler* clicks = nullptr;         ///< the one click list that all voices share
    RandomGenerator* random = nullptr;            ///< the instrument's noise
    TempoSource* tempo = nullptr;                 ///< asked at each note start

    [[nodiscard]] bool IsComplete() const {
        return values != nullptr && pitchBendFactor != nullptr && waves != nullptr &&
               pitchEnvelope != nullptr && clicks != nullptr && random != nullptr && tempo != nullptr;
    }
};

} // namespace Grimworks
