#pragma once

#include "core/Limits.h"

namespace Grimworks {

/// Base of everything that processes sound sample by sample: a sample rate, a bypass flag and the cross-fade
/// that a toggle of the flag runs. Audio thread, or any thread under the plug-in lock.
class AudioProcessingUnit {
public:
    virtual ~AudioProcessingUnit() = default;

    /// Takes the host's rate in Hz.
    virtual void SetSampleRate(double rate) { sampleRate = rate; }

    /// Switches the unit; a change of the flag starts the cross-fade, a repeated value does nothing. The
    /// first step is taken at once, so the fade stands after 499 further frames.
    virtual void SetBypass(bool on) {
        if (on == bypass) return;
        bypass = on;
        fadeStep = on ? -0.002 : 0.002;
        fade = on ? 1.0 - 0.002 : 0.002;
    }

    [[nodiscard]] double SampleRate() const { return sampleRate; }
    [[nodiscard]] bool IsBypassed() const { return bypass; }

    /// Share of the processed signal, 0 (all dry) to 1 (all processed).
    [[nodiscard]] double Fade() const { return fade; }

    /// Switched off and the fade has reached the dry side: the unit may skip its work.
    [[nodiscard]] bool IsFadedOut() const { return bypass && fade == 0.0; }

protected:
    AudioProcessingUnit() = default;
    AudioProcessingUnit(const AudioProcessingUnit&) = default;
    AudioProcessingUnit& operator=(const AudioProcessingUnit&) = default;

    /// Moves the fade by one frame unless it stands at an end.
    void StepFade() {
        if (fade == 0.0 || fade == 1.0) return;
        fade += fadeStep;
        if (fade < 0.0) fade = 0.0;
        if (fade > 1.0) fade = 1.0;
    }

    double sampleRate = kDefaultSampleRate;
    bool bypass = false;
    double fade = 1.0;
    double fadeStep = 0.002;
};

} // namespace Grimworks
