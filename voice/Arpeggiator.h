#pragma once

#include "voice/NoteMode.h"

#include <array>
#include <cstdint>

namespace Grimworks {

/// The three-note arpeggio of two note modes: a pitch ratio that steps through a triad and glides over a few
/// samples at each step. A step is a 1/64 note. Audio thread.
class Arpeggiator {
public:
    Arpeggiator();

    /// Note on: back to the root in this note mode. The step length is fixed from here on, so a tempo that
    /// changes later does not reach a held note; a tempo (beats per minute) that is not above 0 counts as
    /// 120. The glide goes on from the ratio that the voice had.
    void Reset(int noteMode, double tempo, double sampleRate);

    /// The ratio for the next sample; exactly 1 in the modes without arpeggio.
    double Step() {
        if (mode < NoteMode::kMajorArpeggio) return 1.0;
        if (counter++ > nextStep) {
            nextStep += stepSamples;
            index = index == 2 ? 0 : index + 1;
            target = mode == NoteMode::kMinorArpeggio ? minor[index] : major[index];
        }
        ratio = kSmoothB * target + kSmoothA * ratio;
        return ratio;
    }

    [[nodiscard]] bool IsActive() const { return mode >= NoteMode::kMajorArpeggio; }
    [[nodiscard]] std::uint32_t StepSamples() const { return stepSamples; }

private:
    static constexpr double kSmoothA = 0.442305198;
    static constexpr double kSmoothB = 0.557694802;

    std::array<double, 3> major;
    std::array<double, 3> minor;
    int mode = NoteMode::kStandard;
    std::size_t index = 0;
    std::uint32_t stepSamples = 0;
    std::uint32_t nextStep = 0;
    std::uint32_t counter = 0;
    double target = 1.0;
    double ratio = 1.0;
};

} // namespace Grimworks
