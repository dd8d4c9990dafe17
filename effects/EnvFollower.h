#pragma once

#include "core/AudioProcessingUnit.h"
#include "core/StereoBuffer.h"

namespace Grimworks {

/// Measures the level of both channels for a display, 0..1, with its own times up and down. The signal itself
/// is not changed.
class EnvFollower final : public AudioProcessingUnit {
public:
    EnvFollower() { UpdateCoefficients(); }

    void SetSampleRate(double rate) override;

    /// Times in seconds, above 0.
    void SetTimes(double attack, double release);

    /// Follows a block; a sample that is not a number is skipped. Audio thread.
    void Process(StereoView input, int frames);

    /// Lets the level fall as over a twentieth of the release time of silence, for when no sound arrives.
    void ProcessQuiet();

    [[nodiscard]] double Left() const { return envelopeLeft; }
    [[nodiscard]] double Right() const { return envelopeRight; }

private:
    void UpdateCoefficients();
    void Follow(double& envelope, double sample) const;

    double attackSeconds = 0.3;
    double releaseSeconds = 0.3;
    double attackCoefficient = 0.0;
    double releaseCoefficient = 0.0;
    double envelopeLeft = 0.0;
    double envelopeRight = 0.0;
};

} // namespace Grimworks
