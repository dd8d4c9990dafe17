#pragma once

#include "voice/WaveFft.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

/// Measures of a rendered sound, for the tests of the factory bank and for its documentation.
namespace Grimworks {

/// A stereo sound at kSoundRate.
struct Sound {
    std::vector<double> left;
    std::vector<double> right;

    [[nodiscard]] std::size_t Frames() const { return left.size(); }
    [[nodiscard]] double Mono(std::size_t frame) const { return 0.5 * (left[frame] + right[frame]); }
};

inline constexpr double kSoundRate = 44100.0; // Hz

/// Direct form I of a second-order section.
class SecondOrder {
public:
    SecondOrder(double b0, double b1, double b2, double a1, double a2)
        : numerator{b0, b1, b2}, denominator{a1, a2} {}

    double Process(double x) {
        const double y = numerator[0] * x + numerator[1] * x1 + numerator[2] * x2 - denominator[0] * y1 -
                         denominator[1] * y2;
        x2 = x1;
        x1 = x;
        y2 = y1;
        y1 = y;
        return y;
    }

private:
    std::array<double, 3> numerator;
    std::array<double, 2> denominator;
    double x1 = 0.0, x2 = 0.0, y1 = 0.0, y2 = 0.0;
};

/// The weighting of loudness after ITU-R BS.1770: a shelf for the head and a high-pass. The analogue corner
/// data of its tables (1681.97 Hz, 3.99984 dB, Q 0.70718; 38.1355 Hz, Q 0.50033) at kSoundRate.
class LoudnessWeighting {
public:
    double Process(double x) { return highPass.Process(shelf.Process(x)); }

private:
    static SecondOrder MakeShelf() {
        const double k = std::tan(std::numbers::pi * 1681.974450955533 / kSoundRate);
        const double q = 0.7071752369554196;
        const double high = std::pow(10.0, 3.999843853973347 / 20.0);
        const double band = std::pow(high, 0.4996667741545416);
        const double a0 = 1.0 + k / q + k * k;
        return {(high + band * k / q + k * k) / a0, 2.0 * (k * k - high) / a0,
                (high - band * k / q + k * k) / a0, 2.0 * (k * k - 1.0) / a0, (1.0 - k / q + k * k) / a0};
    }
    static SecondOrder MakeHighPass() {
        const double k = std::tan(std::numbers::pi * 38.13547087602444 / kSoundRate);
        const double q = 0.5003270373238773;
        const double a0 = 1.0 + k / q + k * k;
        return {1.0, -2.0, 1.0, 2.0 * (k * k - 1.0) / a0, (1.0 - k / q + k * k) / a0};
    }

    SecondOrder shelf = MakeShelf();
    SecondOrder highPass = MakeHighPass();
};

/// Loudness of the loudest 100 ms, in LUFS: weighted power of both channels.
[[nodiscard]] inline double Loudness(const Sound& sound) {
    constexpr auto kWindow = static_cast<std::size_t>(kSoundRate / 10.0);
    LoudnessWeighting left;
    LoudnessWeighting right;
    std::vector<double> power(sound.Frames());
    double sum = 0.0;
    double most = 0.0;
    for (std::size_t i = 0; i < power.size(); ++i) {
        const double l = left.Process(sound.left[i]);
        const double r = right.Process(sound.right[i]);
        power[i] = l * l + r * r;
        sum += power[i];
        if (i >= kWindow) sum -= power[i - kWindow];
        most = std::max(most, sum);
    }
    return -0.691 + 10.0 * std::log10(std::max(most / static_cast<double>(kWindow), 1e-20));
}

/// Levels of the sound in slices of 10 ms: root of the mean power of both channels.
[[nodiscard]] inline std::vector<double> Levels(const Sound& sound) {
    constexpr auto kSlice = static_cast<std::size_t>(kSoundRate / 100.0);
    std::vector<double> levels;
    for (std::size_t start = 0; start + kSlice <= sound.Frames(); start += kSlice) {
        double sum = 0.0;
        for (std::size_t i = start; i < start + kSlice; ++i)
            sum += sound.left[i] * sound.left[i] + sound.right[i] * sound.right[i];
        levels.push_back(std::sqrt(sum / (2.0 * static_cast<double>(kSlice))));
    }
    return levels;
}

/// Seconds until the sound has fallen for good to 40 dB below its loudest 10 ms.
[[nodiscard]] inline double Length(const Sound& sound) {
    const std::vector<double> levels = Levels(sound);
    if (levels.empty()) return 0.0;
    const double floor = *std::max_element(levels.begin(), levels.end()) * 0.01;
    std::size_t end = levels.size();
    while (end > 0 && levels[end - 1] <= floor)
        --end;
    return static_cast<double>(end) / 100.0;
}

/// What a pitch detector found.
struct Pitch {
    double hz = 0.0;
    double clarity = 0.0; ///< 1 for a sound that repeats itself to the letter, 0 for noise
};

/// Pitch between 25 Hz and `highest` Hz in the window that starts at `start`, by the cumulative mean
/// difference of de Cheveigne and Kawahara (2002): the first lag at which the sound nearly repeats itself.
[[nodiscard]] inline Pitch FindPitch(const Sound& sound, std::size_t start, double highest = 4000.0) {
    constexpr std::size_t kWindow = 2600;
    constexpr auto kLongest = static_cast<std::size_t>(kSoundRate / 25.0);
    constexpr double kGoodEnough = 0.12;
    if (start + kWindow + kLongest + 1 > sound.Frames()) return {};
    std::vector<double> x(kWindow + kLongest + 1);
    for (std::size_t i = 0; i < x.size(); ++i)
        x[i] = sound.Mono(start + i);
    std::vector<double> measure(kLongest + 1, 1.0);
    double total = 0.0;
    for (std::size_t lag = 1; lag <= kLongest; ++lag) {
        double difference = 0.0;
        for (std::size_t i = 0; i < kWindow; ++i)
            difference += (x[i] - x[i + lag]) * (x[i] - x[i + lag]);
        total += difference;
        measure[lag] = total > 0.0 ? difference * static_cast<double>(lag) / total : 1.0;
    }
    const auto first = static_cast<std::size_t>(kSoundRate / highest);
    std::size_t best = first;
    for (std::size_t lag = first; lag < kLongest; ++lag) {
        if (measure[lag] < measure[best]) best = lag;
        if (measure[lag] < kGoodEnough && measure[lag + 1] >= measure[lag]) {
            best = lag;
            break;
        }
    }
    const double before = measure[best - 1];
    const double after = measure[std::min(best + 1, kLongest)];
    const double bend = before + after - 2.0 * measure[best];
    const double shift = bend > 0.0 ? 0.5 * (before - after) / bend : 0.0;
    return {kSoundRate / (static_cast<double>(best) + std::clamp(shift, -0.5, 0.5)),
            std::clamp(1.0 - measure[best], 0.0, 1.0)};
}

/// Centre of the magnitude spectrum in Hz, over the whole sound.
[[nodiscard]] inline double Centroid(const Sound& sound) {
    const WaveFft fft;
    WaveCycle re{};
    WaveCycle im{};
    std::vector<double> power(kWaveSize / 2, 0.0);
    for (std::size_t start = 0; start < sound.Frames(); start += kWaveSize / 2) {
        for (std::size_t i = 0; i < kWaveSize; ++i) {
            const double turn = 2.0 * std::numbers::pi * static_cast<double>(i) / kWaveSize;
            const double x = start + i < sound.Frames() ? sound.Mono(start + i) : 0.0;
            re[i] = x * (0.5 - 0.5 * std::cos(turn));
            im[i] = 0.0;
        }
        fft.Transform(re, im);
        for (std::size_t k = 1; k < power.size(); ++k)
            power[k] += re[k] * re[k] + im[k] * im[k];
    }
    double weighted = 0.0;
    double sum = 0.0;
    for (std::size_t k = 1; k < power.size(); ++k) {
        const double magnitude = std::sqrt(power[k]);
        weighted += magnitude * static_cast<double>(k) * kSoundRate / kWaveSize;
        sum += magnitude;
    }
    return sum > 0.0 ? weighted / sum : 0.0;
}

} // namespace Grimworks
