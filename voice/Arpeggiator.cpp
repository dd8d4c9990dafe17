#include "voice/Arpeggiator.h"

#include <algorithm>

namespace Grimworks {

namespace {

constexpr double kStepFraction = 0.0625; // of a beat
constexpr double kFallbackTempo = 120.0; // beats per minute
constexpr double kLongestStep = 2147483647.0;

} // namespace

Arpeggiator::Arpeggiator()
    : major{1.0, SemitoneRatio(4.0), SemitoneRatio(7.0)}, minor{1.0, SemitoneRatio(3.0), SemitoneRatio(7.0)} {
}

void Arpeggiator::Reset(int noteMode, double tempo, double sampleRate) {
    index = 0;
    counter = 0;
    target = 1.0;
    mode = noteMode;
    const double sane = tempo > 0.0 ? tempo : kFallbackTempo;
    const double samples = 60.0 / sane * kStepFraction * sampleRate;
    const double limited = samples > 0.0 ? std::min(samples, kLongestStep) : 0.0;
    stepSamples = static_cast<std::uint32_t>(limited);
    nextStep = stepSamples;
}

} // namespace Grimworks
