#pragma once

#include <string>

namespace Grimworks {

/// What else a caption depends on.
struct CaptionSetting {
    double volumeDuration = 0.0; ///< values of the envelopes' durations
    double filterDuration = 0.0;
    double oscillatorRates[3] = {};
    double phaserRate = 0.0;
    double sampleRate = 44100.0;
    int blockSize = 1024;
};

/// The text under the control of a live parameter that stands at v (0..1, of the range), worked out here
/// from the formats alone. Empty for a parameter whose control shows its value itself.
[[nodiscard]] std::string ExpectedCaption(int id, double v, const CaptionSetting& setting);

} // namespace Grimworks
