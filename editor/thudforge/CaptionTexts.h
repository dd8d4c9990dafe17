#pragma once

#include "core/ValueBlock.h"

#include <string>
#include <string_view>

namespace Grimworks {

class ThudForge;

/// What captions tell of the engine: copied in one go under the plug-in lock, so that texts are made without
/// it.
struct CaptionSource {
    ValueBlock values;
    double volumeDuration = 0.0; ///< seconds that a stage of 1 takes
    double filterDuration = 0.0;
    double crushBits = 0.0;
    int reducedRate = 0; ///< Hz
    double gateLevel = 0.0;
    double cutoff = 0.0;    ///< Hz
    double bendRange = 0.0; ///< semitones
    int unisonVoices = 1;

    CaptionSource() = default;
    explicit CaptionSource(const ThudForge& instrument);
};

/// Whether CaptionText has a text for a parameter.
[[nodiscard]] bool HasCaptionText(int id);

/// "-6.0dB" for a gain of 0.5; `silence` for 0 and below.
[[nodiscard]] std::string DecibelText(double gain, std::string_view silence);

/// The text of a parameter, empty for one without.
[[nodiscard]] std::string CaptionText(int id, const CaptionSource& source);

} // namespace Grimworks
