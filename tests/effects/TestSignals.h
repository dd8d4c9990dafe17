#pragma once

#include "core/Maths.h"
#include "core/StereoBuffer.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace Grimworks::Testing {

/// Two channels that a unit under test works on in place.
struct Signal {
    std::vector<double> left;
    std::vector<double> right;

    explicit Signal(int frames, double value = 0.0)
        : left(static_cast<std::size_t>(frames), value), right(static_cast<std::size_t>(frames), value) {}

    [[nodiscard]] int Frames() const { return static_cast<int>(left.size()); }
    [[nodiscard]] StereoView View() { return {left.data(), right.data()}; }
    [[nodiscard]] StereoView From(int frame) { return {left.data() + frame, right.data() + frame}; }

    friend bool operator==(const Signal&, const Signal&) = default;
};

/// White noise within +-level, different on the two channels.
inline Signal NoiseSignal(int frames, double level, std::uint64_t seed = 1) {
    Signal signal(frames);
    std::uint64_t state = seed;
    const auto next = [&state, level] {
        state = state * 6364136223846793005ULL + 1442695040888963407ULL;
        return level * (static_cast<double>(state >> 33U) / 1073741824.0 - 1.0);
    };
    for (std::size_t i = 0; i < signal.left.size(); ++i) {
        signal.left[i] = next();
        signal.right[i] = next();
    }
    return signal;
}

/// Values that are no fit sound: not numbers, infinite, huge, tiny, both zeros.
inline Signal HostileSignal() {
    using Limits = std::numeric_limits<double>;
    const double values[] = {Limits::quiet_NaN(),
                             Limits::infinity(),
                             -Limits::infinity(),
                             Limits::max(),
                             Limits::lowest(),
                             1e19,
                             -1e19,
                             Limits::denorm_min(),
                             0.0,
                             -0.0,
                             1.0,
                             -1.0};
    Signal signal(0);
    for (int repeat = 0; repeat < 8; ++repeat) {
        for (const double value : values) {
            signal.left.push_back(value);
            signal.right.push_back(-value);
        }
    }
    return signal;
}

/// Largest absolute sample of both channels from a frame on; a NaN counts as infinite.
inline double Peak(const Signal& signal, int from = 0) {
    double peak = 0.0;
    for (std::size_t i = static_cast<std::size_t>(from); i < signal.left.size(); ++i) {
        for (const double v : {signal.left[i], signal.right[i]})
            peak = std::isnan(v) ? std::numeric_limits<double>::infinity() : std::fmax(peak, std::fabs(v));
    }
    return peak;
}

} // namespace Grimworks::Testing
