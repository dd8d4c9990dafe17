#include "voice/PolyBLEP.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstdint>
#include <set>
#include <vector>

namespace Grimworks {
namespace {

constexpr double kRate = 44100.0;
constexpr int kPeriod = 441; ///< 50 cycles of 5 kHz: every partial falls on a bin of its own
constexpr int kBinsPerPartial = 50;

PolyBLEP Generator(std::uint32_t waveform, double frequency, double width = 0.5) {
    PolyBLEP blep;
    blep.waveform = waveform;
    blep.pulseWidth = width;
    blep.phaseInc = frequency / kRate;
    return blep;
}

/// Amplitudes by bin of 100 Hz over a whole number of cycles at 5 kHz. Starts off the grid, so that no sample
/// falls on a step.
std::vector<double> SpectrumAt5kHz(std::uint32_t waveform, double width = 0.5) {
    PolyBLEP blep = Generator(waveform, 5000.0, width);
    blep.phase = 0.00031;
    std::vector<double> samples(kPeriod);
    for (double& sample : samples)
        sample = blep.Next();
    std::vector<double> amplitudes;
    for (int bin = 0; bin <= kPeriod / 2; ++bin) {
        std::complex<double> sum = 0.0;
        for (int n = 0; n < kPeriod; ++n)
            sum += samples[static_cast<std::size_t>(n)] * std::polar(1.0, -2.0 * kPi * bin * n / kPeriod);
        amplitudes.push_back(std::abs(sum) * (bin == 0 ? 1.0 : 2.0) / kPeriod);
    }
    return amplitudes;
}

/// The residues are those of a step smoothed by a triangle two samples wide, whose spectrum is sinc squared.
double Smoothing(double frequency) {
    const double x = kPi * frequency / kRate;
    return std::sin(x) / x * std::sin(x) / x;
}

double Decibels(double ratio) {
    return 20.0 * std::log10(ratio);
}

/// The four audible partials within 0.01 dB of the smoothed ideal wave, and within the smoothing's known loss
/// (0.4 dB at 5 kHz, 6.4 dB at 20 kHz) of the ideal wave itself.
template <class Ideal>
void ExpectPartials(const std::vector<double>& spectrum, Ideal ideal) {
    for (int partial = 1; partial <= 4; ++partial) {
        const double amplitude = spectrum[kBinsPerPartial * static_cast<std::size_t>(partial)];
        const double wanted = ideal(partial);
        if (wanted < 1e-9) {
            EXPECT_LT(amplitude, 1e-4) << partial;
            continue;
        }
        EXPECT_NEAR(Decibels(amplitude / (wanted * Smoothing(5000.0 * partial))), 0.0, 0.01) << partial;
        EXPECT_NEAR(Decibels(amplitude / wanted), 0.0, 0.4 * partial * partial) << partial;
    }
}

double StrongestAlias(const std::vector<double>& spectrum) {
    double strongest = 0.0;
    for (std::size_t bin = 1; bin < spectrum.size(); ++bin) {
        if (bin % kBinsPerPartial != 0) strongest = std::max(strongest, spectrum[bin]);
    }
    return strongest;
}

TEST(PolyBLEP, SawAt5kHzHasThePartialsOfTheSmoothedIdealSaw) {
    ExpectPartials(SpectrumAt5kHz(PolyBLEP::kSaw), [](int n) { return 2.0 / (kPi * n); });
}

TEST(PolyBLEP, SquareAt5kHzHasThePartialsOfTheSmoothedIdealSquare) {
    const auto ideal = [](int n) { return n % 2 == 1 ? 4.0 / (kPi * n) : 0.0; };
    ExpectPartials(SpectrumAt5kHz(PolyBLEP::kRectangle), ideal);
    ExpectPartials(SpectrumAt5kHz(PolyBLEP::kSquare, 0.125), ideal);
}

TEST(PolyBLEP, NarrowPulsesAt5kHzHaveThePartialsOfTheSmoothedIdealPulse) {
    for (const double width : {0.25, 0.125}) {
        ExpectPartials(SpectrumAt5kHz(PolyBLEP::kRectangle, width),
                       [width](int n) { return 4.0 / (kPi * n) * std::fabs(std::sin(kPi * n * width)); });
    }
}

TEST(PolyBLEP, TriangleAt5kHzHasThePartialsOfTheSmoothedIdealTriangle) {
    ExpectPartials(SpectrumAt5kHz(PolyBLEP::kTriangle),
                   [](int n) { return n % 2 == 1 ? 8.0 / (kPi * kPi * n * n) : 0.0; });
}

TEST(PolyBLEP, AliasesAt5kHzStayBelowThoseOfThePlainWave) {
    // The strongest image is the fifth partial, folded to 19.1 kHz: smoothing leaves sinc squared of 25 kHz.
    const double saw = 2.0 / (kPi * 5.0) * Smoothing(25000.0);
    EXPECT_NEAR(Decibels(StrongestAlias(SpectrumAt5kHz(PolyBLEP::kSaw)) / saw), 0.0, 0.01);
    const double triangle = 8.0 / (kPi * kPi * 25.0) * Smoothing(25000.0);
    EXPECT_NEAR(Decibels(StrongestAlias(SpectrumAt5kHz(PolyBLEP::kTriangle)) / triangle), 0.0, 0.01);
}

TEST(PolyBLEP, SineIsTheSineOfItsPhase) {
    PolyBLEP blep = Generator(PolyBLEP::kSine, 1234.5);
    double phase = 0.0;
    for (int n = 0; n < 1000; ++n) {
        EXPECT_NEAR(blep.Next(), std::sin(2.0 * kPi * phase), 1e-12);
        phase += 1234.5 / kRate;
        phase -= std::floor(phase);
    }
}

TEST(PolyBLEP, PlainWavesStandAwayFromTheirSteps) {
    PolyBLEP blep = Generator(PolyBLEP::kSaw, 100.0);
    for (const double phase : {0.0, 0.1, 0.25, 0.4, 0.6, 0.9}) {
        blep.phase = phase;
        blep.waveform = PolyBLEP::kSaw;
        EXPECT_NEAR(blep.Get(), phase < 0.5 ? 2.0 * phase : 2.0 * phase - 2.0, 1e-15) << phase;
        blep.waveform = PolyBLEP::kTriangle;
        const double triangle =
            phase <= 0.25 ? 4.0 * phase : (phase < 0.75 ? 2.0 - 4.0 * phase : 4.0 * phase - 4.0);
        if (phase != 0.25) {
            EXPECT_NEAR(blep.Get(), triangle, 1e-15) << phase;
        }
        if (phase == 0.0) continue;
        blep.waveform = PolyBLEP::kRectangle;
        blep.pulseWidth = 0.3;
        EXPECT_NEAR(blep.Get(), phase < 0.3 ? 1.4 : -0.6, 1e-15) << phase;
        blep.waveform = PolyBLEP::kSquare;
        EXPECT_NEAR(blep.Get(), phase < 0.5 ? 1.0 : -1.0, 1e-15) << phase;
    }
}

TEST(PolyBLEP, StepsAreRoundedOverOneSampleOnEitherSide) {
    PolyBLEP blep = Generator(PolyBLEP::kSaw, 4410.0); // a tenth of the rate
    blep.phase = 0.5 - 0.05;                           // half a sample before the fall: u = 0.5
    EXPECT_NEAR(blep.Get(), 0.9 - 0.25, 1e-12);
    blep.phase = 0.5 + 0.05;
    EXPECT_NEAR(blep.Get(), -0.9 + 0.25, 1e-12);
    blep.waveform = PolyBLEP::kSquare;
    blep.phase = 0.05;
    EXPECT_NEAR(blep.Get(), 1.0 - 0.25, 1e-12);
    blep.phase = 0.55;
    EXPECT_NEAR(blep.Get(), -1.0 + 0.25, 1e-12);
    blep.waveform = PolyBLEP::kTriangle;
    blep.phase = 0.25; // the corner itself: slopes of 0.4 a sample meet, a third of the slope is cut off
    EXPECT_NEAR(blep.Get(), 1.0 - 0.4 / 3.0, 1e-12);
    blep.phase = 0.75;
    EXPECT_NEAR(blep.Get(), -1.0 + 0.4 / 3.0, 1e-12);
}

TEST(PolyBLEP, AmplitudeScalesEveryWave) {
    for (const std::uint32_t waveform :
         {PolyBLEP::kSine, PolyBLEP::kTriangle, PolyBLEP::kSquare, PolyBLEP::kRectangle, PolyBLEP::kSaw}) {
        PolyBLEP blep = Generator(waveform, 1000.0);
        blep.phase = 0.2;
        const double value = blep.Get();
        blep.amplitude = 0.25;
        EXPECT_EQ(blep.Get(), value * 0.25) << waveform;
        EXPECT_NE(value, 0.0) << waveform;
    }
}

TEST(PolyBLEP, SawAtExactlyAQuarterOfTheRateIsASineAndASemitoneLowerASaw) {
    PolyBLEP quarter = Generator(PolyBLEP::kSaw, kRate / 4.0);
    quarter.phase = 0.1;
    for (int n = 0; n < 8; ++n) {
        const double phase = quarter.phase;
        EXPECT_NEAR(quarter.Next(), std::sin(2.0 * kPi * phase), 1e-15);
    }
    PolyBLEP lower = Generator(PolyBLEP::kSaw, kRate / 4.0 / std::pow(2.0, 1.0 / 12.0));
    lower.phase = 0.1; // away from the fall at 0.5
    EXPECT_NEAR(lower.Get(), 0.2, 1e-15);
}

TEST(PolyBLEP, EveryWaveIsASineFromAQuarterOfTheRateUpwards) {
    for (const std::uint32_t waveform :
         {PolyBLEP::kTriangle, PolyBLEP::kSquare, PolyBLEP::kRectangle, PolyBLEP::kSaw}) {
        PolyBLEP blep = Generator(waveform, 15000.0);
        blep.phase = 0.37;
        EXPECT_NEAR(blep.Get(), std::sin(2.0 * kPi * 0.37), 1e-15) << waveform;
    }
}

TEST(PolyBLEP, IncrementZeroHoldsAConstantPlainValue) {
    const std::array<std::pair<std::uint32_t, double>, 5> expected{{{PolyBLEP::kSine, std::sin(0.6 * kPi)},
                                                                    {PolyBLEP::kTriangle, 0.8},
                                                                    {PolyBLEP::kSquare, 1.0},
                                                                    {PolyBLEP::kRectangle, -0.5},
                                                                    {PolyBLEP::kSaw, 0.6}}};
    for (const auto& [waveform, value] : expected) {
        PolyBLEP blep = Generator(waveform, 0.0, 0.25);
        blep.phase = 0.3;
        for (int n = 0; n < 10; ++n)
            EXPECT_NEAR(blep.Next(), value, 1e-15) << waveform;
        EXPECT_EQ(blep.phase, 0.3);
    }
    PolyBLEP onTheStep = Generator(PolyBLEP::kSquare, 0.0);
    EXPECT_EQ(onTheStep.Next(), 1.0);
}

TEST(PolyBLEP, TwoGeneratorsInStepAverageToOne) {
    PolyBLEP first = Generator(PolyBLEP::kSaw, 333.0);
    PolyBLEP second = first;
    PolyBLEP alone = first;
    for (int n = 0; n < 1000; ++n)
        EXPECT_EQ((first.Next() + second.Next()) / 2.0, alone.Next());
}

TEST(PolyBLEP, NextAddsTheOffsetAndAdvancesWithinTheCycle) {
    PolyBLEP blep = Generator(PolyBLEP::kRectangle, kRate / 8.0, 0.25);
    blep.offset = -0.5;
    blep.phase = 0.125;
    EXPECT_EQ(blep.Get(), 1.5);
    EXPECT_EQ(blep.Next(), 1.0);
    EXPECT_EQ(blep.phase, 0.25);
    for (int n = 0; n < 6; ++n)
        blep.Next();
    EXPECT_EQ(blep.phase, 0.0);
}

TEST(PolyBLEP, UnknownWaveformIsSilentBelowTheSineRange) {
    PolyBLEP blep = Generator(1, 1000.0);
    blep.phase = 0.2;
    EXPECT_EQ(blep.Get(), 0.0);
}

TEST(PolyBLEP, ANewRateKeepsTheFrequency) {
    PolyBLEP blep = Generator(PolyBLEP::kSaw, 441.0);
    blep.SetSampleRate(96000.0);
    EXPECT_DOUBLE_EQ(blep.phaseInc * 96000.0, 441.0);
    blep.SetSampleRate(0.0);
    EXPECT_EQ(blep.sampleRate, 96000.0);
}

TEST(PolyBLEP, StartsAsASineAt440Hz) {
    const PolyBLEP blep;
    EXPECT_EQ(blep.waveform, PolyBLEP::kSine);
    EXPECT_EQ(blep.sampleRate, 44100.0);
    EXPECT_EQ(blep.phaseInc, 0.009977324263038548);
    EXPECT_EQ(blep.amplitude, 1.0);
    EXPECT_EQ(blep.pulseWidth, 0.5);
    EXPECT_EQ(blep.phase, 0.0);
    EXPECT_EQ(blep.offset, 0.0);
}

} // namespace
} // namespace Grimworks
