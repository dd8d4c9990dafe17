#include "effects/TempoDelay.h"

#include "tests/effects/TestSignals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

/// One side of the delay: a plain history, and a row of four one-poles that stands still on a zero input.
struct ReferenceLine {
    std::vector<double> written;
    double stage[4] = {};

    double Tick(double input, double feedback, double cutoff, std::size_t length) {
        const double delayed = written.size() < length ? 0.0 : written[written.size() - length];
        const double k = std::fmin(0.99, std::fmax(0.01, cutoff));
        double x = delayed * feedback + input;
        if (x != 0.0) {
            for (double& state : stage) {
                state += (x - state) * k;
                x = state;
            }
        }
        written.push_back(x);
        return delayed;
    }
};

TempoDelay At(double rate, double tempo) {
    TempoDelay delay;
    delay.SetSampleRate(rate);
    delay.SetTempo(tempo);
    return delay;
}

} // namespace

TEST(TempoDelay, OneBeatAtTheUsualTempoAndRate) {
    TempoDelay delay = At(44100.0, 120.0);
    EXPECT_EQ(delay.LengthLeft(), 22050);
    EXPECT_EQ(delay.LengthRight(), 22050);
    EXPECT_EQ(At(48000.0, 140.0).LengthLeft(), static_cast<int>(1.0 / (140.0 / 60.0) * 48000.0));
}

TEST(TempoDelay, BelowFifteenBeatsTheLengthStopsGrowing) {
    EXPECT_EQ(At(44100.0, 15.0).LengthLeft(), 176400);
    EXPECT_EQ(At(44100.0, 14.0).LengthLeft(), 176400);
    EXPECT_EQ(At(44100.0, 0.0001).LengthLeft(), 176400);
    EXPECT_EQ(At(44100.0, 1e-320).LengthLeft(), 176400);
}

TEST(TempoDelay, SpreadPullsTheSidesApart) {
    TempoDelay delay = At(44100.0, 120.0);
    delay.SetSpread(0.0);
    EXPECT_EQ(delay.LengthLeft(), static_cast<int>(22050 * 0.875));
    EXPECT_EQ(delay.LengthRight(), static_cast<int>(22050 * 1.125));
    delay.SetSpread(1.0);
    EXPECT_EQ(delay.LengthLeft(), static_cast<int>(22050 * 1.125));
    delay.SetSpread(0.5);
    EXPECT_EQ(delay.LengthLeft(), 22050);
    EXPECT_EQ(delay.LengthRight(), 22050);
}

TEST(TempoDelay, OnlyATempoAboveZeroIsTaken) {
    TempoDelay delay = At(44100.0, 100.0);
    for (const double tempo : {0.0, -10.0, std::nan("")}) {
        delay.SetTempo(tempo);
        EXPECT_EQ(delay.Tempo(), 100.0);
    }
    EXPECT_EQ(delay.LengthLeft(), static_cast<int>(1.0 / (100.0 / 60.0) * 44100.0));
}

TEST(TempoDelay, FollowsItsRecursion) {
    TempoDelay delay = At(1000.0, 600.0); // a beat of 100 frames
    delay.SetSpread(0.2);
    delay.SetFeedback(0.7);
    delay.SetAmount(0.6);
    delay.SetDump(0.4);
    ASSERT_EQ(delay.LengthLeft(), 92);
    ASSERT_EQ(delay.LengthRight(), 107);
    Signal signal = NoiseSignal(2000, 1.0);
    for (std::size_t i = 500; i < 1200; ++i)
        signal.left[i] = signal.right[i] = 0.0;
    const Signal before = signal;
    for (int block = 0; block < 20; ++block)
        delay.Process(signal.From(block * 100), 100);
    ReferenceLine left;
    ReferenceLine right;
    for (std::size_t i = 0; i < 2000; ++i) {
        EXPECT_NEAR(signal.left[i], before.left[i] + 0.6 * left.Tick(before.left[i], 0.7, 0.4, 92), 1e-12);
        EXPECT_NEAR(signal.right[i], before.right[i] + 0.6 * right.Tick(before.right[i], 0.7, 0.4, 107),
                    1e-12);
    }
}

TEST(TempoDelay, StartsWithTheDumpAtThreeQuarters) {
    TempoDelay delay = At(1000.0, 600.0);
    delay.SetAmount(1.0);
    Signal signal(201);
    signal.left[0] = 1.0;
    delay.Process(signal.View(), 201);
    EXPECT_NEAR(signal.left[100], std::pow(0.75, 4), 1e-12);
    EXPECT_EQ(signal.left[200], 0.0) << "no feedback at the start";
}

TEST(TempoDelay, AmountZeroIsDryButTheLineGoesOnFilling) {
    TempoDelay delay = At(1000.0, 600.0);
    delay.SetDump(1.0);
    Signal signal = NoiseSignal(100, 1.0);
    const Signal before = signal;
    delay.Process(signal.View(), 100);
    EXPECT_EQ(signal, before);
    delay.SetAmount(1.0);
    Signal silence(100);
    delay.Process(silence.View(), 100);
    EXPECT_GT(Peak(silence), 0.5);
}

TEST(TempoDelay, FullFeedbackWithAnOpenDumpNeverDecays) {
    TempoDelay delay = At(1000.0, 600.0);
    delay.SetDump(1.0);
    delay.SetFeedback(1.0);
    delay.SetAmount(1.0);
    Signal signal(10100);
    for (std::size_t i = 0; i < 100; ++i)
        signal.left[i] = 0.5;
    delay.Process(signal.View(), 10100);
    // The low-pass wears the edges down but keeps the mean of a round; only the first round, which charges
    // the filter, costs a little.
    const auto mean = [&signal](int from) {
        double sum = 0.0;
        for (int i = from; i < from + 100; ++i)
            sum += signal.left[static_cast<std::size_t>(i)];
        return sum / 100.0;
    };
    EXPECT_NEAR(mean(1000), 0.5, 0.001);
    EXPECT_NEAR(mean(10000), mean(1000), 1e-4);
}

TEST(TempoDelay, SilenceStaysSilent) {
    TempoDelay delay = At(1000.0, 600.0);
    delay.SetFeedback(1.0);
    delay.SetAmount(1.0);
    Signal silence(1000);
    delay.Process(silence.View(), 1000);
    EXPECT_EQ(Peak(silence), 0.0);
}

TEST(TempoDelay, ANewSampleRateEmptiesIt) {
    TempoDelay delay = At(1000.0, 600.0);
    delay.SetAmount(1.0);
    Signal signal = NoiseSignal(50, 1.0);
    delay.Process(signal.View(), 50);
    delay.SetSampleRate(1000.0);
    Signal silence(500);
    delay.Process(silence.View(), 500);
    EXPECT_EQ(Peak(silence), 0.0);
}

TEST(TempoDelay, PositionsSurviveShorterLinesAndTempos) {
    TempoDelay delay = At(192000.0, 15.0);
    delay.SetAmount(1.0);
    Signal signal = NoiseSignal(100000, 1.0);
    delay.Process(signal.View(), 100000);
    delay.SetSampleRate(8000.0);
    delay.Process(signal.View(), 100000);
    delay.SetTempo(960.0); // 500 frames: both positions lie beyond and come back by the next frame but one
    ASSERT_EQ(delay.LengthLeft(), 500);
    Signal silence(502);
    delay.Process(silence.From(0), 502);
    Signal pulse(501);
    pulse.left[0] = 1.0;
    delay.SetDump(1.0);
    delay.Process(pulse.View(), 501);
    // The low-pass stood still over the silence with a rest of the noise in it.
    EXPECT_NEAR(pulse.left[500], std::pow(0.99, 4), 0.02);
}

TEST(TempoDelay, AnEndlessTempoUsesOneSlot) {
    TempoDelay delay = At(1000.0, HUGE_VAL);
    EXPECT_EQ(delay.LengthLeft(), 0);
    delay.SetAmount(1.0);
    delay.SetDump(1.0);
    Signal signal(3);
    signal.left[0] = 1.0;
    delay.Process(signal.View(), 3);
    EXPECT_NEAR(signal.left[1], std::pow(0.99, 4), 1e-12);
}

TEST(TempoDelay, WorksBeforeAnySampleRate) {
    TempoDelay delay;
    delay.SetAmount(1.0);
    EXPECT_EQ(delay.LengthLeft(), 1024);
    Signal signal = NoiseSignal(5000, 1.0);
    delay.Process(signal.View(), 5000);
    EXPECT_LT(Peak(signal), 3.0);
}

TEST(TempoDelay, IsCleanAgainAfterHostileInput) {
    for (const double knob : {0.5, -3.5, 1e300, -1e300, std::nan(""), HUGE_VAL}) {
        TempoDelay delay = At(1000.0, 600.0);
        for (const double rate : {0.0, -5.0, std::nan("")})
            delay.SetSampleRate(rate);
        delay.SetFeedback(1.0);
        delay.SetAmount(knob);
        delay.SetSpread(knob);
        delay.SetDump(knob);
        for (int block = 0; block < 5; ++block) {
            Signal hostile = HostileSignal();
            delay.Process(hostile.View(), hostile.Frames());
        }
        delay.SetFeedback(0.0);
        delay.SetAmount(1.0);
        delay.SetSpread(0.5);
        delay.SetDump(0.75);
        Signal flush = NoiseSignal(20000, 1.0);
        delay.Process(flush.View(), 20000);
        EXPECT_LT(Peak(flush, 10000), 3.0);
    }
}
