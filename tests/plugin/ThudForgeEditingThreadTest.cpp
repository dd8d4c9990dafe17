#include "tests/plugin/Instrument.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cmath>
#include <cstddef>
#include <functional>
#include <thread>
#include <vector>

namespace Grimworks {

namespace {

constexpr double kCeiling = 3.1622777;

/// Runs the audio until the other is done.
void WhileTheAudioRuns(Instrument& instrument, const std::function<void()>& other) {
    std::atomic<bool> stop{false};
    std::thread audio([&] {
        while (!stop)
            instrument.Render(256);
    });
    other();
    stop = true;
    audio.join();
}

bool IsSane(const ScopeRing::Entry& entry) {
    return std::fabs(entry.left) <= kCeiling && std::fabs(entry.right) <= kCeiling &&
           std::fabs(entry.lfo1) <= 1.0 && std::fabs(entry.volumeEnv) <= 1.0 &&
           std::fabs(entry.filterEnv) <= 1.0 && !entry.marker;
}

} // namespace

TEST(ThudForgeEditingThread, TheScopeIsReadWhileTheAudioFeedsIt) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    plug.SelectScopePage();
    instrument.NoteOn(40);
    bool sane = true;
    WhileTheAudioRuns(instrument, [&] {
        for (int round = 0; round < 200; ++round) {
            const ScopeRing& scope = plug.Scope();
            const std::uint32_t oldest = scope.WritePos();
            for (std::uint32_t c = 0; c < ScopeRing::kSize; ++c)
                sane = sane && IsSane(scope.Read(oldest + c));
            plug.SetScopeZoom(round % 2 == 0, round % 7);
            if (round % 20 == 0) plug.SetScopeFrozen(round % 40 == 0);
            if (round % 50 == 0) plug.SelectPage(round / 50 % 3);
        }
    });
    EXPECT_TRUE(sane);
    plug.SetScopeFrozen(false);
    plug.SelectScopePage();
    const std::uint32_t before = plug.Scope().WritePos();
    instrument.Render(4096);
    EXPECT_GT(plug.Scope().WritePos(), before);
}

TEST(ThudForgeEditingThread, StrokesMeetTheAudio) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    instrument.Set(Param::Distortion, 1.0);
    instrument.NoteOn(40);
    std::size_t refreshes = 0;
    WhileTheAudioRuns(instrument, [&] {
        for (int i = 0; i < 2000; ++i) {
            plug.PressCurve(i % 130, std::sin(i * 0.1));
            plug.DragCurve(i * 7 % 128, std::cos(i * 0.3), i % 31 - 15);
            if (i % 100 == 0) plug.RequestCurveOperation(i / 100 % 8);
            if (i % 250 == 0) instrument.Set(Param::DistortionType, i / 2000.0);
            if (i % 10 == 0) refreshes += plug.RefreshCurveDisplay() ? 1 : 0;
            if (i % 300 == 0) plug.ResetMaxLevel();
        }
    });
    EXPECT_GT(refreshes, 0U);
    plug.PressCurve(100, 0.625);
    instrument.Render(256);
    EXPECT_EQ(plug.AudioStage().GetDistortion().Points()[400], -0.625);
    EXPECT_EQ(plug.EditorStage().GetDistortion().Points()[400], -0.625);
}

TEST(ThudForgeEditingThread, PicturesAreMadeWhileTheAudioRunsAndParametersMove) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    plug.SelectAboutPage();
    instrument.NoteOn(40);
    bool sane = true;
    WhileTheAudioRuns(instrument, [&] {
        std::array<double, kWavePreviewPoints> wave{};
        std::array<double, kEnvelopeCurvePoints> envelope{};
        std::array<double, kPitchCurvePoints> pitch{};
        for (int i = 0; i < 300; ++i) {
            instrument.Set(i % kLiveParameters, i % 11 / 10.0);
            plug.RenderWave(i % 3, wave);
            plug.RenderVolumeEnvelope(envelope);
            plug.RenderFilterEnvelope(envelope);
            plug.RenderPitchEnvelope(pitch);
            sane = sane && plug.FollowerLeft() >= 0.0 && plug.FollowerLeft() <= 1.0 &&
                   std::isfinite(wave[50]) && envelope.front() == 0.0 && std::fabs(pitch[100]) <= 21.0;
        }
    });
    EXPECT_TRUE(sane);
}

} // namespace Grimworks
