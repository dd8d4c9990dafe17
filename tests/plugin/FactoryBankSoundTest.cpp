#include "patches/FactoryBank.h"
#include "tests/support/SlowBuild.h"
#include "tools/ProgramPlayer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace Grimworks {
namespace {

constexpr double kSpread = 6.0;    // dB around the middle of a section
constexpr double kOffset = 0.02;   // what is left of the sum of an audible wave's last, broken cycle
constexpr double kQuiet = 1e-3;    // of the peak
constexpr double kLongestTail = 8; // seconds, echoes included

/// Everything that the tests below ask of a program's sound; each is played once.
struct Played {
    std::string name;
    double peak = 0.0;
    double loudness = 0.0;
    double seconds = 0.0; ///< until it fell for good to 40 dB below its loudest moment
    double centroid = 0.0;
    double offset = 0.0;      ///< mean of a held note, the larger of both channels
    double curveOffset = 0.0; ///< the largest mean that the program's distortion gives to a sine
    double heldLevel = 0.0;   ///< at the end of the held second, against the loudest 10 ms
    double endPeak = 0.0;     ///< of the last 50 ms
    bool finite = true;
    bool sounding = false; ///< a voice was left at the end
};

/// The mean that a distortion section gives to sines of all levels.
double OffsetOfCurve(const ThudForge& plug, const DistortionDataProvider& curves) {
    constexpr int kFrames = 441; // one cycle of 100 Hz
    DistortionStage stage(curves);
    stage.SetBlockSize(kFrames);
    stage.SetType(plug.GetParameterValue(Param::DistortionType));
    stage.SetAmount(plug.GetParameterValue(Param::Distortion));
    stage.SetMode(plug.GetParameterValue(Param::DistortionLoudness));
    stage.SetOnOff(plug.GetParameterValue(Param::DistortionOnOff));
    stage.SetShaperAmount(plug.GetParameterValue(Param::DynShaper));
    stage.SetShaperMode(plug.GetParameterValue(Param::DynShaperMode));
    stage.SetShaperPolarity(plug.GetParameterValue(Param::DynShaperPosNegBoth));
    StereoBuffer buffer;
    buffer.Grow(kFrames);
    double most = 0.0;
    for (int level = 1; level <= 10; ++level) {
        double mean = 0.0;
        for (int cycle = 0; cycle < 8; ++cycle) {
            mean = 0.0;
            const StereoView view = buffer.View();
            for (int i = 0; i < kFrames; ++i) {
                const double x = 0.1 * level * std::sin(2.0 * std::numbers::pi * i / kFrames);
                view.left[i] = x;
                view.right[i] = x;
            }
            stage.Process(view, kFrames, nullptr, nullptr);
            for (int i = 0; i < kFrames; ++i)
                mean += view.left[i] / kFrames;
        }
        most = std::max(most, std::fabs(mean));
    }
    return most;
}

double PeakOf(const Sound& sound, std::size_t from) {
    double peak = 0.0;
    for (std::size_t i = from; i < sound.Frames(); ++i)
        peak = std::max({peak, std::fabs(sound.left[i]), std::fabs(sound.right[i])});
    return peak;
}

double OffsetOf(const Sound& sound, double seconds) {
    const auto frames = std::min(sound.Frames(), static_cast<std::size_t>(seconds * kSoundRate));
    double left = 0.0;
    double right = 0.0;
    for (std::size_t i = 0; i < frames; ++i) {
        left += sound.left[i] / static_cast<double>(frames);
        right += sound.right[i] / static_cast<double>(frames);
    }
    return std::max(std::fabs(left), std::fabs(right));
}

Played PlayOne(ProgramPlayer& player, const DistortionDataProvider& curves, int index, int note) {
    constexpr double kHeld = 1.0; // seconds
    player.Choose(index);
    const Sound sound = player.Play(note, kHeld, kLongestTail);
    Played played;
    played.name = player.Plug().PresetName(index);
    played.peak = PeakOf(sound, 0);
    played.finite =
        std::all_of(sound.left.begin(), sound.left.end(), [](double x) { return std::isfinite(x); }) &&
        std::all_of(sound.right.begin(), sound.right.end(), [](double x) { return std::isfinite(x); });
    played.loudness = Loudness(sound);
    played.seconds = Length(sound);
    played.centroid = Centroid(sound);
    played.offset = OffsetOf(sound, kHeld);
    played.curveOffset = OffsetOfCurve(player.Plug(), curves);
    const std::vector<double> levels = Levels(sound);
    const auto end = static_cast<std::size_t>(kHeld * 100.0) - 1;
    played.heldLevel = levels[end] / *std::max_element(levels.begin(), levels.end());
    played.endPeak = PeakOf(sound, sound.Frames() - static_cast<std::size_t>(kSoundRate / 20.0));
    played.sounding = player.IsSounding();
    return played;
}

const std::vector<Played>& Bank() {
    static const std::vector<Played> all = [] {
        std::vector<Played> played;
        ProgramPlayer player;
        RandomGenerator random;
        const DistortionDataProvider curves(random);
        for (const FactorySection& section : kFactorySections) {
            for (int number = section.first; number <= section.last; ++number)
                played.push_back(PlayOne(player, curves, number - 1, section.note));
        }
        return played;
    }();
    return all;
}

const Played& Of(const std::string& name) {
    for (const Played& played : Bank()) {
        if (played.name == name) return played;
    }
    ADD_FAILURE() << name;
    return Bank().front();
}

TEST(FactoryBankSound, EveryProgramSoundsAndStaysANumber) {
    ASSERT_EQ(Bank().size(), 128U);
    for (const Played& played : Bank()) {
        EXPECT_TRUE(played.finite) << played.name;
        EXPECT_GT(played.peak, 0.03) << played.name;
        EXPECT_LE(played.peak, 1.0) << played.name;
    }
}

TEST(FactoryBankSound, NoProgramHasAnOffsetBeyondThatOfItsCurve) {
    for (const Played& played : Bank())
        EXPECT_LE(played.offset, kOffset + played.curveOffset) << played.name;
}

TEST(FactoryBankSound, EveryProgramEndsAfterItsRelease) {
    for (const Played& played : Bank()) {
        EXPECT_FALSE(played.sounding) << played.name;
        EXPECT_LE(played.endPeak, played.peak * kQuiet) << played.name;
    }
}

TEST(FactoryBankSound, ProgramsOfOneKindAreEquallyLoud) {
    for (const FactorySection& section : kFactorySections) {
        std::vector<double> loudness;
        for (int number = section.first; number <= section.last; ++number)
            loudness.push_back(Bank()[static_cast<std::size_t>(number - 1)].loudness);
        std::sort(loudness.begin(), loudness.end());
        const double middle = loudness[loudness.size() / 2];
        for (int number = section.first; number <= section.last; ++number) {
            const Played& played = Bank()[static_cast<std::size_t>(number - 1)];
            EXPECT_NEAR(played.loudness, middle, kSpread) << played.name;
        }
    }
}

TEST(FactoryBankSound, KicksEndByThemselvesUnderAHeldKey) {
    for (int number = 2; number <= 61; ++number) {
        const Played& played = Bank()[static_cast<std::size_t>(number - 1)];
        EXPECT_LT(played.heldLevel, 0.25) << played.name;
    }
}

TEST(FactoryBankSound, SoundsAreWhatTheirNamesSay) {
    EXPECT_LT(Of("Closed Hihat by Ludo").seconds, 0.15);
    EXPECT_GT(Of("Closed Hihat by Ludo").centroid, 8000.0);
    EXPECT_GT(Of("Open Hihat by Marl-404").seconds, 3.0 * Of("Closed Hihat by Ludo").seconds);
    EXPECT_GT(Of("Ride Cymbal by Pim_Later").seconds, 2.0 * Of("Open Hihat by Marl-404").seconds);
    EXPECT_GT(Of("Frenchcore Kick").centroid, 4.0 * Of("Basic Kick Drum 1").centroid);
    EXPECT_GT(Of("Frenchcore Kick").loudness, Of("Basic Kick Drum 1").loudness + 3.0);
    EXPECT_LT(Of("Basic Bass Drum 2 (soft)").centroid, Of("Basic Bass Drum 3 (click)").centroid);
    EXPECT_LT(Of("Darkcore Bass Drum 1").centroid, 0.2 * Of("Terrorcore Beat 1").centroid);
    EXPECT_LT(Of("Speedcore Kick 1").seconds, 0.3);
    EXPECT_LT(Of("Tight Kick by Marl-404").seconds, 0.25);
    EXPECT_GT(Of("Dark Organ by Tobin Ashgrove").heldLevel, 0.5);
    EXPECT_GT(Of("Basic Sine wave").heldLevel, 0.9);
    EXPECT_LT(Of("Basic Sine wave").centroid, 300.0);
    EXPECT_GT(Of("Ocean-Waves by Sorrel").seconds, 2.0);
    EXPECT_LT(Of("Virtual Banjo").seconds, Of("Guitar by Sorrel").seconds);
}

/// Whether a frequency is the expected one, or an octave or two away from it, within 30 cents.
bool IsInTune(double hz, double expected) {
    for (const double octave : {0.25, 0.5, 1.0, 2.0}) {
        if (std::fabs(1200.0 * std::log2(hz / (expected * octave))) < 30.0) return true;
    }
    return false;
}

/// Silences the oscillators that stand at another interval than octaves: the upper tones of chords and the
/// partials of bells.
void KeepRoot(ThudForge& plug) {
    for (int oscillator = 0; oscillator < kOscillators; ++oscillator) {
        const double octaves = 2.0 * plug.GetParameterValue(Osc(oscillator, OscParam::Pitch));
        if (std::fabs(octaves - std::round(octaves)) > 1e-3)
            plug.SetParameterFromHost(Osc(oscillator, OscParam::OnOff), 0.0);
    }
}

void ExpectInTune(ProgramPlayer& player, int program, int note) {
    player.Choose(program);
    const double mode = player.Plug().GetParameterValue(Param::NoteTransposeMode);
    if (mode > 0.8) return; // an arpeggio has no pitch of its own
    KeepRoot(player.Plug());
    const double expected = 440.0 * std::exp2((note - 69) / 12.0) * (mode < 0.05 ? 2.0 : 1.0);
    const Sound sound = player.Play(note, 0.4, 0.3);
    const Pitch pitch = FindPitch(sound, static_cast<std::size_t>(0.25 * kSoundRate));
    EXPECT_TRUE(IsInTune(pitch.hz, expected))
        << player.Plug().PresetName(program) << " at " << note << ": " << pitch.hz << " Hz, not " << expected;
}

TEST(FactoryBankSound, MelodicProgramsAreInTuneOverThreeOctaves) {
    ProgramPlayer player;
    for (const FactorySection& section : kFactorySections) {
        for (int number = section.first; section.melodic && number <= section.last; ++number) {
            for (int octave = -1; octave <= 1; octave += kSlowBuild ? 2 : 1)
                ExpectInTune(player, number - 1, section.note + 12 * octave);
        }
    }
}

} // namespace
} // namespace Grimworks
