#include "tests/plugin/Measure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

using namespace Grimworks;

namespace {

constexpr double kCeiling = 3.1622777;
constexpr int kBlock = 64;

/// What the filters' offset against denormals makes of silence.
constexpr double kFloor = 1e-5;

double AsFloat(double value) {
    return static_cast<double>(static_cast<float>(value));
}

/// A held level on the dry side of the mixes, about a half, and nothing at all on the wet one: the gate shuts
/// the chain. Gives the level.
double DryAgainstSilence(Instrument& instrument) {
    HoldLevel(instrument);
    instrument.Set(Osc(0, OscParam::Volume), 0.5);
    instrument.Set(Param::Gate, 1.0);
    instrument.NoteOn(60);
    return instrument.Render(kSettleFrames).left.back();
}

/// First frame that is louder than a tenth.
int Onset(const Instrument::Audio& audio) {
    const auto loud =
        std::find_if(audio.left.begin(), audio.left.end(), [](double x) { return std::fabs(x) > 0.1; });
    return static_cast<int>(loud - audio.left.begin());
}

/// A program with a delay of `beat` frames that repeats once, and a short note in its line. `frames` have
/// gone by since the note.
void FillDelay(Instrument& instrument, double beat, int frames) {
    instrument.SetTempo(60.0 / (beat / 44100.0));
    OpenProgram(instrument);
    instrument.Set(Osc(0, OscParam::Waveform), 1.0 / 40.0);
    instrument.Set(Param::TempoDelayAmount, 1.0);
    instrument.Render(kSettleFrames);
    instrument.NoteOn(69);
    instrument.Render(1024);
    instrument.NoteOff(69);
    instrument.Render(frames - 1024);
}

/// The sub layer alone, with nothing behind it but limiter, volume and clip: several notes on one pitch, each
/// 1.259 high.
Instrument::Audio PlaySubNotes(int notes, double limiterMode, double limiterLevel = 0.79) {
    Instrument instrument;
    OpenProgram(instrument);
    instrument.Set(Param::NoteTransposeMode, 7.0 / 9.0);
    instrument.Set(Param::BassLayerSolo, 1.0);
    instrument.Set(Param::BassLayerAmount, 1.0);
    instrument.Set(Param::Volume, 1.0);
    instrument.Set(Param::LimiterMode, limiterMode);
    instrument.Set(Param::LimiterLevel, limiterLevel);
    for (int i = 0; i < notes; ++i)
        instrument.NoteOn(40 + i);
    instrument.Render(kSettleFrames);
    return instrument.Render(4096);
}

/// The limiter's curve at this level.
double Limited(double x, double level) {
    const double knee = std::min(level, 0.02);
    const double v = std::fabs(x);
    const double sign = x < 0.0 ? -1.0 : 1.0;
    if (v < level - knee / 2.0) return x;
    if (v >= level + knee / 2.0) return sign * (level + (v - level) / 1000.0);
    const double d = v - level + knee / 2.0;
    return sign * (v + (1.0 / 1000.0 - 1.0) * d * d / (2.0 * knee));
}

/// A note whose oscillator filter leaves the range of numbers within half a minute: a high pass without
/// damping, swept to and fro twenty times a second, gains half a decade with each sweep.
void PlayOverflow(Instrument& instrument, int note) {
    instrument.Set(Osc(0, OscParam::FilterCutoff), 0.1);
    instrument.Set(Osc(0, OscParam::FilterResonance), 1.0);
    instrument.Set(Osc(0, OscParam::LfoToFilter), 1.0);
    instrument.Set(Osc(0, OscParam::LfoRate), 1.0);
    instrument.NoteOn(note);
    for (int second = 0; second < 30; ++second)
        instrument.Render(44100);
}

} // namespace

// Cross-fades.

TEST(ThudForgeOutput, TheBypassFadesAlongItsSmoother) {
    Instrument instrument;
    const double level = DryAgainstSilence(instrument);
    ASSERT_NEAR(level, 0.5, 0.01);
    instrument.Set(Param::BypassFX, 0.0);
    Instrument::Audio audio = instrument.Render(kSettleFrames);
    for (std::size_t i = 0; i < audio.left.size(); ++i) {
        // The chain itself comes back with the second block.
        const double dry = i < kBlock ? 1.0 : std::pow(0.988, static_cast<double>(i + 1));
        ASSERT_NEAR(audio.left[i], level * dry, kFloor) << i;
    }
    instrument.Set(Param::BypassFX, 1.0);
    audio = instrument.Render(kSettleFrames);
    for (std::size_t i = 0; i < audio.left.size(); ++i)
        ASSERT_NEAR(audio.left[i], level * (1.0 - std::pow(0.988, static_cast<double>(i + 1))), kFloor) << i;
}

TEST(ThudForgeOutput, DryAndWetFadeAlongTheirSmoother) {
    Instrument instrument;
    const double level = DryAgainstSilence(instrument);
    instrument.Set(Param::BypassFX, 0.0);
    instrument.Render(kSettleFrames);
    instrument.Set(Param::DryWet, 0.25);
    const Instrument::Audio audio = instrument.Render(kSettleFrames);
    for (std::size_t i = 0; i < audio.left.size(); ++i) {
        const double dry = 0.75 * (1.0 - std::pow(0.99, static_cast<double>(i + 1)));
        ASSERT_NEAR(audio.left[i], level * dry, kFloor) << i;
    }
}

TEST(ThudForgeOutput, TheDrySignalIsPannedTwiceInTheMixAndOnceInTheBypass) {
    Instrument instrument;
    const double level = DryAgainstSilence(instrument);
    instrument.Set(Param::Pan, 0.3);
    Instrument::Audio audio = instrument.Render(kSettleFrames);
    const double side = 2.0 * AsFloat(0.3);
    EXPECT_NEAR(audio.left.back(), level, 1e-9);
    EXPECT_NEAR(audio.right.back(), level * side, 1e-9);
    instrument.Set(Param::BypassFX, 0.0);
    instrument.Set(Param::DryWet, 0.0);
    audio = instrument.Render(kSettleFrames);
    EXPECT_NEAR(audio.left.back(), level, 1e-9);
    EXPECT_NEAR(audio.right.back(), level * side * side, 1e-9);
    instrument.Set(Param::Pan, 1.0);
    audio = instrument.Render(kSettleFrames);
    EXPECT_NEAR(audio.left.back(), 0.0, 1e-9);
    EXPECT_NEAR(audio.right.back(), level, 1e-9);
}

// The delay.

TEST(ThudForgeOutput, TheDelayFollowsTheTempoFromBlockToBlock) {
    const auto tempo = [](double beat) { return 60.0 / (beat / 44100.0); };
    Instrument control;
    FillDelay(control, 20000.0, 4096);
    const int onset = Onset(control.Render(2 * 20000));

    Instrument later;
    FillDelay(later, 22050.0, 4096);
    later.SetTempo(tempo(20000.0));
    later.Render(64);
    EXPECT_EQ(Onset(later.Render(2 * 20000)), onset - 64);

    // A line that ends behind the place of reading starts over, one frame late, and meets the note where it
    // was written: behind the frames of silence.
    Instrument cut;
    FillDelay(cut, 22050.0, 4096);
    cut.SetTempo(tempo(11025.0));
    cut.Render(64);
    EXPECT_EQ(Onset(cut.Render(2 * 11025)), onset - (20000 - 4096) + kSettleFrames + 1);
}

TEST(ThudForgeOutput, DumpAndSpreadReadTheTempoBeforeTheBlock) {
    for (const int id : {Param::TempoDelayDump, Param::TempoDelaySpread}) {
        Instrument instrument(44100.0, 32768);
        FillDelay(instrument, 22050.0, 4096);
        instrument.SetTempo(60.0 / (11025.0 / 44100.0));
        // The whole answer lies in the one block whose tempo check is still to come.
        const double value = id == Param::TempoDelayDump ? 1.0 : 0.5;
        instrument.Set(id, value);
        EXPECT_LT(Onset(instrument.Render(32768)), 11025) << id;
    }
}

TEST(ThudForgeOutput, EveryResetEmptiesTheDelay) {
    for (const int way : {0, 1, 2, 3}) {
        Instrument instrument;
        FillDelay(instrument, 11025.0, 4096);
        switch (way) {
        case 1:
            instrument.Dispatch(PlugOp::SetSampleRate, 0, nullptr, 44100.0F);
            break;
        case 2:
            instrument.SetBlockSize(64);
            break;
        case 3:
            instrument.Dispatch(PlugOp::MainsChanged, 0);
            instrument.Dispatch(PlugOp::MainsChanged, 1);
            break;
        default:
            break; // so that the test knows what it would hear
        }
        const double peak = instrument.Render(22050).Peak();
        if (way == 0) {
            EXPECT_GT(peak, 0.3);
        } else {
            EXPECT_LT(peak, 1e-4) << way;
        }
    }
}

// Curve operations.

TEST(ThudForgeOutput, ACurveOperationWaitsForTheNextBlockWhileTheAudioRuns) {
    Instrument instrument;
    instrument.ResetProgram();
    instrument.Set(Param::DistortionType, 20.0 / 41.0);
    ThudForge& plug = instrument.Plug();
    const CurvePoints stock = plug.AudioStage().GetDistortion().Points();
    (void)plug.TakeCurveChanged();
    plug.RequestCurveOperation(CurveOperation::Reset);
    EXPECT_EQ(plug.AudioStage().GetDistortion().Points(), stock);
    EXPECT_EQ(plug.EditorStage().GetDistortion().Points(), stock);
    EXPECT_FALSE(plug.TakeCurveChanged());
    instrument.Render(64);
    for (const DistortionStage* stage : {&plug.AudioStage(), &plug.EditorStage()}) {
        const CurvePoints& points = stage->GetDistortion().Points();
        for (std::size_t k = 0; k < points.size(); ++k)
            ASSERT_DOUBLE_EQ(points[k], 2.0 * static_cast<double>(k) / 511.0 - 1.0);
    }
    EXPECT_TRUE(plug.TakeCurveChanged());
    EXPECT_FALSE(plug.TakeCurveChanged());
}

TEST(ThudForgeOutput, TheLastCurveRequestBeforeABlockStands) {
    Instrument instrument;
    instrument.ResetProgram();
    instrument.Set(Param::DistortionType, 20.0 / 41.0);
    ThudForge& plug = instrument.Plug();
    const CurvePoints stock = plug.AudioStage().GetDistortion().Points();
    plug.RequestCurveOperation(CurveOperation::Reset);
    plug.RequestCurveOperation(CurveOperation::Nothing);
    instrument.Render(64);
    EXPECT_EQ(plug.AudioStage().GetDistortion().Points(), stock);
    // It also runs with the chain bypassed, and once only.
    instrument.Set(Param::BypassFX, 1.0);
    instrument.Render(kSettleFrames);
    plug.RequestCurveOperation(CurveOperation::AddNoise);
    instrument.Render(64);
    const CurvePoints noisy = plug.AudioStage().GetDistortion().Points();
    EXPECT_NE(noisy, stock);
    EXPECT_EQ(plug.EditorStage().GetDistortion().Points(), noisy);
    instrument.Render(640);
    EXPECT_EQ(plug.AudioStage().GetDistortion().Points(), noisy);
}

TEST(ThudForgeOutput, ACurveOperationRunsAtOnceWhileTheInstrumentIsOff) {
    Instrument instrument;
    instrument.ResetProgram();
    instrument.Set(Param::DistortionType, 20.0 / 41.0);
    ThudForge& plug = instrument.Plug();
    const CurvePoints stock = plug.AudioStage().GetDistortion().Points();
    instrument.Dispatch(PlugOp::MainsChanged, 0);
    plug.RequestCurveOperation(CurveOperation::Reset);
    EXPECT_NE(plug.AudioStage().GetDistortion().Points(), stock);
    EXPECT_EQ(plug.EditorStage().GetDistortion().Points(), plug.AudioStage().GetDistortion().Points());
    EXPECT_TRUE(plug.TakeCurveChanged());
    plug.RequestCurveOperation(CurveOperation::Restore);
    EXPECT_EQ(plug.AudioStage().GetDistortion().Points(), stock);
}

// Limiter, clip, and numbers that are none.

TEST(ThudForgeOutput, TheLimiterBendsWhatPassesItsLevel) {
    const Instrument::Audio raw = PlaySubNotes(1, 0.0);
    EXPECT_NEAR(raw.Peak(), 1.259, 1e-3);
    for (const double level : {0.01, 0.5, 0.705, 1.0}) {
        const Instrument::Audio audio = PlaySubNotes(1, 1.0, level);
        for (std::size_t i = 0; i < audio.left.size(); ++i)
            ASSERT_NEAR(audio.left[i], Limited(raw.left[i], AsFloat(level)), 1e-9) << level << " " << i;
    }
    // At level 0 a thousandth is left.
    const Instrument::Audio closed = PlaySubNotes(1, 1.0, 0.0);
    for (std::size_t i = 0; i < closed.left.size(); ++i)
        ASSERT_NEAR(closed.left[i], raw.left[i] / 1000.0, 1e-9) << i;
}

TEST(ThudForgeOutput, TheLimitersModeHasTwoStates) {
    const Instrument::Audio off = PlaySubNotes(1, 0.0);
    const Instrument::Audio on = PlaySubNotes(1, 1.0);
    EXPECT_GT(LargestDifference(off, on), 0.4);
    EXPECT_EQ(LargestDifference(off, PlaySubNotes(1, 0.25)), 0.0);
    EXPECT_EQ(LargestDifference(off, PlaySubNotes(1, 0.49)), 0.0);
    EXPECT_EQ(LargestDifference(on, PlaySubNotes(1, 0.5)), 0.0);
    EXPECT_EQ(LargestDifference(on, PlaySubNotes(1, 0.75)), 0.0);
}

TEST(ThudForgeOutput, WithoutTheLimiterOnlyTheClipIsLeft) {
    const Instrument::Audio two = PlaySubNotes(2, 0.0);
    EXPECT_NEAR(two.Peak(), 2.0 * 1.259, 1e-3);
    const Instrument::Audio four = PlaySubNotes(4, 0.0);
    EXPECT_EQ(four.Peak(), kCeiling);
    for (std::size_t i = 0; i < four.left.size(); ++i) {
        const double expected = std::clamp(2.0 * two.left[i], -kCeiling, kCeiling);
        ASSERT_NEAR(four.left[i], expected, 1e-9) << i;
    }
}

TEST(ThudForgeOutput, TheLimitersLevelGlides) {
    Instrument instrument;
    HoldLevel(instrument);
    instrument.Set(Osc(0, OscParam::OnOff), 0.0);
    instrument.Set(Param::PitchDown, 0.0);
    instrument.Set(Param::BypassFX, 0.0);
    instrument.Set(Param::BassLayerSolo, 1.0);
    instrument.Set(Param::BassLayerAmount, 1.0);
    instrument.Set(Param::LimiterMode, 1.0);
    instrument.Set(Param::LimiterLevel, 0.25);
    instrument.Set(Param::NoteTransposeMode, 0.0);
    instrument.NoteOn(127);
    instrument.Render(kSettleFrames);
    instrument.Set(Param::LimiterLevel, 0.75);
    const Instrument::Audio audio = instrument.Render(1024);
    for (std::size_t i = 0; i < audio.left.size(); ++i) {
        const double level = 0.75 - 0.5 * std::pow(0.9944, static_cast<double>(i + 1));
        // Slope 1/1000 above the level leaves at most this.
        ASSERT_LT(std::fabs(audio.left[i]), level + 1.1e-3) << i;
    }
    EXPECT_NEAR(audio.Peak(), 0.75 - 0.5 * std::pow(0.9944, 1024.0), 5e-3);
}

TEST(ThudForgeOutput, WhatIsNoNumberPassesToTheHostAndEndsWithItsNote) {
    const auto open = [](Instrument& instrument) {
        OpenProgram(instrument);
        instrument.Set(Osc(0, OscParam::Waveform), 1.0 / 40.0);
        instrument.Set(Osc(0, OscParam::FilterTypeLeft), 0.75);
    };
    Instrument instrument;
    open(instrument);
    PlayOverflow(instrument, 45);
    const auto isNan = [](double x) { return std::isnan(x); };
    for (const double limiter : {0.0, 1.0}) {
        instrument.Set(Param::LimiterMode, limiter);
        const Instrument::Audio audio = instrument.Render(kSettleFrames);
        EXPECT_TRUE(std::all_of(audio.left.begin(), audio.left.end(), isNan)) << limiter;
    }
    // The meters have seen the clip before.
    EXPECT_EQ(instrument.Plug().PeakLeft(), kCeiling);
    EXPECT_EQ(instrument.Plug().PeakRight(), kCeiling);

    instrument.NoteOff(45);
    instrument.Render(64); // the end of the note
    EXPECT_TRUE(IsFinite(instrument.Render(3 * kSettleFrames)));
    for (const OscParam parameter : {OscParam::FilterResonance, OscParam::LfoToFilter, OscParam::LfoRate})
        instrument.Set(Osc(0, parameter), 0.0);
    instrument.Set(Osc(0, OscParam::FilterCutoff), 1.0);
    instrument.NoteOn(60);
    const Instrument::Audio after = instrument.Render(kSettleFrames);

    Instrument fresh;
    open(fresh);
    fresh.Render(3 * kSettleFrames);
    fresh.NoteOn(60);
    const Instrument::Audio expected = fresh.Render(kSettleFrames);
    EXPECT_GT(expected.Peak(), 1e-3);
    EXPECT_LT(LargestDifference(after, expected, 1024), kFloor);
}
