#include "tests/plugin/AllocationCounter.h"
#include "tests/plugin/Measure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <numeric>
#include <random>

using namespace Grimworks;

namespace {

constexpr double kCeiling = 3.1622777;

constexpr int kSettle = kSettleFrames;

/// A steady sine of one note, everything else neutral.
void PlaySteadySine(Instrument& instrument, int note = 57) {
    instrument.ResetProgram();
    instrument.Set(Param::NoteTransposeMode, 0.0);
    instrument.Set(Param::EnvAttack, 0.0);
    instrument.Set(Param::EnvSustain, 1.0);
    instrument.Render(kSettle);
    instrument.NoteOn(note);
}

} // namespace

TEST(ThudForge, ABlockOfNoFramesWritesNothingAndReadsTheTempo) {
    Instrument instrument;
    instrument.Set(Osc(0, OscParam::LfoTempoSync), 5.0 / 9.0);
    instrument.SetTempo(90.0);
    double left = 7.0;
    double right = 7.0;
    double* outputs[] = {&left, &right};
    instrument.Effect()->processDoubleReplacing(instrument.Effect(), nullptr, outputs, 0);
    EXPECT_EQ(left, 7.0);
    EXPECT_EQ(right, 7.0);
    EXPECT_NEAR(instrument.Get(Osc(0, OscParam::LfoRate)), 90.0 / 60.0 / 20.0, 1e-7);
}

TEST(ThudForge, ANoteOffInTheBlockOfItsNoteOnReleasesTheWholeBlock) {
    Instrument instrument;
    instrument.ResetProgram();
    instrument.Set(Param::EnvAttack, 0.0);
    instrument.Render(kSettle);
    instrument.NoteOn(60, 127, 0);
    instrument.NoteOff(60, 63);
    Instrument::Audio audio;
    instrument.Process(audio, 64);
    // Release from level 0 ends at once: the voice has started, and is over. What is left is the tiny offset
    // that keeps the chain's filters out of denormals.
    EXPECT_EQ(instrument.Plug().Voices().ActiveVoices(), 0);
    EXPECT_EQ(instrument.Plug().Voices().LastNote(), 60);
    EXPECT_LT(audio.Peak(), 1e-5);
}

TEST(ThudForge, BypassLeavesTheDrySumAndStopsTheChainOnlyBehindTheFade) {
    Instrument instrument;
    PlaySteadySine(instrument);
    instrument.Set(Param::TempoDelayAmount, 1.0);
    instrument.Set(Param::BypassFX, 1.0);
    const Instrument::Audio first = instrument.Render(256);
    // The smoother needs log(1 - 0.9999999777) / log(0.988) = 1460 frames; the wet side is there until then.
    EXPECT_GT(first.Peak(), 0.0);
    instrument.Render(4096);
    instrument.SetTempo(120.0);
    const Instrument::Audio bypassed = instrument.Render(4410);
    const double dry = 0.705 * 1.0;
    EXPECT_NEAR(bypassed.Peak(), dry, 0.01);
}

TEST(ThudForge, TheDelayStandsStillBehindTheBypassFadeUntilTheChainRunsAgain) {
    const auto playIntoTheDelay = [](Instrument& instrument) {
        OpenProgram(instrument);
        instrument.Set(Param::TempoDelayAmount, 1.0);
        instrument.SetTempo(120.0); // 22050 frames
        instrument.Render(kSettle);
        instrument.NoteOn(57);
        instrument.Render(256);
        instrument.NoteOff(57);
        instrument.Render(256);
    };
    Instrument running;
    playIntoTheDelay(running);
    // Behind the fade's frame 1460 the chain stops with the next block, the 24th.
    running.Render(23 * 64);
    const Instrument::Audio expected = running.Render(22080);
    for (const int blocks : {24, 40, 1000}) {
        Instrument bypassed;
        playIntoTheDelay(bypassed);
        bypassed.Set(Param::BypassFX, 1.0);
        bypassed.Render(blocks * 64);
        bypassed.Set(Param::BypassFX, 0.0);
        bypassed.Render(64); // still skipped, as the fade only moves behind the chain
        const Instrument::Audio audio = bypassed.Render(22080);
        const std::vector<double> echo(audio.left.begin() + 4096, audio.left.end());
        EXPECT_GT(*std::max_element(echo.begin(), echo.end()), 0.3) << blocks;
        EXPECT_LT(LargestDifference(audio, expected, 4096), 1e-9) << blocks;
    }
}

TEST(ThudForge, SoloOfTheSubLayerReplacesTheChain) {
    Instrument instrument;
    PlaySteadySine(instrument);
    instrument.Render(kSettle);
    instrument.Set(Param::BassLayerSolo, 1.0);
    instrument.Render(64);
    EXPECT_EQ(instrument.Render(1024).Peak(), 0.0);
    instrument.Set(Param::BassLayerAmount, 0.25);
    instrument.Render(kSettle);
    const Instrument::Audio sub = instrument.Render(kSettle);
    // Volume still applies behind the solo.
    EXPECT_NEAR(Rms(sub.left), 0.25 * 1.259 * 0.705 / std::numbers::sqrt2, 0.005);
    for (std::size_t i = 0; i < sub.left.size(); ++i)
        ASSERT_NEAR(sub.left[i], sub.right[i], 1e-9);
}

TEST(ThudForge, TheSubLayerPassesUnityUpToLimiterAndClip) {
    Instrument instrument;
    PlaySteadySine(instrument);
    instrument.Set(Osc(0, OscParam::OnOff), 0.0);
    instrument.Set(Param::LimiterMode, 0.0);
    instrument.Set(Param::Volume, 1.0);
    instrument.Set(Param::BassLayerAmount, 1.0);
    instrument.Render(kSettle);
    EXPECT_NEAR(instrument.Render(kSettle).Peak(), 1.259, 1e-3);
    EXPECT_EQ(instrument.Plug().Values()[Param::BassLayerAmount], 1.259);
}

TEST(ThudForge, SubAmountZeroWithSoloIsSilence) {
    Instrument instrument;
    PlaySteadySine(instrument);
    instrument.Set(Param::BassLayerSolo, 1.0);
    instrument.Render(kSettle);
    EXPECT_EQ(instrument.Render(kSettle).Peak(), 0.0);
}

TEST(ThudForge, TheClickIsNotHeardUnderSolo) {
    Instrument instrument;
    instrument.ResetProgram();
    instrument.Set(Osc(0, OscParam::OnOff), 0.0);
    instrument.Set(Param::BassLayerClick, 0.5);
    instrument.Set(Param::EnvAttack, 0.0);
    instrument.Render(kSettle);
    instrument.NoteOn(60);
    EXPECT_GT(instrument.Render(2048).Peak(), 0.05);
    instrument.NoteOff(60);
    instrument.Render(44100);
    instrument.Set(Param::BassLayerSolo, 1.0);
    instrument.NoteOn(60);
    EXPECT_EQ(instrument.Render(2048).Peak(), 0.0);
}

TEST(ThudForge, SubToFmChangesNothingWithoutFmInAStandardMode) {
    Instrument::Audio renders[2];
    for (int on = 0; on < 2; ++on) {
        Instrument instrument;
        instrument.ResetProgram();
        instrument.Set(Param::NoteTransposeMode, 0.0);
        instrument.Set(Param::BassLayerAmount, 0.5);
        instrument.Set(Param::BassLayerToFm, on);
        instrument.NoteOn(40);
        renders[on] = instrument.Render(8192);
    }
    for (std::size_t i = 0; i < renders[0].left.size(); ++i) {
        ASSERT_NEAR(renders[0].left[i], renders[1].left[i], 1e-9) << i;
    }
}

TEST(ThudForge, ATempoThatIsNotANumberRefreshesWithEveryBlockAndIsNeverStored) {
    Instrument instrument;
    instrument.Set(Osc(0, OscParam::LfoTempoSync), 5.0 / 9.0);
    const double before = instrument.Get(Osc(0, OscParam::LfoRate));
    const auto looksInABlock = [&instrument] {
        const int calls = instrument.ClockCalls();
        instrument.Render(64);
        return instrument.ClockCalls() - calls;
    };
    instrument.SetTempo(std::numeric_limits<double>::quiet_NaN());
    // Every block looks once; a refresh looks again for the locked LFO and for the delay.
    for (int block = 0; block < 10; ++block)
        EXPECT_EQ(looksInABlock(), 3) << block;
    EXPECT_EQ(instrument.Get(Osc(0, OscParam::LfoRate)), before);
    instrument.SetTempo(120.0);
    EXPECT_EQ(looksInABlock(), 3);
    EXPECT_EQ(looksInABlock(), 1);
}

TEST(ThudForge, WithoutATempoLockedLfosStop) {
    Instrument instrument;
    instrument.SetTempo(120.0);
    instrument.Set(Osc(1, OscParam::LfoTempoSync), 5.0 / 9.0);
    EXPECT_NEAR(instrument.Get(Osc(1, OscParam::LfoRate)), 0.1, 1e-7);
    instrument.Render(64);
    instrument.SetTempo(0.0);
    instrument.Render(64);
    EXPECT_EQ(instrument.Get(Osc(1, OscParam::LfoRate)), 0.0);
}

TEST(ThudForge, ActivationBringsTheTempoToLockedLfos) {
    Instrument instrument;
    instrument.SetTempo(120.0);
    instrument.Set(Osc(2, OscParam::LfoTempoSync), 5.0 / 9.0);
    instrument.SetTempo(60.0);
    instrument.Dispatch(PlugOp::MainsChanged, 1);
    EXPECT_NEAR(instrument.Get(Osc(2, OscParam::LfoRate)), 0.05, 1e-7);
    EXPECT_TRUE(instrument.Plug().IsAudioActive());
    instrument.Dispatch(PlugOp::MainsChanged, 0);
    EXPECT_FALSE(instrument.Plug().IsAudioActive());
}

TEST(ThudForge, TheOutputPanActsTwiceOnTheWetSignal) {
    Instrument instrument;
    PlaySteadySine(instrument);
    instrument.Set(Param::LimiterMode, 0.0);
    instrument.Set(Param::Pan, 0.25);
    instrument.Render(kSettle);
    const Instrument::Audio audio = instrument.Render(44100);
    EXPECT_NEAR(Rms(audio.right) / Rms(audio.left), 0.5 * 0.5, 1e-6);
    instrument.Set(Param::Pan, 0.75);
    instrument.Render(kSettle);
    const Instrument::Audio other = instrument.Render(44100);
    EXPECT_NEAR(Rms(other.left) / Rms(other.right), 0.5 * 0.5, 1e-6);
}

TEST(ThudForge, ThePanGlidesThroughAWholeBlockInTheChainBeforeItGlidesAtTheOutput) {
    for (const int blockSize : {16, 64}) {
        Instrument instrument(44100.0, blockSize);
        PlaySteadySine(instrument);
        instrument.Set(Param::LimiterMode, 0.0);
        instrument.Set(Param::DryWet, 0.0); // both sides alike
        instrument.Render(2 * kSettle);
        instrument.Set(Param::Pan, 0.0);
        const Instrument::Audio audio = instrument.Render(4 * blockSize);
        int compared = 0;
        for (int i = 0; i < 4 * blockSize; ++i) {
            const auto frame = static_cast<std::size_t>(i);
            if (std::fabs(audio.left[frame]) < 1e-3) continue;
            const int inChain = i / blockSize * 2 * blockSize + i % blockSize + 1;
            const double expected = std::pow(0.9777, inChain) * std::pow(0.9777, inChain + blockSize);
            ASSERT_NEAR(audio.right[frame] / audio.left[frame], expected, 1e-9) << blockSize << " " << i;
            ++compared;
        }
        EXPECT_GT(compared, 3 * blockSize);
    }
}

TEST(ThudForge, InputBuffersAreWiped) {
    Instrument instrument;
    std::vector<double> in(64, 1.0);
    std::vector<double> out(64);
    double* inputs[] = {in.data(), nullptr};
    double* outputs[] = {out.data(), out.data()};
    instrument.Plug().ProcessDoubleReplacing(inputs, outputs, 64);
    EXPECT_EQ(*std::max_element(in.begin(), in.end()), 0.0);
}

TEST(ThudForge, TheEditorsTestNoteStartsAndStops) {
    Instrument instrument;
    instrument.ResetProgram();
    instrument.Plug().playRequest.Post(48, 2);
    instrument.Render(64);
    EXPECT_EQ(instrument.Plug().Voices().ActiveVoices(), 1);
    EXPECT_EQ(instrument.Plug().Voices().LastNote(), 48);
    instrument.Plug().playRequest.Post(48, 1);
    instrument.Render(44100);
    EXPECT_EQ(instrument.Plug().Voices().ActiveVoices(), 0);
    instrument.Plug().playRequest.Post(48, 3);
    instrument.Plug().playRequest.Post(0, 2);
    instrument.Render(64);
    EXPECT_EQ(instrument.Plug().Voices().ActiveVoices(), 0);
}

TEST(ThudForge, ThePeakHoldsUntilItIsReset) {
    Instrument instrument;
    PlaySteadySine(instrument);
    const double peak = instrument.Render(kSettle).Peak();
    EXPECT_EQ(std::max(instrument.Plug().PeakLeft(), instrument.Plug().PeakRight()), peak);
    const double peakLeft = instrument.Plug().PeakLeft();
    instrument.NoteOff(57);
    instrument.Render(44100);
    EXPECT_EQ(instrument.Plug().PeakLeft(), peakLeft);
    instrument.Plug().peakResetPending = true;
    instrument.Render(64);
    EXPECT_EQ(instrument.Plug().PeakLeft(), 0.0);
}

TEST(ThudForge, OnlyNotesControllersAndTheWheelPass) {
    Instrument instrument;
    instrument.ResetProgram();
    for (const int status : {0xA0, 0xC0, 0xD0, 0xF0})
        instrument.Midi(status, 60, 100);
    instrument.Render(64);
    EXPECT_EQ(instrument.Plug().Voices().ActiveVoices(), 0);
    instrument.Midi(0x95, 60, 100); // all sixteen channels act as one
    instrument.Render(64);
    EXPECT_EQ(instrument.Plug().Voices().ActiveVoices(), 1);
    instrument.Midi(0xB0, 123, 0); // all notes off is understood by nobody
    instrument.Render(64);
    EXPECT_EQ(instrument.Plug().Voices().ActiveVoices(), 1);
    instrument.Midi(0x83, 60, 0);
    instrument.Render(44100);
    EXPECT_EQ(instrument.Plug().Voices().ActiveVoices(), 0);
}

TEST(ThudForge, A65thNoteStaysSilentUntilAVoiceIsFree) {
    Instrument instrument;
    instrument.ResetProgram();
    for (int note = 20; note < 84; ++note)
        instrument.NoteOn(note, 20);
    instrument.Render(128);
    EXPECT_EQ(instrument.Plug().Voices().ActiveVoices(), 64);
    instrument.NoteOn(100, 20);
    instrument.Render(128);
    EXPECT_EQ(instrument.Plug().Voices().ActiveVoices(), 64);
    EXPECT_EQ(instrument.Plug().Voices().LastNote(), 83);
    instrument.NoteOff(30);
    instrument.Render(44100);
    EXPECT_EQ(instrument.Plug().Voices().ActiveVoices(), 63);
    instrument.NoteOn(101, 20);
    instrument.Render(64);
    EXPECT_EQ(instrument.Plug().Voices().ActiveVoices(), 64);
    EXPECT_EQ(instrument.Plug().Voices().Voice(10).NoteNumber(), 101);
}

TEST(ThudForge, ValuesThatAreNoNumbersLeaveNothingBehindInTheSound) {
    Instrument::Audio renders[2];
    for (const bool hostile : {false, true}) {
        Instrument instrument;
        PlaySteadySine(instrument);
        for (int id = 0; hostile && id < kParameters; ++id) {
            instrument.Set(id, -std::numeric_limits<double>::infinity());
            instrument.Set(id, std::numeric_limits<double>::quiet_NaN());
        }
        renders[hostile ? 1 : 0] = instrument.Render(4096);
    }
    EXPECT_TRUE(renders[0] == renders[1]);
    EXPECT_GT(renders[0].Peak(), 0.1);
}

TEST(ThudForge, ABlockAllocatesNothingWhateverItHasToDo) {
    Instrument instrument;
    OpenProgram(instrument);
    for (int i = 0; i < kOscillators; ++i) {
        instrument.Set(Osc(i, OscParam::OnOff), 1.0);
        instrument.Set(Osc(i, OscParam::LfoTempoSync), 5.0 / 9.0);
    }
    instrument.Set(Param::NoteTransposeMode, 8.0 / 9.0); // the arpeggio asks for the tempo
    instrument.Set(Param::ModulationOnOff, 1.0);
    for (const int id : {Param::BassLayerAmount, Param::BassLayerToFilter, Param::BassLayerClick,
                         Param::Distortion, Param::DynShaper, Param::FilterInputDrive,
                         Param::RingModulationAmount, Param::RingModulationFrequency, Param::PhaserDepth,
                         Param::TempoDelayAmount, Param::Saturation, Param::FilterEnvToDistortion})
        instrument.Set(id, 1.0);
    std::vector<double> left(1000);
    std::vector<double> right(1000);
    double* outputs[] = {left.data(), right.data()};
    double peak = 0.0;
    for (int block = 0; block < 20; ++block) {
        instrument.NoteOn(30 + block, 100, 5 * block);
        instrument.Midi(0xE0, 0, 100, 40);
        instrument.SetTempo(60.0 + 10.0 * block);
        instrument.Plug().RequestCurveOperation(block % CurveOperation::NonePending);
        instrument.Plug().playRequest.Post(80 + block, 2);
        const long before = AllocationCount();
        instrument.Effect()->processDoubleReplacing(instrument.Effect(), nullptr, outputs, 1000);
        EXPECT_EQ(AllocationCount(), before) << block;
        EXPECT_EQ(before > 0, kCountsAllocations);
        peak = std::max(peak, *std::max_element(left.begin(), left.end()));
    }
    EXPECT_GT(peak, 0.1);
}

TEST(ThudForge, TwoFreshInstancesRenderTheSameBitForBit) {
    Instrument::Audio renders[2];
    for (Instrument::Audio& audio : renders) {
        Instrument instrument;
        instrument.ResetProgram();
        instrument.Set(Osc(0, OscParam::Waveform), 8.0 / 40.0);
        instrument.Set(Osc(1, OscParam::OnOff), 1.0);
        instrument.Set(Osc(1, OscParam::Waveform), 9.0 / 40.0);
        instrument.NoteOn(50);
        instrument.NoteOn(55, 100, 17);
        audio = instrument.Render(20000);
    }
    EXPECT_TRUE(renders[0] == renders[1]);
    EXPECT_GT(renders[0].Peak(), 0.01);
}

TEST(ThudForge, ChangedParametersAreMarkedForTheEditor) {
    Instrument instrument;
    instrument.Plug().changedParameters.Take([](int) {});
    instrument.Set(7, 0.25);
    instrument.Set(139, 0.0);
    instrument.Set(150, 0.5);
    std::vector<int> marked;
    instrument.Plug().changedParameters.Take([&marked](int id) { marked.push_back(id); });
    EXPECT_EQ(marked, (std::vector<int>{7, 139}));
    marked.clear();
    instrument.Plug().changedParameters.Take([&marked](int id) { marked.push_back(id); });
    EXPECT_TRUE(marked.empty());
}

namespace {

constexpr int kSecondNote = 17 * 1024; ///< a block border for every block size of the tests
constexpr int kCompared = kSecondNote + 4096;

/// Two notes that begin on block borders, with a rich patch. `change` sets what is under test.
template <typename Change>
Instrument::Audio RenderInBlocksOf(int blockSize, Change change) {
    Instrument instrument(44100.0, blockSize);
    instrument.ResetProgram();
    instrument.Set(Param::NoteTransposeMode, 0.0);
    instrument.Set(Param::EnvDecay, 1.0);
    instrument.Set(Osc(0, OscParam::Waveform), 1.0 / 40.0);
    instrument.Set(Osc(1, OscParam::OnOff), 1.0);
    instrument.Set(Osc(1, OscParam::Waveform), 16.0 / 40.0);
    instrument.Set(Osc(0, OscParam::LfoRate), 0.2);
    instrument.Set(Osc(0, OscParam::LfoToFilter), 0.3);
    instrument.Set(Osc(0, OscParam::FilterCutoff), 0.4);
    instrument.Set(Param::BassLayerAmount, 0.3);
    instrument.Set(Param::PitchAmount, 0.2);
    instrument.Set(Param::PitchDuration, 0.1);
    instrument.Set(Param::FmAmount, 0.1);
    instrument.Set(Param::Distortion, 0.5);
    instrument.Set(Param::DistortionType, 20.0 / 41.0);
    change(instrument);
    // Let sweeps end and smoothers stand: the pan steps in two loops a block, which ties its glide to the
    // block.
    instrument.Render(16384);
    Instrument::Audio audio;
    instrument.NoteOn(40, 110);
    for (int done = 0; done < kCompared;) {
        if (done == kSecondNote) instrument.NoteOn(47, 110);
        const int frames = std::min(blockSize, done < kSecondNote ? kSecondNote - done : kCompared - done);
        instrument.Process(audio, frames);
        done += frames;
    }
    return audio;
}

} // namespace

TEST(ThudForge, TheSoundDoesNotHangOnTheBlockSize) {
    const auto nothing = [](Instrument&) {};
    const Instrument::Audio one = RenderInBlocksOf(1, nothing);
    EXPECT_GT(one.Peak(), 0.05);
    for (const int blockSize : {17, 64, 512, 1024}) {
        EXPECT_LT(LargestDifference(one, RenderInBlocksOf(blockSize, nothing)), 1e-12) << blockSize;
    }
}

TEST(ThudForge, LfoToTuneHangsOnTheBlockSizeSinceThePitchHearsTheLastBlocksLfo) {
    const auto vibrato = [](Instrument& instrument) { instrument.Set(Osc(0, OscParam::LfoToTune), 1.0); };
    EXPECT_GT(LargestDifference(RenderInBlocksOf(17, vibrato), RenderInBlocksOf(512, vibrato)), 1e-4);
}

TEST(ThudForge, RateReductionHangsOnTheBlockSizeSinceItsGridStartsWithTheBlock) {
    const auto reduce = [](Instrument& instrument) { instrument.Set(Param::SampleRate, 0.7); };
    EXPECT_GT(LargestDifference(RenderInBlocksOf(64, reduce), RenderInBlocksOf(512, reduce)), 1e-3);
}

TEST(ThudForge, AReleaseHangsOnTheBlockSizeSinceItBeginsWithItsBlock) {
    Instrument::Audio renders[2];
    const int blockSizes[] = {64, 512};
    for (int i = 0; i < 2; ++i) {
        Instrument instrument(44100.0, blockSizes[i]);
        PlaySteadySine(instrument);
        instrument.Render(4096);
        Instrument::Audio& audio = renders[i];
        // A note off in the last frames of 512: the short blocks release 448 frames later.
        for (int done = 0; done < 512; done += blockSizes[i]) {
            if (done + blockSizes[i] == 512) instrument.NoteOff(57, blockSizes[i] - 1);
            instrument.Process(audio, blockSizes[i]);
        }
    }
    EXPECT_GT(LargestDifference(renders[0], renders[1]), 1e-2);
}

TEST(ThudForge, OutputNeverLeavesTheCeilingInAStormOfMessages) {
    std::mt19937 random(11);
    Instrument instrument(44100.0, 512);
    const std::vector<int> sizes{0, 1, 17, 64, 500, 512, 1000, 4096};
    double peak = 0.0;
    int messages = 0;
    while (messages < 100000) {
        for (int i = 0; i < 1500; ++i, ++messages) {
            const int kind = static_cast<int>(random() % 8);
            const int offset = static_cast<int>(random() % 5000) - 100;
            if (kind < 5) {
                instrument.Midi(static_cast<int>(0x80 + random() % 0x80), static_cast<int>(random() % 256),
                                static_cast<int>(random() % 256), offset);
            } else {
                instrument.Set(static_cast<int>(random() % 170) - 5,
                               static_cast<double>(random() % 1001) / 1000.0);
            }
        }
        Instrument::Audio audio;
        instrument.Process(audio, sizes[random() % sizes.size()]);
        for (const double x : audio.left) {
            if (!std::isnan(x)) peak = std::max(peak, std::fabs(x));
        }
    }
    EXPECT_LE(peak, kCeiling);
    EXPECT_GT(peak, 0.0);
    EXPECT_LE(instrument.Plug().PeakLeft(), kCeiling);
    EXPECT_LE(instrument.Plug().PeakRight(), kCeiling);
}
