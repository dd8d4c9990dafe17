#pragma once

#include "core/AudioProcessingUnit.h"
#include "core/SmoothedValue.h"
#include "core/StereoBuffer.h"

#include <array>
#include <optional>

namespace Grimworks {

/// Six first-order all-pass stages in a row, swept by a sine LFO, with feedback around them. The phased
/// signal is added to the dry one, so full depth may raise the level by 6 dB. The corners of the sweep are
/// fixed fractions of the sample rate (440 and 1600 Hz at 44100 Hz), so they move with it.
class Phaser : public AudioProcessingUnit {
public:
    Phaser() { SetRate(0.1); }

    /// Knob 0..1. A value that is not finite is ignored, as in the other setters.
    void SetDepth(double value);
    /// Knob 0..1, the gain of the feedback; 1 is allowed and runs hot.
    void SetFeedback(double value);
    /// Knob 0..1 for 0 to 20 Hz at the sample rate of this moment.
    void SetRate(double value);

    /// The rate knob that locks the LFO to a tempo in beats per minute, by the "Phaser Tempo Sync" value
    /// 0..1; nothing when the lock is off.
    [[nodiscard]] static std::optional<double> SyncedRate(double tempo, double sync);

    /// In place. Does nothing once faded out or at depth 0. Audio thread.
    void Process(StereoView io, int frames);

private:
    static constexpr int kStages = 6;

    /// One channel: the stages' states, and the last output for the feedback.
    struct Chain {
        std::array<double, kStages> state{};
        double last = 0.0;

        double Tick(double input, double feedback, double coefficient);
        void ForgetOverflow();
    };

    double NextCoefficient();
    void RecoverPhase();

    Chain left;
    Chain right;
    double feedback = 0.5;
    double lfoPhase = 0.0; ///< radians
    double lfoIncrement = 0.0;
    double depth = 0.0;
    SmoothedValue smoothedDepth{0.9777, 0.0223, 0.0};
};

} // namespace Grimworks
