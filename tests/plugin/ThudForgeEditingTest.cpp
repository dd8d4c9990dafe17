#include "core/Maths.h"
#include "tests/plugin/AllocationCounter.h"
#include "tests/plugin/Instrument.h"
#include "tests/plugin/Measure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <vector>

namespace Grimworks {

namespace {

const CurvePoints& AudioCurve(Instrument& instrument) {
    return instrument.Plug().AudioStage().GetDistortion().Points();
}

const CurvePoints& EditorCurve(Instrument& instrument) {
    return instrument.Plug().EditorStage().GetDistortion().Points();
}

/// A staircase over the whole drawing area, as a mouse that jumps eight pixels at a time draws it.
void DrawStairs(ThudForge& plug) {
    plug.PressCurve(0, 0.9);
    for (int x = 8; x < 128; x += 8)
        plug.DragCurve(x, 0.9 - x / 64.0 * 0.9, 8);
}

/// A point of the curve that DrawStairs draws: stairs of eight pixels, each of which keeps the height at
/// which the mouse arrived. Between them the first pixel of the next one is pulled along by the mouse, and a
/// cubic leads over.
double StairsPoint(int point) {
    const auto pixelAt = [](int x) {
        x = std::clamp(x, 0, 127);
        const auto stair = [](int from) { return 0.9 - from / 64.0 * 0.9; };
        if (x == 0) return 0.9;
        if (x < 7) return -(2.0 * x / 128.0 - 1.0);
        const int from = x / 8 * 8;
        if (x == 7) return stair(8) * 0.7 + -(14.0 / 128.0 - 1.0) * 0.3;
        if (x % 8 == 7 && x < 127) return stair(from + 8) * 0.7 + stair(from) * 0.3;
        return stair(from);
    };
    const int pixel = point / 4;
    const double f = point % 4 / 4.0;
    const double before = pixelAt(pixel - 1);
    const double here = pixelAt(pixel);
    const double next = pixelAt(pixel + 1);
    const double after = pixelAt(pixel + 2);
    const double value = before * (2.0 * f * f - f * f * f - f) + here * (f * f * f - 2.0 * f * f + 1.0) +
                         next * (f * f - f * f * f + f) + after * (f * f * f - f * f);
    return -std::clamp(value, -1.0, 1.0);
}

/// A loud tone through the distortion.
void DistortedProgram(Instrument& instrument) {
    OpenProgram(instrument);
    instrument.Set(Osc(0, OscParam::Waveform), 5.0 / 40.0);
    instrument.Set(Param::Distortion, 1.0);
    instrument.Set(Param::DistortionType, 20.0 / 41.0);
}

Instrument::Audio PlayNote(Instrument& instrument) {
    instrument.NoteOn(40);
    return instrument.Render(4096);
}

/// Puts points under the selected curve by way of a state, as a host restores one.
void RestoreCurve(Instrument& instrument, const CurvePoints& points) {
    ByteChunk saved;
    instrument.Plug().SerializeState(saved);
    ByteChunk changed;
    constexpr int kCountBytes = 4;
    constexpr int kCurveBytes = 512 * 8;
    changed.PutBytes(saved.Data(), kCountBytes);
    changed.PutBytes(points.data(), kCurveBytes);
    changed.PutBytes(saved.Data() + kCountBytes + kCurveBytes, saved.Size() - kCountBytes - kCurveBytes);
    instrument.Plug().UnserializeState(changed, 0);
}

} // namespace

// Pages and the scope.

TEST(ThudForgeEditing, StartsOnTheSynthPage) {
    Instrument instrument;
    EXPECT_EQ(instrument.Plug().CurrentPage(), ThudForge::SynthPage);
}

TEST(ThudForgeEditing, PagesOutsideTheThreeAreIgnored) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    plug.SelectAboutPage();
    for (const int page : {-1, 3, 1000})
        plug.SelectPage(page);
    EXPECT_EQ(plug.CurrentPage(), ThudForge::AboutPage);
    plug.SelectSynthPage();
    EXPECT_EQ(plug.CurrentPage(), ThudForge::SynthPage);
}

TEST(ThudForgeEditing, AHostSelectsPagesByARequestOfTheInstrumentsOwn) {
    Instrument instrument;
    AEffect* const effect = instrument.Effect();
    const auto select = [effect](std::intptr_t page) {
        return effect->dispatcher(effect, PlugOp::VendorSpecific, OwnOp::SelectPage, page, nullptr, 0.0F);
    };
    EXPECT_EQ(select(1), 1);
    EXPECT_EQ(instrument.Plug().CurrentPage(), ThudForge::ScopePage);
    EXPECT_EQ(select(3), 0);
    EXPECT_EQ(select(-1), 0);
    EXPECT_EQ(instrument.Plug().CurrentPage(), ThudForge::ScopePage);
}

TEST(ThudForgeEditing, TheScopeStandsStillOnOtherPages) {
    Instrument instrument;
    for (const int page : {ThudForge::SynthPage, ThudForge::AboutPage}) {
        instrument.Plug().SelectPage(page);
        instrument.Render(1000);
        EXPECT_EQ(instrument.Plug().Scope().WritePos(), 0U);
    }
    instrument.Plug().SelectScopePage();
    instrument.Render(440);
    EXPECT_EQ(instrument.Plug().Scope().WritePos(), 10U);
    instrument.Plug().SelectSynthPage();
    instrument.Render(1000);
    EXPECT_EQ(instrument.Plug().Scope().WritePos(), 10U);
}

TEST(ThudForgeEditing, TheScopeHasTheOutputAsItGoesToTheHost) {
    Instrument instrument;
    instrument.NoteOn(40);
    instrument.Render(2048);
    instrument.Plug().SelectScopePage();
    const Instrument::Audio audio = instrument.Render(640); // blocks of 64
    const ScopeRing& scope = instrument.Plug().Scope();
    ASSERT_EQ(scope.WritePos(), 15U);
    EXPECT_GT(audio.Peak(), 0.01);
    for (std::uint32_t k = 0; k < 15; ++k) {
        const std::size_t at = std::size_t{44} * k;
        const bool last = at % 64 == 63;
        const double left = last ? audio.left[at] : (audio.left[at] + audio.left[at + 1]) * 0.5;
        const double right = last ? audio.right[at] : (audio.right[at] + audio.right[at + 1]) * 0.5;
        EXPECT_DOUBLE_EQ(scope.Read(k).left, left) << k;
        EXPECT_DOUBLE_EQ(scope.Read(k).right, right) << k;
    }
}

TEST(ThudForgeEditing, TheScopeHasLfosAndEnvelopesOfTheVoice) {
    Instrument instrument;
    OpenProgram(instrument);
    instrument.Set(Osc(0, OscParam::LfoRate), 0.5); // 10 Hz
    instrument.Plug().SelectScopePage();
    instrument.NoteOn(40);
    instrument.Render(4400);
    const ScopeRing& scope = instrument.Plug().Scope();
    ASSERT_EQ(scope.WritePos(), 100U);
    for (std::uint32_t k = 0; k < 100; ++k)
        EXPECT_NEAR(scope.Read(k).lfo1, std::sin(2.0 * kPi * 10.0 * 44.0 * k / 44100.0), 1e-9) << k;
    EXPECT_GT(scope.Read(90).volumeEnv, 0.5);
    EXPECT_LE(scope.Read(90).volumeEnv, 1.0);
    EXPECT_GT(scope.Read(90).filterEnv, 0.0);
}

TEST(ThudForgeEditing, SelectingTheScopePageBlanksTheRingAndKeepsItsPosition) {
    Instrument instrument;
    instrument.Plug().SelectScopePage();
    instrument.NoteOn(40);
    instrument.Render(8800);
    const ScopeRing& scope = instrument.Plug().Scope();
    ASSERT_EQ(scope.WritePos(), 200U);
    bool drawn = false;
    for (std::uint32_t i = 0; i < 1000; ++i)
        drawn = drawn || scope.Read(i).left != 0.0;
    EXPECT_TRUE(drawn);
    instrument.Plug().SelectScopePage();
    EXPECT_EQ(scope.WritePos(), 200U);
    for (std::uint32_t i = 0; i < 1000; ++i)
        ASSERT_EQ(scope.Read(i).left, 0.0) << i;
}

TEST(ThudForgeEditing, ANewSampleRateClearsTheScopeUnlessItIsFrozen) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    plug.SelectScopePage();
    instrument.NoteOn(40);
    instrument.Render(4400);
    const double before = plug.Scope().Read(50).left;
    ASSERT_NE(before, 0.0);
    plug.SetScopeFrozen(true);
    plug.Reset();
    EXPECT_EQ(plug.Scope().Read(50).left, before);
    plug.SetScopeFrozen(false);
    plug.Reset();
    EXPECT_EQ(plug.Scope().Read(50).left, 0.0);
}

TEST(ThudForgeEditing, ThePageHasNoInfluenceOnTheSound) {
    std::vector<Instrument::Audio> sounds;
    for (const int page : {ThudForge::SynthPage, ThudForge::ScopePage, ThudForge::AboutPage}) {
        Instrument instrument;
        instrument.Plug().SelectPage(page);
        sounds.push_back(PlayNote(instrument));
    }
    EXPECT_GT(sounds[0].Peak(), 0.01);
    EXPECT_EQ(sounds[1], sounds[0]);
    EXPECT_EQ(sounds[2], sounds[0]);
}

TEST(ThudForgeEditing, TheCallbackAllocatesNothingOnAnyPage) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    instrument.NoteOn(40);
    instrument.Render(512);
    std::array<double, 64> left{};
    std::array<double, 64> right{};
    std::array<double*, 2> outputs{left.data(), right.data()};
    for (const int page : {ThudForge::SynthPage, ThudForge::ScopePage, ThudForge::AboutPage}) {
        plug.SelectPage(page);
        DrawStairs(plug);
        plug.RequestCurveOperation(CurveOperation::AddNoise);
        const long before = AllocationCount();
        for (int i = 0; i < 20; ++i)
            instrument.Effect()->processDoubleReplacing(instrument.Effect(), nullptr, outputs.data(), 64);
        EXPECT_EQ(AllocationCount(), before) << "page " << page;
        EXPECT_EQ(before > 0, kCountsAllocations);
    }
}

// Levels.

TEST(ThudForgeEditing, TheMaximumIsForgottenAtOnceWhileTheAudioStandsStill) {
    Instrument instrument;
    PlayNote(instrument);
    instrument.Dispatch(PlugOp::MainsChanged, 0);
    ASSERT_GT(instrument.Plug().PeakLeft(), 0.0);
    instrument.Plug().ResetMaxLevel();
    EXPECT_EQ(instrument.Plug().PeakLeft(), 0.0);
    EXPECT_EQ(instrument.Plug().PeakRight(), 0.0);
    EXPECT_FALSE(instrument.Plug().peakResetPending);
}

TEST(ThudForgeEditing, TheMaximumIsForgottenByTheNextBlockWhileTheAudioRuns) {
    Instrument instrument;
    PlayNote(instrument);
    const double peak = instrument.Plug().PeakLeft();
    ASSERT_GT(peak, 0.0);
    instrument.Plug().ResetMaxLevel();
    EXPECT_EQ(instrument.Plug().PeakLeft(), peak);
    EXPECT_GT(instrument.Plug().PeakRight(), 0.0);
    instrument.Render(64);
    EXPECT_EQ(instrument.Plug().PeakLeft(), 0.0);
    EXPECT_EQ(instrument.Plug().PeakRight(), 0.0);
}

TEST(ThudForgeEditing, AMaximumThatWaitsToBeForgottenIsForgottenWhenTheAudioStops) {
    Instrument instrument;
    PlayNote(instrument);
    instrument.Plug().ResetMaxLevel();
    instrument.Dispatch(PlugOp::MainsChanged, 0);
    EXPECT_EQ(instrument.Plug().PeakLeft(), 0.0);
}

TEST(ThudForgeEditing, TheEyesFollowTheOutputOnTheAboutPageOnly) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    PlayNote(instrument);
    EXPECT_EQ(plug.FollowerLeft(), 0.0);
    plug.SelectAboutPage();
    const Instrument::Audio audio = instrument.Render(512);
    // 0.01 s up, 0.5 s down, worked out here sample by sample.
    const double up = std::exp(-1.0 / (44100.0 * 0.01));
    const double down = std::exp(-1.0 / (44100.0 * 0.5));
    double expected = 0.0;
    for (const double sample : audio.left) {
        const double v = std::min(std::fabs(sample), 1.0);
        const double c = v > expected ? up : down;
        expected = (1.0 - c) * v + c * expected;
    }
    EXPECT_GT(expected, 0.0);
    EXPECT_NEAR(plug.FollowerLeft(), expected, 1e-12);
}

TEST(ThudForgeEditing, SilenceLetsTheEyesFade) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    plug.SelectAboutPage();
    PlayNote(instrument);
    const double before = plug.FollowerLeft();
    ASSERT_GT(before, 0.0);
    plug.FollowSilence();
    // A twentieth of the release time: 1102 samples.
    EXPECT_NEAR(plug.FollowerLeft(), before * std::exp(-1102.0 / (44100.0 * 0.5)), 1e-9);
}

TEST(ThudForgeEditing, TheTempoIsLeftForTheEditor) {
    Instrument instrument;
    EXPECT_EQ(instrument.Plug().ShownTempo(), 0.0); // this host has no clock so far
    instrument.SetTempo(174.0);
    instrument.Render(64);
    EXPECT_EQ(instrument.Plug().ShownTempo(), 174.0);
}

// The drawn curve.

TEST(ThudForgeEditing, ADrawnCurveReachesBothStagesAtTheEndOfTheNextBlock) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    plug.UpdateCurveDisplay();
    const CurvePoints stock = AudioCurve(instrument);
    DrawStairs(plug);
    EXPECT_FALSE(plug.ApplyStrokeIfSilent());
    EXPECT_EQ(AudioCurve(instrument), stock);
    instrument.Render(64);
    for (std::size_t x = 0; x < 128; ++x) {
        EXPECT_EQ(AudioCurve(instrument)[4 * x], -plug.Drawing().Values()[x]) << x;
        EXPECT_EQ(EditorCurve(instrument)[4 * x], AudioCurve(instrument)[4 * x]);
    }
    EXPECT_FALSE(plug.Drawing().HasStroke());
}

TEST(ThudForgeEditing, ADrawnCurveIsAppliedByTheEditorWhileTheAudioStandsStill) {
    Instrument instrument;
    instrument.Dispatch(PlugOp::MainsChanged, 0);
    ThudForge& plug = instrument.Plug();
    EXPECT_FALSE(plug.ApplyStrokeIfSilent());
    DrawStairs(plug);
    EXPECT_TRUE(plug.ApplyStrokeIfSilent());
    EXPECT_EQ(AudioCurve(instrument)[400], -plug.Drawing().Values()[100]);
    EXPECT_FALSE(plug.ApplyStrokeIfSilent());
}

TEST(ThudForgeEditing, AStrokeThatWaitsIsHeardAlthoughTheAudioStopsFirst) {
    Instrument instrument;
    DrawStairs(instrument.Plug());
    instrument.Dispatch(PlugOp::MainsChanged, 0);
    EXPECT_EQ(AudioCurve(instrument)[400], -instrument.Plug().Drawing().Values()[100]);
}

TEST(ThudForgeEditing, ACurveOperationThatWaitsRunsWhenTheAudioStops) {
    Instrument instrument;
    instrument.Set(Param::DistortionType, 20.0 / 41.0);
    instrument.Plug().RequestCurveOperation(CurveOperation::Reset);
    instrument.Dispatch(PlugOp::MainsChanged, 0);
    for (std::size_t k = 0; k < 512; ++k)
        ASSERT_DOUBLE_EQ(AudioCurve(instrument)[k], 2.0 * static_cast<double>(k) / 511.0 - 1.0);
    EXPECT_EQ(EditorCurve(instrument), AudioCurve(instrument));
}

TEST(ThudForgeEditing, SoundGoesThroughTheCurveAsItWasDrawn) {
    for (const bool running : {true, false}) {
        Instrument drawn;
        Instrument restored;
        for (Instrument* instrument : {&drawn, &restored})
            DistortedProgram(*instrument);
        const CurvePoints stock = AudioCurve(drawn);
        RestoreCurve(drawn, stock);
        if (!running) drawn.Dispatch(PlugOp::MainsChanged, 0);
        DrawStairs(drawn.Plug());
        drawn.Plug().ApplyStrokeIfSilent();
        if (!running) drawn.Dispatch(PlugOp::MainsChanged, 1);

        // The other instrument is given the same stairs as a state, point by point.
        CurvePoints expected{};
        for (int k = 0; k < kCurvePoints; ++k)
            expected[static_cast<std::size_t>(k)] = StairsPoint(k);
        RestoreCurve(restored, expected);
        for (Instrument* instrument : {&drawn, &restored})
            instrument->Render(2 * kSettleFrames);

        const Instrument::Audio sound = PlayNote(drawn);
        EXPECT_LT(LargestDifference(sound, PlayNote(restored)), 1e-6) << (running ? "running" : "still");
        Instrument plain;
        DistortedProgram(plain);
        RestoreCurve(plain, stock);
        plain.Render(2 * kSettleFrames);
        EXPECT_GT(LargestDifference(sound, PlayNote(plain)), 0.05);
    }
}

TEST(ThudForgeEditing, ARampComesOutInTheShapeOfTheDrawing) {
    Instrument instrument;
    instrument.Dispatch(PlugOp::MainsChanged, 0);
    ThudForge& plug = instrument.Plug();
    DrawStairs(plug);
    plug.ApplyStrokeIfSilent();

    RandomGenerator random;
    const DistortionDataProvider curves(random);
    Distortion unit(curves);
    unit.SetMode(0.0); // twice the amount as gain, half of it as share
    unit.SetAmount(0.5);
    unit.SetPoints(AudioCurve(instrument));
    std::vector<double> settle(2048, 0.0);
    unit.Process({settle.data(), settle.data()}, 2048, nullptr);
    for (int step = 1; step < 15; ++step) {
        // In the middle of each stair the curve is flat.
        double left = (step * 8 + 4) / 64.0 - 1.0;
        double right = left;
        const double dry = left;
        unit.Process({&left, &right}, 1, nullptr);
        const double height = -(0.9 - step * 8 / 64.0 * 0.9);
        EXPECT_NEAR(left, 0.25 * height + 0.75 * dry, 2e-3) << step;
        EXPECT_EQ(right, left);
    }
}

TEST(ThudForgeEditing, TheDrawingIsTheSelectedCurveWithTheOppositeSign) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    for (const int type : {20, 8, 39}) {
        instrument.Set(Param::DistortionType, type / 41.0);
        EXPECT_TRUE(plug.RefreshCurveDisplay());
        for (std::size_t x = 0; x < 128; ++x)
            ASSERT_EQ(plug.Drawing().Values()[x], -EditorCurve(instrument)[4 * x]);
    }
}

TEST(ThudForgeEditing, AStrokeStaysWithTheCurveThatItWasDrawnOn) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    instrument.Set(Param::DistortionType, 20.0 / 41.0);
    plug.PressCurve(50, 0.77);
    instrument.Set(Param::DistortionType, 8.0 / 41.0);
    const CurvePoints other = AudioCurve(instrument);
    instrument.Render(64);
    EXPECT_EQ(AudioCurve(instrument), other);
    instrument.Set(Param::DistortionType, 20.0 / 41.0);
    EXPECT_EQ(AudioCurve(instrument)[200], -0.77);
}

TEST(ThudForgeEditing, AStrokeAfterAChangeOfCurveStartsFromTheNewCurve) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    instrument.Set(Param::DistortionType, 20.0 / 41.0);
    plug.UpdateCurveDisplay();
    instrument.Set(Param::DistortionType, 8.0 / 41.0);
    const CurvePoints other = AudioCurve(instrument);
    plug.PressCurve(50, 0.77);
    instrument.Render(64);
    EXPECT_EQ(AudioCurve(instrument)[200], -0.77);
    EXPECT_EQ(AudioCurve(instrument)[40], other[40]);
    EXPECT_EQ(AudioCurve(instrument)[480], other[480]);
}

TEST(ThudForgeEditing, ADragGoesOnOnTheCurveThatWasSelectedMeanwhile) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    instrument.Set(Param::DistortionType, 20.0 / 41.0);
    plug.PressCurve(20, 0.77);
    instrument.Set(Param::DistortionType, 8.0 / 41.0);
    const CurvePoints other = AudioCurve(instrument);
    plug.DragCurve(50, 0.66, 1);
    instrument.Render(64);
    EXPECT_EQ(AudioCurve(instrument)[200], -0.66);
    for (const std::size_t point : {40U, 80U, 480U})
        EXPECT_EQ(AudioCurve(instrument)[point], other[point]) << point;
    EXPECT_NE(other[80], -0.77);
}

TEST(ThudForgeEditing, AnOperationComesAfterTheStrokeBeforeIt) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    DrawStairs(plug);
    plug.RequestCurveOperation(CurveOperation::Reset);
    instrument.Render(64);
    for (std::size_t k = 0; k < 512; ++k)
        ASSERT_DOUBLE_EQ(AudioCurve(instrument)[k], 2.0 * static_cast<double>(k) / 511.0 - 1.0);
}

TEST(ThudForgeEditing, ARestoredStateWinsOverAStrokeBeforeIt) {
    Instrument instrument;
    CurvePoints points{};
    points.fill(0.5);
    DrawStairs(instrument.Plug());
    RestoreCurve(instrument, points);
    instrument.Render(64);
    EXPECT_EQ(AudioCurve(instrument), points);
    EXPECT_TRUE(instrument.Plug().RefreshCurveDisplay());
    EXPECT_EQ(instrument.Plug().Drawing().Values()[64], -0.5);
}

TEST(ThudForgeEditing, ThePreviewShowsTheCurveAndASineThroughTheUnit) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    instrument.ResetProgram();
    instrument.Set(Param::DistortionOnOff, 1.0);
    instrument.Set(Param::DistortionLoudness, 0.0);
    instrument.Set(Param::DistortionInterpMode, 1.0 / 3.0);
    instrument.Set(Param::Distortion, 0.5);
    plug.RequestCurveOperation(CurveOperation::Reset);
    instrument.Render(64);
    while (plug.RefreshCurveDisplay()) {
    }
    const CurvePreview& preview = plug.Preview();
    for (std::size_t k = 0; k < 128; ++k)
        EXPECT_NEAR(preview.curve[k], 2.0 * static_cast<double>(k) / 127.0 - 1.0, 1e-12);
    // The straight line, gain 1: nothing is bent.
    for (std::size_t k = 0; k < 120; ++k)
        EXPECT_NEAR(preview.signal[k], std::sin(2.0 * kPi * static_cast<double>(k) / 120.0), 1e-3);
}

TEST(ThudForgeEditing, ThePreviewFollowsTheDistortionsSettingsAndComesToRest) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    instrument.ResetProgram();
    while (plug.RefreshCurveDisplay()) {
    }
    EXPECT_FALSE(plug.RefreshCurveDisplay());
    for (const int id : {Param::DistortionOnOff, Param::Distortion, Param::DistortionType,
                         Param::DistortionLoudness, Param::DistortionInterpMode}) {
        instrument.Set(id, 0.6);
        EXPECT_TRUE(plug.RefreshCurveDisplay()) << id;
        int refreshes = 0;
        while (plug.RefreshCurveDisplay())
            ++refreshes;
        EXPECT_LT(refreshes, 10) << id;
    }
    instrument.Set(Param::Volume, 0.3);
    EXPECT_FALSE(plug.RefreshCurveDisplay());
}

TEST(ThudForgeEditing, ADrawingTakesTheWidthOfItsControl) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    plug.SetDrawnCurveWidth(64);
    EXPECT_TRUE(plug.RefreshCurveDisplay());
    ASSERT_EQ(plug.Drawing().Values().size(), 64U);
    EXPECT_EQ(plug.Drawing().Values()[10], -EditorCurve(instrument)[80]);
}

// Pictures.

TEST(ThudForgeEditing, AWavePictureStartsHalfACycleBeforeItsPhase) {
    Instrument instrument;
    instrument.ResetProgram();
    instrument.Set(Osc(1, OscParam::Waveform), 6.0 / 40.0);
    std::array<double, kWavePreviewPoints> zero{};
    std::array<double, kWavePreviewPoints> ahead{};
    instrument.Set(Osc(1, OscParam::Phase), 0.5);
    instrument.Plug().RenderWave(1, zero);
    instrument.Set(Osc(1, OscParam::Phase), 0.5 + 21.0 / 105.0);
    instrument.Plug().RenderWave(1, ahead);
    for (std::size_t n = 0; n + 21 < zero.size(); n += 7)
        EXPECT_NEAR(ahead[n], zero[n + 21], 0.05) << n;
    std::array<double, kWavePreviewPoints> untouched{};
    untouched.fill(7.0);
    instrument.Plug().RenderWave(3, untouched);
    instrument.Plug().RenderWave(-1, untouched);
    EXPECT_EQ(untouched[0], 7.0);
}

TEST(ThudForgeEditing, APictureOfNoiseTakesNothingFromTheSound) {
    Instrument quiet;
    Instrument looked;
    for (Instrument* instrument : {&quiet, &looked}) {
        OpenProgram(*instrument);
        instrument->Set(Osc(0, OscParam::Waveform), 8.0 / 40.0);
    }
    std::array<double, kWavePreviewPoints> points{};
    looked.Plug().RenderWave(0, points);
    EXPECT_NE(points[0], points[1]);
    EXPECT_EQ(PlayNote(looked), PlayNote(quiet));
}

TEST(ThudForgeEditing, AnEnvelopesPictureIsAsHighAsItsAmount) {
    Instrument instrument;
    OpenProgram(instrument);
    instrument.Set(Param::EnvAmount, 0.5);
    instrument.Set(Param::FilterEnvAmount, 0.25);
    std::array<double, kEnvelopeCurvePoints> volume{};
    std::array<double, kEnvelopeCurvePoints> filter{};
    instrument.Plug().RenderVolumeEnvelope(volume);
    instrument.Plug().RenderFilterEnvelope(filter);
    EXPECT_NEAR(volume[60], 0.5, 1e-9);
    EXPECT_NEAR(filter[60], 0.25, 1e-9);
    EXPECT_EQ(volume.front(), 0.0);
    EXPECT_EQ(volume.back(), 0.0);
}

TEST(ThudForgeEditing, ThePitchPictureShowsRiseAndFall) {
    Instrument instrument;
    instrument.ResetProgram();
    instrument.Set(Param::PitchOnOff, 1.0);
    instrument.Set(Param::PitchAmount, 0.0);
    instrument.Set(Param::PitchDown, 1.0);
    instrument.Set(Param::PitchDuration, 0.25);
    std::array<double, kPitchCurvePoints> points{};
    instrument.Plug().RenderPitchEnvelope(points);
    EXPECT_NEAR(points.back(), -1.0, 1e-12);
    EXPECT_NEAR(points.front(), 0.0, 1e-12);
}

} // namespace Grimworks
