#include "tests/plugin/Measure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <functional>
#include <latch>
#include <thread>
#include <vector>

using namespace Grimworks;

namespace {

/// Runs all of these at the same time, each on a thread of its own, to their ends.
void RunTogether(const std::vector<std::function<void()>>& tasks) {
    std::latch start(static_cast<std::ptrdiff_t>(tasks.size()));
    std::vector<std::thread> threads;
    threads.reserve(tasks.size());
    for (const std::function<void()>& task : tasks) {
        threads.emplace_back([&start, &task] {
            start.arrive_and_wait();
            task();
        });
    }
    for (std::thread& thread : threads)
        thread.join();
}

/// A session with an instance of its own, from construction to the last frame.
Instrument::Audio PlaySession(int seed) {
    Instrument instrument(seed == 0 ? 44100.0 : 48000.0);
    instrument.ResetProgram();
    instrument.SetTempo(100.0 + 50.0 * seed);
    for (int i = 0; i < kOscillators; ++i) {
        instrument.Set(Osc(i, OscParam::OnOff), 1.0);
        instrument.Set(Osc(i, OscParam::Waveform), (8 * i + seed) / 40.0); // noise among them
        instrument.Set(Osc(i, OscParam::LfoTempoSync), 6.0 / 9.0);
    }
    instrument.Set(Param::Distortion, 0.4);
    instrument.Set(Param::DistortionType, 24.0 / 41.0); // a curve of drawn noise
    instrument.Set(Param::TempoDelayAmount, 0.5);
    instrument.Plug().RequestCurveOperation(CurveOperation::AddNoise);
    Instrument::Audio audio;
    for (int i = 0; i < 150; ++i) {
        if (i % 10 == 0) instrument.NoteOn(40 + i / 10 + seed, 100, i % 64);
        if (i % 10 == 7) instrument.NoteOff(40 + i / 10 + seed);
        instrument.Set(Param::FilterCutoff, i / 150.0);
        instrument.Process(audio, 64);
    }
    return audio;
}

constexpr double kCeiling = 3.1622777;

} // namespace

TEST(ThudForgeThread, TwoInstancesOnTwoThreadsSoundAsEachAlone) {
    std::array<Instrument::Audio, 2> alone{PlaySession(0), PlaySession(1)};
    std::array<Instrument::Audio, 2> together;
    RunTogether(
        {[&together] { together[0] = PlaySession(0); }, [&together] { together[1] = PlaySession(1); }});
    for (std::size_t i = 0; i < alone.size(); ++i) {
        EXPECT_GT(alone[i].Peak(), 0.1);
        EXPECT_TRUE(together[i] == alone[i]) << i;
    }
    EXPECT_FALSE(alone[0] == alone[1]);
}

TEST(ThudForgeThread, ParametersMidiStateAndEditorMayComeFromAnywhereWhileTheAudioRuns) {
    Instrument instrument;
    instrument.SetTempo(120.0);
    instrument.ResetProgram();
    ThudForge& plug = instrument.Plug();
    std::atomic<bool> kept{true};
    double loudest = 0.0;
    int marked = 0;

    const auto audio = [&] {
        for (int i = 0; i < 600; ++i) {
            Instrument::Audio block;
            instrument.Process(block, i % 3 == 0 ? 17 : 64);
            for (const double x : block.left) {
                if (!std::isnan(x)) loudest = std::max(loudest, std::fabs(x));
            }
        }
    };
    const auto parameters = [&] {
        for (int i = 0; i < 4 * kParameters; ++i) {
            instrument.Set(i % kParameters, (i * 7 % 11) / 10.0);
            if (i % kParameters == Param::BypassFX) instrument.Set(Param::BypassFX, 0.0);
            (void)instrument.Get(i * 13 % kParameters);
        }
    };
    const auto midi = [&] {
        for (int i = 0; i < 1500; ++i) {
            switch (i % 4) {
            case 0:
                instrument.NoteOn(20 + i % 80, 1 + i % 127, i % 64);
                break;
            case 1:
                instrument.Midi(0xE0, i % 128, i * 3 % 128, i % 64);
                break;
            default:
                instrument.NoteOff(20 + (i - 2) % 80, i % 64);
                break;
            }
        }
    };
    const auto state = [&] {
        for (int i = 0; i < 60; ++i) {
            void* data = nullptr;
            const std::intptr_t size =
                instrument.Effect()->dispatcher(instrument.Effect(), PlugOp::GetChunk, 1, 0, &data, 0.0F);
            const auto* bytes = static_cast<const unsigned char*>(data);
            if (size < 5372 || std::all_of(bytes, bytes + size, [](unsigned char b) { return b == 0; })) {
                kept = false;
            }
        }
    };
    const auto editor = [&] {
        for (int i = 0; i < 1500; ++i) {
            plug.playRequest.Post(30 + i % 60, 1 + i % 2);
            plug.changedParameters.Take([&marked](int id) { marked += id >= 0 ? 1 : 0; });
            if (i % 50 == 0) plug.RequestCurveOperation(i / 50 % 9);
            if (i % 30 == 0) plug.peakResetPending = true;
            (void)plug.TakeCurveChanged();
            const bool sane = plug.PeakLeft() <= kCeiling && plug.PeakRight() <= kCeiling &&
                              plug.IsAudioActive() && plug.Voices().LastNote() >= -1 &&
                              plug.Voices().LastFrequency() >= 0.0;
            if (!sane) kept = false;
        }
    };
    RunTogether({audio, parameters, midi, state, editor});

    EXPECT_TRUE(kept);
    EXPECT_LE(loudest, kCeiling);
    // Whatever came last is done by the next block.
    plug.RequestCurveOperation(CurveOperation::Smooth);
    plug.playRequest.Post(60, 2);
    instrument.Set(Param::Volume, 0.5);
    instrument.Render(64);
    plug.changedParameters.Take([&marked](int id) { marked += id >= 0 ? 1 : 0; });
    EXPECT_TRUE(plug.TakeCurveChanged());
    EXPECT_GE(marked, kLiveParameters);
}

TEST(ThudForgeThread, StatesMayBeTakenWhileTheAudioRuns) {
    Instrument source;
    source.ResetProgram();
    source.Set(Param::DistortionType, 20.0 / 41.0);
    void* data = nullptr;
    const std::intptr_t size =
        source.Effect()->dispatcher(source.Effect(), PlugOp::GetChunk, 1, 0, &data, 0.0F);
    std::vector<unsigned char> chunk(static_cast<const unsigned char*>(data),
                                     static_cast<const unsigned char*>(data) + size);

    Instrument instrument;
    instrument.NoteOn(50);
    bool finite = true;
    RunTogether({[&] {
                     for (int i = 0; i < 300; ++i) {
                         Instrument::Audio block;
                         instrument.Process(block, 64);
                         finite = finite && IsFinite(block);
                     }
                 },
                 [&] {
                     for (int i = 0; i < 40; ++i) {
                         instrument.Effect()->dispatcher(instrument.Effect(), PlugOp::SetChunk, 1,
                                                         static_cast<std::intptr_t>(chunk.size()),
                                                         chunk.data(), 0.0F);
                     }
                 },
                 [&] {
                     for (int i = 0; i < 40; ++i) {
                         instrument.Dispatch(PlugOp::SetProgram, i % kPrograms);
                         instrument.Plug().RequestCurveOperation(i % 9);
                     }
                 }});
    EXPECT_TRUE(finite);
    instrument.Effect()->dispatcher(instrument.Effect(), PlugOp::SetChunk, 1,
                                    static_cast<std::intptr_t>(chunk.size()), chunk.data(), 0.0F);
    EXPECT_NEAR(instrument.Get(Param::DistortionType), 20.0 / 41.0, 1e-6);
}
