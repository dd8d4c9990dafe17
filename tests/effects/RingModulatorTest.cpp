#include "effects/RingModulator.h"

#include "tests/effects/TestSignals.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

constexpr int kSettled = 3000; ///< frames after which the smoother rests

double Sine(double cycles) {
    return std::sin(2.0 * kPi * cycles);
}

/// What a fresh unit makes of a constant 1: after the smoother has come to rest, its modulator.
Signal Modulator(double frequency, double waveform, double rate = 48000.0) {
    RingModulator ring;
    ring.SetSampleRate(rate);
    ring.SetFrequency(frequency);
    ring.SetWaveform(waveform);
    ring.SetAmount(1.0);
    Signal signal(kSettled + 1000, 1.0);
    ring.Process(signal.View(), signal.Frames());
    return signal;
}

} // namespace

TEST(RingModulator, AtFrequencyZeroTheFrameIsUntouchedAndNothingMoves) {
    RingModulator ring;
    ring.SetSampleRate(48000.0);
    ring.SetAmount(1.0);
    ring.SetFrequency(0.0);
    Signal signal = NoiseSignal(256, 1.0);
    const Signal before = signal;
    ring.SetBypass(true);
    ring.Process(signal.View(), 256);
    EXPECT_EQ(signal, before);
    EXPECT_EQ(ring.Fade(), 0.998);
    ring.SetBypass(false);
    // The oscillator and the smoother start from where they were left: at their beginning.
    ring.SetFrequency(0.25);
    Signal ones(2, 1.0);
    ring.Process(ones.View(), 2);
    EXPECT_EQ(ones.left[0], 1.0 - 0.0223 * 0.002);
}

TEST(RingModulator, AtAmountZeroTheFrameIsUntouched) {
    RingModulator ring;
    Signal signal = NoiseSignal(256, 1.0);
    const Signal before = signal;
    ring.Process(signal.View(), 256);
    EXPECT_EQ(signal, before);
}

TEST(RingModulator, FollowsItsFormulaFromTheFirstFrame) {
    RingModulator ring;
    ring.SetAmount(0.6);
    Signal signal = NoiseSignal(2000, 1.0);
    const Signal before = signal;
    ring.Process(signal.View(), 2000);
    double m = 0.0;
    for (std::size_t i = 0; i < 2000; ++i) {
        m = 0.0223 * 0.6 + 0.9777 * m;
        const double s = Sine(static_cast<double>(i) * 400.0 / 44100.0); // the start frequency
        EXPECT_NEAR(signal.left[i], before.left[i] * (1.0 - m + m * s), 1e-10);
        EXPECT_NEAR(signal.right[i], before.right[i] * (1.0 - m + m * s), 1e-10);
    }
}

TEST(RingModulator, FullAmountIsThePlainProduct) {
    const Signal signal = Modulator(0.25, 0.0);
    for (int i = kSettled; i < kSettled + 480; ++i)
        EXPECT_NEAR(signal.left[static_cast<std::size_t>(i)], Sine(i * 1000.0 / 48000.0), 1e-9);
    // 3024 is a whole number of periods: the modulator passes through its phase 0.
    EXPECT_NEAR(signal.left[3024], 0.0, 1e-9);
}

TEST(RingModulator, Sine2RunsAtTwiceTheFrequency) {
    const Signal signal = Modulator(1.0, 0.75);
    for (int i = kSettled; i < kSettled + 480; ++i)
        EXPECT_NEAR(signal.left[static_cast<std::size_t>(i)], Sine((2.0 * i + 1.0) * 4000.0 / 48000.0), 1e-9);
}

TEST(RingModulator, Sine3IsThreeOctaves) {
    const Signal signal = Modulator(0.1, 1.0);
    for (int i = kSettled; i < kSettled + 480; ++i) {
        const double c = i * 400.0 / 48000.0;
        const double s = 0.3 * (Sine(4.0 * c) + Sine(2.0 * c) - Sine(c));
        EXPECT_NEAR(signal.left[static_cast<std::size_t>(i)], s, 1e-9);
    }
}

TEST(RingModulator, PulseAndSawAreTheGeometricWavesAwayFromTheirSteps) {
    const Signal pulse = Modulator(0.25, 0.25);
    const Signal saw = Modulator(0.25, 0.5);
    for (int i = kSettled; i < kSettled + 480; ++i) {
        const auto n = static_cast<std::size_t>(i);
        const int place = i % 48;
        if (place % 24 < 2 || place % 24 > 22) continue;
        EXPECT_NEAR(pulse.left[n], place < 24 ? 1.0 : -1.0, 1e-9);
        EXPECT_NEAR(saw.left[n], place < 24 ? place / 24.0 : place / 24.0 - 2.0, 1e-9);
    }
}

TEST(RingModulator, GoingBackToSineChangesAllOscillators) {
    RingModulator ring;
    ring.SetSampleRate(48000.0);
    ring.SetAmount(1.0);
    ring.SetFrequency(0.1);
    ring.SetWaveform(0.25);
    ring.SetWaveform(1.0);
    Signal signal(kSettled + 10, 1.0);
    ring.Process(signal.View(), signal.Frames());
    const double c = kSettled * 400.0 / 48000.0;
    EXPECT_NEAR(signal.left[kSettled], 0.3 * (Sine(4.0 * c) + Sine(2.0 * c) - Sine(c)), 1e-9);
}

TEST(RingModulator, TheSampleRateKeepsTheFrequency) {
    const Signal signal = Modulator(0.25, 0.0, 96000.0);
    for (int i = kSettled; i < kSettled + 192; ++i)
        EXPECT_NEAR(signal.left[static_cast<std::size_t>(i)], Sine(i * 1000.0 / 96000.0), 1e-9);
}

TEST(RingModulator, TheToggleFadesOver250Frames) {
    RingModulator ring;
    ring.SetAmount(1.0);
    ring.SetBypass(true);
    Signal frame(1, 1.0);
    for (int i = 0; i < 249; ++i)
        ring.Process(frame.View(), 1);
    EXPECT_GT(ring.Fade(), 0.0);
    ring.Process(frame.View(), 1);
    EXPECT_EQ(ring.Fade(), 0.0);
    Signal signal = NoiseSignal(64, 1.0);
    const Signal before = signal;
    ring.Process(signal.View(), 64);
    EXPECT_EQ(signal, before);
    ring.SetBypass(false);
    for (int i = 0; i < 249; ++i)
        ring.Process(frame.View(), 1);
    EXPECT_LT(ring.Fade(), 1.0);
    ring.Process(frame.View(), 1);
    EXPECT_EQ(ring.Fade(), 1.0);
}

TEST(RingModulator, SilenceStaysSilentAndNothingDoesHarm) {
    for (const double waveform : {0.0, 0.25, 0.5, 0.75, 1.0, 99.0, -99.0, std::nan("")}) {
        for (const double knob : {0.1, 1.0, -0.5, 1e250, std::nan(""), HUGE_VAL}) {
            RingModulator ring;
            ring.SetSampleRate(0.0);
            ring.SetSampleRate(std::nan(""));
            ring.SetAmount(0.5);
            ring.SetFrequency(knob);
            ring.SetWaveform(waveform);
            Signal silence(256);
            ring.Process(silence.View(), 256);
            EXPECT_EQ(Peak(silence), 0.0);
            Signal hostile = HostileSignal();
            ring.Process(hostile.View(), hostile.Frames());
            ring.Process(silence.View(), 256);
            EXPECT_EQ(Peak(silence), 0.0);
        }
    }
}
