#include "voice/WaveGenerator.h"

#include "core/Maths.h"
#include "core/Normalise.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace Grimworks {
namespace {

constexpr double kGeneratedPeak = 0.98777;

constexpr std::array kNormalisedWaves{Waveform::Noize,      Waveform::LowQNoise1,  Waveform::LowQNoise2,
                                      Waveform::LowQNoise3, Waveform::Pyrokinesis, Waveform::SReceptor,
                                      Waveform::DReceptor,  Waveform::Shikoku,     Waveform::Kic8462852,
                                      Waveform::Synapsis,   Waveform::GeoChirp,    Waveform::WaveGarden};

double BrickBreaker(double x) {
    if (x >= 0.1 && x < 0.3) return 1.0;
    if (x >= 0.6 && x < 0.7) return -1.0;
    return 0.0;
}

double Pyrokinesis(double x, double hump) {
    double v = std::sin(2.0 * kPi * x);
    if (v > 0.5) v -= UnitTriangle(x);
    if (v < -0.5) v += std::fabs(UnitTriangle(x));
    return -v * hump;
}

double Shikoku(double x) {
    if (x < 0.25 || x >= 0.75) return 0.5 * UnitTriangle(Fraction(2.0 * x));
    return UnitTriangle(Fraction(2.0 * (x - 0.25)));
}

double Kic8462852(double x) {
    const double body = x < 0.5 ? Clamp(std::sin(4.0 * kPi * x) * 4.4, -1.0, 1.0)
                                : 0.5 * UnitTriangle(Fraction(2.0 * (x - 0.5)));
    return body + 0.25 * UnitTriangle(Fraction(4.0 * x));
}

double Synapsis(double x, double square, double hump2) {
    return Clamp(square * 0.7 - std::sin(16.0 * kPi * x) * square * 0.4 * hump2, -1.0, 1.0);
}

double GeoChirp(double x) {
    return UnitTriangle(Fraction(std::pow(1.0 - x, 15.0) * 60.0)) * std::cos(0.5 * kPi * x);
}

double WaveGarden(double x, double hump, double hump2) {
    return std::sin(4.0 * kPi * x) * (hump2 * hump2) + std::sin(12.0 * kPi * x) * (1.0 - hump) * 0.25;
}

/// The stepped noise behind the three "Low-Q" waves: each holds its level until its own grid of samples
/// comes round again.
class SteppedNoise {
public:
    explicit SteppedNoise(RandomGenerator& source) : random(source) {}

    /// One draw, -1 up to just below +1 in 16384 steps.
    double Draw() { return static_cast<double>((random.Next() & 0x3fff) - 8192) / 8192.0; }

    void Step(int sample, double x) {
        if (sample % 75 == 0) level1 = Draw();
        if (sample % 50 == 0) {
            const double r = Draw();
            level2 = (UnitTriangle(Fraction(0.5 * x)) * r + r) * 0.5;
        }
        if (sample % 25 == 0) level3 = Draw() * UnitTriangle(x);
        // No wave hears this draw, but every later one depends on it having been made.
        if (sample % 100 == 0) static_cast<void>(random.Next());
    }

    double level1 = 0.0;
    double level2 = 0.0;
    double level3 = 0.0;

private:
    RandomGenerator& random;
};

} // namespace

void WriteGeneratedWaves(RandomGenerator& random, std::span<WaveCycle, kWaveforms> waves) {
    random.Seed(kWaveSeed);
    SteppedNoise noise(random);
    for (int i = 0; i < kWaveSize; ++i) {
        const auto sample = static_cast<std::size_t>(i);
        const auto wave = [&](Waveform::Index index) -> double& {
            return waves[static_cast<std::size_t>(index)][sample];
        };
        const double x = static_cast<double>(i) / kWaveSize;
        const double square = i < kWaveSize / 2 ? 1.0 : -1.0;
        const double hump = std::sin(kPi * x);
        const double hump2 = hump * hump;
        const double sine = std::sin(2.0 * kPi * x);
        const double fire = Pyrokinesis(x, hump);

        wave(Waveform::BrickBreaker) = BrickBreaker(x);
        wave(Waveform::Sine) = sine;
        wave(Waveform::WaveScape) = -std::sin(4.0 * kPi * x) * hump2;
        wave(Waveform::WaveVibe) = std::sin(8.0 * kPi * x) * hump2;
        wave(Waveform::Pyrokinesis) = fire;
        wave(Waveform::SReceptor) = Clamp(std::tan(kPi * x), -4.0, 4.0);
        wave(Waveform::DReceptor) = Clamp(std::tan(2.0 * kPi * x), -4.0, 4.0);
        wave(Waveform::Shikoku) = Shikoku(x);
        wave(Waveform::Kic8462852) = Kic8462852(x);
        wave(Waveform::Noize) = noise.Draw();
        noise.Step(i, x);
        wave(Waveform::LowQNoise1) = fire * 0.2 * noise.level1 + noise.level1 * 0.8;
        wave(Waveform::LowQNoise2) = UnitTriangle(x) * 0.2 * noise.level2 + noise.level2 * 0.8 + 0.1 * sine;
        wave(Waveform::LowQNoise3) = noise.level3;
        wave(Waveform::Synapsis) = Synapsis(x, square, hump2);
        wave(Waveform::GeoChirp) = GeoChirp(x);
        wave(Waveform::WaveGarden) = WaveGarden(x, hump, hump2);
    }
}

void NormaliseGeneratedWaves(std::span<WaveCycle, kWaveforms> waves) {
    for (const Waveform::Index index : kNormalisedWaves)
        Normalise(waves[static_cast<std::size_t>(index)], kGeneratedPeak);
}

} // namespace Grimworks
