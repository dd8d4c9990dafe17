#include "effects/TempoDelay.h"

#include "core/Maths.h"

#include <algorithm>
#include <cmath>

namespace Grimworks {

namespace {

constexpr double kSeconds = 1.0;       // unit of the room
constexpr int kRoom = 4;               // units
constexpr double kHighestRate = 2.0e6; // Hz; keeps the room affordable whatever a host asks for
constexpr double kSpreadDepth = 0.25;

} // namespace

TempoDelay::TempoDelay() {
    left.Resize(kDefaultBlockSize);
    right.Resize(kDefaultBlockSize);
}

void TempoDelay::Line::Resize(std::size_t frames) {
    samples.assign(frames, 0.0);
    if (position >= frames) position = 0;
    filter.Reset();
}

void TempoDelay::SetSampleRate(double rate) {
    if (!(rate > 0.0)) return;
    AudioProcessingUnit::SetSampleRate(rate);
    const int frames = static_cast<int>(std::min(rate, kHighestRate) * kSeconds) * kRoom;
    left.Resize(static_cast<std::size_t>(std::max(frames, 1)));
    right.Resize(static_cast<std::size_t>(std::max(frames, 1)));
}

void TempoDelay::SetTempo(double beatsPerMinute) {
    if (!(beatsPerMinute > 0.0) || beatsPerMinute == tempo) return;
    tempo = beatsPerMinute;
    beatSeconds = 1.0 / (tempo / 60.0);
}

void TempoDelay::SetAmount(double value) {
    if (std::isfinite(value)) amount = value;
}

void TempoDelay::SetFeedback(double value) {
    if (std::isfinite(value)) feedback = value;
}

void TempoDelay::SetDump(double value) {
    if (std::isfinite(value)) cutoff = value;
}

void TempoDelay::SetSpread(double value) {
    if (!std::isfinite(value)) return;
    const double d = (value - 0.5) * kSpreadDepth;
    left.spread = 1.0 + d;
    right.spread = 1.0 - d;
}

int TempoDelay::Limit(const Line& line) const {
    const double length = beatSeconds * line.spread * sampleRate;
    if (!(length > 0.0)) return 0;
    return static_cast<int>(std::min(length, static_cast<double>(line.samples.size())));
}

double TempoDelay::Line::Tick(double input, double feedbackGain, double lowPass, std::size_t limit) {
    const double delayed = samples[position];
    double stored = filter.Process(delayed * feedbackGain + input, lowPass, 0.0);
    if (!std::isfinite(stored)) {
        // It would circulate for good.
        filter.Reset();
        stored = 0.0;
    }
    samples[position] = stored;
    ++position;
    if (position >= limit) position = 0;
    return delayed;
}

void TempoDelay::Process(StereoView io, int frames) {
    const auto limitLeft = static_cast<std::size_t>(Limit(left));
    const auto limitRight = static_cast<std::size_t>(Limit(right));
    for (int i = 0; i < frames; ++i) {
        const double delayedLeft = left.Tick(io.left[i], feedback, cutoff, limitLeft);
        const double delayedRight = right.Tick(io.right[i], feedback, cutoff, limitRight);
        io.left[i] = delayedLeft * amount + io.left[i];
        io.right[i] = delayedRight * amount + io.right[i];
    }
}

} // namespace Grimworks
